// Real files, as far as they are at hand.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "ovik/ifc2x3/IfcProduct.h"
#include "ovik/ifc4/IfcProduct.h"
#include "ovik/ovik.h"
#include "ovik/parser.h"
#include "tests/files.h"

namespace {

namespace fs = std::filesystem;
using OvikTest::corpusFiles;
using OvikTest::textOf;

constexpr double kTolerance = 1e-9;

/// Whether the file begins anew where its header ought to stand, so that it gives no model.
bool opensTwice(const fs::path& file) {
    return textOf(file).find("ISO-10303-21;\nISO-10303-21;") != std::string::npos;
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

/// The relations of a file as far as a model has them, taken from the records of the file. Numbers
/// stand for the objects, 0 for none.
class Relations : public Ovik::IfcParser::Output {
 public:
    struct Node {
        std::vector<int> children;
        std::vector<int> decompositions;
        std::vector<int> containments;
        bool operator==(const Node&) const = default;
    };
    std::map<int, Node> nodes;
    std::set<int> roots;
    /// Relation and target.
    std::multiset<std::pair<int, int>> backRefs;
    /// Relations, and objects in them, that the model lacks.
    int numLacking = 0;
    /// Objects that are contained though they are of a class that can't be.
    int numMisplaced = 0;

    Relations(const fs::path& file, const Ovik::IfcModel& model) {
        for (std::uint64_t i = 0; i < model.getNumEntities(); ++i)
            loaded_[model.get(i)->ifcId()] = model.get(i);
        std::ifstream stream(file);
        EXPECT_TRUE(Ovik::IfcParser::parseStream(stream, nullptr, this));
        for (const auto& [id, record] : records_) addRecord(id, record);
        for (const auto& [id, node] : nodes) roots.insert(id);
        for (const auto& [id, node] : nodes)
            for (const int child : node.children) roots.erase(child);
    }

    /// Whose back references are counted, and which of their parameters name the targets.
    static inline const std::map<std::string, std::vector<unsigned>> kTargets = {
        {"IFCSTYLEDITEM", {0}},
        {"IFCPRESENTATIONLAYERASSIGNMENT", {2}},
        {"IFCPRESENTATIONLAYERWITHSTYLE", {2}},
        {"IFCRELVOIDSELEMENT", {4, 5}},
        {"IFCRELFILLSELEMENT", {4, 5}},
        {"IFCRELASSOCIATESMATERIAL", {4}},
        {"IFCRELASSOCIATESCLASSIFICATION", {4}},
        {"IFCMATERIALDEFINITIONREPRESENTATION", {3}},
        {"IFCRELDEFINESBYPROPERTIES", {4}},
        {"IFCRELCONTAINEDINSPATIALSTRUCTURE", {4}},
        {"IFCRELAGGREGATES", {5}},
        {"IFCRELDEFINESBYTYPE", {4}},
    };

 private:
    using Item = Ovik::IfcParser::ItemBase;
    struct Record {
        std::string name;
        std::vector<std::vector<int>> references;  // of each parameter
    };

    bool setHeader(Ovik::IfcParser::ParsedHeader*&) override { return true; }
    void endOfFile() override {}
    void addData(int id, Ovik::IfcParser::PooledName* className, Ovik::IfcParser::ItemList* list,
                 double) override {
        if (kTargets.contains(className->text) || className->text == "IFCRELNESTS") {
            if (loaded_.contains(id)) {
                Record& record = records_[id];
                record.name = className->text;
                for (const Item* item : *list->items) record.references.push_back(references(item));
                if (record.name == "IFCRELCONTAINEDINSPATIALSTRUCTURE")
                    numMisplaced += static_cast<int>(std::erase_if(
                        record.references[4], [this](int object) { return !isProduct(object); }));
            } else {
                ++numLacking;
            }
        }
        list->release();
    }

    bool isProduct(int id) const {
        const auto found = loaded_.find(id);
        return found != loaded_.end() &&
               (found->second->isKindOf(Ovik::IFC2X3::IfcProduct::desc()) ||
                found->second->isKindOf(Ovik::IFC4::IfcProduct::desc()));
    }

    // In the order of the numbers, as a model is.
    void addRecord(int id, const Record& record) {
        const auto& [name, references] = record;
        if (const auto found = kTargets.find(name); found != kTargets.end()) {
            for (const unsigned index : found->second)
                for (const int target : references[index])
                    if (target) backRefs.insert({id, target});
        }
        if (name == "IFCRELCONTAINEDINSPATIALSTRUCTURE") {
            addChildren(nodes[references[5][0]], references[4]).containments.push_back(id);
        } else if (name == "IFCRELAGGREGATES" || name == "IFCRELNESTS") {
            addChildren(nodes[references[4][0]], references[5]).decompositions.push_back(id);
        }
    }

    Node& addChildren(Node& node, const std::vector<int>& children) {
        for (const int child : children) {
            nodes[child];
            node.children.push_back(child);
        }
        return node;
    }

    /// The objects that a parameter names, without those that the model lacks.
    std::vector<int> references(const Item* item) {
        using namespace Ovik::IfcParser;
        if (const auto* reference = item->as<ItemRef>()) {
            const int number = reference->value;
            if (number == 0 || loaded_.contains(number)) return {number};
            ++numLacking;
        }
        std::vector<int> numbers;
        if (const auto* list = item->as<ItemList>()) {
            for (std::size_t i = 0; list->items && i < list->items->size(); ++i)
                for (const int number : references((*list->items)[i])) numbers.push_back(number);
        }
        return numbers;
    }

    std::map<int, const Ovik::IfcEntity*> loaded_;
    std::map<int, Record> records_;
};

class CorpusTest : public ::testing::TestWithParam<const char*> {
 protected:
    void SetUp() override {
        files_ = corpusFiles(GetParam());
        if (files_.empty()) GTEST_SKIP() << OvikTest::kNoCorpus;
        folder_ = fs::path(::testing::TempDir()) / ("ovik-corpus-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    /// Loads `in` and writes it to `out`. False if there is no model; an empty one has no file.
    static bool copy(const fs::path& in, const fs::path& out, Ovik::ErrLog* log = nullptr) {
        Ovik::IfcHeader header;
        const Ovik::IfcModelPtr model(Ovik::IfcModel::read(in, log, nullptr, nullptr, &header));
        if (!model) return false;
        EXPECT_TRUE(model->write(out, header)) << out;
        return true;
    }

    std::vector<fs::path> files_;
    fs::path folder_;
};

TEST_P(CorpusTest, WhatIsSavedLoadsWithoutALossAndIsSavedTheSame) {
    const fs::path saved = folder_ / "saved.ifc";
    const fs::path again = folder_ / "again.ifc";
    const auto save = [](const fs::path& in, const fs::path& out, Ovik::IfcLoadReport& report) {
        const Ovik::IfcReadOptions options{.exact = true};
        Ovik::IfcHeader header;
        const Ovik::IfcModelPtr model(
            Ovik::IfcModel::read(in, nullptr, nullptr, &options, &header, &report));
        if (model) {
            EXPECT_FALSE(model->save(out, header));
        }
        return model != nullptr;
    };
    for (const fs::path& file : files_) {
        SCOPED_TRACE(file.filename().string());
        Ovik::IfcLoadReport report;
        if (!save(file, saved, report)) continue;
        EXPECT_TRUE(save(saved, again, report) && report.isComplete());
        EXPECT_TRUE(textOf(saved) == textOf(again));
    }
}

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
            EXPECT_TRUE(opensTwice(file));
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

// Two roads to the same: through the model, and from the records of the file.
TEST_P(ValidCorpusTest, StructureAndBackReferencesAreThoseOfTheRecords) {
    std::size_t numNodes = 0, numBackRefs = 0;
    int numSkipped = 0, numLacking = 0, numMisplaced = 0;
    for (const fs::path& file : files_) {
        SCOPED_TRACE(file.filename().string());
        const Ovik::IfcModelPtr model(Ovik::IfcModel::read(file));
        if (!model) {
            EXPECT_TRUE(opensTwice(file));
            ++numSkipped;
            continue;
        }
        const Relations expected(file, *model);
        numLacking += expected.numLacking;
        numMisplaced += expected.numMisplaced;

        const Ovik::IfcStructurePtr structure(Ovik::IfcSpatialStructure::create(*model));
        const auto numberOf = [](const Ovik::IfcEntity* entity) {
            return entity ? entity->ifcId() : 0;
        };
        std::map<int, Relations::Node> nodes;
        std::set<int> roots;
        std::vector<const Ovik::IfcSpNode*> open;
        for (unsigned i = 0; i < structure->numRoots(); ++i) {
            open.push_back(structure->root(i));
            roots.insert(numberOf(open.back()->entity()));
        }
        while (!open.empty()) {
            const Ovik::IfcSpNode& from = *open.back();
            open.pop_back();
            const auto [entry, isNew] = nodes.try_emplace(numberOf(from.entity()));
            if (!isNew) continue;
            Relations::Node& node = entry->second;
            for (unsigned i = 0; i < from.numChildren(); ++i) {
                open.push_back(from.child(i));
                node.children.push_back(numberOf(from.child(i)->entity()));
            }
            for (unsigned i = 0; i < from.numDecompositions(); ++i)
                node.decompositions.push_back(from.decomposition(i)->ifcId());
            for (unsigned i = 0; i < from.numContainments(); ++i)
                node.containments.push_back(from.containment(i)->ifcId());
        }
        EXPECT_TRUE(nodes == expected.nodes);
        EXPECT_EQ(roots, expected.roots);
        numNodes += nodes.size();

        model->buildBackRefs();
        std::multiset<std::pair<int, int>> backRefs;
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
            const Ovik::IfcEntity& target = *model->get(i);
            for (unsigned j = 0; j < target.backRefs().size(); ++j) {
                const Ovik::IfcEntity& relation = *target.backRefs()[j];
                if (Relations::kTargets.contains(relation.isA()->className()))
                    backRefs.insert({relation.ifcId(), target.ifcId()});
            }
        }
        EXPECT_TRUE(backRefs == expected.backRefs);
        numBackRefs += backRefs.size();
    }
    EXPECT_LE(numSkipped, 1);
    EXPECT_LE(numLacking, 30);
    EXPECT_LE(numMisplaced, 15);
    EXPECT_GT(numNodes, files_.size());
    EXPECT_GT(numBackRefs, numNodes);
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

INSTANTIATE_TEST_SUITE_P(Files, CorpusTest, ::testing::Values("valid/ifc2x3", "valid/ifc4", "odd"));
INSTANTIATE_TEST_SUITE_P(Files, ValidCorpusTest, ::testing::Values("valid/ifc2x3", "valid/ifc4"));
INSTANTIATE_TEST_SUITE_P(Files, OddCorpusTest, ::testing::Values("odd"));

}  // namespace
