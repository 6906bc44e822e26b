// ASCII text helpers. Nothing here looks at the process locale.
#pragma once

#include <string>
#include <string_view>

namespace Ovik {

constexpr char toLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr char toUpperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Compares two texts with ASCII letters folded to lower case, bytes taken as unsigned:
/// negative, zero or positive as `a` is less than, equal to or greater than `b`.
constexpr int compareNoCase(const char* a, const char* b) {
    for (;; ++a, ++b) {
        const int x = static_cast<unsigned char>(toLowerAscii(*a));
        const int y = static_cast<unsigned char>(toLowerAscii(*b));
        if (x != y || x == 0) return x - y;
    }
}

/// `text` in capitals.
inline std::string upperCase(std::string_view text) {
    std::string capitals(text);
    for (char& c : capitals) c = toUpperAscii(c);
    return capitals;
}

/// 8-bit text as wide text, byte by byte; bytes of 0x80 and above are taken as Latin-1.
inline std::wstring widen(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char c : text) wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return wide;
}

}  // namespace Ovik
