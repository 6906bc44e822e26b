// Puts the classes of a schema into files.
#include "writer.h"

#include <algorithm>
#include <sstream>

#include "classtext.h"
#include "fill.h"
#include "names.h"
#include "output.h"
#include "ovik/base/ascii.h"

namespace Ovik::Generator {

std::string headerOf(const Schema& schema, const std::string& cls) {
    return "ovik/" + lowerCase(schema.name) + "/" + cls + ".h";
}

std::string includes(const NameSet& headers) {
    return each(headers, [](const std::string& header) { return "#include \"" + header + "\"\n"; });
}

namespace {

constexpr const char* kHeader = R"(
#pragma once

{{includes}}

namespace Ovik {

{{declaration}}

}  // namespace Ovik
)";

constexpr const char* kSchemaHeader = R"(
#pragma once

#include "ovik/base/export.h"
#include "ovik/imp/schemaid.h"

namespace Ovik {

class IfcModel;

/// The classes of the {{schema}} schema. What holds for all entity classes:
///
/// - For an attribute `X` there are `getX` and `setX`, and `hasX` where it is optional: true for a
///   reference while it leads to an entity, for all else from the first `setX` on, and then it
///   can't be unset. A change through the reference that `getX` gives is kept, but does not make an
///   optional attribute present, nor a mandatory one given that an exact load found missing: `setX`
///   does.
/// - A reference is read as null if it leads nowhere or to an entity of another class than
///   declared; setting one checks neither its class nor its model.
/// - Entities are made by `create`, belong to their model and can't be copied.
class OVIK_API {{schema}} {
 public:
    /// What its models and entities answer to `schemaId`.
    static constexpr EIfcSchemaId kSchemaId{{{id}}};

    /// An empty model of this schema, with one reference for the caller. With `makeGuids` each new
    /// rooted entity gets an identifier: a random one, or with `useTestGuid` the fixed
    /// `Base64Guid::testGuid`.
    static IfcModel* createModel(bool makeGuids, bool useTestGuid);

    // Enumerations
{{enumerations}}

    // Selects
{{selects}}

    // Aggregates
{{aggregates}}

    // Entities
{{entities}}
};

}  // namespace Ovik
)";

constexpr const char* kUmbrella = R"(
// All classes of the schema.
#pragma once

{{includes}}
)";

constexpr const char* kShard = R"(
// Tables and operations of a part of the classes.
#include <cstddef>

{{includes}}

// The tables hold offsets of fields. The classes have single inheritance without virtual
// bases, where offsetof is sound, and begin with their base, which is asserted.
#pragma GCC diagnostic ignored "-Winvalid-offsetof"

namespace Ovik {

using Schema::typeOf;

{{definitions}}
}  // namespace Ovik
)";

constexpr const char* kImpHeader = R"(
// The schema as the library sees it. Internal.
#pragma once

#include "ovik/imp/modelimp.h"
#include "ovik/imp/schematable.h"
#include "ovik/schema/common/namehash.h"

namespace Ovik {

namespace IfcApi::{{facade}} {
extern const DescTables descTables;
}

namespace {{schema}}Imp {

/// The hash of its names: classes, attributes, choices and literals.
extern const Schema::NameHash schemaNameHash;

/// Its row of the table of schemas.
extern const SchemaRow schemaRow;

/// A model of it; made by `{{schema}}::createModel`.
class IfcModelImp final : public SchemaModel {
 public:
    using SchemaModel::SchemaModel;

    EIfcSchemaId schemaId() const override;
{{backRefs}}
};

}  // namespace {{schema}}Imp
}  // namespace Ovik
)";

constexpr const char* kBackRefs = R"(

 protected:
    void addBackRefs(IfcEntity& entity) const override;
)";

constexpr const char* kSchemaSource = R"(
// The schema as a whole: its row of the table of schemas, and what the row leads to.
#include "ovik/schema/{{lower}}/imp.h"

#include "ovik/{{lower}}.h"

namespace Ovik {

IfcModel* {{schema}}::createModel(bool makeGuids, bool useTestGuid) {
    return new {{schema}}Imp::IfcModelImp(makeGuids, useTestGuid);
}

namespace {{schema}}Imp {

{{hash}}

EIfcSchemaId IfcModelImp::schemaId() const {
    return {{schema}}::kSchemaId;
}

static constexpr const RtClass* classes[] = {
{{classes}}
};

constinit const SchemaRow schemaRow = {
    {{schema}}::kSchemaId, u"{{schema}}", &{{schema}}::createModel,
    classes, &schemaNameHash, &IfcApi::{{facade}}::descTables};

}  // namespace {{schema}}Imp
}  // namespace Ovik
)";

constexpr const char* kHash = R"(
static constexpr std::uint8_t keyPositions[] = {{{positions}}};
static constexpr Schema::NameHash::ByteValue byteValues[] = {
{{values}}
};
constinit const Schema::NameHash schemaNameHash({{filler}}, keyPositions, byteValues);
)";

constexpr const char* kDefaultHash = R"(
constinit const Schema::NameHash schemaNameHash;
)";

std::string defineHash(const HashTable& table) {
    if (table.positions.empty()) return fill(kDefaultHash, {});
    std::vector<std::string> positions;
    for (const unsigned position : table.positions) positions.push_back(std::to_string(position));
    const auto value = [](const NameHash::ByteValue& item) {
        const std::string escape = item.byte == '\'' || item.byte == '\\' ? "\\" : "";
        return fill("    {'{{byte}}', {{value}}},\n",
                    {{"byte", escape + item.byte}, {"value", std::to_string(item.value)}});
    };
    return fill(kHash, {{"positions", join(positions, ", ")},
                        {"values", each(table.values, value)},
                        {"filler", std::to_string(table.filler)}});
}

