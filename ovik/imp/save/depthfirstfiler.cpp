// The stack of open records, and the way of their texts to the data section.
#include "ovik/imp/save/depthfirstfiler.h"

#include <algorithm>

#include "ovik/base/deepstack.h"
#include "ovik/imp/ifcentity.h"

namespace Ovik {
namespace {

// What a record takes in an average file, for a first guess at the size of the data section.
constexpr std::size_t kUsualRecordSize = 64;
constexpr std::size_t kFirstBuffer = 4096;

}  // namespace

DepthFirstFiler::DepthFirstFiler(std::size_t numEntities, TextSink* sink)
    : IfcOutFilerImp(sink != nullptr),
      sink_(sink),
      buffer_(new char[kFirstBuffer]),
      numbers_(numEntities) {
    at_ = buffer_.get();
    end_ = at_ + kFirstBuffer;
    if (!sink) data_.reserve(numEntities * kUsualRecordSize);
}

void DepthFirstFiler::makeRoom() {
    const std::size_t used = textSize();
    const std::size_t size = 2 * static_cast<std::size_t>(end_ - buffer_.get());
    std::unique_ptr<char[]> larger(new char[size]);
    std::copy(buffer_.get(), at_, larger.get());
    buffer_ = std::move(larger);
    at_ = buffer_.get() + used;
    end_ = buffer_.get() + size;
}

bool DepthFirstFiler::openRecord(const IfcEntity& entity) {
    const unsigned number = numbers_.size() + 1;
    if (!numbers_.add(&entity, number)) return false;
    records_.push_back({textSize(), number, isFirst_, entity_});
    entity_ = &entity;
    beginRecord(entity, number);
    return true;
}

void DepthFirstFiler::closeRecord() {
    append(");\n");
    const OpenRecord record = records_.back();
    records_.pop_back();
    isFirst_ = record.isFirst;
    entity_ = record.outer;

    char* const begin = buffer_.get() + record.begin;
    if (!records_.empty()) {
        const std::size_t index = record.number - records_.front().number - 1;
        if (index >= stored_.size()) stored_.resize(index + 1);
        stored_[index] = {store_.size(), static_cast<std::size_t>(at_ - begin)};
        store_.append(begin, at_);
        at_ = begin;
        return;
    }
    // What an entity writes outside of any record is no part of a file that must read back.
    data_.append(exact() ? begin : buffer_.get(), at_);
    at_ = buffer_.get();
    for (const Stored& nested : stored_) data_.append(store_, nested.begin, nested.size);
    stored_.clear();
    store_.clear();
    if (sink_ && data_.size() >= TextSink::kPiece) handOn();
}

unsigned DepthFirstFiler::numberFor(const IfcEntity& entity, IfcOutFiler& out) {
    const unsigned number = numbers_.find(&entity);
    if (number != 0) return number;
    const std::size_t size = textSize();
    const bool isFirst = isFirst_;
    callDeep([&] { entity.write(out); });
    if (exact()) {
        // Records have left the buffer: what is there was written outside of any.
        at_ = buffer_.get() + size;
        isFirst_ = isFirst;
    }
    return numbers_.find(&entity);
}

const std::string& DepthFirstFiler::data() {
    // What was written outside of any record.
    data_.append(buffer_.get(), at_);
    at_ = buffer_.get();
    return data_;
}

void DepthFirstFiler::handOn() {
    sink_->put(data_);
    data_.clear();
}

}  // namespace Ovik
