// The model of schema IFC4.
#pragma once

#include "ovik/imp/modelimp.h"

namespace Ovik::IFC4Imp {

/// A model of schema IFC4; made by `IFC4::createModel`.
class OVIK_API IfcModelImp final : public SchemaModel {
 public:
    using SchemaModel::SchemaModel;

    EIfcSchemaId schemaId() const override;
    void buildBackRefs() override;
};

}  // namespace Ovik::IFC4Imp
