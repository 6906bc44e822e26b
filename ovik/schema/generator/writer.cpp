// Turns a schema into C++. Everything that a class does is in its table and in the engine behind
// it; what is written here are declarations, tables and forwards.
#include "writer.h"

#include <algorithm>
#include <set>
#include <sstream>
#include <string_view>

#include "names.h"
#include "output.h"

namespace Ovik::Generator {
namespace {

using NameSet = std::set<std::string>;

// Classes whose definition a field of this type needs; an entity is only ever referred to.
void addFieldType(const Type& type, NameSet& names) {
    if (!type.isPlain() && !type.entity) names.insert(className(type));
}

// Entity classes that the operations on a value of this type need to know.
void addEntity(const Type& type, NameSet& names) {
    if (type.entity) names.insert(type.entity->name);
}

class Writer {
 public:
    Writer(const Schema& schema, std::filesystem::path folder, unsigned shards)
        : schema_(schema),
          folder_(std::move(folder)),
          shards_(shards),
          lower_(lowerCase(schema.name)),
          banner_(banner(schema)) {}

    void run() {
        std::filesystem::create_directories(folder_ / "ovik" / lower_);
        writeSchemaHeader();
        for (const auto& item : schema_.enumerations) writeHeader(*item);
        for (const auto& item : schema_.selects) writeHeader(*item);
        for (const auto& item : schema_.aggregates) writeHeader(*item);
        for (const auto& item : schema_.entities) writeHeader(*item);
        writeUmbrella();
        for (unsigned shard = 0; shard < shards_; ++shard) writeShard(shard);
        writeSchemaSource();
    }

 private:
    // -- headers --------------------------------------------------------------------------------

    std::string qualified(const std::string& name) const { return schema_.name + "::" + name; }

    std::string include(const std::string& name) const {
        return "#include \"ovik/" + lower_ + "/" + name + ".h\"\n";
    }

    std::string includes(const NameSet& names) const {
        std::string result;
        for (const std::string& name : names) result += include(name);
        return result;
    }

    void writeClassHeader(const std::string& name, const std::string& head,
                          const std::string& body) const {
        writeIfChanged(folder_ / "ovik" / lower_ / (name + ".h"),
                       banner_ + "#pragma once\n\n" + head + "\nnamespace Ovik {\n\n" + body +
                           "\n}  // namespace Ovik\n");
    }

    template <class T>
    void forward(std::ostream& out, const char* title,
                 const std::vector<std::unique_ptr<T>>& list) const {
        out << "\n    // " << title << "\n";
        for (const auto& item : list) out << "    class " << item->name << ";\n";
    }

    void writeSchemaHeader() const {
        std::ostringstream out;
        out << "/// The classes of the " << schema_.name
            << R"( schema. What holds for all entity classes:
///
/// - For an attribute `X` there are `getX` and `setX`, and `hasX` where it is optional: true for a
///   reference while it leads to an entity, for all else from the first `setX` on, and then it can't
///   be unset. A change through the reference that `getX` gives is kept, but does not make an
///   optional attribute present: `setX` does.
/// - A reference is read as null if it leads nowhere or to an entity of another class than declared;
///   setting one checks neither its class nor its model.
/// - Entities are made by `create`, belong to their model and can't be copied.
class OVIK_API )"
            << schema_.name << " {\n public:\n"
            << "    /// An empty model of this schema, with one reference for the caller. With\n"
               "    /// `makeGuids` each new rooted entity gets an identifier: a random one, or "
               "with\n"
               "    /// `useTestGuid` the fixed `Base64Guid::testGuid`.\n"
               "    static IfcModel* createModel(bool makeGuids, bool useTestGuid);\n";
        forward(out, "Enumerations", schema_.enumerations);
        forward(out, "Selects", schema_.selects);
        forward(out, "Aggregates", schema_.aggregates);
        forward(out, "Entities", schema_.entities);
        out << "};\n";
        writeClassHeader("schema", "#include \"ovik/base/export.h\"\n",
                         "class IfcModel;\n\n" + out.str());
    }

