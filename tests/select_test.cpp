// Select classes: choices and their values in memory, by name, and the words for them.
#include <gtest/gtest.h>

#include <functional>
#include <type_traits>

#include "loadtext.h"
#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"

namespace Ovik {
namespace {

using namespace Test;

// Only where an entity can be chosen is there something to validate.
template <class S>
concept Validated = requires(S& select, ValidationContext& context) {
    select.validate(context);
};
static_assert(Validated<IFC4::IfcActorSelect> && Validated<IFC4::IfcTrimmingSelect>);
static_assert(!Validated<IFC4::IfcValue> && !Validated<IFC4::IfcMeasureValue>);

// Selects compare with tags, not with each other; nor are selects, enumerations and tags numbers.
template <class A, class B>
constexpr bool kComparable =
    std::is_invocable_v<std::equal_to<>, A, B> || std::is_invocable_v<std::less<>, A, B>;
static_assert(kComparable<IFC4::IfcShell, IFC4::IfcShell::CTag>);
static_assert(kComparable<IFC4::IfcBeamTypeEnum, IFC4::IfcBeamTypeEnum::ETag>);
static_assert(!kComparable<IFC4::IfcShell, IFC4::IfcShell>);
static_assert(!kComparable<IFC4::IfcShell, IFC4::IfcUnit>);
static_assert(!std::is_constructible_v<IfcVariant, IFC4::IfcShell&>);
static_assert(!std::is_constructible_v<IfcVariant, IFC4::IfcShell::CTag>);
static_assert(!std::is_constructible_v<IfcVariant, const IFC4::IfcBeamTypeEnum&>);
static_assert(!std::is_assignable_v<IfcVariant&, IFC4::IfcBeamTypeEnum::ETag>);

class Select : public ModelTest {};

template <class S>
AttributeTypeEnum typeIn(const S& select) {
    IfcVariant value;
    select.getAttribute(value);
    return value.getValueType();
}

TEST_F(Select, ANewOneIsItsFirstChoice) {
    EXPECT_EQ(IFC4::IfcActorSelect().choice(), 0);
    EXPECT_STREQ(IFC4::IfcActorSelect().choiceAsString(), "IfcOrganization");
    EXPECT_EQ(typeIn(IFC4::IfcActorSelect()), AttributeNone);
    EXPECT_STREQ(IFC4::IfcMeasureValue().choiceAsString(), "IfcAmountOfSubstanceMeasure");
    EXPECT_STREQ(IFC2X3::IfcMeasureValue().choiceAsString(), "IfcVolumeMeasure");
    EXPECT_EQ(typeIn(IFC4::IfcMeasureValue()), AttributeDouble);
    EXPECT_STREQ(IFC4::IfcValue().choiceAsString(), "IfcDerivedMeasureValue");
    EXPECT_EQ(typeIn(IFC4::IfcValue()), AttributeSelect);
    const IFC4::IfcActorSelect outside(static_cast<IFC4::IfcActorSelect::CTag>(3));
    EXPECT_EQ(outside.choiceAsString(), nullptr);
    EXPECT_EQ(typeIn(outside), AttributeNone);
}

TEST_F(Select, EntityChoicesShareOneHandleAndValuesStandBeside) {
    IFC4::IfcActorSelect select;
    auto* const person = make<IFC4::IfcPerson>();
    select.setIfcPerson(person);
    EXPECT_TRUE(select.isIfcPerson());
    EXPECT_EQ(select, IFC4::IfcActorSelect::eIfcPerson);
    EXPECT_EQ(select.getIfcPerson(), person);
    EXPECT_EQ(select.getIfcOrganization(), nullptr);  // the same handle, another class
    EXPECT_EQ(typeIn(select), AttributeEntity);
    const IFC4::IfcActorSelect copy = select;
    select.setIfcOrganization(nullptr);
    EXPECT_TRUE(select.isIfcOrganization());
    EXPECT_EQ(select.getIfcPerson(), nullptr);
    EXPECT_EQ(typeIn(select), AttributeNone);
    EXPECT_EQ(copy.getIfcPerson(), person);

    IFC4::IfcTrimmingSelect trim;
    auto* const point = make<IFC4::IfcCartesianPoint>();
    trim.setIfcCartesianPoint(point);
    trim.setIfcParameterValue(2);
    EXPECT_TRUE(trim.isIfcParameterValue());
    EXPECT_EQ(trim.getIfcCartesianPoint(), point);
    trim.setIfcCartesianPoint(nullptr);
    EXPECT_EQ(trim.getIfcParameterValue(), 2);
}

TEST_F(Select, ChoicesByName) {
    auto* const person = make<IFC4::IfcPerson>();
    IFC4::IfcSimpleValue label;
    label.setIfcLabel(XString(u"x"));
    const struct {
        IfcSelectValueBase* select;
        const char* name;
        IfcVariant value;
        Result expected;
    } cases[] = {
        {new IfcSelectValue<IFC4::IfcActorSelect>, "IfcPerson", person->id(), ResultOk},
        {new IfcSelectValue<IFC4::IfcActorSelect>, "IfcOrganization", person->id(),
         ResultWrongType},
        {new IfcSelectValue<IFC4::IfcActorSelect>, "IfcPerson", EntityId(), ResultWrongType},
        {new IfcSelectValue<IFC4::IfcActorSelect>, "IfcActor", person->id(), ResultNotFound},
        {new IfcSelectValue<IFC4::IfcActorSelect>, "IFCPERSON", person->id(), ResultNotFound},
        {new IfcSelectValue<IFC4::IfcValue>, "IfcLabel", XString(u"x"), ResultNotFound},
        {new IfcSelectValue<IFC4::IfcSimpleValue>, "IfcLabel", XString(u"x"), ResultOk},
        {new IfcSelectValue<IFC4::IfcSimpleValue>, "IfcLabel", 1.5, ResultWrongType},
        {new IfcSelectValue<IFC4::IfcSimpleValue>, "IfcReal", 1, ResultWrongType},
        {new IfcSelectValue<IFC4::IfcSimpleValue>, "IfcTimeStamp", 1, ResultOk},
        {new IfcSelectValue<IFC4::IfcSimpleValue>, "", 1, ResultNotFound},
        {new IfcSelectValue<IFC4::IfcValue>, "IfcSimpleValue",
         IfcVariant(new IfcSelectValue<IFC4::IfcSimpleValue>(label)), ResultOk},
        {new IfcSelectValue<IFC4::IfcValue>, "IfcSimpleValue",
         IfcVariant(new IfcSelectValue<IFC2X3::IfcMeasureValue>), ResultWrongType},
        {new IfcSelectValue<IFC4::IfcMeasureValue>, "IfcComplexNumber",
         IfcVariant(new IfcVectorValue<IFC4::Array_1_2_double>), ResultOk},
    };
    for (const auto& c : cases) {
        const IfcVariant holder(c.select);  // which owns it now
        const char* const before = c.select->tag();
        const AttributeTypeEnum typeBefore = c.select->getValue().getValueType();
        EXPECT_EQ(c.select->setValue(c.name, c.value), c.expected) << c.name;
        const bool isSet = c.expected == ResultOk;
        EXPECT_STREQ(c.select->tag(), isSet ? c.name : before);
        EXPECT_EQ(c.select->getValue().getValueType(), isSet ? c.value.getValueType() : typeBefore);
    }
}

TEST_F(Select, TravelInVariantsAsCopies) {
    auto* const property = make<IFC4::IfcPropertySingleValue>();
    IFC4::IfcSimpleValue label;
    label.setIfcLabel(XString(u"x"));
    IFC4::IfcValue value;
    value.setIfcSimpleValue(label);
    label.setIfcLabel(XString(u"later"));
    property->setNominalValue(value);
    IfcVariant variant;
    ASSERT_EQ(property->getAttribute("NominalValue", variant), ResultOk);
    IfcVariant copy = variant;
    EXPECT_EQ(copy.getSelectValue()->setValue(
                  "IfcMeasureValue", IfcVariant(new IfcSelectValue<IFC4::IfcMeasureValue>)),
              ResultOk);
    EXPECT_STREQ(variant.getSelectValue()->tag(), "IfcSimpleValue");
    const IfcVariant inner = variant.getSelectValue()->getValue();
    EXPECT_STREQ(inner.getSelectValue()->tag(), "IfcLabel");
    EXPECT_STREQ(inner.getSelectValue()->getValue().getXString().getEncoded(), "x");
    EXPECT_EQ(recordsOf(*model_), "#1= IFCPROPERTYSINGLEVALUE('',$,IFCLABEL('x'),$);\n");
    EXPECT_EQ(property->setAttribute("NominalValue", copy), ResultOk);
    EXPECT_EQ(recordsOf(*model_),
              "#1= IFCPROPERTYSINGLEVALUE('',$,IFCAMOUNTOFSUBSTANCEMEASURE(0.),$);\n");
}

TEST_F(Select, WritesWhatTheChoiceSays) {
    auto* const actor = make<IFC4::IfcActor>();
    auto* const curve = make<IFC4::IfcTrimmedCurve>();
    curve->getTrim1().add(IFC4::IfcTrimmingSelect());
    IFC4::IfcTrimmingSelect parameter;
    parameter.setIfcCartesianPoint(make<IFC4::IfcCartesianPoint>());
    parameter.setIfcParameterValue(2);
    curve->getTrim1().add(parameter);
    const auto written = [&] {
        const std::string text = recordsOf(*model_);
        return text.substr(0, text.find('\n'));
    };
    EXPECT_EQ(written(), "#1= IFCACTOR('',$,$,$,$,$);");
    // The tag says person, the handle leads to an organization: no reference.
    actor->getTheActor().setIfcPerson(make<IFC4::IfcPerson>());
    EXPECT_EQ(written(), "#1= IFCACTOR('',$,$,$,$,#2);");
    EXPECT_NE(recordsOf(*model_).find("IFCTRIMMEDCURVE($,($,IFCPARAMETERVALUE(2.)),(),"),
              std::string::npos);
    // A tag outside of the select writes nothing at all.
    actor->setTheActor(IFC4::IfcActorSelect(static_cast<IFC4::IfcActorSelect::CTag>(7)));
    EXPECT_EQ(written(), "#1= IFCACTOR('',$,$,$,$);");
}

}  // namespace
}  // namespace Ovik
