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
        return {{field}};
    }
    {{constType}} get{{name}}() const {
        return {{field}};
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
    const bool hasInitial = member.type.isPlain() && plainType(member.type.plain).byValue();
    const std::string initial =
        hasInitial ? " = " + std::string(plainType(member.type.plain).initial) : "";
    return "    " + fieldType(member.type) + " " + member.field + initial + ";\n";
}

std::string typeOf(const Schema& schema, const Member& member) {
    const Entity* target = member.type.entity;
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
