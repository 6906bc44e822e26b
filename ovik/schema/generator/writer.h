// Turns a schema into C++: a header per class, the umbrella headers and the sources.
#pragma once

#include <filesystem>
#include <string>

#include "schema.h"

namespace Ovik::Generator {

/// Writes everything of `schema` below `folder`: headers to `ovik/<schema>/` and `ovik/<schema>.h`,
/// sources to `<schema>_<n>.cpp` for each of `shards` and to `<schema>_schema.cpp`. Files that
/// would not change are left alone, so that what depends on them is not built again.
void writeSchema(const Schema& schema, const std::filesystem::path& folder, unsigned shards);

}  // namespace Ovik::Generator
