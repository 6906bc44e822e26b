// Aggregate classes: growing and bounded storage, references, values, and travel in variants.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

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
concept Validated = requires(A& a, ValidationContext& context) {
    a.validate(context);
};
static_assert(Reserving<IFC4::List_1_IfcLabel> && !Reserving<IFC4::Set_1_2_IfcTrimmingSelect>);
static_assert(InARow<IFC4::List_1_IfcLabel> && !InARow<IFC4::Set_1_IfcFace>);
static_assert(Validated<IFC4::Set_1_IfcFace> && Validated<IFC4::Set_1_2_IfcTrimmingSelect>);
static_assert(!Validated<IFC4::List_1_IfcLabel> && !Validated<IFC4::List_1_IfcValue>);

// Adds, copies, removes and clears; `make(i)` gives the value number `i` of `n`.
template <class A, class Make>
void tryStorage(unsigned n, Make make) {
    const auto holds = [&](const A& a, unsigned from, unsigned to) {
        bool same = a.size() == to - from;
        for (unsigned i = 0; same && i < a.size(); ++i) {
            same = a[i] == make(from + i) && a.asArrayPtr()[i] == make(from + i);
        }
        return same;
    };
    A a, assigned;
    for (unsigned i = 0; i < n; ++i) a.add(make(i));
    A copy = a;
    assigned.add(make(1));
    assigned = a;
    A& self = assigned;
    assigned = self;
    EXPECT_FALSE(a.remove(n));
    EXPECT_TRUE(holds(a, 0, n));
    EXPECT_TRUE(a.remove(0));
    EXPECT_TRUE(holds(a, 1, n));
    EXPECT_TRUE(a.remove(n - 2));
    EXPECT_TRUE(holds(a, 1, n - 1));
    a.clear();
    EXPECT_EQ(a.size(), 0u);
    EXPECT_FALSE(a.remove(0));
    a.add(make(1));
    EXPECT_TRUE(holds(a, 1, 2));
    EXPECT_TRUE(holds(copy, 0, n) && holds(assigned, 0, n));
    A moved = std::move(copy);
    EXPECT_TRUE(holds(moved, 0, n) && holds(copy, 0, 0));
    a = std::move(moved);
    moved.add(make(2));
    EXPECT_TRUE(holds(a, 0, n) && holds(moved, 2, 3));
}

// A text that compares by its characters.
struct Text : XString {
    using XString::XString;
    bool operator==(const XString& other) const {
        return std::u16string_view(c_str()) == other.c_str();
    }
};

TEST(Storage, KeepsWhatIsAdded) {
    tryStorage<IFC4::List_3_4_int>(4, [](unsigned i) { return static_cast<int>(i); });
    tryStorage<Schema::ValueAggregate<Text, 1>>(
        100, [](unsigned i) { return Text(std::u16string(i, u'x').c_str()); });
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

    // An element may be added to its own list.
    IFC4::List_1_IfcLabel labels;
    labels.add(XString(u"first"));
    while (labels.size() < 40) labels.add(labels[0]);
    EXPECT_STREQ(labels[39].getEncoded(), "first");
}

TEST(Fixed, AFullOneStaysAsItIs) {
    IFC4::Array_1_2_double pair;
    for (int i = 0; i < 4; ++i) pair.add(i);
    EXPECT_EQ(pair.size(), 2u);
    EXPECT_EQ(pair[1], 1);
    IFC4::List_2_2_IfcGridAxis axes;
    for (int i = 0; i < 4; ++i) axes.add(nullptr);
    EXPECT_EQ(axes.size(), 2u);

    // What a second reading finds no room for is left out.
    Probe::reset();
    Probe::onRead = [](IfcInFiler& in) {
        IFC4::List_3_4_int member[2];
        EXPECT_TRUE(member[0].read(in));
        in.setCursor(0);
        EXPECT_TRUE(member[0].read(in));
        EXPECT_EQ(std::vector(member[0].begin(), member[0].end()), (std::vector{7, 8, 9, 7}));
        EXPECT_EQ(member[1].size(), 0u);
        return true;
    };
    EXPECT_EQ(loadRecords("#1=IFCTESTPROBE((7,8,9));").log, "");
}

class References : public ModelTest {};

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
    EXPECT_EQ(recordsOf(*model_),
              "#1= IFCFACE(());\n#2= IFCPOLYLINE((#3,$));\n#3= IFCCARTESIANPOINT(());\n");
}

TEST_F(References, HoldersTakeElementsThatFit) {
    auto* const point = IFC4::IfcCartesianPoint::create(*model_);
    const IfcVariant samples[] = {
        1,
        1u,
        1.0,
        XString(u"a"),
        point->id(),
        IFC4::IfcFace::create(*model_)->id(),
        IfcVariant(new IfcSelectValue<IFC4::IfcTrimmingSelect>),
        IfcVariant(new IfcVectorValue<IFC4::List_3_3_IfcLengthMeasure>),
        IfcVariant(new IfcVectorValue<IFC4::List_2_IfcInteger>),
    };
    const struct {
        IfcVectorValueBase* holder;
        std::size_t sample;  // the only one that fits
    } cases[] = {
        {new IfcVectorValue<IFC2X3::List_1_unsigned_int>, 1},
        {new IfcVectorValue<IFC4::Array_1_2_double>, 2},
        {new IfcVectorValue<IFC4::List_1_IfcLabel>, 3},
        {new IfcVectorValue<IFC4::List_2_IfcCartesianPoint>, 4},
        {new IfcVectorValue<IFC4::Set_1_2_IfcTrimmingSelect>, 6},
        {new IfcVectorValue<IFC4::List_1_List_3_3_IfcLengthMeasure>, 7},
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
