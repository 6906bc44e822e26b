// Reading, writing and validating of aggregates, one instance per kind of storage, and the
// descriptor of an aggregate class made of them. Included by the generated sources only.
#pragma once

#include <algorithm>

#include "ovik/imp/infiler.h"
#include "ovik/imp/losscause.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/validation.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/aggregate.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/tables.h"

namespace Ovik::Schema {

/// Reads one list item into a new last element. False, with a report, if it doesn't fit; then
/// nothing is appended. Elements that are read directly by kind report the number of elements
/// accepted so far as their position, whatever their place in the list: log lines are to stay as
/// they have always been, so the place has to be found by its neighbours.
template <class Storage>
bool readElement(Storage& storage, const ValueType& type, IfcInFiler& in) {
    using namespace IfcParser;
    using E = typename Storage::Element;
    const auto append = [&]<class Item, class Value>(const Item* item, Value valueOf) {
        if (item) {
            Internals::emplace(storage, valueOf(*item));
        } else {
            in.reportInvalidType(storage.size());
        }
        return item != nullptr;
    };
    const auto valueOf = [](const auto& item) { return item.value; };
    const auto readAny = [&] {
        const bool done = readValue(type, &Internals::emplace(storage), in);
        if (!done) Internals::truncate(storage, storage.size() - 1);
        return done;
    };
    if (!std::is_same_v<E, EntityId> && in.exact()) return readAny();
    if constexpr (std::is_same_v<E, EntityId>) {
        return append(in.peek()->as<ItemRef>(),
                      [&in](const ItemRef& item) { return in.handle(item.value); });
    } else if constexpr (std::is_same_v<E, double>) {
        return append(in.peek()->as<ItemDbl>(), valueOf);
    } else if constexpr (std::is_same_v<E, int>) {
        return append(in.peek()->as<ItemInt>(), valueOf);
    } else if constexpr (std::is_same_v<E, XBinary>) {
        return append(in.peek()->as<ItemBinary>(),
                      [](const ItemBinary& item) { return item.text.c_str(); });
    } else {
        return readAny();
    }
}

/// Room for the items of a list. A select can be hundreds of times the size of the item that it is
/// read from, so of those only what may be one counts, and one more for what turns out to be none.
template <class E>
unsigned roomFor(const IfcInFiler::Items& items, const ValueType& type) {
    const auto count = static_cast<unsigned>(items.size());
    if constexpr (std::is_base_of_v<Select, E>) {
        const bool takesValues = type.select->hasValues || type.select->hasSelects;
        const auto mayBeOne = [&](const IfcParser::ItemBase* item) {
            if (const auto* reference = item->as<IfcParser::ItemRef>()) {
                return type.canRefer && reference->value != 0;
            }
            return takesValues && item->is(IfcParser::ItemKind::Choice);
        };
        return std::min(
            count, 1 + static_cast<unsigned>(std::count_if(items.begin(), items.end(), mayBeOne)));
    } else {
        return count;
    }
}

/// Reads a list item by item. An item that doesn't fit is left out, and the rest is read.
template <class Storage>
bool readAggregate(void* value, const AggregateType& type, IfcInFiler& in) {
    using E = typename Storage::Element;
    auto& storage = *static_cast<Storage*>(value);
    const IfcInFiler::Items* items = nullptr;
    if (!in.readList(items, type.lower, type.upper)) return false;
    if (!items) return true;
    // A record that is read again must not append to what its first reading left.
    if (in.secondPass()) storage.clear();
    const auto count = static_cast<unsigned>(items->size());
    if constexpr (requires { storage.reserve(count); }) {
        storage.reserve(roomFor<E>(*items, type.element));
    }
    IfcInFiler element(in, items);
    // A member that held something before may have room for fewer than the list has, and an exact
    // load takes lists of any size.
    for (unsigned i = 0; i < count; ++i) {
        element.setCursor(i);
        if (Internals::isFull(storage)) {
            element.lost(LossCause::kTooMany);
        } else if (!readElement(storage, type.element, element)) {
            element.setCursor(i);
            element.lost(LossCause::kWrongKind);
        }
    }
    return in.exact() || storage.size() >= type.lower || in.fail(LossCause::kTooFew);
}

/// The elements of this list are looked at and none is kept, so it never has what it needs, and a
/// record with such a list is never read. That is kept for compatibility: what a load gives and
/// says must not change. Such records cost nothing else, they are rare.
inline bool readUnsignedList(void*, const AggregateType& type, IfcInFiler& in) {
    using namespace IfcParser;
    const IfcInFiler::Items* items = nullptr;
    if (!in.readList(items, type.lower, type.upper)) return false;
    if (!items) return true;
    unsigned position = 0;
    for (const ItemBase* item : *items) {
        if (const auto* number = item->as<ItemInt>()) {
            ++position;
            if (number->value < 0) in.reportNotUnsigned(position);
        } else {
            in.reportInvalidType(position);
        }
    }
    return false;
}

template <class Storage>
void writeAggregate(const void* value, const AggregateType& type, IfcOutFiler& out) {
    const auto& storage = *static_cast<const Storage*>(value);
    const IfcOutFiler::Item list(out);
    const auto* elements = Internals::elements(storage);
    for (unsigned i = 0; i < storage.size(); ++i) writeValue(type.element, elements + i, out);
}

/// Removes the elements that fail, asked from the last to the first; the others keep their order.
template <class Storage>
int validateAggregate(void* value, const AggregateType& type, ValidationContext& context) {
    auto& storage = *static_cast<Storage*>(value);
    const unsigned size = storage.size();
    auto* elements = Internals::elements(storage);
    // The survivors gather at the end and move to the front in one go, so that the time stays
    // linear however many fail.
    unsigned first = size;
    for (unsigned i = size; i-- > 0;) {
        if (validateValue(type.element, elements + i, context) != kValid) {
            context.enterElement(i);
            context.lost(LossCause::kToNothing);
            context.leaveElement();
        } else if (--first != i) {
            elements[first] = std::move(elements[i]);
        }
    }
    if (first != 0) {
        std::move(elements + first, elements + size, elements);
        Internals::truncate(storage, size - first);
    }
    return context.exact() || storage.size() >= type.lower ? kValid : kInvalid;
}

template <class A>
IfcVectorValueBase* boxAggregate(const void* value) {
    return new IfcVectorValue<A>(*static_cast<const A*>(value));
}

template <class A>
bool unboxAggregate(void* value, const IfcVectorValueBase& holder) {
    const auto* source = dynamic_cast<const IfcVectorValue<A>*>(&holder);
    if (source) *static_cast<A*>(value) = source->value;
    return source != nullptr;
}

/// The descriptor of the aggregate class `A`, whose elements, if they are handles, refer to
/// entities of class `Target`.
template <class A, unsigned Lower, unsigned Upper, class Target = void>
constexpr AggregateType aggregateType() {
    using Element = typename A::Element;
    using Storage = typename StorageOf<Element, Upper>::type;
    AggregateType type{typeOf<Element, Target>(),
                       Lower,
                       Upper,
                       &readAggregate<Storage>,
                       &writeAggregate<Storage>,
                       nullptr,
                       &boxAggregate<A>,
                       &unboxAggregate<A>};
    if constexpr (std::is_same_v<Element, unsigned>) type.read = &readUnsignedList;
    if constexpr (Validatable<A>) type.validate = &validateAggregate<Storage>;
    return type;
}

}  // namespace Ovik::Schema
