// The attribute names of the schemas' classes, for showing entities that are known by their
// descriptors alone. Made from the schema tables.
#pragma once

#include <span>

#include "ovik/api.h"

namespace tools {

/// A class and its attributes in the order of a record, inherited ones first.
struct ClassAttributes {
    const Ovik::IfcApi::EntityDesc* desc;
    std::span<const char* const> names;
};

/// Each class stands before its ancestors.
extern const std::span<const ClassAttributes> ifc2x3Attributes;
extern const std::span<const ClassAttributes> ifc4Attributes;

}  // namespace tools
