// The translations between a text and its spelling in a physical file. Each is one walk, run twice:
// first to learn the size of the block, then to fill it.
#include "ovik/imp/xstring.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "ovik/imp/hexdigit.h"
#include "ovik/parser/stringtext.h"

namespace Ovik {

const char16_t XString::s_emptyDecoded[1] = {};
const char XString::s_emptyEncoded[1] = {};

namespace {

constexpr char kFile[] = "imp/xstring";

/// A block for `length` characters and the NUL, with the NUL in place.
template <class Char>
Char* newBlock(std::size_t length) {
    auto* block =
        static_cast<Char*>(FastHeap::fastmalloc((length + 1) * sizeof(Char), kFile, __LINE__, 0));
    block[length] = 0;
    return block;
}

constexpr bool isPlain(char16_t c) {
    return c >= 0x20 && c <= 0x7E && c != u'\'' && c != u'\\';
}

constexpr char hexDigitAt(char16_t c, int shift) {
    return kHexDigits[(c >> shift) & 15];
}

/// Calls `emit` with each byte of the encoded form.
template <class Emit>
void encode(std::u16string_view text, Emit emit) {
    bool inRun = false;
    for (const char16_t c : text) {
        if (c >= 0x100) {
            if (!inRun) {
                for (const char e : {'\\', 'X', '2', '\\'}) emit(e);
                inRun = true;
            }
            for (const int shift : {12, 8, 4, 0}) emit(hexDigitAt(c, shift));
            continue;
        }
        if (inRun) {
            for (const char e : {'\\', 'X', '0', '\\'}) emit(e);
            inRun = false;
        }
        const char byte = static_cast<char>(c);
        if (isPlain(c)) {
            emit(byte);
        } else if (c == u'\'' || c == u'\\') {
            emit(byte);
            emit(byte);
        } else if (c >= 0xA0 && c <= 0xFE) {
            for (const char e : {'\\', 'S', '\\', static_cast<char>(c - 0x80)}) emit(e);
        } else {
            for (const char e : {'\\', 'X', '\\', hexDigitAt(c, 4), hexDigitAt(c, 0)}) emit(e);
        }
    }
    if (inRun) {
        for (const char e : {'\\', 'X', '0', '\\'}) emit(e);
    }
}

char16_t hexUnit(std::string_view digits) {
    unsigned value = 0;
    for (const char digit : digits) value = value * 16 + hexValue(digit);
    return static_cast<char16_t>(value);
}

/// Calls `emit` with each code unit of the decoded form. What is no escape this translator knows is
/// neither refused nor repaired; an escape that the end of the text cuts off gives nothing.
template <class Emit>
void decodeUnits(std::string_view text, Emit emit) {
    const std::size_t n = text.size();
    std::size_t i = 0;
    while (i < n) {
        const char c = text[i];
        if (c == '\'') {
            emit(u'\'');
            i += 2;
            continue;
        }
        if (c != '\\') {
            emit(static_cast<unsigned char>(c));
            ++i;
            continue;
        }
        if (i + 1 >= n) return;
        switch (text[i + 1]) {
            case '\\':
                emit(u'\\');
                i += 2;
                continue;
            case 'S':
                if (i + 3 >= n) return;
                emit(static_cast<char16_t>(static_cast<signed char>(text[i + 3]) + 0x80));
                i += 4;
                continue;
            case 'P':  // page switches are not followed: the letter and the rest come out as text
                i += 2;
                continue;
            default:
                break;
        }
        if (i + 2 >= n) return;
        const char kind = text[i + 2];
        if (kind == '\\') {
            if (i + 4 >= n) return;
            emit(hexUnit(text.substr(i + 3, 2)));
            i += 5;
        } else if (kind == '2') {
            i += 4;
            do {
                if (i + 4 > n) return;
                emit(hexUnit(text.substr(i, 4)));
                i += 4;
            } while (i < n && text[i] != '\\');
            i += 4;
        } else {
            i += 3;
        }
    }
}

char* encodeText(const char16_t* text, std::size_t length) {
    const std::u16string_view units(text, length);
    if (std::all_of(units.begin(), units.end(), isPlain)) {
        char* encoded = newBlock<char>(length);
        std::transform(text, text + length, encoded,
                       [](char16_t c) { return static_cast<char>(c); });
        return encoded;
    }
    std::size_t size = 0;
    encode(units, [&size](char) { ++size; });
    char* const encoded = newBlock<char>(size);
    encode(units, [out = encoded](char c) mutable { *out++ = c; });
    return encoded;
}

/// A block with the units that `walk(text, emit)` makes of an encoded form.
template <class Walk>
char16_t* decodeText(const char* text, std::size_t length, Walk walk) {
    if (!std::memchr(text, '\\', length) && !std::memchr(text, '\'', length)) {
        char16_t* decoded = newBlock<char16_t>(length);
        std::transform(text, text + length, decoded,
                       [](char c) { return static_cast<unsigned char>(c); });
        return decoded;
    }
    std::size_t size = 0;
    walk(std::string_view(text, length), [&size](char16_t) { ++size; });
    char16_t* const decoded = newBlock<char16_t>(size);
    walk(std::string_view(text, length), [out = decoded](char16_t c) mutable { *out++ = c; });
    return decoded;
}

}  // namespace

XString::XString(const char16_t* text) {
    if (!text) return;
    const std::size_t length = std::char_traits<char16_t>::length(text);
    char16_t* const decoded = newBlock<char16_t>(length);
    std::copy_n(text, length, decoded);
    decoded_ = decoded;
    encoded_ = encodeText(decoded, length);
    share();
}

template <class Walk>
XString XString::decodeBy(const char* encoded, Walk walk) {
    const std::size_t length = std::strlen(encoded);
    char* const copy = newBlock<char>(length);
    std::memcpy(copy, encoded, length);
    XString result;
    result.decoded_ = decodeText(copy, length, walk);
    result.encoded_ = copy;
    result.share();
    return result;
}

XString XString::decode(const char* encoded) {
    return decodeBy(encoded, [](std::string_view text, auto emit) { decodeUnits(text, emit); });
}

XString XString::decodeExact(const char* encoded) {
    return decodeBy(encoded,
                    [](std::string_view text, auto emit) { IfcParser::decodeExactly(text, emit); });
}

}  // namespace Ovik
