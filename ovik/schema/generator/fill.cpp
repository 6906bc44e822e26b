// Filling the holes of a template.
#include "fill.h"

#include <stdexcept>

namespace Ovik::Generator {
namespace {

constexpr std::string_view kOpen = "{{";
constexpr std::string_view kClose = "}}";

const std::string& textOf(std::initializer_list<Hole> holes, std::string_view name) {
    for (const Hole& hole : holes) {
        if (hole.name == name) return hole.text;
    }
    throw std::logic_error("no text for the hole " + std::string(name));
}

}  // namespace

std::string fill(std::string_view text, std::initializer_list<Hole> holes) {
    if (text.starts_with('\n')) text.remove_prefix(1);
    std::string result;
    for (;;) {
        std::size_t open = text.find(kOpen);
        const std::size_t close = text.find(kClose, open);
        if (close == text.npos) break;
        while (text[open + kOpen.size()] == kOpen[0]) ++open;  // a brace before the hole
        const std::size_t first = open + kOpen.size();
        const std::string& content = textOf(holes, text.substr(first, close - first));
        result += text.substr(0, open);
        const bool startsLine = result.empty() || result.back() == '\n';
        text.remove_prefix(close + kClose.size());
        const bool wholeLines = startsLine && (content.empty() || content.back() == '\n');
        if (wholeLines && text.starts_with('\n')) text.remove_prefix(1);
        result += content;
    }
    return result += text;
}

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string result;
    for (const std::string& part : parts) {
        if (!result.empty()) result += separator;
        result += part;
    }
    return result;
}

}  // namespace Ovik::Generator