    void writeUmbrella() const {
        NameSet names;
        for (const auto& item : schema_.enumerations) names.insert(item->name);
        for (const auto& item : schema_.selects) names.insert(item->name);
        for (const auto& item : schema_.aggregates) names.insert(item->name);
        for (const auto& item : schema_.entities) names.insert(item->name);
        writeIfChanged(
            folder_ / "ovik" / (lower_ + ".h"),
            banner_ + "// All classes of the schema.\n#pragma once\n\n" + includes(names));
    }

    void writeHeader(const Enumeration& e) const {
        std::ostringstream out;
        out << "/// The enumeration " << e.name << ".\n"
            << "class OVIK_API " << qualified(e.name)
            << " : public Schema::Enumeration {\n public:\n"
            << "    enum ETag : int {\n";
        for (const std::string& literal : e.literals) out << "        e" << literal << ",\n";
        out << "    };\n\n    " << e.name << "(ETag tag = e" << e.literals[e.defaultTag()]
            << ") : Enumeration(tag) {}\n"
            << "    operator ETag() const { return static_cast<ETag>(tag_); }\n\n"
               "    /// The literal as it stands in a file without its dots; null for a tag "
               "outside.\n"
               "    const char* asString() const { return Schema::enumText(*this, s_type); }\n"
               "    /// Takes the tag of a literal; false, leaving the tag, if it is none.\n"
               "    bool fromString(const char* text) {\n"
               "        return Schema::setEnumText(*this, s_type, text);\n    }\n"
               "    bool read(IfcInFiler& in) { return Schema::readEnum(*this, s_type, in); }\n"
               "    void write(IfcOutFiler& out) const { Schema::writeEnum(*this, s_type, out); "
               "}\n\n"
               "    static const Schema::EnumType s_type;\n};\n";
        writeClassHeader(e.name,
                         include("schema") + "#include \"ovik/schema/common/enumeration.h\"\n",
                         out.str());
    }

    // A getter pair and a setter. References resolve to classes that need not be known here, so
    // their accessors are defined in the source.
    void writeAccessors(std::ostream& out, const std::string& name, const Type& type,
                        const std::string& field, const std::string& afterSet) const {
        const std::string get = " get" + name + "()";
        if (type.entity) {
            out << "    " << mutableType(type) << get << ";\n    " << constType(type) << get
                << " const;\n    void set" << name << "(" << argumentType(type) << " value);\n";
            return;
        }
        out << "    " << mutableType(type) << get << " { return " << field << "; }\n    "
            << constType(type) << get << " const { return " << field << "; }\n    void set" << name
            << "(" << argumentType(type) << " value) {\n        " << field << " = value;\n"
            << afterSet << "    }\n";
    }

    // A field with its value in a new object.
    static std::string field(const Type& type, const std::string& name) {
        std::string initial;
        if (isByValue(type)) initial = type.plain == Plain::Boolean ? " = false" : " = 0";
        return "    " + fieldType(type) + " " + name + initial + ";\n";
    }

