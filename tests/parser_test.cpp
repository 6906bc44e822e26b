// The parser: what it hands over, what it reports, and what becomes of damaged files.
#include "ovik/parser/parser.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/parsing.h"

namespace {

using namespace Ovik::IfcParser;
using OvikTest::kDepth;
using OvikTest::kHead;
using OvikTest::kTail;
using OvikTest::Recorder;
using OvikTest::TempLog;

const std::string kHeader = "header((''),'2;1')('n')(('IFC4')) ";

struct Outcome {
    std::string calls;
    std::string log;
    int result;
};

Outcome parse(const std::string& text, Recorder output = {}) {
    std::istringstream in(text);
    TempLog log;
    Scanner scanner(&in, &log.log, &output);
    Parser parser(scanner);
    const int result = parser.parse();
    return {output.calls, log.text(), result};
}

std::string error(const std::string& place) {
    return "Parser Error at " + place + ": syntax error\n";
}
const std::string kDiscarded = "Line discarded\n";
const std::string kReplaced = "Trying to recover wrong syntax: missing item is replaced with NIL\n";

TEST(Parser, Items) {
    const int before = liveItems;
    const std::pair<const char*, const char*> cases[] = {
        {"()", "()"},
        {"('a' 'b'\n'c',1,1.5,#7,$,*,.T.,.F.,.U.,\"0F\")",
         "('abc',1,1.5,#7,$,*,.T.,.F.,.U.,\"0F\")"},
        {"((),((1),(2,(*))),())", "((),((1),(2,(*))),())"},
        {"(IFCA('x' 'y'),IFCB(()),IFCC((1,IFCD($))),IFCE((*)))",
         "(IFCA('xy'),IFCB(()),IFCC((1,IFCD($))),IFCE((*)))"},
        {"(/*a*/1/**/,\n/*;*/2)", "(1,2)"},
        {"('a;'';','b')", "('a;'';','b')"},
        // A name in lower case vanishes, and its parentheses are a list.
        {"(ifclabel('x'))", "(('x'))"},
    };
    for (const auto& [text, expected] : cases) {
        const Outcome run = parse(kHead + "#1=IFCA" + text + ";" + kTail);
        EXPECT_EQ(run.calls, kHeader + "#1IFCA" + expected + " end") << text;
        EXPECT_EQ(run.log, "") << text;
        EXPECT_EQ(run.result, 0) << text;
    }
    EXPECT_LE(liveItems, before + 4);  // the shared ones
}

// Each of these lines is dropped alone: the items around it come through.
TEST(Parser, DiscardedLines) {
    const std::pair<const char*, const char*> cases[] = {
        {"#1=(IFCA()IFCB());", "9.1-4"},
        {"#1=IFCA;", "9.1-8"},
        {"#1=IFCA(,1);", "9.1-9"},
        {"#1=IFCA(IFCB(IFCC(1)));", "9.1-17"},
        {"#1=IFCA(IFCB(1,2));", "9.1-15"},
        {"#1=IFCA(IFCB(*));", "9.1-14"},
        {"#1=IFCA(IFCB());", "9.1-14"},
        {"#1=IFCA(IFCB(('a',.X.),2));", "9.1-23"},
        {"#1=IFCA(IFCB,2);", "9.1-13"},
        {"#1=IFCA('a',((.X.;", "9.1-18"},
        {"#1=IFCA(1)2);", "9.1-11"},
        {"#1=IFCA(1 2);", "9.11"},
        {"#1=wall();", "9.8"},
        {"1=IFCA();", "9.1"},
        {"#1IFCA();", "9.1-6"},
        {"IFCA('a');", "9.1-4"},
        {"#1=IFCA(.X.'a','b');", "9.1-14"},
        {";", "9.1"},
    };
    for (const auto& [text, place] : cases) {
        const Outcome run = parse(kHead + "#5=IFCX(1);\n" + text + "\n#6=IFCX(2);\n" + kTail);
        EXPECT_EQ(run.calls, kHeader + "#5IFCX(1) #6IFCX(2) end") << text;
        EXPECT_EQ(run.result, 0) << text;
        EXPECT_EQ(run.log, error(place) + kDiscarded) << text;
    }
}

TEST(Parser, MissingItems) {
    const std::pair<const char*, const char*> allowed[] = {
        {"(1,)", "(1,$)"}, {"(1,,2)", "(1,$,2)"}, {"((1,),,)", "((1,$),$,$)"}};
    for (const auto& [text, expected] : allowed) {
        const unsigned before = itemNil()->refCount;
        Recorder output;
        output.allowMissing = true;
        const Outcome run = parse(kHead + "#1=IFCA" + text + ";" + kTail, output);
        EXPECT_EQ(run.calls, kHeader + "#1IFCA" + expected + " end");
        // Each stand-in leaves one reference behind.
        unsigned count = 0;
        for (std::size_t at = 0; (at = run.log.find(kReplaced, at)) != std::string::npos; ++at)
            ++count;
        EXPECT_EQ(itemNil()->refCount - before, count);
        EXPECT_EQ(run.log.size(), count * kReplaced.size());
    }

    // Replaced first, and an error after.
    Recorder output;
    output.allowMissing = true;
    EXPECT_EQ(parse(kHead + "#1=IFCA(1,;#2=IFCA();" + kTail, output).log,
              kReplaced + error("8.1-11") + kDiscarded);

    // Refused: the line goes, and the elements read so far stay alive.
    const int before = liveItems;
    const Outcome run = parse(kHead + "#1=IFCA((7,8),IFCA((9,,1)));\n#2=IFCA();" + kTail);
    EXPECT_EQ(run.calls, kHeader + "#2IFCA() end");
    EXPECT_EQ(run.log, "Parser Error at 8.1-23: missing list item\n" + kDiscarded);
    EXPECT_EQ(liveItems - before, 1);
}

// A list that is complete but stands where it doesn't belong is never released.
TEST(Parser, ListsLeftBehind) {
    const std::pair<const char*, int> cases[] = {
        {"#1=IFCA(1,2)2;", 3}, {"#1=IFCA(IFCB((1,2),3));", 3}, {"#1=IFCA((1,2) 3);", 0}};
    for (const auto& [text, left] : cases) {
        const int before = liveItems;
        parse(kHead + text + kTail);
        EXPECT_EQ(liveItems - before, left) << text;
    }
}

// No second report until three tokens have been accepted after the end of the discarded line.
TEST(Parser, ErrorCounter) {
    const std::pair<const char*, std::string> cases[] = {
        {"#1=1;2;#2=IFCA();", error("8.1-4") + kDiscarded + kDiscarded},
        {"#1=1;#2 2;#2=IFCA();", error("8.1-4") + kDiscarded + kDiscarded},
        {"#1=1;#2=2;#2=IFCA();", error("8.1-4") + kDiscarded + error("8.1-9") + kDiscarded},
        {"#1=1;2;;;#2=IFCA();", error("8.1-4") + kDiscarded + kDiscarded + kDiscarded + kDiscarded},
    };
    for (const auto& [text, log] : cases) {
        const Outcome run = parse(kHead + text + kTail);
        EXPECT_EQ(run.log, log) << text;
        EXPECT_EQ(run.calls, kHeader + "#2IFCA() end") << text;
    }
}

// Outside the data section an error ends the parse.
TEST(Parser, GivesUp) {
    const std::string header = "HEADER;FILE_DESCRIPTION(());FILE_NAME(());FILE_SCHEMA(());ENDSEC;";
    const std::string start = "ISO-10303-21;";
    struct Case {
        std::string text, calls, log;
    };
    const std::string called = "header(())(())(()) ";
    const Case cases[] = {
        {"", "", error("1.1")},
        {"x\n\n", "", error("3.1")},
        {"HEADER;", "", error("1.1-6")},
        {start + "HEADER;FILE_NAME(());", "", error("1.1-29")},
        {start + "HEADER;FILE_DESCRIPTION(()) 1;", "", error("1.42")},
        {start + "HEADER;FILE_DESCRIPTION('a',.X.,(1", "", error("1.1-47")},
        {start + "HEADER;FILE_DESCRIPTION(1,);", "", "Parser Error at 1.1-40: missing list item\n"},
        {start + "HEADER;FILE_DESCRIPTION(());FILE_NAME(());FILE_SCHEMA(());\n"
                 "FILE_POPULATION(1);ENDSEC;",
         "", error("2.16")},
        {start + header + "\nDATA(1);", called, error("2.1-5")},
        {start + header + "\nANCHOR;DATA;", called, error("2.7")},
        {start + header + "DATA;\n#1=IFCA();", called + "#1IFCA() ", error("2.1-10")},
        {start + header + "DATA;\n#1=IFCA('a',.X.,(2", called, error("2.1-18")},
        {start + header + "DATA;\n#1=2;#2", called, error("2.1-4") + kDiscarded},
        {start + header + "DATA;\n#1=2;#2=IFCA('a", called,
         error("2.1-4") + kDiscarded + "EOF in string constant\n\nERROR\n" + error("2.1-15")},
        // An empty data section: the closing is taken for two bad lines.
        {start + header + "DATA;\nENDSEC;END-ISO-10303-21;", called,
         error("2.1-6") + kDiscarded + kDiscarded},
    };
    for (const Case& c : cases) {
        const Outcome run = parse(c.text);
        EXPECT_EQ(run.result, 1) << c.text;
        EXPECT_EQ(run.calls, c.calls) << c.text;
        EXPECT_EQ(run.log, c.log) << c.text;
    }
}

// The closing of the data section, and what the scanner refuses, recover like an item.
TEST(Parser, ClosingAndScannerErrors) {
    const std::string item = "#1=IFCA();\n";
    Outcome run = parse(kHead + item + "ENDSEC;\nDATA;\n#2=IFCA();\n" + kTail);
    EXPECT_EQ(run.calls, kHeader + "#1IFCA() #2IFCA() end");
    EXPECT_EQ(run.log, error("10.1-4") + kDiscarded);
    EXPECT_EQ(run.result, 0);

    run = parse(kHead + "#1=IFCA(*/1);\n#2=IFCA();\n" + kTail);
    EXPECT_EQ(run.calls, kHeader + "#2IFCA() end");
    EXPECT_EQ(run.log, "Unmatched */\n" + error("8.1-10") + kDiscarded);

    run = parse(kHead + item + "ENDSEC;\nEND-ISO-10303-2;\n");
    EXPECT_EQ(run.calls, kHeader + "#1IFCA() ");
    EXPECT_EQ(run.result, 1);

    // The output hears of the end before anything behind it is looked at.
    run = parse(kHead + item + kTail + "DATA");
    EXPECT_EQ(run.calls, kHeader + "#1IFCA() end");
    EXPECT_EQ(run.log, error("11.1-4"));
    EXPECT_EQ(run.result, 1);
}

TEST(Parser, ExceptionsOfTheOutput) {
    const std::string text = kHead + "#1=IFCA(1);\n#2=IFCA(2);\n#3=IFCA(3);\n" + kTail;
    const auto run = [&](Recorder& output, std::string& logged) {
        std::istringstream in(text);
        TempLog log;
        const bool result = parseStream(in, &log.log, &output);
        logged = log.text();
        return result;
    };
    const int before = liveItems;
    std::string logged;
    Recorder throwing;
    throwing.throwAt = 2;
    EXPECT_FALSE(run(throwing, logged));
    EXPECT_EQ(throwing.calls, kHeader + "#1IFCA(1) #2IFCA(2) ");
    EXPECT_EQ(logged, "stopped here\n");
    Recorder refusing;
    refusing.knownSchema = false;
    EXPECT_FALSE(run(refusing, logged));
    EXPECT_EQ(refusing.calls, kHeader);
    EXPECT_EQ(logged, "This schema is not supported\n");
    EXPECT_EQ(liveItems, before);

    // What gives up is no exception; neither is a log needed.
    std::istringstream broken("x");
    Recorder idle;
    EXPECT_TRUE(parseStream(broken, nullptr, &idle));
}

// Items are handed over before anything behind their semicolon is read.
TEST(Parser, PositionsOfItems) {
    Recorder output;
    std::string text = kHead;
    const std::string item = "#1=IFCA();";
    text += std::string(8192 - text.size() - item.size(), ' ') + item + item + kTail;
    std::istringstream in(text);
    parseStream(in, nullptr, &output);
    EXPECT_EQ(output.positions, (std::vector<double>{8192, static_cast<double>(text.size())}));
}

// Whatever is done to a file, the parse ends, and no item is left but those left on purpose.
TEST(Parser, SurvivesDamage) {
    const std::string good = kHead +
                             "#1=IFCA('a\\X2\\00E4\\X0\\' 'b',(1,2.5E1,$),*,IFCB(.X.),\"0F\");\n"
                             "#2=IFCC((#1,#1),IFCB((.T.,.F.)),/* c */());\n#3=IFCA(3);\n" +
                             kTail;
    const auto survives = [&](const std::string& text) {
        const int before = liveItems;
        Recorder output;
        std::istringstream in(text);
        parseStream(in, nullptr, &output);
        const std::string calls = output.calls;
        // One finished list or one list's elements for each discarded line at most.
        EXPECT_LE(liveItems - before, 24) << text;
        return calls;
    };
    const std::string all = survives(good);
    EXPECT_TRUE(all.ends_with("#3IFCA(3) end"));
    for (std::size_t i = 0; i < good.size(); ++i) {
        const std::string cut = survives(good.substr(0, i));
        EXPECT_TRUE(all.starts_with(cut)) << i;
    }
    unsigned thirdItems = 0;
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const char c : {'\0', '\'', ';', '(', '*', '\xFF'}) {
            std::string text = good;
            text[i] = c;
            thirdItems += survives(text).find("#3IFCA(3)") != std::string::npos;
        }
    }
    // Damage in the header ends the parse; elsewhere it is local but for open strings.
    EXPECT_GT(thirdItems, good.size() * 6 / 3);
}

TEST(Parser, DeepNesting) {
    const int before = liveItems;
    struct Counter : Recorder {
        int items = 0;
        void addData(int, PooledName*, ItemList* list, double) override {
            items = liveItems;
            list->release();
        }
    } output;
    std::string text = kHead + "#1=IFCA";
    for (int i = 0; i < kDepth; ++i) text += i % 2 ? "((" : "(IFCB(";
    for (int i = 0; i < kDepth; ++i) text += "))";
    std::istringstream in(text + ";" + kTail);
    parseStream(in, nullptr, &output);
    EXPECT_GE(output.items, 2 * kDepth);
    EXPECT_LE(liveItems, before);
    // Cut off in the depth.
    std::istringstream cut(text.substr(0, text.size() * 2 / 3));
    parseStream(cut, nullptr, &output);
    EXPECT_LE(liveItems, before);
}

}  // namespace
