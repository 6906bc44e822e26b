// The table of a load: order, growth and memory.
#include "ovik/imp/load/entrytable.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <random>
#include <vector>

namespace Ovik {
namespace {

std::vector<std::uint32_t> walk(EntryTable& table) {
    std::vector<std::uint32_t> records;
    table.forEach([&](EntityEntry& entry) { records.push_back(entry.record); });
    return records;
}

// The same operations on the table and on an ordered map.
void expectLikeMap(const std::vector<int>& numbers) {
    EntryTable table;
    std::map<int, std::uint32_t> model;
    std::uint32_t next = 0;
    for (const int number : numbers) {
        EXPECT_EQ(table.find(number) != nullptr, model.contains(number)) << number;
        if (!model.contains(number)) model[number] = table[number].record = ++next;
        ASSERT_EQ(table[number].record, model[number]) << number;
    }
    EXPECT_EQ(table.size(), model.size());
    std::vector<std::uint32_t> expected;
    for (const auto& [number, record] : model) {
        expected.push_back(record);
        ASSERT_NE(table.find(number), nullptr) << number;
        EXPECT_EQ(table.find(number)->record, record) << number;
    }
    EXPECT_EQ(walk(table), expected);
}

TEST(EntryTable, EveryNumberingGivesTheEntriesInAscendingOrder) {
    std::vector<int> ascending, descending, fromFarOut, stepped;
    for (int i = 1; i <= 20000; ++i) {
        ascending.push_back(i);
        descending.push_back(20001 - i);
        fromFarOut.push_back(100000 + i);  // begins in the map and moves to the array
        stepped.push_back(i * 7);
    }
    std::vector<int> random;
    std::mt19937 generator(1);
    for (int i = 0; i < 5000; ++i) {
        const auto bits = generator() % 31 + 1;
        const int magnitude = static_cast<int>(generator() >> (32 - bits) & INT_MAX);
        random.push_back(i % 5 == 0 ? -magnitude : magnitude);
    }
    const std::vector<int> extremes = {INT_MAX, 1, INT_MIN, 0, -1, 4095, 4096, INT_MAX - 1, 2};
    for (const auto& numbers : {ascending, descending, fromFarOut, stepped, random, extremes}) {
        expectLikeMap(numbers);
    }
}

TEST(EntryTable, ANumberBesideANamedOneIsNotNamed) {
    EntryTable table;
    table[5];
    EXPECT_NE(table.find(5), nullptr);
    for (const int number : {-5, 0, 4, 6, 4096, INT_MAX}) {
        EXPECT_EQ(table.find(number), nullptr) << number;
    }
    EXPECT_EQ(table.size(), 1u);
    table.clear();
    EXPECT_EQ(table.find(5), nullptr);
    EXPECT_EQ(table.size(), 0u);
    EXPECT_EQ(table.denseSize(), 0u);
}

TEST(EntryTable, MemoryFollowsTheCountOfEntriesAndNotTheirNumbers) {
    EntryTable lone;
    lone[INT_MAX];
    EXPECT_LE(lone.denseSize(), 4096u);

    EntryTable scattered;
    for (int i = 1; i <= 10000; ++i) scattered[i * 200000];
    EXPECT_LE(scattered.denseSize(), 80000u);

    // A file that begins far out ends in the array all the same.
    EntryTable shifted;
    for (int i = 0; i < 100000; ++i) shifted[200000 + i];
    EXPECT_GE(shifted.denseSize(), 300000u);
    EXPECT_LE(shifted.denseSize(), 800000u);
}

}  // namespace
}  // namespace Ovik
