// What follows from a schema table.
#include "schema.h"

#include <algorithm>

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

}  // namespace Ovik::Generator
