// The table of schemas: a row for each, with all that the library has to know of it. Who works with
// a schema whose identifier or name is only known at run time asks here. Internal.
#pragma once

#include <span>

#include "ovik/imp/schemaid.h"

namespace Ovik {

class IfcModel;
class RtClass;
namespace IfcApi {
struct DescTables;
}
namespace Schema {
class NameHash;
}

struct SchemaRow {
    EIfcSchemaId id;
    const char16_t* name;  ///< as it stands in `FILE_SCHEMA`, in capitals
    /// An empty model with one reference for the caller.
    IfcModel* (*createModel)(bool makeGuids, bool useTestGuid);
    std::span<const RtClass* const> classes;  ///< that can be instantiated, sorted by name
    const Schema::NameHash* hash;
    const IfcApi::DescTables* facade;
};

/// The schemas of the library. A constant, as are the rows themselves: they are there for whichever
/// initialiser of a program asks first. Defined above this room, where the schemas are known.
extern const std::span<const SchemaRow* const> librarySchemas;

/// The schemas of the library, then those that were added.
std::span<const SchemaRow* const> schemaTable();

/// The row of a schema, or null.
const SchemaRow* findSchema(EIfcSchemaId id);

/// Adds a schema that is not the library's, for the life of the process; before the first model and
/// in one thread. `row` is kept by address. False, changing nothing, if its identifier or its name
/// is taken.
bool addSchema(const SchemaRow& row);

}  // namespace Ovik
