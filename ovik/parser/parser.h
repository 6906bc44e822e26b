// The grammar of physical files. The parser reads tokens, builds items bottom-up and calls an
// `Output`; it keeps no record of what it has handed over.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "ovik/base/errlog.h"
#include "ovik/base/export.h"
#include "ovik/parser/items.h"
#include "ovik/parser/location.h"
#include "ovik/parser/output.h"
#include "ovik/parser/scanner.h"

namespace Ovik::IfcParser {

/// Parses one file. A malformed data item is dropped with a report and the parse goes on; an error
/// outside the data section ends it. Lists may nest as deep as memory allows.
class OVIK_API Parser {
 public:
    /// The scanner brings log and output with it, and outlives the parser.
    explicit Parser(Scanner& scanner) : scanner_(scanner) {}
    virtual ~Parser() = default;
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Runs to the end: 0 if the file was accepted, 1 if the parser gave up or something
    /// stands behind the end. An exception of the output passes through.
    virtual int parse();
    /// Writes a line with place and message to the log, if there is one.
    virtual void reportError(const Location& location, const std::string& message);

 protected:
    /// The words for a token that doesn't fit.
    virtual std::string syntaxErrorText(int token) const;

 private:
    // What the parser found where a list element may stand.
    enum class Step { Item, Opened, None, Error };

    // A list whose closing parenthesis hasn't come.
    struct OpenList {
        std::size_t firstItem;  // where its elements start in items_
        PooledName* type;       // of the typed parameter around it, or null
    };

    int peek();
    void shift();
    bool take(int token);
    void dropLookahead();
    bool syntaxError();

    bool parseFile();
    bool parseHeader();
    bool parseStatement(int keyword, std::unique_ptr<HeaderStatement>& statement);
    bool parseDataSection();
    bool parseDataItem();
    bool parseClosing();
    bool discardLine();

    ItemList* parseList();
    Step parseListItem();
    ItemList* closeList();
    ItemBase* takeElementary();
    bool replaceMissingItem();
    void unwindLists();
    void logLine(const wchar_t* line);
    void noteLine();
    bool lostItem(int id, PooledName* className);

    Scanner& scanner_;
    TokenValue value_;
    Location location_;
    int lookahead_ = -1;
    // Raised by an error, lowered by tokens accepted since; no report while it is up.
    int errorCount_ = 0;
    std::vector<ItemBase*> items_;
    std::vector<OpenList> lists_;
};

/// Parses a whole stream into `output`. An exception of the output that holds a `std::string` is
/// written to the log and makes the result false; in every other case the result is true.
OVIK_API bool parseStream(std::istream& stream, ErrLog* log, Output* output);

}  // namespace Ovik::IfcParser
