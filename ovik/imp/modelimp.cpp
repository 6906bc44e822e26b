// Slots, and the operations that the models of all schemas share.
#include "ovik/imp/modelimp.h"

namespace Ovik {

ModelImp::~ModelImp() {
    // The slots go first: the destructors of the entities look at none.
    idBlocks.clear();
    pool.deleteEntities();
}

IfcEntity*& ModelImp::takeSlot() {
    if (idBlocks.empty() || idBlockUsed == kSlotsPerBlock) {
        idBlocks.push_back(std::make_unique<SlotBlock>());
        idBlockUsed = 0;
    }
    return (*idBlocks.back())[idBlockUsed++];
}

void ModelImp::assignId(IfcEntity& entity) {
    if (!entity.id().isNull()) return;
    IfcEntity*& slot = takeSlot();
    slot = &entity;
    entity.setId(EntityId(slot));
}

SchemaModel::SchemaModel(bool makeGuids, bool useTestGuid)
    : IfcModel(std::make_unique<ModelImp>(makeGuids, useTestGuid)) {}

SchemaModel::~SchemaModel() = default;

void SchemaModel::addRef() {
    ++refCount_;
}

void SchemaModel::release() {
    if (--refCount_ == 0) delete this;
}

std::uint64_t SchemaModel::getNumEntities() const {
    return imp()->pool.size();
}

IfcEntity* SchemaModel::get(std::uint64_t index) const {
    return imp()->pool[index];
}

void SchemaModel::reserve(std::uint64_t count) {
    imp()->pool.reserve(count);
}

void SchemaModel::buildBackRefs() {
    const std::uint64_t numEntities = getNumEntities();
    for (std::uint64_t i = 0; i < numEntities; ++i) {
        IfcEntity& entity = *get(i);
        entity.setUserData(0);
        addBackRefs(entity);
    }
}

void SchemaModel::addBackRefs(IfcEntity&) const {}

}  // namespace Ovik
