// `IfcModel::write`: the whole data section in memory, then the file in one go.
#include <fstream>
#include <memory>

#include "ovik/base/unicode.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/outfiler.h"
#include "ovik/imp/save/depthfirstfiler.h"
#include "ovik/imp/save/headersection.h"

namespace Ovik {

bool IfcModel::write(const wchar_t* path, const IfcHeader& header) const {
    return write(pathFromWide(path), header);
}

bool IfcModel::write(const std::filesystem::path& path, const IfcHeader& header) const {
    std::ofstream file(path, std::ios::trunc);
    if (!file) return false;
    file << "ISO-10303-21;\n" << headerSection(schemaId(), header, false) << std::endl;

    const std::uint64_t count = getNumEntities();
    auto owned = std::make_unique<DepthFirstFiler>(count, nullptr);
    DepthFirstFiler& filer = *owned;
    IfcOutFiler out(std::move(owned));
    for (std::uint64_t i = 0; i < count; ++i) get(i)->write(out);
    filer.finish();

    file << "DATA;\n";
    file << (filer.numRecords() != 0 ? std::string_view(filer.data()) : "#1= ();\n");
    file << "ENDSEC;\nEND-ISO-10303-21;\n";
    return true;
}

}  // namespace Ovik
