// The read primitives. A report begins with a line end where it tells of an item of a list.
#include "ovik/imp/infiler.h"

#include <ostream>

#include "ovik/base/ascii.h"
#include "ovik/imp/load/ifcreader.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/xstring.h"

namespace Ovik {

using IfcParser::ItemBool;
using IfcParser::ItemEnum;
using IfcParser::ItemKind;
using IfcParser::ItemList;
using IfcParser::ItemRef;
using IfcParser::ItemString;

namespace {

enum Warning {
    kWarnDefaultEnum = 0,
    kWarnDerivedIgnored = 1,
};

// Is it a `$`?
bool isNil(const IfcParser::ItemBase* item) {
    const auto* const ref = item->as<ItemRef>();
    return ref && ref->value == 0;
}

}  // namespace

bool IfcInFiler::lenient() const {
    return reader_->lenient();
}

bool IfcInFiler::exact() const {
    return reader_->exact();
}

bool IfcInFiler::secondPass() const {
    return reader_->secondPass();
}

bool IfcInFiler::skipDerived() {
    if (!checkKind(ItemKind::Derived)) return false;
    advance();
    return true;
}

bool IfcInFiler::isNullItem(bool& isNull) {
    const IfcParser::ItemBase* const found = item();
    if (!found) return false;
    isNull = isNil(found);
    if (isNull) advance();
    return true;
}

bool IfcInFiler::readString(XString& value) {
    const IfcParser::ItemBase* const found = item();
    if (!found) return false;
    if (const auto* const constant = found->as<ItemString>()) {
        value = XString::decode(constant->text.c_str());
    } else if (lenient() && isNil(found)) {
        value.setEmpty();
    } else {
        reportInvalidType();
        return false;
    }
    advance();
    return true;
}

EntityId IfcInFiler::handle(int n) {
    return n == 0 ? EntityId() : reader_->handle(n);
}

bool IfcInFiler::readRef(EntityId& value, bool mustExist) {
    const int n = static_cast<const ItemRef*>(items_[cursor_])->value;
    value = handle(n);
    if (mustExist && value.isNull()) {
        *log_ << L"Invalid reference $" << n << L'\n';
        return false;
    }
    advance();
    return true;
}

bool IfcInFiler::readList(const Items*& value, unsigned min, unsigned max) {
    const auto* const list = itemAs<ItemList>();
    if (!list) return false;
    const std::size_t size = list->items ? list->items->size() : 0;
    const bool tooShort = size < min;
    if (tooShort || (max != 0 && size > max)) {
        *log_ << L"\nItem " << cursor_ << L": invalid array size " << size << L", expected at "
              << (tooShort ? L"least " : L"most ") << (tooShort ? min : max) << L'\n';
        return false;
    }
    value = list->items;
    advance();
    return true;
}

bool IfcInFiler::readLogical(Logical& value) {
    const IfcParser::ItemBase* const found = item();
    if (!found) return false;
    if (const auto* const truth = found->as<ItemBool>()) {
        value = Logical(truth->value != 0);
        advance();
        return true;
    }
    const auto* const word = itemAs<ItemEnum>();
    if (!word) return false;
    advance();
    if (compareNoCase(word->name->text.c_str(), "U") != 0) return false;
    value = Logical();
    return true;
}

void IfcInFiler::reportFailed(const char* typeName) {
    *log_ << L"Failed to read " << typeName << L".\n";
}

void IfcInFiler::reportNoMatch(const char* value, const wchar_t* enumName) {
    *log_ << L"\nFailed to match string " << value << L" as a value of enum class " << enumName
          << L'\n';
}

void IfcInFiler::reportAmbiguousNull(const char* selectName) {
    *log_ << L"Ambiguous null reference in " << selectName << L".\n";
}

void IfcInFiler::reportInvalidType() {
    reportInvalidType(cursor_);
}

void IfcInFiler::reportInvalidType(unsigned position) {
    *log_ << L"\nInvalid type of item " << position << L'\n';
}

void IfcInFiler::reportNotUnsigned(unsigned position) {
    *log_ << L"\nUnsigned value expected at item " << position << L'\n';
}

void IfcInFiler::reportNoData() {
    *log_ << L"\nNo data to read\n";
}

void IfcInFiler::warnDefaultEnum() {
    if (reader_->isNewWarning(kWarnDefaultEnum)) {
        *log_ << L"Warning: missing enum value(s) read as default value\n";
    }
}

void IfcInFiler::warnDerivedIgnored() {
    if (reader_->isNewWarning(kWarnDerivedIgnored)) {
        *log_ << L"Warning: derived attribute value is ignored\n";
    }
}

}  // namespace Ovik
