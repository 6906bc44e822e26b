// The model of schema IFC2X3.
#pragma once

#include "ovik/imp/modelimp.h"

namespace Ovik::IFC2X3Imp {

/// A model of schema IFC2X3; made by `IFC2X3::createModel`.
class OVIK_API IfcModelImp final : public SchemaModel {
 public:
    using SchemaModel::SchemaModel;

    EIfcSchemaId schemaId() const override;
    void buildBackRefs() override;
};

}  // namespace Ovik::IFC2X3Imp
