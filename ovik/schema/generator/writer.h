// Turns a schema into C++: a header per class, the umbrella headers and the sources.
#pragma once

#include "output.h"
#include "schema.h"

namespace Ovik::Generator {

/// Writes everything of `schema` to `output`: headers to `ovik/<schema>/` and `ovik/<schema>.h`,
/// sources to `<schema>_<n>.cpp` for each of `shards` and to `<schema>_schema.cpp`.
void writeSchema(const Schema& schema, const Output& output, unsigned shards);

}  // namespace Ovik::Generator
