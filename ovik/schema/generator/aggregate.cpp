// The class of an aggregate.
#include "accessors.h"
#include "classtext.h"
#include "fill.h"
#include "names.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kDeclaration = R"(
/// A `{{declaredType}}`.
class OVIK_API {{schema}}::{{class}} : public {{base}} {
 public:
{{entityAccess}}
    bool read(IfcInFiler& in) {
        return s_type.read(this, s_type, in);
    }
    void write(IfcOutFiler& out) const {
        s_type.write(this, s_type, out);
    }
{{validate}}

    static const Schema::AggregateType s_type;
};
)";

constexpr const char* kEntityAccess = R"(
    using {{base}}::add;
    /// Appends a reference to `entity`, a null one for null.
    void add({{target}}* entity);
    /// The entity of an element; null if it leads nowhere or to another class. The index is not
    /// checked.
    {{target}}* operator[](unsigned index);
    const {{target}}* operator[](unsigned index) const;

)";

constexpr const char* kValidate = R"(
    int validate(ValidationContext& context) {
        return s_type.validate(this, s_type, context);
    }
)";

constexpr const char* kDefinition = R"(
constinit const Schema::AggregateType {{schema}}::{{class}}::s_type =
    Schema::aggregateType<{{class}}, {{lower}}, {{upper}}{{target}}>();
{{entityAccess}}

)";

constexpr const char* kEntityAccessDefinition = R"(

void {{schema}}::{{class}}::add({{target}}* entity) {
    add(Schema::handleOf(entity));
}

{{schema}}::{{target}}* {{schema}}::{{class}}::operator[](unsigned index) {
    return at<{{schema}}::{{target}}>(index);
}

const {{schema}}::{{target}}* {{schema}}::{{class}}::operator[](unsigned index) const {
    return at<{{schema}}::{{target}}>(index);
}
)";

std::string baseClass(const Schema& schema, const Aggregate& aggregate) {
    const Type& element = aggregate.element;
    const std::string space = element.isPlain() ? "" : schema.name + "::";
    return (element.entity ? "Schema::EntityAggregate<"
                           : "Schema::ValueAggregate<" + space + fieldType(element) + ", ") +
           std::to_string(aggregate.lower) +
           when(aggregate.upper > 0, ", " + std::to_string(aggregate.upper)) + ">";
}

std::string declaration(const Schema& schema, const Aggregate& aggregate) {
    const std::string base = baseClass(schema, aggregate);
    const Entity* target = aggregate.element.entity;
    return fill(kDeclaration,
                {{"class", aggregate.name},
                 {"schema", schema.name},
                 {"declaredType", aggregate.declaredType},
                 {"base", base},
                 {"entityAccess",
                  target ? fill(kEntityAccess, {{"base", base}, {"target", target->name}}) : ""},
                 {"validate", when(aggregate.canRefer(), fill(kValidate, {}))}});
}

std::string definition(const Schema& schema, const Aggregate& aggregate) {
    const Entity* target = aggregate.element.entity;
    return fill(kDefinition,
                {{"class", aggregate.name},
                 {"schema", schema.name},
                 {"lower", std::to_string(aggregate.lower)},
                 {"upper", std::to_string(aggregate.upper)},
                 {"target", target ? ", " + schema.name + "::" + target->name : ""},
                 {"entityAccess", target ? fill(kEntityAccessDefinition, {{"class", aggregate.name},
                                                                          {"schema", schema.name},
                                                                          {"target", target->name}})
                                         : ""}});
}

}  // namespace

ClassText classText(const Schema& schema, const Aggregate& aggregate) {
    ClassText text;
    text.declarationHeaders = {headerOf(schema, "schema"), "ovik/schema/common/aggregate.h"};
    addHeaders(schema, aggregate.element, text);
    text.declaration = declaration(schema, aggregate);
    text.definition = definition(schema, aggregate);
    return text;
}

}  // namespace Ovik::Generator
