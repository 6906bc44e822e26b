// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/schema/common/entity.h"
#include "ovik/toy/Finish.h"
#include "ovik/toy/List_0_Label.h"
#include "ovik/toy/Measure.h"
#include "ovik/toy/Thing.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// Part, a kind of Thing.
class OVIK_API TOY::Part : public TOY::Thing {
 public:
    /// A new entity of this class in `model`, which owns it.
    static Part* create(IfcModel& model);
    static constexpr RtClass* desc() { return &s_type; }
    /// `entity` as one of this class, or null if it is none.
    static Part* cast(IfcEntity* entity) { return Schema::cast<Part>(entity); }
    static const Part* cast(const IfcEntity* entity) { return Schema::cast<Part>(entity); }
    ~Part() override = default;

    // Owner : optional Group
    bool hasOwner() const { return owner_() != nullptr; }
    Group* getOwner();
    const Group* getOwner() const;
    void setOwner(Group* value);

    // Weight : Length
    double getWeight() { return weight_; }
    double getWeight() const { return weight_; }
    void setWeight(double value) { weight_ = value; }

    // Finish : optional Finish
    bool hasFinish() const { return hasFinish_; }
    Finish& getFinish() { return finish_; }
    const Finish& getFinish() const { return finish_; }
    void setFinish(const Finish& value) {
        finish_ = value;
        hasFinish_ = true;
    }

    // Marks : optional list 0 ? of Label
    bool hasMarks() const { return hasMarks_; }
    List_0_Label& getMarks() { return marks_; }
    const List_0_Label& getMarks() const { return marks_; }
    void setMarks(const List_0_Label& value) {
        marks_ = value;
        hasMarks_ = true;
    }

    // Size : Measure
    Measure& getSize() { return size_; }
    const Measure& getSize() const { return size_; }
    void setSize(const Measure& value) { size_ = value; }

    const RtClass* isA() const override;
    bool read(IfcInFiler& in) override;
    Result getAttribute(const char* name, IfcVariant& value) const override;
    Result setAttribute(const char* name, const IfcVariant& value) override;

 protected:
    Part() = default;
    int validate(ValidationContext& context) override;
    void writeFields(IfcOutFiler& out) const override;
    static const Schema::Attribute s_attributes[5];

 private:
    static RtClass s_type;

    EntityId owner_;
    double weight_ = 0;
    Finish finish_;
    List_0_Label marks_;
    Measure size_;
    bool hasFinish_ = false;
    bool hasMarks_ = false;
};

}  // namespace Ovik
