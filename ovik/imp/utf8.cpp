// UTF-8 to 16-bit code units and back.
#include "ovik/imp/utf8.h"

#include <string>

#include "ovik/base/unicode.h"

namespace Ovik {
namespace {

void appendUtf16(std::u16string& out, char32_t c) {
    if (c >= 0x10000) {
        out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
        c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    out.push_back(static_cast<char16_t>(c));
}

}  // namespace

std::string toUtf8(const XString& value) {
    return encodeUtf8(std::u16string_view(value.c_str()));
}

XString fromUtf8(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) appendUtf16(units, nextCharacter(text, i));
    return XString(units.c_str());
}

}  // namespace Ovik
