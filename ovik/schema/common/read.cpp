// Reading of attributes, values and selects from the items of a record.
#include <algorithm>
#include <cmath>

#include "ovik/base/ascii.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/losscause.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/presence.h"
#include "ovik/schema/common/visit.h"

namespace Ovik::Schema {
namespace {

using namespace IfcParser;

// A mandatory enumeration with the literal NOTDEFINED: a lenient read takes a missing value as it.
bool readEnumOrDefault(Enumeration& value, const EnumType& type, IfcInFiler& in) {
    if (type.notDefined >= 0 && in.lenient()) {
        bool isNull = false;
        if (!in.isNullItem(isNull)) return false;
        if (isNull) {
            Internals::tag(value) = type.notDefined;
            in.warnDefaultEnum();
            in.substituted(LossCause::kNoValue);
            return true;
        }
    }
    return readEnum(value, type, in);
}

bool readAttribute(const Attribute& attribute, IfcEntity& entity, IfcInFiler& in) {
    if (attribute.optional) {
        bool isNull = false;
        if (!in.isNullItem(isNull)) return false;
        if (isNull) return true;
    }
    void* field = fieldAt(&entity, attribute.offset);
    const bool done =
        attribute.type.is(Kind::Enumeration)
            ? readEnumOrDefault(valueAt<Enumeration>(field), *attribute.type.enumeration, in)
            : readValue(attribute.type, field, in);
    if (done && attribute.optional) setGiven(entity, attribute, true);
    return done;
}

// Why `item` is no value at all, or null if it is one.
const char* whyNoValue(const ItemBase* item) {
    if (!item) return LossCause::kMissing;
    const auto* const unreadable = item->as<ItemUnreadable>();
    if (!unreadable) return nullptr;
    return unreadable->isMissing() ? LossCause::kMissing : LossCause::kUnreadableText;
}

// An exact load: what can't be kept costs the attribute and nothing else.
void readExactly(const Attribute& attribute, IfcEntity& entity, bool isDerived, IfcInFiler& in) {
    const ItemBase* const item = in.peek();
    const unsigned start = in.cursor();
    bool isRead = false;
    if (const char* cause = whyNoValue(item)) {
        in.lost(cause);
    } else if (isDerived) {
        if (!item->is(ItemKind::Derived)) in.lost(LossCause::kDerived);
    } else if (item != itemNil()) {
        isRead = readValue(attribute.type, fieldAt(&entity, attribute.offset), in);
        if (!isRead) {
            in.setCursor(start);
            in.lost(LossCause::kWrongKind);
        }
    }
    if (!isDerived) setGiven(entity, attribute, isRead);
    in.setCursor(start + 1);
}

// Reads the value at the cursor, each kind of field from its kind of item.
struct Reader {
    IfcInFiler& in;

    bool operator()(double& value) const {
        if (in.exact()) {
            const ItemBase* const item = in.peek();
            if (const auto* const integer = item ? item->as<ItemInt>() : nullptr) {
                value = integer->value;
                in.advance();
                return true;
            }
            const auto* const real = item ? item->as<ItemDbl>() : nullptr;
            if (real && !std::isfinite(real->value)) return in.fail(LossCause::kOutOfRange);
        }
        return take<ItemDbl>([&](const ItemDbl& item) { value = item.value; });
    }
    bool operator()(int& value) const {
        if (in.exact()) {
            const ItemBase* const item = in.peek();
            const auto* const real = item ? item->as<ItemDbl>() : nullptr;
            if (real && real->isInteger) return in.fail(LossCause::kOutOfRange);
        }
        return take<ItemInt>([&](const ItemInt& item) { value = item.value; });
    }
    // Only ever the element of a list that keeps none.
    bool operator()(unsigned&) const { return false; }
    bool operator()(bool& value) const {
        return take<ItemBool>([&](const ItemBool& item) { value = item.value != 0; });
    }
    bool operator()(Logical& value) const { return in.readLogical(value); }
    bool operator()(XString& value) const { return in.readString(value); }
    bool operator()(XBinary& value) const {
        return take<ItemBinary>([&](const ItemBinary& item) {
            // A plain load hands over the quote too, which makes the value empty. That is kept
            // for compatibility, and costs all binaries.
            value = XBinary(in.exact() ? item.digits() : item.text.c_str());
        });
    }
    bool operator()(Base64Guid& value) const {
        if (in.exact()) {
            constexpr std::size_t kLength = 22;
            const ItemBase* const item = in.peek();
            const auto* const text = item ? item->as<ItemString>() : nullptr;
            if (text && text->text.size() != kLength) return in.fail(LossCause::kBadIdentifier);
        }
        return take<ItemString>([&](const ItemString& item) {
            value = Base64Guid::createFromBase64(item.text.c_str());
        });
    }
    bool operator()(EntityId& value, const RtClass*) const {
        return in.checkKind(ItemKind::Ref) && in.readRef(value, false);
    }
    bool operator()(Enumeration& value, const EnumType& type) const {
        return readEnum(value, type, in);
    }
    bool operator()(Select& value, const SelectType& type) const {
        return readSelect(value, type, in);
    }
    bool operator()(void* field, const AggregateType& type) const {
        return type.read(field, type, in);
    }

