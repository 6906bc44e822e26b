// Every concrete class of both schemas: through a file with all attributes set, through a file with
// the optional ones unset, by name, and made by `create`. The files are built from the schema
// tables and not by the library, so the two roads have nothing in common but the facts.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "tests/loadtext.h"
#include "tests/schemacases.h"

namespace Ovik {
namespace {

using namespace Test;
using Generator::Entity;
using Generator::Plain;
using Generator::Type;
using OvikTest::capitals;

bool isKindOf(const Entity& cls, const Entity& base) {
    return &cls == &base || (cls.parent && isKindOf(*cls.parent, base));
}

// A pixel texture of IFC2X3 can't be read back: its list of pixels takes no element.
bool isReadable(const Generator::Schema& schema, const Entity& cls) {
    return !cls.isAbstract && !(schema.name == "IFC2X3" && cls.name == "IfcPixelTexture");
}

// Builds the data section of a file with an instance of each class, numbered depth first as the
// library numbers them, so that loading and writing must give the same text.
class Builder {
 public:
    Builder(const Generator::Schema& schema, bool withOptional)
        : schema_(schema), withOptional_(withOptional) {}

    std::string build() {
        for (const auto& cls : schema_.entities) {
            if (isReadable(schema_, *cls)) number(*cls);
        }
        std::string text;
        for (const auto& [n, record] : records_) text += record;
        return text;
    }

    std::size_t numRecords() const { return records_.size(); }

 private:
    int number(const Entity& cls) {
        int& n = numbers_[&cls];
        if (n) return n;
        n = static_cast<int>(numbers_.size());
        inProgress_.insert(&cls);
        std::string fields;
        writeFields(cls, nullptr, fields);
        records_[n] = "#" + std::to_string(n) + "= " + capitals(cls.name) + "(" + fields + ");\n";
        inProgress_.erase(&cls);
        return n;
    }

    void writeFields(const Entity& cls, const Entity* subclass, std::string& out) {
        if (cls.parent) writeFields(*cls.parent, cls.redeclared ? &cls : subclass, out);
        for (std::size_t i = 0; i < cls.attributes.size(); ++i) {
            const auto& attribute = cls.attributes[i];
            if (!out.empty()) out += ',';
            if (subclass && subclass->redeclared == &cls && (subclass->derived >> i & 1)) {
                out += '*';
            } else if (attribute.optional && !(withOptional_ && !refers(attribute.type))) {
                out += '$';
            } else {
                out += value(attribute.type);
            }
        }
    }

    // Optional references are left out: they could close a circle.
    static bool refers(const Type& type) {
        return type.entity || (type.select && type.select->numEntityChoices() > 0) ||
               (type.aggregate && refers(type.aggregate->element));
    }

    std::string value(const Type& type) {
        if (type.entity) return "#" + std::to_string(number(instanceOf(*type.entity)));
        if (type.enumeration) return "." + type.enumeration->literals.back() + ".";
        if (type.select) return choice(*type.select);
        if (type.aggregate) {
            const auto& a = *type.aggregate;
            std::string list;
            for (unsigned i = 0; i < std::max(a.lower, a.upper ? a.upper : 2); ++i) {
                list += (i ? "," : "(") + value(a.element);
            }
            return list + ")";
        }
        switch (type.plain) {
            case Plain::Real:
                return std::to_string(++counter_) + ".";
            case Plain::Integer:
                return std::to_string(-++counter_);
            case Plain::Boolean:
                return ".T.";
            case Plain::Logical:
                return ".U.";
            case Plain::String:
                return "'it''s " + std::to_string(++counter_) + "'";
            case Plain::Binary:
                return "\"0\"";
            case Plain::Guid:
                return "'_dummy_GUID_dummy_GIUD'";
            case Plain::Unsigned:
                break;
        }
        return {};
    }

    // Each choice has its turn; an entity choice only if it doesn't lead back to where we are.
    std::string choice(const Generator::Select& select) {
        for (std::size_t attempt = 0; attempt <= select.choices.size(); ++attempt) {
            const auto& candidate = select.choices[turn_[&select]++ % select.choices.size()];
            const Type& type = candidate.type;
            if (type.entity && !findInstance(*type.entity)) continue;
            if (type.entity || type.select) return value(type);
            return capitals(candidate.name) + "(" + value(type) + ")";
        }
        ADD_FAILURE() << "no choice of " << select.name << " can be used";
        return "$";
    }

