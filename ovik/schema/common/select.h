// What all select classes share: the tag, the engine behind it, and the holder that lets a select
// travel in an IfcVariant.
#pragma once

#include <compare>
#include <concepts>

#include "ovik/imp/variant.h"
#include "ovik/schema/common/types.h"

namespace Ovik {
namespace Schema {

/// Base of the select classes. A select holds a field for each kind of value side by side, one
/// handle for all its entity choices, and the tag that tells which one counts.
class OVIK_API Select {
 protected:
    explicit Select(int tag) : tag_(tag) {}

    std::int32_t tag_;

 private:
    friend struct Internals;
};

// Two selects would be compared by their tags alone, and those of two classes by numbers that have
// nothing to do with each other. A select and a tag can be compared.
template <std::derived_from<Select> A, std::derived_from<Select> B>
bool operator==(const A&, const B&) = delete;  // compare choice(), then the values
template <std::derived_from<Select> A, std::derived_from<Select> B>
std::strong_ordering operator<=>(const A&, const B&) = delete;  // order by choice() and values

/// The choice of the tag; null for a tag outside the select.
OVIK_API const Choice* currentChoice(const Select& value, const SelectType& type);

OVIK_API bool readSelect(Select& value, const SelectType& type, IfcInFiler& in);
OVIK_API void writeSelect(const Select& value, const SelectType& type, IfcOutFiler& out);
OVIK_API int validateSelect(Select& value, const SelectType& type, ValidationContext& context);
OVIK_API void getSelect(const Select& value, const SelectType& type, IfcVariant& out);
OVIK_API Result setSelect(Select& value, const SelectType& type, const char* name,
                          const IfcVariant& in);

}  // namespace Schema

/// Holder of a select value in an `IfcVariant`.
template <class T>
class OVIK_API IfcSelectValue : public IfcSelectValueBase {
 public:
    IfcSelectValue() = default;
    explicit IfcSelectValue(const T& source) : value(source) {}

    IfcVariantValueBase* clone() const override { return new IfcSelectValue(value); }

    /// The current choice as a variant.
    IfcVariant getValue() const override {
        IfcVariant result;
        value.getAttribute(result);
        return result;
    }
    /// The type name of the current choice.
    const char* tag() const override { return value.choiceAsString(); }
    /// Makes the choice `name`, as in the schema, with this value.
    Result setValue(const char* name, const IfcVariant& choice) override {
        return value.setAttribute(name, choice);
    }

    T value;
};

namespace Schema {

template <class T>
IfcSelectValueBase* boxSelect(const void* value) {
    return new IfcSelectValue<T>(*static_cast<const T*>(value));
}

template <class T>
bool unboxSelect(void* value, const IfcSelectValueBase& holder) {
    const auto* source = dynamic_cast<const IfcSelectValue<T>*>(&holder);
    if (source) *static_cast<T*>(value) = source->value;
    return source != nullptr;
}

}  // namespace Schema
}  // namespace Ovik
