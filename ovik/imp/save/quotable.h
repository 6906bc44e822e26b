// Whether a text can stand between apostrophes. Internal.
#pragma once

#include <string_view>

namespace Ovik {

/// True if an exact load reads a string constant of the text `encoded` back as it is: each
/// apostrophe in it is doubled, or the character that an `\S\` takes along, and no line ends in it.
/// The encoded form of a string that was made from wide text, or that comes of an exact load, is
/// so. That of a plain load, which takes one of two backslashes away, and one that a program has
/// given to `XString::decode` may be not.
bool isQuotable(std::string_view encoded);

}  // namespace Ovik
