// The members for one value of a class.
#include "accessors.h"

#include "fill.h"
#include "names.h"
#include "plaintypes.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kReferenceDeclarations = R"(
    {{target}}* get{{name}}();
    const {{target}}* get{{name}}() const;
    void set{{name}}({{target}}* value);
)";

constexpr const char* kReferenceDefinitions = R"(

{{schema}}::{{target}}* {{schema}}::{{class}}::get{{name}}() {
    return Schema::cast<{{target}}>({{field}}());
}

const {{schema}}::{{target}}* {{schema}}::{{class}}::get{{name}}() const {
    return Schema::cast<{{target}}>({{field}}());
}

void {{schema}}::{{class}}::set{{name}}({{target}}* value) {
    {{field}} = Schema::handleOf(value);
{{afterSet}}
}
)";

constexpr const char* kValueAccessors = R"(
    {{mutableType}} get{{name}}() {
        return {{mutableField}};
    }
    {{constType}} get{{name}}() const {
        return {{constField}};
    }
    void set{{name}}({{argumentType}} value) {
        {{field}} = value;
{{afterSet}}
    }
)";

}  // namespace

std::string declareAccessors(const Member& member) {
    if (member.type.entity) {
        return fill(kReferenceDeclarations,
                    {{"name", member.name}, {"target", member.type.entity->name}});
    }
    return fill(
        kValueAccessors,
        {{"name", member.name},
         {"field", member.field},
         {"constField", member.constField},
         {"mutableField", isByValue(member.type) ? member.constField : member.field},
         {"mutableType", mutableType(member.type)},
         {"constType", constType(member.type)},
         {"argumentType", argumentType(member.type)},
         {"afterSet", when(!member.afterSet.empty(), "        " + member.afterSet + "\n")}});
}

std::string defineAccessors(const Schema& schema, const std::string& cls, const Member& member) {
    if (!member.type.entity) return {};
    return fill(kReferenceDefinitions,
                {{"schema", schema.name},
                 {"class", cls},
                 {"name", member.name},
                 {"target", member.type.entity->name},
                 {"field", member.field},
                 {"afterSet", when(!member.afterSet.empty(), "    " + member.afterSet + "\n")}});
}

std::string declareField(const Member& member) {
    const std::string initial =
        isByValue(member.type) ? " = " + std::string(plainType(member.type.plain).initial) : "";
    return "    " + fieldType(member.type) + " " + member.field + initial + ";\n";
}

std::string typeOf(const Schema& schema, const Member& member) {
    const Entity* target = member.type.entity;
    // A field that is made when it is touched has no declaration to ask.
    if (member.constField != member.field) return "typeOf<" + fieldType(member.type) + ">()";
    return "typeOf<decltype(" + member.field + ")" +
           (target ? ", " + schema.name + "::" + target->name : "") + ">()";
}

void addHeaders(const Schema& schema, const Type& type, ClassText& text) {
    if (type.isPlain()) {
        const std::string_view header = plainType(type.plain).header;
        if (!header.empty()) text.declarationHeaders.emplace(header);
        return;
    }
    const std::string header = headerOf(schema, className(type));
    if (!type.entity) text.declarationHeaders.insert(header);
    text.definitionHeaders.insert(header);
}

}  // namespace Ovik::Generator
