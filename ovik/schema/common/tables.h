// What the tables of the generated sources are written with, so that an entry says of its field
// what the field is. Internal.
#pragma once

#include <type_traits>

#include "ovik/imp/ifcentity.h"
#include "ovik/schema/common/types.h"
#include "ovik/schema/common/visit.h"

namespace Ovik::Schema {

/// A select or an aggregate with something to validate: one that can refer to entities. Its class
/// has a `validate` then, and all else that depends on it follows from that.
template <class T>
concept Validatable = requires(T& value, ValidationContext& context) {
    value.validate(context);
};

/// The type of a field declared as `T`; a handle refers to entities of class `Target`.
template <class T, class Target = void>
constexpr ValueType typeOf() {
    if constexpr (std::is_same_v<T, double>) {
        return Kind::Real;
    } else if constexpr (std::is_same_v<T, int>) {
        return Kind::Integer;
    } else if constexpr (std::is_same_v<T, unsigned>) {
        return Kind::Unsigned;
    } else if constexpr (std::is_same_v<T, bool>) {
        return Kind::Boolean;
    } else if constexpr (std::is_same_v<T, Logical>) {
        return Kind::Logical;
    } else if constexpr (std::is_same_v<T, XString>) {
        return Kind::String;
    } else if constexpr (std::is_same_v<T, XBinary>) {
        return Kind::Binary;
    } else if constexpr (std::is_same_v<T, Base64Guid>) {
        return Kind::Guid;
    } else if constexpr (std::is_same_v<T, EntityId>) {
        return Target::desc();
    } else if constexpr (std::is_base_of_v<Enumeration, T>) {
        return &T::s_type;
    } else {
        return {&T::s_type, Validatable<T>};
    }
}

}  // namespace Ovik::Schema
