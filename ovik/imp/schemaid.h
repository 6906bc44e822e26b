// The two schemas and their names.
#pragma once

#include "ovik/base/export.h"

namespace Ovik {

/// The schema of a model.
enum EIfcSchemaId : int {
    eIFC2X3 = 0,
    eIFC4 = 1,
};

/// Number of schemas; the values of `EIfcSchemaId` run below it.
inline constexpr int kNumSchemas = 2;

/// "IFC2X3" or "IFC4", as it stands in `FILE_SCHEMA`. The argument is not checked.
OVIK_API const char16_t* schemaName(EIfcSchemaId id);

}  // namespace Ovik
