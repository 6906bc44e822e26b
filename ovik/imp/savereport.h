// How a model is saved, and what became of it, as data for programs.
#pragma once

#include <cstdint>
#include <string>

#include "ovik/base/export.h"

namespace Ovik {

/// How `IfcModel::save` writes a file.
struct IfcSaveOptions {
    /// What came from a file keeps its instance number. The others get the numbers above the
    /// highest of these: in the order of the model what was made by the program and what has a
    /// number that is not positive or is that of an entity before it; then what is referred to
    /// and isn't in the model, in the order in which it is met. If false, all are numbered anew
    /// from 1, depth first, as `write` does it.
    bool keepNumbers = true;
};

/// Filled by `IfcModel::save` for who asks, all of it at each call. A plain value. The texts are
/// UTF-8.
struct OVIK_API IfcSaveReport {
    /// Why nothing was saved.
    enum class Failure {
        None,      ///< it was
        NoNumber,  ///< a real is infinite or not a number: see `number`, `className`
        Numbers,   ///< no number is left above the highest, which `keepNumbers` asks for
        Output,    ///< the file can't be written: the error code tells why
    };
    Failure failure = Failure::None;

    // Where the first refused real stands.
    std::uint32_t number = 0;  ///< the instance number in the new file
    std::string className;     ///< in capitals
    std::string attribute;     ///< as in the schema; empty if a class from outside names none

    // What was saved, all 0 after a failure.
    std::uint64_t records = 0;
    std::uint64_t renumbered =
        0;                    ///< records of entities whose `ifcId` is another number, and not 0
    std::uint64_t bytes = 0;  ///< of the whole file
};

}  // namespace Ovik
