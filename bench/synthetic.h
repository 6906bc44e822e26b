// Models of any size for measurements, made with the library's own classes.
#pragma once

#include <cstdint>

#include "ovik/ovik.h"

namespace bench {

/// A model whose file has about `bytes` bytes: storeys of walls with placement, property set,
/// extruded body and faceted body. The same arguments give the same model but for the GlobalIds.
/// The caller owns one reference.
Ovik::IfcModel* makeModel(Ovik::EIfcSchemaId schema, std::uint64_t bytes);

}  // namespace bench
