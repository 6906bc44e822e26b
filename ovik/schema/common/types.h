// How a schema class is described. Each class has one table of its attributes, selects have one of
// their choices, enumerations one of their literals; reading, writing, validating, getting and
// setting are five loops over these tables (read.cpp, write.cpp, validate.cpp, access.cpp), and
// `visit` (visit.h) is the one place that turns an entry into a typed reference to its field.
// Internal to the library: the generated classes hold the tables, callers never need them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "ovik/base/export.h"
#include "ovik/imp/rtclass.h"
#include "ovik/schema/common/namehash.h"

namespace Ovik {

class EntityId;
class IfcInFiler;
class IfcOutFiler;
class IfcSelectValueBase;
class IfcVariant;
class IfcVectorValueBase;
class ValidationContext;

namespace Schema {

/// What a field holds. The comment gives its C++ type.
enum class Kind : std::uint8_t {
    Real,         ///< double
    Integer,      ///< int
    Unsigned,     ///< unsigned
    Boolean,      ///< bool
    Logical,      ///< Logical
    String,       ///< XString
    Binary,       ///< XBinary
    Guid,         ///< Base64Guid
    Entity,       ///< EntityId
    Enumeration,  ///< a class derived from Enumeration
    Select,       ///< a class derived from Select
    Aggregate,    ///< a class derived from ValueAggregate or EntityAggregate
};

struct AggregateType;
struct EnumType;
struct FieldOps;
struct SelectType;

/// The type of an attribute, of a choice or of an element: its kind and, where the kind alone does
/// not say all, the descriptor behind it.
struct ValueType {
    Kind kind;
    /// True if a value can refer to an entity and so has something to validate. Aggregates in
    /// aggregates are not validated, whatever they refer to.
    bool canRefer = false;
    union {
        const void* none;
        const RtClass* entity;
        const EnumType* enumeration;
        const SelectType* select;
        const AggregateType* aggregate;
    };

    constexpr ValueType(Kind plain) : kind(plain), none(nullptr) {}
    constexpr ValueType(const RtClass* type) : kind(Kind::Entity), canRefer(true), entity(type) {}
    constexpr ValueType(const EnumType* type) : kind(Kind::Enumeration), enumeration(type) {}
    constexpr ValueType(const SelectType* type, bool refers)
        : kind(Kind::Select), canRefer(refers), select(type) {}
    constexpr ValueType(const AggregateType* type, bool refers)
        : kind(Kind::Aggregate), canRefer(refers), aggregate(type) {}

    constexpr bool is(Kind wanted) const { return kind == wanted; }
};

/// A literal of an enumeration and its name hash.
struct Literal {
    const char* text;
    std::uint32_t hash;
};

/// An enumeration: its literals in the order of their tags.
struct EnumType {
    const char* name;
    const NameHash* hash;
    std::span<const Literal> literals;
    /// The tag of the literal NOTDEFINED, as which a missing value may be read; -1 if there is
    /// none.
    int notDefined;

    constexpr EnumType(const char* enumName, const NameHash* nameHash,
                       std::span<const Literal> allLiterals)
        : name(enumName), hash(nameHash), literals(allLiterals), notDefined(-1) {
        for (std::size_t tag = 0; tag < literals.size(); ++tag) {
            if (std::string_view(literals[tag].text) == "NOTDEFINED")
                notDefined = static_cast<int>(tag);
        }
    }
};

/// A choice of a select. All choices that are entities share the select's one handle.
struct Choice {
    const char* name;             ///< as in the schema
    std::string_view recordName;  ///< in capitals, as in a file; a literal
    std::uint32_t hash;           ///< of `name`
    ValueType type;
    std::uint32_t offset;  ///< of the field in the select; 0 in a wide one
    const FieldOps* ops;   ///< of the field in a wide select; else null
};

/// A select: its choices in the order of their tags.
struct SelectType {
    using Box = IfcSelectValueBase* (*)(const void* value);
    using Unbox = bool (*)(void* value, const IfcSelectValueBase& holder);

    const char* name;
    const NameHash* hash;
    std::span<const Choice> choices;
    Box box;
    Unbox unbox;  ///< copies what `holder` holds to `value`; false if it holds another select
    // What follows from the choices; reading asks for it by the million.
    bool hasEntities;  ///< a choice of its own is an entity
    bool hasSelects;   ///< a choice is itself a select
    bool hasValues;    ///< a choice is a plain value or an aggregate
    bool soleEntity;   ///< one entity choice, and no other in any nested select
    std::size_t room;  ///< of a wide select, for the first field that is touched; else 0

