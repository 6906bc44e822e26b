// What all generated files share.
#pragma once

#include <filesystem>
#include <string>

#include "schema.h"

namespace Ovik::Generator {

/// The first line of a generated file.
std::string banner(const Schema& schema);

/// The name hash of the schema.
unsigned nameHash(const Schema& schema, const std::string& name);

/// Leaves a file that would not change alone, so that what depends on it is not built again. Throws
/// `std::runtime_error` if the file can't be written.
void writeIfChanged(const std::filesystem::path& path, const std::string& text);

}  // namespace Ovik::Generator
