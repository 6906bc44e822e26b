// The numbers of a save that keeps them. Internal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcentitypool.h"
#include "ovik/imp/save/entitynumbers.h"

namespace Ovik {

/// Which entity is written with which number. The entities of a loaded model stand first in its
/// pool, in ascending order of the numbers that they know themselves: of these only that order is
/// kept here, 4 bytes each. All others go to a table.
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
    std::size_t numAscending() const { return ascending_.size(); }
    /// The others that have kept their number, in ascending order.
    const std::vector<Numbered>& others() const { return others_; }

    /// The number of `entity`; 0 if it has none.
    unsigned find(const IfcEntity& entity) const {
        const auto number = static_cast<std::uint32_t>(entity.ifcId());
        if (number - 1 < last_) {
            const std::size_t index = search(number);
            if (index < ascending_.size() && ascending_[index] == number && pool_[index] == &entity)
                return number;
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
    /// Where in `ascending_` the number stands or would stand.
    std::size_t search(std::uint32_t number) const;

    const Pool& pool_;
    std::vector<std::uint32_t> ascending_;
    std::uint32_t last_ = 0;  // of `ascending_`
    // For each stretch of 2^`shift_` numbers, where it begins in `ascending_`; and the end.
    std::vector<std::uint32_t> stretches_;
    unsigned shift_ = 0;
    std::vector<Numbered> others_;
    EntityNumbers table_{0};
    unsigned highest_ = 0;
};

}  // namespace Ovik
