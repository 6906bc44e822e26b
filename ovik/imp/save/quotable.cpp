// The walk of an exact scan over the apostrophes of a string constant.
#include "ovik/imp/save/quotable.h"

#include <algorithm>
#include <cstddef>

#include "ovik/parser/stringtext.h"

namespace Ovik {

bool isQuotable(std::string_view encoded) {
    // Nearly all texts have only what stands for itself.
    bool isPlain = true;
    for (const char c : encoded) {
        isPlain &= (c != '\'') & (c != '\\') & (c != '\n') & (c != '\r');
    }
    if (isPlain) return true;
    if (encoded.find_first_of("\r\n") != std::string_view::npos) return false;
    std::size_t i = 0;
    for (;;) {
        const std::size_t mark = std::min(encoded.find('\'', i), encoded.size());
        const bool isTaken = IfcParser::skipText(encoded.substr(0, mark), i) > mark;
        if (mark == encoded.size()) return !isTaken;
        if (!isTaken && !encoded.substr(mark).starts_with("''")) return false;
        i = mark + (isTaken ? 1 : 2);
    }
}

}  // namespace Ovik
