// The spatial structure of a model as a tree for people: text for a terminal, and a page to fold
// and unfold for a browser.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "ovik/ovik.h"

namespace tools {

/// The structure of a model laid out in rows, each object expanded at its first mention only. Uses
/// the model as long as it lives.
class Tree {
 public:
    explicit Tree(const Ovik::IfcModel& model);

    std::size_t numObjects() const { return numObjects_; }

    /// The number of relations that no root leads to, and why there may be such.
    std::size_t numLeftOut() const { return numLeftOut_; }
    static constexpr char kLeftOutCause[] =
        " relation(s) left out: the relating object is missing or in a cycle that no root leads to";

    /// A line for each row, in UTF-8.
    std::string asText() const;
    /// A whole page that needs nothing else. `title` is UTF-8.
    std::string asHtml(const std::string& title) const;

 private:
    enum class Mark { None, Cycle, Shared };
    struct Row {
        const Ovik::IfcSpNode* node;
        std::size_t depth;
        Mark mark;
        bool isLast;  ///< of its parent's children
    };

    void addRows(const Ovik::IfcSpNode& root);
    void countLeftOut(const Ovik::IfcModel& model);

    Ovik::IfcStructurePtr structure_;
    /// The objects that have rows: true while the walk is below them.
    std::unordered_map<const Ovik::IfcSpNode*, bool> seen_;
    std::vector<Row> rows_;
    std::size_t numObjects_ = 0;
    std::size_t numLeftOut_ = 0;
};

}  // namespace tools
