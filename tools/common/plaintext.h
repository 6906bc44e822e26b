// Text of a file made safe to show.
#pragma once

#include <string>

namespace tools {

/// UTF-8 text on one line, with a blank for each character that a terminal or a page would act on:
/// control characters, and those that turn the direction of what follows.
std::string plainText(std::string text);

}  // namespace tools
