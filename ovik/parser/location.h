// Places in a physical file.
#pragma once

#include <string>

#include "ovik/base/export.h"

namespace Ovik::IfcParser {

/// A line and a column of a file, both from 1.
struct Position {
    const std::string* fileName = nullptr;
    unsigned line = 1;
    unsigned column = 1;

    friend bool operator==(const Position&, const Position&) = default;
};

/// A stretch of a file; the end column is the one after the last character.
struct Location {
    Position begin;
    Position end;
};

/// The place as messages tell it: "12.1", "12.1-9" or "12.1-13.9".
OVIK_API std::string toString(const Location& location);

}  // namespace Ovik::IfcParser
