// Loading: the header, the records, the passes, what is kept and what is dropped; and the in-filer.
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>

#include "ovik/base/progressmeter.h"
#include "ovik/parser/items.h"
#include "testclasses.h"

namespace Ovik {
namespace {

using namespace Test;
using IfcParser::ItemKind;

class Reader : public testing::Test {
 protected:
    void SetUp() override {
        Probe::reset();
        itemsBefore_ = IfcParser::liveItems;
        leavesBefore_ = Leaf::numDestroyed;
    }
    // Nothing of a load may stay, whatever became of it; four items are shared and may.
    void TearDown() override { EXPECT_LE(IfcParser::liveItems, itemsBefore_ + 4); }

    std::string withSchema(const std::string& schema) {
        std::string text = fileOf("#1=IFCACTORROLE($,$,$);\n");
        const std::string old = "(('IFC4'))";
        return text.replace(text.find(old), old.size(), schema);
    }

    Files files_;
    int itemsBefore_ = 0;
    int leavesBefore_ = 0;
};

struct Meter final : ProgressMeter {
    void start(std::uint64_t total) override {
        calls += 's';
        size = total;
    }
    void finish() override { calls += 'f'; }
    void progress(std::uint64_t position) override {
        calls += 'p';
        last = position;
    }
    std::string calls;
    std::uint64_t size = 0;
    std::uint64_t last = 0;
};

TEST_F(Reader, AFileThatCantBeOpenedGivesNullWithoutAWord) {
    Meter meter;
    {
        ErrLog log(files_.path("in.log"));
        EXPECT_EQ(IfcModel::read(files_.path("none.ifc"), &log, &meter), nullptr);
        EXPECT_EQ(IfcModel::read(files_.path(""), &log, &meter), nullptr);
        EXPECT_FALSE(log.isInitialized());
    }
    EXPECT_FALSE(std::filesystem::exists(files_.path("in.log")));
    EXPECT_EQ(meter.calls, "");
}

TEST_F(Reader, TellsTheMeterWhateverBecomesOfTheRecords) {
    const struct {
        std::string text;
        const char* calls;
    } cases[] = {
        {fileOf("#1=IFCTESTLEAF('');#1=IFCTESTLEAF('');#2=IFCNONE();#3=IFCTESTLEAF(1);"), "sppppf"},
        {withSchema("(('IFC9'))"), "sf"},
        {"nothing", "sf"},
    };
    for (const auto& c : cases) {
        Meter meter;
        load(files_, c.text, {}, nullptr, &meter);
        EXPECT_EQ(meter.calls, c.calls);
        EXPECT_EQ(meter.size, c.text.size());
        EXPECT_LE(meter.last, meter.size);
    }
}

TEST_F(Reader, OnlyTwoSchemasAreSupported) {
    const struct {
        const char* schema;
        std::optional<EIfcSchemaId> expected;
        const char* extraLog;
    } cases[] = {
        {"(('IFC4'))", eIFC4, ""},
        {"(('ifc4'))", eIFC4, ""},
        {"(('Ifc2x3'))", eIFC2X3, ""},
        {"(('IFC','4'))", eIFC4, ""},  // joined
        {"(('IFC2X3','IFC4'))", {}, ""},
        {"(('IFC4X3'))", {}, ""},
        {"((''))", {}, ""},
        {"(())", {}, ""},
        {"('IFC4')", {}, "\nInvalid type of item 0\n"},
        {"()", {}, "\nNo data to read\n"},
        {"(('IFC4',5))", eIFC4, ""},  // up to the first that can't be read
    };
    for (const auto& c : cases) {
        const Loaded loaded = load(files_, withSchema(c.schema));
        EXPECT_EQ(loaded.model != nullptr, c.expected.has_value()) << c.schema;
        if (loaded.model) {
            EXPECT_EQ(loaded.model->schemaId(), c.expected) << c.schema;
        } else {
            EXPECT_EQ(loaded.log, std::string("This schema is not supported\n") + c.extraLog)
                << c.schema;
        }
    }
}

std::string fields(const IfcHeader& h) {
    std::string text;
    for (const XString& field :
         {h.fileDescription(), h.implementationLevel(), h.fileName(), h.timeStamp(), h.author(),
          h.organization(), h.preprocessorVersion(), h.originatingSystem(), h.authorization(),
          h.fileSchema()}) {
        text += field.isEmpty() ? "-|" : std::string(field.getEncoded()) + "|";
    }
    return text;
}

TEST_F(Reader, FillsTheHeaderEachFieldFromItsOwnPlace) {
    const struct {
        const char* description;
        const char* name;
        bool lenient;
        const char* expected;
        const char* log;
    } cases[] = {
        {"(('a','b'),'9;9')", "('n','t',('au'),('or'),'p','s','z')", true,
         "ab|2;1|n|t|au|or|p|s|z|IFC4|", ""},
        {"((''),'2;1')", "('','',(''),(),'','','')", true,
         "|2;1|||"
         "|-||||IFC4|",
         ""},
        {"((''),'2;1')", "($,$,('',$,'x'),(''),$,$,$)", true, "|2;1|-|-|x||-|-|-|IFC4|", ""},
        {"($,'2;1')", "('n','t',$,$,'p','o','a')", true, "-|2;1|n|t|-|-|p|o|a|IFC4|",
         "\nInvalid type of item 0\n\nInvalid type of item 2\n\nInvalid type of item 3\n"},
        {"((''),$)", "('n',5,('x'),('y'),$,'s','z')", false, "|2;1|n|-|x|y|-|s|z|IFC4|",
         "\nInvalid type of item 1\n\nInvalid type of item 1\n\nInvalid type of item 4\n"},
        {"()", "('n')", true, "-|2;1|n|-|-|-|-|-|-|IFC4|",
         "\nNo data to read\n\nNo data to read\n\nNo data to read\n\nNo data to read\n"
         "\nNo data to read\n\nNo data to read\n\nNo data to read\n\nNo data to read\n"},
    };
    for (const auto& c : cases) {
        const std::string text = std::string("ISO-10303-21;HEADER;FILE_DESCRIPTION") +
                                 c.description + ";FILE_NAME" + c.name +
                                 ";FILE_SCHEMA(('IFC4'));ENDSEC;DATA;#1=IFCTESTLEAF('');ENDSEC;"
                                 "END-ISO-10303-21;";
        IfcHeader header;
        header.setAuthor(XString(u"from before"));
        header.setAuthorization(XString(u"from before"));
        const Loaded loaded = load(files_, text, {c.lenient}, &header);
        EXPECT_EQ(fields(header), c.expected) << c.description << c.name;
        EXPECT_EQ(loaded.log, c.log) << c.description << c.name;
    }
}

TEST_F(Reader, KeepsTheGoodRecordsInTheOrderOfTheirNumbers) {
    const struct {
        const char* what;
        const char* records;
        const char* ids;
        const char* log;
    } cases[] = {
        {"any order", "#3=IFCTESTLEAF('');#1=IFCTESTLEAF('');#2=IFCTESTLEAF('');", "1 2 3", ""},
        {"far apart", "#2147483647=IFCTESTLEAF('');#7=IFCTESTLEAF('');#500000=IFCTESTLEAF('');",
         "7 500000 2147483647", ""},
        {"any case of letters", "#1=IFCTestLeaf('');#2=IFCTESTLEAF('');", "1 2", ""},
        {"surplus parameters", "#1=IFCTESTLEAF('',5,$);", "1", ""},
        {"a number twice: the first stays", "#5=IFCTESTLEAF('a');#5=IFCTESTNODE('',$,$,());", "5",
         "Duplicate data with id #5\n"},
        {"a number again after a record of an unknown class",
         "#5=IFCNONE();#5=IFCTESTLEAF('a');#5=IFCTESTLEAF('b');", "5",
         "Error: invalid class name in #5\nDuplicate data with id #5\n"},
        {"unknown, abstract and other schema's classes",
         "#1=IFCNONE();#2=IFCTESTBASE('');#3=IFCTESTOLD();#4=IFCNONE();#5=IFCTESTLEAF('');", "5",
         "Error: invalid class name in #1\nError: invalid class name in #2\n"
         "Error: invalid class name in #3\nError: invalid class name in #4\n"},
        {"a class that makes nothing", "#1=IFCTESTNOTHING();#2=IFCTESTLEAF('');", "2",
         "Error: failed to create class IFCTESTNOTHING\n"},
        {"a record that can't be read", "#1=IFCTESTLEAF(1);#2=IFCTESTLEAF('');", "2",
         "\nInvalid type of item 0\nFailed to read object #1 of class IFCTESTLEAF\n"},
        {"no good record at all", "#1=IFCNONE();", "", "Error: invalid class name in #1\n"},
    };
    static const RtClass nothing(
        "IFCTESTNOTHING", nullptr, [](IfcModel*) -> IfcEntity* { return nullptr; }, eIFC4);
    static const RtClass old(
        "IFCTESTOLD", nullptr, [](IfcModel* m) -> IfcEntity* { return Leaf::create(*m); }, eIFC2X3);
    for (const auto& c : cases) {
        const Loaded loaded = loadRecords(files_, c.records);
        ASSERT_NE(loaded.model, nullptr) << c.what;
        EXPECT_EQ(loaded.ids(), c.ids) << c.what;
        EXPECT_EQ(loaded.log, c.log) << c.what;
        EXPECT_EQ(loaded.hasLog, *c.log != 0) << c.what;
        for (std::uint64_t i = 0; i < loaded.model->getNumEntities(); ++i) {
            IfcEntity* const entity = loaded.model->get(i);
            EXPECT_EQ(entity->id()(), entity) << c.what;
            EXPECT_EQ(entity->backRefs().size(), 0u);
        }
        // The model is as one from `create` now.
        const std::uint64_t count = loaded.model->getNumEntities();
        EXPECT_FALSE(Leaf::create(*loaded.model)->id().isNull());
        EXPECT_EQ(loaded.model->getNumEntities(), count + 1);
    }
    const Loaded loaded = loadRecords(files_, cases[4].records);
    EXPECT_STREQ(loaded.get<Leaf>(0)->name.getEncoded(), "a");
}

TEST_F(Reader, ReferencesMeetWhateverComesFirst) {
    for (const char* records : {"#1=IFCTESTNODE('',#2,#3,(#2,#3));#2=IFCTESTLEAF('');"
                                "#3=IFCTESTNODE('',#2,$,());",
                                "#3=IFCTESTNODE('',#2,$,());#2=IFCTESTLEAF('');"
                                "#1=IFCTESTNODE('',#2,#3,(#2,#3));"}) {
        const Loaded loaded = loadRecords(files_, records);
        ASSERT_EQ(loaded.ids(), "1 2 3") << records;
        const Node* const one = loaded.get<Node>(0);
        EXPECT_EQ(one->required(), loaded.model->get(1));
        EXPECT_EQ(one->other(), loaded.model->get(2));
        EXPECT_TRUE(one->requiredId == loaded.model->get(1)->id());
        EXPECT_TRUE(loaded.get<Node>(2)->requiredId == one->requiredId);
        EXPECT_EQ(one->items.size(), 2u);
    }
}

TEST_F(Reader, ABrokenFileGivesWhatCameBeforeTheBreak) {
    const std::string good = "#1=IFCTESTLEAF('');\n#2=IFCTESTLEAF('');\n";
    const struct {
        std::string text;
        const char* ids;  // null if no model is due
    } cases[] = {
        {kHeader + ("DATA;\n" + good), "1 2"},
        {kHeader + ("DATA;\n" + good + "#3=IFCTESTLE"), "1 2"},
        {fileOf(good + "#3=;\n#4=IFCTESTLEAF('');\n"), "1 2 4"},
        {fileOf(""), ""},
        {kHeader, ""},
        {std::string(kHeader).substr(0, std::string(kHeader).rfind("ENDSEC;")), nullptr},
        {std::string(kHeader).substr(0, 40), nullptr},
        {"", nullptr},
    };
    for (const auto& c : cases) {
        const Loaded loaded = load(files_, c.text);
        ASSERT_EQ(loaded.model != nullptr, c.ids != nullptr) << c.text;
        EXPECT_NE(loaded.log, "") << c.text;
        if (loaded.model) {
            EXPECT_EQ(loaded.ids(), c.ids) << c.text;
        }
    }
}

TEST_F(Reader, TheParsersLinesComeBeforeThoseOfTheLoad) {
    const Loaded loaded =
        loadRecords(files_, "#1=IFCTESTLEAF('',);\n#2=IFCNONE();\n#3=);\n#4=IFCTESTLEAF('');\n");
    EXPECT_EQ(loaded.ids(), "1 4");
    const std::size_t missing = loaded.log.find("missing item is replaced with NIL\n");
    const std::size_t discarded = loaded.log.find("Line discarded\n");
    const std::size_t unknown = loaded.log.find("Error: invalid class name in #2\n");
    EXPECT_LT(missing, discarded);
    EXPECT_LT(discarded, unknown);
    EXPECT_NE(unknown, std::string::npos);

    // A strict load discards the line with the missing item.
    EXPECT_EQ(loadRecords(files_, "#1=IFCTESTLEAF('',);\n#4=IFCTESTLEAF('');\n", {false}).ids(),
              "4");
}

TEST_F(Reader, LoadsWithoutALog) {
    // A record for every kind of report.
    Probe::onRead = [](IfcInFiler& in) {
        in.warnDefaultEnum();
        in.warnDerivedIgnored();
        return in.skipDerived();
    };
    const auto path = files_.make(
        "in.ifc", fileOf("#1=IFCNONE();#2=IFCTESTPROBE($);#3=IFCTESTNODE('',$,$,());#4=;"
                         "#5=IFCTESTLEAF('');"));
    const ModelPtr model(IfcModel::read(path));
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->getNumEntities(), 1u);
}

TEST_F(Reader, RecordsThatAskForItAreReadAgainInTheirOrder) {
    std::vector<std::pair<int, bool>> reads;
    Probe::onRead = [&](IfcInFiler& in) {
        EntityId target;
        EXPECT_EQ(in.cursor(), 0u);
        const auto* const ref = in.itemAs<IfcParser::ItemRef>(ItemKind::Ref);
        reads.emplace_back(ref->value, in.secondPass());
        EXPECT_TRUE(in.readRef(target, in.secondPass()));
        if (!target() && !in.secondPass()) throw SelectorNeedSecondPassRead();
        return target() != nullptr;
    };
    const Loaded loaded = loadRecords(files_,
                                      "#5=IFCTESTPROBE(#9);#4=IFCTESTPROBE(#8);#1=IFCTESTPROBE(#2);"
                                      "#2=IFCTESTLEAF('');#3=IFCTESTPROBE(#2);#9=IFCTESTLEAF('');");
    EXPECT_EQ(
        reads,
        (std::vector<std::pair<int, bool>>{
            {9, false}, {8, false}, {2, false}, {2, false}, {9, true}, {8, true}, {2, true}}));
    EXPECT_EQ(loaded.ids(), "1 2 3 5 9");
    EXPECT_EQ(loaded.log, "Failed to read object #4 of class IFCTESTPROBE\n");

    // One that asks again in the second pass stays as it is.
    Probe::onRead = [&](IfcInFiler&) -> bool { throw SelectorNeedSecondPassRead(); };
    EXPECT_EQ(loadRecords(files_, "#1=IFCTESTPROBE();").ids(), "1");
}

TEST_F(Reader, AnExceptionOfAClassLeavesNothingBehind) {
    Probe::onRead = [](IfcInFiler&) -> bool { throw 5; };
    const auto path =
        files_.make("in.ifc", fileOf("#1=IFCTESTLEAF('');#2=IFCTESTLEAF('');#3=IFCTESTPROBE();"));
    Meter meter;
    EXPECT_THROW(IfcModel::read(path, nullptr, &meter), int);
    EXPECT_EQ(meter.calls, "spppf");
    EXPECT_EQ(Leaf::numDestroyed, leavesBefore_ + 2);

    // A text ends the load in the ordinary way, with the text as the only line.
    Probe::onRead = [](IfcInFiler&) -> bool { throw std::string("enough"); };
    const Loaded loaded = load(files_, fileOf("#1=IFCTESTLEAF('');#2=IFCTESTPROBE();"));
    EXPECT_EQ(loaded.model, nullptr);
    EXPECT_EQ(loaded.log, "enough\n");
    EXPECT_EQ(Leaf::numDestroyed, leavesBefore_ + 3);
}

// Each read is tried on an own record, whose arguments are given, from its first item on.
class InFiler : public Reader {
 protected:
    struct Outcome {
        bool ok = false;
        unsigned cursor = 0;
        std::string log;  // without the report of the failed record
    };

