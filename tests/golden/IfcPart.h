// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/schema/common/entity.h"
#include "ovik/toy/Finish.h"
#include "ovik/toy/IfcMeasure.h"
#include "ovik/toy/IfcThing.h"
#include "ovik/toy/List_0_Label.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// IfcPart, a kind of IfcThing.
class OVIK_API TOY::IfcPart : public TOY::IfcThing {
 public:
    /// A new entity of this class in `model`, which owns it.
    static IfcPart* create(IfcModel& model);
    static constexpr RtClass* desc() { return &s_type; }
    /// `entity` as one of this class, or null if it is none.
    static IfcPart* cast(IfcEntity* entity) { return Schema::cast<IfcPart>(entity); }
    static const IfcPart* cast(const IfcEntity* entity) { return Schema::cast<IfcPart>(entity); }
    ~IfcPart() override = default;

    // Owner : optional IfcGroup
    bool hasOwner() const { return owner_() != nullptr; }
    IfcGroup* getOwner();
    const IfcGroup* getOwner() const;
    void setOwner(IfcGroup* value);

    // Weight : IfcLength
    double getWeight() { return weight_; }
    double getWeight() const { return weight_; }
    void setWeight(double value) {
        weight_ = value;
        unmark(3);
    }

    // Finish : optional Finish
    bool hasFinish() const { return isMarked(4); }
    Finish& getFinish() { return finish_; }
    const Finish& getFinish() const { return finish_; }
    void setFinish(const Finish& value) {
        finish_ = value;
        mark(4);
    }

    // Marks : optional list 0 ? of Label
    bool hasMarks() const { return isMarked(5); }
    List_0_Label& getMarks() { return marks_; }
    const List_0_Label& getMarks() const { return marks_; }
    void setMarks(const List_0_Label& value) {
        marks_ = value;
        mark(5);
    }

    // Size : IfcMeasure
    IfcMeasure& getSize() { return size_; }
    const IfcMeasure& getSize() const { return size_; }
    void setSize(const IfcMeasure& value) {
        size_ = value;
        unmark(6);
    }

    const RtClass* isA() const override;
    bool read(IfcInFiler& in) override;
    Result getAttribute(const char* name, IfcVariant& value) const override;
    Result setAttribute(const char* name, const IfcVariant& value) override;

 protected:
    IfcPart() = default;
    int validate(ValidationContext& context) override;
    void writeFields(IfcOutFiler& out) const override;
    static const Schema::Attribute s_attributes[5];

 private:
    static RtClass s_type;
    static const Schema::AttributeTable s_table;

    EntityId owner_;
    double weight_ = 0;
    Finish finish_;
    List_0_Label marks_;
    IfcMeasure size_;
};

}  // namespace Ovik
