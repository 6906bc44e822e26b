// Back references in small models, made with the classes of both schemas.
#include <gtest/gtest.h>

#include <map>

#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"
#include "tests/loadtext.h"

namespace Ovik {
namespace {

using Test::newModel;

template <class S>
class BackRefsTest : public ::testing::Test {
 protected:
    /// A new entity, known by `label`.
    template <class T>
    T* make(const std::string& label) {
        T* const entity = T::create(*model_);
        labels_[entity] = label;
        return entity;
    }

    /// What a relation calls the objects that it relates, of which one is chosen in IFC4.
    template <class Relation, class T>
    void relate(Relation* relation, T* object) {
        if constexpr (requires { typename S::IfcDefinitionSelect; }) {
            typename S::IfcDefinitionSelect choice;
            if constexpr (std::is_base_of_v<typename S::IfcPropertyDefinition, T>)
                choice.setIfcPropertyDefinition(object);
            else
                choice.setIfcObjectDefinition(object);
            relation->getRelatedObjects().add(choice);
        } else {
            relation->getRelatedObjects().add(object);
        }
    }

    /// The entities that have back references, in the order of the model, with the labels of these.
    std::string dump() const {
        std::string text;
        for (std::uint64_t i = 0; i < model_->getNumEntities(); ++i) {
            const IfcEntity& entity = *model_->get(i);
            if (entity.backRefs().size() == 0) continue;
            text += labels_.at(&entity) + ":";
            for (unsigned j = 0; j < entity.backRefs().size(); ++j)
                text += " " + labels_.at(entity.backRefs()[j]);
            text += "\n";
        }
        return text;
    }
    std::string build() const {
        model_->buildBackRefs();
        return dump();
    }

