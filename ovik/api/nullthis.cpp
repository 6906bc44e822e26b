// The facade's call that is defined on a null `this`. This file is compiled so that the test for
// null is kept.
#include "ovik/api/access.h"

namespace Ovik::IfcApi {

void Model::release() {
    Model* const self = this;
    if (self) delete self;
}

}  // namespace Ovik::IfcApi
