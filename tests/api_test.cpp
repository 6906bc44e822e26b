// The facade: what its handles hold and copy, how they translate, and that it gives and takes the
// same values as the library behind it.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <map>
#include <set>

#include "ovik/api.h"
#include "ovik/api/access.h"
#include "ovik/api/ifc2x3.h"
#include "ovik/api/ifc4.h"
#include "ovik/imp/ifcheader.h"
#include "tests/loadtext.h"
#include "tests/schemacases.h"

namespace Ovik::IfcApi {
namespace {

namespace fs = std::filesystem;
using Test::TempFile;

struct ReleaseFacade {
    void operator()(Model* model) const { model->release(); }
};
using ModelHandle = std::unique_ptr<Model, ReleaseFacade>;

std::u16string text(const String& value) {
    return value.c_str();
}

// A compiler may assume that `this` is not null where it sees that the call is on null.
__attribute__((noinline, no_sanitize("undefined"))) void release(Model* model) {
    model->release();
}

class Api : public testing::Test {
 protected:
    void SetUp() override { initOvikApi(); }
    ModelHandle model_{Model::create(eIFC4)};
};

TEST_F(Api, VariantsTellWhatTheyHold) {
    EnumValue literal;
    literal.setValue(Ifc4::eSOLIDWALL);
    const Entity wall = Entity::create(*model_, Ifc4::IfcWall);
    const std::pair<Variant, int> kCases[] = {
        {true, 0},
        {1, 1},
        {1u, 2},
        {-1L, 1},
        {std::size_t{4000000000}, 2},
        {4000000000L, 12},  // fits no int
        {1.5, 3},
        {String(u"x"), 4},
        {wall, 5},
        {Logical(), 6},
        {Binary("04"), 7},
        {Guid::createFromBase64("2O2Fr$t4X7Zf8NOew3FLOH"), 8},
        {literal, 9},
        {SelectValue(Ifc4::IfcSimpleValue), 10},
        {VectorValue(Ifc4::List_1_IfcLabel), 11},
        {Variant(), 12},
    };
    for (const auto& [value, type] : kCases) {
        EXPECT_EQ(value.type(), type);
        Variant copy = 7.5;
        copy = value;  // what it held goes first
        EXPECT_EQ(copy.type(), type);
        const Variant moved = std::move(copy);
        EXPECT_EQ(moved.type(), type);
        copy = moved;  // a value that was moved from can be assigned to
        EXPECT_EQ(copy.type(), type);
    }
    EXPECT_TRUE(kCases[0].first.getBool());
    EXPECT_EQ(Variant(-3).getInt(), -3);
    EXPECT_EQ(Variant(-3LL).getInt(), -3);
    EXPECT_EQ(Variant(4000000000ull).getUInt(), 4000000000u);
    EXPECT_EQ(Variant(4000000000u).getUInt(), 4000000000u);
    EXPECT_EQ(kCases[6].first.getReal(), 1.5);
    EXPECT_EQ(text(kCases[7].first.getString()), u"x");
    EXPECT_TRUE(kCases[8].first.getEntity().isKindOf(Ifc4::IfcWall));
    EXPECT_TRUE(kCases[9].first.getLogical().isUnknown());
    EXPECT_STREQ(kCases[10].first.getBinary().getEncodedString(), "04");
    EXPECT_STREQ(kCases[11].first.getGuid().getBase64(), "2O2Fr$t4X7Zf8NOew3FLOH");
    EXPECT_STREQ(kCases[12].first.getEnum().getValue(), "SOLIDWALL");
    EXPECT_STREQ(kCases[13].first.getSelect().tag(), "IfcBinary");
    EXPECT_EQ(kCases[14].first.getVector().size(), 0u);
}

// A handle holds its own copy, and one that is moved in is taken over.
TEST_F(Api, CopiesAreDeep) {
    VectorValue labels(Ifc4::List_1_IfcLabel);
    const Variant before = labels;
    EXPECT_EQ(labels.add(String(u"a")), ResultOk);
    VectorValue copy = labels;
    EXPECT_EQ(copy.add(String(u"b")), ResultOk);
    EXPECT_EQ(copy.add(1), ResultWrongType);
    EXPECT_EQ(before.getVector().size(), 0u);
    EXPECT_EQ(labels.size(), 1u);
    ASSERT_EQ(copy.size(), 2u);
    EXPECT_EQ(text(copy[1].getString()), u"b");
    EXPECT_TRUE(copy.remove(0));
    EXPECT_FALSE(copy.remove(1));
    EXPECT_EQ(text(copy[0].getString()), u"b");
    const Variant moved = std::move(copy);
    EXPECT_EQ(moved.getVector().size(), 1u);
    moved.getVector().clear();  // of a copy
    EXPECT_EQ(moved.getVector().size(), 1u);
    labels.clear();
    EXPECT_EQ(labels.size(), 0u);

    SelectValue inner(Ifc4::IfcSimpleValue);
    EXPECT_EQ(inner.setValue(Ifc4::IfcLabel, String(u"x")), ResultOk);
    EXPECT_EQ(inner.setValue(Ifc4::IfcLabel, 1), ResultWrongType);
    EXPECT_EQ(inner.setValue("IfcWall", 1), ResultNotFound);
    EXPECT_STREQ(inner.tag(), "IfcLabel");
    SelectValue outer(Ifc4::IfcValue);
    EXPECT_EQ(outer.setValue(Ifc4::IfcSimpleValue, inner), ResultOk);
    EXPECT_EQ(inner.setValue(Ifc4::IfcReal, 2.5), ResultOk);
    EXPECT_EQ(text(outer.getValue().getSelect().getValue().getString()), u"x");
    EXPECT_EQ(inner.getValue().getReal(), 2.5);
    const Variant taken = std::move(inner);
    EXPECT_STREQ(taken.getSelect().tag(), "IfcReal");

    Logical known = true;
    const Logical unknown;
    EXPECT_TRUE(known && known.isKnown() && !unknown && unknown.isUnknown());
    known = unknown;
    EXPECT_TRUE(known.isUnknown());
    EXPECT_TRUE(Logical(false).isKnown());

    static_assert(!std::is_invocable_v<std::equal_to<>, String, String>);
    static_assert(!std::is_invocable_v<std::less<>, String, String>);
    String word = u"w";
    String other = word;
    other.setEmpty();
    EXPECT_TRUE(other.isEmpty() && String(nullptr).isEmpty() && Binary(nullptr).isEmpty());
    EXPECT_EQ(text(word), u"w");
    EXPECT_EQ(text(String::decode("\\S\\d")), u"\u00e4");
    EXPECT_STREQ(fromUtf8("\u00e4").getEncoded(), "\\S\\d");
    EXPECT_EQ(toUtf8(String(u"\u00e4")), "\u00e4");
    EXPECT_EQ(text(word = *&word), u"w");

    Binary bits("0F");
    EXPECT_EQ(bits.numBits(), 4u);
    EXPECT_TRUE(bits.getBit(3));
    Binary fewer = bits;
    fewer.resize(2);
    EXPECT_EQ(fewer.numBits(), 2u);
    EXPECT_EQ(bits.numBits(), 4u);
    bits.clear();
    EXPECT_STREQ(bits.getEncodedString(), "0");
    EXPECT_EQ(bits.numBits(), 4u);
    bits.reset(nullptr);
    EXPECT_TRUE(bits.isEmpty());

    EXPECT_EQ(Guid(), Guid());
    EXPECT_NE(Guid::create(), Guid::create());
    const Guid guid = Guid::create();
    EXPECT_EQ(Guid::createFromText(guid.getText()), guid);
}

TEST_F(Api, ResultsOfNamesAreTranslated) {
    Entity wall = Entity::create(*model_, Ifc4::IfcWall);
    ASSERT_FALSE(wall.isNull());
    EXPECT_TRUE(wall.isKindOf(Ifc4::IfcWall));
    EXPECT_FALSE(wall.isKindOf(Ifc2x3::IfcWall));
    EXPECT_FALSE(wall.isKindOf(Ifc4::IfcBeam));
    EXPECT_EQ(wall.isA(), nullptr);
    EXPECT_EQ(wall.ifcId(), 0);
    EXPECT_TRUE(Entity().isNull());
    EXPECT_TRUE(Entity::s_null.isNull());

    Variant value = 5;
    EXPECT_EQ(wall.getAttribute(Ifc4::PredefinedType, value), 1);  // its own, and unset
    EXPECT_EQ(wall.getAttribute("NoSuchName", value), 2);
    EXPECT_EQ(wall.getAttribute(Ifc4::Name, value), 2);  // inherited, and unset
    EXPECT_EQ(value.getInt(), 5);
    EXPECT_EQ(wall.getAttribute(Ifc4::GlobalId, value), 0);
    EXPECT_EQ(value.type(), TypeGuid);
    const Guid guid = value.getGuid();
    EXPECT_EQ(std::string_view(guid.getBase64()).size(), 22u);
    Entity::create(*model_, Ifc4::IfcWall).getAttribute(Ifc4::GlobalId, value);
    EXPECT_NE(value.getGuid(), guid);

    EnumValue literal;
    EXPECT_EQ(literal.getValue(), nullptr);
    EXPECT_EQ(wall.setAttribute(Ifc4::PredefinedType, literal), 2);
    literal.setValue("NOSUCHLITERAL");
    EXPECT_EQ(wall.setAttribute(Ifc4::PredefinedType, literal), 2);
    literal.setValue(Ifc4::eSOLIDWALL);
    EXPECT_EQ(wall.setAttribute(Ifc4::PredefinedType, literal), 0);
    EXPECT_EQ(wall.setAttribute(Ifc4::PredefinedType, 1), 3);
    EXPECT_EQ(wall.getAttribute(Ifc4::PredefinedType, value), 0);
    EXPECT_STREQ(value.getEnum().getValue(), "SOLIDWALL");

    // A required reference that leads nowhere is there and empty, whatever the variant held.
    const Entity relation = Entity::create(*model_, Ifc4::IfcRelAggregates);
    EXPECT_EQ(relation.getAttribute(Ifc4::RelatingObject, value), 0);
    EXPECT_EQ(value.type(), TypeNone);
}

TEST_F(Api, InverseReferencesAreThoseThatWereBuilt) {
    const Entity wall = Entity::create(*model_, Ifc4::IfcWall);
    EXPECT_TRUE(wall.getInverseRefs().empty());
    IfcEntity& inner = *Entity::Impl::data(wall)();
    for (const EntityDesc* desc : {&Ifc4::IfcRelAggregates, &Ifc4::IfcSlab, &Ifc4::IfcBeam})
        if (const Entity e = Entity::create(*model_, *desc); !e.isNull())
            inner.backRefs().add(Entity::Impl::data(e)());
    const std::vector<Entity> refs = wall.getInverseRefs();
    ASSERT_EQ(refs.size(), 3u);
    EXPECT_TRUE(refs[0].isKindOf(Ifc4::IfcRelAggregates));
    EXPECT_TRUE(refs[2].isKindOf(Ifc4::IfcBeam));
}

TEST_F(Api, ModelsAreReadAndWritten) {
    const TempFile a, b;
    Header header;
    EXPECT_EQ(text(header.implementationLevel()), u"2;1");
    using Set = void (Header::*)(const String&);
    using Get = String (Header::*)() const;
    const std::pair<Set, Get> kFields[] = {
        {&Header::setFileDescription, &Header::fileDescription},
        {&Header::setFileName, &Header::fileName},
        {&Header::setTimeStamp, &Header::timeStamp},
        {&Header::setAuthor, &Header::author},
        {&Header::setOrganization, &Header::organization},
        {&Header::setPreprocessorVersion, &Header::preprocessorVersion},
        {&Header::setOriginatingSystem, &Header::originatingSystem},
        {&Header::setAuthorization, &Header::authorization},
        {&Header::setFileSchema, &Header::fileSchema},
    };
    char16_t mark = u'a';
    for (const auto& [set, get] : kFields) (header.*set)(std::u16string(2, mark++).c_str());

    Entity wall = Entity::create(*model_, Ifc4::IfcWall);
    EXPECT_EQ(wall.setAttribute(Ifc4::Name, String(u"W\u00e4nd")), ResultOk);
    EXPECT_TRUE(model_->write(a.path, header));
    EXPECT_TRUE(model_->write(b.path.wstring().c_str(), header));
    EXPECT_EQ(a.text(), b.text());
    EXPECT_NE(a.text().find("W\\S\\dnd"), std::string::npos);
    Ovik::IfcSaveReport report;
    EXPECT_FALSE(model_->save(b.path, header, nullptr, nullptr, &report));
    EXPECT_EQ(report.bytes, a.text().size());
    EXPECT_FALSE(model_->save(b.path.wstring().c_str(), header));
    EXPECT_EQ(a.text(), b.text());
    EXPECT_TRUE(model_->save(fs::path("no/such/folder/a.ifc"), header));
    EXPECT_FALSE(model_->write(fs::path("no/such/folder/a.ifc"), header));
    // Characters beyond ASCII, and what is no character, are paths like others.
    constexpr wchar_t kStray[] = L"no/such/\u00E4\xD800/a.ifc";
    EXPECT_FALSE(model_->write(kStray, header));
    EXPECT_TRUE(ModelHandle(Model::read(kStray, &header))->isNull());

    Header again;
    for (const bool wide : {false, true}) {
        const fs::path path = a.path;
        const ModelHandle model(wide ? Model::read(path.wstring().c_str(), &again)
                                     : Model::read(path, &again));
        ASSERT_FALSE(model->isNull());
        EXPECT_EQ(model->schemaId(), eIFC4);
        ASSERT_EQ(model->getNumEntities(), 1u);
        EXPECT_EQ(model->get(0).ifcId(), 1);
        Variant name;
        EXPECT_EQ(model->get(0).getAttribute(Ifc4::Name, name), ResultOk);
        EXPECT_EQ(text(name.getString()), u"W\u00e4nd");
    }
    again.setFileSchema(u"ii");  // a file is given the name of its schema
    mark = u'a';
    const Header copy = again;
    again.setAuthor(u"changed");
    for (const auto& [set, get] : kFields)
        EXPECT_EQ(text((copy.*get)()), std::u16string(2, mark++));
}

TEST_F(Api, AModelOverNothingIsReleased) {
    const TempFile broken("no model");
    Header header;
    for (Model* model :
         {Model::create(static_cast<EIfcSchemaId>(7)),
          Model::read(fs::path("missing.ifc"), &header), Model::read(broken.path, &header)}) {
        ASSERT_NE(model, nullptr);
        EXPECT_TRUE(model->isNull());
        model->release();
    }
    Model* volatile none = nullptr;
    release(none);
    EXPECT_FALSE(model_->isNull());

    // Code of the library crosses over: the block takes the caller's reference.
    Model* crossed = Model::Impl::create(nullptr);
    IfcModel* inner = IfcModel::create(eIFC2X3, false, false);
    Model::Impl::setImpl(*crossed, new Model::Impl(inner));
    EXPECT_EQ(crossed->schemaId(), eIFC2X3);
    *model_ = *crossed;
    crossed->release();
    EXPECT_EQ(model_->schemaId(), eIFC2X3);
}

// -- the facade against the records -------------------------------------------------------------

template <class T>
const T& as(const IfcParser::ItemBase& item) {
    return static_cast<const T&>(item);
}

/// Whether the record's `item` says what `value` holds.
bool isSame(const Variant& value, const IfcParser::ItemBase& item) {
    using namespace IfcParser;
    const auto kind = static_cast<ItemKind>(item.kind());
    switch (value.type()) {
        case TypeInt:
            return kind == ItemKind::Int && as<ItemInt>(item).value == value.getInt();
        case TypeUInt:
            return kind == ItemKind::Int &&
                   static_cast<unsigned>(as<ItemInt>(item).value) == value.getUInt();
        case TypeReal:
            return kind == ItemKind::Dbl && as<ItemDbl>(item).value == value.getReal();
        case TypeBool:
            return kind == ItemKind::Bool && as<ItemBool>(item).value == value.getBool();
        case TypeLogical:
            if (kind == ItemKind::Enum)
                return as<ItemEnum>(item).name->text == "U" && value.getLogical().isUnknown();
            return kind == ItemKind::Bool && value.getLogical().isKnown() &&
                   as<ItemBool>(item).value == bool(value.getLogical());
        case TypeString:
            return kind == ItemKind::String &&
                   as<ItemString>(item).text == value.getString().getEncoded();
        case TypeGuid:
            return kind == ItemKind::String &&
                   as<ItemString>(item).text == value.getGuid().getBase64();
        case TypeBinary:  // the item has the opening quote
            return kind == ItemKind::Binary &&
                   as<ItemBinary>(item).text.substr(1) == value.getBinary().getEncodedString();
        case TypeEnum:
            return kind == ItemKind::Enum &&
                   as<ItemEnum>(item).name->text == value.getEnum().getValue();
        case TypeEntity:
            return kind == ItemKind::Ref && as<ItemRef>(item).value == value.getEntity().ifcId();
        case TypeSelect: {
            const SelectValue select = value.getSelect();
            const Variant inner = select.getValue();
            // The file names the type of a plain value, and of nothing else.
            if (inner.type() == TypeSelect || inner.type() == TypeEntity)
                return isSame(inner, item);
            return kind == ItemKind::Choice &&
                   as<ItemChoice>(item).name->text == OvikTest::capitals(select.tag()) &&
                   isSame(inner, *as<ItemChoice>(item).value);
        }
        case TypeVector: {
            if (kind != ItemKind::List) return false;
            const VectorValue vector = value.getVector();
            const std::vector<ItemBase*> none;
            const auto& items = as<ItemList>(item).items ? *as<ItemList>(item).items : none;
            bool same = vector.size() == items.size();
            for (unsigned i = 0; same && i < vector.size(); ++i)
                same = isSame(vector[i], *items[i]);
            return same;
        }
        case TypeNone:
            break;
    }
    return kind == ItemKind::Ref && as<ItemRef>(item).value == 0;
}

/// Gives each record of a file to a function.
struct Records : IfcParser::Output {
    std::function<void(int, const std::string&, const std::vector<IfcParser::ItemBase*>&)> take;

