// The log: its file, its characters and its warnings.
#include "ovik/base/errlog.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>

#include "ovik/ovik.h"
#include "tests/parsing.h"

namespace {

using Ovik::ErrLog;
using OvikTest::TempFile;

TEST(ErrLog, FileComesWithTheFirstUse) {
    const TempFile file;
    {
        ErrLog unused(file.path);
        EXPECT_FALSE(unused.isInitialized());
        EXPECT_EQ(unused.fileName(), file.path.wstring());
    }
    EXPECT_FALSE(std::filesystem::exists(file.path));
    for (const wchar_t* words : {L"a long first load", L"second"}) {
        const std::wstring wide = file.path.wstring();
        ErrLog log(wide.c_str());
        log.log() << words;
        EXPECT_TRUE(log.isInitialized());
        log.log() << L"!" << 1234567 << L'\n';  // goes on, empties nothing, no grouping
    }
    EXPECT_EQ(file.text(), "second!1234567\n");
}

TEST(ErrLog, StandsOnAStreamOfTheCaller) {
    std::wostringstream stream;
    {
        ErrLog log(stream);
        EXPECT_FALSE(log.isInitialized());
        log.log() << L"\u00E4";
        ErrLog moved(std::move(log));
        EXPECT_TRUE(moved.isInitialized());
        Ovik::IfcModel::read(TempFile("").path, &moved);
        EXPECT_EQ(moved.fileName(), L"");
    }
    EXPECT_EQ(stream.str(), L"\u00E4Parser Error at 1.1: syntax error\n");
}

TEST(ErrLog, PathsOfAnyCharactersWorkInBothForms) {
    const TempFile file;
    const auto narrow = std::filesystem::path(file.path.string() + "\xC3\xA4\xF0\x9F\x98\x80");
    const std::wstring wide = file.path.wstring() + L"\u00E4\U0001F600";
    EXPECT_EQ(ErrLog(narrow).fileName(), wide);
    ErrLog(wide.c_str()).log() << L"here";
    EXPECT_TRUE(std::filesystem::remove(narrow));

    const std::wstring stray = L"/no/such/\xD800/\u00E4";
    EXPECT_TRUE(ErrLog(stray.c_str()).log().fail());
    EXPECT_EQ(Ovik::IfcModel::read(stray.c_str()), nullptr);
    const Ovik::IfcModelPtr model(Ovik::IfcModel::create(Ovik::eIFC4, false, false));
    EXPECT_FALSE(model->write(stray.c_str(), Ovik::IfcHeader()));
    Ovik::IfcParsedStream items;
    EXPECT_THROW(items.read(stray.c_str(), nullptr, nullptr), std::string);
}

TEST(ErrLog, WhatCannotBeOpenedIsSilent) {
    ErrLog log(std::filesystem::path("/no/such/folder/log.txt"));
    EXPECT_TRUE(log.log().fail());
    log.log() << L"lost";
    EXPECT_TRUE(log.log().fail());
    EXPECT_TRUE(log.isInitialized());
    EXPECT_THROW(ErrLog(static_cast<const wchar_t*>(nullptr)), wchar_t*);
    // A name that is no text in any encoding.
    const ErrLog odd(std::filesystem::path("\xFF.log"));
    EXPECT_EQ(odd.fileName().size(), 5u);
}

// Every wide character has a place in the file, alone or in pairs of 16 bits.
TEST(ErrLog, WritesUtf8) {
    const std::pair<std::wstring, std::string> cases[] = {
        {L"plain", "plain"},
        {L"\u00E4\u00FF", "\xC3\xA4\xC3\xBF"},
        {L"\u20AC\uFFFF", "\xE2\x82\xAC\xEF\xBF\xBF"},
        {L"\U0001F600", "\xF0\x9F\x98\x80"},
        {{wchar_t(0xD83D), wchar_t(0xDE00)}, "\xF0\x9F\x98\x80"},
        {{wchar_t(0xD83D), L'x', wchar_t(0xDE00)}, "\xEF\xBF\xBDx\xEF\xBF\xBD"},
        {{L'x', wchar_t(0xD83D)}, "x\xEF\xBF\xBD"},
        {{wchar_t(-23)}, "\xEF\xBF\xBD"},
        {std::wstring(100'000, L'\u00E4'),
         [] {
             std::string text;
             for (int i = 0; i < 100'000; ++i) text += "\xC3\xA4";
             return text;
         }()},
    };
    for (const auto& [text, expected] : cases) {
        const TempFile file;
        {
            ErrLog log(file.path);
            EXPECT_TRUE(log.log() << text);
        }
        EXPECT_EQ(file.text(), expected);
        {
            ErrLog log(file.path);  // the same in single steps
            for (const wchar_t c : text.substr(0, 10)) log.log().put(c).flush();
            EXPECT_TRUE(log.log().good());
        }
        EXPECT_EQ(file.text(), expected.substr(0, file.text().size()));
    }
}

TEST(ErrLog, Warnings) {
    ErrLog log(L"unused");
    EXPECT_TRUE(log.addWarning(0, nullptr));
    EXPECT_FALSE(log.addWarning(0, nullptr));
    EXPECT_FALSE(log.addWarning(0, L""));
    EXPECT_TRUE(log.addWarning(1, nullptr));
    EXPECT_TRUE(log.addWarning(1, L"b"));
    EXPECT_TRUE(log.addWarning(1, L"a"));
    EXPECT_FALSE(log.addWarning(1, L"b"));
    const std::multimap<int, std::wstring> expected{{0, L""}, {1, L""}, {1, L"b"}, {1, L"a"}};
    EXPECT_EQ(log.warnings(), expected);
    log.clearWarnings();
    EXPECT_TRUE(log.addWarning(1, L"b"));
}

TEST(ErrLog, Moves) {
    const TempFile file, other;
    ErrLog target(other.path);
    target.log() << L"other";
    {
        ErrLog source(file.path);
        source.log() << L"one \u00E4";
        source.addWarning(3, L"w");
        ErrLog between(std::move(source));
        EXPECT_TRUE(source.fileName().empty());
        between.log() << L", two";
        target = std::move(between);
    }
    EXPECT_EQ(other.text(), "other");
    ErrLog& same = target;
    target = std::move(same);
    EXPECT_EQ(target.fileName(), file.path.wstring());
    EXPECT_FALSE(target.addWarning(3, L"w"));
    target.log() << L", \u00E4" << std::flush;
    EXPECT_EQ(file.text(), "one \xC3\xA4, two, \xC3\xA4");
}

}  // namespace
