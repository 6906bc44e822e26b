// Variants: exact kinds, ownership of holders, and the three values of a logical.
#include "ovik/imp/variant.h"

#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <type_traits>

#include "ovik/imp/schemaid.h"

using namespace Ovik;

namespace {

TEST(Logical, ThreeValues) {
    EXPECT_TRUE(!Logical() && Logical().isUnknown() && !Logical().isKnown());
    EXPECT_TRUE(Logical(true) && Logical(true).isKnown());
    EXPECT_TRUE(!Logical(false) && Logical(false).isKnown());
    EXPECT_EQ(std::bit_cast<unsigned>(Logical(true)), 0u);
    EXPECT_EQ(std::bit_cast<unsigned>(Logical(false)), 1u);
    EXPECT_EQ(std::bit_cast<unsigned>(Logical()), 2u);
}

TEST(SchemaId, Names) {
    EXPECT_EQ(std::u16string(schemaName(eIFC2X3)), u"IFC2X3");
    EXPECT_EQ(std::u16string(schemaName(eIFC4)), u"IFC4");
    EXPECT_TRUE(EntityId::s_null.isNull());
}

TEST(IfcVariant, DeliversItsOwnKindOnly) {
    IfcEntity* slot = nullptr;
    const IfcVariant variants[] = {-7,
                                   7u,
                                   2.5,
                                   true,
                                   XString(u"text"),
                                   Logical(false),
                                   EntityId(slot),
                                   Base64Guid::testGuid(),
                                   XBinary("0AB"),
                                   new IfcEnumValue("BEAM")};
    for (int tag = 0; tag < 10; ++tag) EXPECT_EQ(variants[tag].getValueType(), tag);
    EXPECT_EQ(IfcVariant().getValueType(), 12);
    int untouched = 99;
    EXPECT_EQ(variants[1].getValue(untouched), ResultWrongType);
    EXPECT_EQ(untouched, 99);
    EXPECT_EQ(variants[0].getint(), -7);
    EXPECT_EQ(variants[0].getunsigned(), static_cast<unsigned>(-7));
    EXPECT_EQ(variants[1].getint(), 7);
    EXPECT_EQ(variants[2].getdouble(), 2.5);
    EXPECT_TRUE(variants[3].getbool());
    EXPECT_EQ(std::u16string(variants[4].getXString()), u"text");
    EXPECT_TRUE(variants[5].getLogical().isKnown());
    EXPECT_EQ(variants[6].getEntityId(), EntityId(slot));
    EXPECT_EQ(variants[7].getBase64Guid(), Base64Guid::testGuid());
    EXPECT_STREQ(variants[8].getXBinary().getEncodedString(), "0AB");
    EXPECT_STREQ(variants[9].getEnumValue()->text, "BEAM");
    static_assert(!std::is_convertible_v<const char*, IfcVariant>, "a text is no bool");
    static_assert(!std::is_convertible_v<const char16_t*, IfcVariant>);
}

/// A select of one choice that counts its instances.
class TestSelect : public IfcSelectValueBase {
 public:
    explicit TestSelect(int v) : value(v) { ++alive; }
    TestSelect(const TestSelect& other) : IfcSelectValueBase(other), value(other.value) { ++alive; }
    ~TestSelect() override { --alive; }
    TestSelect* clone() const override { return new TestSelect(*this); }
    IfcVariant getValue() const override { return value; }
    const char* tag() const override { return "Choice"; }
    Result setValue(const char*, const IfcVariant& v) override { return v.getValue(value); }

    int value;
    static inline int alive = 0;
};

TEST(IfcVariant, OwnsItsHolder) {
    {
        IfcVariant first(new TestSelect(1));
        EXPECT_EQ(first.getValueType(), AttributeSelect);
        EXPECT_EQ(TestSelect::alive, 1);

        IfcVariant copy(first);
        EXPECT_EQ(TestSelect::alive, 2);
        EXPECT_EQ(copy.getSelectValue()->setValue("Choice", 2), ResultOk);
        EXPECT_EQ(first.getSelectValue()->getValue().getint(), 1);

        const IfcSelectValueBase* const holder = copy.getSelectValue();
        IfcVariant moved(std::move(copy));
        EXPECT_EQ(moved.getSelectValue(), holder);
        EXPECT_EQ(copy.getValueType(), AttributeSelect);
        EXPECT_EQ(copy.getSelectValue(), nullptr);

        copy = moved;
        EXPECT_EQ(TestSelect::alive, 3);
        first = std::move(moved);
        EXPECT_EQ(TestSelect::alive, 2);
        EXPECT_EQ(first.getSelectValue(), holder);

        IfcVariant& self = first;
        first = self;
        EXPECT_EQ(first.getSelectValue()->getValue().getint(), 2);
        copy = 3.5;
        EXPECT_EQ(copy.getValueType(), AttributeDouble);
        EXPECT_EQ(TestSelect::alive, 1);
        copy = new TestSelect(4);
        EXPECT_EQ(copy.getSelectValue()->getValue().getint(), 4);
        copy = IfcVariant();
        EXPECT_EQ(copy.getValueType(), AttributeNone);
    }
    EXPECT_EQ(TestSelect::alive, 0);
}

TEST(IfcVariant, CopiesShareText) {
    const XString text(u"text");
    IfcVariant variant;
    variant = text;
    const IfcVariant copy(variant);
    EXPECT_EQ(copy.getXString().c_str(), text.c_str());

    static const char kLiteral[] = "NOTDEFINED";
    variant = new IfcEnumValue(kLiteral);
    EXPECT_EQ(IfcVariant(variant).getEnumValue()->text, kLiteral);
    EXPECT_EQ(IfcEnumValue().text, nullptr);
}

}  // namespace