 private:
    template <class Item, class Store>
    bool take(Store store) const {
        const auto* item = in.itemAs<Item>();
        if (!item) return false;
        store(*item);
        in.advance();
        return true;
    }
};

}  // namespace

bool readAttributes(IfcEntity& entity, Attributes attributes, IfcInFiler& in, DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        in.setAttribute(attribute.name, attribute.position);
        if (in.exact()) {
            readExactly(attribute, entity, isDerived, in);
            continue;
        }
        if (isDerived ? !in.skipDerived() : !readAttribute(attribute, entity, in)) return false;
    }
    return true;
}

bool readValue(const ValueType& type, void* field, IfcInFiler& in) {
    return visit(type, field, Reader{in});
}

namespace {

// The choice of the entity that the reference at the cursor leads to.
bool readEntityChoice(Select& value, const SelectType& type, IfcInFiler& in, int number) {
    if (number == 0) {
        in.reportAmbiguousNull(upperCase(type.name).c_str());
        return false;
    }
    EntityId handle;
    if (!in.readRef(handle, in.secondPass())) return false;
    const IfcEntity* target = handle();
    if (!target && !type.soleEntity) {
        // Which choice it is can't be told before the target has been read.
        if (!in.secondPass()) throw SelectorNeedSecondPassRead();
        return in.fail(LossCause::kToNothing);
    }
    for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
        const Choice& choice = type.choices[tag];
        if (!choice.type.is(Kind::Entity)) continue;
        if (type.soleEntity || isKindOf(target->isA(), choice.type.entity)) {
            valueAt<EntityId>(choiceField(value, type, choice)) = handle;
            Internals::tag(value) = static_cast<std::int32_t>(tag);
            return true;
        }
    }
    return in.fail(LossCause::kToWrongClass);
}

// Of the dozens of names the length alone rules out most.
bool hasName(const Choice& choice, const std::string& name) {
    return choice.recordName.size() == name.size() &&
           compareNoCase(name.c_str(), choice.recordName.data()) == 0;
}

// Is there a choice of a plain value or an aggregate with this name, here or in a nested select?
bool knows(const SelectType& type, const std::string& name) {
    return std::ranges::any_of(type.choices, [&](const Choice& choice) {
        if (choice.type.is(Kind::Select)) return knows(*choice.type.select, name);
        return !choice.type.is(Kind::Entity) && hasName(choice, name);
    });
}

// The choice whose type name the typed value at the cursor bears.
bool readTypedChoice(Select& value, const SelectType& type, IfcInFiler& in) {
    const auto* item = in.itemAs<ItemChoice>();
    if (!item) return false;
    const std::string& name = item->name->text;
    for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
        const Choice& choice = type.choices[tag];
        if (choice.type.is(Kind::Entity) || choice.type.is(Kind::Select)) continue;
        if (!hasName(choice, name)) continue;
        IfcInFiler innerFiler(in, item->value);
        if (!readValue(choice.type, choiceField(value, type, choice), innerFiler)) {
            in.reportFailed(choice.recordName.data());
            return false;
        }
        in.advance();
        Internals::tag(value) = static_cast<std::int32_t>(tag);
        return true;
    }
    return false;
}

}  // namespace

bool readSelect(Select& value, const SelectType& type, IfcInFiler& in) {
    const unsigned start = in.cursor();
    const ItemBase* const item = in.peek();
    if (type.hasEntities) {
        if (const auto* reference = item ? item->as<ItemRef>() : nullptr) {
            if (readEntityChoice(value, type, in, reference->value)) return true;
            in.setCursor(start);
        }
    }
    const auto* const typed = item ? item->as<ItemChoice>() : nullptr;
    if (type.hasSelects) {
        for (std::size_t tag = 0; tag < type.choices.size(); ++tag) {
            const Choice& choice = type.choices[tag];
            if (!choice.type.is(Kind::Select)) continue;
            // A select that does not know the name would come into being in vain.
            if (typed && !knows(*choice.type.select, typed->name->text)) continue;
            if (readValue(choice.type, choiceField(value, type, choice), in)) {
                in.clearCause();
                Internals::tag(value) = static_cast<std::int32_t>(tag);
                return true;
            }
            in.setCursor(start);
        }
    }
    if (type.hasValues && readTypedChoice(value, type, in)) return true;
    return typed && in.fail(LossCause::kUnknownType);
}

}  // namespace Ovik::Schema
