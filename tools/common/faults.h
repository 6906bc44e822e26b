// Error messages of the programs: what is wrong with a file.
#pragma once

#include <filesystem>
#include <string>

namespace tools {

/// Writes "ovik: FILE: CAUSE" to standard error, as one line.
void complain(const std::filesystem::path& file, const std::string& cause);

/// Why `file` can't be opened for reading; empty if it can.
std::string whyUnreadable(const std::filesystem::path& file);

/// Why a file that can be read has no model.
std::string whyNoModel(const std::filesystem::path& file);

}  // namespace tools
