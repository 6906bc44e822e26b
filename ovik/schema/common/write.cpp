// Writing of attributes, values and selects into the record under construction.
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/outfiler.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/presence.h"
#include "ovik/schema/common/visit.h"

namespace Ovik::Schema {
namespace {

struct Writer {
    IfcOutFiler& out;

    void operator()(const double& value) const { out.writeReal(value); }
    void operator()(const int& value) const { out.writeInt(value); }
    void operator()(const unsigned& value) const { out.writeUnsigned(value); }
    void operator()(const bool& value) const { out.writeBool(value); }
    void operator()(const Logical& value) const { out.writeLogical(value); }
    void operator()(const XString& value) const { out.writeString(value); }
    void operator()(const XBinary& value) const { out.writeBinary(value); }
    void operator()(const Base64Guid& value) const { out.writeGuid(value); }
    void operator()(const EntityId& value, const RtClass* type) const {
        out.writeEntity(targetOf(value, type));
    }
    void operator()(const Enumeration& value, const EnumType& type) const {
        writeEnum(value, type, out);
    }
    void operator()(const Select& value, const SelectType& type) const {
        writeSelect(value, type, out);
    }
    void operator()(const void* field, const AggregateType& type) const {
        type.write(field, type, out);
    }
};

}  // namespace

void writeAttributes(const IfcEntity& entity, Attributes attributes, IfcOutFiler& out,
                     DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        out.beginAttribute(attribute.name);
        if (isDerived) {
            out.writeDerived();
        } else if (!isGiven(entity, attribute) && (attribute.optional || out.exact())) {
            out.writeNull();
        } else {
            writeValue(attribute.type, fieldAt(&entity, attribute.offset), out);
        }
    }
}

void writeValue(const ValueType& type, const void* field, IfcOutFiler& out) {
    visit(type, field, Writer{out});
}

void writeSelect(const Select& value, const SelectType& type, IfcOutFiler& out) {
    const Choice* choice = currentChoice(value, type);
    if (!choice) {
        // A plain writing leaves the value out, and all behind it moves up: that is kept.
        if (out.exact()) out.writeNull();
        return;
    }
    const void* field = choiceField(value, type, *choice);
    if (choice->type.is(Kind::Entity) || choice->type.is(Kind::Select)) {
        writeValue(choice->type, field, out);
    } else {
        const IfcOutFiler::Item typed(out, choice->recordName.data());
        writeValue(choice->type, field, out);
    }
}

}  // namespace Ovik::Schema
