// Run-time classes, handles, the array of back references, and what all entities share.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

#include "testclasses.h"

namespace Ovik {

// The array's private operations.
struct IfcEntityPtrArrayTest {
    static bool remove(IfcEntityPtrArray& array, unsigned index) { return array.remove(index); }
    static unsigned capacity(const IfcEntityPtrArray& array) { return array.capacity_; }
    static const void* buffer(const IfcEntityPtrArray& array) { return array.data_; }
};

namespace {

using namespace Test;

IfcEntity* makeNothing(IfcModel*) {
    return nullptr;
}

// Gives the look-up to a test, as to any class that derives from RtClass.
struct Lookup : RtClass {
    using RtClass::findCreator;
    using RtClass::RtClass;
};

TEST(RtClass, KindIsAWalkAlongTheParents) {
    const struct {
        const RtClass* cls;
        const RtClass* ancestor;
        bool expected;
    } cases[] = {
        {Leaf::desc(), Leaf::desc(), true},           {Leaf::desc(), Base::desc(), true},
        {Leaf::desc(), IfcEntity::desc(), true},      {Base::desc(), Leaf::desc(), false},
        {Leaf::desc(), Node::desc(), false},          {Node::desc(), Node::desc(), true},
        {Node::desc(), IfcEntity::desc(), false},  // no supertype: the chain ends with itself
        {IfcEntity::desc(), IfcEntity::desc(), true}, {Leaf::desc(), nullptr, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.cls->isKindOf(c.ancestor), c.expected)
            << c.cls->className() << " " << (c.ancestor ? c.ancestor->className() : "null");
        EXPECT_EQ(isKindOf(c.cls, c.ancestor), c.expected);
    }
    EXPECT_STREQ(IfcEntity::desc()->className(), "IfcEntity");
    EXPECT_EQ(IfcEntity::desc()->parent(), nullptr);
}

// Calls that a sanitizer would object to, though the library tells what they do.
__attribute__((noinline, no_sanitize("undefined"))) bool isLeaf(const RtClass* cls) {
    return cls->isKindOf(Leaf::desc());
}

__attribute__((noinline, no_sanitize("undefined"))) void destroy(IfcEntity* entity) {
    entity->destroy();
}

TEST(RtClass, ANullThisIsTold) {
    EXPECT_FALSE(isLeaf(nullptr));
    EXPECT_TRUE(isLeaf(Leaf::desc()));
    destroy(nullptr);
}

TEST(RtClass, NamesAreFoundInAnyCaseAndPerSchema) {
    for (const char* name : {"IFCTESTLEAF", "ifctestleaf", "IfcTestLeaf"}) {
        EXPECT_EQ(Lookup::findCreator(name, eIFC4), Leaf::desc()) << name;
    }
    for (const char* name : {"IFCTESTBASE", "IFCTESTLEA", "IFCTESTLEAFS", "", "zzz"}) {
        EXPECT_EQ(Lookup::findCreator(name, eIFC4), nullptr) << name;
    }
    EXPECT_EQ(Lookup::findCreator("IFCTESTLEAF", eIFC2X3), nullptr);

    const ModelPtr model = newModel();
    EXPECT_EQ(Base::desc()->create(model.get()), nullptr);
    EXPECT_EQ(Leaf::desc()->create(model.get())->isA(), Leaf::desc());
}

TEST(RtClass, AnyOrderOfRegistrationGivesTheSameRegistry) {
    // '_' stands between the capitals and the small letters, and so decides in which of them the
    // names are compared.
    static const std::vector<std::string> names = {"XQ_M", "XQB", "xqA", "XQ",
                                                   "XQa_", "XQZ", "XQC"};
    static std::vector<Lookup> classes;
    classes.reserve(names.size());
    for (const std::string& name : names) {
        classes.emplace_back(name.c_str(), nullptr, makeNothing, eIFC2X3);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(Lookup::findCreator(names[i].c_str(), eIFC2X3), &classes[i]) << names[i];
    }
    // A second one of a name is not refused; the last of them is found.
    static const Lookup again("XQB", nullptr, makeNothing, eIFC2X3);
    EXPECT_EQ(Lookup::findCreator("XQB", eIFC2X3), &again);
}

TEST(EntityId, HasThreeStates) {
    const ModelPtr model = newModel();
    Leaf* const leaf = Leaf::create(*model);
    IfcEntity* empty = nullptr;
    const EntityId null, unresolved(empty), resolved = leaf->id();
    const struct {
        const EntityId& id;
        bool isNull;
        IfcEntity* entity;
    } cases[] = {{null, true, nullptr},
                 {EntityId::s_null, true, nullptr},
                 {unresolved, false, nullptr},
                 {resolved, false, leaf}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.id.isNull(), c.isNull);
        EXPECT_EQ(!c.id, c.isNull);
        EXPECT_EQ(c.id(), c.entity);
    }
    EntityId copy = resolved;
    EXPECT_TRUE(copy == resolved);
    EXPECT_TRUE(copy != unresolved);
    EXPECT_NE(copy<unresolved, copy> unresolved);
    copy.setNull();
    EXPECT_TRUE(copy == null);
    EXPECT_EQ(resolved(), leaf);

