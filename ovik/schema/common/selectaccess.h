// Access of the engine to the tag and the shared handle of a select. Internal.
#pragma once

#include "ovik/imp/entityid.h"
#include "ovik/schema/common/select.h"

namespace Ovik::Schema {

struct SelectAccess {
    static std::int32_t& tag(Select& value) { return value.tag_; }
    static std::int32_t tag(const Select& value) { return value.tag_; }

    static EntityId& handle(Select& value, const SelectType& type) {
        return *static_cast<EntityId*>(fieldAt(&value, type.handleOffset));
    }
    static const EntityId& handle(const Select& value, const SelectType& type) {
        return *static_cast<const EntityId*>(fieldAt(&value, type.handleOffset));
    }
};

}  // namespace Ovik::Schema
