// UTF-8 and UTF-16, and paths given as wide text. The conversions of the C++ library depend on the
// locale and throw on what it doesn't know; these do neither. Internal.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace Ovik {

/// Replaces what is not a valid character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;
/// The most bytes that a character takes in UTF-8.
inline constexpr int kLongestUtf8 = 4;

constexpr bool isHighSurrogate(char32_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}
/// The character that a pair of surrogates stands for.
constexpr char32_t joinSurrogates(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// Writes `c` as UTF-8 to `out`, which has room for `kLongestUtf8` bytes, and returns the end of
/// what it wrote. What is not a valid character becomes U+FFFD.
char* putUtf8(char32_t c, char* out);

/// The character at `i` of UTF-8 text; `i` moves past it. A malformed sequence gives one U+FFFD for
/// the longest part of it that could have begun a character.
char32_t nextCharacter(std::string_view text, std::size_t& i);

/// Text of 16-bit units, or of whole characters where `Unit` is wider, as UTF-8. An unpaired
/// surrogate becomes U+FFFD.
template <class Unit>
std::string encodeUtf8(std::basic_string_view<Unit> text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<char32_t>(text[i]);
        if (isHighSurrogate(c) && i + 1 < text.size() &&
            isLowSurrogate(static_cast<char32_t>(text[i + 1]))) {
            c = joinSurrogates(c, static_cast<char32_t>(text[++i]));
        }
        char bytes[kLongestUtf8];
        out.append(bytes, putUtf8(c, bytes));
    }
    return out;
}

/// The path that wide text names, as UTF-8 where paths are bytes.
std::filesystem::path pathFromWide(std::wstring_view text);
/// A path as wide text; bytes that are no UTF-8 become U+FFFD.
std::wstring wideFromPath(const std::filesystem::path& path);

}  // namespace Ovik
