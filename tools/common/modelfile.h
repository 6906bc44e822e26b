// What the programs share: model files loaded and written with an answer a person can use when it
// goes wrong, and the overview of a model.
#pragma once

#include <filesystem>
#include <iosfwd>

#include "common/faults.h"
#include "ovik/ovik.h"

namespace tools {

/// What `loadModel` is told beside the path. All may be left out.
struct LoadSettings {
    Ovik::ErrLog* log = nullptr;
    Ovik::ProgressMeter* meter = nullptr;
    bool strict = false;
};

/// The model in `file` and, in `header`, its header; null after a complaint.
Ovik::IfcModelPtr loadModel(const std::filesystem::path& file, Ovik::IfcHeader& header,
                            const LoadSettings& settings = {});

/// Reads the items of `file`, for a comparison; `log` may be null. False after a complaint.
bool readItems(const std::filesystem::path& file, Ovik::IfcParsedStream& items, Ovik::ErrLog* log);

/// Writes `model` to `file`. False after a complaint.
bool writeModel(const Ovik::IfcModel& model, const Ovik::IfcHeader& header,
                const std::filesystem::path& file);

/// Writes `text` as it stands to `file`. False after a complaint.
bool writeText(const std::string& text, const std::filesystem::path& file);

/// The overview of a model: schema, header, number of entities, classes by count. UTF-8.
void printInfo(std::ostream& out, const Ovik::IfcModel& model, const Ovik::IfcHeader& header);

}  // namespace tools
