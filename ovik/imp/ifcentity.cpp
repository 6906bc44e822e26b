// The parts of an entity that all classes share, and the array of back references.
#include "ovik/imp/ifcentity.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/modelimp.h"

namespace Ovik {
namespace {

IfcEntity** allocate(unsigned capacity) {
    void* const memory = std::malloc(capacity * sizeof(IfcEntity*));
    if (!memory) throw std::bad_alloc();
    return static_cast<IfcEntity**>(memory);
}

}  // namespace

constinit RtClass IfcEntity::s_type("IfcEntity", nullptr);

IfcEntityPtrArray::IfcEntityPtrArray(const IfcEntityPtrArray& other) {
    copy(other);
}

IfcEntityPtrArray& IfcEntityPtrArray::operator=(const IfcEntityPtrArray& other) {
    if (this != &other) {
        destroy();
        copy(other);
    }
    return *this;
}

IfcEntityPtrArray::~IfcEntityPtrArray() {
    destroy();
}

void IfcEntityPtrArray::add(IfcEntity* entity) {
    if (!data_) {
        data_ = allocate(capacity_);
    } else if (size_ == capacity_) {
        IfcEntity** const larger = allocate(capacity_ * 2);
        std::copy_n(data_, size_, larger);
        std::free(data_);
        data_ = larger;
        capacity_ *= 2;
    }
    data_[size_++] = entity;
}

bool IfcEntityPtrArray::remove(unsigned index) {
    if (index >= size_) return false;
    std::copy(data_ + index + 1, data_ + size_, data_ + index);
    --size_;
    return true;
}

void IfcEntityPtrArray::copy(const IfcEntityPtrArray& other) {
    data_ = allocate(other.capacity_);
    capacity_ = other.capacity_;
    size_ = other.size_;
    std::copy_n(other.data_, size_, data_);
}

void IfcEntityPtrArray::destroy() {
    std::free(data_);
    data_ = nullptr;
    size_ = 0;
}

IfcEntity::~IfcEntity() = default;

const RtClass* IfcEntity::isA() const {
    return &s_type;
}

void IfcEntity::write(IfcOutFiler&) const {}

Result IfcEntity::getAttribute(const char*, IfcVariant&) const {
    return ResultNotFound;
}

Result IfcEntity::setAttribute(const char*, const IfcVariant&) {
    return ResultNotFound;
}

ModelImp* IfcEntity::imp(IfcModel& model) {
    return model.imp();
}

void IfcEntity::addToModel(IfcModel& model) {
    ModelImp& state = *imp(model);
    if (state.addToPool) state.pool.append(this);
    if (state.assignIds) state.assignId(*this);
}

void IfcEntity::makeGuid(IfcModel& model, Base64Guid& guid) {
    const ModelImp& state = *imp(model);
    if (state.makeGuids) guid = state.useTestGuid ? Base64Guid::testGuid() : Base64Guid::create();
}

}  // namespace Ovik
