// The rule of the IFC4 oriented edge.
#include "ovik/schema/common/orientededge.h"
#include "ovik/schema/common/engine.h"

#include "ovik/ifc4/IfcEdge.h"
#include "ovik/ifc4/IfcOrientedEdge.h"
#include "ovik/ifc4/IfcVertex.h"

namespace Ovik {

int IFC4::IfcOrientedEdge::validate(ValidationContext& context) {
    return Schema::validateOrientedEdge(
        *this, context, [&] { return IfcEdge::validate(context); },
        [&] { return Schema::validateAttributes(*this, s_attributes, context); });
}

}  // namespace Ovik
