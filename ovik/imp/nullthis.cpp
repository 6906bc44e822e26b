// The calls that are defined on a null `this`. This file alone is compiled so that the test for
// null is kept.
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/rtclass.h"

namespace Ovik {

bool RtClass::isKindOf(const RtClass* other) const {
    return Ovik::isKindOf(this, other);
}

void IfcEntity::destroy() {
    IfcEntity* const self = this;
    if (self) delete self;
}

}  // namespace Ovik
