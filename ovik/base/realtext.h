// Reals as physical files spell them, whatever the locale. Internal.
#pragma once

#include <cstddef>

namespace Ovik {

/// The most bytes that a real takes.
inline constexpr std::size_t kLongestReal = 32;

/// Puts `value` at `out` as `IfcModel::write` has it: what is integral but for a tiny fraction as
/// an integer with a point, all else with 16 significant digits. The end of it.
char* putPlainReal(char* out, double value);

/// Puts `value` at `out` with the fewest digits that read back the same, always with a point:
/// `0.1`, `-25.`, `1.E-07`; with an exponent below 1E-4 and from 1E16 on. An infinity is spelled as
/// a number beyond the range of a `double`. Not for what is no number. The end of it.
char* putShortestReal(char* out, double value);

}  // namespace Ovik
