// How a facade class holds what it wraps: one pointer to a block on the heap, so that programs see
// no layout of the library.
#pragma once

#include <utility>

#include "ovik/base/export.h"

namespace Ovik {

// What the facade wraps. Programs never see more of these classes than their names.
class Base64Guid;
class IfcEnumValue;
class IfcHeader;
class IfcModel;
class IfcSelectValueBase;
class IfcVariant;
class IfcVectorValueBase;
class Logical;
class RtClass;
class XBinary;
class XString;

namespace IfcApi {

/// Gives the library access to what the facade wraps.
struct Access;

/// Owns a `T` on the heap; a copy owns a copy of the `T`. After a move the source owns nothing and
/// may only be assigned to or destroyed.
template <class T>
class OVIK_API Handle {
 public:
    /// Takes `value`, made by `new`.
    explicit Handle(T* value) : value_(value) {}
    Handle(const Handle& other);
    Handle(Handle&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
    Handle& operator=(const Handle& other) {
        if (this != &other) *this = Handle(other);
        return *this;
    }
    Handle& operator=(Handle&& other) noexcept {
        Handle taken(std::move(other));
        std::swap(value_, taken.value_);
        return *this;
    }
    ~Handle();

    T& operator*() const { return *value_; }
    T* operator->() const { return value_; }
    /// Gives the value away.
    T* release() { return std::exchange(value_, nullptr); }

 private:
    T* value_;
};

}  // namespace IfcApi
}  // namespace Ovik
