// Enumeration classes: defaults, literals and the spellings that are accepted.
#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "ovik/ifc2x3/IfcCurrencyEnum.h"
#include "ovik/ifc4/IfcBSplineCurveForm.h"
#include "ovik/ifc4/IfcBeamTypeEnum.h"
#include "ovik/ifc4/IfcConstructionMaterialResourceTypeEnum.h"
#include "ovik/ifc4/IfcFanTypeEnum.h"
#include "ovik/ifc4/IfcNullStyle.h"
#include "ovik/ifc4/IfcRoleEnum.h"
#include "ovik/ifc4/IfcSIUnitName.h"

namespace Ovik {
namespace {

TEST(Enumeration, TheDefaultIsNotDefinedWhereverItStands) {
    EXPECT_EQ(IFC4::IfcBeamTypeEnum(), 7);
    EXPECT_STREQ(IFC4::IfcBeamTypeEnum().asString(), "NOTDEFINED");
    EXPECT_EQ(IFC4::IfcConstructionMaterialResourceTypeEnum(), 9);
    EXPECT_EQ(IFC4::IfcConstructionMaterialResourceTypeEnum::eUSERDEFINED, 10);
    EXPECT_STREQ(IFC4::IfcRoleEnum().asString(), "SUPPLIER");
    EXPECT_STREQ(IFC4::IfcBSplineCurveForm().asString(), "POLYLINE_FORM");
    EXPECT_STREQ(IFC4::IfcNullStyle().asString(), "NULL");
}

// Every literal leads to its own tag and back; tags count from 0 without gaps.
template <class E>
int literalsOf() {
    int tag = 0;
    while (const char* text = E(static_cast<typename E::ETag>(tag)).asString()) {
        E value;
        EXPECT_TRUE(value.fromString(text)) << text;
        EXPECT_EQ(value, tag) << text;
        ++tag;
    }
    EXPECT_EQ(E(static_cast<typename E::ETag>(-1)).asString(), nullptr);
    return tag;
}

TEST(Enumeration, LiteralsGoBothWays) {
    EXPECT_EQ(literalsOf<IFC2X3::IfcCurrencyEnum>(), 83);
    EXPECT_EQ(literalsOf<IFC4::IfcBeamTypeEnum>(), 8);
    EXPECT_EQ(literalsOf<IFC4::IfcNullStyle>(), 1);
    EXPECT_EQ(literalsOf<IFC4::IfcSIUnitName>(), 30);
    EXPECT_EQ(literalsOf<IFC4::IfcConstructionMaterialResourceTypeEnum>(), 11);
}

TEST(Enumeration, ThreeLetterLiteralsKeepTheirCaseInFull) {
    using E = IFC2X3::IfcCurrencyEnum;
    for (int tag = E::eAED; tag < E::eZAR; ++tag) {
        const char* const text = E(static_cast<E::ETag>(tag)).asString();
        for (std::size_t i = 0; i < 3; ++i) {
            std::string other = text;
            other[i] = static_cast<char>(std::tolower(other[i]));
            E value(E::eZAR);
            EXPECT_FALSE(value.fromString(other.c_str())) << other;
            EXPECT_EQ(value, E::eZAR);
        }
    }
}

TEST(Enumeration, OtherTextsLeaveTheTag) {
    using E = IFC4::IfcBeamTypeEnum;
    for (const char* text : {"", "t_beam", "T_BEAm", "T_BEAM ", "T_BEA", "NOSUCHLITERAL", "T\xD6M",
                             "BUILDINGOPERATOR", "a text much longer than any literal at all"}) {
        E value(E::eJOIST);
        EXPECT_FALSE(value.fromString(text)) << text;
        EXPECT_EQ(value, E::eJOIST) << text;
    }
    EXPECT_FALSE(E().fromString(nullptr));
    E value;
    EXPECT_TRUE(value.fromString("T_BEAM"));
    EXPECT_EQ(value, 5);
    // The hash doesn't see the ninth byte, and both cases of E weigh the same.
    for (const char* text : {"USERDEFiNED", "USERDEFINEd", "userdefined"}) {
        EXPECT_FALSE(value.fromString(text)) << text;
    }
    EXPECT_TRUE(value.fromString("USeRDEFIneD"));
    EXPECT_EQ(value, E::eUSERDEFINED);
    IFC4::IfcFanTypeEnum fan;
    EXPECT_TRUE(fan.fromString("PROPELLOrAxIAL"));
    EXPECT_STREQ(fan.asString(), "PROPELLORAXIAL");
}

}  // namespace
}  // namespace Ovik
