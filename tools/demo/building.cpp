// The demo's building. The schemas are classes that hold their entities as nested classes, so one
// function serves both, with the schema as its argument.
#include "demo/building.h"

#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"

namespace demo {
namespace {

using Ovik::IfcModel;
using Ovik::XString;

/// Some schemas want to know who made each rooted object, and with what.
template <class S>
constexpr bool kWantsOwnerHistory = !requires(typename S::IfcRoot & root) {
    root.hasOwnerHistory();
};

/// Who made the model, and with what.
template <class S>
typename S::IfcOwnerHistory* makeOwnerHistory(IfcModel& model) {
    auto* person = S::IfcPerson::create(model);
    person->setFamilyName(u"M\u00fcller");
    auto* organization = S::IfcOrganization::create(model);
    organization->setName(u"Ovik demo");
    auto* user = S::IfcPersonAndOrganization::create(model);
    user->setThePerson(person);
    user->setTheOrganization(organization);
    auto* application = S::IfcApplication::create(model);
    application->setApplicationDeveloper(organization);
    application->setVersion(u"1");
    application->setApplicationFullName(u"Ovik demo");
    application->setApplicationIdentifier(u"ovik-demo");
    auto* history = S::IfcOwnerHistory::create(model);
    history->setOwningUser(user);
    history->setOwningApplication(application);
    history->setChangeAction(S::IfcChangeActionEnum::eADDED);
    history->setCreationDate(1700000000);
    return history;
}

template <class S>
typename S::IfcUnitAssignment* makeUnits(IfcModel& model) {
    using Unit = typename S::IfcUnitEnum;
    using Name = typename S::IfcSIUnitName;
    auto* units = S::IfcUnitAssignment::create(model);
    const auto add = [&](typename Unit::ETag kind, typename Name::ETag name) {
        auto* unit = S::IfcSIUnit::create(model);
        unit->setUnitType(kind);
        unit->setName(name);
        typename S::IfcUnit choice;
        choice.setIfcNamedUnit(unit);
        units->getUnits().add(choice);
    };
    add(Unit::eLENGTHUNIT, Name::eMETRE);
    add(Unit::eAREAUNIT, Name::eSQUARE_METRE);
    add(Unit::eVOLUMEUNIT, Name::eCUBIC_METRE);
    add(Unit::ePLANEANGLEUNIT, Name::eRADIAN);
    return units;
}

template <class S>
typename S::IfcAxis2Placement3D* makeOrigin(IfcModel& model) {
    auto* point = S::IfcCartesianPoint::create(model);
    for (int i = 0; i < 3; ++i) point->getCoordinates().add(0.0);
    auto* origin = S::IfcAxis2Placement3D::create(model);
    origin->setLocation(point);
    return origin;
}

template <class S>
typename S::IfcPropertySet* makeWallProperties(IfcModel& model) {
    const auto property = [&](const char16_t* name, const typename S::IfcValue& value) {
        auto* single = S::IfcPropertySingleValue::create(model);
        single->setName(name);
        single->setNominalValue(value);
        return single;
    };
    typename S::IfcSimpleValue external;
    external.setIfcBoolean(true);
    typename S::IfcSimpleValue reference;
    reference.setIfcIdentifier(u"W-240");
    typename S::IfcMeasureValue width;
    width.setIfcPositiveLengthMeasure(0.24);

    auto* set = S::IfcPropertySet::create(model);
    set->setName(u"Pset_WallCommon");
    typename S::IfcValue value;
    value.setIfcSimpleValue(external);
    set->getHasProperties().add(property(u"IsExternal", value));
    value.setIfcSimpleValue(reference);
    set->getHasProperties().add(property(u"Reference", value));
    value.setIfcMeasureValue(width);
    set->getHasProperties().add(property(u"Width", value));
    return set;
}

template <class S>
void aggregate(IfcModel& model, typename S::IfcObjectDefinition* whole,
               typename S::IfcObjectDefinition* part) {
    auto* relation = S::IfcRelAggregates::create(model);
    relation->setRelatingObject(whole);
    relation->getRelatedObjects().add(part);
}

template <class S>
void fill(IfcModel& model) {
    auto* project = S::IfcProject::create(model);
    project->setName(u"Demo project");
    project->setUnitsInContext(makeUnits<S>(model));
    auto* context = S::IfcGeometricRepresentationContext::create(model);
    context->setContextType(u"Model");
    context->setCoordinateSpaceDimension(3);
    typename S::IfcAxis2Placement worldAxes;
    worldAxes.setIfcAxis2Placement3D(makeOrigin<S>(model));
    context->setWorldCoordinateSystem(worldAxes);
    // The setter, unlike a change through the getter, marks an optional list as present.
    typename S::Set_1_IfcRepresentationContext contexts;
    contexts.add(context);
    project->setRepresentationContexts(contexts);

    auto* site = S::IfcSite::create(model);
    site->setName(u"Site");
    site->setCompositionType(S::IfcElementCompositionEnum::eELEMENT);
    auto* building = S::IfcBuilding::create(model);
    building->setName(u"House");
    building->setCompositionType(S::IfcElementCompositionEnum::eELEMENT);
    auto* storey = S::IfcBuildingStorey::create(model);
    storey->setName(u"Ground floor");
    storey->setCompositionType(S::IfcElementCompositionEnum::eELEMENT);
    storey->setElevation(0.0);
    aggregate<S>(model, project, site);
    aggregate<S>(model, site, building);
    aggregate<S>(model, building, storey);

    auto* contained = S::IfcRelContainedInSpatialStructure::create(model);
    contained->setRelatingStructure(storey);
    auto* defined = S::IfcRelDefinesByProperties::create(model);
    auto* properties = makeWallProperties<S>(model);
    if constexpr (requires { typename S::IfcPropertySetDefinitionSelect; }) {
        typename S::IfcPropertySetDefinitionSelect choice;
        choice.setIfcPropertySetDefinition(properties);
        defined->setRelatingPropertyDefinition(choice);
    } else {
        defined->setRelatingPropertyDefinition(properties);
    }
    for (const char16_t* name : {u"North wall", u"East wall", u"South wall", u"West wall"}) {
        auto* wall = S::IfcWall::create(model);
        wall->setName(name);
        if constexpr (requires { wall->setPredefinedType(S::IfcWallTypeEnum::eSOLIDWALL); })
            wall->setPredefinedType(S::IfcWallTypeEnum::eSOLIDWALL);
        auto* placement = S::IfcLocalPlacement::create(model);
        typename S::IfcAxis2Placement axes;
        axes.setIfcAxis2Placement3D(makeOrigin<S>(model));
        placement->setRelativePlacement(axes);
        wall->setObjectPlacement(placement);
        contained->getRelatedElements().add(wall);
        defined->getRelatedObjects().add(wall);
    }

    if constexpr (kWantsOwnerHistory<S>) {
        auto* history = makeOwnerHistory<S>(model);
        for (std::uint64_t i = 0; i < model.getNumEntities(); ++i)
            if (auto* root = S::IfcRoot::cast(model.get(i))) root->setOwnerHistory(history);
    }
}

}  // namespace

Ovik::IfcModelPtr makeBuilding(Ovik::EIfcSchemaId schema) {
    constexpr bool kMakeGuids = true;
    Ovik::IfcModelPtr model(IfcModel::create(schema, kMakeGuids, false));
    switch (schema) {
        case Ovik::eIFC2X3:
            fill<Ovik::IFC2X3>(*model);
            break;
        case Ovik::eIFC4:
            fill<Ovik::IFC4>(*model);
            break;
    }
    return model;
}

Ovik::IfcEntity* findWall(const IfcModel& model) {
    for (std::uint64_t i = 0; i < model.getNumEntities(); ++i) {
        Ovik::IfcEntity* entity = model.get(i);
        if (entity->isKindOf(Ovik::IFC4::IfcWall::desc()) ||
            entity->isKindOf(Ovik::IFC2X3::IfcWall::desc()))
            return entity;
    }
    return nullptr;
}

const XString& wallName(Ovik::IfcEntity& wall) {
    if (const auto* wall4 = Ovik::IFC4::IfcWall::cast(&wall)) return wall4->getName();
    return Ovik::IFC2X3::IfcWall::cast(&wall)->getName();
}

void renameWall(Ovik::IfcEntity& wall, const XString& name) {
    if (auto* wall4 = Ovik::IFC4::IfcWall::cast(&wall)) return wall4->setName(name);
    Ovik::IFC2X3::IfcWall::cast(&wall)->setName(name);
}

}  // namespace demo
