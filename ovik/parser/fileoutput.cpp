// Outputs that tell a progress meter, and the one that keeps every item of a file.
#include "ovik/parser/fileoutput.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <istream>
#include <iterator>
#include <ostream>
#include <string>

#include "ovik/base/ascii.h"
#include "ovik/base/inputfile.h"
#include "ovik/base/unicode.h"
#include "ovik/parser/parser.h"

namespace Ovik::IfcParser {
namespace {

constexpr std::size_t kMaxLate = 2048;

// Where in a sorted array the number stands or belongs.
DataItems::const_iterator findPlace(const DataItems& items, int id) {
    return std::lower_bound(
        items.begin(), items.end(), id,
        [](const std::unique_ptr<DataItem>& item, int number) { return item->id < number; });
}

bool holds(const DataItems& items, DataItems::const_iterator place, int id) {
    return place != items.end() && (*place)->id == id;
}

}  // namespace

OutputPrgMeter::OutputPrgMeter(std::istream& stream, ProgressMeter* meter) : meter_(meter) {
    if (!meter_) return;
    const auto here = stream.tellg();
    stream.seekg(0, std::ios::end);
    const auto length = stream.tellg();
    stream.seekg(here);
    // What can't be measured, such as a pipe, can be read all the same.
    if (stream.fail()) stream.clear();
    meter_->start(length < 0 ? 0 : static_cast<std::uint64_t>(length));
}

OutputPrgMeter::~OutputPrgMeter() {
    if (meter_) meter_->finish();
}

void OutputPrgMeter::addData(int /*id*/, PooledName* /*className*/, ItemList* /*list*/,
                             double position) {
    if (meter_) meter_->progress(static_cast<std::uint64_t>(position));
}

bool IfcFileOutput::setHeader(ParsedHeader*& taken) {
    header.reset(taken);
    taken = nullptr;
    return true;
}

void IfcFileOutput::addData(int id, PooledName* className, ItemList* list, double position) {
    className->addRef();
    auto item = std::make_unique<DataItem>(id, className, list);
    OutputPrgMeter::addData(id, className, list, position);
    if (!items) items = std::make_unique<DataItems>();
    if (items->empty() || items->back()->id < id) {
        items->push_back(std::move(item));
        return;
    }
    const auto place = findPlace(late_, id);
    if (holds(*items, findPlace(*items, id), id) || holds(late_, place, id))
        throw "Duplicate data with id #" + std::to_string(id);
    late_.insert(place, std::move(item));
    if (late_.size() == kMaxLate) mergeLate();
}

void IfcFileOutput::mergeLate() {
    if (late_.empty()) return;
    const auto middle = static_cast<std::ptrdiff_t>(items->size());
    items->insert(items->end(), std::make_move_iterator(late_.begin()),
                  std::make_move_iterator(late_.end()));
    late_.clear();
    std::inplace_merge(items->begin(), items->begin() + middle, items->end(),
                       [](const auto& a, const auto& b) { return a->id < b->id; });
}

void IfcFileOutput::endOfFile() {
    mergeLate();
    result.reset(new ParsedFile{exact_, std::move(header), std::move(items)});
}

std::unique_ptr<ParsedFile> parseFile(const wchar_t* path, ErrLog* log, ProgressMeter* meter,
                                      bool exact) {
    return parseFile(pathFromWide(path), log, meter, exact);
}

std::unique_ptr<ParsedFile> parseFile(const std::filesystem::path& path, ErrLog* log,
                                      ProgressMeter* meter, bool exact) {
    std::ifstream stream = openInput(path);
    if (!stream) throw std::string("Unable to open file");
    IfcFileOutput output(stream, meter, exact);
    parseStream(stream, log, &output);
    return std::move(output.result);
}

}  // namespace Ovik::IfcParser
