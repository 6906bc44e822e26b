// The facade's constants against the schema tables: that each is there, under its name, and leads
// where its name says.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <utility>

#include "ovik/api.h"
#include "ovik/api/access.h"
#include "ovik/api/ifc2x3.h"
#include "ovik/api/ifc4.h"
#include "tests/schemacases.h"

namespace Ovik::IfcApi {
namespace {

std::vector<std::string> namesOf(const std::vector<const char*>& texts) {
    return {texts.begin(), texts.end()};
}

std::vector<std::string> attributesOf(const Generator::Entity& cls) {
    std::vector<std::string> names;
    if (cls.parent) names = attributesOf(*cls.parent);
    for (const auto& attribute : cls.attributes) names.push_back(attribute.name);
    return names;
}

class Descriptors : public Test::SchemaTest {
 protected:
    void SetUp() override { initOvikApi(); }

    /// The constant of that name as the library exports it, or null.
    template <class D>
    const D* constant(const std::string& name) const {
        const std::string space = "I" + folder_.substr(1);
        const std::string symbol = "_ZN4Ovik6IfcApi" + std::to_string(space.size()) + space +
                                   std::to_string(name.size()) + name + "E";
        return static_cast<const D*>(dlsym(RTLD_DEFAULT, symbol.c_str()));
    }

