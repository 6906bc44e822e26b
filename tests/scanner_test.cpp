// The scanner: tokens, values, messages and places for all rules.
#include "ovik/parser/scanner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <span>
#include <sstream>
#include <string>

#include "tests/parsing.h"

namespace {

using namespace Ovik::IfcParser;
using OvikTest::TempLog;

// The tokens of a text, one word each, up to the end of input.
std::string tokens(const std::string& text, Ovik::ErrLog* log = nullptr, bool places = false,
                   bool exact = false) {
    std::istringstream in(text);
    OvikTest::Recorder output;
    output.isExact = exact;
    Scanner scanner(&in, log, &output);
    TokenValue value;
    Location location;
    scanner.setTarget(&value, &location);
    std::string result;
    const auto add = [&](const std::string& word) {
        result += (result.empty() ? "" : " ") + word;
        if (places) result += "@" + toString(location);
    };
    while (const int token = scanner.yylex()) {
        switch (token) {
            case Token::STR_CONST:
                add("'" + value.text + "'");
                break;
            case Token::BINARY:
                add("bin:" + value.text);
                break;
            case Token::INT_CONST:
                add("int:" + std::to_string(value.integer));
                break;
            case Token::REF_CONST:
                add("ref:" + std::to_string(value.integer));
                break;
            case Token::REAL_CONST: {
                std::ostringstream number;
                number.imbue(std::locale::classic());
                number.precision(17);
                number << value.real;
                add((value.isInteger ? "wide:" : "real:") + number.str());
                break;
            }
            case Token::BOOL_CONST:
                add(value.boolean ? "bool:1" : "bool:0");
                break;
            case Token::ENUM:
                add("enum:" + value.name->text);
                value.name->release();
                break;
            case Token::IFCTYPE:
                add("type:" + value.name->text);
                value.name->release();
                break;
            case Token::UNREADABLE:
                add("?" + value.text);
                break;
            case Token::ERROR:
                add("ERROR");
                break;
            case Token::REF_NIL:
                add("$");
                break;
            case Token::DERIVED:
                add("*");
                break;
            default:
                add(std::to_string(token));
        }
    }
    EXPECT_EQ(scanner.yylex(), 0);
    EXPECT_EQ(scanner.bytesRead(), static_cast<double>(text.size()));
    return result;
}

struct Case {
    std::string text;
    std::string tokens;
    std::string log = {};
};

const std::string kNul(1, '\0');
const std::string kError = "\n\nERROR\n";

const Case kCases[] = {
    // Words have no boundaries and one case.
    {"ISO-10303-21;END-ISO-10303-21;", "273 271 274 271"},
    {"HEADER DATA ENDSEC FILE_DESCRIPTION FILE_NAME FILE_SCHEMA", "275 280 276 277 278 279"},
    {"HEADERX xDATAENDSECDATA header Data", "275 280 276 280"},
    {"ISO-10303-2 END-ISO ENDSE HEADE FILE_ DAT", "int:-10303 int:-2"},
    {"( ) , ; = $ *", "269 270 268 271 281 $ *"},
    {"IFCWALL IFC IFC_ IFCa1 ifcwall xIFCx#Ifc IFCIFC",
     "type:IFCWALL type:IFC_ type:IFCa1 "
     "type:IFCx type:IFCIFC"},
    // What starts nothing vanishes.
    {"", ""},
    {" \t\r\v@&!%[]{}<>?:~`^|_abcXYZ", ""},
    {"# . \" - + / \\", ""},
    {kNul + "1" + kNul +
         "\x80\xFF"
         "2",
     "int:1 int:2"},
    // Numbers.
    {"12 -12 +12 0 -0 +0", "int:12 int:-12 int:12 int:0 int:0 int:0"},
    {"007 -01", "int:0 int:0 int:7 int:0 int:1"},
    {"+1.5", "int:1 int:5"},
    {"1. -1. 1.5 0.5 00.5 .5", "real:1 real:-1 real:1.5 real:0.5 int:0 real:0.5 int:5"},
    {"1E5 1e-5 1.E+2 1.25E2 -0.E0",
     "real:100000 real:1.0000000000000001e-05 real:100 real:125 "
     "real:-0"},
    {"1E 1E+ 1.5E- 2.e 1ENDSEC 1.ENDSEC", "int:1 int:1 real:1.5 real:2 int:1 276 real:1 276"},
    {"+1E5 --1 1-1", "int:1 int:5 int:-1 int:1 int:-1"},
    {"2147483647 2147483648 4294967297 -2147483649",
     "int:2147483647 int:-2147483648 int:1 "
     "int:2147483647"},
    {"99999999999999999999 -99999999999999999999", "int:-1 int:0"},
    {"1E400 -1E400 1E-400 -1E-400", "real:inf real:-inf real:0 real:-0"},
    {"0.0E999999999999999999999 0.001E99999999999999999999 1.E-99999999999999999999",
     "real:0 real:inf real:0"},
    {"4.9E-324 1.7976931348623157E308 0.1",
     "real:4.9406564584124654e-324 real:1.7976931348623157e+308 real:0.10000000000000001"},
    // References, words in dots, binaries.
    {"#1 #0 #007 #12345678 #-1 ##2", "ref:1 int:0 int:0 int:0 int:7 ref:12345678 int:-1 ref:2"},
    {"#2147483648", "ref:-2147483648"},
    {".T. .F. .U. .TRUE. .t. .NOT_1. .1.",
     "bool:1 bool:0 enum:U enum:TRUE enum:t enum:NOT_1 "
     "enum:1"},
    {".. .A .A B. .A-B. .T.F.", "bool:1"},
    {"\"0\" \"1aBcF\" \"3\" \"4\" \"\" \"0G\" \"0",
     "bin:\"0 bin:\"1aBcF bin:\"3 int:4 int:0 int:0"},
    // Strings: the doubled apostrophe and the directives stay, plain escapes are resolved.
    {"'' '''' 'a''b' 'a' 'b'", "'' '''' 'a''b' 'a' 'b'"},
    {"'#1=IFCWALL(.T.,/*x*/;\t\r\"0\"'", "'#1=IFCWALL(.T.,/*x*/;\t\r\"0\"'"},
    {"'\xC3\xA4\xFF'", "'\xC3\xA4\xFF'"},
    {"'a\nb\n\n\nc'", "'abc'"},
    {R"('\\' '\'' '\n\t\b\f' '\q')", "'\\' ''' '\n\t\b\f' 'q'"},
    {R"('\S\D' '\S\'' '\S\\' '\X\E4' '\X\e4')", R"('\S\D' '\S\'' '\S\\' '\X\E4' '\X\e4')"},
    {R"('\X2\00E4\X0\' 'a\X2\00e400FC\X0\b')", R"('\X2\00E4\X0\' 'a\X2\00e400FC\X0\b')"},
    // Directives cut short or unknown lose their letter and leave the escape open.
    {R"('\X\4G')", R"('\4G')"},
    {R"('\X4\a')", "'4a'"},
    {R"('\X2\00E\X0\a')", "'200E0a'"},
    {R"('\PA\ b')", "'PA b'"},
    {"'\\S\\\n'", "'\\'"},
    {"'\\Sx' '\\S' '", "'x' '' '"},
    // After a backslash tokens of two characters and more come out, and the escape stays open.
    {"'\\12 '", "int:12 ' '"},
    {"'a\\HEADER#5.X.b'", "275 ref:5 enum:X 'a\b'"},
    {"'\\1' '\\;' '\\*/' '\\.' '\\#' '\\-'", "'1' ';' '*/' '.' '#' '-'"},
    {"'\\1.5IFCX\"0\"+2''", "real:1.5 type:IFCX bin:\"0 int:2 '''"},
    {"'a\\\nb' 'a\\\n\nnb'", "'a\nb' 'a\nb'"},
    {"'\\\x80'", "'\x80'"},
    // Nulls in strings.
    {"'a" + kNul + "b' 1 'c' 2\n3", "ERROR int:2 int:3",
     "String contains null character." + kError},
    {"'a" + kNul + "b\n" + kNul + "c\n'1", "'abc' int:1"},
    {"'a\\" + kNul + "b' 1\n\n\n2", "ERROR int:2",
     "String contains escaped null character." + kError},
    {"'\\S\\" + kNul + "'", "'\\S\\" + kNul + "'"},
    // Ends of input.
    {"1'abc", "int:1 ERROR", "EOF in string constant" + kError},
    {"'abc\\", "ERROR", "EOF in string constant" + kError},
    {"'abc" + kNul, "ERROR", "EOF in string constant" + kError},
    {"1/*abc", "int:1 ERROR", "EOF in comment\n"},
    {"/*", "ERROR", "EOF in comment\n"},
    // Comments: an opening mark counts only where a match starts.
    {"1/**/2/***/3/*/*/4*/*/5", "int:1 int:2 int:3 int:5"},
    {"/* 'a */ 1 /* \xFF" + kNul + ";* */ 2", "int:1 int:2"},
    {"/* a /* b */ c */ 1", "ERROR int:1", "Unmatched */\n"},
    {"/* a\n/* b */ c */ 1", "int:1"},
    {"/*/*\n/**/*/ 7 */ 1", "int:1"},
    {"/*\n\n\n*/1", "int:1"},
    {"*/1 * /", "ERROR int:1 *", "Unmatched */\n"},
};

// Exact scans.
const Case kExactCases[] = {
    // A string ends where the standard says, and comes as it stands there.
    {"'' '''' 'a''b' 'a'\n'b'", "'' '''' 'a''b' 'a' 'b'"},
    {R"('C:\\dir\\' 'C:\dir\' '\\' '\n\\n\')", R"('C:\\dir\\' 'C:\dir\' '\\' '\n\\n\')"},
    {R"('\S\'' '\S\\' 'a\S\'''b' '\\S\' 1)", R"('\S\'' '\S\\' 'a\S\'''b' '\\S\' int:1)"},
    {R"('\PA\\S\'' '\PA\S\' '\PJ\\S\' 1)", R"('\PA\\S\'' '\PA\S\' '\PJ\\S\' int:1)"},
    {R"('\X\e4\X2\00E4\X0\\X4\0001F600\X0\\N\\F\')",
     R"('\X\e4\X2\00E4\X0\\X4\0001F600\X0\\N\\F\')"},
    {R"('\X2\00E4\X0\S\' '\X2\00E4\S\'' 1)", R"('\X2\00E4\X0\S\' '\X2\00E4\S\'' int:1)"},
    {"'a\nb\r\nc\rd\n' '\\S\n\\\r\n''", "'abcd' '\\S\\''"},
    {"'\x80\t\xFF;#1=IFCA(/*'", "'\x80\t\xFF;#1=IFCA(/*'"},
    {"'a" + kNul + "b' 1", "?'a" + kNul + "b' int:1"},
    {"'abc\\S\\'", "ERROR", "EOF in string constant" + kError},
    {"'a\n#12 =\n#13='\n'#1\n#2'", "'a#12 =#13=' '#1#2'",
     "line 2: a record stands in a string: an apostrophe is missing before it\n"},
    // Numbers are what they look like.
    {"+1.5 -.5 .5 5. 1.E5 1E5 +1.e+2 00.5 1E400",
     "real:1.5 real:-0.5 real:0.5 real:5 real:100000 real:100000 real:100 real:0.5 real:inf"},
    {"12 007 -007 +7 +0 0000000000000000000012", "int:12 int:7 int:-7 int:7 int:0 int:12"},
    {"2147483647 2147483648 -2147483648 -2147483649 +99999999999999999999",
     "int:2147483647 wide:2147483648 int:-2147483648 wide:-2147483649 wide:1e+20"},
    {"#7 #007 #0 #2147483647 #2147483648 #99999999999",
     "ref:7 ref:7 ref:0 ref:2147483647 ref:0 ref:0"},
    {"12abc 1.2.3 .5. 1E 1E+,-- + . # #x",
     "int:12 type:abc real:1.2 real:0.29999999999999999 enum:5 int:1 type:E int:1 "
     "type:E ?+ 268 ?-- ?+ ?. ?# ?#x"},
    // Whole words of either case.
    {"IFCWALL IfcWall ifcwall WALL _x !USER IFC",
     "type:IFCWALL type:IfcWall type:ifcwall type:WALL type:_x type:!USER type:IFC"},
    {"ISO-10303-21;Iso-10303-21 END-ISO-10303-21;ISO-10303-2",
     "273 271 273 274 271 type:ISO int:-10303 int:-2"},
    {"HEADER header DATA ENDSEC FILE_DESCRIPTION FILE_NAME FILE_SCHEMA",
     "275 275 280 276 277 278 279"},
    {"HEADERX xDATA ENDSECDATA END", "type:HEADERX type:xDATA type:ENDSECDATA type:END"},
    {".T. .t. .f. .u. .TRUE.", "bool:1 bool:1 bool:0 enum:u enum:TRUE"},
    {"\"0aB\" \"4A\" \"\" \"0G\",\"0", "bin:\"0aB ?\"4A\" ?\"\" ?\"0G\" 268 ?\"0"},
    // Nothing but blanks vanishes.
    {"1\t\v\f\r2@b@ c@,@(\x80" + kNul + "1)&'x'/ %$",
     "int:1 int:2 ?@b@ type:c ?@ 268 ?@ 269 ?\x80" + kNul + "1 270 ?& 'x' ?/ ?% $"},
    {"( ) , ; = $ * */ 1", "269 270 268 271 281 $ * ?*/ int:1"},
    {"/* a /* b */ 1 /*\n/*\n*/ 2 */ 3 /**/4/***/5", "int:1 int:2 ?*/ int:3 int:4 int:5"},
    {"1/*abc*", "int:1 ERROR", "EOF in comment\n"},
};

TEST(Scanner, Rules) {
    for (const bool exact : {false, true}) {
        for (const Case& c : exact ? std::span<const Case>(kExactCases) : kCases) {
            TempLog log;
            EXPECT_EQ(tokens(c.text, &log.log, false, exact), c.tokens) << c.text;
            EXPECT_EQ(log.text(), c.log) << c.text;
        }
    }
}

// The buffer's end may fall anywhere in a token.
TEST(Scanner, TokensAcrossBufferEnds) {
    constexpr std::size_t kReadSize = 8192;
    for (const bool exact : {false, true}) {
        for (const Case& c : exact ? std::span<const Case>(kExactCases) : kCases) {
            for (std::size_t before = 0; before <= c.text.size(); ++before) {
                const std::string blanks(kReadSize - before, ' ');
                ASSERT_EQ(tokens(blanks + c.text, nullptr, false, exact), c.tokens)
                    << c.text << " split at " << before;
            }
        }
    }
}

TEST(Scanner, LongTokens) {
    for (const std::size_t size : {1023u, 1024u, 1025u, 5000u, 8191u, 16384u, 100000u}) {
        std::string digits;
        for (std::size_t i = 0; i < size; ++i) digits += static_cast<char>('0' + i % 10);
        EXPECT_EQ(tokens("'" + digits + "'"), "'" + digits + "'");
        EXPECT_EQ(tokens("'" + digits + "''" + digits + "'"), "'" + digits + "''" + digits + "'");
        EXPECT_EQ(tokens("\"0" + digits + "\""), "bin:\"0" + digits);
        EXPECT_EQ(tokens("." + digits + "."), "enum:" + digits);
        EXPECT_EQ(tokens("IFC" + digits + ";"), "type:IFC" + digits + " 271");
        EXPECT_EQ(tokens("/*" + digits + "*/ 1 " + std::string(size, '\n') + "2"), "int:1 int:2");
        const std::string zeros(size, '0');
        EXPECT_EQ(tokens("0." + zeros + "1E" + std::to_string(size + 1)), "real:1");
        const std::string directive = "\\X2\\" + std::string(size * 4, 'A') + "\\X0\\";
        EXPECT_EQ(tokens("'" + directive + "'"), "'" + directive + "'");
    }
    // Nulls that the rest of the line doesn't turn into an error must not cost a look at it each.
    EXPECT_EQ(tokens("'" + std::string(1'000'000, '\0') + "\n'"), "''");
}

// A place ends with the token and begins where the last dropped character or line end left it.
TEST(Scanner, Places) {
    const std::pair<const char*, const char*> cases[] = {
        {"12;(", "int:12@1.1-2 271@1.1-3 269@1.1-4"},
        {"  12 ;", "int:12@1.3-4 271@1.6"},
        {"\n\n\t(;", "269@3.2 271@3.2-3"},
        {"(\r\n;", "269@1.1 271@2.1"},
        {"'ab'(", "'ab'@1.1-4 269@1.1-5"},
        {"'a\nb'(", "'ab'@2.1-2 269@2.1-3"},
        {"'a\\\nb'", "'a\nb'@2.1-2"},
        {"'a\\Xnb'", "'a\nb'@1.5-7"},
        {"/*a\n*b*/(", "269@2.1-5"},
        {"(/*a*/(", "269@1.1 269@1.1-7"},
        {"'abc\n", "ERROR@2.1"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(tokens(text, nullptr, true), expected);
    // Escaped nulls swallow lines without counting them.
    EXPECT_EQ(tokens("'\\" + kNul + "a\n\n(", nullptr, true), "ERROR@1.1-6 269@1.1-7");
    EXPECT_EQ(toString({{nullptr, 12, 1}, {nullptr, 13, 10}}), "12.1-13.9");
    EXPECT_EQ(toString({{nullptr, 12, 5}, {nullptr, 12, 5}}), "12.5-4");
}

// One name per spelling and pool; it may outlive the scanner.
TEST(Scanner, Names) {
    PooledName* names[4] = {};
    {
        std::istringstream in("IFCA .IFCA. IFCA .IFCA.");
        Scanner scanner(&in, nullptr, nullptr);
        TokenValue value;
        Location location;
        scanner.setTarget(&value, &location);
        for (PooledName*& name : names) {
            scanner.yylex();
            name = value.name;
        }
        EXPECT_EQ(names[0], names[2]);
        EXPECT_EQ(names[1], names[3]);
        EXPECT_NE(names[0], names[1]);
        EXPECT_EQ(names[0]->refCount, 3u);
    }
    EXPECT_EQ(names[0]->refCount, 2u);
    EXPECT_EQ(names[0]->text, "IFCA");
    for (PooledName* name : names) name->release();
}

TEST(Scanner, SwitchesBuffers) {
    std::istringstream first("1 2"), second("3 4"), third("5");
    Scanner scanner(&first, nullptr, nullptr);
    TokenValue value;
    Location location;
    scanner.setTarget(&value, &location);
    const auto next = [&] { return scanner.yylex() == Token::INT_CONST ? value.integer : 0; };
    EXPECT_EQ(next(), 1);
    FlexLexer::Buffer* const other = scanner.createBuffer(&second, 8);
    scanner.switchToBuffer(other);
    EXPECT_EQ(next(), 3);
    scanner.deleteBuffer(other);
    EXPECT_EQ(next(), 2);
    EXPECT_EQ(next(), 0);
    scanner.switchStreams(&third, nullptr);
    EXPECT_EQ(next(), 5);
    EXPECT_EQ(next(), 0);
}

// A stream that breaks while it is read.
class BrokenBuffer : public std::streambuf {
    int_type underflow() override { throw std::runtime_error("broken"); }
};

TEST(ScannerDeathTest, FatalErrors) {
    BrokenBuffer broken;
    std::istream in(&broken);
    Scanner scanner(&in, nullptr, nullptr);
    TokenValue value;
    Location location;
    scanner.setTarget(&value, &location);
    EXPECT_EXIT(scanner.yylex(), testing::ExitedWithCode(2), "^input in flex scanner failed\n$");
    EXPECT_EXIT(scanner.yyFlexLexer::yylex(), testing::ExitedWithCode(2),
                "^yyFlexLexer::yylex invoked but %option yyclass used\n$");
}

}  // namespace
