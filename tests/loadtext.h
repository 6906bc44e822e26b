// What the tests of the schema classes share: a file of either schema from its records, and the
// data section that a model writes.
#pragma once

#include <string>
#include <string_view>

#include "testclasses.h"

namespace Ovik::Test {

/// A whole file of `schema` with these records.
inline std::string fileOf(EIfcSchemaId schema, std::string_view records) {
    std::string text = fileOf(records);
    if (schema == eIFC2X3) text.replace(text.find("'IFC4'"), 6, "'IFC2X3'");
    return text;
}

inline Loaded loadRecords(const Files& files, EIfcSchemaId schema, std::string_view records,
                          IfcReadOptions options = {}) {
    return load(files, fileOf(schema, records), options);
}

/// The entity with instance number `id`, as a `T`; null if the model has it not.
template <class T>
T* find(const Loaded& loaded, int id) {
    for (std::uint64_t i = 0; i < loaded.model->getNumEntities(); ++i) {
        if (loaded.model->get(i)->ifcId() == id) return T::cast(loaded.model->get(i));
    }
    return nullptr;
}

/// The records that the model writes, one to a line.
inline std::string recordsOf(const Files& files, const IfcModel& model) {
    EXPECT_TRUE(model.write(files.path("out.ifc"), IfcHeader()));
    const std::string text = files.text("out.ifc");
    const std::string_view begin = "\nDATA;\n", end = "ENDSEC;\nEND-ISO-10303-21;\n";
    const std::size_t from = text.find(begin) + begin.size();
    return text.substr(from, text.size() - end.size() - from);
}

}  // namespace Ovik::Test
