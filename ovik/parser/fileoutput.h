// Outputs that tell a progress meter, and the one that keeps every item of a file.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <vector>

#include "ovik/base/errlog.h"
#include "ovik/base/export.h"
#include "ovik/base/progressmeter.h"
#include "ovik/parser/output.h"

namespace Ovik::IfcParser {

/// An output that drives a progress meter: `start` when made, `progress` with each data item,
/// `finish` when destroyed.
class OVIK_API OutputPrgMeter : public Output {
 public:
    /// `meter` may be null; stream and meter are not owned.
    OutputPrgMeter(std::istream& stream, ProgressMeter* meter);
    ~OutputPrgMeter() override;
    OutputPrgMeter(const OutputPrgMeter&) = delete;
    OutputPrgMeter& operator=(const OutputPrgMeter&) = delete;

    /// Advances the meter and does nothing else: the reference of `list` stays with the caller.
    void addData(int id, PooledName* className, ItemList* list, double position) override;

 private:
    ProgressMeter* meter_;
};

/// One data item. Owns one reference of `className` and one of `list`.
struct DataItem {
    int id;
    PooledName* className;
    ItemList* list;

    DataItem(int number, PooledName* name, ItemList* parameters)
        : id(number), className(name), list(parameters) {}
    ~DataItem() {
        className->release();
        list->release();
    }
    DataItem(const DataItem&) = delete;
    DataItem& operator=(const DataItem&) = delete;
};

using DataItems = std::vector<std::unique_ptr<DataItem>>;

/// A whole file as items. `items` is sorted by number, no two alike, and null if there is none.
struct ParsedFile {
    bool exact = false;  ///< of an exact parse
    std::unique_ptr<ParsedHeader> header;
    std::unique_ptr<DataItems> items;
};

/// Keeps what the parser finds.
class OVIK_API IfcFileOutput final : public OutputPrgMeter {
 public:
    IfcFileOutput(std::istream& stream, ProgressMeter* meter, bool exact = false)
        : OutputPrgMeter(stream, meter), exact_(exact) {}

    bool exact() const override { return exact_; }
    bool setHeader(ParsedHeader*& taken) override;
    /// Throws a `std::string` for a number that was there before.
    void addData(int id, PooledName* className, ItemList* list, double position) override;
    void endOfFile() override;

    /// The finished file; null before its end has been seen.
    std::unique_ptr<ParsedFile> result;
    /// What has come so far, but for what is still to be put in its place.
    std::unique_ptr<DataItems> items;
    std::unique_ptr<ParsedHeader> header;

 private:
    void mergeLate();

    const bool exact_;

    // Numbers that came out of order, sorted. They join `items` many at a time, so that a file in
    // descending order doesn't move all of `items` for each.
    DataItems late_;
};

/// Parses the file at `path`; null if it is incomplete. `log` and `meter` may be null. Throws a
/// `std::string` if the file can't be opened.
OVIK_API std::unique_ptr<ParsedFile> parseFile(const wchar_t* path, ErrLog* log,
                                               ProgressMeter* meter, bool exact = false);
OVIK_API std::unique_ptr<ParsedFile> parseFile(const std::filesystem::path& path, ErrLog* log,
                                               ProgressMeter* meter, bool exact = false);

}  // namespace Ovik::IfcParser
