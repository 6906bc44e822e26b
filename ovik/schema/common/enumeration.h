// What all enumeration classes share: the tag, and its conversion from and to a literal.
#pragma once

#include "ovik/schema/common/types.h"

namespace Ovik::Schema {

/// Base of the enumeration classes. A value is a tag; whether an attribute has a value at all is
/// told by the entity that holds it.
class OVIK_API Enumeration {
 protected:
    explicit Enumeration(int tag) : tag_(tag) {}

    std::int32_t tag_;

 private:
    friend struct Internals;
};

/// The literal of the tag; null for a tag outside the enumeration.
OVIK_API const char* enumText(const Enumeration& value, const EnumType& type);

/// Sets the tag of the literal `text`; false, leaving the tag, if there is none.
OVIK_API bool setEnumText(Enumeration& value, const EnumType& type, const char* text);

/// Reads a literal; false, with a report, if the item is none. The cursor moves past any word, also
/// past one that is no literal.
OVIK_API bool readEnum(Enumeration& value, const EnumType& type, IfcInFiler& in);

OVIK_API void writeEnum(const Enumeration& value, const EnumType& type, IfcOutFiler& out);

}  // namespace Ovik::Schema
