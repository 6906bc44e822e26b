// The table of the plain types.
#include "plaintypes.h"

#include <algorithm>
#include <iterator>

namespace Ovik::Generator {
namespace {

constexpr PlainType kPlainTypes[] = {
    {"real", Plain::Real, "double", "double", "0", ""},
    {"number", Plain::Real, "double", "double", "0", ""},
    {"integer", Plain::Integer, "int", "int", "0", ""},
    {"unsigned", Plain::Unsigned, "unsigned", "unsigned_int", "0", ""},
    {"boolean", Plain::Boolean, "bool", "bool", "false", ""},
    {"logical", Plain::Logical, "Logical", "Logical", "", "ovik/imp/logical.h"},
    {"string", Plain::String, "XString", "XString", "", "ovik/imp/xstring.h"},
    {"binary", Plain::Binary, "XBinary", "XBinary", "", "ovik/imp/xbinary.h"},
    {"", Plain::Guid, "Base64Guid", "Base64Guid", "", "ovik/imp/base64guid.h"},
};

}  // namespace

const PlainType& plainType(Plain plain) {
    return *std::ranges::find(kPlainTypes, plain, &PlainType::plain);
}

const PlainType* findPlainType(std::string_view word) {
    if (word.empty()) return nullptr;
    const PlainType* const found = std::ranges::find(kPlainTypes, word, &PlainType::word);
    return found == std::end(kPlainTypes) ? nullptr : found;
}

}  // namespace Ovik::Generator
