// Ordering and telling what a load does not keep.
#include "ovik/imp/load/losses.h"

#include <algorithm>
#include <ostream>
#include <tuple>

#include "ovik/base/ascii.h"
#include "ovik/imp/rtclass.h"

namespace Ovik {

std::uint32_t RecordLines::add(std::uint32_t line) {
    if (runs_.empty() || line != runs_.back().line + (count_ - runs_.back().record)) {
        runs_.push_back({count_, line});
    }
    return count_++;
}

std::uint32_t RecordLines::operator[](std::uint32_t record) const {
    const auto next =
        std::upper_bound(runs_.begin(), runs_.end(), record,
                         [](std::uint32_t r, const Run& run) { return r < run.record; });
    const Run& run = *(next - 1);
    return run.line + (record - run.record);
}

void LoadLosses::addRecord(const Record& record, IfcLoadReport::RecordCause kind, const char* cause,
                           const LossPlace& place) {
    losses_.push_back({record, place, cause, Kind::Record, kind});
}

void LoadLosses::addValue(const Record& record, Kind kind, const char* cause,
                          const LossPlace& place) {
    losses_.push_back({record, place, cause, kind, {}});
}

void LoadLosses::sort() {
    const auto before = [](const Loss& a, const Loss& b) {
        return std::tie(a.record.place, a.place.position, a.place.element) <
               std::tie(b.record.place, b.place.position, b.place.element);
    };
    if (std::is_sorted(losses_.begin(), losses_.end(), before)) return;
    std::stable_sort(losses_.begin(), losses_.end(), before);
}

std::string LoadLosses::attributeText(const LossPlace& place) {
    std::string text = place.attribute ? place.attribute : "";
    for (const std::uint32_t element : place.element) {
        if (element != 0) text += '[' + std::to_string(element) + ']';
    }
    return text;
}

void LoadLosses::write(std::wostream& log) const {
    for (const Loss& loss : losses_) {
        if (loss.kind == Kind::Substitution) continue;
        std::string line = "line " + std::to_string(lines[loss.record.place]) + ": #" +
                           std::to_string(loss.record.number);
        if (loss.record.cls) line += std::string(" ") + loss.record.cls->className();
        if (loss.place.attribute) line += '.' + attributeText(loss.place);
        line += std::string(": ") + loss.cause + '\n';
        log << widen(line);
    }
}

void LoadLosses::fill(IfcLoadReport& report) const {
    for (const Loss& loss : losses_) {
        switch (loss.kind) {
            case Kind::Record:
                ++report.recordsLost[loss.recordCause];
                break;
            case Kind::Attribute:
                ++report.attributesNotKept;
                break;
            case Kind::Element:
                ++report.elementsNotKept;
                break;
            case Kind::Substitution:
                ++report.substitutions;
                break;
        }
        if (report.losses.size() == report.maxEntries) continue;
        report.losses.push_back({lines[loss.record.place], loss.record.number,
                                 loss.record.cls ? loss.record.cls->className() : "",
                                 attributeText(loss.place), loss.cause});
    }
}

}  // namespace Ovik
