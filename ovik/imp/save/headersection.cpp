// The three header statements.
#include "ovik/imp/save/headersection.h"

#include <cstddef>
#include <cstdio>
#include <ctime>
#include <vector>

#include "ovik/imp/headerparameters.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/save/quotable.h"
#include "ovik/imp/xstring.h"

namespace Ovik {
namespace {

using Texts = std::vector<std::string>;

std::string localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    // The time zone may have changed since it was last asked for.
#if defined(_WIN32)
    _tzset();
    localtime_s(&local, &now);
#else
    tzset();
    localtime_r(&now, &local);
#endif
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", local.tm_year + 1900,
                  local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return buffer;
}

std::string quoted(const std::string& text) {
    return "'" + text + "'";
}

// The statement with the parameters `made`, but for those that `kept` has a text for. Without
// `kept`, as many as were made, else as many as it has.
std::string statement(const char* name, const Texts& made, const Texts* kept) {
    std::string text = name;
    text += '(';
    for (std::size_t i = 0; i < (kept ? *kept : made).size(); ++i) {
        if (i != 0) text += ',';
        text += kept && !(*kept)[i].empty() ? (*kept)[i] : made[i];
    }
    return text + ");\n";
}

}  // namespace

std::string headerSection(EIfcSchemaId schema, const IfcHeader& header, bool exact) {
    const auto string = [exact](const XString& value) {
        const bool isKept = !exact || isQuotable(value.getEncoded());
        return quoted((isKept ? value : XString(value.c_str())).getEncoded());
    };
    const auto list = [&string](const XString& value) { return "(" + string(value) + ")"; };

    const HeaderParameters* const kept = exact ? HeaderParameters::of(header) : nullptr;
    const Texts description = {list(header.fileDescription()), "'2;1'"};
    const Texts name = {
        string(header.fileName()),
        header.timeStamp().isEmpty() ? quoted(localTime()) : string(header.timeStamp()),
        list(header.author()),
        list(header.organization()),
        string(header.preprocessorVersion()),
        string(header.originatingSystem()),
        string(header.authorization())};
    return "HEADER;\n" +
           statement("FILE_DESCRIPTION", description, kept ? &kept->fileDescription : nullptr) +
           statement("FILE_NAME", name, kept ? &kept->fileName : nullptr) +
           statement("FILE_SCHEMA", {list(XString(schemaName(schema)))}, nullptr) + "ENDSEC;\n";
}

}  // namespace Ovik
