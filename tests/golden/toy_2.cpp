// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
// Tables and operations of a part of the classes.
#include <cstddef>

#include "ovik/imp/outfiler.h"
#include "ovik/imp/validation.h"
#include "ovik/schema/common/aggregateengine.h"
#include "ovik/schema/common/engine.h"
#include "ovik/schema/common/tables.h"
#include "ovik/schema/toy/namehash.h"
#include "ovik/toy/Box.h"
#include "ovik/toy/Finish.h"
#include "ovik/toy/List_0_Label.h"
#include "ovik/toy/List_1_List_2_3_Factor.h"
#include "ovik/toy/List_2_3_Factor.h"
#include "ovik/toy/Measure.h"
#include "ovik/toy/Part.h"
#include "ovik/toy/Set_1_2_Side.h"

// The tables hold offsets of fields. The classes have single inheritance without virtual
// bases, where offsetof is sound, and begin with their base, which is asserted.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace Ovik {

using Schema::typeOf;

static constexpr Schema::Literal literalsOfFinish[] = {
    {"MATT", 4594},
    {"GLOSSY", 12944},
    {"NOTDEFINED", 9935},
};
constinit const Schema::EnumType TOY::Finish::s_type = {
    "Finish", &TOYImp::schemaNameHash,
    literalsOfFinish};

static_assert(Schema::Internals::selectBeginsWith<TOY::Measure, Schema::Select>);
constexpr Schema::Choice TOY::Measure::s_choices[] = {
    {"Length", "LENGTH", 10656, typeOf<decltype(length_)>(),
     offsetof(Measure, length_)},
    {"Count", "COUNT", 370, typeOf<decltype(count_)>(),
     offsetof(Measure, count_)},
    {"Alias", "ALIAS", 860, typeOf<decltype(alias_)>(),
     offsetof(Measure, alias_)},
};
constinit const Schema::SelectType TOY::Measure::s_type = {
    "Measure", &TOYImp::schemaNameHash, s_choices,
    &Schema::boxSelect<Measure>, &Schema::unboxSelect<Measure>};

const char* TOY::Measure::choiceAsString() const {
    const Schema::Choice* current = Schema::currentChoice(*this, s_type);
    return current ? current->name : nullptr;
}

constinit const Schema::AggregateType TOY::List_0_Label::s_type =
    Schema::aggregateType<List_0_Label, 0, 0>();

constinit const Schema::AggregateType TOY::List_1_List_2_3_Factor::s_type =
    Schema::aggregateType<List_1_List_2_3_Factor, 1, 0>();

// Box
RtClass TOY::Box::s_type("BOX", TOY::Part::desc(),
    [](IfcModel* model) -> IfcEntity* { return create(*model); }, eTOY);

const RtClass* TOY::Box::isA() const {
    return &s_type;
}

TOY::Box* TOY::Box::create(IfcModel& model) {
    auto* entity = new Box;
    entity->addToModel(model);
    makeGuid(model, entity->getKey());
    return entity;
}

static_assert(Schema::Internals::entityBeginsWith<TOY::Box, IfcEntity>);
constinit const Schema::Attribute TOY::Box::s_attributes[] = {
    {"Sides", 605, typeOf<decltype(sides_)>(),
     offsetof(Box, sides_), 0, false},
};

bool TOY::Box::read(IfcInFiler& in) {
    return Thing::read(in) &&
           Schema::readAttributes(*this, Part::s_attributes, in, 2u) &&
           Schema::readAttributes(*this, s_attributes, in);
}

void TOY::Box::writeFields(IfcOutFiler& out) const {
    Thing::writeFields(out);
    Schema::writeAttributes(*this, Part::s_attributes, out, 2u);
    Schema::writeAttributes(*this, s_attributes, out);
}

Result TOY::Box::getAttribute(const char* name, IfcVariant& value) const {
    if (Part::getAttribute(name, value) == ResultOk) return ResultOk;
    return Schema::getAttribute(*this, s_attributes, TOYImp::schemaNameHash, name, value);
}

Result TOY::Box::setAttribute(const char* name, const IfcVariant& value) {
    if (Part::setAttribute(name, value) == ResultOk) return ResultOk;
    return Schema::setAttribute(*this, s_attributes, TOYImp::schemaNameHash, name, value);
}

namespace TOYImp {
extern const int shard2;
const int shard2 = 0;
}  // namespace TOYImp

}  // namespace Ovik
