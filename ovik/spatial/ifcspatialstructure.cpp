// One pass over a model makes the nodes of its structure. It works alike for both schemas, so
// one template serves both, with the schema as its argument.
#include "ovik/spatial/ifcspatialstructure.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "ovik/ifc2x3/IfcObjectDefinition.h"
#include "ovik/ifc2x3/IfcProduct.h"
#include "ovik/ifc2x3/IfcRelAggregates.h"
#include "ovik/ifc2x3/IfcRelContainedInSpatialStructure.h"
#include "ovik/ifc2x3/IfcRelNests.h"
#include "ovik/ifc2x3/IfcSpatialStructureElement.h"
#include "ovik/ifc4/IfcObjectDefinition.h"
#include "ovik/ifc4/IfcProduct.h"
#include "ovik/ifc4/IfcRelAggregates.h"
#include "ovik/ifc4/IfcRelContainedInSpatialStructure.h"
#include "ovik/ifc4/IfcRelNests.h"
#include "ovik/ifc4/IfcSpatialElement.h"
#include "ovik/imp/ifcmodel.h"

namespace Ovik {
namespace {

class IfcSpNodeImp final : public IfcSpNode {
 public:
    explicit IfcSpNodeImp(IfcEntity* object) : object_(object) {}

    IfcEntity* entity() const override { return object_; }
    unsigned numChildren() const override { return static_cast<unsigned>(children_.size()); }
    IfcSpNode* child(unsigned index) const override { return children_[index]; }
    unsigned numDecompositions() const override {
        return static_cast<unsigned>(decompositions_.size());
    }
    IfcEntity* decomposition(unsigned index) const override { return decompositions_[index]; }
    unsigned numContainments() const override {
        return static_cast<unsigned>(containments_.size());
    }
    IfcEntity* containment(unsigned index) const override { return containments_[index]; }

    bool hasParent() const { return hasParent_; }
    void addChild(IfcSpNodeImp& child) {
        child.hasParent_ = true;
        children_.push_back(&child);
    }
    void addDecomposition(IfcEntity& relation) { decompositions_.push_back(&relation); }
    void addContainment(IfcEntity& relation) { containments_.push_back(&relation); }

 private:
    std::vector<IfcSpNode*> children_;
    IfcEntity* object_;
    std::vector<IfcEntity*> decompositions_;
    std::vector<IfcEntity*> containments_;
    bool hasParent_ = false;
};

class IfcSpatialStructureImp final : public IfcSpatialStructure {
 public:
    void addRef() override { ++refCount_; }
    void release() override {
        if (--refCount_ == 0) delete this;
    }
    unsigned numRoots() const override { return static_cast<unsigned>(roots_.size()); }
    IfcSpNode* root(unsigned index) const override { return roots_[index]; }

    template <class S>
    void build(const IfcModel& model);

 private:
    /// The nodes by the addresses of their objects; the null address has one node too.
    using NodeMap = std::unordered_map<const IfcEntity*, IfcSpNodeImp*>;

    ~IfcSpatialStructureImp() override {
        for (IfcSpNode* node : nodes_) delete node;
    }

    IfcSpNodeImp& getNode(NodeMap& map, IfcEntity* object) {
        IfcSpNodeImp*& node = map[object];
        if (!node) {
            node = new IfcSpNodeImp(object);
            nodes_.push_back(node);
        }
        return *node;
    }

    template <class Relation>
    void addDecomposition(NodeMap& map, Relation& relation);
    template <class Relation>
    void addContainment(NodeMap& map, Relation& relation);

    std::int32_t refCount_ = 1;
    std::vector<IfcSpNode*> roots_;
    std::vector<IfcSpNodeImp*> nodes_;
};

// The accessors give null for a reference that leads nowhere or to an object of a wrong class.

template <class Relation>
void IfcSpatialStructureImp::addDecomposition(NodeMap& map, Relation& relation) {
    IfcEntity* const whole = relation.getRelatingObject();
    if (!whole) return;
    IfcSpNodeImp& parent = getNode(map, whole);
    parent.addDecomposition(relation);
    auto& parts = relation.getRelatedObjects();
    for (unsigned i = 0; i < parts.size(); ++i) {
        if (IfcEntity* const part = parts[i]) parent.addChild(getNode(map, part));
    }
}

template <class Relation>
void IfcSpatialStructureImp::addContainment(NodeMap& map, Relation& relation) {
    IfcSpNodeImp& parent = getNode(map, relation.getRelatingStructure());
    parent.addContainment(relation);
    auto& elements = relation.getRelatedElements();
    for (unsigned i = 0; i < elements.size(); ++i) parent.addChild(getNode(map, elements[i]));
}

template <class S>
void IfcSpatialStructureImp::build(const IfcModel& model) {
    using Aggregates = typename S::IfcRelAggregates;
    using Nests = typename S::IfcRelNests;
    using Contained = typename S::IfcRelContainedInSpatialStructure;

    NodeMap map;
    const std::uint64_t numEntities = model.getNumEntities();
    for (std::uint64_t i = 0; i < numEntities; ++i) {
        IfcEntity* const entity = model.get(i);
        const RtClass* const type = entity->isA();
        if (type == Aggregates::desc())
            addDecomposition(map, static_cast<Aggregates&>(*entity));
        else if (type == Nests::desc())
            addDecomposition(map, static_cast<Nests&>(*entity));
        else if (type == Contained::desc())
            addContainment(map, static_cast<Contained&>(*entity));
    }
    for (IfcSpNodeImp* node : nodes_) {
        if (!node->hasParent()) roots_.push_back(node);
    }
}

}  // namespace

IfcSpNode::~IfcSpNode() = default;
IfcSpatialStructure::~IfcSpatialStructure() = default;

IfcSpatialStructure* IfcSpatialStructure::create(const IfcModel& model) {
    auto* const structure = new IfcSpatialStructureImp;
    switch (model.schemaId()) {  // a model of another schema has no structure
        case eIFC2X3:
            structure->build<IFC2X3>(model);
            break;
        case eIFC4:
            structure->build<IFC4>(model);
            break;
    }
    return structure;
}

}  // namespace Ovik
