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
    {{mutableType}} get{{name}}() { return {{field}}; }
    {{constType}} get{{name}}() const { return {{field}}; }
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

void addFieldClass(const Type& type, NameSet& names) {
    if (!type.isPlain() && !type.entity) names.insert(className(type));
}

void addClasses(const Type& type, NameSet& names) {
    if (!type.isPlain()) names.insert(className(type));
}

}  // namespace Ovik::Generator
