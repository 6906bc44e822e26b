// The spatial structure of small models, made with the classes of both schemas.
#include "ovik/spatial/ifcspatialstructure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <utility>
#include <vector>

#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"
#include "ovik/imp/modelimp.h"
#include "ovik/imp/utf8.h"
#include "tests/loadtext.h"

namespace Ovik {
namespace {

using Test::newModel;

template <class S>
class SpatialTest : public ::testing::Test {
 protected:
    using Object = typename S::IfcObjectDefinition;

    SpatialTest()
        : model_(newModel(S::kSchemaId)),
          project_(make<typename S::IfcProject>(u"project")),
          building_(make<typename S::IfcBuilding>(u"building")),
          storey_(make<typename S::IfcBuildingStorey>(u"storey")),
          wall_(make<typename S::IfcWall>(u"wall")),
          slab_(make<typename S::IfcSlab>(u"slab")),
          person_(S::IfcPerson::create(*model_)) {}

    template <class T>
    T* make(const char16_t* name) {
        T* const object = T::create(*model_);
        object->setName(name);
        return object;
    }

    /// Lists are filled by handle, so that objects of any class and none at all can be in them.
    template <class Relation>
    void decompose(Object* whole, std::initializer_list<const IfcEntity*> parts) {
        auto* const relation = Relation::create(*model_);
        if (whole) relation->setRelatingObject(whole);
        for (const IfcEntity* part : parts)
            relation->getRelatedObjects().add(part ? part->id() : EntityId());
    }
    void aggregate(Object* whole, std::initializer_list<const IfcEntity*> parts) {
        decompose<typename S::IfcRelAggregates>(whole, parts);
    }
    void nest(Object* whole, std::initializer_list<const IfcEntity*> parts) {
        decompose<typename S::IfcRelNests>(whole, parts);
    }
    template <class Structure>
    void contain(Structure* structure, std::initializer_list<const IfcEntity*> elements) {
        auto* const relation = S::IfcRelContainedInSpatialStructure::create(*model_);
        if (structure) relation->setRelatingStructure(structure);
        for (const IfcEntity* element : elements)
            relation->getRelatedElements().add(element ? element->id() : EntityId());
    }

    /// Makes all references to `entity` lead to `other`, or nowhere for null.
    static void redirect(IfcEntity* entity, IfcEntity* other) { *entity->id().slot() = other; }

    static std::string nameOf(const IfcSpNode& node) {
        if (!node.entity()) return "null";
        return toUtf8(S::IfcRoot::cast(node.entity())->getName());
    }

    /// The roots, then each node that they lead to: its numbers of decompositions and containments,
    /// if it has any, and its children.
    std::string dump() const {
        const IfcStructurePtr structure(IfcSpatialStructure::create(*model_));
        std::vector<const IfcSpNode*> nodes;
        const auto reach = [&nodes](const IfcSpNode* node) {
            if (std::find(nodes.begin(), nodes.end(), node) == nodes.end()) nodes.push_back(node);
            return nameOf(*node);
        };
        std::string text = "roots";
        for (unsigned i = 0; i < structure->numRoots(); ++i)
            text += " " + reach(structure->root(i));
        for (std::size_t at = 0; at < nodes.size(); ++at) {
            const IfcSpNode& node = *nodes[at];
            if (node.numDecompositions() + node.numContainments() + node.numChildren() == 0)
                continue;
            text += "; " + nameOf(node) + " " + std::to_string(node.numDecompositions()) + "+" +
                    std::to_string(node.numContainments());
            for (unsigned i = 0; i < node.numChildren(); ++i) text += " " + reach(node.child(i));
        }
        return text;
    }

