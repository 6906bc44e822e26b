// The three-valued logical of the schemas.
#pragma once

#include <cstdint>

#include "ovik/base/export.h"

namespace Ovik {

/// True, false or unknown.
class OVIK_API Logical {
 public:
    /// Unknown.
    constexpr Logical() = default;
    constexpr Logical(bool b) : value_(b ? kTrue : kFalse) {}
    template <class T>
    Logical(T*) = delete;  // a text would be taken for true

    constexpr bool isKnown() const { return value_ != kUnknown; }
    constexpr bool isUnknown() const { return value_ == kUnknown; }

    /// True only for true: unknown converts to false, and so compares equal to it.
    constexpr operator bool() const { return value_ == kTrue; }

 private:
    // True is zero.
    static constexpr std::uint32_t kTrue = 0;
    static constexpr std::uint32_t kFalse = 1;
    static constexpr std::uint32_t kUnknown = 2;

    std::uint32_t value_ = kUnknown;
};

}  // namespace Ovik
