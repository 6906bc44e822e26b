// Loading of files: the header, the meter, which records stay, breaks, and the log.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>

#include "loadtext.h"

namespace Ovik {
namespace {

using namespace Test;
using OvikTest::kHead;
using OvikTest::kTail;

class Reader : public testing::Test {
 protected:
    void SetUp() override {
        Probe::reset();
        itemsBefore_ = IfcParser::liveItems;
    }
    // Nothing of a load may stay, whatever became of it; four items are shared and may.
    void TearDown() override { EXPECT_LE(IfcParser::liveItems, itemsBefore_ + 4); }

    static std::string withSchema(const std::string& schema) {
        return "ISO-10303-21;HEADER;FILE_DESCRIPTION((''),'2;1');FILE_NAME('n');FILE_SCHEMA" +
               schema + ";ENDSEC;DATA;#1=IFCPERSON($,$,$,$,$,$,$,$);" + kTail;
    }

    int itemsBefore_ = 0;
};

struct Meter final : ProgressMeter {
    void start(std::uint64_t total) override {
        calls += 's';
        size = total;
    }
    void finish() override { calls += 'f'; }
    void progress(std::uint64_t position) override {
        calls += position == size ? "p" : std::to_string(position) + "p";
    }
    std::string calls;
    std::uint64_t size = 0;
};

TEST_F(Reader, AFileThatCantBeOpenedGivesNullWithoutAWord) {
    Meter meter;
    ErrLog log(TempFile().path);
    EXPECT_EQ(IfcModel::read(TempFile().path, &log, &meter), nullptr);
    EXPECT_EQ(IfcModel::read(std::filesystem::path(), &log, &meter), nullptr);
    EXPECT_FALSE(log.isInitialized());
    EXPECT_EQ(meter.calls, "");
}

TEST_F(Reader, TellsTheMeterWhateverBecomesOfTheRecords) {
    const std::pair<std::string, const char*> cases[] = {
        {fileOf("#1=IFCTABLEROW($,$);#1=IFCTABLEROW($,$);#2=IFCNONE();#3=IFCTABLEROW(1,$);"),
         "sppppf"},
        {fileOf("#1=IFCNONE();" + std::string(10'000, ' ') + "#2=IFCNONE();").substr(0, 10'150),
         "s8192ppf"},
        {withSchema("(('IFC9'))"), "sf"},
        {"nothing", "sf"},
    };
    for (const auto& [text, calls] : cases) {
        Meter meter;
        load(text, {}, nullptr, &meter);
        EXPECT_EQ(meter.calls, calls);
        EXPECT_EQ(meter.size, text.size());
    }
}

// What comes through a pipe has no size, and can be read all the same.
TEST_F(Reader, TellsTheMeterOfAPipe) {
    const TempFile pipe;
    ASSERT_EQ(::mkfifo(pipe.path.c_str(), 0600), 0);
    const std::string text = fileOf("#1=IFCTABLEROW($,$);");
    std::thread writer([&] { std::ofstream(pipe.path) << text; });
    Meter meter;
    const IfcModelPtr model(IfcModel::read(pipe.path, nullptr, &meter));
    writer.join();
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->getNumEntities(), 1u);
    EXPECT_EQ(meter.calls, "s" + std::to_string(text.size()) + "pf");
    EXPECT_EQ(meter.size, 0u);
}

TEST_F(Reader, OnlyTwoSchemasAreSupported) {
    const struct {
        const char* schema;
        int expected;  // -1 if no model is due
        const char* extraLog = "";
    } cases[] = {
        {"(('ifc4'))", eIFC4},
        {"(('Ifc2x3'))", eIFC2X3},
        {"(('IFC','4'))", eIFC4},  // joined
        {"(('IFC4',5))", eIFC4},   // up to the first that can't be read
        {"(('IFC2X3','IFC4'))", -1},
        {"(('IFC4X3'))", -1},
        {"((''))", -1},
        {"(())", -1},
        {"('IFC4')", -1, "\nInvalid type of item 0\n"},
        {"()", -1, "\nNo data to read\n"},
    };
    for (const auto& c : cases) {
        const Loaded loaded = load(withSchema(c.schema));
        EXPECT_EQ(loaded.model ? loaded.model->schemaId() : -1, c.expected) << c.schema;
        if (!loaded.model) {
            EXPECT_EQ(loaded.log, std::string("This schema is not supported\n") + c.extraLog);
        }
    }
}

TEST_F(Reader, FillsTheHeaderEachFieldFromItsOwnPlace) {
    const std::string noData = "\nNo data to read\n";
    const struct {
        const char* description;
        const char* name;
        bool lenient;
        const char* expected;
        std::string log;
    } cases[] = {
        {"(('a','b'),'9;9')", "('n','t',('au'),('or'),'p','s','z')", true,
         "ab|2;1|n|t|au|or|p|s|z|IFC4|", ""},
        {"((''),'2;1')", "('',$,('a',$,'x'),(),$,'','')", true, "|2;1||-|ax|-|-|||IFC4|", ""},
        {"($,'2;1')", "('n','t',$,$,'p','o','a')", true, "-|2;1|n|t|-|-|p|o|a|IFC4|",
         "\nInvalid type of item 0\n\nInvalid type of item 2\n\nInvalid type of item 3\n"},
        {"((''),$)", "('n',5,('x'),('y'),$,'s','z')", false, "|2;1|n|-|x|y|-|s|z|IFC4|",
         "\nInvalid type of item 1\n\nInvalid type of item 1\n\nInvalid type of item 4\n"},
        {"()", "('n')", true, "-|2;1|n|-|-|-|-|-|-|IFC4|",
         noData + noData + noData + noData + noData + noData + noData + noData},
    };
    for (const auto& c : cases) {
        IfcHeader header;
        header.setAuthor(XString(u"from before"));
        header.setAuthorization(XString(u"from before"));
        const Loaded loaded = load(std::string("ISO-10303-21;HEADER;FILE_DESCRIPTION") +
                                       c.description + ";FILE_NAME" + c.name +
                                       ";FILE_SCHEMA(('IFC4'));ENDSEC;DATA;#1=IFCNONE();" + kTail,
                                   {c.lenient}, &header);
        std::string fields;
        for (const XString& field :
             {header.fileDescription(), header.implementationLevel(), header.fileName(),
              header.timeStamp(), header.author(), header.organization(),
              header.preprocessorVersion(), header.originatingSystem(), header.authorization(),
              header.fileSchema()}) {
            fields += field.isEmpty() ? "-|" : std::string(field.getEncoded()) + "|";
        }
        EXPECT_EQ(fields, c.expected) << c.description << c.name;
        EXPECT_EQ(loaded.log, c.log + "Error: invalid class name in #1\n") << c.name;
    }
}

TEST_F(Reader, KeepsTheGoodRecordsInTheOrderOfTheirNumbers) {
    const struct {
        const char* what;
        const char* records;
        const char* ids;
        const char* log;
    } cases[] = {
        {"any order, any case of letters, surplus parameters",
         "#3=IFCTABLEROW($,$);#1=IFCTableRow($,$,5,$);#2=IFCPERSON($,$,$,$,$,$,$,$);", "1 2 3", ""},
        {"far apart", "#2147483647=IFCTABLEROW($,$);#7=IFCTABLEROW($,$);#500000=IFCTABLEROW($,$);",
         "7 500000 2147483647", ""},
        {"a number twice: the first stays",
         "#5000=IFCTABLEROW($,$);#5000=IFCPERSON($,$,$,$,$,$,$,$);", "5000",
         "Duplicate data with id #5000\n"},
        {"a number again after a record of an unknown class",
         "#5=IFCNONE();#5=IFCTABLEROW($,$);#5=IFCTABLEROW($,$);", "5",
         "Error: invalid class name in #5\nDuplicate data with id #5\n"},
        {"a number again after one that was referred to, and after one that can't be read",
         "#1=IFCPERSON($,$,$,$,$,$,(#5),$);#6=IFCTABLEROW(1,$);#6=IFCTABLEROW($,$);", "1",
         "\nInvalid type of item 0\nFailed to read object #6 of class IFCTABLEROW\n"
         "Duplicate data with id #6\nInvalid data member 'Roles' in #1, removed.\n"},
        {"unknown, abstract and other schema's classes, the same one again",
         "#1=IFCNONE();#2=IFCROOT('');#3=IFCBEZIERCURVE();#4=IFCNONE();#5=IFCTABLEROW($,$);", "5",
         "Error: invalid class name in #1\nError: invalid class name in #2\n"
         "Error: invalid class name in #3\nError: invalid class name in #4\n"},
        {"a class that makes nothing", "#1=IFCTESTNOTHING();#2=IFCTABLEROW($,$);", "2",
         "Error: failed to create class IFCTESTNOTHING\n"},
        {"no good record at all", "#1=IFCNONE();", "", "Error: invalid class name in #1\n"},
    };
    static const RtClass nothing(
        "IFCTESTNOTHING", nullptr, [](IfcModel*) -> IfcEntity* { return nullptr; }, eIFC4);
    for (const auto& c : cases) {
        const Loaded loaded = loadRecords(c.records);
        ASSERT_NE(loaded.model, nullptr) << c.what;
        EXPECT_EQ(loaded.ids(), c.ids) << c.what;
        EXPECT_EQ(loaded.log, c.log) << c.what;
        const std::uint64_t count = loaded.model->getNumEntities();
        for (std::uint64_t i = 0; i < count; ++i) {
            IfcEntity* const entity = loaded.model->get(i);
            EXPECT_EQ(entity->id()(), entity) << c.what;
            EXPECT_EQ(entity->backRefs().size(), 0u);
        }
        // The model is as one from `create` now.
        EXPECT_FALSE(Probe::create(*loaded.model)->id().isNull());
        EXPECT_EQ(loaded.model->getNumEntities(), count + 1);
    }
    EXPECT_STREQ(loadRecords(cases[2].records).find(5000)->isA()->className(), "IFCTABLEROW");
}

TEST_F(Reader, ABrokenFileGivesWhatCameBeforeTheBreak) {
    const std::string good = kHead + "#1=IFCTABLEROW($,$);\n#2=IFCTABLEROW($,$);\n";
    const auto error = [](const char* place) {
        return std::string("Parser Error at ") + place + ": syntax error\n";
    };
    const struct {
        std::string text;
        const char* ids;  // null if no model is due
        std::string log;
        bool lenient = true;
    } cases[] = {
        {good, "1 2", error("10.1")},
        {good + "#3=IFCTABLER", "1 2", error("10.1-12")},
        {good + "#3=;\n#4=IFCTABLEROW($,$);\n" + kTail, "1 2 4",
         error("10.1-4") + "Line discarded\n"},
        {kHead, "", error("8.1")},
        {kHead.substr(0, kHead.find("ENDSEC;")), nullptr, error("6.1")},
        {kHead.substr(0, 40), nullptr, error("3.1-18")},
        {"", nullptr, error("1.1")},
        // What the parser says comes before what the load says.
        {good + "#3=IFCNONE();\n#4=IFCTABLEROW($,);\n" + kTail, "1 2 4",
         "Trying to recover wrong syntax: missing item is replaced with NIL\n"
         "Error: invalid class name in #3\n"},
        {good + "#3=IFCNONE();\n#4=IFCTABLEROW($,);\n" + kTail, "1 2",
         "Parser Error at 11.1-18: missing list item\nLine discarded\n"
         "Error: invalid class name in #3\n",
         false},
    };
    for (const auto& c : cases) {
        const Loaded loaded = load(c.text, {c.lenient});
        ASSERT_EQ(loaded.model != nullptr, c.ids != nullptr) << c.text;
        EXPECT_EQ(loaded.log, c.log) << c.text;
        if (loaded.model) {
            EXPECT_EQ(loaded.ids(), c.ids) << c.text;
        }
    }
}

TEST_F(Reader, LoadsWithoutALog) {
    // A record for every kind of report.
    const TempFile file(fileOf(
        "#1=IFCNONE();#2=IFCBEAMTYPE('',$,$,$,$,$,$,$,$,$);#3=IFCGRIDAXIS($,$,.T.);#4=;"
        "#5=IFCTABLEROW(1,$);#6=IFCGEOMETRICREPRESENTATIONSUBCONTEXT($,$,1,$,$,$,$,$,$,$);"));
    const IfcModelPtr model(IfcModel::read(file.path));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->getNumEntities(), 1u);
}

TEST_F(Reader, WarningsLastWithTheLog) {
    const TempFile file(
        fileOf("#1=IFCBEAMTYPE('',$,$,$,$,$,$,$,$,$);"
               "#2=IFCBEAMTYPE('',$,$,$,$,$,$,$,$,$);")),
        logFile;
    {
        ErrLog log(logFile.path);
        for (int i = 0; i < 2; ++i) IfcModelPtr(IfcModel::read(file.path, &log));
        EXPECT_EQ(log.warnings().count(0), 1u);
        log.clearWarnings();
        IfcModelPtr(IfcModel::read(file.path, &log));
    }
    const std::string line = "Warning: missing enum value(s) read as default value\n";
    EXPECT_EQ(logFile.text(), line + line);
}

TEST_F(Reader, RecordsMayAskToBeReadAgain) {
    std::vector<std::pair<int, bool>> reads;
    Probe::onRead = [&](IfcInFiler& in) {
        EXPECT_EQ(in.cursor(), 0u);
        const auto* const item = in.itemAs<IfcParser::ItemInt>();
        reads.emplace_back(item->value, in.secondPass());
        // One that asks again in the second pass stays as it is.
        if (item->value == 1 || !in.secondPass()) throw SelectorNeedSecondPassRead();
        return item->value == 2;
    };
    const Loaded loaded = loadRecords("#5=IFCTESTPROBE(1);#4=IFCTESTPROBE(2);#1=IFCTESTPROBE(3);");
    EXPECT_EQ(reads, (std::vector<std::pair<int, bool>>{
                         {1, false}, {2, false}, {3, false}, {1, true}, {2, true}, {3, true}}));
    EXPECT_EQ(loaded.ids(), "4 5");
    EXPECT_EQ(loaded.log, "Failed to read object #1 of class IFCTESTPROBE\n");
}

TEST_F(Reader, AnExceptionOfAClassLeavesNothingBehind) {
    int count = 0;
    Probe::onRead = [&](IfcInFiler&) -> bool {
        if (++count == 2) throw SelectorNeedSecondPassRead();
        return count < 3 ? true : throw 5;
    };
    const std::string text =
        fileOf("#1=IFCTESTPROBE();#2=IFCTESTPROBE(1,2,3,4,5);#3=IFCTESTPROBE();");
    Meter meter;
    EXPECT_THROW(IfcModel::read(TempFile(text).path, nullptr, &meter), int);
    EXPECT_EQ(meter.calls, "spppf");
    EXPECT_EQ(Probe::numDestroyed, 3);

    // A text ends the load in the ordinary way, with the text as the only line, whatever waits to
    // be read again.
    count = 0;
    Probe::onRead = [&](IfcInFiler&) -> bool {
        if (++count == 2) throw SelectorNeedSecondPassRead();
        return count < 3 ? true : throw std::string("enough");
    };
    const Loaded loaded = load(text);
    EXPECT_EQ(loaded.model, nullptr);
    EXPECT_EQ(loaded.log, "enough\n");
    EXPECT_EQ(Probe::numDestroyed, 6);
}

TEST_F(Reader, AReferenceIsAHandleAtOnce) {
    EntityId later;
    Probe::onRead = [&](IfcInFiler& in) {
        later = in.handle(2);
        EntityId first, null(first), again, self;
        EXPECT_TRUE(in.readRef(first, false) && in.readRef(null, false));
        EXPECT_TRUE(in.readRef(again, true) && in.readRef(self, true));
        EXPECT_FALSE(first.isNull());
        EXPECT_EQ(first(), nullptr);
        EXPECT_TRUE(null.isNull() && in.handle(0).isNull());
        EXPECT_TRUE(first == again && first == in.handle(12));
        EXPECT_EQ(self()->ifcId(), 1);
        in.setCursor(1);
        const bool isRead = in.readRef(null, true);
        EXPECT_EQ(in.cursor(), 1u);
        return isRead;
    };
    const Loaded loaded = loadRecords("#1=IFCTESTPROBE(#12,$,#12,#1);#2=IFCTABLEROW($,$);");
    EXPECT_TRUE(later == loaded.find(2)->id());
    EXPECT_EQ(loaded.log, "Invalid reference $0\nFailed to read object #1 of class IFCTESTPROBE\n");
}

TEST_F(Reader, AFilerOnOneItemNeedsNoMoreThanTheItem) {
    using namespace IfcParser;
    Probe::onRead = [](IfcInFiler& in) {
        auto* const list = static_cast<ItemList*>(in.itemAs<ItemChoice>()->value);
        IfcInFiler one(in, list);  // the pointer is of another type than the filer's
        const IfcInFiler::Items* items = nullptr;
        EXPECT_TRUE(one.readList(items, 2, 2));
        EXPECT_EQ(items, list->items);
        EXPECT_EQ(one.peek(), nullptr);
        return true;
    };
    EXPECT_EQ(loadRecords("#1=IFCTESTPROBE(IFCLABEL((1,2)));").log, "");
}

}  // namespace
}  // namespace Ovik
