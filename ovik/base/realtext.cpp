// Reals as physical files spell them.
#include "ovik/base/realtext.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <string_view>

namespace Ovik {

void appendShortestReal(std::string& text, double value) {
    if (std::signbit(value)) text += '-';
    if (std::isinf(value)) {
        text += "1.E999";
        return;
    }
    // d.ddde+dd, or de+dd
    char buffer[32];
    const char* const end =
        std::to_chars(buffer, std::end(buffer), std::fabs(value), std::chars_format::scientific)
            .ptr;
    const std::string_view all(buffer, end);
    const std::size_t mark = all.find('e');
    const std::string_view first = all.substr(0, 1);
    const std::string_view others = mark > 1 ? all.substr(2, mark - 2) : std::string_view();
    const std::size_t sign = mark + 1;
    int exponent = 0;
    std::from_chars(buffer + sign + 1, end, exponent);
    if (all[sign] == '-') exponent = -exponent;

    if (exponent < -4 || exponent > 15) {
        text.append(first).append(".").append(others).append("E").append(all.substr(sign));
    } else if (exponent < 0) {
        text.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0');
        text.append(first).append(others);
    } else {
        const auto whole = static_cast<std::size_t>(exponent);
        text.append(first).append(others.substr(0, whole));
        if (others.size() < whole) text.append(whole - others.size(), '0');
        text += '.';
        if (others.size() > whole) text.append(others.substr(whole));
    }
}

}  // namespace Ovik