    bool setHeader(IfcParser::ParsedHeader*&) override { return true; }
    void endOfFile() override {}
    void addData(int id, IfcParser::PooledName* name, IfcParser::ItemList* list, double) override {
        const std::vector<IfcParser::ItemBase*> none;  // as of IFCVERTEX()
        take(id, name->text, list->items ? *list->items : none);
        list->release();
    }
};

class ApiCorpus : public Test::SchemaTest {
 protected:
    void SetUp() override {
        initOvikApi();
        for (const auto& cls : schema_->entities) {
            const std::string name = OvikTest::capitals(cls->name);
            // A record has the attributes of the ancestors first.
            std::vector<const Generator::Entity*> line;
            for (const auto* base = cls.get(); base; base = base->parent) line.push_back(base);
            std::vector<std::string>& names = attributes_[name];
            for (auto base = line.rbegin(); base != line.rend(); ++base)
                for (const auto& attribute : (*base)->attributes) names.push_back(attribute.name);
            for (const auto* base : line)
                for (unsigned i = 0; base->redeclared && i < 32; ++i)
                    if (base->derived >> i & 1)
                        derived_[name].insert(base->redeclared->attributes[i].name);
        }
        if (corpus_.empty()) GTEST_SKIP() << OvikTest::kNoCorpus;
    }

