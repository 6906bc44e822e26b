// Templates: texts with named holes, and the ways to compose what goes into them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace Ovik::Generator {

struct Hole {
    std::string_view name;
    std::string text;
};

/// `text` with `{{name}}` replaced by the text of the hole `name`. A hole that stands alone on its
/// line takes whole lines: given nothing, its line is gone, and a text that ends its last line
/// itself is not followed by an empty one. The line end that a template begins with is not part of
/// it. Throws `std::logic_error` for a hole without a text.
std::string fill(std::string_view text, std::initializer_list<Hole> holes);

/// `text` if `condition` holds, else nothing.
inline std::string when(bool condition, std::string text) {
    return condition ? std::move(text) : std::string();
}

/// The texts that `piece` makes of the parts of `list`, one after the other.
template <class List, class Piece>
std::string each(const List& list, Piece piece) {
    std::string result;
    for (const auto& part : list) result += piece(part);
    return result;
}

std::string join(const std::vector<std::string>& parts, std::string_view separator);

}  // namespace Ovik::Generator
