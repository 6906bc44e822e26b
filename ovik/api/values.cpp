// The facade's values: forwards to the values of the library.
#include "ovik/api/values.h"

#include "ovik/api/access.h"
#include "ovik/api/desc.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/utf8.h"

namespace Ovik::IfcApi {

template class Handle<XString>;
template class Handle<XBinary>;
template class Handle<Base64Guid>;
template class Handle<Ovik::Logical>;
template class Handle<IfcEnumValue>;
template class Handle<IfcSelectValueBase>;
template class Handle<IfcVectorValueBase>;
template class Handle<IfcVariant>;

namespace {

/// A variant that owns a copy of `holder`.
template <class Base>
IfcVariant* makeVariant(const Base& holder) {
    return new IfcVariant(static_cast<Base*>(holder.clone()));
}

/// A handle with a copy of what a variant holds.
template <class H, class Base>
H copyOf(const Base* holder) {
    return Access::make<H>(static_cast<Base*>(holder->clone()));
}

}  // namespace

// -- String -------------------------------------------------------------------------------------

String::String(const char16_t* text) : inner_(new XString(text)) {}

String String::decode(const char* encoded) {
    return Access::make<String>(new XString(XString::decode(encoded)));
}

const char16_t* String::c_str() const {
    return inner_->c_str();
}

const char* String::getEncoded() const {
    return inner_->getEncoded();
}

bool String::isEmpty() const {
    return inner_->isEmpty();
}

void String::setEmpty() {
    inner_->setEmpty();
}

std::string toUtf8(const String& value) {
    return Ovik::toUtf8(Access::inner(value));
}

String fromUtf8(std::string_view text) {
    return Access::make<String>(new XString(Ovik::fromUtf8(text)));
}

// -- Binary -------------------------------------------------------------------------------------

Binary::Binary(const char* text) : inner_(new XBinary(text)) {}

void Binary::reset(const char* text) {
    *inner_ = XBinary(text);
}

const char* Binary::getEncodedString() const {
    return inner_->getEncodedString();
}

std::size_t Binary::numBits() const {
    return inner_->numBits();
}

bool Binary::getBit(std::size_t index) const {
    return inner_->getBit(index);
}

bool Binary::isEmpty() const {
    return inner_->isEmpty();
}

void Binary::resize(std::size_t bits) {
    inner_->resize(bits);
}

void Binary::clear() {
    inner_->clear();
}

// -- Guid ---------------------------------------------------------------------------------------

Guid::Guid() : inner_(new Base64Guid) {}

Guid Guid::create() {
    return Access::make<Guid>(new Base64Guid(Base64Guid::create()));
}

Guid Guid::createFromBase64(const char* base64) {
    return Access::make<Guid>(new Base64Guid(Base64Guid::createFromBase64(base64)));
}

Guid Guid::createFromText(const char* text) {
    return Access::make<Guid>(new Base64Guid(Base64Guid::createFromText(text)));
}

const char* Guid::getBase64() const {
    return inner_->getBase64();
}

const char* Guid::getText() const {
    return inner_->getText();
}

bool Guid::operator==(const Guid& other) const {
    return *inner_ == *other.inner_;
}

// -- Logical ------------------------------------------------------------------------------------

Logical::Logical() : inner_(new Ovik::Logical) {}

Logical::Logical(bool value) : inner_(new Ovik::Logical(value)) {}

bool Logical::isUnknown() const {
    return inner_->isUnknown();
}

Logical::operator bool() const {
    return *inner_;
}

// -- EnumValue ----------------------------------------------------------------------------------

EnumValue::EnumValue() : inner_(new IfcEnumValue) {}

const char* EnumValue::getValue() const {
    return inner_->text;
}

void EnumValue::setValue(const char* literal) {
    inner_->text = literal;
}

// -- SelectValue --------------------------------------------------------------------------------

SelectValue::SelectValue(const SelectorDesc& desc) : inner_(Access::createValue(desc)) {}

const char* SelectValue::tag() const {
    return inner_->tag();
}

Variant SelectValue::getValue() const {
    return Access::make<Variant>(new IfcVariant(inner_->getValue()));
}

Result SelectValue::setValue(const char* name, const Variant& value) {
    return translate(inner_->setValue(name, Access::inner(value)));
}

// -- VectorValue --------------------------------------------------------------------------------

VectorValue::VectorValue(const VectorDesc& desc) : inner_(Access::createValue(desc)) {}

Variant VectorValue::operator[](unsigned index) const {
    return Access::make<Variant>(new IfcVariant((*inner_)[index]));
}

unsigned VectorValue::size() const {
    return inner_->size();
}

void VectorValue::clear() {
    inner_->clear();
}

bool VectorValue::remove(unsigned index) {
    return inner_->remove(index);
}

Result VectorValue::add(const Variant& value) {
    return translate(inner_->add(Access::inner(value)));
}

// -- Variant ------------------------------------------------------------------------------------

Variant::Variant() : inner_(new IfcVariant) {}
Variant::Variant(int value) : inner_(new IfcVariant(value)) {}
Variant::Variant(bool value) : inner_(new IfcVariant(value)) {}
Variant::Variant(unsigned value) : inner_(new IfcVariant(value)) {}
Variant::Variant(double value) : inner_(new IfcVariant(value)) {}
Variant::Variant(const String& value) : inner_(new IfcVariant(Access::inner(value))) {}
Variant::Variant(const Logical& value) : inner_(new IfcVariant(Access::inner(value))) {}
Variant::Variant(const Binary& value) : inner_(new IfcVariant(Access::inner(value))) {}
Variant::Variant(const Guid& value) : inner_(new IfcVariant(Access::inner(value))) {}
Variant::Variant(Guid&& value) : inner_(new IfcVariant(std::move(Access::inner(value)))) {}
Variant::Variant(const VectorValue& value) : inner_(makeVariant(Access::inner(value))) {}
Variant::Variant(VectorValue&& value) : inner_(new IfcVariant(Access::take(value))) {}
Variant::Variant(const SelectValue& value) : inner_(makeVariant(Access::inner(value))) {}
Variant::Variant(SelectValue&& value) : inner_(new IfcVariant(Access::take(value))) {}
Variant::Variant(const EnumValue& value) : inner_(makeVariant(Access::inner(value))) {}
Variant::Variant(EnumValue&& value) : inner_(new IfcVariant(Access::take(value))) {}
Variant::Variant(const Entity& value) : inner_(new IfcVariant(Entity::Impl::data(value))) {}

ValueType Variant::type() const {
    switch (inner_->getValueType()) {
        case AttributeInt:
            return TypeInt;
        case AttributeUnsigned:
            return TypeUInt;
        case AttributeDouble:
            return TypeReal;
        case AttributeBool:
            return TypeBool;
        case AttributeString:
            return TypeString;
        case AttributeLogical:
            return TypeLogical;
        case AttributeEntity:
            return TypeEntity;
        case AttributeGuid:
            return TypeGuid;
        case AttributeBinary:
            return TypeBinary;
        case AttributeEnum:
            return TypeEnum;
        case AttributeSelect:
            return TypeSelect;
        case AttributeVector:
            return TypeVector;
        case AttributeNone:
            break;
    }
    return TypeNone;
}

int Variant::getInt() const {
    return inner_->getint();
}

unsigned Variant::getUInt() const {
    return inner_->getunsigned();
}

bool Variant::getBool() const {
    return inner_->getbool();
}

double Variant::getReal() const {
    return inner_->getdouble();
}

String Variant::getString() const {
    return Access::make<String>(new XString(inner_->getXString()));
}

Entity Variant::getEntity() const {
    return Entity::Impl::create(inner_->getEntityId());
}

Logical Variant::getLogical() const {
    return Access::make<Logical>(new Ovik::Logical(inner_->getLogical()));
}

Binary Variant::getBinary() const {
    return Access::make<Binary>(new XBinary(inner_->getXBinary()));
}

Guid Variant::getGuid() const {
    return Access::make<Guid>(new Base64Guid(inner_->getBase64Guid()));
}

SelectValue Variant::getSelect() const {
    return copyOf<SelectValue>(inner_->getSelectValue());
}

VectorValue Variant::getVector() const {
    return copyOf<VectorValue>(inner_->getVectorValue());
}

EnumValue Variant::getEnum() const {
    return copyOf<EnumValue>(inner_->getEnumValue());
}

}  // namespace Ovik::IfcApi
