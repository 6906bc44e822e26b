// Reals as text, in any locale. Internal.
#pragma once

#include <cstddef>

namespace Ovik {

/// The most bytes that a real takes.
inline constexpr std::size_t kLongestReal = 32;

/// Puts `value` at `out` as a plain writing has it: what is integral but for a tiny fraction as an
/// integer with a point, all else with 16 significant digits. The end of it.
char* putPlainReal(char* out, double value);

/// Puts `value`, which must be finite, with the fewest digits that read back the same, always with
/// a point: `0.1`, `-25.`, `1.E-07`. The end of it.
char* putExactReal(char* out, double value);

}  // namespace Ovik
