// How C++ names are formed from schema names.
#include "names.h"

#include <cctype>

namespace Ovik::Generator {

std::string recordName(const std::string& name) {
    std::string result = name;
    for (char& c : result) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return result;
}

std::string fieldName(const std::string& name) {
    std::string result = name + "_";
    result[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(result[0])));
    return result;
}

std::string flagName(const std::string& name) {
    return "has" + name + "_";
}

const std::string& className(const Type& type) {
    if (type.entity) return type.entity->name;
    if (type.enumeration) return type.enumeration->name;
    if (type.select) return type.select->name;
    return type.aggregate->name;
}

std::string fieldType(const Type& type) {
    if (type.entity) return "EntityId";
    if (!type.isPlain()) return className(type);
    switch (type.plain) {
        case Plain::Real:
            return "double";
        case Plain::Integer:
            return "int";
        case Plain::Unsigned:
            return "unsigned";
        case Plain::Boolean:
            return "bool";
        case Plain::Logical:
            return "Logical";
        case Plain::String:
            return "XString";
        case Plain::Binary:
            return "XBinary";
        case Plain::Guid:
            return "Base64Guid";
    }
    return {};
}

bool isByValue(const Type& type) {
    return type.isPlain() && (type.plain == Plain::Real || type.plain == Plain::Integer ||
                              type.plain == Plain::Unsigned || type.plain == Plain::Boolean);
}

std::string constType(const Type& type) {
    if (type.entity) return "const " + type.entity->name + "*";
    return isByValue(type) ? fieldType(type) : "const " + fieldType(type) + "&";
}

std::string mutableType(const Type& type) {
    if (type.entity) return type.entity->name + "*";
    return isByValue(type) ? fieldType(type) : fieldType(type) + "&";
}

std::string argumentType(const Type& type) {
    return type.entity ? mutableType(type) : constType(type);
}

}  // namespace Ovik::Generator
