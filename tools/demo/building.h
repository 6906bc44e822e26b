// A small building for the demo, made with the typed classes of either schema.
#pragma once

#include "common/modelfile.h"

namespace demo {

/// A project with its units, a site, a building, a storey and four walls with a property set.
Ovik::IfcModelPtr makeBuilding(Ovik::EIfcSchemaId schema);

/// The first wall of a model, or null.
Ovik::IfcEntity* findWall(const Ovik::IfcModel& model);

/// The name of a wall, read and set through the accessors of its class.
const Ovik::XString& wallName(Ovik::IfcEntity& wall);
void renameWall(Ovik::IfcEntity& wall, const Ovik::XString& name);

}  // namespace demo
