// The storage of aggregate classes, and the holder that lets an aggregate travel in an IfcVariant.
// An aggregate without an upper bound grows on the heap; one with a bound is an array in place.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "ovik/imp/entityid.h"
#include "ovik/imp/variant.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/entity.h"

namespace Ovik {
namespace Schema {

/// A growing array: pointer, size and capacity. Nothing is allocated until the first element
/// or `reserve`.
template <class E>
class Growing {
 public:
    using Element = E;

    Growing() = default;
    Growing(const Growing& other) : Growing() {
        capacity_ = other.capacity_;
        if (other.data_) data_ = allocate(capacity_);
        for (; size_ < other.size_; ++size_) new (data_ + size_) E(other.data_[size_]);
    }
    /// Leaves `other` empty, as move assignment does.
    Growing(Growing&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)),
          size_(std::exchange(other.size_, 0)),
          capacity_(std::exchange(other.capacity_, kFirstCapacity)) {}
    Growing& operator=(const Growing& other) {
        if (this != &other) {
            Growing copy(other);
            *this = std::move(copy);
        }
        return *this;
    }
    Growing& operator=(Growing&& other) noexcept {
        Growing taken(std::move(other));
        std::swap(data_, taken.data_);
        std::swap(size_, taken.size_);
        std::swap(capacity_, taken.capacity_);
        return *this;
    }
    ~Growing() {
        clear();
        std::free(data_);
    }

    unsigned size() const { return size_; }

    /// Makes room for `n` elements. A first call allocates exactly that, also for 0.
    void reserve(unsigned n) {
        if (!data_) {
            capacity_ = n;
            data_ = allocate(n);
        } else if (n > capacity_) {
            moveTo(n);
        }
    }

    /// Removes the element at `index`; false if there is none.
    bool remove(unsigned index) {
        if (index >= size_) return false;
        std::move(data_ + index + 1, data_ + size_, data_ + index);
        std::destroy_at(data_ + --size_);
        return true;
    }

    /// Removes all elements; the capacity stays.
    void clear() { truncate(0); }

 protected:
    friend struct Internals;

    static constexpr bool isFull() { return false; }

    template <class... Arguments>
    E& emplace(Arguments&&... arguments) {
        if (!data_ || size_ == capacity_) {
            // The new element is made first: it may be a copy of one that a growth moves.
            E element(std::forward<Arguments>(arguments)...);
            grow();
            new (data_ + size_) E(std::move(element));
        } else {
            new (data_ + size_) E(std::forward<Arguments>(arguments)...);
        }
        return data_[size_++];
    }

    void truncate(unsigned n) {
        std::destroy(data_ + n, data_ + size_);
        size_ = n;
    }

    E* elements() { return data_; }
    const E* elements() const { return data_; }

 private:
    static constexpr unsigned kFirstCapacity = 4;

    static E* allocate(unsigned n) {
        void* memory = std::malloc(n ? n * sizeof(E) : 1);
        if (!memory) throw std::bad_alloc();
        return static_cast<E*>(memory);
    }
    // Makes room for one element; a capacity of nothing grows to the first one.
    void grow() {
        if (!data_) {
            if (capacity_ == 0) capacity_ = kFirstCapacity;
            data_ = allocate(capacity_);
        } else {
            if (capacity_ > std::numeric_limits<unsigned>::max() / 2) throw std::bad_alloc();
            moveTo(capacity_ ? 2 * capacity_ : kFirstCapacity);
        }
    }
    void moveTo(unsigned capacity) {
        if constexpr (std::is_trivially_copyable_v<E>) {
            void* larger = std::realloc(data_, capacity * sizeof(E));
            if (!larger) throw std::bad_alloc();
            data_ = static_cast<E*>(larger);
        } else {
            E* larger = allocate(capacity);
            std::uninitialized_move(data_, data_ + size_, larger);
            std::destroy(data_, data_ + size_);
            std::free(data_);
            data_ = larger;
        }
        capacity_ = capacity;
    }
    E* data_ = nullptr;
    unsigned size_ = 0;
    unsigned capacity_ = kFirstCapacity;
};

/// An array of `N` elements in place, of which `size()` are in use.
template <class E, unsigned N>
class Fixed {
 public:
    using Element = E;

