// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
// Tables and operations of a part of the classes.
#include <cstddef>

#include "ovik/imp/outfiler.h"
#include "ovik/imp/validation.h"
#include "ovik/schema/common/aggregateengine.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/tables.h"
#include "ovik/schema/toy/imp.h"
#include "ovik/toy/Finish.h"
#include "ovik/toy/IfcBox.h"
#include "ovik/toy/IfcMeasure.h"
#include "ovik/toy/IfcPart.h"
#include "ovik/toy/List_0_Label.h"
#include "ovik/toy/List_1_List_2_3_Factor.h"
#include "ovik/toy/List_2_3_Factor.h"
#include "ovik/toy/Set_1_2_Side.h"

// The tables hold offsets of fields. The classes have single inheritance without virtual
// bases, where offsetof is sound, and begin with their base, which is asserted.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace Ovik {

using Schema::typeOf;

static constexpr Schema::Literal literalsOfFinish[] = {
    {"MATT", 2384383275},
    {"GLOSSY", 3449804800},
    {"NOTDEFINED", 2143442899},
};
constinit const Schema::EnumType TOY::Finish::s_type = {
    "Finish", &TOYImp::schemaNameHash,
    literalsOfFinish};

static_assert(Schema::Internals::selectBeginsWith<TOY::IfcMeasure, Schema::Select>);
constexpr Schema::Choice TOY::IfcMeasure::s_choices[] = {
    {"IfcLength", "IFCLENGTH", 104236047, typeOf<double>(),
     0, &Schema::fieldOps<double>},
    {"IfcCount", "IFCCOUNT", 2081272838, typeOf<int>(),
     0, &Schema::fieldOps<int>},
    {"IfcAlias", "IFCALIAS", 1773049241, typeOf<XString>(),
     0, &Schema::fieldOps<XString>},
};
constinit const Schema::SelectType TOY::IfcMeasure::s_type = {
    "IfcMeasure", &TOYImp::schemaNameHash, s_choices,
    &Schema::boxSelect<IfcMeasure>, &Schema::unboxSelect<IfcMeasure>, kRoom};

const char* TOY::IfcMeasure::choiceAsString() const {
    const Schema::Choice* current = Schema::currentChoice(*this, s_type);
    return current ? current->name : nullptr;
}

constinit const Schema::AggregateType TOY::List_0_Label::s_type =
    Schema::aggregateType<List_0_Label, 0, 0>();

constinit const Schema::AggregateType TOY::List_1_List_2_3_Factor::s_type =
    Schema::aggregateType<List_1_List_2_3_Factor, 1, 0>();

// IfcBox
constinit const Schema::AttributeTable TOY::IfcBox::s_table = {
    s_attributes, &TOYImp::schemaNameHash};
constinit RtClass TOY::IfcBox::s_type("IFCBOX", TOY::IfcPart::desc(),
    [](IfcModel* model) -> IfcEntity* { return create(*model); }, &s_table);

const RtClass* TOY::IfcBox::isA() const {
    return &s_type;
}

TOY::IfcBox* TOY::IfcBox::create(IfcModel& model) {
    auto* entity = new IfcBox;
    entity->addToModel(model);
    makeGuid(model, entity->getKey());
    return entity;
}

static_assert(Schema::Internals::entityBeginsWith<TOY::IfcBox, IfcEntity>);
constinit const Schema::Attribute TOY::IfcBox::s_attributes[] = {
    {"Sides", 332463479, typeOf<decltype(sides_)>(),
     offsetof(IfcBox, sides_), 7, false},
};

bool TOY::IfcBox::read(IfcInFiler& in) {
    return IfcThing::read(in) &&
           Schema::readAttributes(*this, IfcPart::s_attributes, in, 2u) &&
           Schema::readAttributes(*this, s_attributes, in);
}

void TOY::IfcBox::writeFields(IfcOutFiler& out) const {
    IfcThing::writeFields(out);
    Schema::writeAttributes(*this, IfcPart::s_attributes, out, 2u);
    Schema::writeAttributes(*this, s_attributes, out);
}

Result TOY::IfcBox::getAttribute(const char* name, IfcVariant& value) const {
    if (IfcPart::getAttribute(name, value) == ResultOk) return ResultOk;
    return Schema::getAttribute(*this, s_attributes, TOYImp::schemaNameHash, name, value);
}

Result TOY::IfcBox::setAttribute(const char* name, const IfcVariant& value) {
    if (IfcPart::setAttribute(name, value) == ResultOk) return ResultOk;
    return Schema::setAttribute(*this, s_attributes, TOYImp::schemaNameHash, name, value);
}

}  // namespace Ovik
