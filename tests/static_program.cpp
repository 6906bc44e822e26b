// A program that is linked to the archive of the library and names no class of a schema. The
// classes register themselves as the program starts, which an archive loses easily.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "ovik/ovik.h"

namespace {

namespace fs = std::filesystem;

/// From all over the alphabet, so that no part of a schema can be missing.
constexpr const char* kClasses[] = {"IFCBEAM", "IFCCOLUMN", "IFCDOOR",          "IFCFACE",
                                    "IFCGRID", "IFCPERSON", "IFCRELAGGREGATES", "IFCPOLYLOOP",
                                    "IFCSITE", "IFCWALL"};

/// Whether good records of the schema are read, and no class is unknown.
bool knows(const std::string& schema, const fs::path& folder) {
    const fs::path file = folder / (schema + ".ifc");
    std::ofstream text(file);
    text << "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
            "FILE_NAME('','',(''),(''),'','','');\nFILE_SCHEMA(('"
         << schema
         << "'));\nENDSEC;\nDATA;\n#1=IFCCARTESIANPOINT((1.,2.));\n#2=IFCVERTEXPOINT(#1);\n";
    int number = 10;
    for (const char* name : kClasses) text << '#' << number++ << '=' << name << "();\n";
    text << "ENDSEC;\nEND-ISO-10303-21;\n";
    text.close();

    std::ostringstream messages;
    {
        Ovik::ErrLog log(folder / "log.txt");
        Ovik::IfcModel* model = Ovik::IfcModel::read(file, &log);
        if (!model) return false;
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i)
            messages << model->get(i)->isA()->className() << '\n';
        model->release();
    }
    messages << std::ifstream(folder / "log.txt").rdbuf();
    const std::string all = messages.str();
    return all.find("IFCCARTESIANPOINT\nIFCVERTEXPOINT\n") == 0 &&
           all.find("Failed to read object #10 of class IFCBEAM") != std::string::npos &&
           all.find("invalid class name") == std::string::npos;
}

}  // namespace

int main() {
    const fs::path folder = fs::temp_directory_path() / ("ovik-static-" + std::to_string(getpid()));
    fs::create_directories(folder);
    int status = 0;
    for (const char* schema : {"IFC2X3", "IFC4"}) {
        if (knows(schema, folder)) continue;
        std::cerr << "classes of " << schema << " are missing\n";
        status = 1;
    }
    fs::remove_all(folder);
    return status;
}
