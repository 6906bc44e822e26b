// The rules of the scanner, by start condition and first character.
#include "ovik/parser/scanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>
#include <string>
#include <utility>

#include "ovik/base/ascii.h"
#include "ovik/parser/stringtext.h"

namespace Ovik::IfcParser {
namespace {

constexpr int kNoToken = -1;

// How many comments within the comment are open, for all scanners; the mark that opens a comment
// sets it anew.
int commentDepth = 0;

enum CharClass : unsigned char {
    kDigit = 1,
    kHex = 2,
    kNameChar = 4,
    kPlain = 8,     // means only itself in a string
    kNothing = 16,  // starts no token
    kLineFeed = 32,
    kBlank = 64,
    kExactPlain = 128  // means only itself in a string of an exact scan
};

constexpr std::array<unsigned char, 256> makeClasses() {
    std::array<unsigned char, 256> classes{};
    for (unsigned i = 1; i < 256; ++i) {
        const char c = static_cast<char>(i);
        const bool digit = c >= '0' && c <= '9';
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        unsigned char bits = 0;
        if (digit) bits |= kDigit;
        if (digit || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f')) bits |= kHex;
        if (digit || letter || c == '_') bits |= kNameChar;
        if (c != '\\' && c != '\'' && c != '\n') bits |= kPlain;
        if (c == '\n') bits |= kLineFeed;
        if (c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f') bits |= kBlank;
        if ((bits & kPlain) != 0 && c != '\r') bits |= kExactPlain;
        if (!digit && std::string_view(";,()=$*/'\n.\"#+-IEHDF").find(c) == std::string_view::npos)
            bits |= kNothing;
        classes[i] = bits;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> kClasses = makeClasses();

// The tokens of one character that starts no longer one.
constexpr std::array<short, 256> makeSingles() {
    std::array<short, 256> tokens{};
    tokens[';'] = Token::SEMICOL;
    tokens[','] = Token::COL;
    tokens['('] = Token::LPR;
    tokens[')'] = Token::RPR;
    tokens['='] = Token::EQ;
    tokens['$'] = Token::REF_NIL;
    return tokens;
}

constexpr std::array<short, 256> kSingles = makeSingles();

bool isA(char c, unsigned char mask) {
    return (kClasses[static_cast<unsigned char>(c)] & mask) != 0;
}

// Held to 64 bits.
long long toLong(const char* first, const char* last) {
    if (*first == '+') ++first;
    long long value = 0;
    if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range) {
        value = *first == '-' ? std::numeric_limits<long long>::min()
                              : std::numeric_limits<long long>::max();
    }
    return value;
}

// As the C library reads integers: what doesn't fit is held to 64 bits, then cut to 32.
int toInt(const char* first, const char* last) {
    constexpr auto kAlwaysFits = 9;
    if (last - first <= kAlwaysFits && isA(*first, kDigit)) {
        int value = 0;
        for (; first != last; ++first) value = value * 10 + (*first - '0');
        return value;
    }
    return static_cast<int>(toLong(first, last));
}

// What a number beyond the range of a double becomes: zero or infinity, by the decimal exponent of
// its first digit.
double outOfRange(std::string_view text) {
    const bool negative = text.front() == '-';
    if (negative) text.remove_prefix(1);
    const auto mantissa = text.substr(0, text.find_first_of("eE"));
    const auto dot = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto digit = mantissa.find_first_not_of("0.");
    double value = 0;
    if (digit != std::string_view::npos) {
        constexpr long long kHuge = 1LL << 60;
        const long long exponent =
            mantissa.size() == text.size()
                ? 0
                : std::clamp(toLong(text.data() + mantissa.size() + 1, text.data() + text.size()),
                             -kHuge, kHuge);
        if (dot - static_cast<long long>(digit) + exponent > 0)
            value = std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

double toReal(const char* first, const char* last) {
    double value = 0;
    if (std::from_chars(first, last, value).ec == std::errc::result_out_of_range)
        value = outOfRange({first, static_cast<std::size_t>(last - first)});
    return value;
}

}  // namespace

// Eight characters at a time: a few multiplications for the usual name.
inline std::size_t NamePool::Hash::operator()(std::string_view text) const {
    std::uint64_t hash = text.size();
    const auto mix = [&](std::size_t from, std::size_t count) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + from, count);
        hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
        hash ^= hash >> 32;
    };
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) mix(i, 8);
    if (i < text.size()) mix(i, text.size() - i);
    return static_cast<std::size_t>(hash);
}

NamePool::~NamePool() {
    for (PooledName* name : names_) name->release();
}

PooledName* NamePool::get(std::string_view spelling) {
    auto found = names_.find(spelling);
    if (found == names_.end()) found = names_.insert(new PooledName(spelling)).first;
    (*found)->addRef();
    return *found;
}

Scanner::Scanner(std::istream* in, ErrLog* log, Output* output)
    : yyFlexLexer(in),
      outside_(output && output->exact() ? SC_EXACT : SC_INITIAL),
      condition_(outside_),
      log_(log),
      output_(output),
      facts_(output ? output->facts() : nullptr) {}

std::wostream* Scanner::logStream() {
    return log_ ? &log_->log() : nullptr;
}

// What is known of a line holds within one filling of one buffer.
void Scanner::switchToBuffer(Buffer* buffer) {
    quotelessEnd_ = nullptr;
    yyFlexLexer::switchToBuffer(buffer);
}

void Scanner::restart(std::istream* stream) {
    quotelessEnd_ = nullptr;
    yyFlexLexer::restart(stream);
}

int Scanner::LexerInput(char* buffer, int maximum) {
    quotelessEnd_ = nullptr;
    const int count = yyFlexLexer::LexerInput(buffer, maximum);
    if (count > 0) bytesRead_ += count;
    return count;
}

void Scanner::LexerError(const char* message) {
    if (!facts_) yyFlexLexer::LexerError(message);
    facts_->streamBroken = true;
    throw std::string(message);
}

int Scanner::yylex() {
    for (;;) {
        const int token = condition_ == SC_INITIAL ? scanInitial<false>()
                          : condition_ == SC_EXACT ? scanInitial<true>()
                                                   : scanWithin();
        if (token != kNoToken) return token;
    }
}

int Scanner::scanWithin() {
    if (condition_ == SC_STRING) return scanString();
    return condition_ == SC_ESCAPE ? scanEscape() : scanComment();
}

// Outside strings and comments. Returns without a token when one of these opens, but for strings
// of an exact scan.
template <bool exact>
int Scanner::scanInitial() {
    for (;;) {
        const char* p = cursor_;
        start_ = p;
        while (isA(*p, exact ? kBlank : kNothing)) ++p;
        if (p != start_) {
            dropTo(p);
            start_ = p;
        }
        if (const int single = kSingles[static_cast<unsigned char>(*p)]) {
            cursor_ = p + 1;
            advance();
            return single;
        }
        switch (*p) {
            case '\n':
                countLines();
                continue;
            case '\'':
                if (matchWholeString(exact ? kExactPlain : kPlain)) return Token::STR_CONST;
                if constexpr (exact) return scanExactString();
                string_.clear();
                cursor_ = start_ + 1;
                advance();
                condition_ = SC_STRING;
                return kNoToken;
            case '/':
                ++p;
                if (peek(p) != '*') break;
                commentDepth = 0;
                if (facts_) ++facts_->comments;
                cursor_ = start_ + 2;
                advance();
                condition_ = SC_COMMENT;
                return kNoToken;
            case '*':
                ++p;
                if (peek(p) == '/') {
                    if constexpr (exact) return unreadable(2);
                    cursor_ = start_ + 2;
                    advance();
                    message(L"Unmatched */");
                    return Token::ERROR;
                }
                cursor_ = start_ + 1;
                advance();
                return Token::DERIVED;
            case '\0':
                if (p != limit_) break;
                if (more(p)) continue;
                return Token::END;
            default:
                if (const int token = exact ? matchExactToken() : matchToken(); token != kNoToken) {
                    advance();
                    return token;
                }
        }
        if constexpr (exact) return unreadable(1);
        dropTo(start_ + 1);
    }
}

// The string at the match's start if it needs no assembling and stands in the buffer whole.
bool Scanner::matchWholeString(unsigned char plain) {
    const char* p = start_ + 1;
    while (isA(*p, plain)) ++p;
    if (*p != '\'' || p + 1 == limit_ || p[1] == '\'') return false;
    value_->text.assign(start_ + 1, p);
    cursor_ = p + 1;
    advance();
    return true;
}

int Scanner::scanString() {
    for (;;) {
        start_ = cursor_;
        const char* p = start_;
        while (isA(*p, kPlain)) ++p;
        if (p != start_) {
            string_.append(start_, p);
            cursor_ = p;
            advance();
            start_ = p;
        }
        switch (*p) {
            case '\'':
                ++p;
                if (peek(p) == '\'') {
                    string_ += "''";
                    cursor_ = start_ + 2;
                    advance();
                    continue;
                }
                cursor_ = start_ + 1;
                advance();
                condition_ = SC_INITIAL;
                // A copy, so that string_ keeps its room for the next constant.
                value_->text = string_;
                return Token::STR_CONST;
            case '\\':
                cursor_ = start_ + 1;
                advance();
                condition_ = SC_ESCAPE;
                return kNoToken;
            case '\n':
                countLines();
                continue;
            default:
                break;
        }
        if (p == limit_) {
            if (more(p)) continue;
            return fail(L"EOF in string constant");
        }
        // A null: with a later apostrophe on the line everything up to the last one is an error,
        // without one the null is dropped.
        if (start_ >= quotelessEnd_) {
            p = skipLine(start_);
            const char* quote = p;
            while (quote != start_ && *quote != '\'') --quote;
            if (quote != start_) {
                cursor_ = quote + 1;
                advance();
                return fail(L"String contains null character.");
            }
            quotelessEnd_ = p;
        }
        dropTo(start_ + 1);
    }
}

// After a backslash. Longer tokens beat the single escaped character, and leave the condition.
int Scanner::scanEscape() {
    for (;;) {
        start_ = cursor_;
        const char* p = start_;
        const char c = peek(p);
        switch (c) {
            case 'n':
                return unescape('\n');
            case 't':
                return unescape('\t');
            case 'b':
                return unescape('\b');
            case 'f':
                return unescape('\f');
            case 'S':
                ++p;
                if (peek(p) != '\\') break;
                ++p;
                if (peek(p) == '\n' || p == limit_) break;
                return keepEscape(p + 1);
            case 'X':
                ++p;
                if (peek(p) == '\\') {
                    ++p;
                    if (!isA(peek(p), kHex)) break;
                    ++p;
                    if (!isA(peek(p), kHex)) break;
                    return keepEscape(p + 1);
                }
                if (*p == '2' && peek(++p) == '\\') {
                    p = skip(p + 1, kHex);
                    const auto digits = p - start_ - 3;
                    if (digits == 0 || digits % 4 != 0 || peek(p) != '\\') break;
                    if (peek(++p) != 'X' || peek(++p) != '0' || peek(++p) != '\\') break;
                    return keepEscape(p + 1);
                }
                break;
            case '\n':
                ++p;
                if (peek(p) == '\n') {
                    countLines();
                    continue;
                }
                countLines();
                string_ += '\n';
                condition_ = SC_STRING;
                return kNoToken;
            case '\0':
                if (p == limit_) return fail(L"EOF in string constant");
                cursor_ = skip(skipLine(start_), kLineFeed);
                advance();
                return fail(L"String contains escaped null character.");
            default:
                if (const int token = matchToken(); token != kNoToken && length() > 1) {
                    advance();
                    return token;
                }
                return unescape(c);
        }
        dropTo(start_ + 1);  // an S or X that starts no directive
    }
}

// One character behind the backslash stands for `c`.
int Scanner::unescape(char c) {
    string_ += c;
    cursor_ = start_ + 1;
    advance();
    condition_ = SC_STRING;
    return kNoToken;
}

// A directive stays as it is, backslash included.
int Scanner::keepEscape(const char* end) {
    string_ += '\\';
    string_.append(start_, end);
    cursor_ = end;
    advance();
    condition_ = SC_STRING;
    return kNoToken;
}

// An opening mark counts only at the start of a match: directly after another opening mark, a
// closing mark that leaves the comment open, or a line end. Elsewhere it is part of a run of text.
int Scanner::scanComment() {
    for (;;) {
        start_ = cursor_;
        const char* p = start_;
        const char c = peek(p);
        if (c == '\n') {
            countLines();
            continue;
        }
        if (c == '*') {
            ++p;
            const bool closes = peek(p) == '/';
            cursor_ = start_ + (closes ? 2 : 1);
            advance();
            if (closes && --commentDepth < 0) {
                condition_ = outside_;
                return kNoToken;
            }
            continue;
        }
        if (p == limit_) {
            message(L"EOF in comment");
            condition_ = outside_;
            return Token::ERROR;
        }
        if (!exact() && c == '/' && peek(++p) == '*') {
            ++commentDepth;
            cursor_ = start_ + 2;
            advance();
            continue;
        }
        do {
            p = start_;
            while (p != limit_ && *p != '*' && *p != '\n') ++p;
            cursor_ = p;
            advance();
            start_ = p;
        } while (p == limit_ && more(p));
    }
}

// The token of more than one character, or of one digit, at the match's start, which ends at
// cursor_ then.
int Scanner::matchToken() {
    switch (*start_) {
        case '#':
            return matchReference();
        case '.':
            return matchEnum();
        case '"':
            return matchBinary();
        case '+':
        case '-':
        case '0':
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7':
        case '8':
        case '9':
            return matchNumber();
        case 'I':
            if (const int token = matchName(); token != kNoToken) return token;
            return matchWord("ISO-10303-21", Token::ISO_BEGIN);
        case 'E':
            if (const int token = matchWord("ENDSEC", Token::ENDSEC); token != kNoToken)
                return token;
            return matchWord("END-ISO-10303-21", Token::ISO_END);
        case 'H':
            return matchWord("HEADER", Token::HEADER);
        case 'D':
            return matchWord("DATA", Token::DATA);
        case 'F':
            if (const int token = matchWord("FILE_NAME", Token::FILE_NAME); token != kNoToken)
                return token;
            if (const int token = matchWord("FILE_SCHEMA", Token::FILE_SCHEMA); token != kNoToken)
                return token;
            return matchWord("FILE_DESCRIPTION", Token::FILE_DESCRIPTION);
        default:
            return kNoToken;
    }
}

int Scanner::matchWord(std::string_view word, int token) {
    const char* p = start_;
    for (const char c : word) {
        if (peek(p) != c) return kNoToken;
        ++p;
    }
    cursor_ = p;
    return token;
}

int Scanner::matchName() {
    if (matchWord("IFC", Token::IFCTYPE) == kNoToken) return kNoToken;
    const char* const end = skip(start_ + 3, kNameChar);
    cursor_ = end;
    if (length() == 3) return kNoToken;
    value_->name = classNames_.get(text());
    return Token::IFCTYPE;
}

int Scanner::matchEnum() {
    const char* p = skip(start_ + 1, kNameChar);
    if (peek(p) != '.' || p == start_ + 1) return kNoToken;
    cursor_ = p + 1;
    const std::string_view word(start_ + 1, static_cast<std::size_t>(p - start_ - 1));
    if (word.size() == 1) {
        const char letter = exact() ? toUpperAscii(word[0]) : word[0];
        if (letter == 'T' || letter == 'F') {
            value_->boolean = letter == 'T';
            return Token::BOOL_CONST;
        }
    }
    value_->name = enumNames_.get(word);
    return Token::ENUM;
}

int Scanner::matchBinary() {
    const char* p = start_ + 1;
    const char count = peek(p);
    if (count < '0' || count > '3') return kNoToken;
    p = skip(p, kHex);
    if (peek(p) != '"') return kNoToken;
    value_->text.assign(start_, p);
    cursor_ = p + 1;
    return Token::BINARY;
}

int Scanner::matchReference() {
    const char* p = start_ + 1;
    if (!isA(peek(p), kDigit) || *p == '0') return kNoToken;
    p = skip(p, kDigit);
    value_->integer = toInt(start_ + 1, p);
    cursor_ = p;
    return Token::REF_CONST;
}

int Scanner::matchNumber() {
    const char* p = start_;
    const bool plus = *p == '+';
    if (!isA(*p, kDigit)) ++p;
    if (!isA(peek(p), kDigit)) return kNoToken;
    p = *p == '0' ? p + 1 : skip(p, kDigit);
    auto size = p - start_;
    bool real = false;
    if (!plus) {
        if (peek(p) == '.') {
            p = skip(p + 1, kDigit);
            size = p - start_;
            real = true;
        }
        // An exponent without digits is none: the match ends before it.
        if (peek(p) == 'E' || *p == 'e') {
            ++p;
            if (peek(p) == '+' || *p == '-') ++p;
            if (isA(peek(p), kDigit)) {
                p = skip(p, kDigit);
                size = p - start_;
                real = true;
            }
        }
    }
    cursor_ = start_ + size;
    if (real) {
        value_->real = toReal(start_, cursor_);
        return Token::REAL_CONST;
    }
    value_->integer = toInt(start_, cursor_);
    return Token::INT_CONST;
}

// A string constant of an exact scan: from the apostrophe that opens it to the next one that is
// neither doubled nor the character of an `\S\`.
int Scanner::scanExactString() {
    string_.clear();
    std::size_t checked = 0;  // no escape of string_ reaches beyond this place
    bool damaged = false;
    bool warned = false;
    cursor_ = start_ + 1;
    advance();
    const auto take = [this](std::size_t count) {
        string_.append(start_, count);
        cursor_ = start_ + count;
        advance();
    };
    for (;;) {
        start_ = cursor_;
        const char* p = start_;
        while (isA(*p, kExactPlain)) ++p;
        if (p != start_) {
            take(static_cast<std::size_t>(p - start_));
            start_ = p;
        }
        switch (*p) {
            case '\'':
                checked = skipText(string_, checked);
                if (checked > string_.size()) {
                    take(1);
                } else if (peek(++p) == '\'') {
                    take(2);
                } else {
                    cursor_ = start_ + 1;
                    advance();
                    value_->text = damaged ? "'" + string_ + "'" : string_;
                    return damaged ? Token::UNREADABLE : Token::STR_CONST;
                }
                checked = string_.size();
                break;
            case '\\':
                take(1);
                break;
            case '\r':
                cursor_ = start_ + 1;
                advance();
                break;
            case '\n':
                countLines();
                start_ = cursor_;
                if (!warned && holdsRecord()) {
                    warned = true;
                    const std::wstring line = std::to_wstring(location_->end.line);
                    message((L"line " + line +
                             L": a record stands in a string: an apostrophe is missing before it")
                                .c_str());
                }
                break;
            default:
                if (p == limit_) {
                    if (more(p)) break;
                    return fail(L"EOF in string constant");
                }
                damaged = true;  // a NUL
                take(1);
        }
    }
}

// Does a line within a string begin like a record?
bool Scanner::holdsRecord() {
    const char* p = start_;
    if (peek(p) != '#') return false;
    ++p;
    if (!isA(peek(p), kDigit)) return false;
    p = skip(skip(p, kDigit), kBlank);
    const bool found = peek(p) == '=';
    cursor_ = start_;
    return found;
}

// As `matchToken`, in an exact scan.
int Scanner::matchExactToken() {
    const char c = *start_;
    if (c == '#') return matchExactReference();
    if (isA(c, kDigit) || c == '-' || c == '+') return matchExactNumber();
    if (c == '.') {
        const int token = matchEnum();
        return token != kNoToken ? token : matchExactNumber();
    }
    if (c == '"') return matchBinary();
    return isA(c, kNameChar) || c == '!' ? matchExactWord() : kNoToken;
}

// A keyword or a name.
int Scanner::matchExactWord() {
    cursor_ = skip(start_ + 1, kNameChar);
    const auto size = length();
    if (!text().starts_with("IFC")) {
        static constexpr std::pair<std::string_view, int> kKeywords[] = {
            {"ISO-10303-21", Token::ISO_BEGIN}, {"END-ISO-10303-21", Token::ISO_END},
            {"HEADER", Token::HEADER},          {"DATA", Token::DATA},
            {"ENDSEC", Token::ENDSEC},          {"FILE_DESCRIPTION", Token::FILE_DESCRIPTION},
            {"FILE_NAME", Token::FILE_NAME},    {"FILE_SCHEMA", Token::FILE_SCHEMA}};
        for (const auto& [word, token] : kKeywords) {
            if (matchFolded(word)) return token;
        }
    }
    cursor_ = start_ + size;
    value_->name = classNames_.get(text());
    return Token::IFCTYPE;
}

// Is the match `word`, in letters of either case, up to its end?
bool Scanner::matchFolded(std::string_view word) {
    const char* p = start_;
    for (const char c : word) {
        if (toUpperAscii(peek(p)) != c) return false;
        ++p;
    }
    if (isA(peek(p), kNameChar)) return false;
    cursor_ = p;
    return true;
}

int Scanner::matchExactReference() {
    const char* p = skip(start_ + 1, kDigit);
    cursor_ = p;
    if (length() == 1) return kNoToken;
    value_->integer = 0;
    if (std::from_chars(start_ + 1, p, value_->integer).ec != std::errc()) value_->integer = 0;
    return Token::REF_CONST;
}

int Scanner::matchExactNumber() {
    const char* p = start_;
    const bool plus = *p == '+';
    if (plus || *p == '-') ++p;
    auto size = p - start_;
    p = skip(p, kDigit);
    auto digits = p - start_ - size;
    bool real = false;
    if (peek(p) == '.') {
        real = true;
        size = ++p - start_;
        p = skip(p, kDigit);
        digits += p - start_ - size;
    }
    if (digits == 0) return kNoToken;
    size = p - start_;
    // An exponent without digits is none: the match ends before it.
    if (peek(p) == 'E' || *p == 'e') {
        ++p;
        if (peek(p) == '+' || *p == '-') ++p;
        if (isA(peek(p), kDigit)) {
            p = skip(p, kDigit);
            size = p - start_;
            real = true;
        }
    }
    cursor_ = start_ + size;
    const char* const first = start_ + (plus ? 1 : 0);
    value_->isInteger = !real && std::from_chars(first, cursor_, value_->integer).ec != std::errc();
    if (!real && !value_->isInteger) return Token::INT_CONST;
    value_->real = toReal(first, cursor_);
    return Token::REAL_CONST;
}

// What starts no token, `size` characters at least and the rest of what looks like one word.
int Scanner::unreadable(std::size_t size) {
    const char* p = start_ + size;
    while (peek(p) != '\0' || p != limit_) {
        if (isA(*p, kBlank | kLineFeed)) break;
        if (std::string_view(",()=;'$*/").find(*p) != std::string_view::npos) break;
        ++p;
    }
    value_->text.assign(start_, p);
    cursor_ = p;
    advance();
    return Token::UNREADABLE;
}

// Reads more; `p`, a place in the match, moves along with it.
inline bool Scanner::more(const char*& p) {
    const auto offset = p - start_;
    const bool read = refill();
    p = start_ + offset;
    return read;
}

// The character at `p`, which moves along when more has to be read; NUL at the end of input.
inline char Scanner::peek(const char*& p) {
    if (p == limit_) more(p);
    return *p;
}

inline const char* Scanner::skip(const char* p, unsigned char mask) {
    do {
        while (isA(*p, mask)) ++p;
    } while (p == limit_ && more(p));
    return p;
}

// The end of the line: its line feed, or the end of input.
const char* Scanner::skipLine(const char* p) {
    do {
        const auto* const end =
            static_cast<const char*>(std::memchr(p, '\n', static_cast<std::size_t>(limit_ - p)));
        if (end) return end;
        p = limit_;
    } while (more(p));
    return p;
}

inline void Scanner::advance() {
    unsigned& column = location_->end.column;
    column += static_cast<unsigned>(cursor_ - start_);
    if (column == 0) column = 1;
}

inline void Scanner::dropTo(const char* end) {
    cursor_ = end;
    advance();
    location_->begin = location_->end;
}

void Scanner::countLines() {
    cursor_ = skip(start_, kLineFeed);
    location_->end.line += static_cast<unsigned>(cursor_ - start_);
    location_->end.column = 1;
    location_->begin = location_->end;
}

void Scanner::message(const wchar_t* text) {
    if (std::wostream* const log = logStream()) *log << text << std::endl;
}

int Scanner::fail(const wchar_t* text) {
    message(text);
    message(L"\nERROR");
    condition_ = outside_;
    return Token::ERROR;
}

}  // namespace Ovik::IfcParser
