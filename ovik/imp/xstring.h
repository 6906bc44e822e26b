// String values: the text as the caller works with it and the same text as a physical file spells
// it, side by side. Both are made when the value is made, so that the escapes of a string read
// from a file go out as they came in and writing costs nothing but copying stored text.
#pragma once

#include <compare>
#include <utility>

#include "ovik/base/export.h"
#include "ovik/base/fastheap.h"

namespace Ovik {

/// An immutable string, or no string at all: an empty value means "unset" and is another thing than
/// a present text without characters. Copies share the text by count. Copies may be made and
/// dropped on any thread; one object belongs to one thread at a time.
class OVIK_API XString {
 public:
    /// A string of the 16-bit code units of `text`, up to its NUL; unset for null. The encoded form
    /// spells it in 7-bit characters.
    XString(const char16_t* text = nullptr);

    XString(const XString& other) noexcept : decoded_(other.decoded_), encoded_(other.encoded_) {
        share();
    }
    /// Leaves `other` unset.
    XString(XString&& other) noexcept
        : decoded_(std::exchange(other.decoded_, s_emptyDecoded)),
          encoded_(std::exchange(other.encoded_, s_emptyEncoded)) {}
    XString& operator=(const XString& other) noexcept {
        // The count is taken first, so that assigning a value to itself can't free it.
        other.share();
        drop();
        decoded_ = other.decoded_;
        encoded_ = other.encoded_;
        return *this;
    }
    /// Leaves `other` unset.
    XString& operator=(XString&& other) noexcept {
        XString taken(std::move(other));
        std::swap(decoded_, taken.decoded_);
        std::swap(encoded_, taken.encoded_);
        return *this;
    }
    virtual ~XString() { drop(); }

    /// The string that a file spells `encoded`, which is kept as its encoded form verbatim. Escapes
    /// are not checked: malformed ones give some text. `encoded` must not be null.
    static XString decode(const char* encoded);

    /// The same, but with the text that ISO 10303-21 gives to `encoded`, all its escapes included:
    /// also `\X4\`, and `\P?\`, which chooses the page of ISO 8859 for each `\S\` behind it; `\N\`
    /// and `\F\` stand for nothing. A backslash that opens no escape is a backslash, and a byte of
    /// 0x80 or above the character of its value, as in `decode`. What is no character becomes
    /// U+FFFD, a NUL too. For a string of an exact parse.
    static XString decodeExact(const char* encoded);

    /// The text, NUL-terminated; "" when unset. Valid until the last copy of this value goes.
    const char16_t* c_str() const { return decoded_; }
    operator const char16_t*() const { return decoded_; }

    // Through the conversion above these would compare and order addresses.
    bool operator==(const XString&) const = delete;  // compare std::u16string_view(a.c_str())
    std::strong_ordering operator<=>(const XString&) const = delete;  // order by the same views

    /// What stands between the apostrophes of a physical file; "" when unset.
    const char* getEncoded() const { return encoded_; }

    /// True when unset. A present text without characters is not empty.
    bool isEmpty() const { return encoded_ == s_emptyEncoded; }
    void setEmpty() {
        drop();
        decoded_ = s_emptyDecoded;
        encoded_ = s_emptyEncoded;
    }

 private:
    // An unset value points at these two, and is told from a present "" by the address alone. They
    // are never counted.
    static const char16_t s_emptyDecoded[1];
    static const char s_emptyEncoded[1];
    static constexpr char kFile[] = "imp/xstring";

    template <class Walk>
    static XString decodeBy(const char* encoded, Walk walk);

    void share() const {
        if (isEmpty()) return;
        FastHeap::addRef(encoded_, kFile, __LINE__);
        FastHeap::addRef(decoded_, kFile, __LINE__);
    }
    void drop() const {
        if (isEmpty()) return;
        FastHeap::release(encoded_, kFile, __LINE__);
        FastHeap::release(decoded_, kFile, __LINE__);
    }

    const char16_t* decoded_ = s_emptyDecoded;
    const char* encoded_ = s_emptyEncoded;
};

}  // namespace Ovik
