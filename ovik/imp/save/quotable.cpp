// The walk over the escapes that can take an apostrophe along.
#include "ovik/imp/save/quotable.h"

#include <cstring>

namespace Ovik {

bool isQuotable(std::string_view encoded) {
    // Nearly all texts have none of the two.
    if (!std::memchr(encoded.data(), '\'', encoded.size()) &&
        !std::memchr(encoded.data(), '\\', encoded.size())) {
        return true;
    }
    std::size_t i = 0;
    while (i < encoded.size()) {
        const std::string_view rest = encoded.substr(i);
        if (rest[0] == '\'') {
            if (!rest.starts_with("''")) return false;
            i += 2;
        } else if (rest.starts_with("\\S\\")) {
            i += 4;
        } else {
            i += rest.starts_with("\\\\") ? 2 : 1;
        }
    }
    return i == encoded.size();
}

}  // namespace Ovik
