// The decomposition of a model as nodes to walk: which objects aggregate or nest which, and which
// products stand in which spatial element.
#pragma once

#include <memory>

#include "ovik/base/export.h"

namespace Ovik {

class IfcEntity;
class IfcModel;

/// An object that takes part in an aggregation, a nesting or a containment. Nodes belong to their
/// structure, entities to the model. No index is checked. After it is made a node never changes, so
/// several threads may read it.
class OVIK_API IfcSpNode {
 public:
    virtual ~IfcSpNode();
    IfcSpNode(const IfcSpNode&) = default;
    IfcSpNode& operator=(const IfcSpNode&) = default;

    /// The object. Null for the one node that stands for whatever a containment leaves unset or
    /// fills with an object of a wrong class.
    virtual IfcEntity* entity() const = 0;

    /// The parts and contents of the object, in the order of their relations in the model and
    /// within a relation in the order of its list. A child that is named twice comes twice, and one
    /// that other nodes name too is the same node there.
    virtual unsigned numChildren() const = 0;
    virtual IfcSpNode* child(unsigned index) const = 0;

    /// The `IfcRelAggregates` and `IfcRelNests` of which the object is the relating side.
    virtual unsigned numDecompositions() const = 0;
    virtual IfcEntity* decomposition(unsigned index) const = 0;

    /// The `IfcRelContainedInSpatialStructure` of which the object is the relating structure.
    virtual unsigned numContainments() const = 0;
    virtual IfcEntity* containment(unsigned index) const = 0;

 protected:
    IfcSpNode() = default;
};

/// The nodes of a model, as they were when it was made. Relations are taken as they stand, so this
/// is a graph and not always a tree: a node may have several parents, and a walk must be ready for
/// cycles. A cycle that no root leads to can't be reached.
/// The caller keeps the model alive as long as it uses the structure. Counted by reference with a
/// plain count, see `IfcStructurePtr`: the structure belongs to one thread at a time, beside reads.
class OVIK_API IfcSpatialStructure {
 public:
    IfcSpatialStructure(const IfcSpatialStructure&) = delete;  // it owns its nodes
    IfcSpatialStructure& operator=(const IfcSpatialStructure&) = delete;

    /// The structure of `model`, with one reference for the caller. Empty if no object of the model
    /// is aggregated, nested or contained, whatever else it holds.
    static IfcSpatialStructure* create(const IfcModel& model);

 protected:
    IfcSpatialStructure() = default;
    virtual ~IfcSpatialStructure();

 public:
    /// Takes one more reference.
    virtual void addRef() = 0;
    /// Gives back a reference. The last one deletes the structure with all its nodes.
    virtual void release() = 0;

    /// The nodes that are no other node's child nor their own, in the order in which the relations
    /// of the model first name them. Beside the project there may be others, such as an assembly
    /// that is contained nowhere. The index is not checked.
    virtual unsigned numRoots() const = 0;
    virtual IfcSpNode* root(unsigned index) const = 0;
};

/// Gives a structure's reference back.
struct ReleaseStructure {
    void operator()(IfcSpatialStructure* structure) const { structure->release(); }
};
/// Owns one reference to a structure: `IfcStructurePtr tree(IfcSpatialStructure::create(model));`
using IfcStructurePtr = std::unique_ptr<IfcSpatialStructure, ReleaseStructure>;

}  // namespace Ovik