    constexpr SelectType(const char* selectName, const NameHash* nameHash,
                         std::span<const Choice> allChoices, Box boxValue, Unbox unboxValue,
                         std::size_t wideRoom = 0)
        : name(selectName),
          hash(nameHash),
          choices(allChoices),
          box(boxValue),
          unbox(unboxValue),
          hasEntities(count(&isEntity) > 0),
          hasSelects(count(&isSelect) > 0),
          hasValues(count(&isEntity) + count(&isSelect) < std::ssize(choices)),
          soleEntity(count(&isEntity) == 1 && count(&refersFurther) == 0),
          room(wideRoom) {}

 private:
    static constexpr bool isEntity(const Choice& c) { return c.type.is(Kind::Entity); }
    static constexpr bool isSelect(const Choice& c) { return c.type.is(Kind::Select); }
    static constexpr bool refersFurther(const Choice& c) { return isSelect(c) && c.type.canRefer; }
    constexpr std::ptrdiff_t count(bool (*matches)(const Choice&)) const {
        return std::ranges::count_if(choices, matches);
    }
};

/// An aggregate: bounds, element, and the operations that depend on its storage.
struct AggregateType {
    ValueType element;
    std::uint32_t lower;
    std::uint32_t upper;  ///< 0 when unbounded
    bool (*read)(void* value, const AggregateType& type, IfcInFiler& in);
    void (*write)(const void* value, const AggregateType& type, IfcOutFiler& out);
    /// Null where there is nothing to validate.
    int (*validate)(void* value, const AggregateType& type, ValidationContext& context);
    IfcVectorValueBase* (*box)(const void* value);
    /// Copies what `holder` holds to `value`; false if it holds another aggregate.
    bool (*unbox)(void* value, const IfcVectorValueBase& holder);
};

/// An explicit attribute of an entity class.
struct Attribute {
    const char* name;
    std::uint32_t hash;
    ValueType type;
    std::uint32_t offset;   ///< of the field in the entity
    std::uint8_t position;  ///< in a record, from 0, and of its bit among the entity's marks
    bool optional;

    constexpr std::uint32_t mark() const { return 1u << position; }
};

/// The attributes that an entity class itself declares, in the order of a record. Its descriptor
/// leads here, so that the attributes of an entity are found along the chain from `isA()` on.
struct AttributeTable {
    std::span<const Attribute> attributes;
    const NameHash* hash;
};

/// The engine's one door to what the value classes keep to themselves.
struct Internals {
    /// The tag of an enumeration or a select.
    template <class Tagged>
    static auto& tag(Tagged& value) {
        return value.tag_;
    }

    // The engine finds fields by their offsets from the entity or select that it is handed, which
    // is the base of the class that has the fields. That holds if the class begins with its base.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
    template <class T, class Base>
    static constexpr bool entityBeginsWith = offsetof(T, ifcId_) == offsetof(Base, ifcId_);
    template <class T, class Base>
    static constexpr bool selectBeginsWith = offsetof(T, tag_) == offsetof(Base, tag_);
#pragma GCC diagnostic pop

    // The fields of a wide select.
    static void* touch(auto& wide, int choice, const FieldOps& ops, std::size_t room) {
        return wide.touch(choice, ops, room);
    }
    static const void* find(const auto& wide, int choice) {
        return wide.find(choice);
    }

    /// The presence of an entity's attributes, see `IfcEntity`.
    template <class Entity>
    static auto& marks(Entity& entity) {
        return entity.marks_;
    }

    // The storage of an aggregate behind its public operations.
    template <class A>
    static auto* elements(A& aggregate) {
        return aggregate.elements();
    }
    template <class A, class... Arguments>
    static auto& emplace(A& aggregate, Arguments&&... arguments) {
        return aggregate.emplace(std::forward<Arguments>(arguments)...);
    }
    template <class A>
    static bool isFull(const A& aggregate) {
        return aggregate.isFull();
    }
    template <class A>
    static void truncate(A& aggregate, unsigned n) {
        aggregate.truncate(n);
    }
};

/// The field at `offset` of an entity or a select.
inline void* fieldAt(void* object, std::uint32_t offset) {
    return static_cast<char*>(object) + offset;
}
inline const void* fieldAt(const void* object, std::uint32_t offset) {
    return static_cast<const char*>(object) + offset;
}

}  // namespace Schema
}  // namespace Ovik
