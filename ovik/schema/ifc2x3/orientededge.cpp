// The rule of the IFC2X3 oriented edge.
#include "ovik/schema/common/orientededge.h"
#include "ovik/schema/common/engine.h"

#include "ovik/ifc2x3/IfcEdge.h"
#include "ovik/ifc2x3/IfcOrientedEdge.h"
#include "ovik/ifc2x3/IfcVertex.h"

namespace Ovik {

int IFC2X3::IfcOrientedEdge::validate(ValidationContext& context) {
    return Schema::validateOrientedEdge(
        *this, context, [&] { return IfcEdge::validate(context); },
        [&] { return Schema::validateAttributes(*this, s_attributes, context); });
}

}  // namespace Ovik
