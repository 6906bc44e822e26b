// The class of an entity. Everything that it does is in its table and in the engine behind it: what
// is written here are declarations, tables and forwards.
#include "accessors.h"
#include "classtext.h"
#include "fill.h"
#include "names.h"

namespace Ovik::Generator {
namespace {

// -- declaration ----------------------------------------------------------------------------------

constexpr const char* kDeclaration = R"(
/// {{class}}{{abstract}}{{kindOf}}.
class OVIK_API {{schema}}::{{class}} : public {{parent}} {
 public:
{{create}}
    static constexpr RtClass* desc() {
        return &s_type;
    }
    /// `entity` as one of this class, or null if it is none.
    static {{class}}* cast(IfcEntity* entity) {
        return Schema::cast<{{class}}>(entity);
    }
    static const {{class}}* cast(const IfcEntity* entity) {
        return Schema::cast<{{class}}>(entity);
    }
{{noCopies}}
    ~{{class}}() override = default;
{{attributes}}

    const RtClass* isA() const override;
{{schemaId}}
{{read}}
{{write}}
{{nameAccess}}

 protected:
    {{class}}() = default;
{{protectedOperations}}
{{table}}

 private:
    static RtClass s_type;
    static const Schema::AttributeTable s_table;
{{fields}}
};
)";

constexpr const char* kCreate = R"(
    /// A new entity of this class in `model`, which owns it.
    static {{class}}* create(IfcModel& model);
)";

constexpr const char* kNoCopies = R"(
    {{class}}(const {{class}}&) = delete;
    {{class}}& operator=(const {{class}}&) = delete;
)";

constexpr const char* kAttribute = R"(

    // {{name}} : {{optional}}{{declaredType}}
{{has}}
{{accessors}}
)";

constexpr const char* kHas = R"(
    bool has{{name}}() const {
        return {{present}};
    }
)";

constexpr const char* kNameAccess = R"(
    Result getAttribute(const char* name, IfcVariant& value) const override;
    Result setAttribute(const char* name, const IfcVariant& value) override;
)";

Member memberOf(const Attribute& attribute) {
    const std::string position = std::to_string(attribute.position);
    const std::string afterSet = !attribute.optional     ? "unmark(" + position + ");"
                                 : attribute.type.entity ? ""
                                                         : "mark(" + position + ");";
    return {attribute.name, attribute.type, fieldName(attribute.name), afterSet};
}

std::string declareHas(const Attribute& attribute) {
    return fill(kHas, {{"name", attribute.name},
                       {"present", attribute.type.entity
                                       ? fieldName(attribute.name) + "() != nullptr"
                                       : "isMarked(" + std::to_string(attribute.position) + ")"}});
}

std::string declareAttribute(const Attribute& attribute) {
    return fill(kAttribute, {{"name", attribute.name},
                             {"optional", when(attribute.optional, "optional ")},
                             {"declaredType", attribute.declaredType},
                             {"has", when(attribute.optional, declareHas(attribute))},
                             {"accessors", declareAccessors(memberOf(attribute))}});
}

// A root declares `writeFields`; its descendants override it.
std::string declareProtectedOperations(const Entity& entity) {
    return std::string("    int validate(ValidationContext& context) override;\n") +
           (entity.isRoot() ? "    virtual void writeFields(IfcOutFiler& out) const;\n"
                            : "    void writeFields(IfcOutFiler& out) const override;\n");
}

std::string declareFields(const Entity& entity) {
    return when(!entity.attributes.empty(), "\n") +
           each(entity.attributes, [](const Attribute& a) { return declareField(memberOf(a)); });
}

std::string declaration(const Schema& schema, const Entity& entity) {
    const bool root = entity.isRoot();
    const std::string& cls = entity.name;
    return fill(
        kDeclaration,
        {{"class", cls},
         {"schema", schema.name},
         {"abstract", when(entity.isAbstract, ", abstract")},
         {"kindOf", root ? "" : ", a kind of " + entity.parent->name},
         {"parent", root ? "IfcEntity" : schema.name + "::" + entity.parent->name},
         {"create", when(!entity.isAbstract, fill(kCreate, {{"class", cls}}))},
         {"noCopies", when(root, fill(kNoCopies, {{"class", cls}}))},
         {"attributes", each(entity.attributes, declareAttribute)},
         {"schemaId", when(root, "    EIfcSchemaId schemaId() const override;\n")},
         {"read", when(entity.hasOperations(), "    bool read(IfcInFiler& in) override;\n")},
         {"write", when(root, "    void write(IfcOutFiler& out) const override;\n")},
         {"nameAccess", when(entity.hasNameAccess(), fill(kNameAccess, {}))},
         {"protectedOperations", when(entity.hasOperations(), declareProtectedOperations(entity))},
         {"table",
          when(!entity.attributes.empty(), "    static const Schema::Attribute s_attributes[" +
                                               std::to_string(entity.attributes.size()) + "];\n")},
         {"fields", declareFields(entity)}});
}

