// Look-ups in the table of schemas.
#include "ovik/imp/schematable.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace Ovik {
namespace {

std::vector<const SchemaRow*>& rows() {
    static std::vector<const SchemaRow*> all(librarySchemas.begin(), librarySchemas.end());
    return all;
}

}  // namespace

std::span<const SchemaRow* const> schemaTable() {
    return rows();
}

const SchemaRow* findSchema(EIfcSchemaId id) {
    const auto found = std::ranges::find(rows(), id, &SchemaRow::id);
    return found == rows().end() ? nullptr : *found;
}

bool addSchema(const SchemaRow& row) {
    const bool isTaken = std::ranges::any_of(rows(), [&](const SchemaRow* other) {
        return other->id == row.id || std::u16string_view(other->name) == row.name;
    });
    if (!isTaken) rows().push_back(&row);
    return !isTaken;
}

const char16_t* schemaName(EIfcSchemaId id) {
    const SchemaRow* const row = findSchema(id);
    return row ? row->name : nullptr;
}

}  // namespace Ovik
