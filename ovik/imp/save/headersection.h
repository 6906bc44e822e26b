// The header section of a file. Internal.
#pragma once

#include <string>

#include "ovik/imp/schemaid.h"

namespace Ovik {

class IfcHeader;

/// The header section for a model of `schema`. If `exact`, with the parameters that the header has
/// kept from its file.
std::string headerSection(EIfcSchemaId schema, const IfcHeader& header, bool exact);

}  // namespace Ovik
