// Makes the synthetic models. The mix of records resembles that of exported buildings: most are
// points, faces and loops, then properties and relations.
#include "bench/synthetic.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>

#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"

namespace bench {
namespace {

using Ovik::IfcModel;
using Ovik::XString;

/// Measured length of what `addWall` adds to a file.
constexpr std::uint64_t kBytesPerWall = 3180;
constexpr std::uint64_t kWallsPerStorey = 200;
constexpr int kPropertiesPerWall = 6;

template <class S>
class Builder {
 public:
    explicit Builder(IfcModel& model) : model_(model) {}

    void build(std::uint64_t numWalls) {
        addContext();
        auto* project = make<typename S::IfcProject>(u"Synthetic project");
        auto* building = make<typename S::IfcBuilding>(u"Building");
        building->setCompositionType(S::IfcElementCompositionEnum::eELEMENT);
        typename S::Set_1_IfcRepresentationContext contexts;
        contexts.add(context_);
        project->setRepresentationContexts(contexts);
        project->setUnitsInContext(makeUnits());
        aggregate(project).add(building);
        auto& storeys = aggregate(building);
        for (std::uint64_t done = 0; done < numWalls; done += kWallsPerStorey) {
            auto* storey = make<typename S::IfcBuildingStorey>(u"Storey");
            storey->setCompositionType(S::IfcElementCompositionEnum::eELEMENT);
            storey->setElevation(static_cast<double>(done / kWallsPerStorey) * 3.2);
            storeys.add(storey);
            auto* contained = make<typename S::IfcRelContainedInSpatialStructure>(nullptr);
            contained->setRelatingStructure(storey);
            const std::uint64_t end = std::min(numWalls, done + kWallsPerStorey);
            for (std::uint64_t i = done; i < end; ++i)
                contained->getRelatedElements().add(addWall());
        }
    }

 private:
    /// A rooted object with a name; none if `name` is null.
    template <class T>
    T* make(const char16_t* name) {
        T* object = T::create(model_);
        if (name) object->setName(name);
        // Where the history may be missing it is left out.
        if constexpr (!requires { object->hasOwnerHistory(); }) {
            if (!history_) history_ = makeHistory();
            object->setOwnerHistory(history_);
        }
        return object;
    }

    typename S::IfcOwnerHistory* makeHistory() {
        auto* organization = S::IfcOrganization::create(model_);
        organization->setName(u"Ovik");
        auto* user = S::IfcPersonAndOrganization::create(model_);
        user->setThePerson(S::IfcPerson::create(model_));
        user->setTheOrganization(organization);
        auto* application = S::IfcApplication::create(model_);
        application->setApplicationDeveloper(organization);
        auto* history = S::IfcOwnerHistory::create(model_);
        history->setOwningUser(user);
        history->setOwningApplication(application);
        history->setChangeAction(S::IfcChangeActionEnum::eNOCHANGE);
        return history;
    }

    /// The parts of `whole`, through a new relation.
    auto& aggregate(typename S::IfcObjectDefinition* whole) {
        auto* relation = make<typename S::IfcRelAggregates>(nullptr);
        relation->setRelatingObject(whole);
        return relation->getRelatedObjects();
    }

    typename S::IfcUnitAssignment* makeUnits() {
        auto* metre = S::IfcSIUnit::create(model_);
        metre->setUnitType(S::IfcUnitEnum::eLENGTHUNIT);
        metre->setName(S::IfcSIUnitName::eMETRE);
        typename S::IfcUnit choice;
        choice.setIfcNamedUnit(metre);
        auto* units = S::IfcUnitAssignment::create(model_);
        units->getUnits().add(choice);
        return units;
    }

    void addContext() {
        up_ = S::IfcDirection::create(model_);
        for (const double ratio : {0.0, 0.0, 1.0}) up_->getDirectionRatios().add(ratio);
        context_ = S::IfcGeometricRepresentationContext::create(model_);
        context_->setContextType(u"Model");
        context_->setCoordinateSpaceDimension(3);
        context_->setPrecision(1e-5);
        context_->setWorldCoordinateSystem(axesAt(0, 0, 0));
    }

    double coordinate() { return static_cast<double>(random_() % 2'000'000) / 1000.0 - 1000.0; }

    template <class... Values>
    typename S::IfcCartesianPoint* point(Values... values) {
        auto* result = S::IfcCartesianPoint::create(model_);
        (result->getCoordinates().add(values), ...);
        return result;
    }

    typename S::IfcAxis2Placement axesAt(double x, double y, double z) {
        typename S::IfcAxis2Placement axes;
        axes.setIfcAxis2Placement3D(placementAt(x, y, z));
        return axes;
    }

    typename S::IfcAxis2Placement3D* placementAt(double x, double y, double z) {
        auto* placement = S::IfcAxis2Placement3D::create(model_);
        placement->setLocation(point(x, y, z));
        return placement;
    }

    typename S::IfcWall* addWall() {
        ++numWalls_;
        const std::string label =
            "Basic Wall:Exterior 240 mm:" + std::to_string(100000 + numWalls_);
        auto* wall = make<typename S::IfcWall>(nullptr);
        wall->setName(Ovik::fromUtf8(label));
        wall->setTag(Ovik::fromUtf8(std::to_string(numWalls_)));
        auto* placement = S::IfcLocalPlacement::create(model_);
        placement->setRelativePlacement(axesAt(coordinate(), coordinate(), 0));
        wall->setObjectPlacement(placement);
        auto* shape = S::IfcProductDefinitionShape::create(model_);
        shape->getRepresentations().add(representation(u"SweptSolid", extrudedBody()));
        shape->getRepresentations().add(representation(u"Brep", facetedBody()));
        wall->setRepresentation(shape);
        addProperties(wall);
        return wall;
    }

