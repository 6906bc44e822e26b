// Storage of the selects with many choices.
#include "ovik/schema/common/wideselect.h"

#include "ovik/schema/common/engine.h"

namespace Ovik::Schema {

const void* WideSelect::find(int choice) const {
    if (inside_ == choice) return this + 1;
    for (const Further* field = further_; field; field = field->next) {
        if (field->choice == choice) return field + 1;
    }
    return nullptr;
}

void* WideSelect::touch(int choice, const FieldOps& ops, std::size_t room) {
    if (const void* found = find(choice)) return const_cast<void*>(found);
    if (inside_ == kNone && ops.size <= room) {
        ops.make(inside());
        inside_ = static_cast<std::int16_t>(choice);
        return inside();
    }
    void* const memory = ::operator new(sizeof(Further) + ops.size);
    auto* const field = new (memory) Further{further_, choice};
    try {
        ops.make(field + 1);
    } catch (...) {
        ::operator delete(memory);
        throw;
    }
    further_ = field;
    return field + 1;
}

// Fields that have been touched here and not there get back their first value, since others may
// hold references to them.
void WideSelect::assignFields(const WideSelect& other, const SelectType& type) {
    const auto opsOf = [&](int choice) -> const FieldOps& {
        return *type.choices[static_cast<std::size_t>(choice)].ops;
    };
    const auto assign = [&](int choice, void* field) {
        const void* const source = other.find(choice);
        opsOf(choice).assign(field, source ? source : opsOf(choice).untouched());
    };
    if (inside_ != kNone) assign(inside_, inside());
    for (Further* field = further_; field; field = field->next) assign(field->choice, field + 1);

    const auto add = [&](int choice, const void* source) {
        if (find(choice)) return;
        opsOf(choice).assign(touch(choice, opsOf(choice), type.room), source);
    };
    if (other.inside_ != kNone) add(other.inside_, &other + 1);
    for (const Further* field = other.further_; field; field = field->next) {
        add(field->choice, field + 1);
    }
}

void WideSelect::takeFields(WideSelect& other, const SelectType& type) noexcept {
    if (other.inside_ != kNone) {
        type.choices[static_cast<std::size_t>(other.inside_)].ops->takeOver(inside(),
                                                                            other.inside());
        inside_ = other.inside_;
    }
    further_ = std::exchange(other.further_, nullptr);
}

void WideSelect::endFields(const SelectType& type) {
    if (inside_ != kNone) type.choices[static_cast<std::size_t>(inside_)].ops->end(inside());
    while (Further* const field = further_) {
        further_ = field->next;
        type.choices[static_cast<std::size_t>(field->choice)].ops->end(field + 1);
        ::operator delete(field);
    }
}

void* choiceField(Select& value, const SelectType& type, const Choice& choice) {
    if (!choice.ops) return fieldAt(&value, choice.offset);
    return Internals::touch(static_cast<WideSelect&>(value),
                            static_cast<int>(&choice - type.choices.data()), *choice.ops,
                            type.room);
}

const void* choiceField(const Select& value, const SelectType& type, const Choice& choice) {
    if (!choice.ops) return fieldAt(&value, choice.offset);
    const void* const found = Internals::find(static_cast<const WideSelect&>(value),
                                              static_cast<int>(&choice - type.choices.data()));
    return found ? found : choice.ops->untouched();
}

}  // namespace Ovik::Schema
