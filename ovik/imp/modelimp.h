// What a model consists of, and what is alike in the models of all schemas. Internal.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcentitypool.h"
#include "ovik/imp/ifcmodel.h"

namespace Ovik {

/// The private state of a model.
struct ModelImp {
    ModelImp(bool makeNewGuids, bool useFixedGuid)
        : makeGuids(makeNewGuids), useTestGuid(useFixedGuid) {}
    ~ModelImp();

    static constexpr unsigned kSlotsPerBlock = 2047;
    using SlotBlock = std::array<IfcEntity*, kSlotsPerBlock>;

    /// The next unused slot, empty. It never moves and is never handed out again.
    IfcEntity*& takeSlot();

    /// Gives `entity` a slot of its own, if it has none.
    void assignId(IfcEntity& entity);

    bool assignIds = true;  ///< a new entity gets a slot
    bool addToPool = true;  ///< a new entity goes to the pool
    IfcEntityPool<IfcEntity> pool;
    std::vector<std::unique_ptr<SlotBlock>> idBlocks;
    unsigned idBlockUsed = 0;  ///< slots handed out of the last block
    bool makeGuids;
    bool useTestGuid;
};

/// The part of a model that doesn't depend on the schema.
class OVIK_API SchemaModel : public IfcModel {
 public:
    SchemaModel(bool makeGuids, bool useTestGuid);

    void addRef() override;
    void release() override;
    std::uint64_t getNumEntities() const override;
    IfcEntity* get(std::uint64_t index) const override;
    void reserve(std::uint64_t count) override;
    void buildBackRefs() override;

 protected:
    ~SchemaModel() override;

    /// Adds `entity` to the back references of what it relates. Here that is nothing.
    virtual void addBackRefs(IfcEntity& entity) const;

 private:
    int refCount_ = 1;
};

}  // namespace Ovik
