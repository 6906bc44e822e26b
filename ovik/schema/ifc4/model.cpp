// The model of schema IFC4.
#include "ovik/schema/ifc4/model.h"

#include "ovik/ifc4.h"
#include "ovik/schema/common/backrefs.h"

namespace Ovik {

EIfcSchemaId IFC4Imp::IfcModelImp::schemaId() const {
    return eIFC4;
}

void IFC4Imp::IfcModelImp::buildBackRefs() {
    Schema::buildBackRefs<IFC4>(*this);
}

IfcModel* createIfc4Model(bool makeGuids, bool useTestGuid) {
    return new IFC4Imp::IfcModelImp(makeGuids, useTestGuid);
}

}  // namespace Ovik
