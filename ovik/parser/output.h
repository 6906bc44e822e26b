// What the parser hands its findings to.
#pragma once

#include <cstdint>
#include <memory>

#include "ovik/base/export.h"
#include "ovik/parser/items.h"

namespace Ovik::IfcParser {

/// The parameter list of one header statement. Owns one reference of `list`.
struct HeaderStatement {
    ItemList* list;

    explicit HeaderStatement(ItemList* parameters) : list(parameters) {}
    ~HeaderStatement() { list->release(); }
    HeaderStatement(const HeaderStatement&) = delete;
    HeaderStatement& operator=(const HeaderStatement&) = delete;
};

/// The three header statements, nothing in them interpreted.
struct ParsedHeader {
    std::unique_ptr<HeaderStatement> fileDescription;
    std::unique_ptr<HeaderStatement> fileName;
    std::unique_ptr<HeaderStatement> fileSchema;
};

/// What the parser sees of the text beside what it hands over. Lines and columns count from 1.
struct ParseFacts {
    std::uint32_t recordLine = 0;   ///< where the data item begins that is handed over
    std::uint32_t errorLine = 0;    ///< where the first error is; 0 if there is none
    std::uint32_t errorColumn = 0;  ///< the same
    std::uint64_t comments = 0;     ///< that have been begun; one in another doesn't count
    bool streamBroken = false;      ///< the stream could not be read to its end
};

/// Receives what the parser finds: the header once, then each good data item in file order, then
/// the end of the file. An exception of an operation ends the parse; one that holds a
/// `std::string` is written to the log.
class OVIK_API Output {
 public:
    /// Whether a missing list item may be replaced by `$`. Not unless overridden.
    virtual bool missingItemAllowed();
    /// The header is complete. Who keeps it takes the pointer (it came from `new`) and sets the
    /// argument to null. False refuses the schema, which ends the parse.
    virtual bool setHeader(ParsedHeader*& header) = 0;
    /// One data item. `id` is the instance number; `className` is borrowed: who keeps it adds a
    /// reference; one reference of `list` goes to the callee. `position` is the number of
    /// characters read so far.
    virtual void addData(int id, PooledName* className, ItemList* list, double position) = 0;
    /// The final semicolon has been read. Not called for an incomplete file.
    virtual void endOfFile() = 0;

    virtual ~Output() = default;

    /// Whether the file is to be parsed exactly: by the standard, letter for letter, and with a
    /// fault costing no more than the parameter that it stands in. Not unless overridden. Asked
    /// once, at the start.
    virtual bool exact() const { return false; }
    /// Where the parser notes what it sees, kept up to date; null, as here, if nobody asks. Asked
    /// once, at the start. With it a stream that breaks ends the parse with a `std::string` and
    /// not the process.
    virtual ParseFacts* facts();
    /// A data item that is not handed over, since its text can't be cut into parameters.
    /// `className`, borrowed, is null if that can't be told.
    virtual void lostData(int id, PooledName* className);
};

}  // namespace Ovik::IfcParser
