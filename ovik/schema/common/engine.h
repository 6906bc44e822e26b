// The five behaviours of schema classes over their tables: reading, writing, validating, getting
// and setting. Generated classes forward to these functions. Internal to the library.
#pragma once

#include <span>

#include "ovik/imp/result.h"
#include "ovik/schema/common/types.h"

namespace Ovik {

class IfcEntity;

namespace Schema {

class Select;

using Attributes = std::span<const Attribute>;

/// Attributes that a subclass redeclares as derived, as bits by their position in the table of the
/// class that declares them. Such an attribute is a `*` in a file, and it is not validated.
using DerivedSet = unsigned;

/// Reads the attributes in order; false at the first that can't be read.
bool readAttributes(IfcEntity& entity, Attributes attributes, IfcInFiler& in,
                    DerivedSet derived = 0);
void writeAttributes(const IfcEntity& entity, Attributes attributes, IfcOutFiler& out,
                     DerivedSet derived = 0);
int validateAttributes(IfcEntity& entity, Attributes attributes, ValidationContext& context,
                       DerivedSet derived = 0);

/// The attribute `name` among those that one class declares.
Result getAttribute(const IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, IfcVariant& value);
Result setAttribute(IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, const IfcVariant& value);

// The same for one value at `field`.
bool readValue(const ValueType& type, void* field, IfcInFiler& in);
void writeValue(const ValueType& type, const void* field, IfcOutFiler& out);
OVIK_API void getValue(const ValueType& type, const void* field, IfcVariant& out);
OVIK_API Result setValue(const ValueType& type, void* field, const IfcVariant& in);

/// The field of a choice of the select; `choice` is one of those of `type`.
void* choiceField(Select& value, const SelectType& type, const Choice& choice);
const void* choiceField(const Select& value, const SelectType& type, const Choice& choice);

/// Validates what the value at `field` refers to; plain values are valid.
int validateValue(const ValueType& type, void* field, ValidationContext& context);

/// Validates the reference `handle` to an entity of class `type`.
int validateReference(const EntityId& handle, const RtClass* type, ValidationContext& context);

/// The entity that `handle` leads to if it is of class `type`, else null.
IfcEntity* targetOf(const EntityId& handle, const RtClass* type);

}  // namespace Schema
}  // namespace Ovik
