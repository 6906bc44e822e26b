// The numbers of a save that keeps them. Internal.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcentitypool.h"
#include "ovik/imp/save/entitynumbers.h"

namespace Ovik {

/// Which entity is written with which number. The entities of a loaded model stand first in its
/// pool, in ascending order of the numbers that they know themselves, so that there a bit for each
/// number in use is enough: how many are lower tells the place in the pool. All others, and numbers
/// that are far apart, go to a table.
class KeptNumbers {
 public:
    using Pool = IfcEntityPool<IfcEntity>;
    struct Numbered {
        unsigned number;
        const IfcEntity* entity;
    };

    explicit KeptNumbers(const Pool& pool) : pool_(pool) {}

    /// Entity `index` of the pool claims the number that it has, which is positive. To be called
    /// in the order of the pool, before all else.
    void claim(std::size_t index);
    /// After the last claim: who was first gets the number.
    void settle();

    /// How many entities at the head of the pool have their own number, in ascending order.
    std::size_t numAscending() const { return numAscending_; }
    /// The others that have kept their number, in ascending order.
    const std::vector<Numbered>& others() const { return others_; }

    /// The number of `entity`; 0 if it has none.
    unsigned find(const IfcEntity& entity) const {
        const auto number = static_cast<unsigned>(entity.ifcId());
        if (number <= last_) {
            const std::size_t index = place(number);
            if (index < numAscending_ && pool_[index] == &entity) return number;
        }
        return table_.find(&entity);
    }
    /// Gives `entity` the next number above the highest; 0 if there is none, or if it has one.
    unsigned give(const IfcEntity& entity);

    /// The highest number so far, and the highest of those that were kept.
    unsigned highest() const { return highest_; }
    unsigned highestKept() const {
        return others_.empty() ? last_ : std::max(last_, others_.back().number);
    }

 private:
    // The use of 32 numbers in a row, and how many below are in use.
    struct Word {
        std::uint32_t bits;
        std::uint32_t below;
    };

    /// Where in the pool the entity stands that has kept `number`, which is at most `last_`, if
    /// there is one.
    std::size_t place(unsigned number) const {
        const Word& word = words_[number / 32];
        const auto lower = word.bits & ((std::uint32_t{1} << number % 32) - 1);
        return word.below + static_cast<std::size_t>(std::popcount(lower));
    }
    bool isKept(unsigned number) const {
        return number <= last_ && (words_[number / 32].bits >> number % 32 & 1) != 0;
    }

    const Pool& pool_;
    std::vector<Word> words_;
    std::size_t numAscending_ = 0;
    unsigned last_ = 0;  // of the ascending ones
    std::vector<Numbered> others_;
    EntityNumbers table_{0};
    unsigned highest_ = 0;
};

}  // namespace Ovik
