// The registry behind RtClass: one vector per schema, kept sorted by name.
#include "ovik/imp/rtclass.h"

#include <algorithm>
#include <array>
#include <vector>

#include "ovik/base/ascii.h"

namespace Ovik {
namespace {

using Registry = std::vector<const RtClass*>;

// A function's own static, so that it is there for whichever initialiser asks first.
Registry& registry(EIfcSchemaId schema) {
    static std::array<Registry, kNumSchemas> registries;
    return registries[static_cast<std::size_t>(schema)];
}

Registry::iterator lowerBound(Registry& classes, const char* name) {
    return std::lower_bound(classes.begin(), classes.end(), name,
                            [](const RtClass* cls, const char* wanted) {
                                return compareNoCase(cls->className(), wanted) < 0;
                            });
}

}  // namespace

RtClass::RtClass(const char* name, const RtClass* parent, Creator creator, EIfcSchemaId schema)
    : name_(name), creator_(creator), parent_(parent) {
    Registry& classes = registry(schema);
    classes.insert(lowerBound(classes, name), this);
}

const RtClass* RtClass::findCreator(const char* name, EIfcSchemaId schema) {
    Registry& classes = registry(schema);
    const auto found = lowerBound(classes, name);
    if (found == classes.end() || compareNoCase((*found)->className(), name) != 0) return nullptr;
    return *found;
}

void RtClass::init() {
    registry(eIFC2X3).clear();
}

}  // namespace Ovik
