// The schemas that the library knows.
#include "ovik/ifc2x3/schema.h"
#include "ovik/ifc4/schema.h"
#include "ovik/imp/schematable.h"
#include "ovik/schema/ifc2x3/imp.h"
#include "ovik/schema/ifc4/imp.h"

namespace Ovik {

static_assert(IFC2X3::kSchemaId == eIFC2X3 && IFC4::kSchemaId == eIFC4);

static constexpr const SchemaRow* rows[] = {&IFC2X3Imp::schemaRow, &IFC4Imp::schemaRow};
constinit const std::span<const SchemaRow* const> librarySchemas = rows;

}  // namespace Ovik
