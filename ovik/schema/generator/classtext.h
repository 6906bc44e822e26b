// What is written for one class of a schema.
#pragma once

#include <set>
#include <string>

#include "schema.h"

namespace Ovik::Generator {

using NameSet = std::set<std::string>;

struct ClassText {
    NameSet declarationHeaders;  ///< what the class's own header includes
    std::string declaration;
    NameSet definitionHeaders;  ///< what the source includes, the class's own header left out
    std::string definition;     ///< tables and operations
};

ClassText classText(const Schema& schema, const Enumeration& enumeration);
ClassText classText(const Schema& schema, const Select& select);
ClassText classText(const Schema& schema, const Aggregate& aggregate);
ClassText classText(const Schema& schema, const Entity& entity);

/// `ovik/ifc4/IfcWall.h`.
std::string headerOf(const Schema& schema, const std::string& cls);

/// The lines that include these headers.
std::string includes(const NameSet& headers);

}  // namespace Ovik::Generator