    const EntityDesc* (*const findDesc_)(const RtClass*) = GetParam().id == eIFC4
                                                               ? Ifc4::findEntityDesc
                                                               : Ifc2x3::findEntityDesc;
};

TEST_P(Descriptors, NameTheirClasses) {
#if defined(OVIK_STATIC)
    GTEST_SKIP() << "the constants are looked up among the exports of the shared library";
#endif
    std::size_t numEntities = 0;
    Model* model = Model::create(GetParam().id);
    for (const auto& cls : schema_->entities) {
        SCOPED_TRACE(cls->name);
        const auto* desc = constant<EntityDesc>(cls->name);
        ASSERT_EQ(desc == nullptr, cls->isAbstract);
        if (!desc) continue;
        ++numEntities;
        EXPECT_STREQ(*desc, OvikTest::capitals(cls->name).c_str());
        const Entity entity = Entity::create(*model, *desc);
        ASSERT_FALSE(entity.isNull());
        EXPECT_STREQ(entity.className(), OvikTest::capitals(cls->name).c_str());
        EXPECT_EQ(namesOf(entity.attributeNames()), attributesOf(*cls));
        for (const auto* base = cls.get(); base; base = base->parent) {
            if (!base->isAbstract) {
                EXPECT_TRUE(entity.isKindOf(*constant<EntityDesc>(base->name))) << base->name;
            }
        }
        // The way back is by the hash of another spelling, and so leads nowhere.
        const RtClass* rt = findClass(cls->name);
        ASSERT_NE(rt, nullptr);
        EXPECT_EQ(findDesc_(rt), nullptr);
        EXPECT_EQ(entity.isA(), nullptr);
    }
    EXPECT_EQ(model->getNumEntities(), numEntities);
    model->release();
    EXPECT_EQ(numEntities, GetParam().numConcrete);

    EXPECT_EQ(schema_->selects.size(), GetParam().numSelects);
    for (const auto& select : schema_->selects) {
        const auto* desc = constant<SelectorDesc>(select->name);
        ASSERT_NE(desc, nullptr) << select->name;
        EXPECT_STREQ(*desc, select->name.c_str());
        EXPECT_EQ(SelectValue(*desc).tag(), select->choices[0].name);
    }
    EXPECT_EQ(schema_->aggregates.size(), GetParam().numAggregates);
    for (const auto& aggregate : schema_->aggregates) {
        const auto* desc = constant<VectorDesc>(aggregate->name);
        ASSERT_NE(desc, nullptr) << aggregate->name;
        EXPECT_EQ(VectorValue(*desc).size(), 0u) << aggregate->name;
    }
}

// Classes bear their names in capitals, which is why none is found. One that bore its name as the
// descriptors are filed would be.
TEST_P(Descriptors, AreFoundByTheSpellingTheyAreFiledUnder) {
    struct Named : RtClass {
        explicit Named(const char* name) : RtClass(name) {}
    };
    const Named wall("IfcWall"), unknown("IfcNoSuchClass");
    EXPECT_EQ(findDesc_(&unknown), nullptr);
    EXPECT_EQ(findDesc_(&wall), nullptr);  // the descriptor is of another class
    EntityDesc& desc = GetParam().id == eIFC4 ? Ifc4::IfcWall : Ifc2x3::IfcWall;
    const EntityDesc own = std::exchange(desc, Access::describe<EntityDesc>(&wall));
    EXPECT_EQ(findDesc_(&wall), &desc);
    desc = own;
    EXPECT_EQ(findDesc_(&wall), nullptr);
}

TEST_P(Descriptors, TextsAreThoseOfTheSchema) {
    std::ifstream header(OVIK_GENERATED_DIR "/ovik/api/" + folder_ + ".h");
    const std::regex pattern("inline constexpr const char\\* (\\w+) = \"(\\w+)\";");
    std::map<std::string, std::string> found;
    std::size_t numLines = 0;
    for (std::string line; std::getline(header, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, pattern)) continue;
        found[match[1]] = match[2];
        ++numLines;
    }
    EXPECT_EQ(numLines, GetParam().numTexts);
    EXPECT_EQ(found.size(), GetParam().numTexts);
    for (const auto& cls : schema_->entities) {
        for (const auto& attribute : cls->attributes)
            EXPECT_EQ(found[attribute.name], attribute.name);
    }
    for (const auto& enumeration : schema_->enumerations) {
        for (const auto& literal : enumeration->literals) EXPECT_EQ(found["e" + literal], literal);
    }
    for (const auto& select : schema_->selects) {
        for (const auto& choice : select->choices) {
            const bool hasDesc = choice.type.entity || choice.type.select;
            EXPECT_EQ(found.count(choice.name), hasDesc ? 0u : 1u) << choice.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Schemas, Descriptors, testing::ValuesIn(Test::kSchemaCases),
                         Test::folderOf);

TEST(Constants, AreWhatTheirNamesSay) {
    initOvikApi();
    initOvikApi();  // stores the same again
    EXPECT_STREQ(Ifc4::IfcExtrudedAreaSolid, "IFCEXTRUDEDAREASOLID");
    EXPECT_STREQ(Ifc4::IfcActorSelect, "IfcActorSelect");
    EXPECT_TRUE(Ifc4::IfcBeam == Ifc4::IfcBeam);
    EXPECT_FALSE(Ifc4::IfcBeam == Ifc2x3::IfcBeam);
    static_assert(std::string_view(Ifc4::RiserHeight) == "RiserHeight");
    static_assert(std::string_view(Ifc2x3::IfcDynamicViscosityMeasure) ==
                  "IfcDynamicViscosityMeasure");
    static_assert(std::string_view(Ifc2x3::eBUILDINGOPERATOR) == "BUILDINGOPERATOR");
    static_assert(std::string_view(Ifc4::eNOTDEFINED) == "NOTDEFINED");
}

// What every constant is before `initOvikApi`.
TEST(Constants, AreNothingUntilTheyAreFilled) {
    initOvikApi();
    EntityDesc entity;
    EXPECT_EQ(static_cast<const char*>(entity), nullptr);
    EXPECT_FALSE(entity == Ifc4::IfcBeam);
    EXPECT_EQ(static_cast<const char*>(SelectorDesc()), nullptr);
    EXPECT_THROW(SelectValue{SelectorDesc()}, std::bad_function_call);
    EXPECT_THROW(VectorValue{VectorDesc()}, std::bad_function_call);
    Model* model = Model::create(eIFC4);
    EXPECT_TRUE(Entity::create(*model, entity).isNull());
    EXPECT_EQ(model->getNumEntities(), 0u);
    EXPECT_FALSE(Entity::create(*model, Ifc4::IfcBeam).isKindOf(entity));
    model->release();

    // Assigned, it shares what the other has, and either may go first.
    entity = Ifc4::IfcBeam;
    EXPECT_TRUE(entity == Ifc4::IfcBeam);
}

}  // namespace
}  // namespace Ovik::IfcApi
