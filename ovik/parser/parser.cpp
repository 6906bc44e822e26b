// The grammar, direct coded. Each function stands for a symbol; it returns false (or null) on a
// token that doesn't fit, with the report written and everything of its own given back, and the
// data section then goes on behind the next semicolon.
#include "ovik/parser/parser.h"

#include <ostream>
#include <utility>

#include "ovik/base/ascii.h"
#include "ovik/base/ref.h"
#include "ovik/parser/stringtext.h"

namespace Ovik::IfcParser {
namespace {

constexpr int kNoLookahead = -1;
// What an error raises the error counter to.
constexpr int kErrorCount = 3;

bool hasName(int token) {
    return token == Token::IFCTYPE || token == Token::ENUM;
}

}  // namespace

bool Output::missingItemAllowed() {
    return false;
}

ParseFacts* Output::facts() {
    return nullptr;
}

void Output::lostData(int /*id*/, PooledName* /*className*/) {}

std::string toString(const Location& location) {
    const auto& [begin, end] = location;
    const unsigned lastColumn = end.column > 1 ? end.column - 1 : 1;
    std::string text = std::to_string(begin.line) + '.' + std::to_string(begin.column);
    if (end.line != begin.line) {
        text += '-' + std::to_string(end.line) + '.' + std::to_string(lastColumn);
    } else if (lastColumn != begin.column) {
        text += '-' + std::to_string(lastColumn);
    }
    return text;
}

// The lookahead is read only where the grammar needs it, so that the output hears of a data item
// before anything behind its semicolon is looked at.
inline int Parser::peek() {
    if (lookahead_ == kNoLookahead) lookahead_ = scanner_.yylex();
    return lookahead_;
}

// Accepts the lookahead; its value is the caller's now.
inline void Parser::shift() {
    lookahead_ = kNoLookahead;
    if (errorCount_ > 0) --errorCount_;
}

// Accepts the token that has to stand here.
inline bool Parser::take(int token) {
    if (peek() != token) return syntaxError();
    shift();
    return true;
}

void Parser::dropLookahead() {
    if (hasName(lookahead_)) value_.name->release();
    lookahead_ = kNoLookahead;
}

void Parser::logLine(const wchar_t* line) {
    if (std::wostream* const log = scanner_.logStream()) *log << line << std::endl;
}

void Parser::reportError(const Location& location, const std::string& message) {
    if (ParseFacts* const facts = scanner_.facts(); facts && facts->errorLine == 0) {
        facts->errorLine = location.begin.line;
        facts->errorColumn = location.begin.column;
    }
    const std::string line = "Parser Error at " + toString(location) + ": " + message;
    logLine(widen(line).c_str());
}

std::string Parser::syntaxErrorText(int /*token*/) const {
    return "syntax error";
}

// Reports the lookahead, unless an error has just been reported. Always false.
bool Parser::syntaxError() {
    if (errorCount_ == 0) reportError(location_, syntaxErrorText(lookahead_));
    return false;
}

int Parser::parse() {
    errorCount_ = 0;
    lookahead_ = kNoLookahead;
    location_ = {};
    scanner_.setTarget(&value_, &location_);
    try {
        const bool accepted = parseFile();
        dropLookahead();
        return accepted ? 0 : 1;
    } catch (...) {
        unwindLists();
        dropLookahead();
        throw;
    }
}

bool Parser::parseFile() {
    if (!take(Token::ISO_BEGIN) || !take(Token::SEMICOL)) return false;
    if (!parseHeader()) return false;
    if (!take(Token::DATA) || !take(Token::SEMICOL)) return false;
    if (!parseDataSection()) return false;
    scanner_.output()->endOfFile();
    return take(Token::END);
}

bool Parser::parseHeader() {
    auto header = std::make_unique<ParsedHeader>();
    const bool complete = take(Token::HEADER) && take(Token::SEMICOL) &&
                          parseStatement(Token::FILE_DESCRIPTION, header->fileDescription) &&
                          parseStatement(Token::FILE_NAME, header->fileName) &&
                          parseStatement(Token::FILE_SCHEMA, header->fileSchema) &&
                          take(Token::ENDSEC) && take(Token::SEMICOL);
    if (!complete) return false;
    ParsedHeader* handedOver = header.release();
    bool known = false;
    try {
        known = scanner_.output()->setHeader(handedOver);
    } catch (...) {
        delete handedOver;
        throw;
    }
    header.reset(handedOver);
    if (!known) throw std::string("This schema is not supported");
    return true;
}

bool Parser::parseStatement(int keyword, std::unique_ptr<HeaderStatement>& statement) {
    if (!take(keyword)) return false;
    ItemList* const list = parseList();
    if (!list) return false;
    if (!take(Token::SEMICOL)) {
        abandonItem(list);
        return false;
    }
    statement = std::make_unique<HeaderStatement>(list);
    return true;
}

// The data items and the closing, which stands on the same level: an error in it discards a line
// like one in an item, and items may follow. A section without items is for an exact parse only.
bool Parser::parseDataSection() {
    bool mayEnd = scanner_.exact();
    for (;;) {
        if (peek() == Token::ENDSEC && mayEnd) {
            if (parseClosing()) return true;
            if (!discardLine()) return false;
        } else if (!parseDataItem() && !discardLine()) {
            return false;
        }
        mayEnd = true;
    }
}

bool Parser::parseClosing() {
    return take(Token::ENDSEC) && take(Token::SEMICOL) && take(Token::ISO_END) &&
           take(Token::SEMICOL);
}

// Goes on behind the next semicolon; false if there is none.
bool Parser::discardLine() {
    errorCount_ = kErrorCount;
    bool afterNumber = false;
    for (; peek() != Token::SEMICOL; dropLookahead()) {
        if (lookahead_ == Token::END) return false;
        // If the semicolon before it is missing, another data item goes down with the line.
        if (afterNumber && lookahead_ == Token::EQ) lostItem(value_.integer, nullptr);
        afterNumber = lookahead_ == Token::REF_CONST;
        if (afterNumber) noteLine();
    }
    shift();
    logLine(L"Line discarded");
    return true;
}

bool Parser::parseDataItem() {
    if (!take(Token::REF_CONST)) return false;
    const int id = value_.integer;
    noteLine();
    if (!take(Token::EQ) || !take(Token::IFCTYPE)) return lostItem(id, nullptr);
    const Ref<PooledName> className(value_.name);
    ItemList* const list = parseList();
    if (!list) return lostItem(id, className.get());
    if (!take(Token::SEMICOL)) {
        // A finished list goes down with the error and stays alive.
        abandonItem(list);
        return lostItem(id, className.get());
    }
    scanner_.output()->addData(id, className.get(), list, scanner_.bytesRead());
    return true;
}

// The data item at hand begins with the last token.
inline void Parser::noteLine() {
    if (ParseFacts* const facts = scanner_.facts()) facts->recordLine = location_.end.line;
}

// Always false.
bool Parser::lostItem(int id, PooledName* className) {
    scanner_.output()->lostData(id, className);
    return false;
}

// A list with all that is nested in it, without recursion: open lists wait in lists_, their
// elements in items_. Null on an error.
ItemList* Parser::parseList() {
    if (!take(Token::LPR)) return nullptr;
    lists_.push_back({items_.size(), nullptr});
    bool afterComma = false;
    for (;;) {
        // An element, a nested list's opening, or what takes the place of an element.
        switch (parseListItem()) {
            case Step::Opened:
                afterComma = false;
                continue;
            case Step::Item:
                break;
            case Step::None:
                if (afterComma) {
                    if (replaceMissingItem()) break;
                } else {
                    if (lookahead_ == Token::RPR) break;
                    syntaxError();
                }
                [[fallthrough]];
            case Step::Error:
                unwindLists();
                return nullptr;
        }
        // Behind it a comma, or the ends of lists.
        while (peek() == Token::RPR) {
            shift();
            ItemList* const list = closeList();
            if (!list) {
                unwindLists();
                return nullptr;
            }
            if (lists_.empty()) return list;
        }
        if (!take(Token::COL)) {
            unwindLists();
            return nullptr;
        }
        afterComma = true;
    }
}

// Reads an element, or the opening of a nested list; None, with nothing taken, if the lookahead
// starts neither.
Parser::Step Parser::parseListItem() {
    PooledName* type = nullptr;
    switch (peek()) {
        case Token::LPR:
            shift();
            lists_.push_back({items_.size(), nullptr});
            return Step::Opened;
        case Token::DERIVED:
            shift();
            itemDerived()->addRef();
            items_.push_back(itemDerived());
            return Step::Item;
        case Token::IFCTYPE:
            shift();
            type = value_.name;
            break;
        default:
            if (ItemBase* const item = takeElementary()) {
                items_.push_back(item);
                return Step::Item;
            }
            return Step::None;
    }

    // A typed parameter: one elementary value or one list.
    if (!take(Token::LPR)) {
        type->release();
        return Step::Error;
    }
    if (peek() == Token::LPR) {
        shift();
        lists_.push_back({items_.size(), type});
        return Step::Opened;
    }
    ItemBase* const value = takeElementary();
    if (!value || !take(Token::RPR)) {
        if (value) {
            value->release();
        } else {
            syntaxError();
        }
        type->release();
        return Step::Error;
    }
    items_.push_back(new ItemChoice(type, value));
    return Step::Item;
}

// The innermost list is complete. Unless it is the outermost one it becomes an element of the one
// around it. Null on an error.
ItemList* Parser::closeList() {
    const OpenList open = lists_.back();
    lists_.pop_back();
    auto* const list = new ItemList(items_.data() + open.firstItem, items_.size() - open.firstItem);
    items_.resize(open.firstItem);
    if (lists_.empty()) return list;
    if (open.type && !take(Token::RPR)) {
        // Here too the finished list stays alive.
        abandonItem(list);
        open.type->release();
        return nullptr;
    }
    if (open.type) {
        items_.push_back(new ItemChoice(open.type, list));
    } else {
        items_.push_back(list);
    }
    return list;
}

// An item of the lookahead, which is taken; null if it is no elementary value.
ItemBase* Parser::takeElementary() {
    ItemBase* shared = nullptr;
    switch (peek()) {
        case Token::STR_CONST: {
            shift();
            auto* const item = new ItemString(std::move(value_.text));
            for (std::size_t last = 0; peek() == Token::STR_CONST;) {
                shift();
                if (scanner_.exact()) closeConstant(item->text, last);
                last = item->text.size();
                item->text += value_.text;
            }
            return item;
        }
        case Token::INT_CONST:
            shift();
            return new ItemInt(value_.integer);
        case Token::REAL_CONST:
            shift();
            return new ItemDbl(value_.real, value_.isInteger);
        case Token::REF_CONST:
            shift();
            if (scanner_.exact() && value_.integer == 0)
                return new ItemUnreadable(nullptr, std::string(scanner_.text()));
            return new ItemRef(value_.integer);
        case Token::ENUM:
            shift();
            return new ItemEnum(value_.name);
        case Token::BINARY:
            shift();
            return new ItemBinary(std::move(value_.text));
        case Token::REF_NIL:
            shared = itemNil();
            break;
        case Token::BOOL_CONST:
            shared = value_.boolean ? itemTrue() : itemFalse();
            break;
        default:
            return nullptr;
    }
    shift();
    shared->addRef();
    return shared;
}

// A comma with no item behind it. The stand-in is counted twice, so that the report at the end of
// the process tells that something was missing.
bool Parser::replaceMissingItem() {
    if (scanner_.output()->missingItemAllowed()) {
        logLine(L"Trying to recover wrong syntax: missing item is replaced with NIL");
        ItemRef* const nil = itemNil();
        nil->addRef();
        nil->addRef();
        items_.push_back(nil);
        return true;
    }
    reportError(location_, "missing list item");
    // The elements so far stay alive with their array.
    for (std::size_t i = lists_.back().firstItem; i < items_.size(); ++i) abandonItem(items_[i]);
    items_.resize(lists_.back().firstItem);
    return false;
}

// Gives back the lists that are open at an error.
void Parser::unwindLists() {
    while (!lists_.empty()) {
        const OpenList open = lists_.back();
        lists_.pop_back();
        for (std::size_t i = open.firstItem; i < items_.size(); ++i) items_[i]->release();
        items_.resize(open.firstItem);
        if (open.type) open.type->release();
    }
}

bool parseStream(std::istream& stream, ErrLog* log, Output* output) {
    Scanner scanner(&stream, log, output);
    Parser parser(scanner);
    try {
        parser.parse();
    } catch (const std::string& message) {
        if (log) log->log() << widen(message) << std::endl;
        return false;
    }
    return true;
}

}  // namespace Ovik::IfcParser
