// Parsed items: counting, sharing and releasing them, at any depth.
#include "ovik/parser/items.h"

#include <gtest/gtest.h>

#include <string>
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
