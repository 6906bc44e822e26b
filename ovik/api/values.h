// The values of attributes as the facade shows them. A value of each class owns a block on the heap
// and copies it when it is copied; a moved-from value may only be assigned to or destroyed. One
// thread at a time for one value.
#pragma once

#include <compare>
#include <cstddef>
#include <string>
#include <string_view>

#include "ovik/api/handle.h"

namespace Ovik::IfcApi {

class Entity;
class SelectorDesc;
class Variant;
class VectorDesc;

/// Result of an operation that gets or sets a value. The numbers are the facade's own.
enum Result {
    ResultOk = 0,         ///< done
    ResultUnset = 1,      ///< the attribute exists and has no value
    ResultNotFound = 2,   ///< no such attribute, choice or literal
    ResultWrongType = 3,  ///< the value doesn't fit
    ResultOther = 4,      ///< given by no class of the schemas
};

/// What a `Variant` holds.
enum ValueType {
    TypeBool = 0,
    TypeInt = 1,
    TypeUInt = 2,
    TypeReal = 3,
    TypeString = 4,
    TypeEntity = 5,
    TypeLogical = 6,
    TypeBinary = 7,
    TypeGuid = 8,
    TypeEnum = 9,
    TypeSelect = 10,
    TypeVector = 11,
    TypeNone = 12,  ///< nothing
};

/// A text of UTF-16 code units, or no text at all.
class OVIK_API String {
 public:
    /// A copy of `text` up to its NUL; unset for null.
    String(const char16_t* text = nullptr);
    /// The string that a file spells `encoded`, which must not be null.
    static String decode(const char* encoded);

    /// The text, NUL-terminated; "" when unset. Valid until this value is changed or destroyed.
    operator const char16_t*() const { return c_str(); }
    const char16_t* c_str() const;
    /// What stands between the apostrophes of a file. Valid as `c_str` is.
    const char* getEncoded() const;

    // Through the conversion above these would compare and order addresses.
    bool operator==(const String&) const = delete;  // compare std::u16string_view(a.c_str())
    std::strong_ordering operator<=>(const String&) const = delete;  // order by the same views

    /// True when unset. A present text without characters is not empty.
    bool isEmpty() const;
    void setEmpty();

 private:
    friend struct Access;
    explicit String(XString* inner) : inner_(inner) {}
    Handle<XString> inner_;
};

/// The text of `value` in UTF-8; "" when unset. An unpaired surrogate becomes U+FFFD.
OVIK_API std::string toUtf8(const String& value);
/// A present string of `text`, up to its first NUL character if it has one. Each malformed
/// sequence becomes one U+FFFD.
OVIK_API String fromUtf8(std::string_view text);

/// A sequence of bits.
class OVIK_API Binary {
 public:
    /// The bits that `text` spells as in a file, without the quotes; empty for null.
    explicit Binary(const char* text = nullptr);
    /// Takes the bits of `text` instead.
    void reset(const char* text);

    /// What stands between the quotes of a file. Valid until this value is changed or destroyed.
    const char* getEncodedString() const;
    std::size_t numBits() const;
    /// Bit `index`, which must be below `numBits`.
    bool getBit(std::size_t index) const;
    bool isEmpty() const;
    /// Makes the value `bits` bits long; shrinking keeps the low bits.
    void resize(std::size_t bits);
    /// Sets all digits to NUL, in the copies of this value too; the number of bits stays.
    void clear();

 private:
    friend struct Access;
    explicit Binary(XBinary* inner) : inner_(inner) {}
    Handle<XBinary> inner_;
};

/// A global identifier.
class OVIK_API Guid {
 public:
    /// Both texts empty.
    Guid();
    /// A new random identifier.
    static Guid create();
    /// From the 22 characters of a file, which are not checked. `base64` must not be null.
    static Guid createFromBase64(const char* base64);
    /// From the braced text, or the 22 characters. `text` must not be null.
    static Guid createFromText(const char* text);

    /// The 22 characters. Valid until this value is changed or destroyed.
    const char* getBase64() const;
    /// The braced text. Valid as `getBase64` is.
    const char* getText() const;

    /// Equal when both texts are.
    bool operator==(const Guid& other) const;
    bool operator!=(const Guid& other) const { return !(*this == other); }

 private:
    friend struct Access;
    explicit Guid(Base64Guid* inner) : inner_(inner) {}
    Handle<Base64Guid> inner_;
};

/// True, false or unknown.
class OVIK_API Logical {
 public:
    /// Unknown.
    Logical();
    Logical(bool value);
    Logical(const void*) = delete;  // a text would be taken for true

