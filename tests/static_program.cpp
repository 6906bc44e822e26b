// A program that is linked to the archive of the library and names no class of a schema. The
// classes register themselves as the program starts, which an archive loses easily.
#include <iostream>
#include <sstream>
#include <string>

#include "ovik/ovik.h"
#include "tests/files.h"

namespace {

/// From all over the alphabet, so that no part of a schema can be missing.
constexpr const char* kClasses[] = {"IFCBEAM", "IFCCOLUMN", "IFCDOOR",          "IFCFACE",
                                    "IFCGRID", "IFCPERSON", "IFCRELAGGREGATES", "IFCPOLYLOOP",
                                    "IFCSITE", "IFCWALL"};

/// Whether good records of the schema are read, and no class is unknown.
bool knows(const std::string& schema) {
    std::string records = "#1=IFCCARTESIANPOINT((1.,2.));\n#2=IFCVERTEXPOINT(#1);\n";
    int number = 10;
    for (const char* name : kClasses)
        records += "#" + std::to_string(number++) + "=" + name + "();\n";
    const OvikTest::TempFile file(OvikTest::fileOf(records, schema)), logFile;

    std::ostringstream messages;
    {
        Ovik::ErrLog log(logFile.path);
        const Ovik::IfcModelPtr model(Ovik::IfcModel::read(file.path, &log));
        if (!model) return false;
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i)
            messages << model->get(i)->isA()->className() << '\n';
    }
    const std::string all = messages.str() + logFile.text();
    return all.find("IFCCARTESIANPOINT\nIFCVERTEXPOINT\n") == 0 &&
           all.find("Failed to read object #10 of class IFCBEAM") != std::string::npos &&
           all.find("invalid class name") == std::string::npos;
}

}  // namespace

int main() {
    int status = 0;
    for (const char* schema : {"IFC2X3", "IFC4"}) {
        if (knows(schema)) continue;
        std::cerr << "classes of " << schema << " are missing\n";
        status = 1;
    }
    return status;
}
