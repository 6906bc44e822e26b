// One reference to an object that counts them. Internal.
#pragma once

#include <utility>

namespace Ovik {

/// Owns one reference to a `T`, or none, and gives it back when it goes. A copy takes one more.
template <class T>
class Ref {
 public:
    Ref() = default;
    /// Takes over the caller's reference to `object`, which may be null.
    explicit Ref(T* object) : object_(object) {}
    /// One more reference to `object`.
    static Ref shared(T* object) {
        object->addRef();
        return Ref(object);
    }
    Ref(const Ref& other) : object_(other.object_) {
        if (object_) object_->addRef();
    }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_) object_->release();
    }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    T& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }

    /// Hands the reference over to the caller.
    [[nodiscard]] T* take() { return std::exchange(object_, nullptr); }

 private:
    T* object_ = nullptr;
};

}  // namespace Ovik
