// Access to attributes and choices by name. Names are found by the schema's hash first and compared
// without case then, so the spellings that are accepted are those with the name's own hash.
#include "ovik/base/ascii.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/variant.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/enumeration.h"
#include "ovik/schema/common/select.h"
#include "ovik/schema/common/selectaccess.h"

namespace Ovik::Schema {
namespace {

// The entry of `entries` with this name, or null.
template <class Entry>
const Entry* findByName(std::span<const Entry> entries, const NameHash& hash, const char* name) {
    if (!name) return nullptr;
    const unsigned value = hash(name);
    for (const Entry& entry : entries) {
        if (entry.hash == value) return compareNoCase(entry.name, name) == 0 ? &entry : nullptr;
    }
    return nullptr;
}

template <class T>
Result store(void* field, const IfcVariant& in) {
    T value;
    const Result result = in.getValue(value);
    if (result == ResultOk) *static_cast<T*>(field) = value;
    return result;
}

}  // namespace

IfcEntity* targetOf(const EntityId& handle, const RtClass* type) {
    IfcEntity* target = handle();
    return target && isKindOf(target->isA(), type) ? target : nullptr;
}

Result getAttribute(const IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, IfcVariant& value) {
    const Attribute* attribute = findByName(attributes, hash, name);
    if (!attribute) return ResultNotFound;
    const void* field = fieldAt(&entity, attribute->offset);
    if (attribute->flagOffset) {
        if (!*static_cast<const bool*>(fieldAt(&entity, attribute->flagOffset))) {
            return ResultUnset;
        }
    } else if (attribute->optional && !(*static_cast<const EntityId*>(field))()) {
        return ResultUnset;
    }
    getValue(attribute->type, field, value);
    return ResultOk;
}

Result setAttribute(IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, const IfcVariant& value) {
    const Attribute* attribute = findByName(attributes, hash, name);
    if (!attribute) return ResultNotFound;
    const Result result = setValue(attribute->type, fieldAt(&entity, attribute->offset), value);
    if (result == ResultOk && attribute->flagOffset) {
        *static_cast<bool*>(fieldAt(&entity, attribute->flagOffset)) = true;
    }
    return result;
}

void getValue(const ValueType& type, const void* field, IfcVariant& out) {
    switch (type.kind) {
        case Kind::Real:
            out = *static_cast<const double*>(field);
            break;
        case Kind::Integer:
            out = *static_cast<const int*>(field);
            break;
        case Kind::Unsigned:
            out = *static_cast<const unsigned*>(field);
            break;
        case Kind::Boolean:
            out = *static_cast<const bool*>(field);
            break;
        case Kind::Logical:
            out = *static_cast<const Logical*>(field);
            break;
        case Kind::String:
            out = *static_cast<const XString*>(field);
            break;
        case Kind::Binary:
            out = *static_cast<const XBinary*>(field);
            break;
        case Kind::Guid:
            out = *static_cast<const Base64Guid*>(field);
            break;
        case Kind::Entity:
            if (const IfcEntity* target =
                    targetOf(*static_cast<const EntityId*>(field), type.entity)) {
                out = target->id();
            }
            break;
        case Kind::Enumeration:
            out = IfcVariant(new IfcEnumValue(
                enumText(*static_cast<const Enumeration*>(field), *type.enumeration)));
            break;
        case Kind::Select:
            out = IfcVariant(type.select->box(field));
            break;
        case Kind::Aggregate:
            out = IfcVariant(type.aggregate->box(field));
            break;
    }
}

Result setValue(const ValueType& type, void* field, const IfcVariant& in) {
    switch (type.kind) {
        case Kind::Real:
            return store<double>(field, in);
        case Kind::Integer:
            return store<int>(field, in);
        case Kind::Unsigned:
            return store<unsigned>(field, in);
        case Kind::Boolean:
            return store<bool>(field, in);
        case Kind::Logical:
            return store<Logical>(field, in);
        case Kind::String:
            return store<XString>(field, in);
        case Kind::Binary:
            return store<XBinary>(field, in);
        case Kind::Guid:
            return store<Base64Guid>(field, in);
        case Kind::Entity: {
            EntityId handle;
            if (in.getValue(handle) != ResultOk) return ResultWrongType;
            const IfcEntity* target = targetOf(handle, type.entity);
            if (!target) return ResultWrongType;
            *static_cast<EntityId*>(field) = target->id();
            return ResultOk;
        }
        case Kind::Enumeration:
            if (in.getValueType() != AttributeEnum) return ResultWrongType;
            return setEnumText(*static_cast<Enumeration*>(field), *type.enumeration,
                               in.getEnumValue()->text)
                       ? ResultOk
                       : ResultNotFound;
        case Kind::Select:
            if (in.getValueType() != AttributeSelect) return ResultWrongType;
            return type.select->unbox(field, *in.getSelectValue()) ? ResultOk : ResultWrongType;
        case Kind::Aggregate:
            if (in.getValueType() != AttributeVector) return ResultWrongType;
            return type.aggregate->unbox(field, *in.getVectorValue()) ? ResultOk : ResultWrongType;
    }
    return ResultWrongType;
}

const Choice* currentChoice(const Select& value, const SelectType& type) {
    const auto tag = static_cast<std::size_t>(SelectAccess::tag(value));
    return tag < type.choices.size() ? &type.choices[tag] : nullptr;
}

void getSelect(const Select& value, const SelectType& type, IfcVariant& out) {
    if (const Choice* choice = currentChoice(value, type)) {
        getValue(choice->type, fieldAt(&value, choice->offset), out);
    }
}

Result setSelect(Select& value, const SelectType& type, const char* name, const IfcVariant& in) {
    const Choice* choice = findByName(type.choices, *type.hash, name);
    if (!choice) return ResultNotFound;
    const Result result = setValue(choice->type, fieldAt(&value, choice->offset), in);
    if (result == ResultOk) {
        SelectAccess::tag(value) = static_cast<std::int32_t>(choice - type.choices.data());
    }
    return result;
}

}  // namespace Ovik::Schema
