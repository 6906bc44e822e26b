// Holders and the variant that owns them.
#include "ovik/imp/variant.h"

namespace Ovik {

IfcVariantValueBase::~IfcVariantValueBase() = default;
IfcEnumValue::~IfcEnumValue() = default;
IfcSelectValueBase::~IfcSelectValueBase() = default;
IfcVectorValueBase::~IfcVectorValueBase() = default;

IfcEnumValue* IfcEnumValue::clone() const {
    return new IfcEnumValue(*this);
}

IfcVariant::IfcVariant(const IfcVariant& other)
    : type_(other.type_), value_(other.value_ ? other.value_->clone() : nullptr) {}

IfcVariant& IfcVariant::operator=(const IfcVariant& other) {
    return *this = IfcVariant(other);
}

IfcVariant& IfcVariant::operator=(IfcVariant&& other) noexcept {
    // Taken before the own holder goes, in case they are one.
    IfcVariantValueBase* const taken = std::exchange(other.value_, nullptr);
    delete value_;
    type_ = other.type_;
    value_ = taken;
    return *this;
}

IfcVariant::IfcVariant(int x) : type_(AttributeInt), value_(new IfcVariantValue<int>(x)) {}

IfcVariant::IfcVariant(unsigned x)
    : type_(AttributeUnsigned), value_(new IfcVariantValue<unsigned>(x)) {}

IfcVariant::IfcVariant(double x) : type_(AttributeDouble), value_(new IfcVariantValue<double>(x)) {}

IfcVariant::IfcVariant(bool x) : type_(AttributeBool), value_(new IfcVariantValue<bool>(x)) {}

IfcVariant::IfcVariant(const XString& x)
    : type_(AttributeString), value_(new IfcVariantValue<XString>(x)) {}

IfcVariant::IfcVariant(const Logical& x)
    : type_(AttributeLogical), value_(new IfcVariantValue<Logical>(x)) {}

IfcVariant::IfcVariant(const EntityId& x)
    : type_(AttributeEntity), value_(new IfcVariantValue<EntityId>(x)) {}

IfcVariant::IfcVariant(const Base64Guid& x)
    : type_(AttributeGuid), value_(new IfcVariantValue<Base64Guid>(x)) {}

IfcVariant::IfcVariant(Base64Guid&& x)
    : type_(AttributeGuid), value_(new IfcVariantValue<Base64Guid>(std::move(x))) {}

IfcVariant::IfcVariant(const XBinary& x)
    : type_(AttributeBinary), value_(new IfcVariantValue<XBinary>(x)) {}

}  // namespace Ovik
