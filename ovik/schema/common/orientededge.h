// The oriented edge takes its ends from the edge that it orients: they are derived, so they are not
// in the file and are set when the references are validated.
#pragma once

#include <ostream>

#include "ovik/imp/validation.h"

namespace Ovik::Schema {

/// Validates `edge`, an `IfcOrientedEdge` of either schema; `validateEnds` is the rule of
/// `IfcEdge`, `validateElement` that of the edge's own attributes.
template <class OrientedEdge, class ValidateEnds, class ValidateElement>
int validateOrientedEdge(OrientedEdge& edge, ValidationContext& context, ValidateEnds validateEnds,
                         ValidateElement validateElement) {
    if (context.exact()) validateElement();
    auto* element = edge.getEdgeElement();
    if (context.exact() && !element) return kValid;
    int code = element ? context.validateRef(element) : static_cast<int>(kInvalid);
    if (code != kValid) {
        context.reportMember(code, L"EdgeElement");
        if (code == kInvalid) {
            context.log() << L"Invalid derived data member 'EdgeStart' in #" << context.currentId()
                          << L", removed.\n";
        }
        return code;
    }
    const bool forward = edge.getOrientation();
    edge.setEdgeStart(forward ? element->getEdgeStart() : element->getEdgeEnd());
    edge.setEdgeEnd(forward ? element->getEdgeEnd() : element->getEdgeStart());
    if (context.exact()) return kValid;
    code = validateEnds();
    return code == kValid ? context.validateRef(element) : code;
}

}  // namespace Ovik::Schema
