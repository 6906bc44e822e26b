// Parsed items: counting, sharing and releasing them, at any depth.
#include "ovik/parser/items.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/parsing.h"

namespace {

using namespace Ovik::IfcParser;
using OvikTest::kDepth;

ItemList* list(const std::vector<ItemBase*>& elements) {
    return new ItemList(elements.data(), elements.size());
}

TEST(Items, CountsAndSharing) {
    // The shared items are one object each, and stay.
    ItemBase* const shared[] = {itemNil(), itemDerived(), itemTrue(), itemFalse()};
    EXPECT_EQ(itemNil(), shared[0]);
    EXPECT_EQ(itemNil()->value, 0);
    EXPECT_EQ(itemTrue()->value, 1);
    EXPECT_EQ(itemFalse()->value, 0);

    const int before = liveItems;
    auto* const word = new PooledName("WORD");
    word->addRef();
    word->addRef();
    for (ItemBase* item : shared) item->addRef();
    ItemBase* const inner = list({new ItemInt(1), new ItemString(std::string(100, 'x'))});
    inner->addRef();
    ItemBase* const outer =
        list({shared[0], shared[1], shared[2], shared[3], new ItemDbl(1.5), new ItemRef(7),
              new ItemEnum(word), new ItemBinary("\"0F"), new ItemChoice(word, inner), list({})});
    EXPECT_EQ(liveItems - before, 10);
    EXPECT_EQ(OvikTest::dump(*outer).substr(0, 40), "($,*,.T.,.F.,1.5,#7,.WORD.,\"0F\",WORD((1,");
    EXPECT_EQ(static_cast<ItemList*>((*static_cast<ItemList*>(outer)->items)[9])->items, nullptr);

    outer->release();
    EXPECT_EQ(liveItems - before, 3);
    EXPECT_EQ(inner->refCount, 1u);
    EXPECT_EQ(word->refCount, 1u);
    inner->release();
    word->release();
    EXPECT_EQ(liveItems, before);
    // An item made later may stand where another stood, and holds only its own.
    ItemBase* const again = list({new ItemInt(2)});
    EXPECT_EQ(OvikTest::dump(*again), "(2)");
    again->release();
}

// Reals go by the fewest digits that read back the same.
TEST(Items, RealsAsText) {
    const std::pair<double, const char*> cases[] = {
        {0, "0."},
        {-0.0, "-0."},
        {25, "25."},
        {0.1, "0.1"},
        {-2.5, "-2.5"},
        {1e-4, "0.0001"},
        {1.5e-5, "1.5E-05"},
        {1e15, "1000000000000000."},
        {1e16, "1.E+16"},
        {-1.25e100, "-1.25E+100"},
        {123456789012345.67, "123456789012345.67"},
        {1 / 3.0, "0.3333333333333333"},
        {4.9e-324, "5.E-324"},
        {HUGE_VAL, "1.E999"},
        {-HUGE_VAL, "-1.E999"},
    };
    const auto text = [](ItemBase* item) {
        const std::string spelled = OvikTest::dump(*item);
        item->release();
        return spelled;
    };
    for (const auto& [value, expected] : cases) EXPECT_EQ(text(new ItemDbl(value)), expected);
    EXPECT_EQ(text(new ItemDbl(5e9, true)), "5000000000");
    std::mt19937_64 random(3);
    for (int i = 0; i < 20'000; ++i) {
        const auto value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        const std::string spelled = text(new ItemDbl(value));
        ASSERT_NE(spelled.find('.'), std::string::npos);
        ASSERT_EQ(std::strtod(spelled.c_str(), nullptr), value) << spelled;
    }
}

// Neither releasing nor comparing may end with the stack.
TEST(Items, AnyDepth) {
    const int before = liveItems;
    const auto nest = [](int core) {
        ItemBase* item = new ItemInt(core);
        for (int i = 0; i < kDepth; ++i) {
            item = list({item});
            if (i % 4 == 0) item = new ItemChoice(new PooledName("A"), item);
        }
        return item;
    };
    ItemBase* const a = nest(1);
    ItemBase* const b = nest(1);
    ItemBase* const c = nest(2);
    EXPECT_TRUE(a->isEqualTo(*b, {0, nullptr}));
    EXPECT_FALSE(a->isEqualTo(*c, {0, nullptr}));
    for (ItemBase* item : {a, b, c}) item->release();
    EXPECT_EQ(liveItems, before);
}

// What is left when the process ends is told there.
TEST(ItemsDeathTest, ReportAtTheEnd) {
    EXPECT_EXIT(
        {
            itemTrue();
            itemNil()->addRef();
            new ItemInt(1);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^Still allocated [0-9]+ list items\n$");
    if (liveItems <= 4) {
        EXPECT_EXIT(
            {
                itemDerived();
                std::exit(0);
            },
            testing::ExitedWithCode(0), "^$");
    }
}

}  // namespace
