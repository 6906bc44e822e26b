// Hexadecimal digits as the values of a physical file have them. Internal.
#pragma once

namespace Ovik {

inline constexpr char kHexDigits[] = "0123456789ABCDEF";

/// The value of a digit. Only capitals are read as letters: any other byte but a decimal digit
/// counts from the same origin, wraps below it, and so gives some number.
constexpr unsigned hexValue(char digit) {
    const auto code = static_cast<unsigned char>(digit);
    return digit >= '0' && digit <= '9' ? code - 0x30u : code - 0x37u;
}

}  // namespace Ovik
