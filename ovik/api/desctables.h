// The tables behind the descriptors, made from the schema tables. Internal to the library.
#pragma once

#include <span>

#include "ovik/api/desc.h"
#include "ovik/schema/common/aggregate.h"
#include "ovik/schema/common/namehash.h"
#include "ovik/schema/common/select.h"

namespace Ovik::IfcApi {

struct EntityRow {
    unsigned hash;     ///< of `name`
    const char* name;  ///< in mixed case
    EntityDesc* desc;
    const RtClass* cls;
};

struct VectorRow {
    VectorDesc* desc;
    IfcVectorValueBase* (*create)();
};

struct SelectorRow {
    SelectorDesc* desc;
    const char* name;
    IfcSelectValueBase* (*create)();
};

/// The descriptors of a schema.
struct DescTables {
    const Schema::NameHash* hash;
    std::span<const EntityRow> entities;  ///< in ascending order of the hash
    std::span<const VectorRow> vectors;
    std::span<const SelectorRow> selectors;
};

namespace Ifc2x3 {
extern const DescTables descTables;
}
namespace Ifc4 {
extern const DescTables descTables;
}

template <class A>
IfcVectorValueBase* createVector() {
    return new IfcVectorValue<A>;
}

template <class S>
IfcSelectValueBase* createSelect() {
    return new IfcSelectValue<S>;
}

}  // namespace Ovik::IfcApi
