// Which relations are collected as back references, and of what: those that a host needs to walk
// backwards. What one schema has and the other has not is asked of its classes, so one routine
// serves both. Internal.
#pragma once

#include <type_traits>

#include "ovik/imp/ifcentity.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/select.h"

namespace Ovik::Schema {

/// The entity that a reference or a select leads to. Null if it leads nowhere or to an object of a
/// wrong class, or if the select holds a value.
inline IfcEntity* relatedEntity(IfcEntity* target) {
    return target;
}
template <class S>
IfcEntity* relatedEntity(const S& select) requires std::is_base_of_v<Select, S> {
    const Choice* const choice = currentChoice(select, S::s_type);
    if (!choice || choice->type.kind != Kind::Entity) return nullptr;
    return targetOf(*static_cast<const EntityId*>(fieldAt(&select, choice->offset)),
                    choice->type.entity);
}

/// Adds `entity` of schema `S` to the back references of what it relates.
template <class S>
void addBackRefs(IfcEntity& entity) {
    const auto add = [&entity](auto&& target) {
        if (IfcEntity* const related = relatedEntity(target)) related->backRefs().add(&entity);
    };
    const auto addEach = [&add](auto& targets) {
        for (unsigned i = 0; i < targets.size(); ++i) add(targets[i]);
    };

    // The class itself is asked for: relations of a derived class are not collected.
    const RtClass* const type = entity.isA();
    if (type == S::IfcStyledItem::desc()) {
        auto& styled = static_cast<typename S::IfcStyledItem&>(entity);
        if (styled.hasItem()) add(styled.getItem());
    } else if (type == S::IfcPresentationLayerAssignment::desc() ||
               type == S::IfcPresentationLayerWithStyle::desc()) {
        addEach(
            static_cast<typename S::IfcPresentationLayerAssignment&>(entity).getAssignedItems());
    } else if (type == S::IfcRelVoidsElement::desc()) {
        auto& relation = static_cast<typename S::IfcRelVoidsElement&>(entity);
        add(relation.getRelatingBuildingElement());
        add(relation.getRelatedOpeningElement());
    } else if (type == S::IfcRelFillsElement::desc()) {
        auto& relation = static_cast<typename S::IfcRelFillsElement&>(entity);
        add(relation.getRelatingOpeningElement());
        add(relation.getRelatedBuildingElement());
    } else if (type == S::IfcRelAssociatesMaterial::desc() ||
               type == S::IfcRelAssociatesClassification::desc()) {
        addEach(static_cast<typename S::IfcRelAssociates&>(entity).getRelatedObjects());
    } else if (type == S::IfcMaterialDefinitionRepresentation::desc()) {
        add(static_cast<typename S::IfcMaterialDefinitionRepresentation&>(entity)
                .getRepresentedMaterial());
    } else if (type == S::IfcRelDefinesByProperties::desc()) {
        addEach(static_cast<typename S::IfcRelDefinesByProperties&>(entity).getRelatedObjects());
    } else if (type == S::IfcRelContainedInSpatialStructure::desc()) {
        addEach(static_cast<typename S::IfcRelContainedInSpatialStructure&>(entity)
                    .getRelatedElements());
    } else if (type == S::IfcRelAggregates::desc()) {
        addEach(static_cast<typename S::IfcRelAggregates&>(entity).getRelatedObjects());
    } else if (type == S::IfcRelDefinesByType::desc()) {
        addEach(static_cast<typename S::IfcRelDefinesByType&>(entity).getRelatedObjects());
    } else if (type == S::IfcRelAssignsToProduct::desc()) {
        using Objects = typename S::IfcObjectTypeEnum;
        auto& relation = static_cast<typename S::IfcRelAssignsToProduct&>(entity);
        if (!relation.hasRelatedObjectsType() ||
            (relation.getRelatedObjectsType() != Objects::ePRODUCT &&
             relation.getRelatedObjectsType() != Objects::ePROJECT))
            return;
        add(relation.getRelatingProduct());
    } else if (isKindOf(type, S::IfcTypeProduct::desc())) {
        auto& product = static_cast<typename S::IfcTypeProduct&>(entity);
        if (product.hasRepresentationMaps()) addEach(product.getRepresentationMaps());
    } else if constexpr (requires { typename S::IfcIndexedColourMap; }) {
        if (isKindOf(type, S::IfcIndexedColourMap::desc()))
            add(static_cast<typename S::IfcIndexedColourMap&>(entity).getMappedTo());
        else if (isKindOf(type, S::IfcIndexedTextureMap::desc()))
            add(static_cast<typename S::IfcIndexedTextureMap&>(entity).getMappedTo());
    }
}

}  // namespace Ovik::Schema
