// What the tests of parsed files share: logs that can be read back, items as text, and an output
// that writes down what it is told.
#pragma once

#include <string>
#include <vector>

#include "ovik/base/sanitizer.h"
#include "ovik/parser.h"
#include "tests/files.h"

namespace OvikTest {

/// How deep the things are that no stack would hold. Frames are much larger, and all is slower,
/// under a sanitizer.
#if defined(OVIK_ASAN)
constexpr int kDepth = 50'000;
#else
constexpr int kDepth = 1'000'000;
#endif

/// A log that can be read back.
class TempLog {
    TempFile file_;

 public:
    Ovik::ErrLog log{file_.path};
    std::string text() {
        if (log.isInitialized()) log.log().flush();
        return file_.text();
    }
};

/// An item as a file spells it.
inline std::string dump(const Ovik::IfcParser::ItemBase& item) {
    std::string text;
    appendItem(text, item);
    return text;
}

/// Writes down what the parser calls, and keeps nothing.
class Recorder : public Ovik::IfcParser::Output {
 public:
    bool allowMissing = false;
    bool knownSchema = true;
    bool isExact = false;
    int throwAt = 0;  // an instance number
    std::string calls;
    std::vector<double> positions;

    bool missingItemAllowed() override { return allowMissing; }
    bool setHeader(Ovik::IfcParser::ParsedHeader*& header) override {
        calls += "header" + dump(*header->fileDescription->list) + dump(*header->fileName->list) +
                 dump(*header->fileSchema->list) + " ";
        return knownSchema;
    }
    void addData(int id, Ovik::IfcParser::PooledName* className, Ovik::IfcParser::ItemList* list,
                 double position) override {
        calls += "#" + std::to_string(id) + className->text + dump(*list) + " ";
        positions.push_back(position);
        list->release();
        if (id == throwAt) throw std::string("stopped here");
    }
    void endOfFile() override { calls += "end"; }
    bool exact() const override { return isExact; }
};

}  // namespace OvikTest
