// The back references of IFC4.
#include "ovik/schema/common/backrefs.h"

#include "ovik/ifc4/IfcElement.h"
#include "ovik/ifc4/IfcFeatureElementSubtraction.h"
#include "ovik/ifc4/IfcIndexedColourMap.h"
#include "ovik/ifc4/IfcIndexedTextureMap.h"
#include "ovik/ifc4/IfcMaterial.h"
#include "ovik/ifc4/IfcMaterialDefinitionRepresentation.h"
#include "ovik/ifc4/IfcObject.h"
#include "ovik/ifc4/IfcObjectDefinition.h"
#include "ovik/ifc4/IfcObjectTypeEnum.h"
#include "ovik/ifc4/IfcOpeningElement.h"
#include "ovik/ifc4/IfcPresentationLayerAssignment.h"
#include "ovik/ifc4/IfcPresentationLayerWithStyle.h"
#include "ovik/ifc4/IfcProduct.h"
#include "ovik/ifc4/IfcRelAggregates.h"
#include "ovik/ifc4/IfcRelAssignsToProduct.h"
#include "ovik/ifc4/IfcRelAssociatesClassification.h"
#include "ovik/ifc4/IfcRelAssociatesMaterial.h"
#include "ovik/ifc4/IfcRelContainedInSpatialStructure.h"
#include "ovik/ifc4/IfcRelDefinesByProperties.h"
#include "ovik/ifc4/IfcRelDefinesByType.h"
#include "ovik/ifc4/IfcRelFillsElement.h"
#include "ovik/ifc4/IfcRelVoidsElement.h"
#include "ovik/ifc4/IfcRepresentationItem.h"
#include "ovik/ifc4/IfcRepresentationMap.h"
#include "ovik/ifc4/IfcStyledItem.h"
#include "ovik/ifc4/IfcTessellatedFaceSet.h"
#include "ovik/ifc4/IfcTypeProduct.h"
#include "ovik/schema/ifc4/imp.h"

namespace Ovik {

void IFC4Imp::IfcModelImp::addBackRefs(IfcEntity& entity) const {
    Schema::addBackRefs<IFC4>(entity);
}

}  // namespace Ovik
