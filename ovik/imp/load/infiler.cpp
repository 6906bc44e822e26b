// The read primitives. A report begins with a line end where it tells of an item of a list.
#include "ovik/imp/infiler.h"

#include <ostream>

#include "ovik/base/ascii.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/losscause.h"
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

LossPlace IfcInFiler::placeOf(unsigned index) const {
    if (!outer_) return load_->place;
    LossPlace where = outer_->placeOf(outerIndex_);
    // A filer on one item is no list.
    if (!single_) where.enter(index);
    return where;
}

void IfcInFiler::lost(const char* cause) {
    load_->addLoss(placeOf(cursor_), load_->cause ? load_->cause : cause);
    clearCause();
}

void IfcInFiler::substituted(const char* cause) {
    load_->addSubstitution(placeOf(cursor_), cause);
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
        const char* const text = constant->text.c_str();
        value = exact() ? XString::decodeExact(text) : XString::decode(text);
    } else if (lenient() && isNil(found)) {
        value.setEmpty();
        if (!exact()) substituted(LossCause::kNoValue);
    } else {
        reportInvalidType();
        return false;
    }
    advance();
    return true;
}

EntityId IfcInFiler::handle(int n) {
    return n == 0 ? EntityId() : load_->handle(n);
}

bool IfcInFiler::readRef(EntityId& value, bool mustExist) {
    const int n = static_cast<const ItemRef*>(items_[cursor_])->value;
    value = handle(n);
    if (mustExist && value.isNull()) {
        if (!exact()) load_->log << L"Invalid reference $" << n << L'\n';
        return fail(LossCause::kNoValue);
    }
    advance();
    return true;
}

bool IfcInFiler::readList(const Items*& value, unsigned min, unsigned max) {
    const auto* const list = itemAs<ItemList>();
    if (!list) return false;
    const std::size_t size = list->items ? list->items->size() : 0;
    const bool tooShort = size < min;
    if (!exact() && (tooShort || (max != 0 && size > max))) {
        load_->log << L"\nItem " << cursor_ << L": invalid array size " << size << L", expected at "
                   << (tooShort ? L"least " : L"most ") << (tooShort ? min : max) << L'\n';
        return fail(tooShort ? LossCause::kTooFew : LossCause::kTooMany);
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
    if (compareNoCase(word->name->text.c_str(), "U") != 0) return fail(LossCause::kNoLiteral);
    value = Logical();
    return true;
}

void IfcInFiler::reportFailed(const char* typeName) {
    if (!exact()) load_->log << L"Failed to read " << typeName << L".\n";
}

void IfcInFiler::reportNoMatch(const char* value, const wchar_t* enumName) {
    fail(LossCause::kNoLiteral);
    if (exact()) return;
    load_->log << L"\nFailed to match string " << value << L" as a value of enum class " << enumName
               << L'\n';
}

void IfcInFiler::reportAmbiguousNull(const char* selectName) {
    fail(LossCause::kNoValue);
    if (!exact()) load_->log << L"Ambiguous null reference in " << selectName << L".\n";
}

void IfcInFiler::reportInvalidType() {
    reportInvalidType(cursor_);
}

void IfcInFiler::reportInvalidType(unsigned position) {
    fail(LossCause::kWrongKind);
    if (!exact()) load_->log << L"\nInvalid type of item " << position << L'\n';
}

void IfcInFiler::reportNotUnsigned(unsigned position) {
    fail(LossCause::kNegative);
    if (!exact()) load_->log << L"\nUnsigned value expected at item " << position << L'\n';
}

void IfcInFiler::reportNoData() {
    fail(LossCause::kMissing);
    if (!exact()) load_->log << L"\nNo data to read\n";
}

void IfcInFiler::warnDefaultEnum() {
    if (load_->isNewWarning(kWarnDefaultEnum)) {
        load_->log << L"Warning: missing enum value(s) read as default value\n";
    }
}

void IfcInFiler::warnDerivedIgnored() {
    if (load_->isNewWarning(kWarnDerivedIgnored)) {
        load_->log << L"Warning: derived attribute value is ignored\n";
    }
}

}  // namespace Ovik
