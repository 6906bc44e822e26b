// How a file is loaded.
#pragma once

namespace Ovik {

/// How `IfcModel::read` takes a file.
struct IfcReadOptions {
    /// Tolerates what files in circulation often get wrong: `$` for a required string or
    /// enumeration, a value for a derived attribute, a missing list item.
    bool lenient = true;
    /// Keeps what the file says, letter for letter, in place of repairing it: what is missing stays
    /// missing, a fault costs only the value where it is, and what could not be kept has a line in
    /// the log. Overrules `lenient`.
    bool exact = false;
};

}  // namespace Ovik
