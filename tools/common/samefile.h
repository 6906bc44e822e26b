// Telling whether two names lead to one file.
#pragma once

#include <filesystem>

namespace tools {

/// True if a file written under one name would be, or take the place of, the file that the other
/// leads to: the same path, a symbolic or a hard link to it, there already or not. Devices and
/// pipes are never the same: nothing in them is lost.
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

}  // namespace tools
