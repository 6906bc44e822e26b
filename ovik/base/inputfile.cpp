// Opening files to be parsed.
#include "ovik/base/inputfile.h"

#include <system_error>

namespace Ovik {

std::ifstream openInput(const std::filesystem::path& path) {
    std::ifstream stream;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        stream.setstate(std::ios::failbit);
    } else {
        stream.open(path);
    }
    return stream;
}

}  // namespace Ovik
