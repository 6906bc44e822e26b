// Models: how they come into being, are read and are written.
#include "ovik/imp/ifcmodel.h"

#include <fstream>
#include <utility>

#include "ovik/base/inputfile.h"
#include "ovik/base/unicode.h"
#include "ovik/ifc2x3/schema.h"
#include "ovik/ifc4/schema.h"
#include "ovik/imp/ifcreader.h"
#include "ovik/imp/modelimp.h"
#include "ovik/imp/outfilerimp.h"

namespace Ovik {

IfcModel::IfcModel(std::unique_ptr<ModelImp> imp) : imp_(std::move(imp)) {}

IfcModel::~IfcModel() = default;

IfcModel* IfcModel::create(EIfcSchemaId schema, bool makeGuids, bool useTestGuid) {
    switch (schema) {
        case eIFC2X3:
            return IFC2X3::createModel(makeGuids, useTestGuid);
        case eIFC4:
            return IFC4::createModel(makeGuids, useTestGuid);
    }
    return nullptr;
}

IfcModel* IfcModel::read(const wchar_t* path, ErrLog* log, ProgressMeter* meter,
                         const IfcReadOptions* options, IfcHeader* header) {
    return read(pathFromWide(path), log, meter, options, header);
}

IfcModel* IfcModel::read(const std::filesystem::path& path, ErrLog* log, ProgressMeter* meter,
                         const IfcReadOptions* options, IfcHeader* header) {
    std::ifstream stream = openInput(path);
    if (!stream) return nullptr;
    return IfcReader(stream, log, meter, options, header).load();
}

bool IfcModel::write(const wchar_t* path, const IfcHeader& header) const {
    return write(pathFromWide(path), header);
}

bool IfcModel::write(const std::filesystem::path& path, const IfcHeader& header) const {
    std::ofstream file(path, std::ios::trunc);
    if (!file) return false;
    writeModel(file, *this, header);
    return true;
}

}  // namespace Ovik
