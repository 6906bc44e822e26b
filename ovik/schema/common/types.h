// How a schema class is described. Each class has one table of its attributes, selects have one of
// their choices, enumerations one of their literals; reading, writing, validating, getting and
// setting are five loops over these tables (read.cpp, write.cpp, validate.cpp, access.cpp).
// Internal to the library: the generated classes hold the tables, callers never need them.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

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
struct SelectType;

/// The type of an attribute, of a choice or of an element: its kind and, where the kind alone does
/// not say all, the descriptor behind it.
struct ValueType {
    Kind kind;
    union {
        const void* none;
        const RtClass* entity;
        const EnumType* enumeration;
        const SelectType* select;
        const AggregateType* aggregate;
    };

    constexpr ValueType(Kind plain) : kind(plain), none(nullptr) {}
    constexpr ValueType(const RtClass* type) : kind(Kind::Entity), entity(type) {}
    constexpr ValueType(const EnumType* type) : kind(Kind::Enumeration), enumeration(type) {}
    constexpr ValueType(const SelectType* type) : kind(Kind::Select), select(type) {}
    constexpr ValueType(const AggregateType* type) : kind(Kind::Aggregate), aggregate(type) {}

    /// True if a value of this type can refer to an entity and so has something to validate.
    bool canRefer() const;
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
    int defaultTag;
    /// The default is the literal NOTDEFINED, and a missing value may be read as it.
    bool hasNotDefined;
};

/// A choice of a select. All choices that are entities share the select's one handle.
struct Choice {
    const char* name;             ///< as in the schema
    std::string_view recordName;  ///< in capitals, as in a file; a literal
    std::uint32_t hash;           ///< of `name`
    ValueType type;
    std::uint32_t offset;  ///< of the field in the select
};

/// A select: its choices in the order of their tags.
struct SelectType {
    const char* name;
    const char* recordName;
    const NameHash* hash;
    std::span<const Choice> choices;
    /// Offset of the handle that all entity choices share; 0 if there is none.
    std::uint32_t handleOffset;
    bool hasEntities;  ///< a choice of its own is an entity
    bool hasSelects;   ///< a choice is itself a select
    bool hasValues;    ///< a choice is a plain value or an aggregate
    bool soleEntity;   ///< one entity choice, and no other in any nested select
    bool canRefer;     ///< an entity choice here or in a nested select
    IfcSelectValueBase* (*box)(const void* value);
    /// Copies what `holder` holds to `value`; false if it holds another select.
    bool (*unbox)(void* value, const IfcSelectValueBase& holder);
};

/// An aggregate: bounds, element, and the operations that depend on its storage.
struct AggregateType {
    ValueType element;
    std::uint32_t lower;
    std::uint32_t upper;  ///< 0 when unbounded
    bool (*read)(void* value, const AggregateType& type, IfcInFiler& in);
    void (*write)(const void* value, const AggregateType& type, IfcOutFiler& out);
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
    std::uint32_t offset;      ///< of the field in the entity
    std::uint32_t flagOffset;  ///< of the presence flag; 0 if it has none
    bool optional;
};

inline bool ValueType::canRefer() const {
    switch (kind) {
        case Kind::Entity:
            return true;
        case Kind::Select:
            return select->canRefer;
        case Kind::Aggregate:
            return aggregate->element.kind != Kind::Aggregate && aggregate->element.canRefer();
        default:
            return false;
    }
}

/// The field at `offset` of an entity or a select.
inline void* fieldAt(void* object, std::uint32_t offset) {
    return static_cast<char*>(object) + offset;
}
inline const void* fieldAt(const void* object, std::uint32_t offset) {
    return static_cast<const char*>(object) + offset;
}

}  // namespace Schema
}  // namespace Ovik
