// What the tests of parsed files share: logs that can be read back, items as text, and an output
// that writes down what it is told.
#pragma once

#include <charconv>
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

/// An item as the file might spell it: strings in apostrophes, bytes as they are.
inline std::string dump(const Ovik::IfcParser::ItemBase& item) {
    using namespace Ovik::IfcParser;
    switch (static_cast<ItemKind>(item.kind())) {
        case ItemKind::String:
            return "'" + static_cast<const ItemString&>(item).text + "'";
        case ItemKind::Int:
            return std::to_string(static_cast<const ItemInt&>(item).value);
        case ItemKind::Dbl: {
            char text[32];
            const double value = static_cast<const ItemDbl&>(item).value;
            return "R" + std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
        }
        case ItemKind::Bool:
            return static_cast<const ItemBool&>(item).value ? "true" : "false";
        case ItemKind::Enum:
            return "." + static_cast<const ItemEnum&>(item).name->text + ".";
        case ItemKind::Ref:
            return &item == itemNil()
                       ? "$"
                       : "#" + std::to_string(static_cast<const ItemRef&>(item).value);
        case ItemKind::Derived:
            return "*";
        case ItemKind::Choice: {
            const auto& choice = static_cast<const ItemChoice&>(item);
            return choice.name->text + "<" + dump(*choice.value) + ">";
        }
        case ItemKind::List: {
            const auto& list = static_cast<const ItemList&>(item);
            std::string text;
            for (std::size_t i = 0; list.items && i < list.items->size(); ++i)
                text += (i ? "," : "") + dump(*(*list.items)[i]);
            return "(" + text + ")";
        }
        case ItemKind::Binary:
            return static_cast<const ItemBinary&>(item).text + "~";
    }
    return "?";
}

/// Writes down what the parser calls, and keeps nothing.
class Recorder : public Ovik::IfcParser::Output {
 public:
    bool allowMissing = false;
    bool knownSchema = true;
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
};

}  // namespace OvikTest
