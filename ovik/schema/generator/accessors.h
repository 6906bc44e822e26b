// The members for one value of a class, an attribute or a choice: its field, and how it is read and
// set.
#pragma once

#include <string>

#include "classtext.h"
#include "schema.h"

namespace Ovik::Generator {

/// A value of a class.
struct Member {
    const std::string& name;
    const Type& type;
    std::string field;               ///< to be changed
    std::string afterSet;            ///< what a setter does besides, as a statement; may be empty
    std::string constField = field;  ///< to be looked at
};

/// A pair of getters and a setter. What refers to an entity, whose class need not be known where
/// the accessors are declared, is only defined in the source.
std::string declareAccessors(const Member& member);

/// The accessors of a reference, for the source; nothing for all else.
std::string defineAccessors(const Schema& schema, const std::string& cls, const Member& member);

/// The declaration of a field with its value in a new object.
std::string declareField(const Member& member);

/// What a table says of the type of a field: what the declaration of the field says.
std::string typeOf(const Schema& schema, const Member& member);

/// Adds what a field of this type and the operations on it need. An entity is only referred to
/// where the field is declared.
void addHeaders(const Schema& schema, const Type& type, ClassText& text);

}  // namespace Ovik::Generator
