// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/imp/entityid.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/wideselect.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// The select IfcMeasure.
class OVIK_API TOY::IfcMeasure
    : public Schema::WideSelectOf<TOY::IfcMeasure, Schema::largestOf<XString, double, int>> {
 public:
    enum CTag : int {
        eIfcLength,
        eIfcCount,
        eIfcAlias,
    };

    IfcMeasure(CTag tag = eIfcLength) : WideSelectOf(tag) {}
    operator CTag() const { return choice(); }
    CTag choice() const { return static_cast<CTag>(tag_); }
    bool operator==(CTag tag) const { return tag_ == tag; }
    /// The type name of the choice; null for a tag outside the select.
    const char* choiceAsString() const;

    bool isIfcLength() const { return tag_ == eIfcLength; }
    double getIfcLength() { return field<double>(eIfcLength); }
    double getIfcLength() const { return field<double>(eIfcLength); }
    void setIfcLength(double value) {
        touched<double>(eIfcLength) = value;
        tag_ = eIfcLength;
    }

    bool isIfcCount() const { return tag_ == eIfcCount; }
    int getIfcCount() { return field<int>(eIfcCount); }
    int getIfcCount() const { return field<int>(eIfcCount); }
    void setIfcCount(int value) {
        touched<int>(eIfcCount) = value;
        tag_ = eIfcCount;
    }

    bool isIfcAlias() const { return tag_ == eIfcAlias; }
    XString& getIfcAlias() { return touched<XString>(eIfcAlias); }
    const XString& getIfcAlias() const { return field<XString>(eIfcAlias); }
    void setIfcAlias(const XString& value) {
        touched<XString>(eIfcAlias) = value;
        tag_ = eIfcAlias;
    }

    /// The value of the choice.
    void getAttribute(IfcVariant& value) const { Schema::getSelect(*this, s_type, value); }
    /// Makes the choice `name` with this value.
    Result setAttribute(const char* name, const IfcVariant& value) {
        return Schema::setSelect(*this, s_type, name, value);
    }
    bool read(IfcInFiler& in) { return Schema::readSelect(*this, s_type, in); }
    void write(IfcOutFiler& out) const { Schema::writeSelect(*this, s_type, out); }

    static const Schema::SelectType s_type;

 private:
    static const Schema::Choice s_choices[3];
};

}  // namespace Ovik
