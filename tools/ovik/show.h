// Showing entities of a model through the facade.
#pragma once

#include <iosfwd>

#include "ovik/api.h"

namespace tools {

/// Writes class and number of an entity and, a line for each, its attributes: "unset" for one
/// without a value. UTF-8.
void showEntity(std::ostream& out, const Ovik::IfcApi::Entity& entity);

}  // namespace tools
