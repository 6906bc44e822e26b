// The model: its entities, its slots, its lifetime, and how its pool grows; the header's fields.
#include <gtest/gtest.h>

#include <set>

#include "loadtext.h"
#include "ovik/imp/ifcentitypool.h"

namespace Ovik {
namespace {

using namespace Test;

class IfcModelTest : public ModelTest {};

TEST_F(IfcModelTest, IsCreatedForKnownSchemas) {
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        const IfcModelPtr model = newModel(schema);
        ASSERT_NE(model, nullptr);
        EXPECT_EQ(model->schemaId(), schema);
        Probe* const probe = Probe::create(*model);
        probe->setUserData(3);
        model->buildBackRefs();
        EXPECT_EQ(probe->userData(), 0);
    }
    for (const int schema : {-1, 2, 1000}) {
        EXPECT_EQ(IfcModel::create(static_cast<EIfcSchemaId>(schema), false, false), nullptr);
    }
}

TEST_F(IfcModelTest, GivesEachNewEntityAPlaceAndASlot) {
    std::vector<Probe*> probes;
    std::set<IfcEntity**> slots;
    // Beyond the second block of the pool and of the slots.
    for (std::size_t i = 0; i < 5000; ++i) {
        if (i == 2500) model_->reserve(100000);
        EXPECT_EQ(model_->getNumEntities(), i);
        probes.push_back(make<Probe>());
        EXPECT_EQ(probes[i]->ifcId(), 0);
        slots.insert(probes[i]->id().slot());
    }
    for (std::size_t i = 0; i < probes.size(); ++i) {
        EXPECT_EQ(model_->get(i), probes[i]);
        EXPECT_EQ(probes[i]->id()(), probes[i]);
    }
    EXPECT_EQ(slots.size(), probes.size());
    // Slots come one after the other in blocks of 2,047.
    for (const std::size_t first : {0, 2047, 4094}) {
        const std::size_t last = std::min<std::size_t>(first + 2046, 4999);
        EXPECT_EQ(probes[last]->id().slot() - probes[first]->id().slot(),
                  static_cast<std::ptrdiff_t>(last - first));
    }
    EXPECT_NE(probes[2047]->id().slot(), probes[2046]->id().slot() + 1);
}

TEST_F(IfcModelTest, LastReleaseDestroysAllEntities) {
    for (int i = 0; i < 1500; ++i) make<Probe>();
    model_->addRef();
    model_->release();
    EXPECT_EQ(Probe::numDestroyed, 0);
    model_.reset();
    EXPECT_EQ(Probe::numDestroyed, 1500);
}

struct Field {
    const XString& (IfcHeader::*get)() const;
    void (IfcHeader::*set)(const XString&);
};

const Field kFields[] = {{&IfcHeader::fileDescription, &IfcHeader::setFileDescription},
                         {&IfcHeader::fileName, &IfcHeader::setFileName},
                         {&IfcHeader::timeStamp, &IfcHeader::setTimeStamp},
                         {&IfcHeader::author, &IfcHeader::setAuthor},
                         {&IfcHeader::organization, &IfcHeader::setOrganization},
                         {&IfcHeader::preprocessorVersion, &IfcHeader::setPreprocessorVersion},
                         {&IfcHeader::originatingSystem, &IfcHeader::setOriginatingSystem},
                         {&IfcHeader::authorization, &IfcHeader::setAuthorization},
                         {&IfcHeader::fileSchema, &IfcHeader::setFileSchema}};

TEST(IfcHeader, EachFieldIsItsOwn) {
    IfcHeader header;
    for (const Field& f : kFields) EXPECT_TRUE((header.*f.get)().isEmpty());
    EXPECT_STREQ(header.implementationLevel().getEncoded(), "2;1");

    int number = 0;
    for (const Field& f : kFields) {
        (header.*f.set)(XString::decode(std::to_string(number++).c_str()));
    }
    IfcHeader copy(header);
    IfcHeader moved(std::move(copy));
    IfcHeader assigned;
    assigned = header;
    for (const IfcHeader* h : {&header, &copy, &moved, &assigned}) {
        number = 0;
        for (const Field& f : kFields) {
            EXPECT_EQ((h->*f.get)().getEncoded(), std::to_string(number++));
        }
        EXPECT_EQ(std::u16string(h->implementationLevel()), u"2;1");
    }
}

using Pool = IfcEntityPool<int>;

void appendUpTo(Pool& pool, std::vector<int>& values, std::size_t size) {
    while (pool.size() < size) pool.append(&values[pool.size()]);
}

TEST(IfcEntityPool, AppendDoublesTheBlocks) {
    std::vector<int> values(4097);
    Pool pool;
    EXPECT_EQ(pool.numBlocks(), 0u);
    const std::pair<std::size_t, unsigned> steps[] = {{1, 1},    {1024, 1}, {1025, 2}, {2048, 2},
                                                      {2049, 4}, {4096, 4}, {4097, 8}};
    for (const auto& [size, blocks] : steps) {
        appendUpTo(pool, values, size);
        EXPECT_EQ(pool.size(), size);
        EXPECT_EQ(pool.numBlocks(), blocks) << size;
    }
    for (std::size_t i = 0; i < values.size(); ++i) ASSERT_EQ(pool[i], &values[i]) << i;
}

TEST(IfcEntityPool, Reserve) {
    const struct {
        std::size_t size;
        unsigned count;
        unsigned blocks;
        unsigned blocksWhenFull;  // after one entry more than that many blocks hold
    } cases[] = {{0, 0, 0, 1},      {0, 1, 1, 2},     {0, 1024, 1, 2}, {0, 2000, 2, 4},
                 {0, 3072, 3, 6},   {10, 5, 1, 2},    {10, 10, 1, 2},  // no fewer than asked for
                 {10, 1014, 1, 2},  {10, 1015, 2, 4},                  // room for as many more
                 {2000, 2001, 4, 8}};
    for (const auto& c : cases) {
        std::vector<int> values(5000);
        Pool pool;
        appendUpTo(pool, values, c.size);
        pool.reserve(c.count);
        EXPECT_EQ(pool.size(), c.size);
        EXPECT_EQ(pool.numBlocks(), c.blocks) << c.count << " on " << c.size;
        appendUpTo(pool, values, c.blocks * 1024 + 1);
        EXPECT_EQ(pool.numBlocks(), c.blocksWhenFull) << c.count << " on " << c.size;
        for (std::size_t i = 0; i < pool.size(); ++i) ASSERT_EQ(pool[i], &values[i]) << i;
    }
}

TEST(IfcEntityPool, DeletesInOrder) {
    static std::vector<int> log;
    struct Entity {
        ~Entity() { log.push_back(number); }
        int number;
    };
    IfcEntityPool<Entity> pool;
    for (int i = 0; i < 1030; ++i) pool.append(new Entity{i});
    pool.deleteEntities();
    ASSERT_EQ(log.size(), 1030u);
    for (int i = 0; i < 1030; ++i) EXPECT_EQ(log[static_cast<std::size_t>(i)], i);
}

}  // namespace
}  // namespace Ovik