// -- definition -----------------------------------------------------------------------------------

constexpr const char* kDefinition = R"(
// {{class}}
{{descriptor}}

const RtClass* {{schema}}::{{class}}::isA() const {
    return &s_type;
}
{{rootOperations}}
{{create}}
{{table}}
{{operations}}
{{nameAccess}}
{{accessors}}

)";

constexpr const char* kDescriptor = R"(
constinit const Schema::AttributeTable {{schema}}::{{class}}::s_table = {
    {{attributes}}, &{{hash}}};
constinit RtClass {{schema}}::{{class}}::s_type("{{record}}", {{parent}},
    {{creator}}, &s_table);
)";

constexpr const char* kRootOperations = R"(

EIfcSchemaId {{schema}}::{{class}}::schemaId() const {
    return kSchemaId;
}

void {{schema}}::{{class}}::write(IfcOutFiler& out) const {
    out.writeRecord(*this, [&] { writeFields(out); });
}
)";

constexpr const char* kCreateDefinition = R"(

{{schema}}::{{class}}* {{schema}}::{{class}}::create(IfcModel& model) {
    auto* entity = new {{class}};
    entity->addToModel(model);
{{makeGuid}}
    return entity;
}
)";

constexpr const char* kTable = R"(

static_assert(Schema::Internals::entityBeginsWith<{{schema}}::{{class}}, IfcEntity>);
constinit const Schema::Attribute {{schema}}::{{class}}::s_attributes[] = {
{{rows}}
};
)";

constexpr const char* kRow = R"(
    {"{{name}}", {{hash}}, {{type}},
     offsetof({{class}}, {{field}}), {{position}}, {{optional}}},
)";

constexpr const char* kRead = R"(

bool {{schema}}::{{class}}::read(IfcInFiler&{{in}}) {
    return {{steps}};
}
)";

constexpr const char* kValidate = R"(

int {{schema}}::{{class}}::validate(ValidationContext&{{context}}) {
{{steps}}
    return {{last}};
}
)";

constexpr const char* kWriteFields = R"(

void {{schema}}::{{class}}::writeFields(IfcOutFiler&{{out}}) const {
{{steps}}
}
)";

constexpr const char* kOwnNameAccess = R"(

Result {{schema}}::{{class}}::getAttribute(const char* name, IfcVariant& value) const {
{{getInherited}}
    return Schema::getAttribute(*this, s_attributes, {{hash}}, name, value);
}

Result {{schema}}::{{class}}::setAttribute(const char* name, const IfcVariant& value) {
{{setInherited}}
    return Schema::setAttribute(*this, s_attributes, {{hash}}, name, value);
}
)";

constexpr const char* kNoNameAccess = R"(

Result {{schema}}::{{class}}::getAttribute(const char* name, IfcVariant& value) const {
    return IfcEntity::getAttribute(name, value);
}

Result {{schema}}::{{class}}::setAttribute(const char* name, const IfcVariant& value) {
    return IfcEntity::setAttribute(name, value);
}
)";

std::string defineDescriptor(const Schema& schema, const Entity& entity) {
    // The chain of a concrete class without a supertype ends at the class itself.
    const std::string parent = entity.parent ? schema.name + "::" + entity.parent->name + "::desc()"
                               : entity.isAbstract ? "IfcEntity::desc()"
                                                   : "nullptr";
    const char* const creator = "[](IfcModel* model) -> IfcEntity* { return create(*model); }";
    return fill(kDescriptor, {{"schema", schema.name},
                              {"class", entity.name},
                              {"attributes", entity.attributes.empty() ? "{}" : "s_attributes"},
                              {"hash", hashName(schema)},
                              {"record", recordName(entity.name)},
                              {"parent", parent},
                              {"creator", entity.isAbstract ? "nullptr" : creator}});
}

std::string defineRootOperations(const Schema& schema, const Entity& entity) {
    return fill(kRootOperations, {{"schema", schema.name}, {"class", entity.name}});
}

std::string defineCreate(const Schema& schema, const Entity& entity) {
    return fill(
        kCreateDefinition,
        {{"schema", schema.name},
         {"class", entity.name},
         {"makeGuid", when(!entity.identifier().empty(),
                           "    makeGuid(model, entity->get" + entity.identifier() + "());\n")}});
}

std::string defineTable(const Schema& schema, const Entity& entity) {
    const auto row = [&](const Attribute& a) {
        return fill(kRow, {{"name", a.name},
                           {"hash", std::to_string(schema.hash(a.name))},
                           {"type", typeOf(schema, memberOf(a))},
                           {"class", entity.name},
                           {"field", fieldName(a.name)},
                           {"position", std::to_string(a.position)},
                           {"optional", boolean(a.optional)}});
    };
    return fill(
        kTable,
        {{"schema", schema.name}, {"class", entity.name}, {"rows", each(entity.attributes, row)}});
}

