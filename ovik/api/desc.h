// Descriptors: how a program names a class, a select or an aggregate of a schema without seeing it.
// The constants themselves are in ovik/api/ifc2x3.h and ovik/api/ifc4.h.
#pragma once

#include "ovik/api/handle.h"

namespace Ovik {
namespace Schema {
struct SelectType;
}

namespace IfcApi {

/// Names an entity class that can be instantiated.
class OVIK_API EntityDesc {
 public:
    /// A descriptor of no class.
    constexpr EntityDesc() = default;

    /// The class name as it stands in a file, in capitals; null before `initOvikApi`.
    operator const char*() const;
    /// True if both name the same class, so not for classes of one name in the two schemas.
    bool operator==(const EntityDesc& other) const;

 private:
    friend struct Access;
    constexpr explicit EntityDesc(const RtClass* cls) : cls_(cls) {}
    const RtClass* cls_ = nullptr;
};

/// Names a select; a `SelectValue` is made from it.
class OVIK_API SelectorDesc {
 public:
    /// A descriptor of no select.
    constexpr SelectorDesc() = default;

    /// The name as in the schema, in mixed case; null before `initOvikApi`.
    operator const char*() const;

 private:
    friend struct Access;
    using Creator = IfcSelectValueBase* (*)();
    constexpr SelectorDesc(Creator create, const Schema::SelectType* type)
        : create_(create), type_(type) {}
    Creator create_ = nullptr;
    const Schema::SelectType* type_ = nullptr;
};

/// Names an aggregate; a `VectorValue` is made from it.
class OVIK_API VectorDesc {
 public:
    /// A descriptor of no aggregate.
    constexpr VectorDesc() = default;

 private:
    friend struct Access;
    using Creator = IfcVectorValueBase* (*)();
    constexpr explicit VectorDesc(Creator create) : create_(create) {}
    Creator create_ = nullptr;
};

/// Makes the descriptors of all schemas tell what they name: before it each is as one of nothing. A
/// program calls it once, in one thread, before it uses any of them; another call changes nothing.
OVIK_API void initOvikApi();

namespace Ifc2x3 {
/// The descriptor of a run-time class, looked up by the hash of its name. Run-time classes bear
/// their names in capitals, descriptors are filed by the hash of the mixed-case name, and the hash
/// is case-sensitive: the answer is null for every class of the schema. Kept for compatibility;
/// what it costs is the way from an entity to its descriptor. `Entity::isKindOf` tests for a class.
OVIK_API const EntityDesc* findEntityDesc(const RtClass* cls);
}  // namespace Ifc2x3

namespace Ifc4 {
/// As for IFC2X3.
OVIK_API const EntityDesc* findEntityDesc(const RtClass* cls);
}  // namespace Ifc4

}  // namespace IfcApi
}  // namespace Ovik
