// Which relations are collected as back references, and of what: those that a host needs to walk
// backwards. The schemas differ in a few places only, so one routine serves both. It is included
// by the models of the schemas behind the classes of theirs. Internal.
#pragma once

#include <cstdint>
#include <type_traits>

#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcmodel.h"

namespace Ovik {

class IFC4;

namespace Schema {

/// Adds `entity` of schema `S` to the back references of what it relates. A reference that leads
/// nowhere or to an object of a wrong class comes out of its accessor as null and is left out.
template <class S>
void addBackRefs(IfcEntity& entity) {
    constexpr bool kIsIfc4 = std::is_same_v<S, IFC4>;
    const auto add = [&entity](IfcEntity* target) {
        if (target) target->backRefs().add(&entity);
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
        auto& items =
            static_cast<typename S::IfcPresentationLayerAssignment&>(entity).getAssignedItems();
        for (unsigned i = 0; i < items.size(); ++i) {
            if (items[i].isIfcRepresentationItem())
                add(items[i].getIfcRepresentationItem());
            else if (items[i].isIfcRepresentation())
                add(items[i].getIfcRepresentation());
        }
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
        auto& objects = static_cast<typename S::IfcRelAssociates&>(entity).getRelatedObjects();
        if constexpr (kIsIfc4) {
            for (unsigned i = 0; i < objects.size(); ++i) {
                if (objects[i].isIfcObjectDefinition())
                    add(objects[i].getIfcObjectDefinition());
                else if (objects[i].isIfcPropertyDefinition())
                    add(objects[i].getIfcPropertyDefinition());
            }
        } else {
            addEach(objects);
        }
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
        auto&& product = relation.getRelatingProduct();
        if constexpr (kIsIfc4) {
            if (product.isIfcProduct())
                add(product.getIfcProduct());
            else if (product.isIfcTypeProduct())
                add(product.getIfcTypeProduct());
        } else {
            add(product);
        }
    } else if (isKindOf(type, S::IfcTypeProduct::desc())) {
        auto& product = static_cast<typename S::IfcTypeProduct&>(entity);
        if (product.hasRepresentationMaps()) addEach(product.getRepresentationMaps());
    } else if constexpr (kIsIfc4) {
        if (isKindOf(type, S::IfcIndexedColourMap::desc()))
            add(static_cast<typename S::IfcIndexedColourMap&>(entity).getMappedTo());
        else if (isKindOf(type, S::IfcIndexedTextureMap::desc()))
            add(static_cast<typename S::IfcIndexedTextureMap&>(entity).getMappedTo());
    }
}

template <class S>
void buildBackRefs(const IfcModel& model) {
    const std::uint64_t numEntities = model.getNumEntities();
    for (std::uint64_t i = 0; i < numEntities; ++i) {
        IfcEntity& entity = *model.get(i);
        entity.setUserData(0);
        addBackRefs<S>(entity);
    }
}

}  // namespace Schema
}  // namespace Ovik