    empty = leaf;  // the slot is filled: every handle of it sees the entity
    EXPECT_EQ(unresolved(), leaf);
    EXPECT_TRUE(unresolved != resolved);  // another slot
}

TEST(IfcEntityPtrArray, GrowsCopiesAndRemoves) {
    using Private = IfcEntityPtrArrayTest;
    std::vector<IfcEntity*> entities;
    const ModelPtr model = newModel();
    for (int i = 0; i < 9; ++i) entities.push_back(Leaf::create(*model));

    IfcEntityPtrArray array;
    EXPECT_EQ(array.size(), 0u);
    EXPECT_EQ(Private::buffer(array), nullptr);
    EXPECT_EQ(Private::capacity(array), 4u);
    IfcEntityPtrArray copyOfEmpty(array);
    EXPECT_NE(Private::buffer(copyOfEmpty), nullptr);
    copyOfEmpty.add(entities[0]);
    EXPECT_EQ(copyOfEmpty[0], entities[0]);

    for (unsigned i = 0; i < 9; ++i) {
        array.add(entities[i]);
        EXPECT_EQ(Private::capacity(array), i < 4 ? 4u : i < 8 ? 8u : 16u);
    }
    array.add(entities[0]);  // twice is twice
    EXPECT_EQ(array.size(), 10u);

    IfcEntityPtrArray copy;
    copy.add(entities[1]);
    copy = array;
    copy = *&copy;
    EXPECT_EQ(Private::capacity(copy), 16u);
    EXPECT_NE(Private::buffer(copy), Private::buffer(array));

    EXPECT_FALSE(Private::remove(copy, 10));
    EXPECT_EQ(copy.size(), 10u);
    EXPECT_TRUE(Private::remove(copy, 9));
    EXPECT_TRUE(Private::remove(copy, 0));
    EXPECT_EQ(copy.size(), 8u);
    EXPECT_EQ(Private::capacity(copy), 16u);
    for (unsigned i = 0; i < 8; ++i) EXPECT_EQ(copy[i], entities[i + 1]);
    EXPECT_EQ(array[0], entities[0]);
}

// An entity without any behaviour of its own.
class Plain : public IfcEntity {
 public:
    ~Plain() override { ++numDestroyed; }
    EIfcSchemaId schemaId() const override { return eIFC2X3; }
    bool read(IfcInFiler&) override { return true; }
    void setIds(int number, const EntityId& handle) {
        setIfcId(number);
        setId(handle);
    }
    static inline int numDestroyed = 0;

 protected:
    int validate(ValidationContext&) override { return kValid; }
};

TEST(IfcEntity, IsBornEmptyAndCopiedWithItsHandle) {
    Plain source;
    EXPECT_EQ(source.ifcId(), 0);
    EXPECT_TRUE(source.id().isNull());
    EXPECT_EQ(source.backRefs().size(), 0u);
    EXPECT_EQ(source.userData(), 0);
    EXPECT_EQ(source.isA(), IfcEntity::desc());
    EXPECT_FALSE(source.isKindOf(nullptr));
    EXPECT_TRUE(source.isKindOf(IfcEntity::desc()));
    EXPECT_FALSE(source.isKindOf(Leaf::desc()));

    IfcEntity* slot = &source;
    source.setIds(17, EntityId(slot));
    source.backRefs().add(&source);
    source.setUserData(5);
    Plain copy(source);
    Plain assigned;
    assigned = source;
    for (const Plain* p : {&copy, &assigned}) {
        EXPECT_EQ(p->ifcId(), 17);
        EXPECT_EQ(p->id()(), &source);
        ASSERT_EQ(p->backRefs().size(), 1u);
        EXPECT_EQ(p->backRefs()[0], &source);
        EXPECT_EQ(p->userData(), 5);
    }
    copy.backRefs().add(&copy);
    EXPECT_EQ(source.backRefs().size(), 1u);
}

TEST(IfcEntity, DestroyRunsTheDestructorOfTheClass) {
    Plain::numDestroyed = 0;
    destroy(new Plain);
    EXPECT_EQ(Plain::numDestroyed, 1);
    static_assert(!std::is_destructible_v<IfcEntity>);
}

}  // namespace
}  // namespace Ovik