constexpr std::size_t kMaxLine = 100;

// Puts a member function of one statement in one line if it fits there, and the base of a class in
// a line of its own if it doesn't fit behind the class.
std::string layOut(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    std::string result;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string line = lines[i];
        if (i + 2 < lines.size() && line.ends_with(" {") && lines[i + 2] == "    }") {
            const std::string joined = line + lines[i + 1].substr(7) + " }";
            if (joined.size() <= kMaxLine) {
                line = joined;
                i += 2;
            }
        } else if (const auto base = line.find(" : public ");
                   base != line.npos && line.size() > kMaxLine) {
            line.replace(base, 1, "\n    ");
        }
        result += line + "\n";
    }
    return result;
}

class Writer {
 public:
    Writer(const Schema& schema, const Output& output, unsigned shards)
        : schema_(schema), output_(output), shards_(shards), lower_(lowerCase(schema.name)) {}

    void run() const {
        writeSchemaHeader();
        writeUmbrella();
        writeImpHeader();
        const NameSet engine = {"ovik/imp/outfiler.h",
                                "ovik/imp/validation.h",
                                "ovik/schema/" + lower_ + "/imp.h",
                                "ovik/schema/common/aggregateengine.h",
                                "ovik/schema/common/engine.h",
                                "ovik/schema/common/tables.h"};
        std::vector<Shard> shards(shards_, {engine, ""});
        distribute(schema_.enumerations, shards);
        distribute(schema_.selects, shards);
        distribute(schema_.aggregates, shards);
        distribute(schema_.entities, shards);
        for (unsigned i = 0; i < shards_; ++i) writeShard(i, shards[i]);
        writeSchemaSource();
    }

 private:
    struct Shard {
        NameSet headers;
        std::string definitions;
    };

    void writeSchemaHeader() const {
        const auto forward = [](const auto& item) { return "    class " + item->name + ";\n"; };
        output_.write("ovik/" + lower_ + "/schema.h",
                      fill(kSchemaHeader, {{"schema", schema_.name},
                                           {"id", std::to_string(schema_.id)},
                                           {"enumerations", each(schema_.enumerations, forward)},
                                           {"selects", each(schema_.selects, forward)},
                                           {"aggregates", each(schema_.aggregates, forward)},
                                           {"entities", each(schema_.entities, forward)}}));
    }

    void writeUmbrella() const {
        NameSet headers;
        const auto add = [&](const auto& list) {
            for (const auto& item : list) headers.insert(headerOf(schema_, item->name));
        };
        add(schema_.enumerations);
        add(schema_.selects);
        add(schema_.aggregates);
        add(schema_.entities);
        output_.write("ovik/" + lower_ + ".h", fill(kUmbrella, {{"includes", includes(headers)}}));
    }

    void writeImpHeader() const {
        output_.write(
            "ovik/schema/" + lower_ + "/imp.h",
            fill(kImpHeader, {{"schema", schema_.name},
                              {"facade", capitalized(schema_.name)},
                              {"backRefs", when(schema_.backRefsByHand, fill(kBackRefs, {}))}}));
    }

    // Writes the headers of these classes, and adds an equal part of them to each shard.
    template <class T>
    void distribute(const std::vector<std::unique_ptr<T>>& list, std::vector<Shard>& shards) const {
        for (std::size_t i = 0; i < shards.size(); ++i) {
            const std::size_t last = list.size() * (i + 1) / shards.size();
            for (std::size_t k = list.size() * i / shards.size(); k < last; ++k) {
                const ClassText text = classText(schema_, *list[k]);
                writeHeader(list[k]->name, text);
                shards[i].headers.insert(headerOf(schema_, list[k]->name));
                shards[i].headers.insert(text.definitionHeaders.begin(),
                                         text.definitionHeaders.end());
                shards[i].definitions += text.definition;
            }
        }
    }

    void writeHeader(const std::string& name, const ClassText& text) const {
        output_.write("ovik/" + lower_ + "/" + name + ".h",
                      fill(kHeader, {{"includes", includes(text.declarationHeaders)},
                                     {"declaration", layOut(text.declaration)}}));
    }

    void writeShard(unsigned number, const Shard& shard) const {
        output_.write(lower_ + "_" + std::to_string(number) + ".cpp",
                      fill(kShard, {{"includes", includes(shard.headers)},
                                    {"definitions", shard.definitions}}));
    }

    void writeSchemaSource() const {
        std::vector<std::string> concrete;
        for (const auto& entity : schema_.entities) {
            if (!entity->isAbstract) concrete.push_back(entity->name);
        }
        std::ranges::sort(concrete, [](const std::string& a, const std::string& b) {
            return compareNoCase(a.c_str(), b.c_str()) < 0;
        });
        const auto cls = [&](const std::string& name) {
            return "    " + schema_.name + "::" + name + "::desc(),\n";
        };
        output_.write(lower_ + "_schema.cpp",
                      fill(kSchemaSource, {{"schema", schema_.name},
                                           {"lower", lower_},
                                           {"facade", capitalized(schema_.name)},
                                           {"hash", defineHash(schema_.hashTable)},
                                           {"classes", each(concrete, cls)}}));
    }

    const Schema& schema_;
    const Output& output_;
    const unsigned shards_;
    const std::string lower_;
};

}  // namespace

void writeSchema(const Schema& schema, const Output& output, unsigned shards) {
    Writer(schema, output, shards).run();
}

}  // namespace Ovik::Generator
