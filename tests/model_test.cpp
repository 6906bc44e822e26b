// The model: its entities, its slots, and its lifetime.
#include <gtest/gtest.h>

#include <set>

#include "testclasses.h"

namespace Ovik {
namespace {

using namespace Test;

// A class with an identifier.
class Rooted : public Leaf {
 public:
    static Rooted* create(IfcModel& model) {
        Rooted* const entity = make<Rooted>(model);
        makeGuid(model, entity->guid);
        return entity;
    }
    Base64Guid guid;
};

TEST(IfcModel, IsCreatedForKnownSchemas) {
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        const ModelPtr model = newModel(schema);
        ASSERT_NE(model, nullptr);
        EXPECT_EQ(model->schemaId(), schema);
        EXPECT_EQ(model->getNumEntities(), 0u);
    }
    for (const int schema : {-1, 2, 1000}) {
        EXPECT_EQ(IfcModel::create(static_cast<EIfcSchemaId>(schema), false, false), nullptr);
    }
}

TEST(IfcModel, GivesEachNewEntityAPlaceAndASlot) {
    const ModelPtr model = newModel();
    std::vector<Leaf*> leaves;
    // Beyond the second block of the pool and of the slots.
    for (int i = 0; i < 5000; ++i) leaves.push_back(Leaf::create(*model));
    ASSERT_EQ(model->getNumEntities(), 5000u);
    std::set<IfcEntity**> slots;
    for (std::size_t i = 0; i < leaves.size(); ++i) {
        EXPECT_EQ(model->get(i), leaves[i]);
        EXPECT_EQ(leaves[i]->id()(), leaves[i]);
        EXPECT_EQ(leaves[i]->ifcId(), 0);
        slots.insert(leaves[i]->id().slot());
    }
    EXPECT_EQ(slots.size(), leaves.size());
    // Slots come one after the other in blocks of 2,047.
    for (const std::size_t first : {0, 2047, 4094}) {
        const std::size_t last = std::min<std::size_t>(first + 2046, 4999);
        EXPECT_EQ(leaves[last]->id().slot() - leaves[first]->id().slot(),
                  static_cast<std::ptrdiff_t>(last - first));
    }
    EXPECT_NE(leaves[2047]->id().slot(), leaves[2046]->id().slot() + 1);
}

TEST(IfcModel, ReserveChangesNoNumber) {
    const ModelPtr model = newModel();
    model->reserve(2000);
    EXPECT_EQ(model->getNumEntities(), 0u);
    Leaf* const leaf = Leaf::create(*model);
    model->reserve(100000);
    model->reserve(0);
    EXPECT_EQ(model->getNumEntities(), 1u);
    EXPECT_EQ(model->get(0), leaf);
}

TEST(IfcModel, MakesIdentifiersAsAsked) {
    const ModelPtr none = newModel(eIFC4, false, true);
    const ModelPtr fresh = newModel(eIFC4, true, false);
    const ModelPtr fixed = newModel(eIFC4, true, true);
    Rooted* const without = Rooted::create(*none);
    EXPECT_STREQ(without->guid.getBase64(), "");
    Rooted* const a = Rooted::create(*fresh);
    Rooted* const b = Rooted::create(*fresh);
    EXPECT_TRUE(a->guid != b->guid);
    EXPECT_EQ(std::string_view(a->guid.getBase64()).size(), 22u);
    EXPECT_STREQ(Rooted::create(*fixed)->guid.getBase64(), "_dummy_GUID_dummy_GIUD");
}

TEST(IfcModel, LastReleaseDestroysAllEntities) {
    IfcModel* const model = IfcModel::create(eIFC4, false, false);
    for (int i = 0; i < 1500; ++i) Leaf::create(*model);
    Leaf::numDestroyed = 0;
    model->addRef();
    model->release();
    EXPECT_EQ(Leaf::numDestroyed, 0);
    EXPECT_EQ(model->getNumEntities(), 1500u);
    model->release();
    EXPECT_EQ(Leaf::numDestroyed, 1500);
}

TEST(IfcModel, BuildBackRefsResetsTheFreeWord) {
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        const ModelPtr model = newModel(schema);
        model->buildBackRefs();
        Leaf* const a = Leaf::create(*model);
        Node* const b = Node::create(*model);
        a->setUserData(3);
        b->setUserData(-1);
        model->buildBackRefs();
        EXPECT_EQ(a->userData(), 0);
        EXPECT_EQ(b->userData(), 0);
    }
}

TEST(IfcHeader, IsUnsetButForTheImplementationLevel) {
    const IfcHeader header;
    EXPECT_STREQ(header.implementationLevel().getEncoded(), "2;1");
    for (const XString* field :
         {&header.fileDescription(), &header.fileName(), &header.timeStamp(), &header.author(),
          &header.organization(), &header.preprocessorVersion(), &header.originatingSystem(),
          &header.authorization(), &header.fileSchema()}) {
        EXPECT_TRUE(field->isEmpty());
    }
}

}  // namespace
}  // namespace Ovik
