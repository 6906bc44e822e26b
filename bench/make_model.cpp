// Writes a synthetic model: make_model OUT MEGABYTES [IFC2X3|IFC4]
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string_view>

#include "bench/synthetic.h"

int main(int argc, char** argv) {
    const double megabytes = argc > 2 ? std::atof(argv[2]) : 0;
    const std::string_view schema = argc > 3 ? argv[3] : "IFC4";
    if (argc < 3 || argc > 4 || !(megabytes > 0) || (schema != "IFC2X3" && schema != "IFC4")) {
        std::cerr << "usage: make_model OUT MEGABYTES [IFC2X3|IFC4]\n";
        return 2;
    }
    const Ovik::IfcModelPtr model = bench::makeModel(schema == "IFC4" ? Ovik::eIFC4 : Ovik::eIFC2X3,
                                                     static_cast<std::uint64_t>(megabytes * 1e6));
    const bool written = model->write(std::filesystem::path(argv[1]), Ovik::IfcHeader());
    if (!written) std::cerr << "make_model: " << argv[1] << ": can't be written\n";
    return written ? 0 : 1;
}
