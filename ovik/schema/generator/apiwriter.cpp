// Turns a schema into the constants of the facade: descriptors, and texts for everything else that
// has a name.
#include "apiwriter.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "output.h"

namespace Ovik::Generator {
namespace {

class ApiWriter {
 public:
    ApiWriter(const Schema& schema, std::filesystem::path folder)
        : schema_(schema),
          folder_(std::move(folder)),
          lower_(lowerCase(schema.name)),
          space_("Ifc" + lower_.substr(3)) {
        for (const auto& e : schema.entities) {
            if (!e->isAbstract) concrete_.push_back(e.get());
        }
    }

    void run() const {
        std::filesystem::create_directories(folder_ / "ovik" / "api");
        writeHeader();
        writeSource();
        writeAttributes();
    }

 private:
    std::string include() const { return "#include \"ovik/api/" + lower_ + ".h\"\n"; }

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

    void writeHeader() const {
        std::ostringstream out;
        out << banner(schema_) << "// The facade's constants for schema " << schema_.name
            << ".\n#pragma once\n\n#include \"ovik/api/desc.h\"\n\nnamespace Ovik::IfcApi::"
            << space_ << " {\n\n// Entity classes that can be instantiated\n";
        for (const Entity* e : concrete_) out << "extern OVIK_API EntityDesc " << e->name << ";\n";
        out << "\n// Selects\n";
        for (const auto& s : schema_.selects)
            out << "extern OVIK_API SelectorDesc " << s->name << ";\n";
        out << "\n// Aggregates\n";
        for (const auto& a : schema_.aggregates)
            out << "extern OVIK_API VectorDesc " << a->name << ";\n";
        out << "\n// Attributes, choices of selects, and literals of enumerations (with an `e`)\n";
        for (const auto& [name, text] : texts())
            out << "inline constexpr const char* " << name << " = \"" << text << "\";\n";
        out << "\n}  // namespace Ovik::IfcApi::" << space_ << "\n";
        writeIfChanged(folder_ / "ovik" / "api" / (lower_ + ".h"), out.str());
    }

    void writeSource() const {
        std::ostringstream out;
        out << banner(schema_) << "// The descriptors of the facade.\n"
            << include() << "\n#include \"ovik/api/desctables.h\"\n#include \"ovik/" << lower_
            << ".h\"\n#include \"ovik/schema/" << lower_
            << "/namehash.h\"\n\nnamespace Ovik::IfcApi::" << space_ << " {\n\n";
        for (const Entity* e : concrete_) out << "EntityDesc " << e->name << ";\n";
        for (const auto& s : schema_.selects) out << "SelectorDesc " << s->name << ";\n";
        for (const auto& a : schema_.aggregates) out << "VectorDesc " << a->name << ";\n";

        std::vector<const Entity*> byHash = concrete_;
        std::sort(byHash.begin(), byHash.end(), [this](const Entity* a, const Entity* b) {
            return nameHash(schema_, a->name) < nameHash(schema_, b->name);
        });
        out << "\nstatic constexpr EntityRow entities[] = {\n";
        for (const Entity* e : byHash) {
            out << "    {" << nameHash(schema_, e->name) << ", \"" << e->name << "\", &" << e->name
                << ", " << schema_.name << "::" << e->name << "::desc()},\n";
        }
        out << "};\n\nstatic constexpr VectorRow vectors[] = {\n";
        for (const auto& a : schema_.aggregates) {
            out << "    {&" << a->name << ", &createVector<" << schema_.name << "::" << a->name
                << ">},\n";
        }
        out << "};\n\nstatic constexpr SelectorRow selectors[] = {\n";
        for (const auto& s : schema_.selects) {
            out << "    {&" << s->name << ", \"" << s->name << "\", &createSelect<" << schema_.name
                << "::" << s->name << ">},\n";
        }
        out << "};\n\nconstinit const DescTables descTables = {&" << schema_.name
            << "Imp::schemaNameHash, entities, vectors, selectors};\n\n}  // namespace "
               "Ovik::IfcApi::"
            << space_ << "\n";
        writeIfChanged(folder_ / (lower_ + "_api.cpp"), out.str());
    }

    static std::size_t depth(const Entity* e) {
        std::size_t result = 0;
        for (; e->parent; e = e->parent) ++result;
        return result;
    }

    // Attributes in the order of a record: those of the ancestors first.
    static std::vector<std::string> attributesOf(const Entity& e) {
        std::vector<std::string> names;
        if (e.parent) names = attributesOf(*e.parent);
        for (const Attribute& a : e.attributes) names.push_back(a.name);
        return names;
    }

    void writeAttributes() const {
        std::vector<const Entity*> deepestFirst = concrete_;
        std::stable_sort(deepestFirst.begin(), deepestFirst.end(),
                         [](const Entity* a, const Entity* b) { return depth(a) > depth(b); });
        std::ostringstream out;
        out << banner(schema_)
            << "// The attributes of each class, classes before their ancestors.\n"
            << include()
            << "\n#include <array>\n\n#include \"attributenames.h\"\n\nusing namespace "
               "Ovik::IfcApi::"
            << space_ << ";\n\n";
        for (const Entity* e : deepestFirst) {
            const std::vector<std::string> names = attributesOf(*e);
            out << "static constexpr std::array<const char*, " << names.size() << "> attributesOf"
                << e->name << " = {\n";
            for (const std::string& name : names) out << "    " << name << ",\n";
            out << "};\n";
        }
        out << "\nstatic constexpr tools::ClassAttributes classes[] = {\n";
        for (const Entity* e : deepestFirst)
            out << "    {&" << e->name << ", attributesOf" << e->name << "},\n";
        out << "};\n\nconst std::span<const tools::ClassAttributes> tools::" << lower_
            << "Attributes = classes;\n";
        writeIfChanged(folder_ / (lower_ + "_attributes.cpp"), out.str());
    }

    const Schema& schema_;
    const std::filesystem::path folder_;
    const std::string lower_;
    const std::string space_;  // the facade's namespace
    std::vector<const Entity*> concrete_;
};

}  // namespace

void writeApi(const Schema& schema, const std::filesystem::path& folder) {
    ApiWriter(schema, folder).run();
}

}  // namespace Ovik::Generator
