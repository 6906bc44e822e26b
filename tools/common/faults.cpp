// Error messages of the programs: what is wrong with a file.
#include "common/faults.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

#include "ovik/parser.h"

namespace tools {
namespace fs = std::filesystem;
namespace {

/// Refuses every schema, so that a parse ends with the header.
class HeaderProbe : public Ovik::IfcParser::Output {
 public:
    bool setHeader(Ovik::IfcParser::ParsedHeader*&) override { return false; }
    void addData(int, Ovik::IfcParser::PooledName*, Ovik::IfcParser::ItemList*, double) override {}
    void endOfFile() override {}
};

}  // namespace

void complain(const fs::path& file, const std::string& cause) {
    std::cerr << "ovik: " << file.string() << ": " << cause << '\n';
}

// A load tells its reasons to a log only, so the header is parsed once more, if it can be: what
// came through a pipe is gone.
std::string whyNoModel(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return "is not a STEP physical file of IFC2X3 or IFC4, or its header is broken";
    std::ifstream stream(file);
    HeaderProbe probe;
    return Ovik::IfcParser::parseStream(stream, nullptr, &probe)
               ? "is not a STEP physical file, or its header is broken"
               : "its schema is not IFC2X3 or IFC4";
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
