// Storage of the selects with many choices. To a caller each choice has a field of its own, and all
// stand side by side; yet a select read from a file uses one of them, and side by side the fields
// of an IfcValue take more than a kilobyte. So fields come into being when they are first touched:
// the first stands in the select, those behind it on the heap. A field never moves, so a reference
// from a getter stays good as long as the select.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "ovik/schema/common/select.h"

namespace Ovik::Schema {

/// How a field is made, changed and ended by those who don't know its type.
struct FieldOps {
    std::size_t size;
    void (*make)(void* place);
    /// Makes a field that takes over the value of another one.
    void (*takeOver)(void* place, void* source);
    void (*assign)(void* field, const void* source);
    void (*end)(void* field);
    /// A field as it is before it has been touched.
    const void* (*untouched)();
};

/// The value of every field of type `T` that has not been touched.
template <class T>
const T& untouched() {
    static const T value{};
    return value;
}

template <class T>
inline constexpr FieldOps fieldOps = {
    sizeof(T),
    [](void* place) { new (place) T{}; },
    [](void* place, void* source) { new (place) T(std::move(*static_cast<T*>(source))); },
    [](void* field, const void* source) {
        *static_cast<T*>(field) = *static_cast<const T*>(source);
    },
    [](void* field) { std::destroy_at(static_cast<T*>(field)); },
    []() -> const void* { return &untouched<T>(); },
};

/// The size of the largest of some types.
template <class... T>
inline constexpr std::size_t largestOf = std::max({sizeof(T)...});

/// The part of a wide select that does not depend on its class. Fields go by the tag of their
/// choice.
class OVIK_API WideSelect : public Select {
 protected:
    explicit WideSelect(int tag) : Select(tag) {}
    ~WideSelect() = default;

    /// The field of a choice; null if it has not been touched.
    const void* find(int choice) const;
    /// The field of a choice, made if need be. `room` is the size of the room inside.
    void* touch(int choice, const FieldOps& ops, std::size_t room);

    void assignFields(const WideSelect& other, const SelectType& type);
    void takeFields(WideSelect& other, const SelectType& type) noexcept;
    void endFields(const SelectType& type);

 private:
    friend struct Internals;

    /// A field on the heap, which stands behind this.
    struct alignas(std::max_align_t) Further {
        Further* next;
        int choice;
    };
    static constexpr int kNone = -1;

    // The room inside stands behind this object, in `WideSelectOf`.
    void* inside() { return this + 1; }

    std::int16_t inside_ = kNone;  // the choice whose field is in the room inside
    Further* further_ = nullptr;
};

/// A wide select of class `S`, whose first field that is touched finds room in `Room` bytes.
template <class S, std::size_t Room>
class WideSelectOf : public WideSelect {
 public:
    static constexpr std::size_t kRoom = Room;

 protected:
    explicit WideSelectOf(int tag) : WideSelect(tag) {}
    WideSelectOf(const WideSelectOf& other) : WideSelect(other.tag_) {
        assignFields(other, S::s_type);
    }
    /// Takes the fields that are touched; those left behind keep no value of interest.
    WideSelectOf(WideSelectOf&& other) noexcept : WideSelect(other.tag_) {
        takeFields(other, S::s_type);
    }
    WideSelectOf& operator=(const WideSelectOf& other) {
        if (this != &other) assignFields(other, S::s_type);
        tag_ = other.tag_;
        return *this;
    }
    ~WideSelectOf() { endFields(S::s_type); }

    template <class T>
    const T& field(int choice) const {
        const void* const found = find(choice);
        return found ? *static_cast<const T*>(found) : untouched<T>();
    }
    template <class T>
    T& touched(int choice) {
        return *static_cast<T*>(touch(choice, fieldOps<T>, Room));
    }

 private:
    alignas(void*) std::byte room_[Room];
};

}  // namespace Ovik::Schema
