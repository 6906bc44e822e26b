// The class of a select.
#include "accessors.h"
#include "classtext.h"
#include "fill.h"
#include "names.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kDeclaration = R"(
/// The select {{class}}.
class OVIK_API {{schema}}::{{class}} : public {{base}} {
 public:
    enum CTag : int {
{{tags}}
    };

    {{class}}(CTag tag = e{{default}}) : {{baseName}}(tag) {}
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
    &Schema::boxSelect<{{class}}>, &Schema::unboxSelect<{{class}}>{{room}}};

const char* {{schema}}::{{class}}::choiceAsString() const {
    const Schema::Choice* current = Schema::currentChoice(*this, s_type);
    return current ? current->name : nullptr;
}
{{accessors}}

)";

constexpr const char* kRow = R"(
    {"{{name}}", "{{record}}", {{hash}}, {{type}},
     {{place}}},
)";

// Choices that refer to an entity share one field. The other fields of a wide select are made when
// they are touched.
Member memberOf(const Select& select, const Choice& choice) {
    const std::string afterSet = "tag_ = e" + choice.name + ";";
    if (choice.type.entity) return {choice.name, choice.type, "handle_", afterSet};
    if (!select.isWide()) return {choice.name, choice.type, fieldName(choice.name), afterSet};
    const std::string access = "<" + fieldType(choice.type) + ">(e" + choice.name + ")";
    return {choice.name, choice.type, "touched" + access, afterSet, "field" + access};
}

std::string baseOf(const Schema& schema, const Select& select) {
    if (!select.isWide()) return "Schema::Select";
    NameSet types;
    for (const Choice& choice : select.choices) {
        if (!choice.type.entity)
            types.insert((choice.type.isPlain() ? "" : schema.name + "::") +
                         fieldType(choice.type));
    }
    return "Schema::WideSelectOf<" + schema.name + "::" + select.name + ", Schema::largestOf<" +
           join({types.begin(), types.end()}, ", ") + ">>";
}

std::string declaration(const Schema& schema, const Select& select) {
    std::string fields = each(select.choices, [&](const Choice& c) {
        return when(!select.isWide() && !c.type.entity, declareField(memberOf(select, c)));
    });
    if (select.hasEntities()) fields += "    EntityId handle_;\n";
    return fill(
        kDeclaration,
        {{"class", select.name},
         {"schema", schema.name},
         {"base", baseOf(schema, select)},
         {"baseName", select.isWide() ? "WideSelectOf" : "Select"},
         {"tags",
          each(select.choices, [](const Choice& c) { return "        e" + c.name + ",\n"; })},
         {"default", select.choices[0].name},
         {"choices", each(select.choices,
                          [&](const Choice& c) {
                              return fill(kChoice,
                                          {{"name", c.name},
                                           {"accessors", declareAccessors(memberOf(select, c))}});
                          })},
         {"validate", when(select.numEntityChoices() > 0, fill(kValidate, {}))},
         {"count", std::to_string(select.choices.size())},
         {"fields", when(!fields.empty(), "\n" + fields)}});
}

std::string definition(const Schema& schema, const Select& select) {
    const auto row = [&](const Choice& choice) {
        const bool isMadeLater = select.isWide() && !choice.type.entity;
        const std::string place =
            isMadeLater
                ? "0, &Schema::fieldOps<" + fieldType(choice.type) + ">"
                : "offsetof(" + select.name + ", " + memberOf(select, choice).field + "), nullptr";
        return fill(kRow, {{"name", choice.name},
                           {"record", recordName(choice.name)},
                           {"hash", std::to_string(schema.hash(choice.name))},
                           {"type", typeOf(schema, memberOf(select, choice))},
                           {"place", place}});
    };
    return fill(kDefinition, {{"class", select.name},
                              {"schema", schema.name},
                              {"hash", hashName(schema)},
                              {"rows", each(select.choices, row)},
                              {"room", when(select.isWide(), ", kRoom")},
                              {"accessors", each(select.choices, [&](const Choice& choice) {
                                   return defineAccessors(schema, select.name,
                                                          memberOf(select, choice));
                               })}});
}

}  // namespace

ClassText classText(const Schema& schema, const Select& select) {
    ClassText text;
    text.declarationHeaders = {
        headerOf(schema, "schema"), "ovik/imp/entityid.h",
        select.isWide() ? "ovik/schema/common/wideselect.h" : "ovik/schema/common/select.h"};
    for (const Choice& choice : select.choices) addHeaders(schema, choice.type, text);
    text.declaration = declaration(schema, select);
    text.definition = definition(schema, select);
    return text;
}

}  // namespace Ovik::Generator
