// Validating and repairing the references that attributes, selects and aggregates hold.
#include "ovik/imp/validation.h"

#include "ovik/base/ascii.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/losscause.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/presence.h"
#include "ovik/schema/common/visit.h"

namespace Ovik::Schema {
namespace {

// An optional attribute that has no value is left as it is; a wrong one is dropped. A mandatory one
// fails its owner.
int validateAttribute(const Attribute& attribute, IfcEntity& entity, ValidationContext& context) {
    void* field = fieldAt(&entity, attribute.offset);
    if (attribute.optional && !isGiven(entity, attribute)) {
        if (attribute.type.is(Kind::Entity) && !valueAt<EntityId>(field).isNull()) {
            context.lost(LossCause::kToNothing);
        }
        return kValid;
    }
    const int code = validateValue(attribute.type, field, context);
    if (code == kValid) return kValid;
    context.reportMember(code, widen(attribute.name).c_str());
    if (!attribute.optional) return code;
    if (attribute.type.is(Kind::Entity)) {
        context.lost(LossCause::kToNothing);
        valueAt<EntityId>(field).setNull();
    } else {
        context.lost(LossCause::kTooFew);
        setGiven(entity, attribute, false);
    }
    return kValid;
}

// An exact load: a wrong reference costs its attribute and nothing else.
void validateExactly(const Attribute& attribute, IfcEntity& entity, ValidationContext& context) {
    const bool isReference = attribute.type.is(Kind::Entity);
    void* field = fieldAt(&entity, attribute.offset);
    const bool isThere = attribute.optional && isReference ? !valueAt<EntityId>(field).isNull()
                                                           : isGiven(entity, attribute);
    if (!isThere || validateValue(attribute.type, field, context) == kValid) return;
    context.lost(LossCause::kToNothing);
    if (isReference) valueAt<EntityId>(field).setNull();
    setGiven(entity, attribute, false);
}

struct Validator {
    ValidationContext& context;

    template <class Plain>
    int operator()(Plain&) const {
        return kValid;
    }
    int operator()(EntityId& handle, const RtClass* type) const {
        return validateReference(handle, type, context);
    }
    int operator()(Enumeration&, const EnumType&) const { return kValid; }
    int operator()(Select& value, const SelectType& type) const {
        return validateSelect(value, type, context);
    }
    int operator()(void* field, const AggregateType& type) const {
        return type.validate ? type.validate(field, type, context) : static_cast<int>(kValid);
    }
};

}  // namespace

int validateAttributes(IfcEntity& entity, Attributes attributes, ValidationContext& context,
                       DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        if (isDerived || !attribute.type.canRefer) continue;
        context.setAttribute(attribute.name, attribute.position);
        if (context.exact()) {
            validateExactly(attribute, entity, context);
            continue;
        }
        const int code = validateAttribute(attribute, entity, context);
        if (code != kValid) return code;
    }
    return kValid;
}

int validateValue(const ValueType& type, void* field, ValidationContext& context) {
    return visit(type, field, Validator{context});
}

int validateReference(const EntityId& handle, const RtClass* type, ValidationContext& context) {
    // A `$` among the elements of a list.
    if (context.exact() && handle.isNull()) return kValid;
    if (IfcEntity* target = targetOf(handle, type)) return context.validateRef(target);
    return context.fail(handle.isNull() ? LossCause::kNoValue
                        : handle()      ? LossCause::kToWrongClass
                                        : LossCause::kToNothing);
}

int validateSelect(Select& value, const SelectType& type, ValidationContext& context) {
    const Choice* choice = currentChoice(value, type);
    if (!choice || !(choice->type.is(Kind::Entity) || choice->type.is(Kind::Select))) return kValid;
    if (!choice->type.canRefer) return kValid;
    void* field = choiceField(value, type, *choice);
    if (choice->type.is(Kind::Select)) return validateValue(choice->type, field, context);
    auto& handle = valueAt<EntityId>(field);
    if (handle.isNull()) return kValid;
    const int code = validateReference(handle, choice->type.entity, context);
    if (code != kValid) handle.setNull();
    return code;
}

}  // namespace Ovik::Schema
