// The names of the schemas.
#include "ovik/imp/schemaid.h"

namespace Ovik {

const char16_t* schemaName(EIfcSchemaId id) {
    static constexpr const char16_t* kNames[kNumSchemas] = {u"IFC2X3", u"IFC4"};
    return kNames[id];
}

}  // namespace Ovik
