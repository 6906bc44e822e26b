// A program that is linked to the archive of the library and names no class of a schema. The classes
// register themselves as the program starts, which an archive loses easily.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "ovik/ovik.h"

namespace {

namespace fs = std::filesystem;

/// Whether a file of the schema is read whole, class by class.
bool reads(const std::string& schema, const fs::path& file) {
    std::ofstream(file) << "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
                           "FILE_NAME('','',(''),(''),'','','');\nFILE_SCHEMA(('"
                        << schema
                        << "'));\nENDSEC;\nDATA;\n#1=IFCCARTESIANPOINT((1.,2.));\n"
                           "#2=IFCVERTEXPOINT(#1);\nENDSEC;\nEND-ISO-10303-21;\n";
    Ovik::IfcModel* model = Ovik::IfcModel::read(file);
    if (!model) return false;
    const bool isWhole = model->getNumEntities() == 2 &&
                         std::string(model->get(0)->isA()->className()) == "IFCCARTESIANPOINT" &&
                         std::string(model->get(1)->isA()->className()) == "IFCVERTEXPOINT";
    model->release();
    return isWhole;
}

}  // namespace

int main() {
    const fs::path file =
        fs::temp_directory_path() / ("ovik-static-" + std::to_string(getpid()) + ".ifc");
    int status = 0;
    for (const char* schema : {"IFC2X3", "IFC4"}) {
        if (reads(schema, file)) continue;
        std::cerr << "a file of " << schema << " did not come back whole\n";
        status = 1;
    }
    fs::remove(file);
    return status;
}
