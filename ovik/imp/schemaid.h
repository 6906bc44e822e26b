// The schemas of the library and their names.
#pragma once

#include "ovik/base/export.h"

namespace Ovik {

/// The schema of a model.
enum EIfcSchemaId : int {
    eIFC2X3 = 0,
    eIFC4 = 1,
};

/// "IFC2X3" or "IFC4", as it stands in `FILE_SCHEMA`; null for an identifier that is none.
OVIK_API const char16_t* schemaName(EIfcSchemaId id);

}  // namespace Ovik
