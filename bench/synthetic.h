// Models of any size for measurements, made with the library's own classes.
#pragma once

#include <cstdint>

#include "ovik/ovik.h"

namespace bench {

/// A model whose file has about `bytes` bytes: storeys of walls with placement, property set,
/// extruded body and faceted body. The same arguments give the same model but for the GlobalIds.
Ovik::IfcModelPtr makeModel(Ovik::EIfcSchemaId schema, std::uint64_t bytes);

/// A model of one whole and `numRelations` relations, each with a part of its own and one that all
/// have: whatever is searched for there in a list is searched for again and again.
Ovik::IfcModelPtr makeManyParts(unsigned numRelations);

}  // namespace bench
