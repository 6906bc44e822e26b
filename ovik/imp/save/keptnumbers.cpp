// Settling who has which number, and the search for it.
#include "ovik/imp/save/keptnumbers.h"

#include <algorithm>
#include <limits>

namespace Ovik {
namespace {

// How many entities a stretch of numbers has on average, at most.
constexpr std::size_t kUsualStretch = 16;

}  // namespace

void KeptNumbers::claim(std::size_t index) {
    const IfcEntity* const entity = pool_[index];
    const auto number = static_cast<std::uint32_t>(entity->ifcId());
    if (index == ascending_.size() && number > last_) {
        if (index == 0) ascending_.reserve(pool_.size());
        ascending_.push_back(number);
        last_ = number;
    } else {
        others_.push_back({number, entity});
    }
}

void KeptNumbers::settle() {
    while ((last_ >> shift_) > ascending_.size() / kUsualStretch) ++shift_;
    std::uint32_t index = 0;
    for (std::uint32_t stretch = 0; stretch <= last_ >> shift_; ++stretch) {
        stretches_.push_back(index);
        while (index < ascending_.size() && ascending_[index] >> shift_ == stretch) ++index;
    }
    stretches_.push_back(index);

    std::stable_sort(others_.begin(), others_.end(),
                     [](const Numbered& a, const Numbered& b) { return a.number < b.number; });
    table_ = EntityNumbers(pool_.size() - ascending_.size());
    std::uint32_t taken = 0;
    std::erase_if(others_, [&](const Numbered& other) {
        if (other.number == taken ||
            std::binary_search(ascending_.begin(), ascending_.end(), other.number)) {
            return true;
        }
        taken = other.number;
        table_.add(other.entity, other.number);
        return false;
    });
    highest_ = highestKept();
}

std::size_t KeptNumbers::search(std::uint32_t number) const {
    const std::size_t begin = stretches_[number >> shift_];
    const std::size_t end = stretches_[(number >> shift_) + 1];
    if (begin == end || number < ascending_[begin]) return begin;
    // Where numbers follow each other, this is the place; it can't be beyond.
    const std::size_t guess = std::min<std::size_t>(begin + (number - ascending_[begin]), end - 1);
    if (ascending_[guess] == number) return guess;
    const auto first = ascending_.begin();
    return static_cast<std::size_t>(std::lower_bound(first + static_cast<std::ptrdiff_t>(begin),
                                                     first + static_cast<std::ptrdiff_t>(guess),
                                                     number) -
                                    first);
}

unsigned KeptNumbers::give(const IfcEntity& entity) {
    if (highest_ == static_cast<unsigned>(std::numeric_limits<int>::max())) return 0;
    if (!table_.add(&entity, highest_ + 1)) return 0;
    return ++highest_;
}

}  // namespace Ovik
