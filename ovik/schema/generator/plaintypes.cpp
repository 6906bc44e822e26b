// The table of the plain types.
#include "plaintypes.h"

#include <algorithm>

namespace Ovik::Generator {

const PlainType& plainType(Plain plain) {
    static constexpr PlainType table[] = {
        {Plain::Real, "double", "Kind::Real", "0", ""},
        {Plain::Integer, "int", "Kind::Integer", "0", ""},
        {Plain::Unsigned, "unsigned", "Kind::Unsigned", "0", ""},
        {Plain::Boolean, "bool", "Kind::Boolean", "false", ""},
        {Plain::Logical, "Logical", "Kind::Logical", "", "logical"},
        {Plain::String, "XString", "Kind::String", "", "xstring"},
        {Plain::Binary, "XBinary", "Kind::Binary", "", "xbinary"},
        {Plain::Guid, "Base64Guid", "Kind::Guid", "", "base64guid"},
    };
    return *std::ranges::find(table, plain, &PlainType::plain);
}

}  // namespace Ovik::Generator