    void writeHeader(const Select& s) const {
        std::ostringstream out;
        out << "/// The select " << s.name << ".\n"
            << "class OVIK_API " << qualified(s.name) << " : public Schema::Select {\n public:\n"
            << "    enum CTag : int {\n";
        for (const Choice& choice : s.choices) out << "        e" << choice.name << ",\n";
        out << "    };\n\n    " << s.name << "(CTag tag = e" << s.choices[0].name
            << ") : Select(tag) {}\n"
            << "    operator CTag() const { return choice(); }\n"
               "    CTag choice() const { return static_cast<CTag>(tag_); }\n"
               "    bool operator==(CTag tag) const { return tag_ == tag; }\n"
               "    // The tags alone would be compared.\n"
            << "    bool operator==(const " << s.name
            << "&) const = delete;\n"
               "    /// The type name of the choice; null for a tag outside the select.\n"
               "    const char* choiceAsString() const;\n";
        NameSet types;
        for (const Choice& choice : s.choices) {
            addFieldType(choice.type, types);
            const std::string tag = "e" + choice.name;
            out << "\n    bool is" << choice.name << "() const { return tag_ == " << tag << "; }\n";
            writeAccessors(out, choice.name, choice.type, fieldName(choice.name),
                           "        tag_ = " + tag + ";\n");
        }
        out << "\n    /// The value of the choice.\n"
               "    void getAttribute(IfcVariant& value) const {\n"
               "        Schema::getSelect(*this, s_type, value);\n    }\n"
               "    /// Makes the choice `name` with this value.\n"
               "    Result setAttribute(const char* name, const IfcVariant& value) {\n"
               "        return Schema::setSelect(*this, s_type, name, value);\n    }\n"
               "    bool read(IfcInFiler& in) { return Schema::readSelect(*this, s_type, in); }\n"
               "    void write(IfcOutFiler& out) const { Schema::writeSelect(*this, s_type, out); "
               "}\n";
        if (s.numEntityChoices() > 0) {
            out << "    int validate(ValidationContext& context) {\n"
                   "        return Schema::validateSelect(*this, s_type, context);\n    }\n";
        }
        out << "\n    static const Schema::SelectType s_type;\n\n private:\n"
               "    static const Schema::Choice s_choices["
            << s.choices.size() << "];\n\n";
        for (const Choice& choice : s.choices) {
            if (!choice.type.entity) out << field(choice.type, fieldName(choice.name));
        }
        if (s.hasEntities()) out << "    EntityId handle_;\n";
        out << "};\n";
        writeClassHeader(s.name,
                         include("schema") + includes(types) +
                             "#include \"ovik/imp/entityid.h\"\n"
                             "#include \"ovik/schema/common/select.h\"\n",
                         out.str());
    }

    void writeHeader(const Aggregate& a) const {
        const std::string bounds =
            std::to_string(a.lower) + (a.upper ? ", " + std::to_string(a.upper) : "") + ">";
        const std::string element =
            a.element.isPlain() ? fieldType(a.element) : qualified(fieldType(a.element));
        const std::string base = a.element.entity
                                     ? "Schema::EntityAggregate<" + bounds
                                     : "Schema::ValueAggregate<" + element + ", " + bounds;
        NameSet types;
        addFieldType(a.element, types);
        std::ostringstream out;
        out << "class OVIK_API " << qualified(a.name) << " : public " << base << " {\n public:\n";
        if (a.element.entity) {
            const std::string& target = a.element.entity->name;
            out << "    using " << base << "::add;\n"
                << "    /// Appends a reference to `entity`, a null one for null.\n"
                << "    void add(" << target << "* entity);\n"
                << "    /// The entity of an element; null if it leads nowhere or to another "
                   "class. The\n"
                   "    /// index is not checked.\n"
                << "    " << target << "* operator[](unsigned index);\n    const " << target
                << "* operator[](unsigned index) const;\n\n";
        }
        out << "    bool read(IfcInFiler& in) { return s_type.read(this, s_type, in); }\n"
               "    void write(IfcOutFiler& out) const { s_type.write(this, s_type, out); }\n";
        if (a.canRefer()) {
            out << "    int validate(ValidationContext& context) {\n"
                   "        return s_type.validate(this, s_type, context);\n    }\n";
        }
        out << "\n    static const Schema::AggregateType s_type;\n};\n";
        writeClassHeader(a.name,
                         include("schema") + includes(types) +
                             "#include \"ovik/imp/xbinary.h\"\n#include \"ovik/imp/xstring.h\"\n"
                             "#include \"ovik/schema/common/aggregate.h\"\n",
                         out.str());
    }