    /// The model as a file without the header that it came with: a backslash in that may spoil it.
    static std::string fileOf(Model& model, const TempFile& file) {
        Header header;
        header.setTimeStamp(u"then");
        EXPECT_TRUE(model.write(file.path, header));
        return file.text();
    }

    const std::vector<fs::path> corpus_ = OvikTest::corpusFiles("valid/" + folder_);
    std::map<std::string, std::vector<std::string>> attributes_;
    std::map<std::string, std::set<std::string>> derived_;
    const TempFile before_, after_;
};

// Every attribute of every entity against its record, by a road that has nothing of the schema but
// its table; and each is set to what it is, which changes nothing.
TEST_P(ApiCorpus, GivesAndTakesTheValuesOfTheRecords) {
    std::size_t numValues = 0, numDerived = 0;
    int numSkipped = 0;
    for (const fs::path& file : corpus_) {
        SCOPED_TRACE(file.filename().string());
        Header header;
        const ModelHandle original(Model::read(file, &header));
        if (original->isNull()) {
            ++numSkipped;
            continue;
        }
        fileOf(*original, before_);
        const ModelHandle model(Model::read(before_.path, &header));
        ASSERT_FALSE(model->isNull());
        ASSERT_EQ(model->schemaId(), GetParam().id);
        const std::string unchanged = fileOf(*model, after_);
        std::map<int, Entity> entities;
        for (std::size_t i = 0; i < model->getNumEntities(); ++i)
            entities[model->get(i).ifcId()] = model->get(i);
        Records records;
        records.take = [&](int id, const std::string& cls, const auto& items) {
            if (HasFatalFailure()) return;  // one message is enough
            const std::vector<std::string>& names = attributes_[cls];
            ASSERT_EQ(items.size(), names.size()) << cls;
            const auto found = entities.find(id);
            ASSERT_NE(found, entities.end()) << id;
            Entity& entity = found->second;
            for (std::size_t i = 0; i < items.size(); ++i) {
                const char* const name = names[i].c_str();
                const bool isDerived = derived_[cls].contains(name);
                ASSERT_EQ(items[i]->kind() == unsigned(IfcParser::ItemKind::Derived), isDerived)
                    << '#' << id << ' ' << name;
                numDerived += isDerived;
                if (isDerived) continue;
                Variant value;  // stays empty if the attribute has no value
                entity.getAttribute(name, value);
                ASSERT_TRUE(isSame(value, *items[i])) << '#' << id << ' ' << cls << ' ' << name;
                if (value.type() == TypeNone) continue;
                ASSERT_EQ(entity.setAttribute(name, value), ResultOk) << cls << ' ' << name;
                ++numValues;
            }
        };
        std::ifstream stream(before_.path);
        EXPECT_TRUE(IfcParser::parseStream(stream, nullptr, &records));
        ASSERT_EQ(fileOf(*model, after_), unchanged);
    }
    EXPECT_LE(numSkipped, 1);
    EXPECT_GT(numValues, 100000u);
    EXPECT_GT(numDerived, 0u);
}

INSTANTIATE_TEST_SUITE_P(Files, ApiCorpus, testing::ValuesIn(Test::kSchemaCases), Test::folderOf);

}  // namespace
}  // namespace Ovik::IfcApi
