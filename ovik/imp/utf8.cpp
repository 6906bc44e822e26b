// UTF-8 to 16-bit code units and back.
#include "ovik/imp/utf8.h"

#include <cstddef>

namespace Ovik {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHighSurrogate(char16_t c) {
    return (c & 0xFC00) == 0xD800;
}
constexpr bool isLowSurrogate(char16_t c) {
    return (c & 0xFC00) == 0xDC00;
}

void appendUtf8(std::string& out, char32_t c) {
    const auto byte = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

void appendUtf16(std::u16string& out, char32_t c) {
    if (c >= 0x10000) {
        out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
        c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    out.push_back(static_cast<char16_t>(c));
}

/// The character at `i`, which is moved behind it. Of a malformed sequence the longest part that
/// could have begun a character counts as one replacement character.
char32_t nextCharacter(std::string_view text, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) return lead;
    int more = 0;
    // The bounds of the second byte shut out overlong forms, surrogates and what is past U+10FFFF.
    unsigned low = 0x80;
    unsigned high = 0xBF;
    char32_t c = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        more = 1;
        c = lead & 0x1Fu;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        more = 2;
        c = lead & 0x0Fu;
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        more = 3;
        c = lead & 0x07u;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    } else {
        return kReplacement;
    }
    for (; more > 0; --more) {
        if (i >= text.size()) return kReplacement;
        const auto next = static_cast<unsigned char>(text[i]);
        if (next < low || next > high) return kReplacement;
        c = (c << 6) | (next & 0x3Fu);
        ++i;
        low = 0x80;
        high = 0xBF;
    }
    return c;
}

}  // namespace

std::string toUtf8(const XString& value) {
    std::string out;
    for (const char16_t* p = value.c_str(); *p; ++p) {
        char32_t c = *p;
        if (isHighSurrogate(*p) && isLowSurrogate(p[1])) {
            c = 0x10000 + ((c - 0xD800) << 10) + (p[1] - 0xDC00u);
            ++p;
        } else if (isHighSurrogate(*p) || isLowSurrogate(*p)) {
            c = kReplacement;
        }
        appendUtf8(out, c);
    }
    return out;
}

XString fromUtf8(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) appendUtf16(units, nextCharacter(text, i));
    return XString(units.c_str());
}

}  // namespace Ovik
