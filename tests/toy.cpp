// A schema that is not the library's. The classes of toy.schema are made as those of the library
// are, and its row is all that the library is told of it.
#include <gtest/gtest.h>

#include "ovik/api.h"
#include "ovik/api/toy.h"
#include "ovik/schema/toy/imp.h"
#include "ovik/toy.h"
#include "tests/loadtext.h"

namespace Ovik {

// The rule of its own: a box has two sides.
int TOY::IfcBox::validate(ValidationContext& context) {
    return getSides().size() == 2 ? IfcPart::validate(context) : static_cast<int>(kInvalid);
}

namespace {

using namespace Test;

const bool isAdded = addSchema(TOYImp::schemaRow);

TEST(ToySchema, IsOneMoreRow) {
    EXPECT_TRUE(isAdded);
    EXPECT_FALSE(addSchema(TOYImp::schemaRow));
    EXPECT_FALSE(addSchema(*findSchema(eIFC4)));
    EXPECT_EQ(schemaTable().size(), 3u);
    EXPECT_STREQ(toUtf8(XString(schemaName(TOY::kSchemaId))).c_str(), "TOY");
    EXPECT_EQ(newModel(TOY::kSchemaId, true)->schemaId(), TOY::kSchemaId);
    const auto none = static_cast<EIfcSchemaId>(TOY::kSchemaId + 1);
    EXPECT_EQ(IfcModel::create(none, false, false), nullptr);
    EXPECT_EQ(schemaName(none), nullptr);
}

TEST(ToySchema, IsReadValidatedAndWritten) {
    const std::string key = "'0123456789abcdefghijkl',";
    const std::string records =
        "#1= IFCEMPTY();\n"
        "#2= IFCGROUP(" +
        key +
        "$,(#3,#4),IFCLENGTH(2.));\n"
        "#3= IFCPART(" +
        key +
        "'Lid',$,3.,.GLOSSY.,('a','b'),IFCCOUNT(4));\n"
        "#4= IFCBOX(" +
        key +
        "$,$,*,$,$,IFCALIAS('x'),(.LEFT.,.RIGHT.));\n"
        "#5= IFCSHELL(" +
        key +
        "$,#2,1.,$,(),IFCLENGTH(1.));\n"
        "#6= IFCTABLE(((1.,2.),(3.,4.,5.)),$,(#3,IFCPAIR((1.,2.))),.U.,.T.,$,-7);\n";
    const Loaded loaded = loadRecords(records + "#7=IFCBOX(" + key +
                                          "$,$,*,$,$,IFCCOUNT(1),(.LEFT.));\n"
                                          "#8=IFCGROUP(" +
                                          key +
                                          "$,(#7,#1),$);\n"
                                          "#9=IFCPART(" +
                                          key +
                                          "$,$,1.,$,$,IFCFACTOR(1.));\n"
                                          "#10=IFCTHING(" +
                                          key + "$);\n",
                                      TOY::kSchemaId);
    EXPECT_EQ(loaded.log,
              "Failed to read object #9 of class IFCPART\n"
              "Error: invalid class name in #10\n"
              "Invalid entity #7 is removed.\n"
              "Invalid data member 'Members' in #8, removed.\n"
              "Invalid entity #8 is removed.\n");
    EXPECT_EQ(recordsOf(*loaded.model), records);
}

TEST(ToySchema, IsAccessedByName) {
    using namespace IfcApi;
    initOvikApi();
    Model* const model = Model::create(TOY::kSchemaId);
    Entity box = Entity::create(*model, Toy::IfcBox);
    EXPECT_STREQ(box.className(), "IFCBOX");
    EXPECT_FALSE(box.isKindOf(Toy::IfcShell));
    SelectValue size(Toy::IfcMeasure);
    EXPECT_EQ(size.setValue(Toy::IfcCount, 3), IfcApi::ResultOk);
    EXPECT_EQ(box.setAttribute(Toy::Size, size), IfcApi::ResultOk);
    VectorValue sides(Toy::Set_1_2_Side);
    EnumValue side;
    side.setValue(Toy::eRIGHT);
    EXPECT_EQ(sides.add(side), IfcApi::ResultOk);
    EXPECT_EQ(box.setAttribute(Toy::Sides, sides), IfcApi::ResultOk);
    EXPECT_EQ(box.setAttribute("sides", sides), IfcApi::ResultNotFound);  // the case counts
    Variant value;
    EXPECT_EQ(box.getAttribute(Toy::Size, value), IfcApi::ResultOk);
    EXPECT_EQ(value.getSelect().getValue().getInt(), 3);
    // A class that is in capitals already is found by its name.
    EXPECT_EQ(box.isA(), nullptr);
    EXPECT_EQ(Entity::create(*model, Toy::IFCEMPTY).isA(), &Toy::IFCEMPTY);
    model->release();
}

}  // namespace
}  // namespace Ovik
