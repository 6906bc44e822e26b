// The cursor through which an entity reads its attributes from the parsed items of its record.
#pragma once

#include <exception>
#include <iosfwd>
#include <vector>

#include "ovik/base/export.h"
#include "ovik/parser/items.h"

namespace Ovik {

class EntityId;
class IfcReader;
class Logical;
class XString;

/// Thrown by the `read` of a select that can't decide before its target has been read. The reader
/// catches it and reads the record again once all records are there.
class OVIK_API SelectorNeedSecondPassRead : public std::exception {};

/// Reads one list of parsed items in order. The operations return true on success; on failure they
/// have written their report to the log of the load, unless said otherwise, and the cursor stays.
/// One thread, within one load.
class OVIK_API IfcInFiler {
 public:
    using Items = std::vector<IfcParser::ItemBase*>;

    /// A filer on `items`, null for an empty list, at the first.
    IfcInFiler(IfcReader& reader, const Items* items, std::wostream& log)
        : reader_(&reader), log_(&log) {
        reset(items);
    }

    /// A filer on another list of the same load, at its first item.
    IfcInFiler(const IfcInFiler& outer, const Items* items)
        : reader_(outer.reader_), log_(outer.log_) {
        reset(items);
    }

    /// A filer of the same load on one item alone, which must outlive it.
    IfcInFiler(const IfcInFiler& outer, IfcParser::ItemBase* const& item)
        : reader_(outer.reader_), log_(outer.log_), items_(&item), size_(1) {}

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
    bool lenient() const;
    /// True if the load was asked to keep values letter for letter, see `IfcReadOptions::exact`.
    bool exact() const;
    /// True while records are read for the second time.
    bool secondPass() const;

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
    IfcReader* reader_;
    std::wostream* log_;
    IfcParser::ItemBase* const* items_ = nullptr;
    unsigned size_ = 0;
    unsigned cursor_ = 0;
};

}  // namespace Ovik
