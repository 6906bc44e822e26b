// The null handle. A constant, so that it stands before any static initialiser runs.
#include "ovik/imp/entityid.h"

namespace Ovik {

constinit const EntityId EntityId::s_null{};

}  // namespace Ovik
