// Judging of entities after a load: codes of classes outside of the library, and any depth.
#include <gtest/gtest.h>

#include "loadtext.h"

namespace Ovik {
namespace {

using namespace Test;

class Validation : public ModelTest {};

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
        const Loaded loaded = loadRecords("#1=IFCTESTPROBE();#2=IFCTESTPROBE();#9=IFCTESTPROBE();");
        EXPECT_EQ(answers, (std::vector<int>{c.first, c.second})) << c.code;
        EXPECT_EQ(loaded.ids(), c.ids) << c.code;
        EXPECT_EQ(loaded.log, c.log) << c.code;
    }
}

TEST_F(Validation, OddCases) {
    // Valid, but found valid by way of a lower number that fails: nothing is moved at all.
    EntityId handle;
    Probe::onRead = [&](IfcInFiler& in) {
        handle = in.handle(2);
        return true;
    };
    Probe::onValidate = [&](ValidationContext& context) {
        EXPECT_EQ(context.validateRef(handle()), kValid);
        return kInvalid;
    };
    Loaded loaded = loadRecords("#1=IFCTESTPROBE();#2=IFCTABLEROW($,$);");
    EXPECT_EQ(loaded.ids(), "");
    EXPECT_EQ(loaded.log, "Invalid entity #1 is removed.\n");
    EXPECT_FALSE(handle.isNull());
    EXPECT_EQ(handle(), nullptr);

    // An entity that is not of the file; asked again under a number that only a reference has
    // named.
    std::vector<int> answers;
    Probe* const stranger = make<Probe>();
    Probe::onRead = [](IfcInFiler& in) { return !in.handle(2).isNull(); };
    Probe::onValidate = [&](ValidationContext& context) {
        answers.push_back(context.validateRef(stranger));
        return static_cast<int>(kValid);
    };
    EXPECT_EQ(loadRecords("#1=IFCTESTPROBE();").log, "");
    stranger->setIfcId(2);
    loaded = loadRecords("#1=IFCTESTPROBE();#3=IFCTESTPROBE();");
    EXPECT_EQ(loaded.log, "Entity #1 is not loaded.\n");
    EXPECT_EQ(loaded.ids(), "1 3");
    EXPECT_EQ(answers, (std::vector<int>{kNotLoaded, kNotLoaded, kInvalid}));
}

// Each refers to the next, so that the first reaches them all.
TEST_F(Validation, AChainOfReferencesOfAnyLengthIsJudgedAndWritten) {
    std::string records;
    for (int i = 1; i < kDepth; ++i) {
        records += "#" + std::to_string(i) + "= IFCMIRROREDPROFILEDEF(.AREA.,$,#" +
                   std::to_string(i + 1) + ",*,$);\n";
    }
    const std::string number = std::to_string(kDepth);
    const std::string good = records + "#" + number + "= IFCPROFILEDEF(.AREA.,$);\n";
    {
        const Loaded loaded = loadRecords(good);
        EXPECT_EQ(loaded.log, "");
        EXPECT_TRUE(recordsOf(*loaded.model) == good);  // not shown: some 50 MB
    }
    const Loaded bad =
        loadRecords(records + "#" + number + "= IFCMIRROREDPROFILEDEF(.AREA.,$,$,*,$);\n");
    EXPECT_EQ(bad.model->getNumEntities(), 0u);
    const auto report = [](const std::string& id) {
        return "Invalid data member 'ParentProfile' in #" + id + ", removed.\nInvalid entity #" +
               id + " is removed.\n";
    };
    EXPECT_TRUE(bad.log.starts_with(report(number) + report(std::to_string(kDepth - 1))));
    EXPECT_TRUE(bad.log.ends_with(report("2") + report("1")));
}

}  // namespace
}  // namespace Ovik