    const Entity* findInstance(const Entity& base) const {
        for (const auto& cls : schema_.entities) {
            if (isReadable(schema_, *cls) && isKindOf(*cls, base) &&
                !inProgress_.count(cls.get())) {
                return cls.get();
            }
        }
        return nullptr;
    }

    const Entity& instanceOf(const Entity& base) const {
        const Entity* found = findInstance(base);
        EXPECT_TRUE(found) << base.name;
        return *found;
    }

    const Generator::Schema& schema_;
    const bool withOptional_;
    std::map<const Entity*, int> numbers_;
    std::set<const Entity*> inProgress_;
    std::map<int, std::string> records_;
    std::map<const Generator::Select*, std::size_t> turn_;
    int counter_ = 0;
};

class EveryClass : public SchemaTest {
 protected:
    /// The model of these records, of which nothing may be wrong.
    static IfcModelPtr load(const std::string& records) {
        Loaded loaded = loadRecords(records, GetParam().id);
        EXPECT_EQ(loaded.log, "");
        return std::move(loaded.model);
    }
};

TEST_P(EveryClass, PassesThroughAFileUnchanged) {
    for (const bool withOptional : {true, false}) {
        Builder builder(*schema_, withOptional);
        const std::string records = builder.build();
        const IfcModelPtr model = load(records);
        ASSERT_TRUE(model);
        EXPECT_EQ(model->getNumEntities(), builder.numRecords());
        EXPECT_EQ(recordsOf(*model), records);
    }
}

TEST_P(EveryClass, TakesBackByNameWhatItGave) {
    for (const bool withOptional : {true, false}) {
        const std::string records = Builder(*schema_, withOptional).build();
        const IfcModelPtr model = load(records);
        ASSERT_TRUE(model);
        std::map<std::string, const Entity*> classes;
        for (const auto& cls : schema_->entities) classes[capitals(cls->name)] = cls.get();
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
            IfcEntity& entity = *model->get(i);
            const Entity* const own = classes.at(entity.isA()->className());
            // The class that answers last is the nearest one with attributes of its own.
            const Entity* answering = own;
            while (answering->parent && answering->attributes.empty()) {
                answering = answering->parent;
            }
            for (const Entity* cls = own; cls; cls = cls->parent) {
                for (const auto& attribute : cls->attributes) {
                    SCOPED_TRACE(own->name + "." + attribute.name);
                    IfcVariant value;
                    const Result result = entity.getAttribute(attribute.name.c_str(), value);
                    if (value.getValueType() == AttributeNone) {
                        const bool isDerived = own->redeclared == cls;
                        EXPECT_TRUE(isDerived || attribute.optional);
                        if (attribute.optional) {
                            EXPECT_EQ(result, cls == answering ? ResultUnset : ResultNotFound);
                        }
                        continue;
                    }
                    EXPECT_EQ(result, ResultOk);
                    EXPECT_EQ(entity.setAttribute(attribute.name.c_str(), value), ResultOk);
                }
            }
        }
        EXPECT_EQ(recordsOf(*model), records);
    }
}

// Defaults are written for each class. Those that the reader accepts as they are come back and are
// written the same; the others lack a reference or an element that is mandatory.
TEST_P(EveryClass, IsCreatedWithDefaults) {
    const IfcModelPtr model = newModel(GetParam().id);
    std::size_t count = 0;
    for (const auto& cls : schema_->entities) {
        const RtClass* rt = findClass(cls->name);
        ASSERT_EQ(rt == nullptr, cls->isAbstract) << cls->name;
        if (!rt) continue;
        ++count;
        IfcEntity* entity = rt->create(model.get());
        EXPECT_EQ(entity->isA(), rt);
        EXPECT_EQ(entity->schemaId(), GetParam().id);
        EXPECT_EQ(entity->id()(), entity);
        EXPECT_EQ(entity->ifcId(), 0);
        // The chain ends at the base of all only below an abstract root.
        const Entity* top = cls.get();
        while (top->parent) top = top->parent;
        EXPECT_EQ(rt->isKindOf(IfcEntity::desc()), top->isAbstract) << cls->name;
    }
    EXPECT_EQ(count, GetParam().numConcrete);
    EXPECT_EQ(model->getNumEntities(), count);

    const IfcModelPtr again = loadRecords(recordsOf(*model), GetParam().id).model;
    EXPECT_GT(again->getNumEntities(), count / 10);
    const std::string kept = recordsOf(*again);
    EXPECT_EQ(recordsOf(*load(kept)), kept);
}

INSTANTIATE_TEST_SUITE_P(Schemas, EveryClass, testing::ValuesIn(kSchemaCases), folderOf);

}  // namespace
}  // namespace Ovik
