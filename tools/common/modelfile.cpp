// Loading, writing and describing model files for the programs.
#include "common/modelfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <string_view>
#include <vector>

#include "common/plaintext.h"

namespace tools {
namespace fs = std::filesystem;
namespace {

/// True unless the end of a written file is missing, as on a full disk.
bool isComplete(const fs::path& file) {
    constexpr std::string_view kEnd = "END-ISO-10303-21;";
    constexpr int kTail = 32;
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return true;
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(-kTail, std::ios::end);
    std::string tail(kTail, '\0');
    stream.read(tail.data(), kTail);
    return tail.find(kEnd) != std::string::npos;
}

}  // namespace

Ovik::IfcModelPtr loadModel(const fs::path& file, Ovik::IfcHeader& header,
                            const LoadSettings& settings, Ovik::IfcLoadReport* report) {
    if (const std::string cause = whyUnreadable(file); !cause.empty()) {
        complain(file, cause);
        return nullptr;
    }
    Ovik::IfcReadOptions options;
    options.exact = !settings.plain;
    options.lenient = !settings.strict;
    Ovik::IfcLoadReport own;
    if (!report) report = &own;
    Ovik::IfcModelPtr model(
        Ovik::IfcModel::read(file, settings.log, settings.meter, &options, &header, report));
    if (model) {
        tellLosses(file, *report, settings.log != nullptr);
    } else {
        complain(file, whyNoModel(*report));
    }
    return model;
}

bool readItems(const fs::path& file, Ovik::IfcParsedStream& items, Ovik::ErrLog* log,
               bool exact) {
    std::string cause = whyUnreadable(file);
    try {
        if (cause.empty() && !items.read(file, log, nullptr, exact))
            cause = "is not a valid STEP physical file";
    } catch (const std::string& text) {
        cause = text;
    }
    if (!cause.empty()) complain(file, cause);
    return cause.empty();
}

bool writeModel(const Ovik::IfcModel& model, const Ovik::IfcHeader& header, const fs::path& file) {
    errno = 0;
    if (!model.write(file, header)) {
        complain(file, errno ? std::strerror(errno) : "can't be written");
        return false;
    }
    if (!isComplete(file)) {
        complain(file, "can't be written completely");
        return false;
    }
    return true;
}

bool saveModel(const Ovik::IfcModel& model, const Ovik::IfcHeader& header, const fs::path& file,
               const Ovik::IfcSaveOptions& options) {
    Ovik::IfcSaveReport report;
    const std::error_code error = model.save(file, header, &options, nullptr, &report);
    if (!error) return true;
    if (report.failure == Ovik::IfcSaveReport::Failure::NoNumber) {
        complain(file, "not written: a real of #" + std::to_string(report.number) + ' ' +
                           report.className + '.' + report.attribute + " is no finite number");
    } else {
        complain(file, error.message());
    }
    return false;
}

bool writeText(const std::string& text, const fs::path& file) {
    errno = 0;
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) complain(file, errno ? std::strerror(errno) : "can't be written");
    return !stream.fail();
}

void printInfo(std::ostream& out, const Ovik::IfcModel& model, const Ovik::IfcHeader& header) {
    const auto line = [&out](const char* label, const Ovik::XString& value) {
        out << std::left << std::setw(22) << label << plainText(Ovik::toUtf8(value)) << '\n';
    };
    line("Schema", Ovik::XString(Ovik::schemaName(model.schemaId())));
    line("Description", header.fileDescription());
    line("Implementation level", header.implementationLevel());
    line("Name", header.fileName());
    line("Time stamp", header.timeStamp());
    line("Author", header.author());
    line("Organization", header.organization());
    line("Preprocessor version", header.preprocessorVersion());
    line("Originating system", header.originatingSystem());
    line("Authorization", header.authorization());
    line("File schema", header.fileSchema());

    std::map<std::string_view, std::uint64_t> counts;
    const std::uint64_t numEntities = model.getNumEntities();
    for (std::uint64_t i = 0; i < numEntities; ++i) ++counts[model.get(i)->isA()->className()];
    std::vector<std::pair<std::string_view, std::uint64_t>> classes(counts.begin(), counts.end());
    std::stable_sort(classes.begin(), classes.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });

    out << std::setw(22) << "Entities" << numEntities << '\n';
    for (const auto& [name, count] : classes)
        out << std::right << std::setw(10) << count << "  " << name << '\n';
    out << std::left;
}

}  // namespace tools
