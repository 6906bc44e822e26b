// Binaries: what counts as one, bits, sharing, and the bytes that resizing leaves.
#include "ovik/imp/xbinary.h"

#include <gtest/gtest.h>

#include <string>

using Ovik::XBinary;
using namespace std::string_literals;

namespace {

/// The first `count` bytes of the stored text, NUL characters included.
std::string bytesOf(const XBinary& value, std::size_t count) {
    return std::string(value.getEncodedString(), count);
}

TEST(XBinary, Construction) {
    const struct {
        const char* text;
        const char* encoded;
        std::size_t bits;
        bool empty;
    } cases[] = {{nullptr, "0", 0, true},  {"", "0", 0, true},          {"3F", "3F", 1, false},
                 {"0ab", "0AB", 8, false}, {"2xyz", "2XYZ", 10, false}, {"4AB", "0", 0, true},
                 {"\"0AB", "0", 0, true},  {"A", "0", 0, true},         {"0", "0", 0, false},
                 {"3", "3", 0, false}};
    for (const auto& c : cases) {
        const XBinary value(c.text);
        EXPECT_STREQ(value.getEncodedString(), c.encoded);
        EXPECT_EQ(value.numBits(), c.bits) << c.encoded;
        EXPECT_EQ(value.isEmpty(), c.empty) << c.encoded;
    }
}

TEST(XBinary, Bits) {
    XBinary value("10AB");
    std::string bits;
    for (std::size_t i = value.numBits(); i-- > 0;) bits += value.getBit(i) ? '1' : '0';
    EXPECT_EQ(bits, "00010101011");
    EXPECT_TRUE(value.setBit(10, true));
    EXPECT_TRUE(value.setBit(0, false));
    EXPECT_TRUE(value.setBit(6, true));
    EXPECT_FALSE(value.setBit(11, true));
    EXPECT_STREQ(value.getEncodedString(), "14EA");
    EXPECT_FALSE(XBinary().setBit(0, true));
    EXPECT_FALSE(XBinary("3").setBit(0, true));
    // Asking past the end is a mistake, but not one that leads out of the block.
    EXPECT_FALSE(value.getBit(16));
    EXPECT_FALSE(XBinary().getBit(0));
}

TEST(XBinary, Sharing) {
    XBinary first("0FF");
    XBinary second(first);
    EXPECT_TRUE(second.setBit(0, true));
    EXPECT_EQ(first.getEncodedString(), second.getEncodedString()) << "no change, no copy";
    EXPECT_TRUE(second.setBit(0, false));
    XBinary third;
    third = first;
    third.resize(7);
    EXPECT_STREQ(second.getEncodedString(), "0FE");
    EXPECT_STREQ(third.getEncodedString(), "1@F");
    EXPECT_STREQ(first.getEncodedString(), "0FF");

    const char* const own = third.getEncodedString();
    EXPECT_TRUE(third.setBit(0, false));
    const XBinary& self = third;
    third = self;
    EXPECT_EQ(third.getEncodedString(), own) << "a sole owner needs no copy";

    // Clearing, alone, goes through to the sharers.
    const XBinary sharer(first);
    first.clear();
    EXPECT_EQ(bytesOf(sharer, 4), "0\0\0\0"s);
    EXPECT_EQ(sharer.numBits(), 8u);
    first = XBinary();
    first.clear();
    EXPECT_STREQ(first.getEncodedString(), "0");
}

TEST(XBinary, Resize) {
    // The mask of a count digit takes bits of the character. The count digit of a value that grows
    // becomes a digit. The "0" of the empty value, which a refused text is too, comes to stand
    // last.
    const struct {
        const char* text;
        std::size_t bits;
        std::string bytes;
    } cases[] = {
        {"0AB", 8, "0AB\0\0"s},       {"0AB", 5, "3AB\0\0"s},    {"0FF", 7, "1@F\0\0"s},
        {"0FF", 6, "2BF\0\0"s},       {"3AB", 8, "0AB\0\0"s},    {"0AB", 4, "0B\0\0"s},
        {"0AB", 3, "1B\0\0"s},        {"0AB", 12, "00AB\0\0"s},  {"3AB", 9, "33AB\0\0"s},
        {"0AB", 16, "0\0000AB\0\0"s}, {nullptr, 1, "3\0000\0"s}, {nullptr, 8, "0\0\0000\0"s},
        {"\"0A", 7, "1\0\0000\0"s},   {"0", 4, "00\0\0"s}};
    for (const auto& c : cases) {
        XBinary value(c.text);
        value.resize(c.bits);
        EXPECT_EQ(bytesOf(value, c.bytes.size()), c.bytes) << "resize to " << c.bits;
        EXPECT_EQ(value.numBits(), c.bits);
        value.resize(0);
        EXPECT_TRUE(value.isEmpty());
        EXPECT_STREQ(value.getEncodedString(), "0");
    }
    XBinary refused("\"0A");
    refused.resize(8);
    EXPECT_TRUE(refused.isEmpty()) << "of that length already";

    // A value grown from nothing ends in a NUL, and so do its copies.
    XBinary grown;
    grown.resize(8);
    XBinary copy(grown);
    EXPECT_TRUE(copy.setBit(0, false));  // a NUL digit reads as 1001
    EXPECT_EQ(bytesOf(copy, 5), "0\00080\0"s);
    EXPECT_EQ(bytesOf(grown, 5), "0\0\0000\0"s);
    EXPECT_TRUE(copy.setBit(4, false));
    EXPECT_STREQ(copy.getEncodedString(), "0880");
}

}  // namespace