    void writeHeader(const Entity& e) const {
        std::ostringstream out;
        const std::string parent = e.parent ? qualified(e.parent->name) : "IfcEntity";
        out << "/// " << e.name;
        if (e.isAbstract) out << ", abstract";
        if (e.parent) out << ", a kind of " << e.parent->name;
        out << ".\nclass OVIK_API " << qualified(e.name) << " : public " << parent
            << " {\n public:\n";
        if (!e.isAbstract) {
            out << "    /// A new entity of this class in `model`, which owns it.\n"
                << "    static " << e.name << "* create(IfcModel& model);\n";
        }
        out << "    static constexpr RtClass* desc() { return &s_type; }\n"
            << "    /// `entity` as an " << e.name << ", or null if it is none.\n"
            << "    static " << e.name << "* cast(IfcEntity* entity) {\n"
            << "        return Schema::cast<" << e.name << ">(entity);\n    }\n"
            << "    static const " << e.name << "* cast(const IfcEntity* entity) {\n"
            << "        return Schema::cast<" << e.name << ">(entity);\n    }\n";
        if (e.isRoot()) {
            out << "    " << e.name << "(const " << e.name << "&) = delete;\n    " << e.name
                << "& operator=(const " << e.name << "&) = delete;\n";
        }
        out << "    ~" << e.name << "() override = default;\n";
        NameSet types;
        for (const Attribute& a : e.attributes) {
            addFieldType(a.type, types);
            out << "\n    // " << a.name << " : " << (a.optional ? "optional " : "")
                << a.declaredType << "\n";
            if (a.optional) {
                out << "    bool has" << a.name << "() const { return "
                    << (a.hasFlag() ? flagName(a.name) : fieldName(a.name) + "() != nullptr")
                    << "; }\n";
            }
            writeAccessors(out, a.name, a.type, fieldName(a.name),
                           a.hasFlag() ? "        " + flagName(a.name) + " = true;\n" : "");
        }
        out << "\n    const RtClass* isA() const override;\n";
        if (e.isRoot()) out << "    EIfcSchemaId schemaId() const override;\n";
        if (e.hasOperations()) out << "    bool read(IfcInFiler& in) override;\n";
        if (e.isRoot()) out << "    void write(IfcOutFiler& out) const override;\n";
        if (!e.attributes.empty() || e.isRoot()) {
            out << "    Result getAttribute(const char* name, IfcVariant& value) const override;\n"
                   "    Result setAttribute(const char* name, const IfcVariant& value) override;\n";
        }
        out << "\n protected:\n    " << e.name << "() = default;\n";
        if (e.hasOperations()) {
            out << "    int validate(ValidationContext& context) override;\n    "
                << (e.isRoot() ? "virtual void writeFields(IfcOutFiler& out) const;\n"
                               : "void writeFields(IfcOutFiler& out) const override;\n");
        }
        if (!e.attributes.empty()) {
            out << "    static const Schema::Attribute s_attributes[" << e.attributes.size()
                << "];\n";
        }
        out << "\n private:\n    static RtClass s_type;\n";
        if (!e.attributes.empty()) out << "\n";
        for (const Attribute& a : e.attributes) out << field(a.type, fieldName(a.name));
        for (const Attribute& a : e.attributes) {
            if (a.hasFlag()) out << "    bool " << flagName(a.name) << " = false;\n";
        }
        out << "};\n";
        std::string head = include("schema");
        if (e.parent) head += include(e.parent->name);
        head += includes(types);
        if (!e.parent) head += "#include \"ovik/imp/ifcentity.h\"\n";
        writeClassHeader(e.name,
                         head + plainIncludes(e) + "#include \"ovik/schema/common/entity.h\"\n",
                         out.str());
    }

