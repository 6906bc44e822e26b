// The class of a select.
#include "accessors.h"
#include "classtext.h"
#include "fill.h"
#include "names.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kDeclaration = R"(
/// The select {{class}}.
class OVIK_API {{schema}}::{{class}} : public Schema::Select {
 public:
    enum CTag : int {
{{tags}}
    };

    {{class}}(CTag tag = e{{default}}) : Select(tag) {}
    operator CTag() const {
        return choice();
    }
    CTag choice() const {
        return static_cast<CTag>(tag_);
    }
    bool operator==(CTag tag) const {
        return tag_ == tag;
    }
    /// The type name of the choice; null for a tag outside the select.
    const char* choiceAsString() const;
{{choices}}

    /// The value of the choice.
    void getAttribute(IfcVariant& value) const {
        Schema::getSelect(*this, s_type, value);
    }
    /// Makes the choice `name` with this value.
    Result setAttribute(const char* name, const IfcVariant& value) {
        return Schema::setSelect(*this, s_type, name, value);
    }
    bool read(IfcInFiler& in) {
        return Schema::readSelect(*this, s_type, in);
    }
    void write(IfcOutFiler& out) const {
        Schema::writeSelect(*this, s_type, out);
    }
{{validate}}

    static const Schema::SelectType s_type;

 private:
    static const Schema::Choice s_choices[{{count}}];

{{fields}}
{{handle}}
};
)";

constexpr const char* kChoice = R"(

    bool is{{name}}() const {
        return tag_ == e{{name}};
    }
{{accessors}}
)";

constexpr const char* kValidate = R"(
    int validate(ValidationContext& context) {
        return Schema::validateSelect(*this, s_type, context);
    }
)";

constexpr const char* kDefinition = R"(
static_assert(Schema::Internals::selectBeginsWith<{{schema}}::{{class}}, Schema::Select>);
constexpr Schema::Choice {{schema}}::{{class}}::s_choices[] = {
{{rows}}
};
constinit const Schema::SelectType {{schema}}::{{class}}::s_type = {
    "{{class}}", &{{hash}}, s_choices,
    &Schema::boxSelect<{{class}}>, &Schema::unboxSelect<{{class}}>};

const char* {{schema}}::{{class}}::choiceAsString() const {
    const Schema::Choice* current = Schema::currentChoice(*this, s_type);
    return current ? current->name : nullptr;
}
{{accessors}}

)";

constexpr const char* kRow = R"(
    {"{{name}}", "{{record}}", {{hash}}, {{type}},
     offsetof({{class}}, {{field}})},
)";

// Choices that refer to an entity share one field.
Member memberOf(const Choice& choice) {
    return {choice.name, choice.type, choice.type.entity ? "handle_" : fieldName(choice.name),
            "tag_ = e" + choice.name + ";"};
}

std::string declaration(const Schema& schema, const Select& select) {
    return fill(
        kDeclaration,
        {{"class", select.name},
         {"schema", schema.name},
         {"tags",
          each(select.choices, [](const Choice& c) { return "        e" + c.name + ",\n"; })},
         {"default", select.choices[0].name},
         {"choices", each(select.choices,
                          [](const Choice& c) {
                              return fill(kChoice, {{"name", c.name},
                                                    {"accessors", declareAccessors(memberOf(c))}});
                          })},
         {"validate", when(select.numEntityChoices() > 0, fill(kValidate, {}))},
         {"count", std::to_string(select.choices.size())},
         {"fields",
          each(select.choices,
               [](const Choice& c) { return when(!c.type.entity, declareField(memberOf(c))); })},
         {"handle", when(select.hasEntities(), "    EntityId handle_;\n")}});
}

std::string definition(const Schema& schema, const Select& select) {
    const auto row = [&](const Choice& choice) {
        return fill(kRow, {{"name", choice.name},
                           {"record", recordName(choice.name)},
                           {"hash", std::to_string(schema.hash(choice.name))},
                           {"type", typeOf(schema, memberOf(choice))},
                           {"class", select.name},
                           {"field", memberOf(choice).field}});
    };
    return fill(kDefinition, {{"class", select.name},
                              {"schema", schema.name},
                              {"hash", hashName(schema)},
                              {"rows", each(select.choices, row)},
                              {"accessors", each(select.choices, [&](const Choice& choice) {
                                   return defineAccessors(schema, select.name, memberOf(choice));
                               })}});
}

}  // namespace

ClassText classText(const Schema& schema, const Select& select) {
    ClassText text;
    text.declarationHeaders = {headerOf(schema, "schema"), "ovik/imp/entityid.h",
                               "ovik/schema/common/select.h"};
    for (const Choice& choice : select.choices) addHeaders(schema, choice.type, text);
    text.declaration = declaration(schema, select);
    text.definition = definition(schema, select);
    return text;
}

}  // namespace Ovik::Generator
