// Writing: values, records and the file around them.
#include "ovik/imp/outfiler.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <ostream>
#include <string>
#include <utility>

#include "ovik/base/deepstack.h"
#include "ovik/base/unicode.h"
#include "ovik/imp/base64guid.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/logical.h"
#include "ovik/imp/save/outfilerimp.h"
#include "ovik/imp/xbinary.h"
#include "ovik/imp/xstring.h"

namespace Ovik {
namespace {

// What a record takes in an average file, for a first guess at the size of the data section.
constexpr std::size_t kUsualRecordSize = 64;

// A real whose fraction is smaller than this is written as an integer with a point.
constexpr double kFractionTolerance = 1e-12;
// The magnitude that a signed 64-bit integer can't hold any more.
constexpr double kIntegerLimit = 9223372036854775808.0;

constexpr int kSignificantDigits = 16;
// The decimal exponents that are written without `E`, as the C format `%G` has them.
constexpr int kMinFixedExponent = -4;
constexpr int kMaxFixedExponent = kSignificantDigits - 1;

template <class Integer>
void appendInteger(std::string& text, Integer value) {
    char buffer[24];
    char* const end = std::to_chars(buffer, std::end(buffer), value).ptr;
    text.append(buffer, end);
}

// What the C format "%#.16G" gives, in any locale.
void appendDigits(std::string& text, double value) {
    if (std::signbit(value)) text += '-';
    if (!std::isfinite(value)) {
        text += std::isnan(value) ? "NAN" : "INF";
        return;
    }
    // One digit, the point, the others, "e", sign and exponent.
    char buffer[32];
    char* const end = std::to_chars(buffer, std::end(buffer), std::fabs(value),
                                    std::chars_format::scientific, kSignificantDigits - 1)
                          .ptr;
    char* const letter = buffer + kSignificantDigits + 1;
    int exponent = 0;
    std::from_chars(letter + 2, end, exponent);
    if (letter[1] == '-') exponent = -exponent;

    if (exponent < kMinFixedExponent || exponent > kMaxFixedExponent) {
        *letter = 'E';
        text.append(buffer, end);
    } else if (exponent < 0) {
        text += "0.";
        text.append(static_cast<std::size_t>(-exponent - 1), '0');
        text += buffer[0];
        text.append(buffer + 2, letter);
    } else {
        // The point moves right past `exponent` digits.
        std::memmove(buffer + 1, buffer + 2, static_cast<std::size_t>(exponent));
        buffer[exponent + 1] = '.';
        text.append(buffer, letter);
    }
}

void appendQuoted(std::string& text, const char* value, char quote = '\'') {
    text += quote;
    text += value;
    text += quote;
}

std::string localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    // The time zone may have changed since it was last asked for.
#if defined(_WIN32)
    _tzset();
    localtime_s(&local, &now);
#else
    tzset();
    localtime_r(&now, &local);
#endif
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02dT%02d:%02d:%02d", local.tm_year + 1900,
                  local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return buffer;
}

std::string headerSection(const IfcModel& model, const IfcHeader& header) {
    std::string text = "HEADER;\nFILE_DESCRIPTION((";
    appendQuoted(text, header.fileDescription().getEncoded());
    text += "),'2;1');\nFILE_NAME(";
    appendQuoted(text, header.fileName().getEncoded());
    text += ',';
    const XString& timeStamp = header.timeStamp();
    appendQuoted(text, timeStamp.isEmpty() ? localTime().c_str() : timeStamp.getEncoded());
    text += ",(";
    appendQuoted(text, header.author().getEncoded());
    text += "),(";
    appendQuoted(text, header.organization().getEncoded());
    text += "),";
    appendQuoted(text, header.preprocessorVersion().getEncoded());
    text += ',';
    appendQuoted(text, header.originatingSystem().getEncoded());
    text += ',';
    appendQuoted(text, header.authorization().getEncoded());
    text += ");\nFILE_SCHEMA((";
    appendQuoted(text, XString(schemaName(model.schemaId())).getEncoded());
    text += "));\nENDSEC;\n";
    return text;
}

}  // namespace

EntityNumbers::EntityNumbers(std::size_t count) {
    unsigned bits = 4;
    while ((std::size_t{1} << bits) * 2 / 3 <= count) ++bits;
    places_.resize(std::size_t{1} << bits);
    shift_ = 64 - bits;
}

std::size_t EntityNumbers::place(const IfcEntity* entity) const {
    // Entities that were made one after the other are mostly met so, too. Those of 16 KB go to a
    // window of 256 places, in the order of their addresses, for the sake of the caches; the
    // windows are spread by 2^64 divided by the golden ratio.
    const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(entity));
    const std::uint64_t window = (address >> 14) * 0x9E3779B97F4A7C15u >> shift_;
    std::size_t index = (window + (address >> 6 & 255)) & (places_.size() - 1);
    while (places_[index].entity && places_[index].entity != entity) {
        index = (index + 1) & (places_.size() - 1);
    }
    return index;
}

bool EntityNumbers::add(const IfcEntity* entity) {
    std::size_t index = place(entity);
    if (places_[index].entity) return false;
    if ((size_ + std::size_t{1}) * 3 > places_.size() * 2) {
        grow();
        index = place(entity);
    }
    places_[index] = {entity, ++size_};
    return true;
}

void EntityNumbers::grow() {
    const std::vector<Place> old = std::exchange(places_, std::vector<Place>(places_.size() * 2));
    --shift_;
    for (const Place& p : old) {
        if (p.entity) places_[place(p.entity)] = p;
    }
}