    Outcome tryRead(const std::string& arguments, bool lenient,
                    const std::function<bool(IfcInFiler&)>& read) {
        Outcome outcome;
        Probe::onRead = [&](IfcInFiler& in) {
            outcome.ok = read(in);
            outcome.cursor = in.cursor();
            return outcome.ok;
        };
        outcome.log = loadRecords(files_, "#1=IFCTESTPROBE(" + arguments + ");", {lenient}).log;
        const std::string failed = "Failed to read object #1 of class IFCTESTPROBE\n";
        if (!outcome.ok) {
            const std::size_t at = outcome.log.size() - failed.size();
            EXPECT_EQ(outcome.log.substr(at), failed);
            outcome.log.erase(at);
        }
        return outcome;
    }
};

TEST_F(InFiler, RequiresTheKindOfItem) {
    // The items of `all`, in the order of the kinds.
    const std::string all = "'s',1,1.5,.T.,.WORD.,#7,*,IFCLABEL('x'),(1),\"0A\"";
    for (unsigned kind = 0; kind < 10; ++kind) {
        for (unsigned position = 0; position < 11; ++position) {
            const Outcome outcome = tryRead(all, true, [&](IfcInFiler& in) {
                in.setCursor(position);
                return in.checkKind(static_cast<ItemKind>(kind));
            });
            EXPECT_EQ(outcome.ok, kind == position);
            EXPECT_EQ(outcome.cursor, position);
            EXPECT_EQ(outcome.log, kind == position ? ""
                                   : position == 10 ? "\nNo data to read\n"
                                                    : "\nInvalid type of item " +
                                                          std::to_string(position) + "\n");
        }
    }
}

TEST_F(InFiler, ReadsStringsLogicalsListsAndDerived) {
    XString string;
    Logical logical;
    const IfcInFiler::Items* list = nullptr;
    bool isNull = false;
    // What the last read gave, as a text.
    std::string value;
    const std::function<bool(IfcInFiler&)> readString = [&](IfcInFiler& in) {
        string = XString(u"before");
        const bool ok = in.readString(string);
        value = string.isEmpty() ? "unset" : string.getEncoded();
        return ok;
    };
    const std::function<bool(IfcInFiler&)> readLogical = [&](IfcInFiler& in) {
        logical = Logical(true);
        const bool ok = in.readLogical(logical);
        value = logical.isUnknown() ? "U" : logical ? "T" : "F";
        return ok;
    };
    const std::function<bool(IfcInFiler&)> readDerived = [&](IfcInFiler& in) {
        value = "";
        return in.skipDerived();
    };
    const std::function<bool(IfcInFiler&)> readNull = [&](IfcInFiler& in) {
        const bool ok = in.isNullItem(isNull);
        value = isNull ? "null" : "some";
        return ok;
    };
    const auto readList = [&](unsigned min, unsigned max) {
        return [&, min, max](IfcInFiler& in) {
            in.setCursor(3);
            const bool ok = in.readList(list, min, max);
            value = ok ? std::to_string(list ? list->size() : 0) : "";
            return ok;
        };
    };
    const std::string kind0 = "\nInvalid type of item 0\n", noData = "\nNo data to read\n";
    const struct {
        std::function<bool(IfcInFiler&)> read;
        const char* arguments;
        bool lenient;
        bool ok;
        const char* value;
        unsigned cursor;
        std::string log;
    } cases[] = {
        {readString, "'a'", true, true, "a", 1, ""},
        {readString, "'a'", false, true, "a", 1, ""},
        {readString, "''", true, true, "", 1, ""},
        {readString, "$", true, true, "unset", 1, ""},
        {readString, "$", false, false, "before", 0, kind0},
        {readString, "#4", true, false, "before", 0, kind0},
        {readString, "5", true, false, "before", 0, kind0},
        {readString, "", true, false, "before", 0, noData},
        {readString, "", false, false, "before", 0, noData},
        {readLogical, ".T.", true, true, "T", 1, ""},
        {readLogical, ".F.", true, true, "F", 1, ""},
        {readLogical, ".U.", true, true, "U", 1, ""},
        {readLogical, ".u.", true, true, "U", 1, ""},
        {readLogical, ".X.", true, false, "T", 1, ""},
        {readLogical, ".UNKNOWN.", true, false, "T", 1, ""},
        {readLogical, "1", true, false, "T", 0, kind0},
        {readLogical, "$", true, false, "T", 0, kind0},
        {readLogical, "", true, false, "T", 0, noData},
        {readDerived, "*", true, true, "", 1, ""},
        {readDerived, "$", true, false, "", 0, kind0},
        {readNull, "$", true, true, "null", 1, ""},
        {readNull, "$", false, true, "null", 1, ""},
        {readNull, "#1", true, true, "some", 0, ""},
        {readNull, "*", true, true, "some", 0, ""},
        {readNull, "", true, false, "some", 0, noData},
        {readList(0, 0), "1,1,1,()", true, true, "0", 4, ""},
        {readList(1, 0), "1,1,1,()", true, false, "", 3,
         "\nItem 3: invalid array size 0, expected at least 1\n"},
        {readList(2, 2), "1,1,1,(1)", true, false, "", 3,
         "\nItem 3: invalid array size 1, expected at least 2\n"},
        {readList(2, 2), "1,1,1,(1,2)", true, true, "2", 4, ""},
        {readList(1, 8), "1,1,1,(1,2,3,4,5,6,7,8,9)", true, false, "", 3,
         "\nItem 3: invalid array size 9, expected at most 8\n"},
        {readList(1, 0), "1,1,1,(1,2,3,4,5,6,7,8,9)", true, true, "9", 4, ""},
        {readList(0, 0), "1,1,1,$", true, false, "", 3, "\nInvalid type of item 3\n"},
        {readList(0, 0), "1,1,1", true, false, "", 3, noData},
    };
    for (const auto& c : cases) {
        isNull = false;
        const Outcome outcome = tryRead(c.arguments, c.lenient, c.read);
        EXPECT_EQ(outcome.ok, c.ok) << c.arguments;
        EXPECT_EQ(value, c.value) << c.arguments;
        EXPECT_EQ(outcome.cursor, c.cursor) << c.arguments;
        EXPECT_EQ(outcome.log, c.log) << c.arguments;
    }
}

TEST_F(InFiler, AReferenceIsAHandleAtOnce) {
    const Outcome outcome = tryRead("#12,$,#12,#1", true, [](IfcInFiler& in) {
        EntityId first, null(first), again, self;
        EXPECT_TRUE(in.readRef(first, false));
        EXPECT_TRUE(in.readRef(null, false));
        EXPECT_TRUE(in.readRef(again, true));
        EXPECT_TRUE(in.readRef(self, true));
        EXPECT_FALSE(first.isNull());
        EXPECT_EQ(first(), nullptr);
        EXPECT_TRUE(null.isNull());
        EXPECT_TRUE(first == again);
        EXPECT_TRUE(first == in.handle(12));
        EXPECT_TRUE(in.handle(0).isNull());
        EXPECT_EQ(self()->ifcId(), 1);
        in.setCursor(1);
        return in.readRef(null, true);
    });
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.cursor, 1u);
    EXPECT_EQ(outcome.log, "Invalid reference $0\n");
}