    static std::string plainIncludes(const Entity& e) {
        NameSet headers;
        for (const Attribute& a : e.attributes) {
            if (!a.type.isPlain()) continue;
            switch (a.type.plain) {
                case Plain::String:
                    headers.insert("xstring");
                    break;
                case Plain::Binary:
                    headers.insert("xbinary");
                    break;
                case Plain::Guid:
                    headers.insert("base64guid");
                    break;
                case Plain::Logical:
                    headers.insert("logical");
                    break;
                default:
                    break;
            }
        }
        std::string result;
        for (const std::string& h : headers) result += "#include \"ovik/imp/" + h + ".h\"\n";
        return result;
    }

    // -- sources --------------------------------------------------------------------------------

    unsigned hash(const std::string& name) const { return nameHash(schema_, name); }

    std::string hashName() const { return schema_.name + "Imp::schemaNameHash"; }

    std::string valueType(const Type& type) const {
        if (type.entity) return qualified(type.entity->name) + "::desc()";
        if (!type.isPlain()) return "&" + qualified(className(type)) + "::s_type";
        switch (type.plain) {
            case Plain::Real:
                return "Kind::Real";
            case Plain::Integer:
                return "Kind::Integer";
            case Plain::Unsigned:
                return "Kind::Unsigned";
            case Plain::Boolean:
                return "Kind::Boolean";
            case Plain::Logical:
                return "Kind::Logical";
            case Plain::String:
                return "Kind::String";
            case Plain::Binary:
                return "Kind::Binary";
            case Plain::Guid:
                return "Kind::Guid";
        }
        return {};
    }

    template <class T>
    static std::pair<std::size_t, std::size_t> part(const std::vector<T>& list, unsigned shard,
                                                    unsigned shards) {
        return {list.size() * shard / shards, list.size() * (shard + 1) / shards};
    }

    void writeShard(unsigned shard) const {
        std::ostringstream out;
        NameSet headers;
        forPart(schema_.enumerations, shard, headers, out);
        forPart(schema_.selects, shard, headers, out);
        forPart(schema_.aggregates, shard, headers, out);
        forPart(schema_.entities, shard, headers, out);
        const std::string text =
            banner_ +
            "// Tables and operations of a part of the classes.\n"
            "#include <cstddef>\n\n" +
            includes(headers) +
            "#include \"ovik/imp/outfiler.h\"\n"
            "#include \"ovik/imp/validation.h\"\n"
            "#include \"ovik/schema/common/aggregateengine.h\"\n"
            "#include \"ovik/schema/common/engine.h\"\n"
            "#include \"ovik/schema/" +
            lower_ +
            "/namehash.h\"\n\n"
            "// The tables hold offsets of fields. The classes have single inheritance without "
            "virtual\n"
            "// bases, where offsetof is sound.\n"
            "#pragma GCC diagnostic ignored \"-Winvalid-offsetof\"\n\n"
            "namespace Ovik {\n\nusing Schema::Kind;\n\n" +
            out.str() + "namespace " + schema_.name + "Imp {\nextern const int shard" +
            std::to_string(shard) + ";\nconst int shard" + std::to_string(shard) +
            " = 0;\n}  // namespace " + schema_.name + "Imp\n\n}  // namespace Ovik\n";
        writeIfChanged(folder_ / (lower_ + "_" + std::to_string(shard) + ".cpp"), text);
    }

    template <class T>
    void forPart(const std::vector<std::unique_ptr<T>>& list, unsigned shard, NameSet& headers,
                 std::ostream& out) const {
        const auto [first, last] = part(list, shard, shards_);
        for (std::size_t i = first; i < last; ++i) {
            headers.insert(list[i]->name);
            writeSource(*list[i], headers, out);
        }
    }

