// UTF-8 and UTF-16, and paths given as wide text.
#include "ovik/base/unicode.h"

#include <type_traits>

namespace Ovik {
namespace {

constexpr bool kPathsAreBytes = std::is_same_v<std::filesystem::path::value_type, char>;

}  // namespace

char* putUtf8(char32_t c, char* out) {
    if (isHighSurrogate(c) || isLowSurrogate(c) || c > 0x10FFFF) c = kReplacementCharacter;
    const auto byte = [&out](char32_t value) { *out++ = static_cast<char>(value); };
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
    return out;
}

char32_t nextCharacter(std::string_view text, std::size_t& i) {
    const auto lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) return lead;
    int more = 0;
    // The bounds of the second byte exclude overlong forms, surrogates and what is past U+10FFFF.
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
        return kReplacementCharacter;
    }
    for (; more > 0; --more) {
        if (i >= text.size()) return kReplacementCharacter;
        const auto next = static_cast<unsigned char>(text[i]);
        if (next < low || next > high) return kReplacementCharacter;
        c = (c << 6) | (next & 0x3Fu);
        ++i;
        low = 0x80;
        high = 0xBF;
    }
    return c;
}

std::filesystem::path pathFromWide(std::wstring_view text) {
    if constexpr (kPathsAreBytes) {
        return encodeUtf8(text);
    } else {
        return text;
    }
}

std::wstring wideFromPath(const std::filesystem::path& path) {
    if constexpr (kPathsAreBytes) {
        const std::string bytes = path.string();
        std::wstring wide;
        for (std::size_t i = 0; i < bytes.size();) {
            wide += static_cast<wchar_t>(nextCharacter(bytes, i));
        }
        return wide;
    } else {
        return path.wstring();
    }
}

}  // namespace Ovik
