// The walk over a structure, and the two ways to show it. Nothing here recurses: files decide how
// deep a structure is.
#include "tree.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "common/plaintext.h"

namespace tools {
namespace {

/// Deeper rows are not indented further: no one could read them, the output would grow with the
/// square of the depth, and browsers nest some hundreds of elements at most.
constexpr std::size_t kMaxLevel = 48;

/// How far a page is unfolded at first: project, site and building show the storeys.
constexpr std::size_t kOpenLevels = 3;

constexpr char kNoObject[] = "(no such object)";
constexpr std::string_view kMarks[] = {"", "cycle, cut here", "shown above"};

constexpr std::string_view kPageHead = R"html(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<style>
:root { color-scheme: light dark }
body { font: 15px/1.5 system-ui, sans-serif; margin: 1.5em; display: flex; flex-wrap: wrap; gap: 1em 3em }
header { width: 100% }
h1 { font-size: 1.3em; margin: 0 0 .5em }
h2 { font-size: 1em }
main { flex: 1 1 30em; min-width: 0 }
ul { list-style: none; margin: 0; padding-left: 1.4em; border-left: 1px solid #8885 }
main > ul { padding-left: 0; border: 0 }
li { padding-left: 1.1em; overflow-wrap: anywhere }
li:has(> details) { padding-left: 0 }
li:target { background: #fc06 }
summary { cursor: pointer }
summary:hover { background: #8882 }
small { opacity: .65 }
em { color: #c50 }
td:first-child { text-align: right; padding-right: 1em; font-variant-numeric: tabular-nums }
</style>
)html";

constexpr std::string_view kPageButtons = R"html(<p><button onclick="fold(true)">Unfold all</button>
<button onclick="fold(false)">Fold all</button></p>
<script>
function fold(open) { for (const d of document.querySelectorAll("details")) d.open = open }
onhashchange = () => {
  const target = document.querySelector(":target")
  for (let e = target; e; e = e.parentElement) if (e.tagName == "DETAILS") e.open = true
  target?.scrollIntoView()
}
</script>
)html";

/// The name of `entity` in UTF-8.
std::string nameOf(const Ovik::IfcEntity& entity) {
    Ovik::IfcVariant value;
    Ovik::XString name;
    // An inherited attribute without a value is not found.
    if (entity.getAttribute("Name", value) != Ovik::ResultOk ||
        value.getValue(name) != Ovik::ResultOk)
        return {};
    return plainText(Ovik::toUtf8(name));
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

bool isStructural(std::string_view className) {
    return className == "IFCRELAGGREGATES" || className == "IFCRELNESTS" ||
           className == "IFCRELCONTAINEDINSPATIALSTRUCTURE";
}

}  // namespace

Tree::Tree(const Ovik::IfcModel& model) : structure_(Ovik::IfcSpatialStructure::create(model)) {
    for (unsigned i = 0; i < structure_->numRoots(); ++i) addRows(*structure_->root(i));
    numObjects_ = seen_.size();
    countLeftOut(model);
}

void Tree::addRows(const Ovik::IfcSpNode& root) {
    struct Step {
        const Ovik::IfcSpNode* node;
        bool& below;
        unsigned next;
    };
    std::vector<Step> path;
    const auto add = [&](const Ovik::IfcSpNode& node, bool isLast) {
        const auto [entry, isNew] = seen_.try_emplace(&node, true);
        const Mark mark = isNew ? Mark::None : entry->second ? Mark::Cycle : Mark::Shared;
        rows_.push_back({&node, path.size(), mark, isLast});
        if (isNew) path.push_back({&node, entry->second, 0});
    };
    add(root, true);
    while (!path.empty()) {
        Step& step = path.back();
        const unsigned numChildren = step.node->numChildren();
        if (step.next == numChildren) {
            step.below = false;
            path.pop_back();
        } else {
            const unsigned index = step.next++;
            add(*step.node->child(index), index + 1 == numChildren);
        }
    }
}

void Tree::countLeftOut(const Ovik::IfcModel& model) {
    for (std::uint64_t i = 0; i < model.getNumEntities(); ++i)
        numLeftOut_ += isStructural(model.get(i)->isA()->className());
    for (const auto& [node, below] : seen_)
        numLeftOut_ -= node->numDecompositions() + node->numContainments();
}

std::string Tree::asText() const {
    std::string out;
    std::vector<bool> isLastAt(kMaxLevel + 1);
    for (const Row& row : rows_) {
        const std::size_t level = std::min(row.depth, kMaxLevel);
        isLastAt[level] = row.isLast;
        for (std::size_t i = 1; i < level; ++i) out += isLastAt[i] ? "   " : "│  ";
        if (level > 0) out += row.isLast ? "└─ " : "├─ ";
        if (row.depth > kMaxLevel) out += "[level " + std::to_string(row.depth) + "] ";
        if (const Ovik::IfcEntity* entity = row.node->entity()) {
            out += entity->isA()->className();
            if (const std::string name = nameOf(*entity); !name.empty()) out += " \"" + name + '"';
            out += " #" + std::to_string(entity->ifcId());
        } else {
            out += kNoObject;
        }
        if (row.mark != Mark::None) {
            out += " (";
            out += kMarks[static_cast<int>(row.mark)];
            out += ')';
        }
        out += '\n';
    }
    return out;
}

std::string Tree::asHtml(const std::string& title) const {
    std::string out(kPageHead);
    out += "<title>" + escaped(title) + "</title>\n<header><h1>" + escaped(title) + "</h1>\n";
    out += kPageButtons;
    if (numLeftOut_) out += "<p><em>" + std::to_string(numLeftOut_) + kLeftOutCause + "</em></p>\n";
    out += "</header>\n<main>\n<ul>\n";

    const auto levelOf = [](const Row& row) { return std::min(row.depth, kMaxLevel); };
    std::size_t open = 0;  // lists that are not closed yet
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Row& row = rows_[i];
        const std::size_t level = levelOf(row);
        for (; open > level; --open) out += "</ul></details>\n";
        const Ovik::IfcEntity* const entity = row.node->entity();
        const std::string number = entity ? std::to_string(entity->ifcId()) : "0";
        out += row.mark == Mark::None ? "<li id=\"n" + number + "\">" : "<li>";
        const bool isOpening = i + 1 < rows_.size() && levelOf(rows_[i + 1]) > level;
        if (isOpening)
            out += level < kOpenLevels ? "<details open><summary>" : "<details><summary>";
        if (row.depth > kMaxLevel) out += "[level " + std::to_string(row.depth) + "] ";
        if (entity) {
            out += "<small>" + std::string(entity->isA()->className()) + "</small> " +
                   escaped(nameOf(*entity)) + " <small>#" + number + "</small>";
        } else {
            out += kNoObject;
        }
        if (row.mark != Mark::None) {
            out += " <a href=\"#n" + number + "\"><em>" +
                   std::string(kMarks[static_cast<int>(row.mark)]) + "</em></a>";
        }
        if (isOpening) {
            out +=
                " <small>(" + std::to_string(row.node->numChildren()) + ")</small></summary><ul>";
            ++open;
        }
        out += '\n';
    }
    for (; open > 0; --open) out += "</ul></details>\n";

    std::map<std::string_view, std::size_t> counts;
    for (const auto& [node, below] : seen_) {
        if (node->entity()) ++counts[node->entity()->isA()->className()];
    }
    std::vector<std::pair<std::string_view, std::size_t>> classes(counts.begin(), counts.end());
    std::stable_sort(classes.begin(), classes.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    out += "</ul>\n</main>\n<aside><h2>Objects by class</h2>\n<table>\n";
    for (const auto& [name, count] : classes) {
        out += "<tr><td>" + std::to_string(count) + "<td>" + std::string(name) + '\n';
    }
    out += "</table></aside>\n</html>\n";
    return out;
}

}  // namespace tools
