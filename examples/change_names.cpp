// change_names IN OUT TEXT: puts TEXT before the name of everything that has one, through the
// facade alone, so that no class of a schema is compiled.
#include <filesystem>
#include <iostream>

#include "ovik/api.h"
#include "ovik/api/ifc4.h"

using namespace Ovik::IfcApi;

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: change_names IN OUT TEXT\n";
        return 2;
    }
    initOvikApi();
    Header header;
    Model* model = Model::read(std::filesystem::path(argv[1]), &header);
    if (model->isNull()) {
        std::cerr << argv[1] << ": no model of IFC2X3 or IFC4\n";
        model->release();
        return 1;
    }
    std::size_t count = 0;
    for (std::size_t i = 0; i < model->getNumEntities(); ++i) {
        Entity entity = model->get(i);
        Variant name;
        // An attribute is found by its text, and this one is spelt the same in both schemas. The
        // name of a unit is an enumeration, and stays.
        if (entity.getAttribute(Ifc4::Name, name) != ResultOk || name.type() != TypeString)
            continue;
        const String changed = fromUtf8(argv[3] + toUtf8(name.getString()));
        if (entity.setAttribute(Ifc4::Name, changed) == ResultOk) ++count;
    }
    const bool isWritten = model->write(std::filesystem::path(argv[2]), header);
    model->release();
    if (!isWritten) {
        std::cerr << argv[2] << ": can't be written\n";
        return 1;
    }
    std::cout << count << " names changed\n";
}
