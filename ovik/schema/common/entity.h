// What the generated entity classes are written with: the casts behind their accessors.
// Internal to the library.
#pragma once

#include "ovik/imp/ifcentity.h"
#include "ovik/schema/common/types.h"

namespace Ovik::Schema {

/// `entity` as a `T`, or null if it is null or no `T`.
template <class T>
T* cast(IfcEntity* entity) {
    return entity && isKindOf(entity->isA(), T::desc()) ? static_cast<T*>(entity) : nullptr;
}
template <class T>
const T* cast(const IfcEntity* entity) {
    return entity && isKindOf(entity->isA(), T::desc()) ? static_cast<const T*>(entity) : nullptr;
}

/// The handle of `entity`, null for null.
inline EntityId handleOf(const IfcEntity* entity) {
    return entity ? entity->id() : EntityId();
}

}  // namespace Ovik::Schema
