// Both spellings come from one scientific form, whose point is moved.
#include "ovik/base/realtext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Ovik {
namespace {

// A real whose fraction is smaller than this is written as an integer with a point.
constexpr double kFractionTolerance = 1e-12;
// The magnitude that a signed 64-bit integer can't hold any more.
constexpr double kIntegerLimit = 9223372036854775808.0;
// From here on not every integer is a double.
constexpr double kExactIntegerLimit = 9007199254740992.0;

constexpr int kSignificantDigits = 16;
// The decimal exponents that are written without `E`.
constexpr int kMinFixedExponent = -4;
constexpr int kMaxFixedExponent = kSignificantDigits - 1;

char* put(char* out, std::string_view text) {
    return std::copy(text.begin(), text.end(), out);
}

char* putInteger(char* out, std::int64_t value) {
    return std::to_chars(out, out + kLongestReal, value).ptr;
}

// Puts the number whose scientific form is [text, end): a digit, perhaps a point and others, "e",
// sign and exponent. Digits that a place before the point lacks are zeros.
char* putScientific(char* out, char* text, char* end) {
    char* const letter = std::find(text + 1, end, 'e');
    int exponent = 0;
    std::from_chars(letter + 2, end, exponent);
    if (letter[1] == '-') exponent = -exponent;
    // The digits after the first, which may lack a point.
    const std::string_view digits(
        std::min(text + 2, letter),
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(letter - text - 2, 0)));

    if (exponent < kMinFixedExponent || exponent > kMaxFixedExponent) {
        *out++ = *text;
        *out++ = '.';
        out = put(out, digits);
        *out++ = 'E';
        return std::copy(letter + 1, end, out);
    }
    if (exponent < 0) {
        out = put(out, "0.");
        out = std::fill_n(out, -exponent - 1, '0');
        *out++ = *text;
        return put(out, digits);
    }
    const auto whole = static_cast<std::size_t>(exponent);
    *out++ = *text;
    if (digits.size() <= whole) {
        out = put(out, digits);
        out = std::fill_n(out, whole - digits.size(), '0');
        *out++ = '.';
        return out;
    }
    out = put(out, digits.substr(0, whole));
    *out++ = '.';
    return put(out, digits.substr(whole));
}

}  // namespace

char* putPlainReal(char* out, double value) {
    if (std::fabs(value) < kIntegerLimit) {
        const auto whole = static_cast<std::int64_t>(value);
        const double fraction = value - static_cast<double>(whole);
        if (std::fabs(fraction) <= kFractionTolerance) {
            out = putInteger(out, whole);
            *out++ = '.';
            return out;
        }
    }
    // What the C format "%#.16G" gives.
    if (std::signbit(value)) *out++ = '-';
    if (!std::isfinite(value)) return put(out, std::isnan(value) ? "NAN" : "INF");
    char text[kLongestReal];
    char* const end = std::to_chars(text, text + sizeof text, std::fabs(value),
                                    std::chars_format::scientific, kSignificantDigits - 1)
                          .ptr;
    return putScientific(out, text, end);
}

char* putShortestReal(char* out, double value) {
    if (std::signbit(value)) *out++ = '-';
    if (std::isinf(value)) return put(out, "1.E999");
    value = std::fabs(value);
    if (value < kExactIntegerLimit) {
        const auto whole = static_cast<std::int64_t>(value);
        if (static_cast<double>(whole) == value) {
            out = putInteger(out, whole);
            *out++ = '.';
            return out;
        }
    }
    char text[kLongestReal];
    char* const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    return putScientific(out, text, end);
}

}  // namespace Ovik
