// The IFC2X3 sub-context redeclares four attributes of its context as derived, yet many programs
// write values for them. A lenient read passes over such values; a strict one wants them.
#include "ovik/ifc2x3/IfcAxis2Placement.h"
#include "ovik/ifc2x3/IfcGeometricRepresentationSubContext.h"
#include "ovik/imp/infiler.h"
#include "ovik/schema/common/engine.h"

namespace Ovik {
namespace {

using namespace IfcParser;

// Passes a `*`; of anything else tells once per load, reads it by `readIgnored` and drops it.
template <class ReadIgnored>
bool skipOrIgnore(IfcInFiler& in, ReadIgnored readIgnored) {
    const ItemBase* item = in.peek();
    if (item && item->is(ItemKind::Derived)) {
        in.advance();
        return true;
    }
    in.warnDerivedIgnored();
    return readIgnored();
}

}  // namespace

bool IFC2X3::IfcGeometricRepresentationSubContext::read(IfcInFiler& in) {
    using Context = IfcGeometricRepresentationContext;
    if (!IfcRepresentationContext::read(in)) return false;
    if (!in.lenient()) {
        return Schema::readAttributes(*this, Context::s_attributes, in) &&
               Schema::readAttributes(*this, s_attributes, in);
    }
    auto ignore = [&](const Schema::ValueType& type, auto dropped) {
        return [&in, type, dropped]() mutable { return Schema::readValue(type, &dropped, in); };
    };
    auto ignoreOptional = [&](auto required) {
        return [&in, required]() mutable {
            bool isNull = false;
            return in.isNullItem(isNull) && (isNull || required());
        };
    };
    const auto& [dimension, precision, placement, trueNorth] = Context::s_attributes;
    return skipOrIgnore(in, ignore(dimension.type, 0)) &&
           skipOrIgnore(in, ignoreOptional(ignore(precision.type, 0.0))) &&
           skipOrIgnore(in, ignore(placement.type, IfcAxis2Placement())) &&
           skipOrIgnore(in, ignoreOptional(ignore(trueNorth.type, EntityId()))) &&
           Schema::readAttributes(*this, s_attributes, in);
}

}  // namespace Ovik
