// The back references of IFC2X3.
#include "ovik/schema/common/backrefs.h"

#include "ovik/ifc2x3/IfcElement.h"
#include "ovik/ifc2x3/IfcFeatureElementSubtraction.h"
#include "ovik/ifc2x3/IfcMaterial.h"
#include "ovik/ifc2x3/IfcMaterialDefinitionRepresentation.h"
#include "ovik/ifc2x3/IfcObject.h"
#include "ovik/ifc2x3/IfcObjectDefinition.h"
#include "ovik/ifc2x3/IfcObjectTypeEnum.h"
#include "ovik/ifc2x3/IfcOpeningElement.h"
#include "ovik/ifc2x3/IfcPresentationLayerAssignment.h"
#include "ovik/ifc2x3/IfcPresentationLayerWithStyle.h"
#include "ovik/ifc2x3/IfcProduct.h"
#include "ovik/ifc2x3/IfcRelAggregates.h"
#include "ovik/ifc2x3/IfcRelAssignsToProduct.h"
#include "ovik/ifc2x3/IfcRelAssociatesClassification.h"
#include "ovik/ifc2x3/IfcRelAssociatesMaterial.h"
#include "ovik/ifc2x3/IfcRelContainedInSpatialStructure.h"
#include "ovik/ifc2x3/IfcRelDefinesByProperties.h"
#include "ovik/ifc2x3/IfcRelDefinesByType.h"
#include "ovik/ifc2x3/IfcRelFillsElement.h"
#include "ovik/ifc2x3/IfcRelVoidsElement.h"
#include "ovik/ifc2x3/IfcRepresentationItem.h"
#include "ovik/ifc2x3/IfcRepresentationMap.h"
#include "ovik/ifc2x3/IfcStyledItem.h"
#include "ovik/ifc2x3/IfcTypeProduct.h"
#include "ovik/schema/ifc2x3/imp.h"

namespace Ovik {

void IFC2X3Imp::IfcModelImp::addBackRefs(IfcEntity& entity) const {
    Schema::addBackRefs<IFC2X3>(entity);
}

}  // namespace Ovik
