// Both forms of an identifier, each made from the 16 bytes that the other one spells.
#include "ovik/imp/base64guid.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <random>

#include "ovik/imp/hexdigit.h"

namespace Ovik {
namespace {

constexpr std::size_t kBase64Length = 22;
constexpr std::size_t kTextLength = 38;
constexpr char kAlphabet[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";
// Where the digit pairs of the 16 bytes stand in the braced form.
constexpr std::size_t kPairs[16] = {1, 3, 5, 7, 10, 12, 15, 17, 20, 22, 25, 27, 29, 31, 33, 35};

using Bytes = std::array<std::uint8_t, 16>;

constexpr unsigned base64Value(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'Z') return static_cast<unsigned>(c - 'A') + 10;
    if (c >= 'a' && c <= 'z') return static_cast<unsigned>(c - 'a') + 36;
    return c == '_' ? 62 : 63;
}

// The first byte takes two characters, each three bytes behind it take four.
Bytes bytesOfBase64(const char* base64) {
    Bytes bytes;
    bytes[0] = static_cast<std::uint8_t>((base64Value(base64[0]) << 6) | base64Value(base64[1]));
    const char* c = base64 + 2;
    for (std::size_t i = 1; i < bytes.size(); i += 3, c += 4) {
        const unsigned group = (base64Value(c[0]) << 18) | (base64Value(c[1]) << 12) |
                               (base64Value(c[2]) << 6) | base64Value(c[3]);
        bytes[i] = static_cast<std::uint8_t>(group >> 16);
        bytes[i + 1] = static_cast<std::uint8_t>(group >> 8);
        bytes[i + 2] = static_cast<std::uint8_t>(group);
    }
    return bytes;
}

void writeBase64(const Bytes& bytes, char* base64) {
    *base64++ = kAlphabet[bytes[0] >> 6];
    *base64++ = kAlphabet[bytes[0] & 63];
    for (std::size_t i = 1; i < bytes.size(); i += 3) {
        const unsigned group =
            (unsigned{bytes[i]} << 16) | (unsigned{bytes[i + 1]} << 8) | bytes[i + 2];
        for (const int shift : {18, 12, 6, 0}) *base64++ = kAlphabet[(group >> shift) & 63];
    }
    *base64 = 0;
}

Bytes bytesOfText(const char* text) {
    Bytes bytes;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char* pair = text + kPairs[i];
        bytes[i] = static_cast<std::uint8_t>(hexValue(pair[0]) * 16 + hexValue(pair[1]));
    }
    return bytes;
}

void writeText(const Bytes& bytes, char* text) {
    std::memcpy(text, "{00000000-0000-0000-0000-000000000000}", kTextLength + 1);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text[kPairs[i]] = kHexDigits[bytes[i] >> 4];
        text[kPairs[i] + 1] = kHexDigits[bytes[i] & 15];
    }
}

}  // namespace

Base64Guid::Base64Guid(Base64Guid&& other) noexcept {
    swap(other);
}

Base64Guid& Base64Guid::operator=(Base64Guid&& other) noexcept {
    swap(other);
    return *this;
}

Base64Guid Base64Guid::create() {
    thread_local std::random_device random;
    Bytes bytes;
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        const std::random_device::result_type word = random();
        std::memcpy(&bytes[i], &word, 4);
    }
    // The marks of a random identifier: version 4, variant 1.
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
    Base64Guid guid;
    writeText(bytes, guid.text_);
    writeBase64(bytes, guid.base64_);
    return guid;
}

Base64Guid Base64Guid::createFromBase64(const char* base64) {
    Base64Guid guid;
    std::memcpy(guid.base64_, base64, strnlen(base64, kBase64Length));
    writeText(bytesOfBase64(guid.base64_), guid.text_);
    return guid;
}

Base64Guid Base64Guid::createFromText(const char* text) {
    const std::size_t length = std::strlen(text);
    if (length == kBase64Length) return createFromBase64(text);
    Base64Guid guid;
    std::memcpy(guid.text_, text, std::min(length, kTextLength));
    writeBase64(bytesOfText(guid.text_), guid.base64_);
    return guid;
}

bool Base64Guid::operator==(const Base64Guid& other) const {
    return std::strcmp(base64_, other.base64_) == 0 && std::strcmp(text_, other.text_) == 0;
}

const Base64Guid& Base64Guid::testGuid() {
    static const Base64Guid guid = createFromBase64("_dummy_GUID_dummy_GIUD");
    return guid;
}

void Base64Guid::swap(Base64Guid& other) noexcept {
    std::swap(base64_, other.base64_);
    std::swap(text_, other.text_);
}

}  // namespace Ovik
