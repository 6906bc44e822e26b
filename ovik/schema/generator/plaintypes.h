// What the plain types of a schema are in C++: one table.
#pragma once

#include <string_view>

#include "schema.h"

namespace Ovik::Generator {

struct PlainType {
    Plain plain;
    std::string_view cpp;      ///< the type of a field
    std::string_view kind;     ///< what the library's engine calls it
    std::string_view initial;  ///< the value of a new field that has none of its own
    std::string_view header;   ///< the header below `ovik/imp` that defines the type, if any

    /// True if accessors pass the value itself: numbers and booleans.
    bool byValue() const { return !initial.empty(); }
};

const PlainType& plainType(Plain plain);

}  // namespace Ovik::Generator
