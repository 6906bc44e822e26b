// What stands behind the facade's handles. Internal to the library.
#pragma once

#include <memory>
#include <utility>

#include "ovik/api/model.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/result.h"
#include "ovik/imp/variant.h"

namespace Ovik::IfcApi {

struct Access {
    /// The value behind a handle.
    template <class H>
    static auto& inner(const H& handle) {
        return *handle.inner_;
    }
    /// A handle that owns `inner`, made by `new`.
    template <class H, class T>
    static H make(T* inner) {
        return H(Handle<T>(inner));
    }
    /// A descriptor of its arguments.
    template <class D, class... Args>
    static constexpr D describe(Args... args) {
        return D(args...);
    }
    /// What `handle` owned; the handle is left moved from.
    template <class H>
    static auto* take(H& handle) {
        return handle.inner_.release();
    }

    /// What a descriptor names: null, or `std::bad_function_call`, for one of nothing and before
    /// `initOvikApi`. The caller owns the value.
    static const RtClass* classOf(const EntityDesc& desc);
    static IfcSelectValueBase* createValue(const SelectorDesc& desc);
    static IfcVectorValueBase* createValue(const VectorDesc& desc);
};

class Entity::Impl {
 public:
    explicit Impl(const EntityId& id) : id_(id) {}

    static Entity create(const EntityId& id) { return Entity(new Impl(id)); }
    static const EntityId& data(const Entity& entity) { return entity.inner_->id_; }

 private:
    EntityId id_;
};

class Model::Impl {
 public:
    /// Takes over the caller's reference to `model`, which may be null.
    explicit Impl(IfcModel* model) : model_(model) {}
    ~Impl() {
        if (model_) model_->release();
    }
    Impl(const Impl&) = delete;  // one reference, one owner
    Impl& operator=(const Impl&) = delete;

    static Model* create(IfcModel* model) { return new Model(new Impl(model)); }
    /// Gives `model` another block, which it owns from now on.
    static void setImpl(Model& model, Impl* impl) { model.inner_.reset(impl); }
    IfcModel* data() const { return model_; }

 private:
    IfcModel* model_;
};

/// The facade's result for one of the library.
inline Result translate(Ovik::Result result) {
    switch (result) {
        case Ovik::ResultOk:
            return ResultOk;
        case Ovik::ResultUnset:
            return ResultUnset;
        case Ovik::ResultNotFound:
            return ResultNotFound;
        case Ovik::ResultWrongType:
            return ResultWrongType;
    }
    return ResultOther;
}

template <class T>
Handle<T>::Handle(const Handle& other) {
    if constexpr (requires { other.value_->clone(); })
        value_ = static_cast<T*>(other.value_->clone());
    else
        value_ = new T(*other.value_);
}

template <class T>
Handle<T>::~Handle() {
    delete value_;
}

}  // namespace Ovik::IfcApi
