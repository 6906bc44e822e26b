// Access to attributes and choices by name. Names are found by the schema's hash first and compared
// without case then, so the spellings that are accepted are those with the name's own hash.
#include "ovik/base/ascii.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/variant.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/presence.h"
#include "ovik/schema/common/visit.h"

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

// Puts the value at hand into a variant.
struct Getter {
    IfcVariant& out;

    template <class Plain>
    void operator()(const Plain& value) const {
        out = value;
    }
    void operator()(const EntityId& value, const RtClass* type) const {
        if (const IfcEntity* target = targetOf(value, type)) out = target->id();
    }
    void operator()(const Enumeration& value, const EnumType& type) const {
        out = new IfcEnumValue(enumText(value, type));
    }
    void operator()(const Select& value, const SelectType& type) const { out = type.box(&value); }
    void operator()(const void* field, const AggregateType& type) const { out = type.box(field); }
};

// Takes the value at hand from a variant, or leaves it as it is.
struct Setter {
    const IfcVariant& in;

    template <class Plain>
    Result operator()(Plain& value) const {
        return in.getValue(value);
    }
    Result operator()(EntityId& value, const RtClass* type) const {
        EntityId handle;
        if (in.getValue(handle) != ResultOk) return ResultWrongType;
        const IfcEntity* target = targetOf(handle, type);
        if (!target) return ResultWrongType;
        value = target->id();
        return ResultOk;
    }
    Result operator()(Enumeration& value, const EnumType& type) const {
        if (in.getValueType() != AttributeEnum) return ResultWrongType;
        return setEnumText(value, type, in.getEnumValue()->text) ? ResultOk : ResultNotFound;
    }
    Result operator()(Select& value, const SelectType& type) const {
        return in.getValueType() == AttributeSelect && type.unbox(&value, *in.getSelectValue())
                   ? ResultOk
                   : ResultWrongType;
    }
    Result operator()(void* field, const AggregateType& type) const {
        return in.getValueType() == AttributeVector && type.unbox(field, *in.getVectorValue())
                   ? ResultOk
                   : ResultWrongType;
    }
};

}  // namespace

IfcEntity* targetOf(const EntityId& handle, const RtClass* type) {
    IfcEntity* target = handle();
    return target && isKindOf(target->isA(), type) ? target : nullptr;
}

Result getAttribute(const IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, IfcVariant& value) {
    const Attribute* attribute = findByName(attributes, hash, name);
    if (!attribute) return ResultNotFound;
    if (attribute->optional && !isGiven(entity, *attribute)) return ResultUnset;
    getValue(attribute->type, fieldAt(&entity, attribute->offset), value);
    return ResultOk;
}

Result setAttribute(IfcEntity& entity, Attributes attributes, const NameHash& hash,
                    const char* name, const IfcVariant& value) {
    const Attribute* attribute = findByName(attributes, hash, name);
    if (!attribute) return ResultNotFound;
    const Result result = setValue(attribute->type, fieldAt(&entity, attribute->offset), value);
    if (result == ResultOk) setGiven(entity, *attribute, true);
    return result;
}

void getValue(const ValueType& type, const void* field, IfcVariant& out) {
    visit(type, field, Getter{out});
}

Result setValue(const ValueType& type, void* field, const IfcVariant& in) {
    return visit(type, field, Setter{in});
}

const Choice* currentChoice(const Select& value, const SelectType& type) {
    const auto tag = static_cast<std::size_t>(Internals::tag(value));
    return tag < type.choices.size() ? &type.choices[tag] : nullptr;
}

void getSelect(const Select& value, const SelectType& type, IfcVariant& out) {
    if (const Choice* choice = currentChoice(value, type)) {
        getValue(choice->type, choiceField(value, type, *choice), out);
    }
}

Result setSelect(Select& value, const SelectType& type, const char* name, const IfcVariant& in) {
    const Choice* choice = findByName(type.choices, *type.hash, name);
    if (!choice) return ResultNotFound;
    const Result result = setValue(choice->type, choiceField(value, type, *choice), in);
    if (result == ResultOk) {
        Internals::tag(value) = static_cast<std::int32_t>(choice - type.choices.data());
    }
    return result;
}

}  // namespace Ovik::Schema

// Defined here, where the tables are known.
bool Ovik::IfcEntity::isGiven(const char* name) const {
    for (const RtClass* type = isA(); type; type = type->parent()) {
        const Schema::AttributeTable* const table = type->attributes();
        if (!table) continue;
        const auto* const attribute = Schema::findByName(table->attributes, *table->hash, name);
        if (attribute) return Schema::isGiven(*this, *attribute);
    }
    return false;
}
