// The IFC2X3 sub-context redeclares four attributes of its context as derived, yet many programs
// write values for them. A lenient read reads such a value by its type and drops it; a strict one
// wants it and keeps it. That is kept for compatibility, and costs that files which are right, with
// `*`, can't be read strictly.
#include <iterator>

#include "ovik/ifc2x3/IfcGeometricRepresentationSubContext.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/losscause.h"
#include "ovik/schema/common/engine.h"

namespace Ovik {

bool IFC2X3::IfcGeometricRepresentationSubContext::read(IfcInFiler& in) {
    using Context = IfcGeometricRepresentationContext;
    if (!IfcRepresentationContext::read(in)) return false;
    if (in.exact()) {
        constexpr Schema::DerivedSet kAll = (1u << std::size(Context::s_attributes)) - 1;
        return Schema::readAttributes(*this, Context::s_attributes, in, kAll) &&
               Schema::readAttributes(*this, s_attributes, in);
    }
    if (!in.lenient()) {
        return Schema::readAttributes(*this, Context::s_attributes, in) &&
               Schema::readAttributes(*this, s_attributes, in);
    }
    IfcGeometricRepresentationSubContext dropped;
    for (const Schema::Attribute& attribute : Context::s_attributes) {
        const IfcParser::ItemBase* item = in.peek();
        if (item && item->is(IfcParser::ItemKind::Derived)) {
            in.advance();
            continue;
        }
        in.warnDerivedIgnored();
        if (!Schema::readAttributes(dropped, {&attribute, 1}, in)) return false;
        in.lost(LossCause::kDerived);
    }
    return Schema::readAttributes(*this, s_attributes, in);
}

}  // namespace Ovik
