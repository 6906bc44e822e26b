// Real files, as far as they are at hand: the folder that the environment variable OVIK_CORPUS
// names, or the one that stands beside the repository.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

#include "ovik/ovik.h"
#include "ovik/parser.h"

namespace {

namespace fs = std::filesystem;

constexpr double kTolerance = 1e-9;

/// The model files in a folder of the corpus, in order; none if there is no corpus.
std::vector<fs::path> corpusFiles(const std::string& folder) {
    const char* given = std::getenv("OVIK_CORPUS");
    const fs::path root = given ? fs::path(given) : fs::path(OVIK_SOURCE_DIR "/../shared/corpus");
    std::vector<fs::path> files;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(root / folder, none))
        if (entry.path().extension() == ".ifc") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string textOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

/// Whether a backslash stands in `text` that opens none of the escapes that a string keeps. Such a
/// one is what reading leaves of a doubled backslash, and the next reading takes it for an escape.
bool hasLooseBackslash(const std::string& text) {
    for (std::size_t at = text.find('\\'); at != std::string::npos; at = text.find('\\', at)) {
        if (text.compare(at, 3, "\\S\\") == 0)
            at += 4;
        else if (text.compare(at, 3, "\\X\\") == 0)
            at += 5;
        else if (text.compare(at, 4, "\\X2\\") == 0 && text.find("\\X0\\", at) != std::string::npos)
            at = text.find("\\X0\\", at) + 4;
        else
            return true;
    }
    return false;
}

class CorpusTest : public ::testing::TestWithParam<const char*> {
 protected:
    void SetUp() override {
        files_ = corpusFiles(GetParam());
        if (files_.empty()) GTEST_SKIP() << "no corpus: set OVIK_CORPUS to its folder";
        folder_ = fs::path(::testing::TempDir()) / ("ovik-corpus-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    /// Loads `in` and writes it to `out`. False if there is no model; an empty one has no file.
    static bool copy(const fs::path& in, const fs::path& out, Ovik::ErrLog* log = nullptr) {
        Ovik::IfcHeader header;
        Ovik::IfcModel* model = Ovik::IfcModel::read(in, log, nullptr, nullptr, &header);
        if (!model) return false;
        EXPECT_TRUE(model->write(out, header)) << out;
        model->release();
        return true;
    }

    std::vector<fs::path> files_;
    fs::path folder_;
};

class ValidCorpusTest : public CorpusTest {};
class OddCorpusTest : public CorpusTest {};

TEST_P(ValidCorpusTest, ACopyOfACopyIsEqualToTheCopy) {
    const fs::path copied = folder_ / "copy.ifc";
    const fs::path again = folder_ / "again.ifc";
    int numChanged = 0;
    for (const fs::path& file : files_) {
        SCOPED_TRACE(file.filename().string());
        const int before = Ovik::IfcParser::liveItems;
        if (!copy(file, copied)) {
            std::cout << file.filename().string() << ": gives no model, since it opens twice\n";
            EXPECT_NE(textOf(file).find("ISO-10303-21;\nISO-10303-21;"), std::string::npos);
            continue;
        }
        EXPECT_LE(Ovik::IfcParser::liveItems, std::max(before, 4));
        std::string difference = "the copy gives no model";
        if (copy(copied, again)) {
            Ovik::IfcParsedStream first;
            Ovik::IfcParsedStream second;
            difference = "a copy is not valid";
            if (first.read(copied, nullptr, nullptr) && second.read(again, nullptr, nullptr)) {
                std::ostringstream report;
                if (first.isEqualTo(second, &report, kTolerance, true)) continue;
                difference = report.str();
            }
        }
        ++numChanged;
        std::cout << file.filename().string()
                  << ": changed by a backslash in its strings: " << difference << '\n';
        EXPECT_TRUE(hasLooseBackslash(textOf(copied)));
    }
    EXPECT_LT(numChanged, static_cast<int>(files_.size()) / 10);
}

TEST_P(OddCorpusTest, EveryFileEndsWithAModelOrARefusal) {
    const fs::path copied = folder_ / "copy.ifc";
    const fs::path logFile = folder_ / "log.txt";
    int numModels = 0;
    for (const fs::path& file : files_) {
        SCOPED_TRACE(file.filename().string());
        fs::remove(logFile);
        const int before = Ovik::IfcParser::liveItems;
        bool hasModel = false;
        {
            Ovik::ErrLog log(logFile);
            hasModel = copy(file, copied, &log);
        }
        const std::string messages = fs::exists(logFile) ? textOf(logFile) : std::string();
        if (hasModel) {
            ++numModels;
            EXPECT_TRUE(textOf(copied).ends_with("ENDSEC;\nEND-ISO-10303-21;\n"));
        } else {
            EXPECT_NE(messages, "") << "a refusal without a word";
        }
        // A list that a syntax error cuts off between its `)` and the `;` is never given back.
        if (messages.find("Parser Error") == std::string::npos) {
            EXPECT_LE(Ovik::IfcParser::liveItems, std::max(before, 4));
        }
    }
    EXPECT_GT(numModels, 0);
    EXPECT_LT(numModels, static_cast<int>(files_.size()));
}

INSTANTIATE_TEST_SUITE_P(Files, ValidCorpusTest, ::testing::Values("valid/ifc2x3", "valid/ifc4"));
INSTANTIATE_TEST_SUITE_P(Files, OddCorpusTest, ::testing::Values("odd"));

}  // namespace