TEST_F(InFiler, ReportsAndWarnsInItsOwnWords) {
    const Outcome outcome = tryRead("1,(2)", true, [](IfcInFiler& in) {
        EXPECT_TRUE(in.lenient());
        EXPECT_FALSE(in.secondPass());
        in.advance();
        in.reportFailed("IFCLABEL");
        in.reportNoMatch("WORD", L"IfcActionSourceTypeEnum");
        in.reportAmbiguousNull("IFCRESOURCEOBJECTSELECT");
        in.reportInvalidType();
        in.reportInvalidType(17);
        in.reportNotUnsigned(1234);
        in.reportNoData();
        for (int i = 0; i < 2; ++i) {
            in.warnDefaultEnum();
            in.warnDerivedIgnored();
        }
        const IfcInFiler::Items* list = nullptr;
        EXPECT_TRUE(in.readList(list, 1, 1));
        IfcInFiler inner(in, list);
        EXPECT_NE(inner.peek(), nullptr);
        inner.advance();
        EXPECT_EQ(inner.peek(), nullptr);
        EXPECT_EQ(inner.item(), nullptr);
        inner.reset(nullptr);
        return inner.item() != nullptr;
    });
    EXPECT_EQ(outcome.log,
              "Failed to read IFCLABEL.\n"
              "\nFailed to match string WORD as a value of enum class IfcActionSourceTypeEnum\n"
              "Ambiguous null reference in IFCRESOURCEOBJECTSELECT.\n"
              "\nInvalid type of item 1\n"
              "\nInvalid type of item 17\n"
              "\nUnsigned value expected at item 1234\n"
              "\nNo data to read\n"
              "Warning: missing enum value(s) read as default value\n"
              "Warning: derived attribute value is ignored\n"
              "\nNo data to read\n"
              "\nNo data to read\n");
}

TEST_F(InFiler, WarningsLastWithTheLog) {
    Probe::onRead = [](IfcInFiler& in) {
        in.warnDefaultEnum();
        return true;
    };
    const auto path = files_.make("in.ifc", fileOf("#1=IFCTESTPROBE();#2=IFCTESTPROBE();"));
    {
        ErrLog log(files_.path("in.log"));
        for (int i = 0; i < 2; ++i) ModelPtr(IfcModel::read(path, &log));
        EXPECT_EQ(log.warnings().count(0), 1u);
        log.clearWarnings();
        ModelPtr(IfcModel::read(path, &log));
    }
    const std::string line = "Warning: missing enum value(s) read as default value\n";
    EXPECT_EQ(files_.text("in.log"), line + line);
}

}  // namespace
}  // namespace Ovik
