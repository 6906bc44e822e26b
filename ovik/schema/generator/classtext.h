// What is written for one class of a schema.
#pragma once

#include <set>
#include <string>

#include "schema.h"

namespace Ovik::Generator {

using NameSet = std::set<std::string>;

struct ClassText {
    std::string includes;       ///< of its header
    std::string declaration;    ///< the text of its header
    std::string definition;     ///< its tables and operations
    NameSet definitionHeaders;  ///< classes whose headers the definition needs
};

ClassText classText(const Schema& schema, const Enumeration& enumeration);
ClassText classText(const Schema& schema, const Select& select);
ClassText classText(const Schema& schema, const Aggregate& aggregate);
ClassText classText(const Schema& schema, const Entity& entity);

/// The lines that include the headers of these classes.
std::string includes(const Schema& schema, const NameSet& names);

}  // namespace Ovik::Generator
