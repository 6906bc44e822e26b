// Checking a file on both roads.
#include "check.h"

#include <algorithm>
#include <limits>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "common/faults.h"
#include "common/plaintext.h"
#include "ovik/ovik.h"

namespace tools {
namespace fs = std::filesystem;
namespace {

using Ovik::IfcLoadReport;
using Loss = IfcLoadReport::Loss;

/// The losses of one cause, in the order of the file.
struct Group {
    std::string cause;
    std::vector<const Loss*> losses;
};

/// The most frequent cause first; of two alike, the one that comes first in the file.
std::vector<Group> groupByCause(const IfcLoadReport& report) {
    std::vector<Group> groups;
    std::map<std::string_view, std::size_t> places;
    for (const Loss& loss : report.losses) {
        const auto [place, isNew] = places.try_emplace(loss.cause, groups.size());
        if (isNew) groups.push_back({loss.cause, {}});
        groups[place->second].losses.push_back(&loss);
    }
    std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) {
        return a.losses.size() > b.losses.size();
    });
    return groups;
}

std::string place(const Loss& loss) {
    std::string text = "line " + std::to_string(loss.line);
    if (loss.number) text += " #" + std::to_string(loss.number);
    if (!loss.className.empty()) text += ' ' + loss.className;
    if (!loss.attribute.empty()) text += '.' + loss.attribute;
    return text;
}

/// UTF-8 text as a JSON string.
std::string quoted(std::string_view text) {
    constexpr char kHex[] = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            result += "\\u00";
            result += kHex[c >> 4 & 15];
            result += kHex[c & 15];
        } else {
            result += c;
        }
    }
    return result + '"';
}

void printText(std::ostream& out, std::string_view title, const IfcLoadReport& report) {
    out << title << ": " << report.recordsKept << " of " << report.recordsSeen << " records";
    const std::string lost = whatIsLost(report);
    out << (lost.empty() ? ", nothing lost\n" : "; " + lost + '\n');
    for (const Group& group : groupByCause(report)) {
        out << "  " << plainText(group.cause) << " (" << group.losses.size() << ")\n";
        for (const Loss* loss : group.losses) out << "    " << plainText(place(*loss)) << '\n';
    }
}

void printJson(std::ostream& out, std::string_view title, const IfcLoadReport& report) {
    out << quoted(title) << ": {\"recordsSeen\": " << report.recordsSeen
        << ", \"recordsKept\": " << report.recordsKept
        << ", \"recordsLost\": " << report.numRecordsLost()
        << ", \"attributesNotKept\": " << report.attributesNotKept
        << ", \"elementsNotKept\": " << report.elementsNotKept
        << ", \"substitutions\": " << report.substitutions << ", \"comments\": " << report.comments
        << ", \"causes\": [";
    const char* separator = "";
    for (const Group& group : groupByCause(report)) {
        out << separator << "\n  {\"cause\": " << quoted(group.cause)
            << ", \"count\": " << group.losses.size() << ", \"places\": [";
        separator = "";
        for (const Loss* loss : group.losses) {
            out << separator << "\n    {\"line\": " << loss->line
                << ", \"number\": " << loss->number << ", \"class\": " << quoted(loss->className)
                << ", \"attribute\": " << quoted(loss->attribute) << '}';
            separator = ",";
        }
        out << "]}";
        separator = ",";
    }
    out << "]}";
}

IfcLoadReport loadReport(const fs::path& file, bool exact) {
    IfcLoadReport report;
    report.maxEntries = std::numeric_limits<std::size_t>::max();
    Ovik::IfcReadOptions options;
    options.exact = exact;
    const Ovik::IfcModelPtr model(
        Ovik::IfcModel::read(file, nullptr, nullptr, &options, nullptr, &report));
    return report;
}

}  // namespace

int checkFile(const fs::path& file, bool json, std::ostream& out) {
    std::string cause = whyUnreadable(file);
    IfcLoadReport exact;
    if (cause.empty()) {
        exact = loadReport(file, true);
        if (exact.noModel != IfcLoadReport::NoModel::None) cause = whyNoModel(exact);
    }
    if (!cause.empty()) {
        complain(file, cause);
        if (json) {
            out << "{\"file\": " << quoted(file.string()) << ", \"noModel\": " << quoted(cause)
                << "}\n";
        }
        return 1;
    }
    // What comes through a pipe can be read only once.
    std::error_code error;
    const bool twice = fs::is_regular_file(file, error);
    const IfcLoadReport plain = twice ? loadReport(file, false) : IfcLoadReport();
    if (json) {
        out << "{\"file\": " << quoted(file.string()) << ", \"schema\": " << quoted(exact.schema)
            << ", \"endsProperly\": " << (exact.endsProperly ? "true" : "false") << ",\n";
        printJson(out, "exact", exact);
        if (twice) {
            out << ",\n";
            printJson(out, "plain", plain);
        }
        out << "}\n";
    } else {
        printText(out, "exact", exact);
        if (twice) printText(out, "plain", plain);
    }
    return exact.isComplete() && (!twice || plain.isComplete()) ? 0 : 3;
}

}  // namespace tools
