// Showing entities of a model through the facade.
#include "show.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "common/plaintext.h"

namespace tools {
namespace {

using namespace Ovik::IfcApi;

std::string quoted(const std::string& text) {
    return "'" + plainText(text) + "'";
}

std::string number(double value) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::string literal(const EnumValue& value) {
    const char* text = value.getValue();
    return text ? "." + std::string(text) + "." : "none";
}

std::string show(const Variant& value);

/// The value of a select with the type that gives it its meaning, which is the innermost choice.
std::string show(const SelectValue& select) {
    const Variant value = select.getValue();
    switch (value.type()) {
        case TypeNone:
        case TypeEntity:
        case TypeSelect:
            return show(value);
        default:
            return select.tag() + ("(" + show(value)) + ")";
    }
}

std::string show(const VectorValue& vector) {
    std::string result = "(";
    for (unsigned i = 0; i < vector.size(); ++i) result += (i ? ", " : "") + show(vector[i]);
    return result + ")";
}

std::string show(const Variant& value) {
    switch (value.type()) {
        case TypeBool:
            return value.getBool() ? "true" : "false";
        case TypeInt:
            return std::to_string(value.getInt());
        case TypeUInt:
            return std::to_string(value.getUInt());
        case TypeReal:
            return number(value.getReal());
        case TypeString:
            return quoted(toUtf8(value.getString()));
        case TypeEntity:
            return "#" + std::to_string(value.getEntity().ifcId());
        case TypeLogical: {
            const Logical logical = value.getLogical();
            return logical.isUnknown() ? "unknown" : logical ? "true" : "false";
        }
        case TypeBinary:
            return "\"" + std::string(value.getBinary().getEncodedString()) + "\"";
        case TypeGuid:
            return quoted(value.getGuid().getBase64());
        case TypeEnum:
            return literal(value.getEnum());
        case TypeSelect:
            return show(value.getSelect());
        case TypeVector:
            return show(value.getVector());
        case TypeNone:
            break;
    }
    return "none";
}

}  // namespace

void showEntity(std::ostream& out, const Entity& entity) {
    const std::vector<const char*> names = entity.attributeNames();
    std::size_t width = 0;
    for (const char* name : names) width = std::max(width, std::strlen(name));
    out << '#' << entity.ifcId() << ' ' << entity.className() << '\n';
    for (const char* name : names) {
        Variant value;
        const bool isSet = entity.getAttribute(name, value) == ResultOk;
        out << "  " << name << std::string(width + 2 - std::strlen(name), ' ')
            << (isSet ? show(value) : "unset") << '\n';
    }
}

}  // namespace tools