    bool isKnown() const { return !isUnknown(); }
    bool isUnknown() const;
    /// True only for true: unknown converts to false.
    operator bool() const;

 private:
    friend struct Access;
    explicit Logical(Ovik::Logical* inner) : inner_(inner) {}
    Handle<Ovik::Logical> inner_;
};

/// A value of an enumeration, by the name of its literal.
class OVIK_API EnumValue {
 public:
    /// No literal.
    EnumValue();

    /// The literal that was set, or null.
    const char* getValue() const;
    /// Keeps the address of `literal`, which must outlive the value and its copies: one of the
    /// schema's constants, as a rule. Whether there is such a literal is found out by the
    /// `Entity::setAttribute` that gets the value.
    void setValue(const char* literal);

 private:
    friend struct Access;
    explicit EnumValue(IfcEnumValue* inner) : inner_(inner) {}
    Handle<IfcEnumValue> inner_;
};

/// A value of a select: one of its choices, with a value.
class OVIK_API SelectValue {
 public:
    /// The first choice of the select, with a default value. Throws `std::bad_function_call` before
    /// `initOvikApi`.
    explicit SelectValue(const SelectorDesc& desc);

    /// The type name of the current choice, in mixed case.
    const char* tag() const;
    /// The value of the current choice, empty if it has none.
    Variant getValue() const;
    /// Makes `name` the choice: one of the schema's constants, the `SelectorDesc` of a nested
    /// select, or for an entity its class name as in the schema ("IfcPerson"; that of an
    /// `EntityDesc` is in capitals). `ResultNotFound` if there is no such choice, `ResultWrongType`
    /// if `value` doesn't fit; nothing is changed then.
    Result setValue(const char* name, const Variant& value);

 private:
    friend struct Access;
    explicit SelectValue(IfcSelectValueBase* inner) : inner_(inner) {}
    Handle<IfcSelectValueBase> inner_;
};

/// A value of an aggregate: a list, set or array.
class OVIK_API VectorValue {
 public:
    /// An empty one. Throws `std::bad_function_call` before `initOvikApi`.
    explicit VectorValue(const VectorDesc& desc);

    /// A copy of the element at `index`, which is not checked.
    Variant operator[](unsigned index) const;
    unsigned size() const;
    void clear();
    /// Takes an element out; false if there is none at `index`.
    bool remove(unsigned index);
    /// Appends an element; `ResultWrongType` if `value` doesn't fit. A full aggregate, one that has
    /// as many elements as the upper bound in its class name (4 in `List_3_4_int`), answers
    /// `ResultOk` too and takes nothing: ask `size()`.
    Result add(const Variant& value);

 private:
    friend struct Access;
    explicit VectorValue(IfcVectorValueBase* inner) : inner_(inner) {}
    Handle<IfcVectorValueBase> inner_;
};

/// A value of any kind. Nothing is ever converted from one kind to another.
class OVIK_API Variant {
 public:
    /// Nothing: `TypeNone`.
    Variant();
    /// A copy of `value`. These serve assignment too.
    Variant(int value);
    Variant(bool value);
    Variant(unsigned value);
    Variant(double value);
    Variant(const String& value);
    Variant(const Logical& value);
    Variant(const Binary& value);
    Variant(const Guid& value);
    Variant(Guid&& value);
    Variant(const VectorValue& value);
    Variant(VectorValue&& value);
    Variant(const SelectValue& value);
    Variant(SelectValue&& value);
    Variant(const EnumValue& value);
    Variant(EnumValue&& value);
    /// The handle, so that the variant refers to the same entity.
    Variant(const Entity& value);
    Variant(const void*) = delete;  // a text would be taken for a bool

    ValueType type() const;

    /// The value, copied. The type is not tested: ask `type()` first.
    int getInt() const;
    unsigned getUInt() const;
    bool getBool() const;
    double getReal() const;
    String getString() const;
    Entity getEntity() const;
    Logical getLogical() const;
    Binary getBinary() const;
    Guid getGuid() const;
    SelectValue getSelect() const;
    VectorValue getVector() const;
    EnumValue getEnum() const;

 private:
    friend struct Access;
    explicit Variant(IfcVariant* inner) : inner_(inner) {}
    Handle<IfcVariant> inner_;
};

}  // namespace Ovik::IfcApi
