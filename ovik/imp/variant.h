// The carrier of attribute values in access by name: a tag and, behind a pointer, a holder of the
// value. Nothing is ever converted from one kind to another.
#pragma once

#include <type_traits>
#include <utility>

#include "ovik/base/export.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/entityid.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/result.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"

namespace Ovik {

class IfcVariant;

/// What an `IfcVariant` owns.
class OVIK_API IfcVariantValueBase {
 public:
    virtual ~IfcVariantValueBase();

    /// A new holder of the same class and value, from `new`; the caller owns it.
    virtual IfcVariantValueBase* clone() const = 0;

 protected:
    IfcVariantValueBase() = default;
    IfcVariantValueBase(const IfcVariantValueBase&) = default;
    IfcVariantValueBase& operator=(const IfcVariantValueBase&) = default;
};

/// Holder of a plain value.
template <class T>
class OVIK_API IfcVariantValue final : public IfcVariantValueBase {
 public:
    explicit IfcVariantValue(const T& v) : value(v) {}
    explicit IfcVariantValue(T&& v) : value(std::move(v)) {}

    IfcVariantValue* clone() const override { return new IfcVariantValue(*this); }

    T value;
};

/// Holder of an enumeration value, by the name of its literal.
class OVIK_API IfcEnumValue final : public IfcVariantValueBase {
 public:
    /// `literal`, without dots, is not copied and must outlive the value and its copies.
    explicit IfcEnumValue(const char* literal = nullptr) : text(literal) {}
    ~IfcEnumValue() override;

    IfcEnumValue* clone() const override;

    const char* text;
};

/// Holder of a select value, for callers that don't know its class.
class OVIK_API IfcSelectValueBase : public IfcVariantValueBase {
 public:
    ~IfcSelectValueBase() override;

    /// The value of the current choice; empty when that has none.
    virtual IfcVariant getValue() const = 0;

    /// The type name of the current choice, in mixed case.
    virtual const char* tag() const = 0;

    /// Makes `name` the current choice with `value`. `ResultNotFound` if there is no such choice,
    /// `ResultWrongType` if `value` doesn't fit it; nothing is changed then.
    virtual Result setValue(const char* name, const IfcVariant& value) = 0;
};

/// Holder of an aggregate value, for callers that don't know its class.
class OVIK_API IfcVectorValueBase : public IfcVariantValueBase {
 public:
    ~IfcVectorValueBase() override;

    /// The element at `index`, which is not checked.
    virtual IfcVariant operator[](unsigned index) const = 0;
    virtual unsigned size() const = 0;

    /// Takes an element out; false if there is none at `index`.
    virtual bool remove(unsigned index) = 0;
    virtual void clear() = 0;

    /// Appends an element; `ResultWrongType` if `value` doesn't fit. A full aggregate, one that has
    /// as many elements as the upper bound in its class name (4 in `List_3_4_int`), answers
    /// `ResultOk` too and takes nothing: ask `size()`.
    virtual Result add(const IfcVariant& value) = 0;
};

/// A tag, or a value of an enumeration or a select, which convert to their tags.
template <class T>
concept Tagged = std::is_enum_v<T> || requires {
    typename T::ETag;
} || requires {
    typename T::CTag;
};

/// A tagged value. Owns its holder, and copies it when it is copied. One thread at a time.
class OVIK_API IfcVariant {
 public:
    /// No value: `AttributeNone`.
    IfcVariant() = default;
    IfcVariant(const IfcVariant& other);
    /// Leaves `other` with its tag and without a holder: only to be assigned to or destroyed.
    IfcVariant(IfcVariant&& other) noexcept
        : type_(other.type_), value_(std::exchange(other.value_, nullptr)) {}
    IfcVariant& operator=(const IfcVariant& other);
    IfcVariant& operator=(IfcVariant&& other) noexcept;
    ~IfcVariant() { delete value_; }

    /// A copy of `x`. These serve assignment too.
    IfcVariant(int x);
    IfcVariant(unsigned x);
    IfcVariant(double x);
    IfcVariant(bool x);
    IfcVariant(const XString& x);
    IfcVariant(const Logical& x);
    IfcVariant(const EntityId& x);
    IfcVariant(const Base64Guid& x);
    IfcVariant(Base64Guid&& x);
    IfcVariant(const XBinary& x);

    /// Takes `x`, made by `new` and not null, as the holder and owns it from now on.
    IfcVariant(IfcEnumValue* x) : type_(AttributeEnum), value_(x) {}
    IfcVariant(IfcSelectValueBase* x) : type_(AttributeSelect), value_(x) {}
    IfcVariant(IfcVectorValueBase* x) : type_(AttributeVector), value_(x) {}

    /// Any other pointer, a text above all, would silently become a `bool`, and a tag an `int`. The
    /// value of an enumeration is a new `IfcEnumValue` of its `asString`, that of a select a new
    /// `IfcSelectValue`.
    IfcVariant(const void*) = delete;
    template <Tagged T>
    IfcVariant(const T&) = delete;

    AttributeTypeEnum getValueType() const { return type_; }

    /// The value into `out`; `ResultWrongType`, with `out` left alone, unless the variant holds
    /// exactly that type.
    Result getValue(int& out) const { return get(AttributeInt, out); }
    Result getValue(unsigned& out) const { return get(AttributeUnsigned, out); }
    Result getValue(double& out) const { return get(AttributeDouble, out); }
    Result getValue(bool& out) const { return get(AttributeBool, out); }
    Result getValue(XString& out) const { return get(AttributeString, out); }
    Result getValue(Logical& out) const { return get(AttributeLogical, out); }
    Result getValue(EntityId& out) const { return get(AttributeEntity, out); }
    Result getValue(Base64Guid& out) const { return get(AttributeGuid, out); }
    Result getValue(XBinary& out) const { return get(AttributeBinary, out); }

    /// The value, without a look at the tag: the caller has asked `getValueType` first. Between
    /// `int` and `unsigned` the 32 bits are taken as they are.
    int getint() const {
        return type_ == AttributeUnsigned ? static_cast<int>(held<unsigned>()) : held<int>();
    }
    unsigned getunsigned() const {
        return type_ == AttributeInt ? static_cast<unsigned>(held<int>()) : held<unsigned>();
    }
    double getdouble() const { return held<double>(); }
    bool getbool() const { return held<bool>(); }
    XString getXString() const { return held<XString>(); }
    Logical getLogical() const { return held<Logical>(); }
    EntityId getEntityId() const { return held<EntityId>(); }
    Base64Guid getBase64Guid() const { return held<Base64Guid>(); }
    XBinary getXBinary() const { return held<XBinary>(); }

    /// The holder, without a look at the tag; the variant keeps owning it.
    IfcEnumValue* getEnumValue() const { return static_cast<IfcEnumValue*>(value_); }
    IfcSelectValueBase* getSelectValue() const { return static_cast<IfcSelectValueBase*>(value_); }
    IfcVectorValueBase* getVectorValue() const { return static_cast<IfcVectorValueBase*>(value_); }

 private:
    template <class T>
    const T& held() const {
        return static_cast<const IfcVariantValue<T>*>(value_)->value;
    }
    template <class T>
    Result get(AttributeTypeEnum type, T& out) const {
        if (type_ != type) return ResultWrongType;
        out = held<T>();
        return ResultOk;
    }

    AttributeTypeEnum type_ = AttributeNone;
    // Null exactly for AttributeNone, or after a move from here.
    IfcVariantValueBase* value_ = nullptr;
};

}  // namespace Ovik
