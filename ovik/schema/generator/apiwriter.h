// Turns a schema into the constants of the facade.
#pragma once

#include <filesystem>

#include "schema.h"

namespace Ovik::Generator {

/// Writes below `folder` the facade's constants, declared in `ovik/api/<schema>.h` and defined in
/// `<schema>_api.cpp`, and for the tool the attribute names of each class,
/// `<schema>_attributes.cpp`.
void writeApi(const Schema& schema, const std::filesystem::path& folder);

}  // namespace Ovik::Generator
