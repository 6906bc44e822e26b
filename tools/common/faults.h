// Error messages of the programs: what is wrong with a file.
#pragma once

#include <filesystem>
#include <string>

#include "ovik/ovik.h"

namespace tools {

/// Writes "ovik: FILE: CAUSE" to standard error, as one line.
void complain(const std::filesystem::path& file, const std::string& cause);

/// Why `file` can't be opened for reading; empty if it can.
std::string whyUnreadable(const std::filesystem::path& file);

/// Why a load has given no model.
std::string whyNoModel(const Ovik::IfcLoadReport& report);

}  // namespace tools
