// Turns a schema into the constants of the facade: descriptors, and texts for everything else that
// has a name.
#include "apiwriter.h"

#include <algorithm>
#include <map>

#include "fill.h"
#include "names.h"
#include "output.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kHeader = R"(
// The facade's constants for schema {{schema}}.
#pragma once

#include "ovik/api/desc.h"

namespace Ovik::IfcApi::{{space}} {

// Entity classes that can be instantiated
{{entities}}

// Selects
{{selects}}

// Aggregates
{{aggregates}}

// Attributes, choices of selects, and literals of enumerations (with an `e`)
{{texts}}

}  // namespace Ovik::IfcApi::{{space}}
)";

constexpr const char* kSource = R"(
// The descriptors of the facade.
#include "ovik/api/{{lower}}.h"

#include "ovik/api/desctables.h"
#include "ovik/schema/{{lower}}/imp.h"
#include "ovik/{{lower}}.h"

namespace Ovik::IfcApi::{{space}} {

{{entities}}

{{selects}}

{{aggregates}}

static constexpr EntityRow entities[] = {
{{entityRows}}
};

constinit const DescTables descTables = {entities};

}  // namespace Ovik::IfcApi::{{space}}
)";

class ApiWriter {
 public:
    ApiWriter(const Schema& schema, const Output& output)
        : schema_(schema),
          output_(output),
          lower_(lowerCase(schema.name)),
          space_(capitalized(schema.name)) {
        for (const auto& e : schema.entities) {
            if (!e->isAbstract) concrete_.push_back(e.get());
        }
    }

    void run() const {
        writeHeader();
        writeSource();
    }

 private:
    // Names to texts: attributes, choices that have no descriptor, literals.
    std::map<std::string, std::string> texts() const {
        std::map<std::string, std::string> result;
        for (const auto& e : schema_.entities) {
            for (const Attribute& a : e->attributes) result[a.name] = a.name;
        }
        for (const auto& s : schema_.selects) {
            for (const Choice& c : s->choices) {
                if (!c.type.entity && !c.type.select) result[c.name] = c.name;
            }
        }
        for (const auto& e : schema_.enumerations) {
            for (const std::string& literal : e->literals) result["e" + literal] = literal;
        }
        return result;
    }

    // For each item of `list`, `text` with its name, and what else the texts of this file need.
    template <class List>
    std::string lines(const List& list, std::string_view text) const {
        return each(list, [&](const auto& item) {
            return fill(text, {{"name", item->name},
                               {"schema", schema_.name},
                               {"hash", std::to_string(schema_.hash(item->name))}});
        });
    }

    void writeHeader() const {
        const auto constant = [](const auto& entry) {
            return fill("inline constexpr const char* {{name}} = \"{{text}}\";\n",
                        {{"name", entry.first}, {"text", entry.second}});
        };
        output_.write(
            "ovik/api/" + lower_ + ".h",
            fill(kHeader,
                 {{"schema", schema_.name},
                  {"space", space_},
                  {"entities", lines(concrete_, "extern OVIK_API EntityDesc {{name}};\n")},
                  {"selects", lines(schema_.selects, "extern OVIK_API SelectorDesc {{name}};\n")},
                  {"aggregates",
                   lines(schema_.aggregates, "extern OVIK_API VectorDesc {{name}};\n")},
                  {"texts", each(texts(), constant)}}));
    }

    void writeSource() const {
        std::vector<const Entity*> byHash = concrete_;
        std::ranges::sort(byHash, {}, [&](const Entity* e) { return schema_.hash(e->name); });
        output_.write(
            lower_ + "_api.cpp",
            fill(kSource,
                 {{"lower", lower_},
                  {"space", space_},
                  {"entities", lines(concrete_,
                                     "constinit EntityDesc {{name}} = "
                                     "entityDesc<{{schema}}::{{name}}>();\n")},
                  {"selects", lines(schema_.selects,
                                    "constinit SelectorDesc {{name}} = "
                                    "selectorDesc<{{schema}}::{{name}}>();\n")},
                  {"aggregates", lines(schema_.aggregates,
                                       "constinit VectorDesc {{name}} = "
                                       "vectorDesc<{{schema}}::{{name}}>();\n")},
                  {"entityRows", lines(byHash, "    {{{hash}}, \"{{name}}\", &{{name}}},\n")}}));
    }

    const Schema& schema_;
    const Output& output_;
    const std::string lower_;
    const std::string space_;  // the facade's namespace
    std::vector<const Entity*> concrete_;
};

}  // namespace

void writeApi(const Schema& schema, const Output& output) {
    ApiWriter(schema, output).run();
}

}  // namespace Ovik::Generator
