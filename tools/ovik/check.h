// What is wrong in a file: on the exact road's terms, what it could not keep, and on the plain
// road's, what it repaired or removed.
#pragma once

#include <filesystem>
#include <iosfwd>

namespace tools {

/// Loads `file` on both roads and writes the faults to `out`, grouped by cause, as text or as JSON.
/// Answers with the exit status: 0 clean, 1 no model, 3 something is wrong.
int checkFile(const std::filesystem::path& file, bool json, std::ostream& out);

}  // namespace tools
