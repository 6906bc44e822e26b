// The step from a table entry to the field that it describes: the one place where the address of a
// field becomes a reference to its C++ type. Internal.
#pragma once

#include <type_traits>

#include "ovik/imp/base64guid.h"
#include "ovik/imp/entityid.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/enumeration.h"
#include "ovik/schema/common/select.h"
#include "ovik/schema/common/types.h"

namespace Ovik::Schema {

template <class T, class Field>
auto& valueAt(Field* field) {
    return *static_cast<std::conditional_t<std::is_const_v<Field>, const T, T>*>(field);
}

/// Calls `f` with the value at `field`, a `void*` or `const void*`: as `f(value)` for a plain kind,
/// else as `f(value, descriptor)`. Aggregates have no base class in common and go by their address.
template <class Field, class F>
auto visit(const ValueType& type, Field* field, F&& f) {
    switch (type.kind) {
        case Kind::Real:
            return f(valueAt<double>(field));
        case Kind::Integer:
            return f(valueAt<int>(field));
        case Kind::Unsigned:
            return f(valueAt<unsigned>(field));
        case Kind::Boolean:
            return f(valueAt<bool>(field));
        case Kind::Logical:
            return f(valueAt<Logical>(field));
        case Kind::String:
            return f(valueAt<XString>(field));
        case Kind::Binary:
            return f(valueAt<XBinary>(field));
        case Kind::Guid:
            return f(valueAt<Base64Guid>(field));
        case Kind::Entity:
            return f(valueAt<EntityId>(field), type.entity);
        case Kind::Enumeration:
            return f(valueAt<Enumeration>(field), *type.enumeration);
        case Kind::Select:
            return f(valueAt<Select>(field), *type.select);
        case Kind::Aggregate:
            break;
    }
    return f(field, *type.aggregate);
}

}  // namespace Ovik::Schema
