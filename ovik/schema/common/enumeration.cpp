// Enumerations: literals are found by the schema's name hash first, so only spellings with the
// literal's own hash are accepted, and by an ASCII comparison without case then.
#include "ovik/schema/common/enumeration.h"

#include "ovik/base/ascii.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/outfiler.h"

namespace Ovik::Schema {

const char* enumText(const Enumeration& value, const EnumType& type) {
    const auto tag = static_cast<std::size_t>(Internals::tag(value));
    return tag < type.literals.size() ? type.literals[tag].text : nullptr;
}

bool setEnumText(Enumeration& value, const EnumType& type, const char* text) {
    if (!text) return false;
    const unsigned hash = (*type.hash)(text);
    for (std::size_t tag = 0; tag < type.literals.size(); ++tag) {
        if (type.literals[tag].hash != hash) continue;
        if (compareNoCase(type.literals[tag].text, text) != 0) return false;
        Internals::tag(value) = static_cast<std::int32_t>(tag);
        return true;
    }
    return false;
}

bool readEnum(Enumeration& value, const EnumType& type, IfcInFiler& in) {
    const auto* item = in.itemAs<IfcParser::ItemEnum>();
    if (!item) return false;
    in.advance();
    const char* text = item->name->text.c_str();
    if (setEnumText(value, type, text)) return true;
    in.reportNoMatch(text, widen(type.name).c_str());
    return false;
}

void writeEnum(const Enumeration& value, const EnumType& type, IfcOutFiler& out) {
    if (const char* text = enumText(value, type)) {
        out.writeEnum(text);
    } else {
        out.writeNull();  // a tag outside the enumeration has no literal
    }
}

}  // namespace Ovik::Schema