    typename S::IfcShapeRepresentation* representation(const char16_t* type,
                                                       typename S::IfcRepresentationItem* item) {
        auto* result = S::IfcShapeRepresentation::create(model_);
        result->setContextOfItems(context_);
        result->setRepresentationIdentifier(u"Body");
        result->setRepresentationType(type);
        result->getItems().add(item);
        return result;
    }

    typename S::IfcExtrudedAreaSolid* extrudedBody() {
        auto* outline = S::IfcPolyline::create(model_);
        const double length = std::abs(coordinate()) + 0.5;
        auto* first = point(0.0, 0.0);
        outline->getPoints().add(first);
        outline->getPoints().add(point(length, 0.0));
        outline->getPoints().add(point(length, 0.24));
        outline->getPoints().add(point(0.0, 0.24));
        outline->getPoints().add(first);
        auto* profile = S::IfcArbitraryClosedProfileDef::create(model_);
        profile->setProfileType(S::IfcProfileTypeEnum::eAREA);
        profile->setOuterCurve(outline);
        auto* body = S::IfcExtrudedAreaSolid::create(model_);
        body->setSweptArea(profile);
        body->setPosition(placementAt(0, 0, 0));
        body->setExtrudedDirection(up_);
        body->setDepth(3.2);
        return body;
    }

    typename S::IfcFacetedBrep* facetedBody() {
        const double x = coordinate();
        const double y = coordinate();
        std::array<typename S::IfcCartesianPoint*, 8> corners;
        for (std::size_t i = 0; i < corners.size(); ++i)
            corners[i] = point(i & 1 ? x : x + 0.24, i & 2 ? y : y + 1.01, i & 4 ? 0.0 : 3.2);
        constexpr std::size_t kSides[6][4] = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                              {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
        auto* shell = S::IfcClosedShell::create(model_);
        for (const auto& side : kSides) {
            auto* loop = S::IfcPolyLoop::create(model_);
            for (const std::size_t corner : side) loop->getPolygon().add(corners[corner]);
            auto* bound = S::IfcFaceOuterBound::create(model_);
            bound->setBound(loop);
            bound->setOrientation(true);
            auto* face = S::IfcFace::create(model_);
            face->getBounds().add(bound);
            shell->getCfsFaces().add(face);
        }
        auto* body = S::IfcFacetedBrep::create(model_);
        body->setOuter(shell);
        return body;
    }

    void addProperties(typename S::IfcWall* wall) {
        auto* set = make<typename S::IfcPropertySet>(u"Pset_WallCommon");
        for (int i = 0; i < kPropertiesPerWall; ++i) {
            auto* single = S::IfcPropertySingleValue::create(model_);
            single->setName(Ovik::fromUtf8("Property " + std::to_string(i)));
            typename S::IfcValue value;
            if (i % 2 == 0) {
                typename S::IfcSimpleValue text;
                text.setIfcLabel(u"Stahlbeton C25/30, au\u00dfen ged\u00e4mmt");
                value.setIfcSimpleValue(text);
            } else {
                typename S::IfcMeasureValue length;
                length.setIfcLengthMeasure(coordinate());
                value.setIfcMeasureValue(length);
            }
            single->setNominalValue(value);
            set->getHasProperties().add(single);
        }
        auto* defined = make<typename S::IfcRelDefinesByProperties>(nullptr);
        defined->getRelatedObjects().add(wall);
        if constexpr (requires { typename S::IfcPropertySetDefinitionSelect; }) {
            typename S::IfcPropertySetDefinitionSelect choice;
            choice.setIfcPropertySetDefinition(set);
            defined->setRelatingPropertyDefinition(choice);
        } else {
            defined->setRelatingPropertyDefinition(set);
        }
    }

    IfcModel& model_;
    std::mt19937 random_{20240229};
    typename S::IfcOwnerHistory* history_ = nullptr;
    typename S::IfcDirection* up_ = nullptr;
    typename S::IfcGeometricRepresentationContext* context_ = nullptr;
    std::uint64_t numWalls_ = 0;
};

}  // namespace

Ovik::IfcModelPtr makeModel(Ovik::EIfcSchemaId schema, std::uint64_t bytes) {
    Ovik::IfcModelPtr model(IfcModel::create(schema, true, false));
    const std::uint64_t numWalls = bytes / kBytesPerWall + 1;
    switch (schema) {
        case Ovik::eIFC2X3:
            Builder<Ovik::IFC2X3>(*model).build(numWalls);
            break;
        case Ovik::eIFC4:
            Builder<Ovik::IFC4>(*model).build(numWalls);
            break;
    }
    return model;
}

Ovik::IfcModelPtr makeManyParts(unsigned numRelations) {
    using Ovik::IFC4;
    Ovik::IfcModelPtr model(IfcModel::create(Ovik::eIFC4, false, false));
    auto* const whole = IFC4::IfcProject::create(*model);
    auto* const shared = IFC4::IfcWall::create(*model);
    for (unsigned i = 0; i < numRelations; ++i) {
        auto* const relation = IFC4::IfcRelAggregates::create(*model);
        relation->setRelatingObject(whole);
        relation->getRelatedObjects().add(shared);
        relation->getRelatedObjects().add(IFC4::IfcWall::create(*model));
    }
    return model;
}

}  // namespace bench
