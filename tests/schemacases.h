// The two schemas as arguments of a test, with the facts that their tables tell. The tables are
// what the classes are made from: what is built from them and not by the library takes another road
// to the same end.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "ovik/imp/rtclass.h"
#include "ovik/imp/schemaid.h"
#include "ovik/schema/generator/schema.h"
#include "tests/files.h"

namespace Ovik::Test {

struct SchemaCase {
    EIfcSchemaId id;
    const char* folder;
    std::size_t numConcrete, numSelects, numAggregates;
    std::size_t numTexts;  ///< string constants of the facade
};

inline constexpr SchemaCase kSchemaCases[] = {{eIFC2X3, "ifc2x3", 553, 45, 96, 2069},
                                              {eIFC4, "ifc4", 653, 58, 128, 2127}};

inline std::ostream& operator<<(std::ostream& out, const SchemaCase& schema) {
    return out << schema.folder;
}

inline std::string folderOf(const testing::TestParamInfo<SchemaCase>& instance) {
    return instance.param.folder;
}

/// Tests that run once for each schema.
class SchemaTest : public testing::TestWithParam<SchemaCase> {
 protected:
    /// The registered class of that name in any case, or null.
    static const RtClass* findClass(const std::string& name) {
        struct Lookup : RtClass {
            using RtClass::findCreator;
        };
        return Lookup::findCreator(name.c_str(), GetParam().id);
    }

    const std::string folder_ = GetParam().folder;
    const std::unique_ptr<Generator::Schema> schema_ = Generator::Schema::read(
        OVIK_SOURCE_DIR "/ovik/schema/" + folder_ + "/" + folder_ + ".schema");
};

}  // namespace Ovik::Test