    IfcModelPtr model_;
    typename S::IfcProject* project_;
    typename S::IfcBuilding* building_;
    typename S::IfcBuildingStorey* storey_;
    typename S::IfcWall* wall_;
    typename S::IfcSlab* slab_;
    IfcEntity* person_;
    static constexpr typename S::IfcBuildingStorey* kUnset = nullptr;
};

using Schemas = ::testing::Types<IFC2X3, IFC4>;
TYPED_TEST_SUITE(SpatialTest, Schemas);

TYPED_TEST(SpatialTest, OnlyTheThreeRelationsMakeNodes) {
    using S = TypeParam;
    EXPECT_EQ(this->dump(), "roots");
    auto* const voids = S::IfcRelVoidsElement::create(*this->model_);
    voids->setRelatingBuildingElement(this->wall_);
    voids->setRelatedOpeningElement(this->template make<typename S::IfcOpeningElement>(u"hole"));
    auto* const product = S::IfcRelAssignsToProduct::create(*this->model_);
    product->getRelatedObjects().add(this->wall_);
    EXPECT_EQ(this->dump(), "roots");
}

TYPED_TEST(SpatialTest, FromTheProjectDownToAWall) {
    this->aggregate(this->project_, {this->building_});
    this->aggregate(this->building_, {this->storey_});
    this->contain(this->storey_, {this->wall_});
    EXPECT_EQ(this->dump(),
              "roots project; project 1+0 building; building 1+0 storey; storey 0+1 wall");

    const IfcStructurePtr structure(IfcSpatialStructure::create(*this->model_));
    const IfcSpNode& project = *structure->root(0);
    const IfcSpNode& storey = *project.child(0)->child(0);
    const std::uint64_t end = this->model_->getNumEntities();
    EXPECT_EQ(project.entity(), this->project_);
    EXPECT_EQ(project.decomposition(0), this->model_->get(end - 3));
    EXPECT_EQ(storey.containment(0), this->model_->get(end - 1));
    EXPECT_EQ(storey.child(0)->entity(), this->wall_);

    // What is made later is not followed, and a reference taken is a reference to give back.
    this->contain(this->storey_, {this->slab_});
    structure->addRef();
    structure->release();
    EXPECT_EQ(storey.numChildren(), 1u);
}

TYPED_TEST(SpatialTest, ChildrenComeInTheOrderOfTheModel) {
    this->contain(this->storey_, {this->wall_});
    this->aggregate(this->building_, {this->storey_, this->storey_});
    this->nest(this->storey_, {this->project_});
    this->contain(this->storey_, {this->slab_, this->wall_});
    // The wall has two parents and one node, the storey is there twice; a node is made, and so a
    // root is counted, where a relation first names it.
    this->aggregate(this->slab_, {this->wall_});
    EXPECT_EQ(this->dump(),
              "roots building; building 1+0 storey storey; storey 1+2 wall project slab wall; "
              "slab 1+0 wall");
    std::string expected = "roots building";
    for (char16_t c = u'a'; c <= u'z'; ++c) {
        const char16_t name[] = {c, 0};
        this->aggregate(this->template make<typename TypeParam::IfcSlab>(name), {this->wall_});
        expected += " " + std::string(1, static_cast<char>(c));
    }
    EXPECT_EQ(this->dump().substr(0, expected.size() + 1), expected + ";");
}

TYPED_TEST(SpatialTest, DecompositionsLeaveOutWhatIsWrong) {
    this->aggregate(nullptr, {this->wall_});
    this->aggregate(this->storey_, {this->slab_});
    TestFixture::redirect(this->storey_, this->person_);
    this->nest(this->storey_, {this->slab_});
    EXPECT_EQ(this->dump(), "roots");
    this->aggregate(this->project_, {this->person_, this->wall_, nullptr, this->slab_});
    TestFixture::redirect(this->slab_, nullptr);
    EXPECT_EQ(this->dump(), "roots project; project 1+0 wall");
}

TYPED_TEST(SpatialTest, ContainmentsTakeWhatIsWrongAsOneObject) {
    this->contain(this->kUnset, {this->wall_});
    EXPECT_EQ(this->dump(), "roots null; null 0+1 wall");
    this->contain(this->storey_, {this->slab_});
    TestFixture::redirect(this->storey_, this->wall_);
    EXPECT_EQ(this->dump(), "roots null; null 0+2 wall slab");
    // A project is no product; and what contains nothing is there all the same.
    this->contain(this->building_, {});
    this->contain(this->building_, {this->project_, nullptr, this->wall_});
    EXPECT_EQ(this->dump(), "roots building; building 0+2 null null wall; null 0+2 wall slab");
}

TYPED_TEST(SpatialTest, CyclesAreKept) {
    this->aggregate(this->wall_, {this->wall_});
    EXPECT_EQ(this->dump(), "roots");
    this->aggregate(this->storey_, {this->building_});
    this->aggregate(this->building_, {this->storey_, this->wall_});
    EXPECT_EQ(this->dump(), "roots");
    this->aggregate(this->project_, {this->building_});
    EXPECT_EQ(this->dump(),
              "roots project; project 1+0 building; building 1+0 storey wall; "
              "storey 1+0 building; wall 1+0 wall");
}

using SpatialIfc4Test = SpatialTest<IFC4>;

TEST_F(SpatialIfc4Test, AllSpatialElementsContain) {
    contain(make<IFC4::IfcSpatialZone>(u"zone"), {wall_});
    contain(make<IFC4::IfcExternalSpatialElement>(u"outside"), {wall_});
    EXPECT_EQ(dump(), "roots zone outside; zone 0+1 wall; outside 0+1 wall");
}

TEST(SpatialStructure, OfAnotherSchemaIsEmpty) {
    class OtherModel final : public SchemaModel {
     public:
        OtherModel() : SchemaModel(false, false) {}
        EIfcSchemaId schemaId() const override { return static_cast<EIfcSchemaId>(2); }
    };
    const IfcModelPtr model(new OtherModel);
    auto* const relation = IFC4::IfcRelAggregates::create(*model);
    relation->setRelatingObject(IFC4::IfcProject::create(*model));
    const IfcStructurePtr structure(IfcSpatialStructure::create(*model));
    EXPECT_EQ(structure->numRoots(), 0u);
}

}  // namespace
}  // namespace Ovik
