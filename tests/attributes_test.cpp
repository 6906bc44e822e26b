// Entity classes: access by name with its results, accessors, presence flags, casts and creation.
#include <gtest/gtest.h>

#include <concepts>
#include <type_traits>

#include "loadtext.h"
#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"
#include "ovik/schema/generator/schema.h"

namespace Ovik {
namespace {

using namespace Test;

// What the interface must not offer.
template <class T>
concept Creatable = requires(IfcModel& model) {
    { T::create(model) } -> std::same_as<T*>;
};
static_assert(Creatable<IFC4::IfcBeam> && Creatable<IFC4::IfcActorRole>);
static_assert(!Creatable<IFC4::IfcRoot> && !Creatable<IFC4::IfcConnectionGeometry>);
static_assert(!std::is_copy_constructible_v<IFC4::IfcBeam>);
static_assert(!std::is_copy_assignable_v<IFC4::IfcBeam>);
static_assert(!std::is_default_constructible_v<IFC4::IfcBeam>);

template <class T>
concept HasOwnerHistory = requires(const T& entity) {
    entity.hasOwnerHistory();
};
static_assert(HasOwnerHistory<IFC4::IfcWall> && !HasOwnerHistory<IFC2X3::IfcWall>);

class Attributes : public ModelTest {};

AttributeTypeEnum typeOf(const IfcEntity& entity, const char* name) {
    IfcVariant value;
    EXPECT_EQ(entity.getAttribute(name, value), ResultOk) << name;
    return value.getValueType();
}

TEST_F(Attributes, EachSchemaHasItsNameHash) {
    const auto read = [](const std::string& name) {
        return Generator::Schema::read(OVIK_SOURCE_DIR "/ovik/schema/" + name + "/" + name +
                                       ".schema");
    };
    const auto ifc2x3 = read("ifc2x3"), ifc4 = read("ifc4");
    EXPECT_EQ(ifc4->hash("PredefinedType"), 6759u);
    EXPECT_EQ(ifc4->hash("predefinedtype"), 7704u);
    EXPECT_EQ(ifc4->hash("A"), 1u + 2 * 20);
    EXPECT_EQ(ifc4->hash(""), 0u);
    EXPECT_EQ(ifc2x3->hash("PredefinedType"), 1614u);
    EXPECT_EQ(ifc2x3->hash("BEG"), 11651u);
    EXPECT_EQ(ifc2x3->hash("IfcTextLiteralWithExtent"), 24628u);
    EXPECT_EQ(ifc2x3->hash("A"), 1u + 2 * 795);
}

// Each kind of attribute takes exactly one kind of variant; anything else leaves it as it is.
TEST_F(Attributes, TakeExactlyTheirOwnKindOfVariant) {
    IFC4::IfcPropertySet* const set = make<IFC4::IfcPropertySet>();
    IFC4::IfcPolyline* const curve = make<IFC4::IfcPolyline>();
    IFC4::IfcActorSelect actor;
    actor.setIfcPerson(make<IFC4::IfcPerson>());
    IFC4::Set_1_IfcProperty properties;
    properties.add(make<IFC4::IfcPropertySingleValue>());
    Base64Guid guid = Base64Guid::testGuid();
    const IfcVariant samples[] = {
        7,
        7u,
        4.0,
        true,
        XString(u"text"),
        Logical(false),
        curve->id(),
        guid,
        XBinary("0FF"),
        IfcVariant(new IfcEnumValue("JOIST")),
        IfcVariant(new IfcSelectValue<IFC4::IfcActorSelect>(actor)),
        IfcVariant(new IfcVectorValue<IFC4::Set_1_IfcProperty>(properties)),
        {},
    };
    IFC4::IfcGridAxis* const axis = make<IFC4::IfcGridAxis>();
    const struct {
        IfcEntity* entity;
        const char* name;
        AttributeTypeEnum type;
        Result whenNew;
        Result otherwise = ResultWrongType;
    } cases[] = {
        {make<IFC4::IfcDimensionalExponents>(), "LengthExponent", AttributeInt, ResultOk},
        {make<IFC4::IfcBuildingStorey>(), "Elevation", AttributeDouble, ResultUnset},
        {axis, "SameSense", AttributeBool, ResultOk},
        {axis, "AxisTag", AttributeString, ResultUnset},
        {axis, "AxisCurve", AttributeEntity, ResultOk},
        {make<IFC4::IfcCompositeCurve>(), "SelfIntersect", AttributeLogical, ResultOk},
        {make<IFC4::IfcBlobTexture>(), "RasterCode", AttributeBinary, ResultOk},
        {make<IFC4::IfcBeam>(), "PredefinedType", AttributeEnum, ResultUnset},
        {make<IFC4::IfcActor>(), "TheActor", AttributeSelect, ResultOk},
        {set, "HasProperties", AttributeVector, ResultOk},
        // Inherited: what the ancestor answers is lost, and the class itself knows no such name.
        {set, "GlobalId", AttributeGuid, ResultOk, ResultNotFound},
        {set, "Name", AttributeString, ResultNotFound, ResultNotFound},
    };
    for (const auto& c : cases) {
        IfcVariant before, after;
        EXPECT_EQ(c.entity->getAttribute(c.name, before), c.whenNew) << c.name;
        EXPECT_EQ(c.entity->isGiven(c.name), c.whenNew == ResultOk) << c.name;
        const IfcVariant* fitting = nullptr;
        for (const IfcVariant& sample : samples) {
            if (sample.getValueType() == c.type) {
                fitting = &sample;
                continue;
            }
            EXPECT_EQ(c.entity->setAttribute(c.name, sample), c.otherwise)
                << c.name << " of " << sample.getValueType();
        }
        EXPECT_EQ(c.entity->getAttribute(c.name, after), c.whenNew) << c.name;
        EXPECT_EQ(c.entity->setAttribute(c.name, *fitting), ResultOk) << c.name;
        EXPECT_EQ(typeOf(*c.entity, c.name), c.type) << c.name;
        EXPECT_TRUE(c.entity->isGiven(c.name)) << c.name;
    }
    EXPECT_EQ(recordsOf(*model_),
              "#1= IFCPROPERTYSET('_dummy_GUID_dummy_GIUD',$,'text',$,(#2));\n"
              "#2= IFCPROPERTYSINGLEVALUE('',$,$,$);\n#3= IFCPOLYLINE(());\n"
              "#4= IFCPERSON($,$,$,$,$,$,$,$);\n#5= IFCGRIDAXIS('text',#3,.T.);\n"
              "#6= IFCDIMENSIONALEXPONENTS(7,0,0,0,0,0,0);\n"
              "#7= IFCBUILDINGSTOREY('',$,$,$,$,$,$,$,$,4.);\n"
              "#8= IFCCOMPOSITECURVE((),.F.);\n#9= IFCBLOBTEXTURE(.F.,.F.,$,$,$,'',\"0FF\");\n"
              "#10= IFCBEAM('',$,$,$,$,$,$,$,.JOIST.);\n"
              "#11= IFCACTOR('',$,$,$,$,#4);\n");
}

TEST_F(Attributes, TheNearestClassThatDeclaresAnyAnswers) {
    IFC4::IfcFillAreaStyle* const style = make<IFC4::IfcFillAreaStyle>();
    style->setModelorDraughting(true);
    IFC4::IfcWall* const wall = make<IFC4::IfcWall>();
    wall->setPredefinedType(IFC4::IfcWallTypeEnum::eSHEAR);
    const struct {
        IfcEntity* entity;
        const char* name;
        Result expected;
    } cases[] = {
        {make<IFC4::IfcBeam>(), "Name", ResultNotFound},  // unset in an ancestor
        {make<IFC4::IfcBeam>(), "PredefinedType", ResultUnset},
        {make<IFC4::IfcDocumentInformation>(), "Description", ResultUnset},
        {make<IFC4::IfcWallStandardCase>(), "PredefinedType", ResultUnset},  // of IfcWall
        {make<IFC4::IfcWallStandardCase>(), "Tag", ResultNotFound},
        {make<IFC4::IfcWallStandardCase>(), "GlobalId", ResultOk},
        {make<IFC4::IfcBeam>(), "HasOpenings", ResultNotFound},  // inverse
        {make<IFC4::IfcPolyline>(), "Dim", ResultNotFound},      // derived
        {make<IFC4::IfcActorRole>(), "", ResultNotFound},
        {make<IFC4::IfcActorRole>(), "R\xF6le", ResultNotFound},
        {make<IFC4::IfcActorRole>(), "AnAttributeWithANameThatIsLongerThanThatOfAnyOther",
         ResultNotFound},
        // Only where the hash doesn't look may the case differ.
        {wall, "PredefinEdType", ResultOk},
        {wall, "predefinedtype", ResultNotFound},
        {wall, "PREDEFINEDTYPE", ResultNotFound},
        {style, "ModelorDraughting", ResultOk},
        {style, "ModelOrDraughting", ResultNotFound},
    };
    for (const auto& c : cases) {
        IfcVariant value;
        EXPECT_EQ(c.entity->getAttribute(c.name, value), c.expected) << c.name;
        EXPECT_EQ(value.getValueType() == AttributeNone, c.expected != ResultOk) << c.name;
    }
    // A root class without attributes, and the base of all.
    IfcVariant value;
    EXPECT_EQ(make<IFC4::IfcConnectionPointGeometry>()->getAttribute("Name", value),
              ResultNotFound);
    EXPECT_EQ(make<IFC4::IfcBeam>()->setAttribute("PredefinedType",
                                                  IfcVariant(new IfcEnumValue("NOSUCHLITERAL"))),
              ResultNotFound);
    EXPECT_EQ(make<IFC4::IfcBeam>()->setAttribute("PredefinedType", IfcVariant(new IfcEnumValue)),
              ResultNotFound);
}

TEST_F(Attributes, HoldersMustBeOfTheVeryClass) {
    IFC4::IfcActor* const actor = make<IFC4::IfcActor>();
    EXPECT_EQ(actor->setAttribute("TheActor", IfcVariant(new IfcSelectValue<IFC4::IfcValue>)),
              ResultWrongType);
    IFC4::IfcPolyline* const line = make<IFC4::IfcPolyline>();
    EXPECT_EQ(line->setAttribute("Points", IfcVariant(new IfcVectorValue<IFC4::List_1_IfcLabel>)),
              ResultWrongType);
    EXPECT_EQ(line->setAttribute("Points",
                                 IfcVariant(new IfcVectorValue<IFC2X3::List_2_IfcCartesianPoint>)),
              ResultWrongType);
    // Neither a handle that leads nowhere nor one to another class is taken.
    IFC4::IfcGridAxis* const axis = make<IFC4::IfcGridAxis>();
    axis->setAxisCurve(line);
    EXPECT_EQ(axis->setAttribute("AxisCurve", EntityId()), ResultWrongType);
    EXPECT_EQ(axis->setAttribute("AxisCurve", actor->id()), ResultWrongType);
    EXPECT_EQ(axis->getAxisCurve(), line);
    EXPECT_EQ(line->backRefs().size(), 0u);
}

TEST_F(Attributes, OptionalReferencesAreThereWhenTheyLeadSomewhere) {
    IFC4::IfcBeam* const beam = make<IFC4::IfcBeam>();
    EXPECT_FALSE(beam->hasOwnerHistory());
    IFC4::IfcOwnerHistory* const history = make<IFC4::IfcOwnerHistory>();
    beam->setOwnerHistory(history);
    EXPECT_TRUE(beam->hasOwnerHistory());
    EXPECT_EQ(beam->getOwnerHistory(), history);
    beam->setOwnerHistory(nullptr);
    EXPECT_FALSE(beam->hasOwnerHistory());

    // An attribute that a subclass redeclares is not judged in a load, so anything may be there.
    const Loaded loaded = loadRecords(
        "#1=IFCCARTESIANPOINT((0.,0.));#2=IFCAXIS2PLACEMENT2D(#1,$);"
        "#3=IFCGEOMETRICREPRESENTATIONCONTEXT($,$,2,$,#2,$);"
        "#4=IFCGEOMETRICREPRESENTATIONSUBCONTEXT($,$,2,0.5,#2,#1,#3,$,.PLAN_VIEW.,$);"
        "#5=IFCGEOMETRICREPRESENTATIONSUBCONTEXT($,$,2,$,#2,#99,#3,$,.PLAN_VIEW.,$);",
        eIFC2X3, {.lenient = false});
    EXPECT_EQ(loaded.log, "");
    auto* const context = loaded.find<IFC2X3::IfcGeometricRepresentationSubContext>(4);
    auto* const other = loaded.find<IFC2X3::IfcGeometricRepresentationSubContext>(5);
    ASSERT_TRUE(context && other);
    EXPECT_TRUE(context->hasTrueNorth());  // of another class
    EXPECT_EQ(context->getTrueNorth(), nullptr);
    EXPECT_EQ(typeOf(*context, "TrueNorth"), AttributeNone);
    EXPECT_TRUE(context->hasPrecision());
    EXPECT_EQ(context->getPrecision(), 0.5);
    EXPECT_FALSE(other->hasTrueNorth());  // no such record
    EXPECT_FALSE(other->hasPrecision());
}

TEST_F(Attributes, FlagsAreSetByAnyStoreAndNeverCleared) {
    IFC4::IfcPerson* const person = make<IFC4::IfcPerson>();
    EXPECT_FALSE(person->hasIdentification() || person->hasFamilyName() || person->hasGivenName() ||
                 person->hasMiddleNames() || person->hasPrefixTitles() ||
                 person->hasSuffixTitles() || person->hasRoles() || person->hasAddresses());
    person->setFamilyName(XString());
    IFC4::List_1_IfcLabel names;
    names.add(XString(u"a"));
    person->setMiddleNames(names);
    names.add(XString(u"b"));  // the person has a copy
    EXPECT_EQ(person->setAttribute("GivenName", XString(u"g")), ResultOk);
    EXPECT_EQ(person->setAttribute("Roles", 1), ResultWrongType);
    EXPECT_TRUE(person->hasFamilyName() && person->hasMiddleNames() && person->hasGivenName());
    EXPECT_FALSE(person->hasRoles());
    EXPECT_EQ(recordsOf(*model_), "#1= IFCPERSON($,'','g',('a'),$,$,$,$);\n");
}

TEST_F(Attributes, CastFollowsTheChainOfClasses) {
    IfcEntity* const beam = make<IFC4::IfcBeam>();
    IfcEntity* const wall = make<IFC4::IfcWallStandardCase>();
    EXPECT_EQ(IFC4::IfcBeam::cast(beam), beam);
    EXPECT_EQ(IFC4::IfcBeam::cast(wall), nullptr);
    EXPECT_EQ(IFC4::IfcBeam::cast(static_cast<IfcEntity*>(nullptr)), nullptr);
    EXPECT_EQ(IFC4::IfcWall::cast(static_cast<const IfcEntity*>(wall)), wall);
    EXPECT_EQ(IFC2X3::IfcWall::cast(wall), nullptr);  // the other schema's class
    EXPECT_STREQ(wall->isA()->className(), "IFCWALLSTANDARDCASE");

    // A concrete class without a supertype ends its chain; an abstract one goes on to the base.
    EXPECT_EQ(IFC4::IfcActorRole::desc()->parent(), nullptr);
    EXPECT_FALSE(make<IFC4::IfcActorRole>()->isKindOf(IfcEntity::desc()));
    EXPECT_EQ(IFC4::IfcRoot::desc()->parent(), IfcEntity::desc());
    EXPECT_TRUE(beam->isKindOf(IfcEntity::desc()));
}

TEST_F(Attributes, OnlyRootedEntitiesGetIdentifiersAndOnlyAsAsked) {
    const auto identifierOf = [](bool makeGuids, bool useTestGuid) -> std::string {
        const IfcModelPtr model = newModel(eIFC4, makeGuids, useTestGuid);
        IFC4::IfcPerson::create(*model);
        return IFC4::IfcBeam::create(*model)->getGlobalId().getBase64();
    };
    EXPECT_EQ(identifierOf(true, true), "_dummy_GUID_dummy_GIUD");
    EXPECT_EQ(identifierOf(false, true), "");
    EXPECT_EQ(identifierOf(true, false).size(), 22u);
    EXPECT_NE(identifierOf(true, false), identifierOf(true, false));
}

}  // namespace
}  // namespace Ovik
