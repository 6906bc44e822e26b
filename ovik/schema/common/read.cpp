// Reading of attributes, values and selects from the items of a record.
#include "ovik/base/ascii.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/enumeration.h"
#include "ovik/schema/common/select.h"
#include "ovik/schema/common/selectaccess.h"

namespace Ovik::Schema {
namespace {

using namespace IfcParser;

// A mandatory enumeration with the literal NOTDEFINED: a lenient read takes a missing value as it.
bool readEnumOrDefault(Enumeration& value, const EnumType& type, IfcInFiler& in) {
    if (type.hasNotDefined && in.lenient()) {
        bool isNull = false;
        if (!in.isNullItem(isNull)) return false;
        if (isNull) {
            setDefault(value, type);
            in.warnDefaultEnum();
            return true;
        }
    }
    return readEnum(value, type, in);
}

bool readAttribute(const Attribute& attribute, void* entity, IfcInFiler& in) {
    if (attribute.optional) {
        bool isNull = false;
        if (!in.isNullItem(isNull)) return false;
        if (isNull) return true;
    }
    void* field = fieldAt(entity, attribute.offset);
    const bool done =
        attribute.type.kind == Kind::Enumeration
            ? readEnumOrDefault(*static_cast<Enumeration*>(field), *attribute.type.enumeration, in)
            : readValue(attribute.type, field, in);
    if (done && attribute.flagOffset) {
        *static_cast<bool*>(fieldAt(entity, attribute.flagOffset)) = true;
    }
    return done;
}

}  // namespace

bool readAttributes(IfcEntity& entity, Attributes attributes, IfcInFiler& in, DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        if (isDerived ? !in.skipDerived() : !readAttribute(attribute, &entity, in)) return false;
    }
    return true;
}

bool readValue(const ValueType& type, void* field, IfcInFiler& in) {
    switch (type.kind) {
        case Kind::Real:
            if (const auto* item = in.itemAs<ItemDbl>()) {
                *static_cast<double*>(field) = item->value;
                in.advance();
                return true;
            }
            return false;
        case Kind::Integer:
            if (const auto* item = in.itemAs<ItemInt>()) {
                *static_cast<int*>(field) = item->value;
                in.advance();
                return true;
            }
            return false;
        case Kind::Boolean:
            if (const auto* item = in.itemAs<ItemBool>()) {
                *static_cast<bool*>(field) = item->value != 0;
                in.advance();
                return true;
            }
            return false;
        case Kind::Logical:
            return in.readLogical(*static_cast<Logical*>(field));
        case Kind::String:
            return in.readString(*static_cast<XString*>(field));
        case Kind::Binary:
            if (const auto* item = in.itemAs<ItemBinary>()) {
                *static_cast<XBinary*>(field) = XBinary(item->text.c_str());
                in.advance();
                return true;
            }
            return false;
        case Kind::Guid:
            if (const auto* item = in.itemAs<ItemString>()) {
                *static_cast<Base64Guid*>(field) = Base64Guid::createFromBase64(item->text.c_str());
                in.advance();
                return true;
            }
            return false;
        case Kind::Entity:
            return in.checkKind(ItemKind::Ref) && in.readRef(*static_cast<EntityId*>(field), false);
        case Kind::Enumeration:
            return readEnum(*static_cast<Enumeration*>(field), *type.enumeration, in);
        case Kind::Select:
            return readSelect(*static_cast<Select*>(field), *type.select, in);
        case Kind::Aggregate:
            return type.aggregate->read(field, *type.aggregate, in);
        case Kind::Unsigned:
            break;  // only ever the element of a list that keeps none
    }
    return false;
}

namespace {

// The choice of the entity that the reference at the cursor leads to.
bool readEntityChoice(Select& value, const SelectType& type, IfcInFiler& in, int number) {
    if (number == 0) {
        in.reportAmbiguousNull(type.recordName);
        return false;
    }
    EntityId handle;
    if (!in.readRef(handle, in.secondPass())) return false;
    const IfcEntity* target = handle();
    if (!target && !type.soleEntity) {
        // Which choice it is can't be told before the target has been read.
        if (!in.secondPass()) throw SelectorNeedSecondPassRead();
        return false;
    }
    for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
        const ValueType& choice = type.choices[tag].type;
        if (choice.kind != Kind::Entity) continue;
        if (type.soleEntity || isKindOf(target->isA(), choice.entity)) {
            SelectAccess::handle(value, type) = handle;
            SelectAccess::tag(value) = static_cast<std::int32_t>(tag);
            return true;
        }
    }
    return false;
}

// The choice whose type name the typed value at the cursor bears.
bool readTypedChoice(Select& value, const SelectType& type, IfcInFiler& in) {
    const auto* item = in.itemAs<ItemChoice>();
    if (!item) return false;
    const std::string& name = item->name->text;
    for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
        const Choice& choice = type.choices[tag];
        if (choice.type.kind == Kind::Entity || choice.type.kind == Kind::Select) continue;
        // Of the dozens of names the length alone rules out most.
        if (choice.recordName.size() != name.size() ||
            compareNoCase(name.c_str(), choice.recordName.data()) != 0) {
            continue;
        }
        IfcInFiler innerFiler(in, item->value);
        if (!readValue(choice.type, fieldAt(&value, choice.offset), innerFiler)) {
            in.reportFailed(choice.recordName.data());
            return false;
        }
        in.advance();
        SelectAccess::tag(value) = static_cast<std::int32_t>(tag);
        return true;
    }
    return false;
}

}  // namespace

bool readSelect(Select& value, const SelectType& type, IfcInFiler& in) {
    const unsigned start = in.cursor();
    if (type.hasEntities) {
        const ItemBase* item = in.peek();
        if (const auto* reference = item ? item->as<ItemRef>() : nullptr) {
            if (readEntityChoice(value, type, in, reference->value)) return true;
            in.setCursor(start);
        }
    }
    if (type.hasSelects) {
        for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
            const Choice& choice = type.choices[tag];
            if (choice.type.kind != Kind::Select) continue;
            if (readValue(choice.type, fieldAt(&value, choice.offset), in)) {
                SelectAccess::tag(value) = static_cast<std::int32_t>(tag);
                return true;
            }
            in.setCursor(start);
        }
    }
    return type.hasValues && readTypedChoice(value, type, in);
}

}  // namespace Ovik::Schema
