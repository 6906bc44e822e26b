// Models: how they come into being.
#include "ovik/imp/ifcmodel.h"

#include <utility>

#include "ovik/ifc2x3/schema.h"
#include "ovik/ifc4/schema.h"
#include "ovik/imp/modelimp.h"

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

}  // namespace Ovik
