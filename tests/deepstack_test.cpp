// Recursion beyond the stack: results, exceptions, and the end of the process.
#include "ovik/base/deepstack.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/parsing.h"

namespace Ovik {
namespace {

using OvikTest::kDepth;

int depthOf(int n) {
    return n == 0 ? 0 : 1 + callDeep([n] { return depthOf(n - 1); });
}

void throwAt(int n) {
    if (n == 0) throw std::string("bottom");
    callDeep([n] { throwAt(n - 1); });
}

TEST(DeepStack, CarriesResultsAndExceptions) {
    EXPECT_EQ(depthOf(kDepth), kDepth);
    try {
        throwAt(kDepth);
        FAIL();
    } catch (const std::string& text) {
        EXPECT_EQ(text, "bottom");
    }
    EXPECT_EQ(depthOf(kDepth), kDepth);
}

IfcParser::ItemList* nested(int depth) {
    auto* list = new IfcParser::ItemList;
    for (int i = 0; i < depth; ++i) {
        IfcParser::ItemBase* const element = list;
        list = new IfcParser::ItemList(&element, 1);
    }
    return list;
}

// Static objects go after the variables of the thread.
TEST(DeepStackDeathTest, ServesStaticObjectsAtTheEndOfTheProcess) {
    EXPECT_EXIT(
        {
            static struct Holder {
                IfcParser::ItemList* list = nullptr;
                ~Holder() { list->release(); }
            } holder;
            holder.list = nested(kDepth);
            nested(kDepth)->release();
            depthOf(kDepth);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace Ovik
