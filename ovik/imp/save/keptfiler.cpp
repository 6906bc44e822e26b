// The steps of a save that keeps numbers, and what records out of turn ask for.
#include "ovik/imp/save/keptfiler.h"

#include <algorithm>

#include "ovik/base/progressmeter.h"
#include "ovik/imp/outfiler.h"

namespace Ovik {
namespace {

// How far ahead of a walk over the pool the entities are fetched from memory, where each stands in
// a place of its own.
constexpr std::size_t kAhead = 8;

void fetchAhead(const KeptNumbers::Pool& pool, std::size_t index) {
#if defined(__GNUC__)
    if (index + kAhead < pool.size()) __builtin_prefetch(pool[index + kAhead]);
#endif
}

}  // namespace

KeptFiler::KeptFiler(const KeptNumbers::Pool& pool, TextSink& sink)
    : IfcOutFilerImp(true),
      pool_(pool),
      sink_(sink),
      numbers_(pool),
      buffer_(new char[TextSink::kPiece]),
      kept_(buffer_.get()) {
    at_ = buffer_.get();
    end_ = at_ + TextSink::kPiece;
}

void KeptFiler::run(IfcOutFiler& out, ProgressMeter* meter) {
    giveNumbers(out);
    const unsigned firstNew = numbers_.highestKept() + 1;
    step_ = Step::Write;

    std::uint64_t numDone = 0;
    const auto isDone = [&] {
        if (meter) meter->progress(++numDone);
        return isBroken();
    };
    auto other = numbers_.others().begin();
    const auto writeOthers = [&](unsigned below) {
        for (; other != numbers_.others().end() && other->number < below; ++other) {
            writeTurn(*other->entity, other->number, out);
        }
    };
    for (std::size_t i = 0; i < numbers_.numAscending(); ++i) {
        fetchAhead(pool_, i);
        const auto number = static_cast<unsigned>(pool_[i]->ifcId());
        writeOthers(number);
        writeTurn(*pool_[i], number, out);
        if (isDone()) return;
    }
    writeOthers(firstNew);

    // From here on each number follows the one before.
    turn_ = firstNew;
    writeWaiting();
    for (std::size_t i = numbers_.numAscending(); i < pool_.size(); ++i) {
        pool_[i]->write(out);
        writeWaiting();
        if (isDone()) return;
    }
    for (std::size_t i = 0; i < reached_.size() && !isBroken(); ++i) {
        reached_[i]->write(out);
        writeWaiting();
    }
    handOn();
    for (const auto& [number, text] : waiting_) sink_.put(text);
}

void KeptFiler::giveNumbers(IfcOutFiler& out) {
    step_ = Step::Claim;
    for (std::size_t i = 0; i < pool_.size(); ++i) {
        fetchAhead(pool_, i);
        wanted_ = pool_[i];
        if (wanted_->ifcId() <= 0) continue;
        isWantedMet_ = false;
        wanted_->write(out);
        if (isWantedMet_) numbers_.claim(i);
    }
    wanted_ = nullptr;
    numbers_.settle();
    step_ = Step::Number;
    for (std::size_t i = numbers_.numAscending(); i < pool_.size(); ++i) pool_[i]->write(out);
}

unsigned KeptFiler::give(const IfcEntity& entity) {
    const unsigned number = numbers_.give(entity);
    isOutOfNumbers_ |= number == 0;
    return number;
}

void KeptFiler::writeTurn(const IfcEntity& entity, unsigned number, IfcOutFiler& out) {
    // It may have been before its turn.
    if (number < turn_) return;
    turn_ = number;
    wanted_ = &entity;
    entity.write(out);
    wanted_ = nullptr;
    writeWaiting();
}

void KeptFiler::writeWaiting() {
    while (!waiting_.empty() && waiting_.begin()->first == turn_) {
        handOn();
        sink_.put(waiting_.begin()->second);
        waiting_.erase(waiting_.begin());
        ++turn_;
    }
}

void KeptFiler::handOn() {
    const std::string_view text(buffer_.get(), (entity_ ? at_ : kept_) - buffer_.get());
    if (text_) {
        text_->append(text);
    } else {
        sink_.put(text);
    }
    at_ = kept_ = buffer_.get();
}

bool KeptFiler::openRecord(const IfcEntity& entity) {
    if (step_ == Step::Claim) {
        isWantedMet_ |= &entity == wanted_;
        return false;
    }
    unsigned number = &entity == wanted_ ? turn_ : numbers_.find(entity);
    if (number == 0) number = give(entity);
    if (number == 0 || step_ == Step::Number) return false;

    const auto isThis = [number](const OpenRecord& record) { return record.number == number; };
    if (number < turn_ || waiting_.contains(number) ||
        std::any_of(records_.begin(), records_.end(), isThis)) {
        return false;
    }
    std::string* text = nullptr;
    if (records_.empty()) at_ = kept_;
    if (!records_.empty() || number != turn_) {
        handOn();
        text = text_ = &waiting_[number];
    } else {
        wanted_ = nullptr;
    }
    records_.push_back({&entity, number, text, isFirst_});
    entity_ = &entity;
    beginRecord(entity, number);
    return true;
}

void KeptFiler::closeRecord() {
    append(");\n");
    const OpenRecord record = records_.back();
    if (record.text) {
        handOn();
    } else {
        ++turn_;
    }
    records_.pop_back();
    text_ = records_.empty() ? nullptr : records_.back().text;
    entity_ = records_.empty() ? nullptr : records_.back().entity;
    isFirst_ = record.isFirst;
    kept_ = at_;
}

unsigned KeptFiler::numberFor(const IfcEntity& entity, IfcOutFiler& out) {
    if (step_ == Step::Claim) return 0;
    if (const unsigned number = numbers_.find(entity)) return number;
    if (step_ == Step::Number) return 0;

    // It isn't in the pool, or writes nothing: it is asked, and its answer is no part of the text.
    struct Asking {
        KeptFiler& filer;
        const IfcEntity* const entity = filer.entity_;
        const bool isFirst = filer.isFirst_;
        explicit Asking(KeptFiler& f) : filer(f) {
            f.step_ = Step::Number;
            f.kept_ = f.at_;
            f.entity_ = nullptr;
        }
        ~Asking() {
            filer.step_ = Step::Write;
            filer.at_ = filer.kept_;
            filer.entity_ = entity;
            filer.isFirst_ = isFirst;
        }
    };
    const unsigned highest = numbers_.highest();
    {
        const Asking asking(*this);
        entity.write(out);
    }
    if (numbers_.highest() != highest) reached_.push_back(&entity);
    return numbers_.find(entity);
}

}  // namespace Ovik
