// Run-time classes: one static descriptor per entity class, chained to its parent and, for classes
// that can be instantiated, registered by name so that a name in a file leads to an object.
#pragma once

#include "ovik/base/export.h"
#include "ovik/imp/schemaid.h"

namespace Ovik {

class IfcEntity;
class IfcModel;
namespace Schema {
struct AttributeTable;
}

/// Descriptor of an entity class. Descriptors live as long as the library and are compared by
/// address. Those of the schemas are constants that are there before any code runs, and the tables
/// of the schemas list them. Registration belongs to static initialisation; look-ups are for one
/// thread at a time with `init`, otherwise free.
class OVIK_API RtClass {
 public:
    using Creator = IfcEntity* (*)(IfcModel*);

    /// Descriptor of an abstract class: no creator, not registered. `name` is kept by address.
    constexpr RtClass(const char* name, const RtClass* parent) : name_(name), parent_(parent) {}

    /// Descriptor of a concrete class from outside, which is entered in the registry of `schema`. A
    /// name that files are to be read by begins with "IFC". Of classes with one name the one that
    /// was registered last is found, so a class of a program takes the place of the schema's own;
    /// but one that is registered before the library has started, as by a global constructor of a
    /// statically linked program, stands behind that.
    RtClass(const char* name, const RtClass* parent, Creator creator, EIfcSchemaId schema);

    /// Descriptor of a class that its schema lists: what the classes of the schemas are made with.
    /// No creator for an abstract class.
    constexpr RtClass(const char* name, const RtClass* parent, Creator creator,
                      const Schema::AttributeTable* attributes)
        : name_(name), creator_(creator), parent_(parent), attributes_(attributes) {}

    /// True if `other` is this class or one of its ancestors. False on a null `this`.
    bool isKindOf(const RtClass* other) const;

    /// The name as it stands in a file, in capitals.
    const char* className() const { return name_; }

    /// A new entity in `model`, owned as the class's own `create` says; null for an abstract class.
    IfcEntity* create(IfcModel* model) const { return creator_ ? creator_(model) : nullptr; }

    /// The supertype's descriptor, or null at the end of the chain.
    const RtClass* parent() const { return parent_; }

    /// The attributes that the class itself declares, none perhaps; null for a class that is not of
    /// a schema's table.
    const Schema::AttributeTable* attributes() const { return attributes_; }

    /// Empties the registry of IFC2X3 and leaves that of IFC4 alone.
    static void init();

 protected:
    /// Name only: no creator, no parent, not registered.
    constexpr explicit RtClass(const char* name) : name_(name) {}

    /// The registered class of that name, ASCII case ignored, or null.
    static const RtClass* findCreator(const char* name, EIfcSchemaId schema);

 private:
    friend class IfcEntity;
    friend class IfcReader;

    const char* name_;
    Creator creator_ = nullptr;
    const RtClass* parent_ = nullptr;
    const Schema::AttributeTable* attributes_ = nullptr;
};

/// `isKindOf` for callers with a descriptor in hand: a plain walk, inlined where references are
/// checked by the million.
inline bool isKindOf(const RtClass* cls, const RtClass* ancestor) {
    while (cls && cls != ancestor) cls = cls->parent();
    return cls != nullptr;
}

}  // namespace Ovik