    void writeSource(const Enumeration& e, NameSet&, std::ostream& out) const {
        const std::string literals = "literalsOf" + e.name;
        out << "static constexpr Schema::Literal " << literals << "[] = {\n";
        for (const std::string& literal : e.literals) {
            out << "    {\"" << literal << "\", " << hash(literal) << "},\n";
        }
        out << "};\nconstinit const Schema::EnumType " << qualified(e.name)
            << "::s_type = {\n    \"" << e.name << "\", &" << hashName() << ", " << literals << ", "
            << e.defaultTag() << ", " << (e.hasNotDefined() ? "true" : "false") << "};\n\n";
    }

    void writeSource(const Select& s, NameSet& headers, std::ostream& out) const {
        const std::string cls = qualified(s.name);
        out << "constinit const Schema::Choice " << cls << "::s_choices[] = {\n";
        for (const Choice& choice : s.choices) {
            addEntity(choice.type, headers);
            addFieldType(choice.type, headers);
            const std::string name =
                choice.type.entity ? std::string("handle_") : fieldName(choice.name);
            out << "    {\"" << choice.name << "\", \"" << recordName(choice.name) << "\", "
                << hash(choice.name) << ", " << valueType(choice.type) << ",\n     offsetof("
                << s.name << ", " << name << ")},\n";
        }
        auto yesNo = [](bool value) { return value ? "true" : "false"; };
        out << "};\nconstinit const Schema::SelectType " << cls << "::s_type = {\n    \"" << s.name
            << "\", \"" << recordName(s.name) << "\", &" << hashName() << ", s_choices, "
            << (s.hasEntities() ? "offsetof(" + s.name + ", handle_)" : std::string("0"))
            << ",\n    " << yesNo(s.hasEntities()) << ", " << yesNo(s.hasSelects()) << ", "
            << yesNo(s.hasValues()) << ", " << yesNo(s.hasEntities() && s.numEntityChoices() == 1)
            << ", " << yesNo(s.numEntityChoices() > 0) << ",\n    &Schema::boxSelect<" << s.name
            << ">, &Schema::unboxSelect<" << s.name << ">};\n"
            << "const char* " << cls << "::choiceAsString() const {\n"
            << "    const Schema::Choice* current = Schema::currentChoice(*this, s_type);\n"
            << "    return current ? current->name : nullptr;\n}\n";
        for (const Choice& choice : s.choices) {
            writeReferenceAccessors(out, cls, choice.name, choice.type, "handle_",
                                    "    tag_ = e" + choice.name + ";\n");
        }
        out << "\n";
    }

    void writeReferenceAccessors(std::ostream& out, const std::string& cls, const std::string& name,
                                 const Type& type, const std::string& field,
                                 const std::string& afterSet) const {
        if (!type.entity) return;
        const std::string& target = type.entity->name;
        const std::string full = qualified(target);
        out << full << "* " << cls << "::get" << name << "() {\n    return Schema::cast<" << target
            << ">(" << field << "());\n}\nconst " << full << "* " << cls << "::get" << name
            << "() const {\n    return Schema::cast<" << target << ">(" << field << "());\n}\nvoid "
            << cls << "::set" << name << "(" << target << "* value) {\n    " << field
            << " = Schema::handleOf(value);\n"
            << afterSet << "}\n";
    }

    void writeSource(const Aggregate& a, NameSet& headers, std::ostream& out) const {
        addEntity(a.element, headers);
        addFieldType(a.element, headers);
        const std::string cls = qualified(a.name);
        out << "constinit const Schema::AggregateType " << cls << "::s_type =\n"
            << "    Schema::aggregateType<" << a.name << ", " << a.lower << ", " << a.upper << ">("
            << valueType(a.element) << ");\n";
        if (!a.element.entity) return;
        const std::string target = qualified(a.element.entity->name);
        out << "void " << cls << "::add(" << a.element.entity->name
            << "* entity) {\n    add(Schema::handleOf(entity));\n}\n"
            << target << "* " << cls << "::operator[](unsigned index) {\n    return at<" << target
            << ">(index);\n}\nconst " << target << "* " << cls
            << "::operator[](unsigned index) const {\n    return at<" << target << ">(index);\n}\n";
    }

