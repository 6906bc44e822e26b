// What the plain types of a schema are in C++: one table.
#pragma once

#include <string_view>

#include "schema.h"

namespace Ovik::Generator {

struct PlainType {
    std::string_view word;  ///< in a schema table; empty for a type that only the generator gives
    Plain plain;
    std::string_view cpp;         ///< the type of a field
    std::string_view inListName;  ///< its part of the name of an aggregate
    std::string_view initial;     ///< the value of a new field that has none of its own
    std::string_view header;      ///< what defines the type, if it has to be included

    /// True if accessors pass the value itself: numbers and booleans.
    bool byValue() const { return !initial.empty(); }
};

const PlainType& plainType(Plain plain);

/// Null if `word` is no plain type.
const PlainType* findPlainType(std::string_view word);

}  // namespace Ovik::Generator
