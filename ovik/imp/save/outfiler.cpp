// The primitives that entities write themselves with.
#include "ovik/imp/outfiler.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include "ovik/base/realtext.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/save/outfilerimp.h"
#include "ovik/imp/save/quotable.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"

namespace Ovik {
namespace {

void writeChar(IfcOutFilerImp& imp, char value) {
    char* const out = imp.beginValue();
    *out = value;
    imp.endValue(out + 1);
}

template <class Integer>
void writeInteger(IfcOutFilerImp& imp, Integer value) {
    char* const out = imp.beginValue();
    imp.endValue(std::to_chars(out, out + std::numeric_limits<Integer>::digits10 + 2, value).ptr);
}

void writeQuoted(IfcOutFilerImp& imp, std::string_view text, char quote) {
    writeChar(imp, quote);
    imp.append(text);
    imp.append(quote);
}

}  // namespace

void IfcOutFilerImp::openItem(const char* name) {
    beginValue();
    if (name) append(name);
    append('(');
    isFirst_ = true;
}

void IfcOutFilerImp::beginRecord(const IfcEntity& entity, unsigned number) {
    if (static_cast<std::size_t>(end_ - at_) < kRoom) makeRoom();
    *at_++ = '#';
    at_ = std::to_chars(at_, end_, number).ptr;
    *at_++ = '=';
    *at_++ = ' ';
    append(entity.isA()->className());
    append('(');
    isFirst_ = true;
    ++numRecords_;
    if (entity.ifcId() != 0 && static_cast<unsigned>(entity.ifcId()) != number) ++numRenumbered_;
}

IfcOutFiler::IfcOutFiler(std::unique_ptr<IfcOutFilerImp> imp) : imp_(std::move(imp)) {}

IfcOutFiler::~IfcOutFiler() = default;

bool IfcOutFiler::exact() const {
    return imp_->exact();
}

void IfcOutFiler::writeNull() {
    writeChar(*imp_, '$');
}

void IfcOutFiler::writeDerived() {
    writeChar(*imp_, '*');
}

void IfcOutFiler::writeReference(unsigned number) {
    if (number == 0) return writeNull();
    char* const out = imp_->beginValue();
    *out = '#';
    imp_->endValue(std::to_chars(out + 1, out + 12, number).ptr);
}

void IfcOutFiler::writeEnum(const char* text) {
    writeQuoted(*imp_, text, '.');
}

void IfcOutFiler::writeBool(bool value) {
    writeEnum(value ? "T" : "F");
}

void IfcOutFiler::writeLogical(const Logical& value) {
    writeEnum(value.isUnknown() ? "U" : value ? "T" : "F");
}

void IfcOutFiler::writeInt(int value) {
    writeInteger(*imp_, value);
}

void IfcOutFiler::writeUnsigned(unsigned value) {
    writeInteger(*imp_, value);
}

void IfcOutFiler::writeReal(double value) {
    char* const out = imp_->beginValue();
    if (!imp_->exact()) {
        imp_->endValue(putPlainReal(out, value));
    } else if (std::isfinite(value)) {
        imp_->endValue(putShortestReal(out, value));
    } else {
        imp_->refuse(attribute_);
    }
}

void IfcOutFiler::writeString(const XString& value) {
    if (imp_->exact() && value.isEmpty()) return writeNull();
    const std::string_view text = value.getEncoded();
    if (imp_->exact() && !isQuotable(text)) {
        writeQuoted(*imp_, XString(value.c_str()).getEncoded(), '\'');
    } else {
        writeQuoted(*imp_, text, '\'');
    }
}

void IfcOutFiler::writeGuid(const Base64Guid& value) {
    const std::string_view text = value.getBase64();
    if (imp_->exact() && text.empty()) return writeNull();
    writeQuoted(*imp_, text, '\'');
}

void IfcOutFiler::writeBinary(const XBinary& value) {
    writeQuoted(*imp_, value.getEncodedString(), '"');
}

void IfcOutFiler::writeEntity(const IfcEntity* entity) {
    const char* const attribute = attribute_;
    writeReference(entity ? imp_->numberFor(*entity, *this) : 0);
    attribute_ = attribute;
}

void IfcOutFiler::openItem(const char* name) {
    imp_->openItem(name);
}

void IfcOutFiler::closeItem() {
    imp_->closing([this] { imp_->closeItem(); });
}

bool IfcOutFiler::openRecord(const IfcEntity& entity) {
    if (!imp_->openRecord(entity)) return false;
    attribute_ = nullptr;
    return true;
}

void IfcOutFiler::closeRecord() {
    imp_->closing([this] { imp_->closeRecord(); });
}

}  // namespace Ovik
