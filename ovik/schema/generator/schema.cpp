// What follows from a schema table.
#include "schema.h"

#include <algorithm>

#include "ovik/schema/ifc2x3/namehash.h"
#include "ovik/schema/ifc4/namehash.h"

namespace Ovik::Generator {

std::size_t Enumeration::defaultTag() const {
    const auto found = std::find(literals.begin(), literals.end(), "NOTDEFINED");
    return found == literals.end() ? 0 : static_cast<std::size_t>(found - literals.begin());
}

bool Select::hasEntities() const {
    return std::any_of(choices.begin(), choices.end(), [](auto& c) { return c.type.entity; });
}

bool Select::isWide() const {
    constexpr int kMostSideBySide = 2;
    return std::ranges::count_if(choices, [](const Choice& c) { return !c.type.entity; }) >
           kMostSideBySide;
}

int Select::numEntityChoices() const {
    int count = 0;
    for (const Choice& choice : choices) {
        if (choice.type.entity) ++count;
        if (choice.type.select) count += choice.type.select->numEntityChoices();
    }
    return count;
}

bool Aggregate::canRefer() const {
    return element.entity || (element.select && element.select->numEntityChoices() > 0);
}

const std::string& Entity::identifier() const {
    return ownIdentifier.empty() && parent ? parent->identifier() : ownIdentifier;
}

unsigned Schema::hash(const std::string& text) const {
    return name == "IFC4" ? IFC4Imp::schemaNameHash(text) : IFC2X3Imp::schemaNameHash(text);
}

}  // namespace Ovik::Generator
