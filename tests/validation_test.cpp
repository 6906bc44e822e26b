// Judging of references after a load: what is kept, what is repaired, what goes, and the words.
#include <gtest/gtest.h>

#include "testclasses.h"

namespace Ovik {
namespace {

using namespace Test;

class Validation : public testing::Test {
 protected:
    void SetUp() override { Probe::reset(); }
    Files files_;
};

TEST_F(Validation, KeepsRepairsAndRemoves) {
    const struct {
        const char* what;
        const char* records;
        const char* ids;
        const char* log;
    } cases[] = {
        {"all well, references to lower numbers",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#1,$,(#1));#3=IFCTESTNODE('',#1,#2,());", "1 2 3",
         ""},
        {"a required reference that is not given", "#1=IFCTESTLEAF('');#7=IFCTESTNODE('',$,$,());",
         "1", "Invalid data member 'Required' in #7, removed.\nInvalid entity #7 is removed.\n"},
        {"a required reference to no record", "#1=IFCTESTLEAF('');#7=IFCTESTNODE('',#99,$,());",
         "1", "Invalid data member 'Required' in #7, removed.\nInvalid entity #7 is removed.\n"},
        {"an optional reference of the wrong class",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#1,#1,());", "1 2",
         "Invalid data member 'Other' in #2, removed.\n"},
        {"an optional reference to an entity that goes",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',$,$,());#3=IFCTESTNODE('',#1,#2,());", "1 3",
         "Invalid data member 'Required' in #2, removed.\nInvalid entity #2 is removed.\n"
         "Invalid data member 'Other' in #3, removed.\n"},
        {"removal spreads to the holders, each under its own number",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#3,$,());#3=IFCTESTNODE('',#4,$,());"
         "#4=IFCTESTNODE('',$,$,());",
         "1",
         "Invalid data member 'Required' in #4, removed.\nInvalid entity #4 is removed.\n"
         "Invalid data member 'Required' in #3, removed.\nInvalid entity #3 is removed.\n"
         "Invalid data member 'Required' in #2, removed.\nInvalid entity #2 is removed.\n"},
        {"two required references in a circle",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#3,$,());#3=IFCTESTNODE('',#2,$,());", "1",
         "Circular reference found in #2.\nInvalid entity #2 is removed.\n"
         "Invalid data member 'Required' in #3, removed.\nInvalid entity #3 is removed.\n"
         "Invalid data member 'Required' in #2, removed.\nInvalid entity #2 is removed.\n"},
        {"an optional reference to itself: the circle is cut there",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#1,#2,());", "1 2",
         "Circular reference found in #2.\nInvalid entity #2 is removed.\n"
         "Invalid data member 'Other' in #2, removed.\n"},
        {"a circle through an element: the element goes, the entities stay",
         "#1=IFCTESTLEAF('');#2=IFCTESTNODE('',#1,$,(#3,#1));#3=IFCTESTNODE('',#1,$,(#2));",
         "1 2 3", "Circular reference found in #2.\nInvalid entity #2 is removed.\n"},
        {"a reference to an entity that could not be read",
         "#1=IFCTESTLEAF('');#2=IFCTESTLEAF(5);#3=IFCTESTNODE('',#2,$,());", "1",
         "\nInvalid type of item 0\nFailed to read object #2 of class IFCTESTLEAF\n"
         "Invalid data member 'Required' in #3, removed.\nInvalid entity #3 is removed.\n"},
        {"valid, but found valid by way of a lower number that fails: nothing is moved at all",
         "#1=IFCTESTPROBE();#2=IFCTESTLEAF('');", "",
         "Invalid data member 'Last' in #1, removed.\nInvalid entity #1 is removed.\n"},
    };
    EntityId handle;
    Probe::onRead = [&](IfcInFiler& in) {
        handle = in.handle(2);
        return true;
    };
    Probe::onValidate = [&](ValidationContext& context) {
        EXPECT_EQ(context.validateRef(handle()), kValid);
        context.reportMember(kInvalid, L"Last");
        return kInvalid;
    };
    for (const auto& c : cases) {
        const Loaded loaded = loadRecords(files_, c.records);
        ASSERT_NE(loaded.model, nullptr) << c.what;
        EXPECT_EQ(loaded.ids(), c.ids) << c.what;
        EXPECT_EQ(loaded.log, c.log) << c.what;
        EXPECT_EQ(loaded.hasLog, *c.log != 0) << c.what;
    }
}

TEST_F(Validation, WhatIsRepairedIsGoneFromTheEntity) {
    const Loaded loaded =
        loadRecords(files_,
                    "#1=IFCTESTLEAF('x');#2=IFCTESTNODE('',$,$,());"
                    "#3=IFCTESTNODE('',#1,#2,(#1,#2,#98,#1));#4=IFCTESTNODE('',#1,#99,());");
    ASSERT_EQ(loaded.ids(), "1 3 4");
    const Node* const three = loaded.get<Node>(1);
    EXPECT_TRUE(three->otherId.isNull());
    ASSERT_EQ(three->items.size(), 2u);
    for (const EntityId& item : three->items) EXPECT_EQ(item(), loaded.model->get(0));
    // An optional reference to no record stays as it was, and without a word.
    const Node* const four = loaded.get<Node>(2);
    EXPECT_FALSE(four->otherId.isNull());
    EXPECT_EQ(four->otherId(), nullptr);
}

TEST_F(Validation, CodesAreReportedAndRememberedByTheirLowBit) {
    // The entity at hand gives the code `code`; each of two holders asks for it.
    int code = 0;
    std::vector<int> answers;
    EntityId target;
    Probe::onRead = [&](IfcInFiler& in) {
        target = in.handle(9);
        return true;
    };
    Probe::onValidate = [&](ValidationContext& context) {
        if (context.currentId() == 9) return code;
        answers.push_back(context.validateRef(target()));
        context.reportMember(answers.back(), L"Target");
        return static_cast<int>(kValid);
    };
    const struct {
        int code, first, second;
        const char* ids;
        const char* log;
    } cases[] = {
        {kValid, 1, 1, "1 2 9", ""},
        {kInvalid, 0, 0, "1 2",
         "Invalid entity #9 is removed.\nInvalid data member 'Target' in #1, removed.\n"
         "Invalid data member 'Target' in #2, removed.\n"},
        {kNotLoaded, 2, 0, "1 2",
         "Entity #9 is not loaded.\nData member 'Target' in # is not loaded\n"
         "Invalid data member 'Target' in #2, removed.\n"},
        {7, 7, 1, "1 2 9", ""},  // no code of the library: bit 0 counts
    };
    for (const auto& c : cases) {
        code = c.code;
        answers.clear();
        const Loaded loaded =
            loadRecords(files_, "#1=IFCTESTPROBE();#2=IFCTESTPROBE();#9=IFCTESTPROBE();");
        EXPECT_EQ(answers, (std::vector<int>{c.first, c.second})) << c.code;
        EXPECT_EQ(loaded.ids(), c.ids) << c.code;
        EXPECT_EQ(loaded.log, c.log) << c.code;
    }
}

TEST_F(Validation, AnEntityThatIsNotOfTheFileIsNotLoaded) {
    const ModelPtr other = newModel();
    Leaf* const stranger = Leaf::create(*other);
    int answer = -1;
    Probe::onValidate = [&](ValidationContext& context) {
        answer = context.validateRef(stranger);
        return static_cast<int>(kValid);
    };
    const Loaded loaded = loadRecords(files_, "#1=IFCTESTPROBE();");
    EXPECT_EQ(answer, kNotLoaded);
    EXPECT_EQ(loaded.log, "");
}

// A reference in a nested list is not judged by its holder: it may lead to an entity that goes.
TEST_F(Validation, AnUnjudgedReferenceToARemovedEntityLeadsNowhere) {
    EntityId handle;
    Probe::onRead = [&](IfcInFiler& in) {
        handle = in.handle(2);
        return true;
    };
    const Loaded loaded = loadRecords(files_, "#1=IFCTESTPROBE();#2=IFCTESTLEAF(3);");
    EXPECT_EQ(loaded.ids(), "1");
    EXPECT_FALSE(handle.isNull());
    EXPECT_EQ(handle(), nullptr);
}

TEST_F(Validation, AChainOfAMillionReferencesIsJudged) {
    // Each refers to the next, so that the first reaches them all; the last one fails.
    constexpr int kLength = 1000000;
    std::string records;
    for (int i = 1; i < kLength; ++i) {
        records +=
            "#" + std::to_string(i) + "=IFCTESTNODE('',#" + std::to_string(i + 1) + ",$,());\n";
    }
    const Loaded good =
        loadRecords(files_, records + "#" + std::to_string(kLength) + "=IFCTESTLEAF('');\n");
    EXPECT_EQ(good.model->getNumEntities(), static_cast<std::uint64_t>(kLength));
    EXPECT_EQ(good.log, "");

    const Loaded bad =
        loadRecords(files_, records + "#" + std::to_string(kLength) + "=IFCTESTNODE('',$,$,());\n");
    EXPECT_EQ(bad.model->getNumEntities(), 0u);
    const std::string first =
        "Invalid data member 'Required' in #1000000, removed.\n"
        "Invalid entity #1000000 is removed.\n"
        "Invalid data member 'Required' in #999999, removed.\n";
    const std::string last =
        "Invalid data member 'Required' in #1, removed.\nInvalid entity #1 is removed.\n";
    ASSERT_GT(bad.log.size(), first.size());
    EXPECT_EQ(bad.log.substr(0, first.size()), first);
    EXPECT_EQ(bad.log.substr(bad.log.size() - last.size()), last);
}

}  // namespace
}  // namespace Ovik
