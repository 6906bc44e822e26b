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

std::string file(const std::string& data, const std::string& schema = "IFC4") {
    return "ISO-10303-21;HEADER;FILE_DESCRIPTION(('d'),'2;1');FILE_NAME('n');FILE_SCHEMA(('" +
           schema + "'));ENDSEC;DATA;\n" + data + "\nENDSEC;END-ISO-10303-21;\n";
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
    const std::string one = file("#1=IFCA();");
    const Case cases[] = {
        {one, true, ""},
        {file("#1=IFCA();\n#2=IFCA(;"), true,
         "Parser Error at 3.1-9: syntax error\nLine discarded\n"},
        {file("#5=IFCA();#6=IFCA();#5=IFCB();#7=IFCA();"), false, "Duplicate data with id #5\n"},
        {file("#9=IFCA();#5=IFCA();#7=IFCB();#9=IFCA();"), false, "Duplicate data with id #9\n"},
        {one.substr(0, one.size() - 18), false, "Parser Error at 3.1-7: syntax error\n"},
        {file(""), false, "Parser Error at 3.1-6: syntax error\nLine discarded\nLine discarded\n"},
        {file("#1=2;"), true, "Parser Error at 2.1-4: syntax error\nLine discarded\n"},
        {"IFC", false, "Parser Error at 1.4-3: syntax error\n"},
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
        std::string report;
        bool ignoreHeader = false;
        double tolerance = 0.001;
    };
    const std::string is = " is different";
    const std::string one = file("#7=IFCA(1,'x',3,(1.0));");
    const Case cases[] = {
        {one, one, ""},
        {one, one,
         "\nDouble" + is + "\nList item 0" + is + "\nList item 3" + is + "\nData list" + is +
             "\nData item #7" + is,
         false, 0},
        {one, file("#7=IFCA(1,'x',3,(1.0005));"), ""},
        {one, file("#7=IFCA(1,'x',4,(1.0));"),
         "\nInt value" + is + "\nList item 2" + is + "\nData list" + is + "\nData item #7" + is},
        {one, file("#8=IFCA(1,'x',3,(1.0));"), "\nData reference" + is + "\nData item #7" + is},
        {one, file("#7=IFCB(1,'x',3,(1.0));"), "\nData class name" + is + "\nData item #7" + is},
        {one, file("#7=IFCA(1,'x',3,(1.0));#8=IFCA();"), "\nList size" + is},
        {file("#1=IFCA();", "IFC4"), file("#1=IFCB();", "IFC2X3"),
         "\nString value" + is + "\nList item 0" + is + "\nList item 0" + is + "\nFILE_SCHEMA" +
             is + "\nHEADER" + is},
        {file("#1=IFCA();", "IFC4"), file("#1=IFCA();", "IFC2X3"), "", true},
        {file("#1=2;"), file("#1=2;"), ""},
        {file("#1=2;"), file("#1=IFCA();"), "\nList size" + is},
        // The order of the lines doesn't count.
        {file("#1=IFCA();#2=IFCB();#30=IFCC();"), file("#30=IFCC();#1=IFCA();#2=IFCB();"), ""},
    };
    for (const Case& c : cases) {
        IfcParsedStream a, b;
        read(a, c.a);
        read(b, c.b);
        std::ostringstream report;
        EXPECT_EQ(a.isEqualTo(b, &report, c.tolerance, c.ignoreHeader), c.report.empty());
        EXPECT_EQ(report.str(), c.report);
        EXPECT_EQ(a.isEqualTo(b, nullptr, c.tolerance, c.ignoreHeader), c.report.empty());
    }
    // An invalid stream equals nothing, not even another; a copy shares what it was made from.
    IfcParsedStream valid, invalid;
    read(valid, one);
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

class Meter final : public Ovik::ProgressMeter {
 public:
    std::string calls;
    void start(std::uint64_t total) override { calls += "start " + std::to_string(total); }
    void finish() override { calls += " finish"; }
    void progress(std::uint64_t position) override { calls += " " + std::to_string(position); }
};

TEST(ParsedStream, Progress) {
    std::string text = file("#1=IFCA();" + std::string(10'000, ' ') + "#2=IFCA();");
    const std::string size = std::to_string(text.size());
    for (const bool damaged : {false, true}) {
        Meter meter;
        IfcParsedStream stream;
        const TempFile input(damaged ? text.substr(0, text.size() - 10) : text);
        stream.read(input.path, nullptr, &meter);
        const std::string total = std::to_string(text.size() - (damaged ? 10 : 0));
        EXPECT_EQ(meter.calls, "start " + total + " 8192 " + total + " finish");
    }
    Meter meter;
    IfcParsedStream stream;
    EXPECT_THROW(stream.read(L"/no/such/file", nullptr, &meter), std::string);
    EXPECT_EQ(meter.calls, "");
}

}  // namespace
