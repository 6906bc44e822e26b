// Bits read and set straight on the encoded text.
//
// Every block has one byte more than the text and its NUL, which is NUL for good: growing from the
// empty value puts a character where the text's own NUL stands.
#include "ovik/imp/xbinary.h"

#include <algorithm>
#include <cstring>

#include "ovik/base/ascii.h"
#include "ovik/base/fastheap.h"
#include "ovik/imp/hexdigit.h"

namespace Ovik {
namespace {

constexpr char kFile[] = "imp/xbinary";
constexpr std::uint32_t kMaxUnusedBits = 3;

/// A block for a text of `length`, with one count taken.
char* newBlock(std::uint64_t length) {
    void* block = FastHeap::fastmalloc(length + 2, kFile, __LINE__, 0);
    FastHeap::addRef(block, kFile, __LINE__);
    auto* text = static_cast<char*>(block);
    text[length + 1] = 0;
    return text;
}

}  // namespace

const char XBinary::s_emptyBinary[2] = "0";

XBinary::XBinary(const char* text) {
    if (!text) return;
    // The length stays even where the count digit is refused.
    length_ = std::strlen(text);
    if (length_ == 0) return;
    const std::uint32_t count = hexValue(text[0]);
    if (count > kMaxUnusedBits) return;
    unusedBits_ = count;
    encoded_ = newBlock(length_);
    std::transform(text, text + length_ + 1, encoded_, toUpperAscii);
}

XBinary::XBinary(const XBinary& other) noexcept
    : encoded_(other.encoded_), length_(other.length_), unusedBits_(other.unusedBits_) {
    if (!isEmpty()) FastHeap::addRef(encoded_, kFile, __LINE__);
}

XBinary& XBinary::operator=(const XBinary& other) noexcept {
    if (this == &other) return *this;
    release(false);
    encoded_ = other.encoded_;
    length_ = other.length_;
    unusedBits_ = other.unusedBits_;
    if (!isEmpty()) FastHeap::addRef(encoded_, kFile, __LINE__);
    return *this;
}

XBinary::~XBinary() {
    release(false);
}

std::size_t XBinary::numBits() const {
    if (isEmpty() || length_ <= 1) return 0;
    return length_ * 4 - unusedBits_ - 4;
}

bool XBinary::getBit(std::size_t i) const {
    const std::uint64_t digit = i / 4;
    if (isEmpty() || digit >= length_) return false;
    return (hexValue(encoded_[length_ - 1 - digit]) >> (i % 4)) & 1;
}

bool XBinary::setBit(std::size_t i, bool on) {
    if (isEmpty() || i >= numBits()) return false;
    if (getBit(i) == on) return true;
    makeOwnCopy();
    char& digit = encoded_[length_ - 1 - i / 4];
    digit = kHexDigits[(hexValue(digit) ^ (1u << (i % 4))) & 15];
    return true;
}

void XBinary::resize(std::size_t bits) {
    if (bits == 0) {
        release(true);
        return;
    }
    const auto unused = static_cast<std::uint32_t>((4 - bits % 4) % 4);
    const std::uint64_t newLength = bits / 4 + (bits % 4 ? 1 : 0) + 1;
    if (newLength == length_ && unused == unusedBits_) return;

    if (newLength == length_ && !isEmpty()) {
        makeOwnCopy();
        unusedBits_ = unused;
        encoded_[0] = kHexDigits[unused];
        // The mask goes over the character's code, not over the digit's value.
        if (unused) encoded_[1] = static_cast<char>(encoded_[1] & ~((15u >> unused) << unused));
        return;
    }

    // A refused text has a length without a block, so an empty value counts as a length of 0.
    const std::uint64_t oldLength = isEmpty() ? 0 : length_;
    const std::uint64_t keep = std::min(oldLength, newLength) + 1;
    const std::uint64_t pad = newLength + 1 - keep;
    char* const block = newBlock(newLength);
    std::memset(block, 0, pad);
    std::memcpy(block + pad, encoded_ + oldLength + 1 - keep, keep);
    block[0] = kHexDigits[unused];
    release(false);
    encoded_ = block;
    length_ = newLength;
    unusedBits_ = unused;
}

void XBinary::clear() {
    if (!isEmpty()) std::memset(encoded_ + 1, 0, length_ - 1);
}

void XBinary::release(bool reset) {
    if (!isEmpty()) FastHeap::release(encoded_, kFile, __LINE__);
    if (reset) {
        encoded_ = const_cast<char*>(s_emptyBinary);
        length_ = 0;
        unusedBits_ = 0;
    }
}

void XBinary::makeOwnCopy() {
    if (isEmpty() || FastHeap::numRefs(encoded_, kFile, __LINE__) <= 1) return;
    char* const copy = newBlock(length_);
    std::memcpy(copy, encoded_, length_ + 1);
    FastHeap::release(encoded_, kFile, __LINE__);
    encoded_ = copy;
}

}  // namespace Ovik
