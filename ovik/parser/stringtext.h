// The text of string constants as ISO 10303-21 defines it, for exact parses: which bytes are an
// escape, and what text they stand for. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ovik/base/unicode.h"

namespace Ovik::IfcParser {

/// The length of the escape that `text` begins with; 1 for a backslash that opens none. `text`
/// begins with a backslash. The escapes are `\\`, `\S\c` with any byte c, `\P?\` with ? from A to
/// I, `\X\hh`, `\X2\...\X0\`, `\X4\...\X0\`, `\N\` and `\F\`.
std::size_t escapeLength(std::string_view text);

/// Passes over the characters and escapes of `text` from `from` on, which stands between two: the
/// size of `text`, or one more if an `\S\` at the end waits for the character that it takes along.
std::size_t skipText(std::string_view text, std::size_t from);

/// Makes the constant that is `text` from `from` on fit to have another appended: backslashes that
/// open no escape are doubled, so that none arises at the joint, and no page is carried over it.
void closeConstant(std::string& text, std::size_t from);

/// What byte `c` of 0xA0 or above is on a page of ISO 8859, 'A' (part 1) to 'I' (part 9); U+FFFD
/// where the page has nothing.
char16_t onPage(char page, unsigned char c);

/// The number that hexadecimal digits of either case stand for.
constexpr char32_t hexNumber(std::string_view digits) {
    char32_t value = 0;
    for (const char digit : digits) {
        const auto c = static_cast<char32_t>(digit);
        value = value * 16 + (c <= U'9' ? c - U'0' : (c | 0x20) - U'a' + 10);
    }
    return value;
}

/// Calls `emit` with each 16-bit unit of the text that the encoded form `text` stands for. A
/// backslash that opens no escape is a backslash. A raw byte is the character of its value. What
/// is no character, and NUL, which would end the text, becomes U+FFFD.
template <class Emit>
void decodeExactly(std::string_view text, Emit emit) {
    char page = 'A';
    const auto put = [&emit](char32_t c) {
        if (c >= 0x10000 && c <= 0x10FFFF) {
            emit(static_cast<char16_t>(0xD7C0 + (c >> 10)));
            emit(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
        } else {
            emit(static_cast<char16_t>(c == 0 || c > 0x10FFFF ? kReplacementCharacter : c));
        }
    };
    for (std::size_t i = 0; i < text.size();) {
        if (text[i] != '\\') {
            const bool doubled = text.substr(i, 2) == "''";
            put(static_cast<unsigned char>(text[i]));
            i += doubled ? 2 : 1;
            continue;
        }
        const std::string_view escape = text.substr(i, escapeLength(text.substr(i)));
        i += escape.size();
        if (escape.size() <= 2) {
            put(U'\\');
            continue;
        }
        switch (escape[1]) {
            case 'S': {
                const auto c = static_cast<unsigned char>(escape[3] ^ 0x80);
                put(c < 0xA0 ? c : onPage(page, c));
                break;
            }
            case 'P':
                page = escape[2];
                break;
            case 'X':
                if (escape[2] == '\\') {
                    put(hexNumber(escape.substr(3)));
                    break;
                }
                for (std::size_t digits = escape[2] == '2' ? 4 : 8, k = 4; k + 4 < escape.size();
                     k += digits) {
                    put(hexNumber(escape.substr(k, digits)));
                }
                break;
            default:  // \N\ and \F\ stand for no character
                break;
        }
    }
}

}  // namespace Ovik::IfcParser
