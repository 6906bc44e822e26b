// The parts of an entity that all classes share, and the array of back references.
#include "ovik/imp/ifcentity.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/modelimp.h"

namespace Ovik {
constinit RtClass IfcEntity::s_type("IfcEntity", nullptr);

namespace {

constexpr unsigned kFirstCapacity = 4;

}  // namespace

IfcEntityPtrArray::Buffer* IfcEntityPtrArray::copyOf(Buffer* source, unsigned capacity) {
    void* const memory = std::malloc(sizeof(Buffer) + capacity * sizeof(IfcEntity*));
    if (!memory) throw std::bad_alloc();
    auto* const buffer = new (memory) Buffer{source ? source->size : 0, capacity};
    if (source) std::copy_n(source->elements(), source->size, buffer->elements());
    return buffer;
}

IfcEntityPtrArray::IfcEntityPtrArray(const IfcEntityPtrArray& other)
    : buffer_(other.buffer_ ? copyOf(other.buffer_, other.buffer_->capacity) : nullptr) {}

IfcEntityPtrArray& IfcEntityPtrArray::operator=(const IfcEntityPtrArray& other) {
    if (this != &other) {
        std::free(std::exchange(buffer_, nullptr));
        if (other.buffer_) buffer_ = copyOf(other.buffer_, other.buffer_->capacity);
    }
    return *this;
}

IfcEntityPtrArray::~IfcEntityPtrArray() {
    std::free(buffer_);
}

void IfcEntityPtrArray::add(IfcEntity* entity) {
    if (!buffer_) {
        buffer_ = copyOf(nullptr, kFirstCapacity);
    } else if (buffer_->size == buffer_->capacity) {
        Buffer* const larger = copyOf(buffer_, buffer_->capacity * 2);
        std::free(std::exchange(buffer_, larger));
    }
    buffer_->elements()[buffer_->size++] = entity;
}

bool IfcEntityPtrArray::remove(unsigned index) {
    if (index >= size()) return false;
    IfcEntity** const elements = buffer_->elements();
    std::copy(elements + index + 1, elements + buffer_->size, elements + index);
    --buffer_->size;
    return true;
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
