// Saying why something went wrong with a file, and what of it was not kept.
#include "common/faults.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

#include "common/plaintext.h"

namespace tools {
namespace fs = std::filesystem;
namespace {

std::string counted(std::uint64_t count, const std::string& noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

}  // namespace

void complain(const fs::path& file, const std::string& cause) {
    std::cerr << "ovik: " << plainText(file.string()) << ": " << cause << '\n';
}

std::string whyNoModel(const Ovik::IfcLoadReport& report) {
    using NoModel = Ovik::IfcLoadReport::NoModel;
    switch (report.noModel) {
        case NoModel::UnknownSchema:
            return "its schema is not IFC2X3 or IFC4, but " + plainText(report.schema);
        case NoModel::BrokenStream:
            return "can't be read to its end";
        case NoModel::CannotOpen:
            return "can't be opened";
        case NoModel::BrokenHeader:
        case NoModel::None:
            break;
    }
    std::string text = "is not a STEP physical file, or its header is broken";
    if (report.headerLine > 0)
        text += " at line " + std::to_string(report.headerLine) + ", column " +
                std::to_string(report.headerColumn);
    return text;
}

std::string whatIsLost(const Ovik::IfcLoadReport& report) {
    std::string text;
    if (const std::uint64_t records = report.numRecordsLost(); records > 0)
        text = std::to_string(records) + " of " + counted(report.recordsSeen, "record");
    if (const std::uint64_t values = report.numValuesNotKept() + report.substitutions; values > 0)
        text += (text.empty() ? "" : " and ") + counted(values, "value");
    if (!text.empty()) text += " not kept";
    if (!report.endsProperly)
        text +=
            std::string(text.empty() ? "" : ", and it ") + "does not end with END-ISO-10303-21;";
    return text;
}

void tellLosses(const fs::path& file, const Ovik::IfcLoadReport& report, bool hasLog) {
    const std::string lost = whatIsLost(report);
    if (!lost.empty()) complain(file, lost + (hasLog ? "" : "; --log FILE tells why"));
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
