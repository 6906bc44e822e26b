// Parsed items: counting, sharing, releasing and comparing them.
#include "ovik/parser/items.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "tests/parsing.h"

namespace {

using namespace Ovik::IfcParser;

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
    EXPECT_EQ(OvikTest::dump(*outer).substr(0, 40), "($,*,true,false,R1.5,#7,.WORD.,\"0F~,WORD");
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

TEST(Items, Comparison) {
    const auto name = [](const char* text) { return new PooledName(text); };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        ItemBase* a;
        ItemBase* b;
        double tolerance;
        std::string report;  // empty if they are equal
    };
    const auto shared = [](ItemBase* item) {
        item->addRef();
        return item;
    };
    const std::string is = " is different";
    const Case cases[] = {
        {new ItemInt(1), new ItemDbl(1), 1, "\nType of list item" + is},
        {new ItemInt(1), new ItemInt(1), 0, ""},
        {new ItemInt(1), new ItemInt(2), 9, "\nInt value" + is},
        {new ItemString("a"), new ItemString("a"), 0, ""},
        {new ItemString("a"), new ItemString("ab"), 0, "\nString value" + is},
        {new ItemBinary("\"0F"), new ItemBinary("\"0f"), 0, "\nBinary value" + is},
        {new ItemDbl(1), new ItemDbl(1), 0, "\nDouble" + is},
        {new ItemDbl(1), new ItemDbl(1), 1e-300, ""},
        {new ItemDbl(1.0), new ItemDbl(1.0005), 0.001, ""},
        {new ItemDbl(1.002), new ItemDbl(1.0), 0.001, "\nDouble" + is},
        {new ItemDbl(2), new ItemDbl(1), 1, "\nDouble" + is},
        {new ItemDbl(nan), new ItemDbl(nan), 1, "\nDouble" + is},
        {shared(itemTrue()), shared(itemFalse()), 0, "\nBool value" + is},
        {shared(itemTrue()), shared(itemTrue()), 0, ""},
        {new ItemEnum(name("A")), new ItemEnum(name("A")), 0, ""},
        {new ItemEnum(name("A")), new ItemEnum(name("B")), 0, "\nEnum value" + is},
        {shared(itemNil()), new ItemRef(3), 0, "\nReference value" + is},
        {shared(itemDerived()), shared(itemDerived()), 0, ""},
        {shared(itemDerived()), shared(itemNil()), 0, "\nType of list item" + is},
        {new ItemChoice(name("A"), new ItemInt(1)), new ItemChoice(name("B"), new ItemInt(2)), 0,
         "\nType of choice value" + is},
        {new ItemChoice(name("A"), new ItemInt(1)), new ItemChoice(name("A"), new ItemInt(2)), 0,
         "\nInt value" + is + "\nChoice value" + is},
        {list({}), list({}), 0, ""},
        {list({}), list({new ItemInt(1)}), 0, "\nList size" + is},
        {list({new ItemInt(1), new ItemInt(1)}), list({new ItemInt(2)}), 0, "\nList size" + is},
        {list({new ItemInt(1), list({new ItemInt(2)})}), list({new ItemInt(1), list({list({})})}),
         0, "\nType of list item" + is + "\nList item 0" + is + "\nList item 1" + is},
    };
    for (const Case& c : cases) {
        std::ostringstream report;
        EXPECT_EQ(c.a->isEqualTo(*c.b, {c.tolerance, &report}), c.report.empty());
        EXPECT_EQ(report.str(), c.report);
        EXPECT_EQ(c.a->isEqualTo(*c.b, {c.tolerance, nullptr}), c.report.empty());
        c.a->release();
        c.b->release();
    }
}

// Neither releasing nor comparing may end with the stack.
TEST(Items, AnyDepth) {
    constexpr int kDepth = 1'000'000;
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
