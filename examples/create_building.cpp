// create_building OUT: makes a project with a site, a building, a storey and two walls, and writes
// it.
#include <filesystem>
#include <iostream>

#include "ovik/ifc4/IfcBuilding.h"
#include "ovik/ifc4/IfcBuildingStorey.h"
#include "ovik/ifc4/IfcProject.h"
#include "ovik/ifc4/IfcRelAggregates.h"
#include "ovik/ifc4/IfcRelContainedInSpatialStructure.h"
#include "ovik/ifc4/IfcSIUnit.h"
#include "ovik/ifc4/IfcSite.h"
#include "ovik/ifc4/IfcUnitAssignment.h"
#include "ovik/ifc4/IfcWall.h"
#include "ovik/ovik.h"

namespace {

using Ovik::IFC4;
using Ovik::IfcModel;

void addPart(IfcModel& model, IFC4::IfcObjectDefinition* whole, IFC4::IfcObjectDefinition* part) {
    auto* relation = IFC4::IfcRelAggregates::create(model);
    relation->setRelatingObject(whole);
    relation->getRelatedObjects().add(part);
}

IFC4::IfcUnitAssignment* makeUnits(IfcModel& model) {
    auto* metre = IFC4::IfcSIUnit::create(model);
    metre->setUnitType(IFC4::IfcUnitEnum::eLENGTHUNIT);
    metre->setName(IFC4::IfcSIUnitName::eMETRE);
    IFC4::IfcUnit unit;
    unit.setIfcNamedUnit(metre);
    auto* units = IFC4::IfcUnitAssignment::create(model);
    units->getUnits().add(unit);
    return units;
}

void build(IfcModel& model) {
    auto* project = IFC4::IfcProject::create(model);
    project->setName(u"Example");
    project->setUnitsInContext(makeUnits(model));
    auto* site = IFC4::IfcSite::create(model);
    site->setName(u"Site");
    auto* building = IFC4::IfcBuilding::create(model);
    building->setName(u"House");
    auto* storey = IFC4::IfcBuildingStorey::create(model);
    storey->setName(u"Ground floor");
    storey->setElevation(0.0);
    addPart(model, project, site);
    addPart(model, site, building);
    addPart(model, building, storey);

    auto* contained = IFC4::IfcRelContainedInSpatialStructure::create(model);
    contained->setRelatingStructure(storey);
    for (const char16_t* name : {u"North wall", u"South wall"}) {
        auto* wall = IFC4::IfcWall::create(model);
        wall->setName(name);
        wall->setPredefinedType(IFC4::IfcWallTypeEnum::eSOLIDWALL);
        contained->getRelatedElements().add(wall);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: create_building OUT\n";
        return 2;
    }
    constexpr bool kMakeGuids = true;
    constexpr bool kUseTestGuid = false;
    const Ovik::IfcModelPtr model(IfcModel::create(Ovik::eIFC4, kMakeGuids, kUseTestGuid));
    build(*model);
    Ovik::IfcHeader header;
    header.setFileName(u"building.ifc");
    const bool isWritten = model->write(std::filesystem::path(argv[1]), header);
    std::cout << model->getNumEntities() << " entities\n";
    if (!isWritten) std::cerr << argv[1] << ": can't be written\n";
    return isWritten ? 0 : 1;
}
