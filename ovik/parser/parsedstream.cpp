// Physical files as plain items, for comparing two of them without building models.
#include "ovik/parser/parsedstream.h"

#include <ostream>
#include <string>

#include "ovik/base/unicode.h"
#include "ovik/parser/fileoutput.h"

namespace Ovik {
namespace {

using IfcParser::CompareContext;
using IfcParser::DataItem;
using IfcParser::DataItems;
using IfcParser::HeaderStatement;
using IfcParser::ParsedFile;
using IfcParser::ParsedHeader;

bool different(const CompareContext& context, const std::string& what) {
    if (context.report) *context.report << '\n' << what << " is different";
    return false;
}

bool sameHeaders(const ParsedHeader& a, const ParsedHeader& b, const CompareContext& context) {
    const auto same = [&](const HeaderStatement& x, const HeaderStatement& y, const char* name) {
        return x.list->isEqualTo(*y.list, context) || different(context, name);
    };
    return (same(*a.fileDescription, *b.fileDescription, "FILE_DESCRIPTION") &&
            same(*a.fileName, *b.fileName, "FILE_NAME") &&
            same(*a.fileSchema, *b.fileSchema, "FILE_SCHEMA")) ||
           different(context, "HEADER");
}

bool sameItems(const DataItem& a, const DataItem& b, const CompareContext& context) {
    if (a.id != b.id) return different(context, "Data reference");
    if (!sameWord(a.className->text, b.className->text, context))
        return different(context, "Data class name");
    return a.list->isEqualTo(*b.list, context) || different(context, "Data list");
}

bool sameData(const ParsedFile& a, const ParsedFile& b, const CompareContext& context) {
    const std::size_t size = a.items ? a.items->size() : 0;
    if (size != (b.items ? b.items->size() : 0)) return different(context, "List size");
    for (std::size_t i = 0; i < size; ++i) {
        const DataItem& item = *(*a.items)[i];
        if (!sameItems(item, *(*b.items)[i], context))
            return different(context, "Data item #" + std::to_string(item.id));
    }
    return true;
}

}  // namespace

bool IfcParsedStream::read(const wchar_t* path, ErrLog* log, ProgressMeter* meter, bool exact) {
    return read(pathFromWide(path), log, meter, exact);
}

bool IfcParsedStream::read(const std::filesystem::path& path, ErrLog* log, ProgressMeter* meter,
                           bool exact) {
    file_.reset();
    file_ = IfcParser::parseFile(path, log, meter, exact);
    return isValid();
}

bool IfcParsedStream::isEqualTo(const IfcParsedStream& other, std::ostream* report,
                                double tolerance, bool ignoreHeader) const {
    if (!isValid() || !other.isValid()) return false;
    const bool exact = file_->exact && other.file_->exact;
    const CompareContext context{tolerance, report, exact};
    if (!ignoreHeader && !sameHeaders(*file_->header, *other.file_->header, context)) return false;
    return sameData(*file_, *other.file_, context);
}

}  // namespace Ovik
