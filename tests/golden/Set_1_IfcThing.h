// Do not edit. Made by: ovik-schema-generator toy.schema FOLDER 6
#pragma once

#include "ovik/schema/common/aggregate.h"
#include "ovik/toy/schema.h"

namespace Ovik {

/// A `set 1 ? of IfcThing`.
class OVIK_API TOY::Set_1_IfcThing : public Schema::EntityAggregate<1> {
 public:
    using Schema::EntityAggregate<1>::add;
    /// Appends a reference to `entity`, a null one for null.
    void add(IfcThing* entity);
    /// The entity of an element; null if it leads nowhere or to another class. The index is not
    /// checked.
    IfcThing* operator[](unsigned index);
    const IfcThing* operator[](unsigned index) const;

    bool read(IfcInFiler& in) { return s_type.read(this, s_type, in); }
    void write(IfcOutFiler& out) const { s_type.write(this, s_type, out); }
    int validate(ValidationContext& context) { return s_type.validate(this, s_type, context); }

    static const Schema::AggregateType s_type;
};

}  // namespace Ovik
