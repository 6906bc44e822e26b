// The cursor through which an entity reads its attributes from the parsed items of its record.
#pragma once

#include <cstdint>
#include <exception>
#include <vector>

#include "ovik/base/export.h"
#include "ovik/imp/loadcontext.h"
#include "ovik/parser/items.h"

namespace Ovik {

class Logical;
class XString;

/// Thrown by the `read` of a select that can't decide before its target has been read. The reader
/// catches it and reads the record again once all records are there.
class OVIK_API SelectorNeedSecondPassRead : public std::exception {};

/// Reads one list of parsed items in order. The operations return true on success; on failure they
/// have reported it, unless said otherwise, and the cursor stays. A report is a line in the log of
/// the load; an exact load writes none, it takes the cause for the line that it writes if the value
/// is not kept, see `lost`. One thread, within one load.
class OVIK_API IfcInFiler {
 public:
    using Items = std::vector<IfcParser::ItemBase*>;

    /// A filer on `items`, null for an empty list, at the first.
    IfcInFiler(LoadContext& load, const Items* items) : load_(&load) { reset(items); }

    /// A filer on a list that `readList` of `outer` has given, at its first item. `outer` must
    /// outlive it.
    IfcInFiler(const IfcInFiler& outer, const Items* items)
        : load_(outer.load_), outer_(&outer), outerIndex_(outer.cursor_ - 1) {
        reset(items);
    }

    /// A filer on `item` alone, which is the value of the typed item where `outer` stands. Both
    /// must outlive it.
    IfcInFiler(const IfcInFiler& outer, IfcParser::ItemBase* item)
        : load_(outer.load_),
          outer_(&outer),
          outerIndex_(outer.cursor_),
          single_(item),
          items_(&single_),
          size_(1) {}

    IfcInFiler(const IfcInFiler&) = delete;  // it may lead into itself
    IfcInFiler& operator=(const IfcInFiler&) = delete;

    /// Puts the filer on `items`, at the first.
    void reset(const Items* items) {
        items_ = items ? items->data() : nullptr;
        size_ = items ? static_cast<unsigned>(items->size()) : 0;
        cursor_ = 0;
    }

    unsigned cursor() const { return cursor_; }
    void setCursor(unsigned cursor) { cursor_ = cursor; }
    void advance() { ++cursor_; }

    /// True unless the load was asked to be strict.
    bool lenient() const { return load_->lenient; }
    /// True if the load was asked to keep values letter for letter, see `IfcReadOptions::exact`.
    bool exact() const { return load_->exact; }
    /// True while records are read for the second time.
    bool secondPass() const { return load_->secondPass; }

    /// Names the attribute that is read from now on, for the losses; `position` orders those of an
    /// entity. Drops the cause that has been noted.
    void setAttribute(const char* name, std::uint32_t position) {
        load_->setAttribute(name, position);
    }
    /// Notes why the value at hand can't be kept; the first cause counts. The text is not copied:
    /// a literal. Always false.
    bool fail(const char* cause) {
        if (!load_->cause) load_->cause = cause;
        return false;
    }
    /// Drops the cause that has been noted: the value could be kept after all.
    void clearCause() { load_->cause = nullptr; }
    /// The value where the filer stands is not kept: the attribute, or for a filer on a list the
    /// element at the cursor. The cause is the one noted, else `cause`. It goes to the log of an
    /// exact load and to the report.
    void lost(const char* cause);
    /// In place of the value where the filer stands, which is missing, the model has a default.
    void substituted(const char* cause);

    /// The item at the cursor; null, without a report, past the end.
    const IfcParser::ItemBase* peek() const { return cursor_ < size_ ? items_[cursor_] : nullptr; }
    /// The item at the cursor; null, with a report, past the end.
    const IfcParser::ItemBase* item() {
        const IfcParser::ItemBase* found = peek();
        if (!found) reportNoData();
        return found;
    }
    /// The item at the cursor if it is a `T`; null, with a report, if not. No advance.
    template <class T>
    const T* itemAs() {
        return checkKind(T::kKind) ? static_cast<const T*>(items_[cursor_]) : nullptr;
    }

    /// Requires an item of this kind at the cursor. No advance.
    bool checkKind(IfcParser::ItemKind kind) {
        const IfcParser::ItemBase* found = item();
        if (!found) return false;
        if (found->is(kind)) return true;
        reportInvalidType();
        return false;
    }

    /// Requires a `*` and passes it.
    bool skipDerived();
    /// Requires an item; passes it and sets `isNull` if it is a `$`.
    bool isNullItem(bool& isNull);
    /// A string. In a lenient read a `$` empties `value`.
    bool readString(XString& value);
    /// The reference at the cursor, which the caller knows to be one; `$` gives a null handle. A
    /// number not seen before gets an empty slot.
    bool readRef(EntityId& value, bool mustExist);
    /// The handle for instance number `n`: null for 0, else that of its slot, made if need be.
    EntityId handle(int n);
    /// A list of at least `min` and, unless `max` is 0, at most `max` items; `value` is null for an
    /// empty one.
    bool readList(const Items*& value, unsigned min, unsigned max);
    /// `.T.`, `.F.` or `.U.`. Any other word fails without a report and is passed.
    bool readLogical(Logical& value);

    /// "Failed to read <typeName>."
    void reportFailed(const char* typeName);
    /// The report of a word that is no literal of the enumeration.
    void reportNoMatch(const char* value, const wchar_t* enumName);
    /// "Ambiguous null reference in <selectName>."
    void reportAmbiguousNull(const char* selectName);
    /// The report of an item of the wrong kind at the cursor.
    void reportInvalidType();
    /// The report of an item of the wrong kind at `position` of a list.
    void reportInvalidType(unsigned position);
    /// The report of a negative number where an unsigned one is due; `position` counts from 1.
    void reportNotUnsigned(unsigned position);
    /// The report of a missing item.
    void reportNoData();
    /// Once per load: a missing enumeration value has been read as the default.
    void warnDefaultEnum();
    /// Once per load: the value of a derived attribute has been ignored.
    void warnDerivedIgnored();

 private:
    /// Of the item at `index` here.
    LossPlace placeOf(unsigned index) const;

    LoadContext* load_;
    const IfcInFiler* outer_ = nullptr;
    unsigned outerIndex_ = 0;                // of this list, or item, in the outer one
    IfcParser::ItemBase* single_ = nullptr;  // of a filer on one item
    IfcParser::ItemBase* const* items_ = nullptr;
    unsigned size_ = 0;
    unsigned cursor_ = 0;
};

}  // namespace Ovik
