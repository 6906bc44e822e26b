// Identifiers: both forms, and what becomes of malformed text.
#include "ovik/imp/base64guid.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

using Ovik::Base64Guid;

namespace {

TEST(Base64Guid, FormsBelongTogether) {
    const std::pair<std::string, std::string> cases[] = {
        {"000G8310K61mW92WiC3GuF", "{00010203-0405-0607-0809-0A0B0C0D0E0F}"},
        {"32clZGFXjCNPv$0ID5Puch", "{C29AF8D0-3E1B-4C5D-9E7F-0123456789AB}"},
        {"3$$$$$$$$$$$$$$$$$$$$$", "{FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"},
        {"3300000000000000000000", "{C3000000-0000-0000-0000-000000000000}"}};
    for (const auto& [base64, text] : cases) {
        const Base64Guid guid = Base64Guid::createFromBase64(base64.c_str());
        EXPECT_EQ(guid.getBase64(), base64);
        EXPECT_EQ(guid.getText(), text);
        EXPECT_EQ(Base64Guid::createFromText(base64.c_str()), guid) << base64;
        EXPECT_EQ(Base64Guid::createFromText(text.c_str()), guid) << text;
    }
    const Base64Guid& test = Base64Guid::testGuid();
    EXPECT_STREQ(test.getBase64(), "_dummy_GUID_dummy_GIUD");
    EXPECT_STREQ(test.getText(), "{A7E30C3C-F907-9237-E9F8-C30F3E41278D}");
    EXPECT_EQ(&test, &Base64Guid::testGuid());
}

TEST(Base64Guid, MalformedText) {
    // A stray character, one of 8 bits, surplus ones, missing ones.
    const char* const compressed[][3] = {
        {"0-00000000000000000000", "0-00000000000000000000",
         "{3F000000-0000-0000-0000-000000000000}"},
        {"000000000000000000000\xE4", "000000000000000000000\xE4",
         "{00000000-0000-0000-0000-00000000003F}"},
        {"33000000000000000000001234", "3300000000000000000000",
         "{C3000000-0000-0000-0000-000000000000}"},
        {"330000", "330000", "{C3000000-FFFF-FFFF-FFFF-FFFFFFFFFFFF}"}};
    for (const auto& [given, base64, text] : compressed) {
        const Base64Guid guid = Base64Guid::createFromBase64(given);
        EXPECT_STREQ(guid.getBase64(), base64);
        EXPECT_STREQ(guid.getText(), text);
    }
    const std::string upper = "{C29AF8D0-3E1B-4C5D-9E7F-0123456789AB}";
    const Base64Guid guid = Base64Guid::createFromText(upper.c_str());
    EXPECT_EQ(Base64Guid::createFromText((upper + "tail").c_str()), guid);
    for (const std::string text : {"{c29af8d0-3e1b-4c5d-9e7f-0123456789ab}", "", "{C29AF8D0"}) {
        const Base64Guid odd = Base64Guid::createFromText(text.c_str());
        EXPECT_EQ(odd.getText(), text);
        EXPECT_STRNE(odd.getBase64(), guid.getBase64());
        EXPECT_EQ(std::string(odd.getBase64()).size(), 22u);
    }
}

TEST(Base64Guid, CopyMoveCompare) {
    Base64Guid first = Base64Guid::createFromBase64("32clZGFXjCNPv$0ID5Puch");
    const Base64Guid copy = first;
    EXPECT_EQ(copy, first);
    // The same 128 bits, but not the same characters.
    EXPECT_NE(Base64Guid::createFromBase64("$2clZGFXjCNPv$0ID5Puch"), copy);
    Base64Guid moved(std::move(first));
    EXPECT_EQ(moved, copy);
    EXPECT_EQ(first, Base64Guid());
    first = std::move(moved);
    EXPECT_EQ(first, copy);
    EXPECT_STREQ(moved.getText(), "");
}

TEST(Base64Guid, NewOnesAreRandom) {
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        const Base64Guid guid = Base64Guid::create();
        EXPECT_EQ(Base64Guid::createFromText(guid.getText()), guid);
        EXPECT_EQ(Base64Guid::createFromBase64(guid.getBase64()), guid);
        const std::string text = guid.getText();
        EXPECT_EQ(text[15], '4') << text;  // random, of the usual variant
        EXPECT_NE(std::string_view("89AB").find(text[20]), std::string_view::npos) << text;
        seen.insert(text);
    }
    EXPECT_EQ(seen.size(), 200u);
}

}  // namespace
