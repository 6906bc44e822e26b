// The model of schema IFC2X3.
#include "ovik/schema/ifc2x3/model.h"

#include "ovik/ifc2x3.h"
#include "ovik/schema/common/backrefs.h"

namespace Ovik {

EIfcSchemaId IFC2X3Imp::IfcModelImp::schemaId() const {
    return eIFC2X3;
}

void IFC2X3Imp::IfcModelImp::buildBackRefs() {
    Schema::buildBackRefs<IFC2X3>(*this);
}

IfcModel* createIfc2x3Model(bool makeGuids, bool useTestGuid) {
    return new IFC2X3Imp::IfcModelImp(makeGuids, useTestGuid);
}

}  // namespace Ovik
