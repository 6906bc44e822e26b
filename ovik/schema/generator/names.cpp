// How C++ names are formed from schema names.
#include "names.h"

#include <cctype>

#include "plaintypes.h"

namespace Ovik::Generator {

std::string lowerCase(const std::string& name) {
    std::string result = name;
    for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

std::string capitalized(const std::string& name) {
    return recordName(name.substr(0, 1)) + lowerCase(name.substr(1));
}

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

const std::string& className(const Type& type) {
    if (type.entity) return type.entity->name;
    if (type.enumeration) return type.enumeration->name;
    if (type.select) return type.select->name;
    return type.aggregate->name;
}

std::string fieldType(const Type& type) {
    if (type.entity) return "EntityId";
    return std::string(type.isPlain() ? plainType(type.plain).cpp : className(type));
}

bool isByValue(const Type& type) {
    return type.isPlain() && plainType(type.plain).byValue();
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

std::string hashName(const Schema& schema) {
    return schema.name + "Imp::schemaNameHash";
}

}  // namespace Ovik::Generator
