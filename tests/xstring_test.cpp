// Strings: both spellings, the difference between unset and "", sharing, and UTF-8.
#include "ovik/imp/xstring.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>

#include "ovik/imp/utf8.h"

using namespace Ovik;

namespace {

// Their addresses would be compared, and ordered.
static_assert(!std::is_invocable_v<std::equal_to<>, XString, XString>);
static_assert(!std::is_invocable_v<std::less<>, XString, XString>);
static_assert(!std::is_invocable_v<std::greater_equal<>, const char16_t*, XString>);

using Case = std::pair<std::string, std::u16string>;

std::u16string textOf(const XString& value) {
    return value.c_str();
}

std::u16string decoded(const std::string& encoded) {
    const XString value = XString::decode(encoded.c_str());
    EXPECT_EQ(value.getEncoded(), encoded) << "kept verbatim";
    return value.c_str();
}

std::u16string decodedExactly(const std::string& encoded) {
    const XString value = XString::decodeExact(encoded.c_str());
    EXPECT_FALSE(value.isEmpty());
    EXPECT_EQ(value.getEncoded(), encoded) << "kept verbatim";
    return value.c_str();
}

TEST(XString, EncodesAndDecodesBack) {
    const Case cases[] = {{"", u""},
                          {"plain ~ text", u"plain ~ text"},
                          {"it''s\\\\", u"it's\\"},
                          {"\\S\\d\\S\\ \\S\\~", u"\u00E4\u00A0\u00FE"},
                          {"\\S\\'x\\S\\\\x", u"\u00A7x\u00DCx"},
                          {"\\X\\FF\\X\\7F\\X\\80\\X\\9F", u"\u00FF\u007F\u0080\u009F"},
                          {"\\X\\0A\\X\\01\\X\\1F", u"\n\u0001\u001F"},
                          {"\\X2\\04160417\\X0\\", u"\u0416\u0417"},
                          {"\\X2\\0416\\X0\\A\\X2\\0417\\X0\\", u"\u0416A\u0417"},
                          {"\\X2\\0100\\X0\\\\X\\FF''\\X2\\FFFF\\X0\\", u"\u0100\u00FF'\uFFFF"},
                          {"\\X2\\D83DDE00\\X0\\", u"\U0001F600"}};
    for (const auto& [encoded, text] : cases) {
        const XString value(text.c_str());
        EXPECT_EQ(textOf(value), text);
        EXPECT_EQ(value.getEncoded(), encoded);
        EXPECT_EQ(decoded(encoded), text) << encoded;
    }
}

TEST(XString, AnyTextSurvivesEncoding) {
    std::mt19937 random(7);
    // Few alphabets, so that the rare kinds of unit meet each other often.
    const std::u16string alphabet = u"'\\\\S X2041AF~\u00A0\u00A7\u00DC\u00FE\u00FF\u007F\n";
    for (int round = 0; round < 20000; ++round) {
        std::u16string text(random() % 12, u' ');
        for (char16_t& unit : text) {
            unit = random() % 4 ? alphabet[random() % alphabet.size()]
                                : static_cast<char16_t>(1 + random() % 0xFFFF);
        }
        const std::string encoded = XString(text.c_str()).getEncoded();
        for (const char c : encoded) ASSERT_TRUE(c >= ' ' && c <= '~') << encoded;
        ASSERT_EQ(decoded(encoded), text) << encoded;
        ASSERT_EQ(decodedExactly(encoded), text) << encoded;
    }
}

TEST(XString, DecodesByTheLetter) {
    const Case cases[] = {
        {"raw \xE4\xFF", u"raw \u00E4\u00FF"},
        {"a'bc", u"a'c"},                      // the byte behind an apostrophe goes
        {"\\X\\41\\X\\e4", u"A\u02E4"},        // small letters are no digits
        {"\\X2\\00E4zyxab", u"\u00E4\u763A"},  // not a digit among them; the rest is cut off
        {"\\X2?00E4\\???z", u"\u00E4z"},       // bytes that nobody looks at
        {"\\X2\\\\X0\\\\X0\\z", u"\u7125z"},   // the first group is read whatever it is
        {"\\S?d\\S\\\xE4", u"\u00E4d"},
        {"\\PA\\\\S\\d", u"A\\S"},  // no page switch
        {"\\X4\\0001F600\\X0\\", u"01F600"},
        {"a\\bcd", u"ad"},
        {"\\?\\41z", u"Az"}  // anything but S, P and backslash is read as X
    };
    for (const auto& [encoded, text] : cases) EXPECT_EQ(decoded(encoded), text) << encoded;
    // An escape that the end of the text cuts off gives nothing.
    for (const char* cut : {"\\", "\\S", "\\S\\", "\\P", "\\X", "\\X\\", "\\X\\4", "\\X2", "\\X2\\",
                            "\\X2\\0", "\\X2\\00E", "\\b"}) {
        EXPECT_EQ(decoded(std::string("ab") + cut), u"ab") << cut;
    }
    for (const char* cut : {"", "\\", "\\X", "\\X0", "01"}) {
        EXPECT_EQ(decoded(std::string("\\X2\\00E4") + cut), u"\u00E4") << cut;
    }
    EXPECT_EQ(decoded("it'"), u"it'");
}

// As ISO 10303-21 has it.
TEST(XString, DecodesExactly) {
    const Case cases[] = {
        {"", u""},
        {"it''s", u"it's"},
        {"raw \xE4\xFF", u"raw \u00E4\u00FF"},
        {R"(C:\\dir\\x)", u"C:\\dir\\x"},
        {R"(\S\D\S\'\S\\\S\S)", u"\u00C4\u00A7\u00DC\u00D3"},
        {"\\S\\\xC4\\S\\\x01", u"D\u0081"},
        {R"(\X\e4\X\C4\X2\00e403B1\X0\!\X2\\X0\)", u"\u00E4\u00C4\u00E4\u03B1!"},
        {R"(\X4\0001F6000000041f\X0\\X4\00110000\X0\)", u"\U0001F600\u041F\uFFFD"},
        {R"(\X2\D83DDE00\X0\\X\00a)", u"\U0001F600\uFFFDa"},
        // A page holds up to the next one.
        {R"(\S\!\PB\\S\!\S\D\PA\\S\!)", u"\u00A1\u0104\u00C4\u00A1"},
        {R"(\PC\\S\!\S\%\PD\\S\"\PE\\S\p\PF\\S\G\PG\\S\a\PH\\S\`\PI\\S\])",
         u"\u0126\uFFFD\u0138\u2116\u0627\u03B1\u05D0\u0130"},
        {R"(a\N\b\F\c)", u"abc"},
        // What opens no escape is itself.
        {R"(\)", u"\\"},
        {R"(\a\PJ\\PA\S\)", u"\\a\\PJ\\PA\\S\\"},
        {R"(\X\4G\X2\00E\X0\\X2\00E4\X4\00000041)",
         u"\\X\\4G\\X2\\00E\\X0\\X2\\00E4\\X4\\00000041"},
    };
    for (const auto& [encoded, text] : cases) EXPECT_EQ(decodedExactly(encoded), text) << encoded;
}

TEST(XString, UnsetIsNotEmptyText) {
    XString value;
    EXPECT_TRUE(value.isEmpty());
    EXPECT_EQ(textOf(value), u"");
    EXPECT_STREQ(value.getEncoded(), "");
    EXPECT_TRUE(XString(value).isEmpty());
    for (const XString& present : {XString(u""), XString::decode(""), fromUtf8("")}) {
        EXPECT_EQ(textOf(present), u"");
        value = present;
        EXPECT_FALSE(value.isEmpty());
        value = nullptr;
        EXPECT_TRUE(value.isEmpty());
        EXPECT_FALSE(present.isEmpty());
    }
}

TEST(XString, CopiesShareAndOutliveEachOther) {
    const auto count = [](const void* block) { return FastHeap::numRefs(block, "test", 0); };
    XString copy;
    {
        const XString first(u"shared");
        copy = first;
        const XString second(first);
        EXPECT_EQ(copy.c_str(), first.c_str());
        EXPECT_EQ(count(copy.c_str()), 3u);
        EXPECT_EQ(count(copy.getEncoded()), 3u);
    }
    XString other(copy);
    copy.setEmpty();
    EXPECT_TRUE(copy.isEmpty());
    const XString& self = other;
    other = self;
    XString moved(std::move(other));
    EXPECT_TRUE(other.isEmpty());
    EXPECT_EQ(textOf(moved), u"shared");
    EXPECT_EQ(count(moved.c_str()), 1u);
    EXPECT_EQ(count(moved.getEncoded()), 1u);
}

TEST(XString, Utf8) {
    const Case cases[] = {
        {"", u""},
        {"a\x7F\xC2\x80\xDF\xBF", u"a\u007F\u0080\u07FF"},
        {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", u"\u0800\uD7FF\uE000\uFFFF"},
        {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"}};
    for (const auto& [utf8, text] : cases) {
        EXPECT_EQ(textOf(fromUtf8(utf8)), text);
        EXPECT_EQ(toUtf8(XString(text.c_str())), utf8);
    }
    // Stray, overlong, surrogate, too great, cut off, broken off by another lead byte.
    const Case malformed[] = {{"a\x80z\xFF", u"a\uFFFDz\uFFFD"},
                              {"\xC0\xAF\xE0\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
                              {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},
                              {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
                              {"\xF0\x9F\x98z\xE2\x82", u"\uFFFDz\uFFFD"},
                              {"\xC3\xC3\xA4", u"\uFFFD\u00E4"}};
    for (const auto& [utf8, text] : malformed) EXPECT_EQ(textOf(fromUtf8(utf8)), text);
    const char16_t lone[] = {0xDE00, u'a', 0xD83D, 0xD83D, 0xDE00, 0xD83D, 0};
    EXPECT_EQ(textOf(fromUtf8(toUtf8(XString(lone)))), u"\uFFFDa\uFFFD\U0001F600\uFFFD");
    EXPECT_EQ(toUtf8(XString()), "");
}

}  // namespace