    void writeSource(const Entity& e, NameSet& headers, std::ostream& out) const {
        const std::string cls = qualified(e.name);
        const std::string schemaId = "e" + schema_.name;
        if (e.parent) headers.insert(e.parent->name);
        out << "// " << e.name << "\n";
        writeDescriptor(e, out);
        out << "const RtClass* " << cls << "::isA() const {\n    return &s_type;\n}\n";
        if (e.isRoot()) {
            out << "EIfcSchemaId " << cls << "::schemaId() const {\n    return " << schemaId
                << ";\n}\nvoid " << cls << "::write(IfcOutFiler& out) const {\n"
                << "    out.writeRecord(*this, [&] { writeFields(out); });\n}\n";
        }
        if (!e.isAbstract) {
            out << qualified(e.name) << "* " << cls
                << "::create(IfcModel& model) {\n    auto* entity = new " << e.name
                << ";\n    entity->addToModel(model);\n";
            if (e.isKindOf("IfcRoot")) out << "    makeGuid(model, entity->getGlobalId());\n";
            out << "    return entity;\n}\n";
        }
        if (!e.attributes.empty()) {
            out << "constinit const Schema::Attribute " << cls << "::s_attributes[] = {\n";
            for (const Attribute& a : e.attributes) {
                addEntity(a.type, headers);
                addFieldType(a.type, headers);
                out << "    {\"" << a.name << "\", " << hash(a.name) << ", " << valueType(a.type)
                    << ",\n     offsetof(" << e.name << ", " << fieldName(a.name) << "), "
                    << (a.hasFlag() ? "offsetof(" + e.name + ", " + flagName(a.name) + ")" : "0")
                    << ", " << (a.optional ? "true" : "false") << "},\n";
            }
            out << "};\n";
        }
        if (e.hasOperations()) writeOperations(e, out);
        for (const Attribute& a : e.attributes) {
            writeReferenceAccessors(out, cls, a.name, a.type, fieldName(a.name), "");
        }
        out << "\n";
    }

    void writeDescriptor(const Entity& e, std::ostream& out) const {
        const std::string cls = qualified(e.name);
        // The chain of a concrete class without a supertype ends at the class itself.
        const std::string parent = e.parent       ? qualified(e.parent->name) + "::desc()"
                                   : e.isAbstract ? "IfcEntity::desc()"
                                                  : "nullptr";
        out << (e.isAbstract ? "constinit " : "") << "RtClass " << cls << "::s_type(\""
            << recordName(e.name) << "\", " << parent;
        if (!e.isAbstract) {
            out << ",\n    [](IfcModel* model) -> IfcEntity* { return create(*model); }, e"
                << schema_.name;
        }
        out << ");\n";
    }

