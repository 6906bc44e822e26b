// What the constants of the facade are made with, and the table by which the descriptor of a class
// is found. Internal to the library.
#pragma once

#include <span>

#include "ovik/api/access.h"
#include "ovik/schema/common/aggregate.h"
#include "ovik/schema/common/select.h"

namespace Ovik::IfcApi {

struct EntityRow {
    unsigned hash;     ///< of `name`
    const char* name;  ///< in mixed case
    const EntityDesc* desc;
};

/// The descriptors of a schema.
struct DescTables {
    std::span<const EntityRow> entities;  ///< in ascending order of the hash
};

/// The descriptor of `cls` in `schema`, as the hash of its name leads to it; null if it does not.
const EntityDesc* findEntityDesc(EIfcSchemaId schema, const RtClass* cls);

/// The descriptor of the entity class `C`.
template <class C>
constexpr EntityDesc entityDesc() {
    return Access::describe<EntityDesc>(C::desc());
}

/// The descriptor of the select `S`.
template <class S>
constexpr SelectorDesc selectorDesc() {
    return Access::describe<SelectorDesc>(
        +[]() -> IfcSelectValueBase* { return new IfcSelectValue<S>; }, &S::s_type);
}

/// The descriptor of the aggregate `A`.
template <class A>
constexpr VectorDesc vectorDesc() {
    return Access::describe<VectorDesc>(
        +[]() -> IfcVectorValueBase* { return new IfcVectorValue<A>; });
}

}  // namespace Ovik::IfcApi
