// Turns a schema into the constants of the facade.
#pragma once

#include "output.h"
#include "schema.h"

namespace Ovik::Generator {

/// Writes to `output` the facade's constants, declared in `ovik/api/<schema>.h` and defined in
/// `<schema>_api.cpp`.
void writeApi(const Schema& schema, const Output& output);

}  // namespace Ovik::Generator
