// Models: how they come into being.
#include "ovik/imp/ifcmodel.h"

#include <utility>

#include "ovik/imp/modelimp.h"
#include "ovik/imp/schematable.h"

namespace Ovik {

IfcModel::IfcModel(std::unique_ptr<ModelImp> imp) : imp_(std::move(imp)) {}

IfcModel::~IfcModel() = default;

IfcModel* IfcModel::create(EIfcSchemaId schema, bool makeGuids, bool useTestGuid) {
    const SchemaRow* const row = findSchema(schema);
    return row ? row->createModel(makeGuids, useTestGuid) : nullptr;
}

}  // namespace Ovik