    Fixed() = default;
    Fixed(const Fixed&) = default;
    Fixed& operator=(const Fixed&) = default;
    /// Leaves `other` empty, as move assignment does.
    Fixed(Fixed&& other) noexcept { *this = std::move(other); }
    Fixed& operator=(Fixed&& other) noexcept {
        if (this != &other) {
            std::move(std::begin(other.data_), std::end(other.data_), data_);
            size_ = other.size_;
            other.clear();
        }
        return *this;
    }

    unsigned size() const { return size_; }

    /// Removes the element at `index`; false if there is none.
    bool remove(unsigned index) {
        if (index >= size_) return false;
        std::move(data_ + index + 1, data_ + size_, data_ + index);
        data_[--size_] = E();
        return true;
    }

    /// Removes all elements.
    void clear() { truncate(0); }

 protected:
    friend struct Internals;

    bool isFull() const { return size_ == N; }

    template <class... Arguments>
    E& emplace(Arguments&&... arguments) {
        return data_[size_++] = E(std::forward<Arguments>(arguments)...);
    }

    void truncate(unsigned n) {
        while (size_ > n) data_[--size_] = E();
    }

    E* elements() { return data_; }
    const E* elements() const { return data_; }

 private:
    E data_[N]{};
    unsigned size_ = 0;
};

template <class E, unsigned Upper>
struct StorageOf {
    using type = Fixed<E, Upper>;
};
template <class E>
struct StorageOf<E, 0> {
    using type = Growing<E>;
};

/// An aggregate whose elements are values. Numbers go in and out by value, all else by reference.
/// Indices are not checked. The lower bound is told by `AggregateType`; here it names the class.
template <class E, unsigned Lower, unsigned Upper = 0>
class ValueAggregate : public StorageOf<E, Upper>::type {
    static constexpr bool kByValue = std::is_arithmetic_v<E>;

 public:
    /// Appends an element. One that has `Upper` elements, if that isn't 0, is full and takes none.
    void add(std::conditional_t<kByValue, E, const E&> element) {
        if (!this->isFull()) this->emplace(element);
    }

    std::conditional_t<kByValue, E, E&> operator[](unsigned index) {
        return this->elements()[index];
    }
    std::conditional_t<kByValue, E, const E&> operator[](unsigned index) const {
        return this->elements()[index];
    }

    /// The elements in a row; null in an unbounded aggregate that never had room for one.
    const E* asArrayPtr() const { return this->elements(); }
    const E* begin() const { return this->elements(); }
    const E* end() const { return this->elements() + this->size(); }
};

/// An aggregate of references to entities. It owns the handles, not the entities. The generated
/// class adds the access by entity class.
template <unsigned Lower, unsigned Upper = 0>
class EntityAggregate : public StorageOf<EntityId, Upper>::type {
 public:
    /// Appends a reference. One that has `Upper` elements, if that isn't 0, is full and takes none.
    void add(const EntityId& handle) {
        if (!this->isFull()) this->emplace(handle);
    }

 protected:
    template <class T>
    T* at(unsigned index) const {
        return cast<T>(this->elements()[index]());
    }
};

}  // namespace Schema

/// Holder of an aggregate in an `IfcVariant`.
template <class T>
class OVIK_API IfcVectorValue : public IfcVectorValueBase {
 public:
    IfcVectorValue() = default;
    explicit IfcVectorValue(const T& source) : value(source) {}

    IfcVariantValueBase* clone() const override { return new IfcVectorValue(value); }

    /// The element at `index`, which is not checked; empty for a reference that leads nowhere or
    /// to another class.
    IfcVariant operator[](unsigned index) const override {
        IfcVariant result;
        Schema::getValue(T::s_type.element, Schema::Internals::elements(value) + index, result);
        return result;
    }
    unsigned size() const override { return value.size(); }
    bool remove(unsigned index) override { return value.remove(index); }
    void clear() override { value.clear(); }
    /// Appends an element; `ResultWrongType` if the variant doesn't fit. A full aggregate answers
    /// `ResultOk` and takes none.
    Result add(const IfcVariant& element) override {
        typename T::Element converted{};
        const Result result = Schema::setValue(T::s_type.element, &converted, element);
        if (result == ResultOk) value.add(converted);
        return result;
    }

    T value;
};

}  // namespace Ovik
