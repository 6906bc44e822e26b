// change_names IN OUT TEXT: puts TEXT before the name of everything that has one, through the
// facade alone, so that no class of a schema is compiled.
#include <filesystem>
#include <iostream>

#include "ovik/api.h"
#include "ovik/api/ifc4.h"

namespace api = Ovik::IfcApi;

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: change_names IN OUT TEXT\n";
        return 2;
    }
    api::initOvikApi();
    api::Header header;
    api::Model* model = api::Model::read(std::filesystem::path(argv[1]), &header);
    if (model->isNull()) {
        std::cerr << argv[1] << ": no model of IFC2X3 or IFC4\n";
        model->release();
        return 1;
    }
    std::size_t count = 0;
    for (std::size_t i = 0; i < model->getNumEntities(); ++i) {
        api::Entity entity = model->get(i);
        api::Variant name;
        // An attribute is found by its text, and this one is spelt the same in both schemas. The
        // name of a unit is an enumeration, and stays.
        if (entity.getAttribute(api::Ifc4::Name, name) != api::ResultOk ||
            name.type() != api::TypeString)
            continue;
        const api::String changed = api::fromUtf8(argv[3] + api::toUtf8(name.getString()));
        if (entity.setAttribute(api::Ifc4::Name, changed) == api::ResultOk) ++count;
    }
    const bool isWritten = model->write(std::filesystem::path(argv[2]), header);
    model->release();
    if (!isWritten) {
        std::cerr << argv[2] << ": can't be written\n";
        return 1;
    }
    std::cout << count << " names changed\n";
}