/// What an operation of a class does, in this order: the operation of the ancestors, then the
/// class's own attributes. A class with redeclared attributes does those of the redeclared
/// supertype itself, without its operation.
struct Steps {
    explicit Steps(const Entity& entity)
        : above(entity.redeclared ? entity.redeclared->parent : entity.parent) {
        if (entity.redeclared) {
            tables.push_back({entity.redeclared->name + "::s_attributes",
                              ", " + std::to_string(entity.derived) + "u"});
        }
        if (!entity.attributes.empty()) tables.push_back({"s_attributes", ""});
    }

    /// The calls of `operation`, which takes `argument`.
    std::vector<std::string> calls(const std::string& operation, const std::string& forTable,
                                   const std::string& argument) const {
        std::vector<std::string> result;
        if (above) result.push_back(above->name + "::" + operation + "(" + argument + ")");
        for (const Table& table : tables) {
            result.push_back(
                fill("Schema::{{operation}}(*this, {{table}}, {{argument}}{{derived}})",
                     {{"operation", forTable},
                      {"table", table.name},
                      {"argument", argument},
                      {"derived", table.derived}}));
        }
        return result;
    }

    struct Table {
        std::string name;
        std::string derived;  ///< the argument that tells which attributes are derived, if any are
    };
    const Entity* above;
    std::vector<Table> tables;
};

std::string defineRead(const Schema& schema, const Entity& entity) {
    const auto calls = Steps(entity).calls("read", "readAttributes", "in");
    return fill(kRead, {{"schema", schema.name},
                        {"class", entity.name},
                        {"in", when(!calls.empty(), " in")},
                        {"steps", calls.empty() ? "true" : join(calls, " &&\n           ")}});
}

std::string defineValidate(const Schema& schema, const Entity& entity) {
    auto calls = Steps(entity).calls("validate", "validateAttributes", "context");
    const bool any = !calls.empty();
    std::string last = "kValid";
    if (any) {
        last = calls.back();
        calls.pop_back();
    }
    const auto step = [](const std::string& call) {
        return "    if (const int code = " + call + "; code != kValid) return code;\n";
    };
    return fill(kValidate, {{"schema", schema.name},
                            {"class", entity.name},
                            {"context", when(any, " context")},
                            {"steps", each(calls, step)},
                            {"last", last}});
}

std::string defineWriteFields(const Schema& schema, const Entity& entity) {
    const auto calls = Steps(entity).calls("writeFields", "writeAttributes", "out");
    return fill(
        kWriteFields,
        {{"schema", schema.name},
         {"class", entity.name},
         {"out", when(!calls.empty(), " out")},
         {"steps", each(calls, [](const std::string& call) { return "    " + call + ";\n"; })}});
}

// A class asks its ancestors first.
std::string defineNameAccess(const Schema& schema, const Entity& entity) {
    const auto inherited = [&](const std::string& operation) {
        return entity.parent ? "    if (" + entity.parent->name + "::" + operation +
                                   "(name, value) == ResultOk) return ResultOk;\n"
                             : std::string();
    };
    return fill(entity.attributes.empty() ? kNoNameAccess : kOwnNameAccess,
                {{"schema", schema.name},
                 {"class", entity.name},
                 {"hash", hashName(schema)},
                 {"getInherited", inherited("getAttribute")},
                 {"setInherited", inherited("setAttribute")}});
}

std::string defineOperations(const Schema& schema, const Entity& entity) {
    return when(!entity.readByHand, defineRead(schema, entity)) +
           when(!entity.validateByHand, defineValidate(schema, entity)) +
           defineWriteFields(schema, entity);
}

std::string definition(const Schema& schema, const Entity& entity) {
    return fill(kDefinition,
                {{"schema", schema.name},
                 {"class", entity.name},
                 {"descriptor", defineDescriptor(schema, entity)},
                 {"rootOperations", when(entity.isRoot(), defineRootOperations(schema, entity))},
                 {"create", when(!entity.isAbstract, defineCreate(schema, entity))},
                 {"table", when(!entity.attributes.empty(), defineTable(schema, entity))},
                 {"operations", when(entity.hasOperations(), defineOperations(schema, entity))},
                 {"nameAccess", when(entity.hasNameAccess(), defineNameAccess(schema, entity))},
                 {"accessors", each(entity.attributes, [&](const Attribute& a) {
                      return defineAccessors(schema, entity.name, memberOf(a));
                  })}});
}

}  // namespace

ClassText classText(const Schema& schema, const Entity& entity) {
    ClassText text;
    const std::string base =
        entity.parent ? headerOf(schema, entity.parent->name) : "ovik/imp/ifcentity.h";
    text.declarationHeaders = {headerOf(schema, "schema"), base, "ovik/schema/common/entity.h"};
    text.definitionHeaders = {base};
    for (const Attribute& attribute : entity.attributes) addHeaders(schema, attribute.type, text);
    text.declaration = declaration(schema, entity);
    text.definition = definition(schema, entity);
    return text;
}

}  // namespace Ovik::Generator