    // Calls the operation of the ancestors, then does the class's own attributes. A class with
    // redeclared attributes does those of the redeclared supertype itself, without its operation.
    void writeOperations(const Entity& e, std::ostream& out) const {
        const std::string cls = qualified(e.name);
        const Entity* above = e.redeclared ? e.redeclared->parent : e.parent;
        std::vector<std::pair<std::string, std::string>> tables;  // table, derived set
        if (e.redeclared) {
            tables.emplace_back(e.redeclared->name + "::s_attributes",
                                ", " + std::to_string(e.derived) + "u");
        }
        if (!e.attributes.empty()) tables.emplace_back("s_attributes", "");

        if (!e.readByHand) {
            std::vector<std::string> steps;
            if (above) steps.push_back(above->name + "::read(in)");
            for (const auto& [table, derived] : tables) {
                steps.push_back("Schema::readAttributes(*this, " + table + ", in" + derived + ")");
            }
            out << "bool " << cls << "::read(IfcInFiler&" << (steps.empty() ? "" : " in")
                << ") {\n    return " << (steps.empty() ? "true" : join(steps, " &&\n           "))
                << ";\n}\n";
        }
        if (!e.validateByHand) {
            std::vector<std::string> steps;
            if (above) steps.push_back(above->name + "::validate(context)");
            for (const auto& [table, derived] : tables) {
                steps.push_back("Schema::validateAttributes(*this, " + table + ", context" +
                                derived + ")");
            }
            out << "int " << cls << "::validate(ValidationContext&"
                << (steps.empty() ? "" : " context") << ") {\n";
            for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
                out << "    if (const int code = " << steps[i]
                    << "; code != kValid) return code;\n";
            }
            out << "    return " << (steps.empty() ? "kValid" : steps.back()) << ";\n}\n";
        }
        out << "void " << cls << "::writeFields(IfcOutFiler&"
            << (above || !tables.empty() ? " out" : "") << ") const {\n";
        if (above) out << "    " << above->name << "::writeFields(out);\n";
        for (const auto& [table, derived] : tables) {
            out << "    Schema::writeAttributes(*this, " << table << ", out" << derived << ");\n";
        }
        out << "}\n";
        writeNameAccess(e, out);
    }

    void writeNameAccess(const Entity& e, std::ostream& out) const {
        if (e.attributes.empty() && !e.isRoot()) return;
        const std::string cls = qualified(e.name);
        for (const bool get : {true, false}) {
            const std::string operation = get ? "getAttribute" : "setAttribute";
            const std::string signature =
                operation + (get ? "(const char* name, IfcVariant& value) const"
                                 : "(const char* name, const IfcVariant& value)");
            out << "Result " << cls << "::" << signature << " {\n";
            const std::string base =
                (e.parent ? e.parent->name : "IfcEntity") + "::" + operation + "(name, value)";
            if (e.attributes.empty()) {
                out << "    return " << base << ";\n}\n";
                continue;
            }
            if (e.parent) out << "    if (" << base << " == ResultOk) return ResultOk;\n";
            out << "    return Schema::" << operation << "(*this, s_attributes, " << hashName()
                << ", name, value);\n}\n";
        }
    }

    static std::string join(const std::vector<std::string>& parts, const std::string& separator) {
        std::string result;
        for (const std::string& text : parts) result += (result.empty() ? "" : separator) + text;
        return result;
    }

    void writeSchemaSource() const {
        const std::string space = schema_.name + "Imp";
        const std::string create =
            "create" + schema_.name.substr(0, 1) + lower_.substr(1) + "Model";
        std::ostringstream out;
        out << banner_ << "// Making a model of the schema.\n"
            << "#include \"ovik/imp/modelimp.h\"\n"
            << include("schema") << "\nnamespace Ovik {\n\nnamespace " << space << " {\n\n"
            << "// Classes register themselves. Of a static library a program gets only the "
               "objects that\n"
               "// something refers to, so all of them are referred to from here.\n";
        for (unsigned i = 0; i < shards_; ++i) out << "extern const int shard" << i << ";\n";
        out << "extern const int* const shards[];\nconst int* const shards[] = {";
        for (unsigned i = 0; i < shards_; ++i) out << (i ? ", " : "") << "&shard" << i;
        out << "};\n\n}  // namespace " << space << "\n\nIfcModel* " << schema_.name
            << "::createModel(bool makeGuids, bool useTestGuid) {\n    return " << create
            << "(makeGuids, useTestGuid);\n}\n\n}  // namespace Ovik\n";
        writeIfChanged(folder_ / (lower_ + "_schema.cpp"), out.str());
    }

    const Schema& schema_;
    const std::filesystem::path folder_;
    const unsigned shards_;
    const std::string lower_;
    const std::string banner_;
};

}  // namespace

void writeSchema(const Schema& schema, const std::filesystem::path& folder, unsigned shards) {
    Writer(schema, folder, shards).run();
}

}  // namespace Ovik::Generator
