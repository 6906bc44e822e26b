// The model of schema IFC4.
#include "ovik/imp/modelimp.h"

namespace Ovik {
namespace IFC4Imp {

class IfcModelImp final : public SchemaModel {
 public:
    using SchemaModel::SchemaModel;

    EIfcSchemaId schemaId() const override { return eIFC4; }
    // Back references are not collected yet.
    void buildBackRefs() override { resetUserData(); }
};

}  // namespace IFC4Imp

IfcModel* createIfc4Model(bool makeGuids, bool useTestGuid) {
    return new IFC4Imp::IfcModelImp(makeGuids, useTestGuid);
}

}  // namespace Ovik
