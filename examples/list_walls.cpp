// list_walls FILE: reads a model of either schema and lists its walls, with the typed classes.
#include <filesystem>
#include <iostream>

#include "ovik/ifc2x3/IfcWall.h"
#include "ovik/ifc4/IfcWall.h"
#include "ovik/ovik.h"

namespace {

/// The schemas are classes with their entities nested in them: a template serves both.
template <class Schema>
void listWalls(const Ovik::IfcModel& model) {
    for (std::uint64_t i = 0; i < model.getNumEntities(); ++i) {
        // The subclasses of a wall are walls too.
        const auto* wall = Schema::IfcWall::cast(model.get(i));
        if (!wall) continue;
        std::cout << '#' << wall->ifcId() << ' ' << wall->isA()->className() << ' '
                  << wall->getGlobalId().getBase64() << ' '
                  << (wall->hasName() ? Ovik::toUtf8(wall->getName()) : "(no name)") << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: list_walls FILE\n";
        return 2;
    }
    const Ovik::IfcModelPtr model(Ovik::IfcModel::read(std::filesystem::path(argv[1])));
    if (!model) {
        std::cerr << argv[1] << ": no model of IFC2X3 or IFC4\n";
        return 1;
    }
    if (model->schemaId() == Ovik::eIFC4)
        listWalls<Ovik::IFC4>(*model);
    else
        listWalls<Ovik::IFC2X3>(*model);
}
