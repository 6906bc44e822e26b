#include <iostream>

#include "ovik/ifc4/IfcWall.h"
#include "ovik/ovik.h"

int main() {
    using Ovik::IFC4;
    using Ovik::IfcModel;
    using Ovik::IfcModelPtr;
    const std::filesystem::path file = "wall.ifc";

    IfcModelPtr model(IfcModel::create(Ovik::eIFC4, true, false));
    IFC4::IfcWall::create(*model)->setName(u"Garden wall");
    model->write(file, Ovik::IfcHeader());

    model.reset(IfcModel::read(file));
    if (!model) return 1;
    for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
        Ovik::IfcEntity* entity = model->get(i);
        entity->setAttribute("Description", Ovik::XString(u"2\u00bd m high"));  // by name
        if (const auto* wall = IFC4::IfcWall::cast(entity))                     // by accessor
            std::cout << entity->isA()->className() << " #" << entity->ifcId() << ": "
                      << Ovik::toUtf8(wall->getName()) << ", "
                      << Ovik::toUtf8(wall->getDescription()) << '\n';
    }
}
