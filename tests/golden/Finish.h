// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/schema/common/enumeration.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// The enumeration Finish.
class OVIK_API TOY::Finish : public Schema::Enumeration {
 public:
    enum ETag : int {
        eMATT,
        eGLOSSY,
        eNOTDEFINED,
    };

    Finish(ETag tag = eNOTDEFINED) : Enumeration(tag) {}
    operator ETag() const { return static_cast<ETag>(tag_); }

    /// The literal as it stands in a file without its dots; null for a tag outside.
    const char* asString() const { return Schema::enumText(*this, s_type); }
    /// Takes the tag of a literal; false, leaving the tag, if it is none.
    bool fromString(const char* text) { return Schema::setEnumText(*this, s_type, text); }
    bool read(IfcInFiler& in) { return Schema::readEnum(*this, s_type, in); }
    void write(IfcOutFiler& out) const { Schema::writeEnum(*this, s_type, out); }

    static const Schema::EnumType s_type;
};

}  // namespace Ovik