    IfcModelPtr model_ = newModel(S::kSchemaId);
    std::map<const IfcEntity*, std::string> labels_;
};

using Schemas = ::testing::Types<IFC2X3, IFC4>;
TYPED_TEST_SUITE(BackRefsTest, Schemas);

TYPED_TEST(BackRefsTest, EachRelation) {
    using S = TypeParam;
    EXPECT_EQ(this->build(), "");
    auto* const wall = this->template make<typename S::IfcWall>("wall");
    auto* const door = this->template make<typename S::IfcDoor>("door");
    auto* const hole = this->template make<typename S::IfcOpeningElement>("hole");
    auto* const set = this->template make<typename S::IfcPropertySet>("set");
    auto* const point = this->template make<typename S::IfcCartesianPoint>("point");
    auto* const shape = this->template make<typename S::IfcShapeRepresentation>("shape");
    auto* const material = this->template make<typename S::IfcMaterial>("material");
    auto* const map = this->template make<typename S::IfcRepresentationMap>("map");

    this->template make<typename S::IfcStyledItem>("styled")->setItem(point);
    this->template make<typename S::IfcStyledItem>("unstyled");
    typename S::IfcLayeredItem layered;
    const auto assign = [&](auto* layer) {
        layered.setIfcRepresentation(shape);
        layer->getAssignedItems().add(layered);
        layered.setIfcRepresentationItem(point);
        layer->getAssignedItems().add(layered);
    };
    assign(this->template make<typename S::IfcPresentationLayerAssignment>("layer"));
    assign(this->template make<typename S::IfcPresentationLayerWithStyle>("styledlayer"));
    auto* const voids = this->template make<typename S::IfcRelVoidsElement>("voids");
    voids->setRelatingBuildingElement(wall);
    voids->setRelatedOpeningElement(hole);
    auto* const fills = this->template make<typename S::IfcRelFillsElement>("fills");
    fills->setRelatingOpeningElement(hole);
    fills->setRelatedBuildingElement(door);
    auto* const made = this->template make<typename S::IfcRelAssociatesMaterial>("made");
    this->relate(made, wall);
    this->relate(made, set);
    auto* const classified =
        this->template make<typename S::IfcRelAssociatesClassification>("classified");
    this->relate(classified, set);
    this->relate(classified, door);
    this->template make<typename S::IfcMaterialDefinitionRepresentation>("drawn")
        ->setRepresentedMaterial(material);
    this->template make<typename S::IfcMaterialDefinitionRepresentation>("undrawn");
    const auto relateBoth = [&](auto& objects) {
        objects.add(wall);
        objects.add(door->id());
        objects.add(EntityId());
    };
    relateBoth(
        this->template make<typename S::IfcRelDefinesByProperties>("props")->getRelatedObjects());
    relateBoth(this->template make<typename S::IfcRelContainedInSpatialStructure>("inside")
                   ->getRelatedElements());
    relateBoth(this->template make<typename S::IfcRelAggregates>("parts")->getRelatedObjects());
    relateBoth(this->template make<typename S::IfcRelDefinesByType>("typed")->getRelatedObjects());
    // Of these nothing is collected.
    relateBoth(this->template make<typename S::IfcRelNests>("nests")->getRelatedObjects());
    relateBoth(this->template make<typename S::IfcRelAssignsToGroup>("group")->getRelatedObjects());
    this->relate(this->template make<typename S::IfcRelAssociatesDocument>("document"), wall);

    // Types come by kind. A list is present once it has been set.
    typename S::List_1_IfcRepresentationMap maps;
    maps.add(map);
    maps.add(map);
    this->template make<typename S::IfcWallType>("walltype")->setRepresentationMaps(maps);
    this->template make<typename S::IfcTypeProduct>("type")->setRepresentationMaps(maps);
    this->template make<typename S::IfcTypeProduct>("absent")->getRepresentationMaps().add(map);

    EXPECT_EQ(this->build(),
              "wall: voids made props inside parts typed\n"
              "door: fills classified props inside parts typed\n"
              "hole: voids fills\n"
              "set: made classified\n"
              "point: styled layer styledlayer\n"
              "shape: layer styledlayer\n"
              "material: drawn\n"
              "map: walltype walltype type type\n");
}

TYPED_TEST(BackRefsTest, AssignmentsToProductsByTheKindOfWhatIsAssigned) {
    using S = TypeParam;
    using Objects = typename S::IfcObjectTypeEnum;
    auto* const wall = this->template make<typename S::IfcWall>("wall");
    const auto assign = [&](const std::string& label) {
        auto* const relation = this->template make<typename S::IfcRelAssignsToProduct>(label);
        if constexpr (requires { typename S::IfcProductSelect; }) {
            typename S::IfcProductSelect choice;
            choice.setIfcProduct(wall);
            relation->setRelatingProduct(choice);
        } else {
            relation->setRelatingProduct(wall);
        }
        return relation;
    };
    assign("unset");
    // A change through the getter does not make the kind present.
    assign("absent")->getRelatedObjectsType() = Objects::ePRODUCT;
    for (int tag = Objects::ePRODUCT; tag <= Objects::eNOTDEFINED; ++tag) {
        const Objects value(static_cast<typename Objects::ETag>(tag));
        assign(value.asString())->setRelatedObjectsType(value);
    }
    auto* const lost = this->template make<typename S::IfcRelAssignsToProduct>("lost");
    lost->setRelatedObjectsType(Objects::ePRODUCT);
    EXPECT_EQ(this->build(), "wall: PRODUCT PROJECT\n");
}

TYPED_TEST(BackRefsTest, AreAddedAgainAtEachCall) {
    using S = TypeParam;
    auto* const wall = this->template make<typename S::IfcWall>("wall");
    auto* const parts = this->template make<typename S::IfcRelAggregates>("parts");
    parts->getRelatedObjects().add(wall);
    EXPECT_EQ(this->dump(), "");
    EXPECT_EQ(this->build(), "wall: parts\n");
    wall->setUserData(7);
    parts->setUserData(-7);
    EXPECT_EQ(this->build(), "wall: parts parts\n");
    EXPECT_EQ(wall->userData(), 0);
    EXPECT_EQ(parts->userData(), 0);
}

using BackRefs2x3Test = BackRefsTest<IFC2X3>;

TEST_F(BackRefs2x3Test, DerivedRelationsAreNotCollected) {
    using S = IFC2X3;
    auto* const wall = make<S::IfcWall>("wall");
    auto* const point = make<S::IfcCartesianPoint>("point");
    make<S::IfcRelOverridesProperties>("overrides")->getRelatedObjects().add(wall);
    make<S::IfcAnnotationCurveOccurrence>("annotation")->setItem(point);
    EXPECT_EQ(build(), "");
}

using BackRefs4Test = BackRefsTest<IFC4>;

TEST_F(BackRefs4Test, OnlyInIfc4) {
    using S = IFC4;
    auto* const faces = make<S::IfcTriangulatedFaceSet>("faces");
    auto* const type = make<S::IfcTypeProduct>("type");
    make<S::IfcIndexedColourMap>("colours")->setMappedTo(faces);
    make<S::IfcIndexedColourMap>("colourless");
    make<S::IfcIndexedTriangleTextureMap>("textures")->setMappedTo(faces);
    S::IfcProductSelect choice;
    choice.setIfcTypeProduct(type);
    auto* const assigned = make<S::IfcRelAssignsToProduct>("assigned");
    assigned->setRelatingProduct(choice);
    assigned->setRelatedObjectsType(S::IfcObjectTypeEnum::ePROJECT);
    EXPECT_EQ(build(), "faces: colours textures\ntype: assigned\n");
}

}  // namespace
}  // namespace Ovik
