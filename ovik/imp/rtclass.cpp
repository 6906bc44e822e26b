// The registry behind RtClass. The classes of a schema are a constant table of its row; what is
// kept here are the classes from outside, which register themselves.
#include "ovik/imp/rtclass.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <span>
#include <vector>

#include "ovik/base/ascii.h"
#include "ovik/imp/schematable.h"

namespace Ovik {
namespace {

/// The classes from outside that belong to one schema. Each list is sorted by name, and of one name
/// the last that was registered comes first.
struct Registry {
    std::vector<const RtClass*> front;   ///< found before the schema's own classes
    std::vector<const RtClass*> behind;  ///< found after them
    bool hasOwnClasses = true;           ///< the schema's own can be found
};

// A function's own static, so that it is there for whichever initialiser asks first.
std::map<EIfcSchemaId, Registry>& registries() {
    static std::map<EIfcSchemaId, Registry> all;
    return all;
}

// True once the library has started or has been asked for a class. From then on the schemas' own
// classes count as registered, so a class of the same name is the later one and comes to the front.
constinit std::atomic<bool> isInUse = false;
[[maybe_unused]] const bool isStarted = (isInUse = true);

template <class List>
auto lowerBound(List& classes, const char* name) {
    return std::lower_bound(classes.begin(), classes.end(), name,
                            [](const RtClass* cls, const char* wanted) {
                                return compareNoCase(cls->className(), wanted) < 0;
                            });
}

}  // namespace

RtClass::RtClass(const char* name, const RtClass* parent, Creator creator, EIfcSchemaId schema)
    : name_(name), creator_(creator), parent_(parent) {
    Registry& registry = registries()[schema];
    auto& classes = isInUse ? registry.front : registry.behind;
    classes.insert(lowerBound(classes, name), this);
}

const RtClass* RtClass::findCreator(const char* name, EIfcSchemaId schema) {
    isInUse = true;
    static const Registry nothingRegistered;
    const auto found = registries().find(schema);
    const Registry& registry = found == registries().end() ? nothingRegistered : found->second;
    const SchemaRow* const row = registry.hasOwnClasses ? findSchema(schema) : nullptr;
    using Classes = std::span<const RtClass* const>;
    const Classes own = row ? row->classes : Classes();
    for (const Classes classes : {Classes(registry.front), own, Classes(registry.behind)}) {
        const auto place = lowerBound(classes, name);
        if (place != classes.end() && compareNoCase((*place)->className(), name) == 0) {
            return *place;
        }
    }
    return nullptr;
}

void RtClass::init() {
    isInUse = true;
    Registry& registry = registries()[eIFC2X3];
    registry = Registry();
    registry.hasOwnClasses = false;
}

}  // namespace Ovik
