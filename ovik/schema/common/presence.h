// Whether an attribute has a value: one notion, a mark of its own among those of the entity.
// Internal.
#pragma once

#include "ovik/imp/ifcentity.h"
#include "ovik/schema/common/types.h"
#include "ovik/schema/common/visit.h"

namespace Ovik::Schema {

/// True if the attribute has a value: an optional reference while it leads to an entity, any other
/// optional attribute from the first value that it gets on, and a mandatory one always, but for
/// those that an exact load found missing.
inline bool isGiven(const IfcEntity& entity, const Attribute& attribute) {
    if (attribute.optional && attribute.type.is(Kind::Entity)) {
        return valueAt<EntityId>(fieldAt(&entity, attribute.offset))() != nullptr;
    }
    const bool isMarked = Internals::marks(entity) & attribute.mark();
    return isMarked == attribute.optional;
}

/// Notes whether it has.
inline void setGiven(IfcEntity& entity, const Attribute& attribute, bool given) {
    if (given == attribute.optional) {
        Internals::marks(entity) |= attribute.mark();
    } else {
        Internals::marks(entity) &= ~attribute.mark();
    }
}

}  // namespace Ovik::Schema
