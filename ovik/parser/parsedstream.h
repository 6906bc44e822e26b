// Physical files as plain items, for comparing two of them without building models.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>

#include "ovik/base/errlog.h"
#include "ovik/base/export.h"
#include "ovik/base/progressmeter.h"

namespace Ovik {

namespace IfcParser {
struct ParsedFile;
}

/// A parsed file. Copies share one record. The items of all streams share tables of the process
/// that nothing guards: while one thread reads, assigns or destroys a stream, no other thread may
/// do so with any stream, nor parse or load a file.
class OVIK_API IfcParsedStream {
 public:
    /// An invalid stream.
    IfcParsedStream() = default;

    /// Reads a file in place of what the stream held; `log` and `meter` may be null. True if the
    /// stream is valid now: damaged data items are left out, but the file must be complete and no
    /// number come twice. Throws a `std::string` if the file can't be opened.
    /// If `exact`, the file is taken letter for letter, as `IfcReadOptions::exact` has it.
    bool read(const wchar_t* path, ErrLog* log, ProgressMeter* meter, bool exact = false);
    bool read(const std::filesystem::path& path, ErrLog* log, ProgressMeter* meter,
              bool exact = false);

    bool isValid() const { return file_ != nullptr; }

    /// Compares item by item, data items by number, up to the first difference, which is told to
    /// `report` (may be null) from the inside out. Reals are equal if they differ by less than
    /// `tolerance`. An invalid stream equals nothing. Two streams that were read exactly are
    /// compared by what things mean: identical reals are equal whatever the tolerance is, an
    /// integer equals a real of its value, names and words are compared without case, and strings
    /// by the text that they stand for.
    bool isEqualTo(const IfcParsedStream& other, std::ostream* report, double tolerance,
                   bool ignoreHeader) const;

 private:
    std::shared_ptr<const IfcParser::ParsedFile> file_;
};

}  // namespace Ovik
