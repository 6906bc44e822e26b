// Telling whether two names lead to one file.
#include "common/samefile.h"

#include <system_error>

namespace tools {
namespace fs = std::filesystem;
namespace {

/// The path without links, also where the file is yet to come and a link leads to its place.
fs::path resolved(fs::path path) {
    constexpr int kMaxLinks = 40;  // as many as the systems follow
    std::error_code error;
    for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        const fs::path target = fs::read_symlink(path, error);
        if (error) break;
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    const fs::path canonical = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? path.lexically_normal() : canonical;
}

}  // namespace

bool isSameFile(const fs::path& a, const fs::path& b) {
    std::error_code error;
    const fs::file_status first = fs::status(a, error);
    const fs::file_status second = fs::status(b, error);
    const auto holdsText = [](const fs::file_status& status) {
        return !fs::exists(status) || fs::is_regular_file(status);
    };
    if (!holdsText(first) || !holdsText(second)) return false;
    if (fs::exists(first) && fs::exists(second)) return fs::equivalent(a, b, error);
    return !fs::exists(first) && !fs::exists(second) && resolved(a) == resolved(b);
}

}  // namespace tools
