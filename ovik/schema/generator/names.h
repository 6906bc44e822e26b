// How C++ names are formed from schema names.
#pragma once

#include <string>

#include "schema.h"

namespace Ovik::Generator {

std::string lowerCase(const std::string& name);

/// "Ifc4" for "IFC4".
std::string capitalized(const std::string& name);

/// "IFCWALL", the name in a file.
std::string recordName(const std::string& name);

/// `globalId_` for `GlobalId`.
std::string fieldName(const std::string& name);

/// The C++ type of a field of this type.
std::string fieldType(const Type& type);

/// True if accessors pass a value of this type itself: numbers and booleans.
bool isByValue(const Type& type);

/// The type that a getter of a constant object returns: `double`, `const XString&`, `const IfcX*`.
std::string constType(const Type& type);

/// The type that a getter of a changeable object returns.
std::string mutableType(const Type& type);

/// The type that a setter takes.
std::string argumentType(const Type& type);

/// `IFC4Imp::schemaNameHash`, the name hash of the schema.
std::string hashName(const Schema& schema);

/// The name of the generated class behind a type that is not plain.
const std::string& className(const Type& type);

inline const char* boolean(bool value) {
    return value ? "true" : "false";
}

}  // namespace Ovik::Generator
