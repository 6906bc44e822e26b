// What all generated files share.
#include "output.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "names.h"
#include "ovik/schema/ifc2x3/namehash.h"
#include "ovik/schema/ifc4/namehash.h"

namespace Ovik::Generator {

std::string banner(const Schema& schema) {
    return "// Made by ovik-schema-generator from " + lowerCase(schema.name) +
           ".schema: do not edit.\n";
}

unsigned nameHash(const Schema& schema, const std::string& name) {
    return schema.name == "IFC4" ? IFC4Imp::schemaNameHash(name) : IFC2X3Imp::schemaNameHash(name);
}

void writeIfChanged(const std::filesystem::path& path, const std::string& text) {
    {
        std::ifstream old(path, std::ios::binary);
        std::ostringstream content;
        content << old.rdbuf();
        if (old && content.str() == text) return;
    }
    std::ofstream out(path, std::ios::binary);
    out << text;
    if (!out) throw std::runtime_error("can't write " + path.string());
}

}  // namespace Ovik::Generator
