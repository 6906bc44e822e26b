// Binary values, kept as the text that a physical file has for them: a count digit, which says how
// many high bits of the first hexadecimal digit are unused, then the digits, highest first.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ovik/base/export.h"

namespace Ovik {

/// A sequence of bits. Copies share the text by count; a change of a bit makes an own copy first,
/// but `clear` is seen by all who share it and so must not run beside the use of a copy on another
/// thread. Otherwise copies may be made and dropped on any thread; one object belongs to one thread
/// at a time.
class OVIK_API XBinary {
 public:
    /// The bits that `text` encodes, letters put into capitals. Empty for null, for "" and when
    /// the count digit is above 3; the other digits are not looked at.
    XBinary(const char* text = nullptr);
    XBinary(const XBinary& other) noexcept;
    XBinary& operator=(const XBinary& other) noexcept;
    ~XBinary();

    /// What stands between the quotes of a physical file, NUL-terminated; "0" when empty. Valid
    /// until this value is changed.
    const char* getEncodedString() const { return encoded_; }

    /// True for a value without storage. A value made from "0" has no bits and is not empty.
    bool isEmpty() const { return encoded_ == s_emptyBinary; }

    /// Number of bits. Bit 0 is the lowest bit of the last digit.
    std::size_t numBits() const;

    /// Bit `i`, which must be below `numBits`.
    bool getBit(std::size_t i) const;

    /// Sets bit `i`; false, with nothing changed, unless it is below `numBits`.
    bool setBit(std::size_t i, bool on);

    /// Makes the value `bits` bits long. Shrinking keeps the low bits. The digits that growing
    /// adds are NUL characters, so the text of a grown value may end early. 0 empties the value.
    /// A value whose text was refused counts as that text's length when it comes to whether the
    /// length changes, and as no digits when it does.
    void resize(std::size_t bits);

    /// Overwrites every digit with NUL characters, for all that share the text; the number of bits
    /// stays. The bits have no meaning then until the value is assigned anew.
    void clear();

 private:
    // What an empty value points at; never counted and never written to.
    static const char s_emptyBinary[2];

    void release(bool reset);
    void makeOwnCopy();

    char* encoded_ = const_cast<char*>(s_emptyBinary);
    std::uint64_t length_ = 0;
    std::uint32_t unusedBits_ = 0;
};

}  // namespace Ovik
