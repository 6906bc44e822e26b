// What the programs share: loading and writing model files, with an error message when it fails,
// and the overview of a model.
#pragma once

#include <filesystem>
#include <iosfwd>

#include "common/faults.h"
#include "ovik/ovik.h"

namespace tools {

/// The options of `loadModel`.
struct LoadSettings {
    Ovik::ErrLog* log = nullptr;
    Ovik::ProgressMeter* meter = nullptr;
    bool plain = false;   ///< the plain road; else the exact one
    bool strict = false;  ///< on the plain road
};

/// The model in `file` and, in `header`, its header; null after an error message. What of the file
/// is not kept has one line on standard error. `report` is filled unless it is null.
Ovik::IfcModelPtr loadModel(const std::filesystem::path& file, Ovik::IfcHeader& header,
                            const LoadSettings& settings = {},
                            Ovik::IfcLoadReport* report = nullptr);

/// Reads the items of `file`, for a comparison; `log` may be null. False after an error message.
bool readItems(const std::filesystem::path& file, Ovik::IfcParsedStream& items, Ovik::ErrLog* log,
               bool exact);

/// Writes `model` to `file` as `IfcModel::write` does. False after an error message.
bool writeModel(const Ovik::IfcModel& model, const Ovik::IfcHeader& header,
                const std::filesystem::path& file);

/// Writes `model` to `file` as `IfcModel::save` does. False after an error message.
bool saveModel(const Ovik::IfcModel& model, const Ovik::IfcHeader& header,
               const std::filesystem::path& file, const Ovik::IfcSaveOptions& options = {});

/// Writes `text` as it stands to `file`. False after an error message.
bool writeText(const std::string& text, const std::filesystem::path& file);

/// The overview of a model: schema, header, number of entities, classes by count. UTF-8.
void printInfo(std::ostream& out, const Ovik::IfcModel& model, const Ovik::IfcHeader& header);

}  // namespace tools
