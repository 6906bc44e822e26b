// String values as UTF-8 and back.
#pragma once

#include <string>
#include <string_view>

#include "ovik/base/export.h"
#include "ovik/imp/xstring.h"

namespace Ovik {

/// The text of `value` in UTF-8; "" when unset. An unpaired surrogate becomes U+FFFD.
OVIK_API std::string toUtf8(const XString& value);

/// A present string of `text`, up to its first NUL character if it has one. Each malformed
/// sequence becomes one U+FFFD. `fromUtf8("")` is a present text without characters.
OVIK_API XString fromUtf8(std::string_view text);

}  // namespace Ovik
