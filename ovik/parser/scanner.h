// The tokens of physical files. The scanner is lenient: a character that starts no token is
// dropped, and the parser decides what the remaining tokens mean. An exact scan keeps to
// ISO 10303-21 instead and hands over everything.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <unordered_set>

#include "ovik/base/errlog.h"
#include "ovik/base/export.h"
#include "ovik/parser/flexlexer.h"
#include "ovik/parser/items.h"
#include "ovik/parser/location.h"
#include "ovik/parser/output.h"

namespace Ovik::IfcParser {

/// Token codes, as `Scanner::yylex` returns them.
struct Token {
    enum Code : int {
        END = 0,
        ERROR = 267,
        COL = 268,
        LPR = 269,
        RPR = 270,
        SEMICOL = 271,
        STR_CONST = 272,
        ISO_BEGIN = 273,
        ISO_END = 274,
        HEADER = 275,
        ENDSEC = 276,
        FILE_DESCRIPTION = 277,
        FILE_NAME = 278,
        FILE_SCHEMA = 279,
        DATA = 280,
        EQ = 281,
        IFCTYPE = 282,
        INT_CONST = 283,
        REF_NIL = 284,
        REF_CONST = 285,
        BOOL_CONST = 286,
        ENUM = 287,
        REAL_CONST = 288,
        DERIVED = 289,
        BINARY = 290,
        UNREADABLE = 291  ///< exact scans: what starts no token, or is a malformed one
    };
};

/// The value of a token; the member that its code calls for is set, the others keep what they had.
struct TokenValue {
    int integer = 0;             ///< `INT_CONST`, `REF_CONST`; 0 is an impossible reference
    double real = 0;             ///< `REAL_CONST`
    bool isInteger = false;      ///< `REAL_CONST`: an integer that `integer` can't hold
    unsigned char boolean = 0;   ///< `BOOL_CONST`
    std::string text;            ///< `STR_CONST`, `BINARY`, `UNREADABLE`; to be moved away
    PooledName* name = nullptr;  ///< `IFCTYPE`, `ENUM`; one reference, which is the caller's
};

/// One `PooledName` per spelling.
class OVIK_API NamePool {
 public:
    NamePool() = default;
    ~NamePool();
    NamePool(const NamePool&) = delete;
    NamePool& operator=(const NamePool&) = delete;

    /// The name of this spelling, with a reference more for the caller.
    PooledName* get(std::string_view spelling);

 private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const;
        std::size_t operator()(const PooledName* name) const { return (*this)(name->text); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const PooledName* a, const PooledName* b) const { return a == b; }
        bool operator()(std::string_view a, const PooledName* b) const { return a == b->text; }
        bool operator()(const PooledName* a, std::string_view b) const { return a->text == b; }
    };

    std::unordered_set<PooledName*, Hash, Equal> names_;
};

/// Scans one stream. At each place the longest match wins; matching is case sensitive.
///
/// An exact scan, for an output that asks for it, differs in this:
/// - Strings end where the standard says, and are handed over as they stand in the file but for the
///   line ends: every backslash, every escape.
/// - Numbers may have a sign, leading zeros, a point in front. An integer beyond 32 bits is a
///   `REAL_CONST`; a reference to 0 or beyond 32 bits has the number 0.
/// - Keywords and names are whole words in letters of either case, and names need no `IFC`. `.t.`
///   and `.f.` are booleans.
/// - Comments don't nest.
/// - What starts no token but is no blank comes as `UNREADABLE`, and so does a string with a NUL.
class OVIK_API Scanner final : public yyFlexLexer {
 public:
    /// `log` may be null. The scanner itself doesn't use `output`; it keeps it for the parser.
    Scanner(std::istream* in, ErrLog* log, Output* output);

    /// Where tokens and places go; to be set before the first token. A token's place ends where
    /// the token does, and begins where the last dropped character or line end left it.
    void setTarget(TokenValue* value, Location* location) {
        value_ = value;
        location_ = location;
    }

    void switchToBuffer(Buffer* buffer) override;
    void restart(std::istream* stream) override;
    int yylex() override;
    std::wostream* logStream() override;
    int LexerInput(char* buffer, int maximum) override;
    [[noreturn]] void LexerError(const char* message) override;

    Output* output() const { return output_; }
    /// What the output asks to be noted; null if it doesn't.
    ParseFacts* facts() const { return facts_; }
    /// The number of characters taken from the stream so far; runs ahead of the tokens.
    double bytesRead() const { return bytesRead_; }
    bool exact() const { return outside_ == SC_EXACT; }

 private:
    enum Condition { SC_INITIAL, SC_STRING, SC_COMMENT, SC_ESCAPE, SC_EXACT };

    template <bool exact>
    int scanInitial();
    int scanWithin();
    int scanString();
    int scanEscape();
    int scanComment();

    int matchToken();
    int matchWord(std::string_view word, int token);
    int matchName();
    int matchEnum();
    int matchBinary();
    int matchReference();
    int matchNumber();
    bool matchWholeString(unsigned char plain);
    int unescape(char c);
    int keepEscape(const char* end);

    int scanExactString();
    int matchExactToken();
    int matchExactWord();
    int matchExactReference();
    int matchExactNumber();
    bool matchFolded(std::string_view word);
    bool holdsRecord();
    int unreadable(std::size_t size);

    bool more(const char*& p);
    char peek(const char*& p);
    const char* skip(const char* p, unsigned char mask);
    const char* skipLine(const char* p);
    void advance();
    void dropTo(const char* end);
    void countLines();

    void message(const wchar_t* text);
    int fail(const wchar_t* text);

    TokenValue* value_ = nullptr;
    Location* location_ = nullptr;
    Condition outside_;  // of strings and comments: SC_EXACT in an exact scan
    Condition condition_;
    std::string string_;  // the current string constant as far as it has been read
    // No apostrophe stands between the place of the match and this one on the same line.
    const char* quotelessEnd_ = nullptr;
    NamePool classNames_;
    NamePool enumNames_;
    ErrLog* log_;
    Output* output_;
    ParseFacts* facts_;
    double bytesRead_ = 0;
};

}  // namespace Ovik::IfcParser
