// Opening files to be parsed.
#pragma once

#include <filesystem>
#include <fstream>

namespace Ovik {

/// Opens a file for reading. The stream is in its fail state if that can't be done, also for a
/// directory, which some platforms would open and then fail to read.
std::ifstream openInput(const std::filesystem::path& path);

}  // namespace Ovik
