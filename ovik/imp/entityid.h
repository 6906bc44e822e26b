// The handle through which entities refer to each other: a pointer to a slot that a model owns.
#pragma once

#include <cstdint>

#include "ovik/base/export.h"

namespace Ovik {

class IfcEntity;

/// A handle: the address of a slot, and the slot holds an entity. Three states:
/// null (no slot), unresolved (the slot is empty), resolved (the slot holds the entity).
/// The slot belongs to the model and lives as long as it does.
template <class T>
class TId {
 public:
    /// A null handle.
    TId() = default;
    /// The handle of `slot`, which must outlive it.
    explicit TId(T*& slot) : slot_(&slot) {}

    /// True when there is no slot. An unresolved handle is not null.
    bool isNull() const { return slot_ == nullptr; }
    bool operator!() const { return isNull(); }

    /// Makes the handle null; the slot is left alone.
    void setNull() { slot_ = nullptr; }

    /// The entity in the slot; null for a null or unresolved handle.
    T* operator()() const { return slot_ ? *slot_ : nullptr; }

    /// The slot itself; null for a null handle. For the library's own use.
    T** slot() const { return slot_; }

    /// Handles are equal when they share a slot, and ordered by its address.
    bool operator==(const TId& other) const { return slot_ == other.slot_; }
    bool operator!=(const TId& other) const { return slot_ != other.slot_; }
    bool operator<(const TId& other) const { return address() < other.address(); }
    bool operator>(const TId& other) const { return address() > other.address(); }

 private:
    std::uintptr_t address() const { return reinterpret_cast<std::uintptr_t>(slot_); }

    T** slot_ = nullptr;
};

/// The handle of an entity of any class.
class OVIK_API EntityId : public TId<IfcEntity> {
 public:
    using TId::TId;
    EntityId() = default;

    /// A constant null handle.
    static const EntityId s_null;
};

}  // namespace Ovik
