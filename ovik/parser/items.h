// Parsed items: what the parameters of a physical file become. Small reference-counted objects
// that hold what the file says; they know nothing of schemas.
// Counts, the shared items and the memory kept for new items are unguarded: all items of a process
// are made, copied and released on one thread at a time.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ovik/base/export.h"

namespace Ovik::IfcParser {

/// The kinds of items, one per class.
enum class ItemKind : unsigned {
    String = 0,
    Int = 1,
    Dbl = 2,
    Bool = 3,
    Enum = 4,
    Ref = 5,
    Derived = 6,
    Choice = 7,
    List = 8,
    Binary = 9,
    Unreadable = 10  ///< of exact parses alone
};

/// How two items are compared.
struct CompareContext {
    /// Reals are equal if they differ by less than this; at 0 no two are.
    double tolerance;
    /// Where the differences are told, from the inside out; may be null.
    std::ostream* report;
    /// By what things mean: identical reals are equal whatever the tolerance is, an integer equals
    /// a real of its value, words are compared without case and strings by the text they stand for.
    bool exact = false;
};

/// True if two names, or words, are the same one.
bool sameWord(const std::string& a, const std::string& b, const CompareContext& context);

/// A class or enumeration name, shared by all that spell it alike. Made with one reference, which
/// is the maker's.
class OVIK_API PooledName {
 public:
    unsigned refCount = 1;
    std::string text;

    explicit PooledName(std::string_view spelling) : text(spelling) {}
    void addRef() { ++refCount; }
    void release() {
        if (--refCount == 0) delete this;
    }
};

/// The number of items in existence.
extern OVIK_API int liveItems;

/// Base of all items. An item is made with one reference, which is the maker's; whoever holds a
/// pointer to an item owns exactly one reference of it.
class OVIK_API ItemBase {
 public:
    unsigned refCount = 1;

    /// The item's `ItemKind` as a number.
    virtual unsigned kind() const = 0;
    bool is(ItemKind wanted) const { return kind() == static_cast<unsigned>(wanted); }
    /// The item as a `T`, one of the classes below; null if it is of another kind.
    template <class T>
    const T* as() const {
        return is(T::kKind) ? static_cast<const T*>(this) : nullptr;
    }
    /// Compares with another item; tells the difference to the context's report.
    virtual bool isEqualTo(const ItemBase& other, const CompareContext& context) const;
    virtual ~ItemBase() { --liveItems; }

    void addRef() { ++refCount; }
    /// Gives one reference back; the last one deletes the item and what it holds, however deep.
    void release() {
        if (--refCount == 0) delete this;
    }

    static void* operator new(std::size_t size);
    static void operator delete(void* block, std::size_t size) noexcept;

    ItemBase(const ItemBase&) = delete;
    ItemBase& operator=(const ItemBase&) = delete;

 protected:
    ItemBase() { ++liveItems; }
};

/// A string constant, still in the file's encoding; adjacent constants are joined. In an exact
/// parse `XString::decodeExact` makes the value of it, else `XString::decode`.
class OVIK_API ItemString final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::String;
    std::string text;

    explicit ItemString(std::string value) : text(std::move(value)) {}
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// An integer constant.
class OVIK_API ItemInt final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Int;
    int value;

    explicit ItemInt(int number) : value(number) {}
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// A real constant; an infinity is one beyond the range of a `double`.
class OVIK_API ItemDbl final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Dbl;
    /// The file has an integer here, one that 32 bits don't hold. Of exact parses alone: the others
    /// wrap it.
    bool isInteger;
    double value;

    explicit ItemDbl(double number, bool integer = false) : isInteger(integer), value(number) {}
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// `.T.` (1) or `.F.` (0).
class OVIK_API ItemBool final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Bool;
    unsigned char value;

    explicit ItemBool(bool truth) : value(truth) {}
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// Any other word between dots, without the dots.
class OVIK_API ItemEnum final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Enum;
    PooledName* name;

    /// Takes over the caller's reference of `word`.
    explicit ItemEnum(PooledName* word) : name(word) {}
    ~ItemEnum() override { name->release(); }
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// A reference to an instance: its number, or 0 for `$`.
class OVIK_API ItemRef final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Ref;
    int value;

    explicit ItemRef(int number) : value(number) {}
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// A `*`.
class OVIK_API ItemDerived final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Derived;
    ItemDerived() = default;
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
};

/// A typed parameter such as `IFCLABEL('x')`. `value` is one elementary item or one list, in an
/// exact parse also an unreadable item.
class OVIK_API ItemChoice final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Choice;
    PooledName* name;
    ItemBase* value;

    /// Takes over the caller's references of `type` and `content`.
    ItemChoice(PooledName* type, ItemBase* content) : name(type), value(content) {}
    ~ItemChoice() override;
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// A list in parentheses. `items` is null for an empty one; the vector belongs to the list, and
/// only its elements may be changed.
class OVIK_API ItemList final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::List;
    std::vector<ItemBase*>* items = nullptr;

    ItemList() = default;
    /// A list of `count` elements; takes over the caller's reference of each.
    ItemList(ItemBase* const* elements, std::size_t count);
    ~ItemList() override;
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;

 private:
    std::vector<ItemBase*> storage_;
};

/// A binary constant in its file text: from the opening quote, which is kept, up to the closing
/// quote, which is not.
class OVIK_API ItemBinary final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Binary;
    std::string text;

    explicit ItemBinary(std::string value) : text(std::move(value)) {}
    /// The count digit and the hexadecimal digits, which is what `XBinary` takes.
    const char* digits() const { return text.c_str() + 1; }
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// What stands in the place of a value in an exact parse and is none: nothing at all, as in
/// `(1,,2)`, characters that open no token, two values without a comma between them, or the
/// reference `#0` or one beyond 32 bits.
class OVIK_API ItemUnreadable final : public ItemBase {
 public:
    static constexpr ItemKind kKind = ItemKind::Unreadable;
    ItemBase* before;  ///< what could be read of it, or null
    std::string text;  ///< the rest, as in the file but for the blanks

    /// Takes over the caller's reference of `part`.
    ItemUnreadable(ItemBase* part, std::string rest) : before(part), text(std::move(rest)) {}
    ~ItemUnreadable() override {
        if (before) before->release();
    }
    /// True if nothing stands there.
    bool isMissing() const { return !before && text.empty(); }
    unsigned kind() const override { return static_cast<unsigned>(kKind); }
    bool isEqualTo(const ItemBase& other, const CompareContext& context) const override;
};

/// Appends the item as a physical file spells it: reals and integers beyond 32 bits by the fewest
/// digits that read back the same, strings and names as they are. What an exact parse gives reads
/// back the same in another one.
OVIK_API void appendItem(std::string& text, const ItemBase& item);

/// The items that exist once in a process, made at their first use. The pointer is borrowed: who
/// keeps it adds a reference.
OVIK_API ItemRef* itemNil();
OVIK_API ItemDerived* itemDerived();
OVIK_API ItemBool* itemTrue();
OVIK_API ItemBool* itemFalse();

/// Marks an item whose last holder has gone on purpose, so that leak checkers keep quiet about it;
/// `liveItems` goes on counting it.
void abandonItem(const ItemBase* item);

}  // namespace Ovik::IfcParser
