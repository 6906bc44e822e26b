// Settling who has which number, and the search for it.
#include "ovik/imp/save/keptnumbers.h"

#include <algorithm>
#include <limits>

namespace Ovik {
namespace {

// How many numbers there may be for each entity, on average, for the bits to take less memory than
// all else would: 4 bytes an entity.
constexpr std::uint64_t kMostNumbers = 16;

}  // namespace

void KeptNumbers::claim(std::size_t index) {
    const IfcEntity* const entity = pool_[index];
    const auto number = static_cast<unsigned>(entity->ifcId());
    if (index != numAscending_ || number <= last_ || number > kMostNumbers * pool_.size()) {
        others_.push_back({number, entity});
        return;
    }
    const std::size_t word = number / 32;
    if (word >= words_.size()) {
        words_.resize(word + 1, {0, static_cast<std::uint32_t>(numAscending_)});
    }
    words_[word].bits |= std::uint32_t{1} << number % 32;
    last_ = number;
    ++numAscending_;
}

void KeptNumbers::settle() {
    if (words_.empty()) words_.push_back({0, 0});
    std::stable_sort(others_.begin(), others_.end(),
                     [](const Numbered& a, const Numbered& b) { return a.number < b.number; });
    table_ = EntityNumbers(pool_.size() - numAscending_);
    unsigned taken = 0;
    std::erase_if(others_, [&](const Numbered& other) {
        if (other.number == taken || isKept(other.number)) return true;
        taken = other.number;
        table_.add(other.entity, other.number);
        return false;
    });
    highest_ = highestKept();
}

unsigned KeptNumbers::give(const IfcEntity& entity) {
    if (highest_ == static_cast<unsigned>(std::numeric_limits<int>::max())) return 0;
    if (!table_.add(&entity, highest_ + 1)) return 0;
    return ++highest_;
}

}  // namespace Ovik
