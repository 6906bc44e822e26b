// Whole files as items: what makes them valid, and what a comparison tells.
#include "ovik/parser/parsedstream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "ovik/parser/fileoutput.h"
#include "ovik/parser/items.h"
#include "tests/parsing.h"

namespace {

using Ovik::IfcParsedStream;
using OvikTest::TempFile;
using OvikTest::TempLog;

std::string file(const std::string& data) {
    return OvikTest::kHead + data + "\n" + OvikTest::kTail;
}

bool read(IfcParsedStream& stream, const std::string& text, std::string* logged = nullptr) {
    const TempFile input(text);
    TempLog log;
    const bool valid = stream.read(input.path, &log.log, nullptr);
    EXPECT_EQ(valid, stream.isValid());
    if (logged) *logged = log.text();
    return valid;
}

TEST(ParsedStream, Validity) {
    const int before = Ovik::IfcParser::liveItems;
    struct Case {
        std::string text;
        bool valid;
        std::string log;
    };
    const std::string error = "Parser Error at ", syntax = ": syntax error\n",
                      discarded = "Line discarded\n";
    const Case cases[] = {
        {file("#1=IFCA();\n#2=IFCA(;"), true, error + "9.1-9" + syntax + discarded},
        {file("#5=IFCA();#6=IFCA();#5=IFCB();#7=IFCA();"), false, "Duplicate data with id #5\n"},
        {file("#9=IFCA();#5=IFCA();#7=IFCB();#9=IFCA();"), false, "Duplicate data with id #9\n"},
        {OvikTest::kHead + "#1=IFCA();ENDSEC;", false, error + "8.1-17" + syntax},
        {file(""), false, error + "9.1-6" + syntax + discarded + discarded},
        {file("#1=2;"), true, error + "8.1-4" + syntax + discarded},
    };
    for (const Case& c : cases) {
        IfcParsedStream stream;
        std::string log;
        EXPECT_EQ(read(stream, c.text, &log), c.valid) << c.text;
        EXPECT_EQ(log, c.log) << c.text;
    }
    EXPECT_LE(Ovik::IfcParser::liveItems, before + 4);  // the shared ones
}

TEST(ParsedStream, UnreadableFiles) {
    IfcParsedStream stream;
    const auto failure = [&](const auto& path) -> std::string {
        EXPECT_TRUE(read(stream, file("#1=IFCA();")));
        try {
            stream.read(path, nullptr, nullptr);
        } catch (const std::string& message) {
            EXPECT_FALSE(stream.isValid());
            return message;
        }
        return "read";
    };
    EXPECT_EQ(failure(L"/no/such/file"), "Unable to open file");
    EXPECT_EQ(failure(std::filesystem::path("/no/such/file")), "Unable to open file");
    EXPECT_EQ(failure(std::filesystem::temp_directory_path()), "Unable to open file");
}

TEST(ParsedStream, Comparison) {
    struct Case {
        std::string a, b;
        std::string report;  // each line of it without the words of `is` and the line feed
        double tolerance = 0.001;
    };
    // Lists of one item in an item #7.
    const std::string in0 = "List item 0|Data list|Data item #7";
    const Case lists[] = {
        {"1", "1", "", 0},
        {"1", "2", "Int value|" + in0, 9},
        {"'a'", "'ab'", "String value|" + in0},
        {"\"0F\"", "\"0f\"", "Binary value|" + in0},
        {"1.", "1.", "Double|" + in0, 0},
        {"1.", "1.", "", 1e-300},
        {"1.", "1.0005", ""},
        {"1.002", "1.", "Double|" + in0},
        {"2.", "1.", "Double|" + in0, 1},
        {"1E400", "1E400", "Double|" + in0, 1},
        {".T.", ".F.", "Bool value|" + in0},
        {".A.", ".B.", "Enum value|" + in0},
        {"$", "#3", "Reference value|" + in0},
        {"IFCA(1)", "IFCB(2)", "Type of choice value|" + in0},
        {"IFCA(1)", "IFCA(2)", "Int value|Choice value|" + in0},
        {"", "", ""},
        {"", "1", "List size|Data list|Data item #7"},
        {"1,1", "2", "List size|Data list|Data item #7"},
        {"(1,(2))", "(1,(()))", "Type of list item|List item 0|List item 1|" + in0},
    };
    const std::string one = "#7=IFCA(1);";
    std::vector<Case> cases = {
        {one, "#8=IFCA(1);", "Data reference|Data item #7"},
        {one, "#7=IFCB(1);", "Data class name|Data item #7"},
        {one, one + "#8=IFCA();", "List size"},
        {"#1=2;", "#1=2;", ""},
        {"#1=2;", one, "List size"},
        // The order of the lines doesn't count.
        {"#1=IFCA();#2=IFCB();#30=IFCC();", "#30=IFCC();#1=IFCA();#2=IFCB();", ""},
    };
    const auto addList = [&](const Case& c) {
        cases.push_back({"#7=IFCA(" + c.a + ");", "#7=IFCA(" + c.b + ");", c.report, c.tolerance});
    };
    for (const Case& c : lists) addList(c);
    // Items of two kinds are different, and of one kind equal if they are spelled alike.
    const std::string kinds[] = {"'a'", "\"0F\"", "1", "1.",      ".T.",
                                 ".A.", "#3",     "*", "IFCA(1)", "(1)"};
    for (const std::string& a : kinds) {
        for (const std::string& b : kinds) {
            addList({a, b, a == b ? "" : "Type of list item|" + in0});
        }
    }
    for (const Case& c : cases) {
        std::string expected;
        std::istringstream lines(c.report);
        for (std::string line; std::getline(lines, line, '|');) {
            expected += "\n" + line + " is different";
        }
        IfcParsedStream a, b;
        read(a, file(c.a));
        read(b, file(c.b));
        std::ostringstream report;
        EXPECT_EQ(a.isEqualTo(b, &report, c.tolerance, false), c.report.empty());
        EXPECT_EQ(report.str(), expected);
        EXPECT_EQ(a.isEqualTo(b, nullptr, c.tolerance, false), c.report.empty());
    }

    std::string other = file(one);
    other.replace(other.find("IFC4"), 4, "IFC5");
    IfcParsedStream valid, invalid, header;
    read(valid, file(one));
    read(header, other);
    EXPECT_TRUE(valid.isEqualTo(header, nullptr, 1, true));
    std::ostringstream differences;
    EXPECT_FALSE(valid.isEqualTo(header, &differences, 1, false));
    EXPECT_EQ(differences.str(),
              "\nString value is different\nList item 0 is different\nList item 0 is different"
              "\nFILE_SCHEMA is different\nHEADER is different");
    // An invalid stream equals nothing, not even another; a copy shares what it was made from.
    std::ostringstream report;
    EXPECT_FALSE(valid.isEqualTo(invalid, &report, 1, true));
    EXPECT_FALSE(invalid.isEqualTo(invalid, &report, 1, true));
    EXPECT_EQ(report.str(), "");
    invalid = valid;
    EXPECT_TRUE(invalid.isEqualTo(valid, nullptr, 1, false));
}

TEST(ParsedStream, OrderOfNumbers) {
    std::vector<int> numbers(5'000);
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<int>(i * 3 + 1);
    const auto lines = [&] {
        std::string text;
        for (const int n : numbers)
            text += "#" + std::to_string(n) + "=IFCA(" + std::to_string(n) + ");\n";
        return text;
    };
    IfcParsedStream ascending, descending, shuffled;
    ASSERT_TRUE(read(ascending, file(lines())));
    std::reverse(numbers.begin(), numbers.end());
    ASSERT_TRUE(read(descending, file(lines())));
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    ASSERT_TRUE(read(shuffled, file(lines())));
    EXPECT_TRUE(descending.isEqualTo(ascending, nullptr, 0, false));
    EXPECT_TRUE(shuffled.isEqualTo(ascending, nullptr, 0, false));
    for (const std::size_t i : {std::size_t{0}, numbers.size() / 2, numbers.size() - 1}) {
        std::string log;
        const std::string number = std::to_string(numbers[i]);
        EXPECT_FALSE(read(shuffled, file(lines() + "#" + number + "=IFCA();"), &log));
        EXPECT_EQ(log, "Duplicate data with id #" + number + "\n");
    }
}

}  // namespace
