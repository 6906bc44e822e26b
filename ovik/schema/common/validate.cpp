// Judging and repairing the references that attributes, selects and aggregates hold.
#include "ovik/imp/validation.h"

#include "ovik/base/ascii.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/select.h"
#include "ovik/schema/common/selectaccess.h"

namespace Ovik::Schema {
namespace {

int report(int code, const char* attributeName, ValidationContext& context) {
    context.reportMember(code, widen(attributeName).c_str());
    return code;
}

// An optional reference that leads nowhere is left as it is; a wrong one is cleared. A mandatory
// one fails its owner.
int validateReferenceAttribute(const Attribute& attribute, EntityId& handle,
                               ValidationContext& context) {
    if (attribute.optional && !handle()) return kValid;
    const int code = validateReference(handle, attribute.type.entity, context);
    if (code == kValid) return kValid;
    report(code, attribute.name, context);
    if (!attribute.optional) return code;
    handle.setNull();
    return kValid;
}

int validateAttribute(const Attribute& attribute, void* entity, ValidationContext& context) {
    void* field = fieldAt(entity, attribute.offset);
    if (attribute.type.kind == Kind::Entity) {
        return validateReferenceAttribute(attribute, *static_cast<EntityId*>(field), context);
    }
    bool* flag =
        attribute.flagOffset ? static_cast<bool*>(fieldAt(entity, attribute.flagOffset)) : nullptr;
    if (flag && !*flag) return kValid;
    const int code = validateValue(attribute.type, field, context);
    if (code == kValid) return kValid;
    report(code, attribute.name, context);
    if (!flag) return code;
    *flag = false;
    return kValid;
}

}  // namespace

int validateAttributes(IfcEntity& entity, Attributes attributes, ValidationContext& context,
                       DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        if (isDerived || !attribute.type.canRefer()) continue;
        const int code = validateAttribute(attribute, &entity, context);
        if (code != kValid) return code;
    }
    return kValid;
}

int validateValue(const ValueType& type, void* field, ValidationContext& context) {
    switch (type.kind) {
        case Kind::Select:
            return validateSelect(*static_cast<Select*>(field), *type.select, context);
        case Kind::Aggregate:
            return type.aggregate->validate(field, *type.aggregate, context);
        default:
            return kValid;
    }
}

int validateReference(const EntityId& handle, const RtClass* type, ValidationContext& context) {
    IfcEntity* target = targetOf(handle, type);
    return target ? context.validateRef(target) : static_cast<int>(kInvalid);
}

int validateSelect(Select& value, const SelectType& type, ValidationContext& context) {
    const Choice* choice = currentChoice(value, type);
    if (!choice) return kValid;
    if (choice->type.kind == Kind::Select) {
        return choice->type.canRefer()
                   ? validateValue(choice->type, fieldAt(&value, choice->offset), context)
                   : static_cast<int>(kValid);
    }
    if (choice->type.kind != Kind::Entity) return kValid;
    EntityId& handle = SelectAccess::handle(value, type);
    if (handle.isNull()) return kValid;
    const int code = validateReference(handle, choice->type.entity, context);
    if (code != kValid) handle.setNull();
    return code;
}

}  // namespace Ovik::Schema
