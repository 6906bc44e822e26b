// Global identifiers in their two textual forms: the 22 characters of a physical file and the
// braced text.
#pragma once

#include "ovik/base/export.h"

namespace Ovik {

/// A 128-bit identifier. Both forms are kept inline, so a value never allocates. Nothing is
/// refused: malformed text gives some identifier.
class OVIK_API Base64Guid {
 public:
    /// Both forms empty.
    Base64Guid() = default;
    Base64Guid(const Base64Guid&) = default;
    Base64Guid& operator=(const Base64Guid&) = default;
    /// Leaves `other` empty.
    Base64Guid(Base64Guid&& other) noexcept;
    /// Swaps the two values.
    Base64Guid& operator=(Base64Guid&& other) noexcept;

    /// A new random identifier (version 4). Throws what `std::random_device` throws.
    static Base64Guid create();

    /// From the first 22 characters of `base64`. A character outside the alphabet counts as `$`,
    /// and so do those that a shorter text lacks. `base64` must not be null.
    static Base64Guid createFromBase64(const char* base64);

    /// From the compressed form if `text` has exactly 22 characters, else from the braced form
    /// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", of which only the places of the digits count.
    /// Only capital letters are read as digits rightly. The braced text is kept as given. `text`
    /// must not be null.
    static Base64Guid createFromText(const char* text);

    /// The 22 characters; "" in an empty value.
    const char* getBase64() const { return base64_; }
    /// The braced text; "" in an empty value.
    const char* getText() const { return text_; }

    /// Equal when both forms are.
    bool operator==(const Base64Guid& other) const;
    bool operator!=(const Base64Guid& other) const { return !(*this == other); }

    /// The one identifier of models made for repeatable output. Thread-safe.
    static const Base64Guid& testGuid();

 private:
    void swap(Base64Guid& other) noexcept;

    char base64_[23] = {};
    char text_[39] = {};
};

static_assert(sizeof(Base64Guid) == 62, "the two texts and nothing else");

}  // namespace Ovik
