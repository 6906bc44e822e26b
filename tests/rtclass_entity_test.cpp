// Run-time classes, handles, the array of back references, and what all entities share.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

#include "loadtext.h"

namespace Ovik {

// The array's private operations.
struct IfcEntityPtrArrayTest {
    static bool remove(IfcEntityPtrArray& array, unsigned index) { return array.remove(index); }
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

// Calls that a sanitizer would object to, though the library tells what they do.
__attribute__((noinline, no_sanitize("undefined"))) bool isProbe(const RtClass* cls) {
    return cls->isKindOf(Probe::desc());
}

__attribute__((noinline, no_sanitize("undefined"))) void destroy(IfcEntity* entity) {
    entity->destroy();
}

TEST(RtClass, KindIsAWalkAlongTheParents) {
    EXPECT_TRUE(isProbe(Probe::desc()));
    EXPECT_TRUE(Probe::desc()->isKindOf(IfcEntity::desc()));
    EXPECT_FALSE(isProbe(IfcEntity::desc()));
    EXPECT_FALSE(Probe::desc()->isKindOf(nullptr));
    EXPECT_STREQ(IfcEntity::desc()->className(), "IfcEntity");
    EXPECT_EQ(IfcEntity::desc()->parent(), nullptr);
    EXPECT_EQ(Probe::desc()->attributes(), nullptr);
    // A null `this` is told.
    EXPECT_FALSE(isProbe(nullptr));
    destroy(nullptr);
}

TEST(RtClass, NamesAreFoundInAnyCaseAndPerSchema) {
    for (const char* name : {"IFCTESTPROBE", "ifctestprobe", "IfcTestProbe"}) {
        EXPECT_EQ(Lookup::findCreator(name, eIFC4), Probe::desc()) << name;
        EXPECT_EQ(Lookup::findCreator(name, eIFC2X3), nullptr) << name;
    }
    for (const char* name : {"IFCTESTPROB", "IFCTESTPROBES", "IFCROOT", "", "zzz"}) {
        EXPECT_EQ(Lookup::findCreator(name, eIFC4), nullptr) << name;
    }
    const IfcModelPtr model = newModel();
    EXPECT_EQ(IfcEntity::desc()->create(model.get()), nullptr);
    EXPECT_EQ(Probe::desc()->create(model.get())->isA(), Probe::desc());
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
    const IfcModelPtr model = newModel();
    Probe* const probe = Probe::create(*model);
    IfcEntity* empty = nullptr;
    const EntityId null, unresolved(empty), resolved = probe->id();
    const struct {
        const EntityId& id;
        bool isNull;
        IfcEntity* entity;
    } cases[] = {{null, true, nullptr},
                 {EntityId::s_null, true, nullptr},
                 {unresolved, false, nullptr},
                 {resolved, false, probe}};
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
    EXPECT_EQ(resolved(), probe);

    empty = probe;  // the slot is filled: every handle of it sees the entity
    EXPECT_EQ(unresolved(), probe);
    EXPECT_TRUE(unresolved != resolved);  // another slot
}

TEST(IfcEntityPtrArray, GrowsCopiesAndRemoves) {
    using Private = IfcEntityPtrArrayTest;
    std::vector<IfcEntity*> entities;
    const IfcModelPtr model = newModel();
    for (int i = 0; i < 9; ++i) entities.push_back(Probe::create(*model));

    IfcEntityPtrArray array;
    EXPECT_EQ(array.size(), 0u);
    IfcEntityPtrArray copyOfEmpty(array);
    copyOfEmpty.add(entities[0]);
    EXPECT_EQ(copyOfEmpty[0], entities[0]);

    for (IfcEntity* entity : entities) array.add(entity);
    array.add(entities[0]);  // twice is twice
    EXPECT_EQ(array.size(), 10u);

    IfcEntityPtrArray copy;
    copy.add(entities[1]);
    copy = array;
    copy = *&copy;

    EXPECT_FALSE(Private::remove(copy, 10));
    EXPECT_EQ(copy.size(), 10u);
    EXPECT_TRUE(Private::remove(copy, 9));
    EXPECT_TRUE(Private::remove(copy, 0));
    EXPECT_EQ(copy.size(), 8u);
    for (unsigned i = 0; i < 8; ++i) EXPECT_EQ(copy[i], entities[i + 1]);
    EXPECT_EQ(array[0], entities[0]);
}

// An entity without any behaviour of its own.
class Plain : public IfcEntity {
 public:
    ~Plain() override { ++numDestroyed; }
    EIfcSchemaId schemaId() const override { return eIFC2X3; }
    bool read(IfcInFiler&) override { return true; }
    static inline int numDestroyed = 0;

 protected:
    int validate(ValidationContext&) override { return kValid; }
};

TEST(IfcEntity, IsBornEmptyAndDestroyedByItsClass) {
    auto* const plain = new Plain;
    EXPECT_EQ(plain->ifcId(), 0);
    EXPECT_TRUE(plain->id().isNull());
    EXPECT_EQ(plain->backRefs().size(), 0u);
    EXPECT_EQ(plain->userData(), 0);
    EXPECT_EQ(plain->isA(), IfcEntity::desc());
    EXPECT_FALSE(plain->isKindOf(nullptr));
    EXPECT_FALSE(plain->isKindOf(Probe::desc()));
    IfcVariant value;
    EXPECT_EQ(plain->getAttribute("Name", value), ResultNotFound);
    EXPECT_EQ(plain->setAttribute("Name", 1), ResultNotFound);
    const Plain copy(*plain);
    destroy(plain);
    EXPECT_EQ(Plain::numDestroyed, 1);
    static_assert(!std::is_destructible_v<IfcEntity>);
}

}  // namespace
}  // namespace Ovik
