// The model of schema IFC2X3.
#include "ovik/imp/modelimp.h"

namespace Ovik {
namespace IFC2X3Imp {

class IfcModelImp final : public SchemaModel {
 public:
    using SchemaModel::SchemaModel;

    EIfcSchemaId schemaId() const override { return eIFC2X3; }
    // Back references are not collected yet.
    void buildBackRefs() override { resetUserData(); }
};

}  // namespace IFC2X3Imp

IfcModel* createIfc2x3Model(bool makeGuids, bool useTestGuid) {
    return new IFC2X3Imp::IfcModelImp(makeGuids, useTestGuid);
}

}  // namespace Ovik
