// Aggregate classes: growing and bounded storage, references, values, and travel in variants.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "loadtext.h"
#include "ovik/ifc2x3.h"
#include "ovik/ifc4.h"

namespace Ovik {
namespace {

using namespace Test;

// What each family offers and what not.
template <class A>
concept Reserving = requires(A& aggregate) {
    aggregate.reserve(1u);
};
template <class A>
concept InARow = requires(const A& aggregate) {
    aggregate.asArrayPtr();
};
template <class A>
concept Judged = requires(A& a, ValidationContext& context) {
    a.validate(context);
};
static_assert(Reserving<IFC4::List_1_IfcLabel> && !Reserving<IFC4::Set_1_2_IfcTrimmingSelect>);
static_assert(InARow<IFC4::List_1_IfcLabel> && !InARow<IFC4::Set_1_IfcFace>);
static_assert(Judged<IFC4::Set_1_IfcFace> && Judged<IFC4::Set_1_2_IfcTrimmingSelect>);
static_assert(!Judged<IFC4::List_1_IfcLabel> && !Judged<IFC4::List_1_IfcValue>);

// Values to put in: one list of each storage, and one of lists.
template <class A>
struct Maker;
template <>
struct Maker<IFC4::List_1_IfcLabel> {
    static XString make(unsigned i) {
        return XString((u"text " + std::u16string(i, u'x')).c_str());
    }
    static bool same(const XString& a, unsigned i) {
        return std::u16string_view(a.c_str()) == make(i).c_str();
    }
    static constexpr unsigned kCount = 100;
};
template <>
struct Maker<IFC4::List_3_4_int> {
    static int make(unsigned i) { return static_cast<int>(i); }
    static bool same(int a, unsigned i) { return a == make(i); }
    static constexpr unsigned kCount = 4;
};
template <>
struct Maker<IFC4::List_1_List_3_3_IfcLengthMeasure> {
    static IFC4::List_3_3_IfcLengthMeasure make(unsigned i) {
        IFC4::List_3_3_IfcLengthMeasure list;
        list.add(i);
        return list;
    }
    static bool same(const IFC4::List_3_3_IfcLengthMeasure& a, unsigned i) {
        return a.size() == 1 && a[0] == i;
    }
    static constexpr unsigned kCount = 20;
};

template <class A>
class Storage : public testing::Test {
 protected:
    using Values = Maker<A>;
    static A filled() {
        A aggregate;
        for (unsigned i = 0; i < Values::kCount; ++i) aggregate.add(Values::make(i));
        return aggregate;
    }
    static bool holds(const A& a, const std::vector<unsigned>& expected) {
        if (a.size() != expected.size()) return false;
        for (unsigned i = 0; i < a.size(); ++i) {
            if (!Values::same(a[i], expected[i]) || !Values::same(a.asArrayPtr()[i], expected[i])) {
                return false;
            }
        }
        return true;
    }
    static std::vector<unsigned> upTo(unsigned n) {
        std::vector<unsigned> all(n);
        for (unsigned i = 0; i < n; ++i) all[i] = i;
        return all;
    }
};
using Kinds = testing::Types<IFC4::List_1_IfcLabel, IFC4::List_3_4_int,
                             IFC4::List_1_List_3_3_IfcLengthMeasure>;
TYPED_TEST_SUITE(Storage, Kinds);

TYPED_TEST(Storage, KeepsWhatIsAdded) {
    constexpr unsigned n = Maker<TypeParam>::kCount;
    TypeParam a = this->filled();
    EXPECT_TRUE(this->holds(a, this->upTo(n)));

    TypeParam copy = a;
    TypeParam assigned;
    assigned.add(a[0]);
    assigned = a;
    TypeParam& self = assigned;
    assigned = self;
    EXPECT_FALSE(a.remove(n));
    EXPECT_TRUE(this->holds(a, this->upTo(n)));
    EXPECT_TRUE(a.remove(0));
    std::vector<unsigned> rest = this->upTo(n);
    rest.erase(rest.begin());
    EXPECT_TRUE(this->holds(a, rest));
    EXPECT_TRUE(a.remove(n - 2));
    rest.pop_back();
    EXPECT_TRUE(this->holds(a, rest));
    a.clear();
    EXPECT_EQ(a.size(), 0u);
    EXPECT_FALSE(a.remove(0));
    a.add(Maker<TypeParam>::make(1));
    EXPECT_TRUE(this->holds(a, {1}));
    EXPECT_TRUE(this->holds(copy, this->upTo(n)) && this->holds(assigned, this->upTo(n)));
    TypeParam moved = std::move(copy);
    EXPECT_TRUE(this->holds(moved, this->upTo(n)));
}

TEST(Growing, TheBufferComesWithTheFirstElementAndDoubles) {
    IFC4::List_2_IfcInteger a;
    EXPECT_EQ(a.size(), 0u);
    EXPECT_EQ(a.asArrayPtr(), nullptr);
    for (const int* last = nullptr; a.size() < 33; last = a.asArrayPtr()) {
        a.add(1);
        if (a.asArrayPtr() != last) {
            EXPECT_THAT(a.size(), testing::AnyOf(1, 5, 9, 17, 33));
        }
    }
    a.reserve(40);
    const int* const reserved = a.asArrayPtr();
    while (a.size() < 40) a.add(2);
    a.reserve(3);
    a.clear();
    EXPECT_EQ(a.asArrayPtr(), reserved);

    IFC4::List_2_IfcInteger none;
    none.reserve(0);
    EXPECT_NE(none.asArrayPtr(), nullptr);
    const IFC4::List_2_IfcInteger copyOfNone = none;
    for (int i = 0; i < 6; ++i) none.add(i);
    EXPECT_EQ(none.size(), 6u);
    EXPECT_EQ(copyOfNone.size(), 0u);
}

TEST(Growing, AnElementMayBeAddedToItsOwnList) {
    IFC4::List_1_IfcLabel a;
    a.add(XString(u"first"));
    while (a.size() < 40) a.add(a[0]);
    EXPECT_STREQ(a[39].getEncoded(), "first");
}

TEST(Fixed, AFullOneStaysAsItIs) {
    IFC4::Array_1_2_double pair;
    for (int i = 0; i < 4; ++i) pair.add(i);
    EXPECT_EQ(pair.size(), 2u);
    EXPECT_EQ(pair[1], 1);
    IFC4::List_2_2_IfcGridAxis axes;
    for (int i = 0; i < 4; ++i) axes.add(nullptr);
    EXPECT_EQ(axes.size(), 2u);
    IFC4::Set_1_2_IfcTrimmingSelect trims;
    for (int i = 0; i < 4; ++i) trims.add(IFC4::IfcTrimmingSelect());
    EXPECT_EQ(trims.size(), 2u);
}

class References : public testing::Test {
 protected:
    Files files_;
    ModelPtr model_ = newModel();
};

TEST_F(References, OfAnotherClassReadAsNull) {
    IFC4::Set_1_IfcFace faces;
    auto* const face = IFC4::IfcFace::create(*model_);
    auto* const line = IFC4::IfcPolyline::create(*model_);
    faces.add(face);
    faces.add(face);  // a set takes it twice
    faces.add(nullptr);
    faces.add(line->id());
    EXPECT_EQ(faces.size(), 4u);
    EXPECT_EQ(faces[0], face);
    EXPECT_EQ(faces[1], face);
    EXPECT_EQ(faces[2], nullptr);
    EXPECT_EQ(faces[3], nullptr);
    const IfcVectorValue<IFC4::Set_1_IfcFace> holder(faces);
    EXPECT_EQ(holder[1].getValueType(), AttributeEntity);
    EXPECT_EQ(holder[2].getValueType(), AttributeNone);
    EXPECT_EQ(holder[3].getValueType(), AttributeNone);
    EXPECT_TRUE(faces.remove(0) && faces.remove(1));
    EXPECT_EQ(faces[0], face);
    EXPECT_EQ(faces[1], nullptr);

    line->getPoints().add(IFC4::IfcCartesianPoint::create(*model_));
    line->getPoints().add(face->id());
    EXPECT_EQ(recordsOf(files_, *model_),
              "#1= IFCFACE(());\n#2= IFCPOLYLINE((#3,$));\n#3= IFCCARTESIANPOINT(());\n");
}

TEST_F(References, HoldersTakeElementsThatFit) {
    auto* const point = IFC4::IfcCartesianPoint::create(*model_);
    const IfcVariant samples[] = {
        1,
        1u,
        1.0,
        XString(u"a"),
        XBinary("0FF"),
        point->id(),
        EntityId(),
        IFC4::IfcFace::create(*model_)->id(),
        IfcVariant(new IfcSelectValue<IFC4::IfcValue>),
        IfcVariant(new IfcSelectValue<IFC4::IfcTrimmingSelect>),
        IfcVariant(new IfcVectorValue<IFC4::List_3_3_IfcLengthMeasure>),
        IfcVariant(new IfcVectorValue<IFC4::List_2_IfcInteger>),
        {},
    };
    const struct {
        IfcVectorValueBase* holder;
        std::size_t sample;  // the only one that fits
    } cases[] = {
        {new IfcVectorValue<IFC4::List_2_IfcInteger>, 0},
        {new IfcVectorValue<IFC2X3::List_1_unsigned_int>, 1},
        {new IfcVectorValue<IFC4::Array_1_2_double>, 2},
        {new IfcVectorValue<IFC4::List_1_IfcLabel>, 3},
        {new IfcVectorValue<IFC4::List_1_IfcBinary>, 4},
        {new IfcVectorValue<IFC4::List_2_IfcCartesianPoint>, 5},
        {new IfcVectorValue<IFC4::List_1_IfcValue>, 8},
        {new IfcVectorValue<IFC4::Set_1_2_IfcTrimmingSelect>, 9},
        {new IfcVectorValue<IFC4::List_1_List_3_3_IfcLengthMeasure>, 10},
    };
    for (const auto& c : cases) {
        const IfcVariant owner(c.holder);
        IfcVectorValueBase& vector = *c.holder;
        for (std::size_t i = 0; i < std::size(samples); ++i) {
            EXPECT_EQ(vector.add(samples[i]), i == c.sample ? ResultOk : ResultWrongType)
                << c.sample << " and " << i;
        }
        ASSERT_EQ(vector.size(), 1u);
        EXPECT_EQ(vector[0].getValueType(), samples[c.sample].getValueType());
        const IfcVariant copy = owner;
        EXPECT_FALSE(vector.remove(1));
        EXPECT_TRUE(vector.remove(0));
        EXPECT_EQ(vector.size(), 0u);
        EXPECT_EQ(copy.getVectorValue()->size(), 1u);
        copy.getVectorValue()->clear();
        EXPECT_EQ(copy.getVectorValue()->size(), 0u);
    }
}

}  // namespace
}  // namespace Ovik
