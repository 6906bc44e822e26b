// Error messages of the programs: what is wrong with a file.
#include "common/faults.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

namespace tools {
namespace fs = std::filesystem;

void complain(const fs::path& file, const std::string& cause) {
    std::cerr << "ovik: " << file.string() << ": " << cause << '\n';
}

std::string whyNoModel(const Ovik::IfcLoadReport& report) {
    using NoModel = Ovik::IfcLoadReport::NoModel;
    switch (report.noModel) {
        case NoModel::None:
            break;
        case NoModel::CannotOpen:
            return "can't be opened";
        case NoModel::BrokenHeader:
            return "is not a STEP physical file, or its header is broken";
        case NoModel::UnknownSchema:
            return "its schema is not IFC2X3 or IFC4";
        case NoModel::BrokenStream:
            return "can't be read to its end";
    }
    return {};
}

std::string whyUnreadable(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (error && status.type() != fs::file_type::not_found) return error.message();
    if (fs::is_directory(status)) return "is a directory";
    // Opening a pipe to look at it would take it from the reader to come.
    if (fs::exists(status) && !fs::is_regular_file(status)) return {};
    errno = 0;
    const std::ifstream stream(file);
    return stream ? std::string() : std::strerror(errno);
}

}  // namespace tools
