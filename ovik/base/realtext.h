// Reals as physical files spell them. Internal.
#pragma once

#include <string>

namespace Ovik {

/// Appends a real by the fewest digits that read back the same, always with a point: `2.`,
/// `0.0001`, `1.5E-05`; with an exponent below 1E-4 and from 1E16 on. An infinity is spelled by a
/// number beyond the range of a `double`. Not for what is no number.
void appendShortestReal(std::string& text, double value);

}  // namespace Ovik
