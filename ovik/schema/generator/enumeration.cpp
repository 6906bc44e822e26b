// The class of an enumeration.
#include "classtext.h"
#include "fill.h"
#include "names.h"

namespace Ovik::Generator {
namespace {

constexpr const char* kDeclaration = R"(
/// The enumeration {{class}}.
class OVIK_API {{schema}}::{{class}} : public Schema::Enumeration {
 public:
    enum ETag : int {
{{tags}}
    };

    {{class}}(ETag tag = e{{default}}) : Enumeration(tag) {}
    operator ETag() const {
        return static_cast<ETag>(tag_);
    }

    /// The literal as it stands in a file without its dots; null for a tag outside.
    const char* asString() const {
        return Schema::enumText(*this, s_type);
    }
    /// Takes the tag of a literal; false, leaving the tag, if it is none.
    bool fromString(const char* text) {
        return Schema::setEnumText(*this, s_type, text);
    }
    bool read(IfcInFiler& in) {
        return Schema::readEnum(*this, s_type, in);
    }
    void write(IfcOutFiler& out) const {
        Schema::writeEnum(*this, s_type, out);
    }

    static const Schema::EnumType s_type;
};
)";

constexpr const char* kDefinition = R"(
static constexpr Schema::Literal literalsOf{{class}}[] = {
{{literals}}
};
constinit const Schema::EnumType {{schema}}::{{class}}::s_type = {
    "{{class}}", &{{hash}},
    literalsOf{{class}}};

)";

}  // namespace

ClassText classText(const Schema& schema, const Enumeration& enumeration) {
    ClassText text;
    text.declarationHeaders = {headerOf(schema, "schema"), "ovik/schema/common/enumeration.h"};
    text.declaration = fill(
        kDeclaration,
        {{"class", enumeration.name},
         {"schema", schema.name},
         {"tags", each(enumeration.literals,
                       [](const std::string& literal) { return "        e" + literal + ",\n"; })},
         {"default", enumeration.literals[enumeration.defaultTag()]}});
    text.definition = fill(
        kDefinition,
        {{"class", enumeration.name},
         {"schema", schema.name},
         {"hash", hashName(schema)},
         {"literals", each(enumeration.literals, [&](const std::string& literal) {
              return fill("    {\"{{literal}}\", {{hash}}},\n",
                          {{"literal", literal}, {"hash", std::to_string(schema.hash(literal))}});
          })}});
    return text;
}

}  // namespace Ovik::Generator