void appendReal(std::string& text, double value) {
    if (std::fabs(value) < kIntegerLimit) {
        const auto whole = static_cast<std::int64_t>(value);
        const double fraction = value - static_cast<double>(whole);
        if (std::fabs(fraction) <= kFractionTolerance) {
            appendInteger(text, whole);
            text += '.';
            return;
        }
    }
    appendDigits(text, value);
}

IfcOutFilerImp::IfcOutFilerImp(std::size_t numEntities) : numbers_(numEntities) {
    data_.reserve(numEntities * kUsualRecordSize);
}

void IfcOutFilerImp::openItem(const char* name) {
    std::string& text = nextValue();
    if (name) text += name;
    text += '(';
    outerItems_.push_back(numItems_);
    numItems_ = 0;
}

void IfcOutFilerImp::closeItem() {
    text_ += ')';
    numItems_ = outerItems_.back();
    outerItems_.pop_back();
}

bool IfcOutFilerImp::openRecord(const IfcEntity& entity) {
    if (!numbers_.add(&entity)) return false;
    const unsigned number = numbers_.size();
    records_.push_back({text_.size(), number});
    outerItems_.push_back(numItems_);
    numItems_ = 0;
    text_ += '#';
    appendInteger(text_, number);
    text_ += "= ";
    text_ += entity.isA()->className();
    text_ += '(';
    return true;
}

void IfcOutFilerImp::closeRecord() {
    text_ += ");\n";
    numItems_ = outerItems_.back();
    outerItems_.pop_back();
    const OpenRecord record = records_.back();
    records_.pop_back();

    if (!records_.empty()) {
        const std::size_t index = record.number - records_.front().number - 1;
        if (index >= stored_.size()) stored_.resize(index + 1);
        stored_[index] = {store_.size(), text_.size() - record.begin};
        store_.append(text_, record.begin);
        text_.resize(record.begin);
        return;
    }
    data_ += text_;
    text_.clear();
    for (const Stored& nested : stored_) data_.append(store_, nested.begin, nested.size);
    stored_.clear();
    store_.clear();
}

const std::string& IfcOutFilerImp::data() {
    // What was written outside of any record.
    data_ += text_;
    text_.clear();
    return data_;
}

IfcOutFiler::IfcOutFiler(std::unique_ptr<IfcOutFilerImp> imp) : imp_(std::move(imp)) {}

IfcOutFiler::~IfcOutFiler() = default;

void IfcOutFiler::writeNull() {
    imp_->nextValue() += '$';
}

void IfcOutFiler::writeDerived() {
    imp_->nextValue() += '*';
}

void IfcOutFiler::writeReference(unsigned number) {
    std::string& text = imp_->nextValue();
    if (number == 0) {
        text += '$';
    } else {
        text += '#';
        appendInteger(text, number);
    }
}

void IfcOutFiler::writeEnum(const char* text) {
    appendQuoted(imp_->nextValue(), text, '.');
}

void IfcOutFiler::writeBool(bool value) {
    writeEnum(value ? "T" : "F");
}

void IfcOutFiler::writeLogical(const Logical& value) {
    writeEnum(value.isUnknown() ? "U" : value ? "T" : "F");
}

void IfcOutFiler::writeInt(int value) {
    appendInteger(imp_->nextValue(), value);
}

void IfcOutFiler::writeUnsigned(unsigned value) {
    appendInteger(imp_->nextValue(), value);
}

void IfcOutFiler::writeReal(double value) {
    appendReal(imp_->nextValue(), value);
}

void IfcOutFiler::writeString(const XString& value) {
    appendQuoted(imp_->nextValue(), value.getEncoded());
}

void IfcOutFiler::writeGuid(const Base64Guid& value) {
    appendQuoted(imp_->nextValue(), value.getBase64());
}

void IfcOutFiler::writeBinary(const XBinary& value) {
    appendQuoted(imp_->nextValue(), value.getEncodedString(), '"');
}

void IfcOutFiler::writeEntity(const IfcEntity* entity) {
    unsigned number = 0;
    if (entity) {
        number = imp_->numberOf(entity);
        if (number == 0) {
            callDeep([&] { entity->write(*this); });
            number = imp_->numberOf(entity);
        }
    }
    writeReference(number);
}

void IfcOutFiler::openItem(const char* name) {
    imp_->openItem(name);
}

void IfcOutFiler::closeItem() {
    imp_->closeItem();
}

bool IfcOutFiler::openRecord(const IfcEntity& entity) {
    return imp_->openRecord(entity);
}

void IfcOutFiler::closeRecord() {
    imp_->closeRecord();
}

void writeModel(std::ostream& out, const IfcModel& model, const IfcHeader& header) {
    out << "ISO-10303-21;\n" << headerSection(model, header) << std::endl;

    const std::uint64_t count = model.getNumEntities();
    IfcOutFiler filer(std::make_unique<IfcOutFilerImp>(count));
    for (std::uint64_t i = 0; i < count; ++i) model.get(i)->write(filer);

    IfcOutFilerImp& imp = filer.imp();
    out << "DATA;\n";
    out << (imp.isAnyNumbered() ? std::string_view(imp.data()) : "#1= ();\n");
    out << "ENDSEC;\nEND-ISO-10303-21;\n";
}

bool IfcModel::write(const wchar_t* path, const IfcHeader& header) const {
    return write(pathFromWide(path), header);
}

bool IfcModel::write(const std::filesystem::path& path, const IfcHeader& header) const {
    std::ofstream file(path, std::ios::trunc);
    if (!file) return false;
    writeModel(file, *this, header);
    return true;
}

}  // namespace Ovik
