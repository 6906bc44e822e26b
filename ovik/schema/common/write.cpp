// Writing of attributes, values and selects into the record under construction.
#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/enumeration.h"
#include "ovik/schema/common/select.h"
#include "ovik/schema/common/selectaccess.h"

namespace Ovik::Schema {

void writeAttributes(const IfcEntity& entity, Attributes attributes, IfcOutFiler& out,
                     DerivedSet derived) {
    for (const Attribute& attribute : attributes) {
        const bool isDerived = derived & 1;
        derived >>= 1;
        if (isDerived) {
            out.writeDerived();
        } else if (attribute.flagOffset &&
                   !*static_cast<const bool*>(fieldAt(&entity, attribute.flagOffset))) {
            out.writeNull();
        } else {
            writeValue(attribute.type, fieldAt(&entity, attribute.offset), out);
        }
    }
}

void writeValue(const ValueType& type, const void* field, IfcOutFiler& out) {
    switch (type.kind) {
        case Kind::Real:
            out.writeReal(*static_cast<const double*>(field));
            break;
        case Kind::Integer:
            out.writeInt(*static_cast<const int*>(field));
            break;
        case Kind::Unsigned:
            out.writeUnsigned(*static_cast<const unsigned*>(field));
            break;
        case Kind::Boolean:
            out.writeBool(*static_cast<const bool*>(field));
            break;
        case Kind::Logical:
            out.writeLogical(*static_cast<const Logical*>(field));
            break;
        case Kind::String:
            out.writeString(*static_cast<const XString*>(field));
            break;
        case Kind::Binary:
            out.writeBinary(*static_cast<const XBinary*>(field));
            break;
        case Kind::Guid:
            out.writeGuid(*static_cast<const Base64Guid*>(field));
            break;
        case Kind::Entity:
            out.writeEntity(targetOf(*static_cast<const EntityId*>(field), type.entity));
            break;
        case Kind::Enumeration:
            writeEnum(*static_cast<const Enumeration*>(field), *type.enumeration, out);
            break;
        case Kind::Select:
            writeSelect(*static_cast<const Select*>(field), *type.select, out);
            break;
        case Kind::Aggregate:
            type.aggregate->write(field, *type.aggregate, out);
            break;
    }
}

void writeSelect(const Select& value, const SelectType& type, IfcOutFiler& out) {
    const Choice* choice = currentChoice(value, type);
    if (!choice) return;
    const void* field = fieldAt(&value, choice->offset);
    if (choice->type.kind == Kind::Entity || choice->type.kind == Kind::Select) {
        writeValue(choice->type, field, out);
    } else {
        const IfcOutFiler::Item typed(out, choice->recordName.data());
        writeValue(choice->type, field, out);
    }
}

}  // namespace Ovik::Schema
