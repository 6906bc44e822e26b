// Text of a file made safe to show.
#include "common/plaintext.h"

#include <cstddef>
#include <string_view>

namespace tools {
namespace {

/// The number of bytes at the start of `text` that make a character to be blanked; 0 for another.
std::size_t lengthOfActing(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    if (byte(0) < 0x20 || byte(0) == 0x7F) return 1;
    if (byte(0) == 0xC2 && byte(1) >= 0x80 && byte(1) < 0xA0) return 2;
    const bool embeds = byte(1) == 0x80 && byte(2) >= 0xAA && byte(2) <= 0xAE;    // U+202A to 202E
    const bool isolates = byte(1) == 0x81 && byte(2) >= 0xA6 && byte(2) <= 0xA9;  // U+2066 to 2069
    return byte(0) == 0xE2 && (embeds || isolates) ? 3 : 0;
}

}  // namespace

std::string plainText(std::string text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t length = lengthOfActing(std::string_view(text).substr(i));
        if (length > 0) text.replace(i, length, " ");
    }
    return text;
}

}  // namespace tools
