// The facade: files, entities and their attributes by name, without a class of a schema. A program
// includes this and the constants of the schemas that it works with, `ovik/api/ifc2x3.h` and
// `ovik/api/ifc4.h`. It calls `initOvikApi` once, gets a `Model` from `Model::read` or
// `Model::create`, goes over it with `get`, and works on each `Entity` with `getAttribute` and
// `setAttribute` and the names among the constants; a `Variant` tells by `type()` what it holds.
// `write` saves the model, `release` gives it back.
#pragma once

#include "ovik/api/desc.h"
#include "ovik/api/model.h"
#include "ovik/api/values.h"
