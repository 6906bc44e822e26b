// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/imp/entityid.h"
#include "ovik/imp/xstring.h"
#include "ovik/schema/common/select.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// The select Measure.
class OVIK_API TOY::Measure : public Schema::Select {
 public:
    enum CTag : int {
        eLength,
        eCount,
        eAlias,
    };

    Measure(CTag tag = eLength) : Select(tag) {}
    operator CTag() const { return choice(); }
    CTag choice() const { return static_cast<CTag>(tag_); }
    bool operator==(CTag tag) const { return tag_ == tag; }
    /// The type name of the choice; null for a tag outside the select.
    const char* choiceAsString() const;

    bool isLength() const { return tag_ == eLength; }
    double getLength() { return length_; }
    double getLength() const { return length_; }
    void setLength(double value) {
        length_ = value;
        tag_ = eLength;
    }

    bool isCount() const { return tag_ == eCount; }
    int getCount() { return count_; }
    int getCount() const { return count_; }
    void setCount(int value) {
        count_ = value;
        tag_ = eCount;
    }

    bool isAlias() const { return tag_ == eAlias; }
    XString& getAlias() { return alias_; }
    const XString& getAlias() const { return alias_; }
    void setAlias(const XString& value) {
        alias_ = value;
        tag_ = eAlias;
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

    double length_ = 0;
    int count_ = 0;
    XString alias_;
};

}  // namespace Ovik
