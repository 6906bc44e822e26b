// Saying why something went wrong with a file, and what of it was not kept.
#pragma once

#include <filesystem>
#include <string>

#include "ovik/ovik.h"

namespace tools {

/// Writes "ovik: FILE: CAUSE" to standard error, as one line.
void complain(const std::filesystem::path& file, const std::string& cause);

/// Why `file` can't be opened for reading; empty if it can.
std::string whyUnreadable(const std::filesystem::path& file);

/// Why a load gave no model.
std::string whyNoModel(const Ovik::IfcLoadReport& report);

/// What of a file that gave a model was not kept, on one line; empty if all was.
std::string whatIsLost(const Ovik::IfcLoadReport& report);

/// Writes that to standard error, unless all was kept; without a log, with a hint at the option.
void tellLosses(const std::filesystem::path& file, const Ovik::IfcLoadReport& report, bool hasLog);

}  // namespace tools
