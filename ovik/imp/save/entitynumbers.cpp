// The hash table from entities to numbers.
#include "ovik/imp/save/entitynumbers.h"

#include <cstdint>
#include <utility>

namespace Ovik {

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

bool EntityNumbers::add(const IfcEntity* entity, unsigned number) {
    std::size_t index = place(entity);
    if (places_[index].entity) return false;
    if ((size_ + std::size_t{1}) * 3 > places_.size() * 2) {
        grow();
        index = place(entity);
    }
    places_[index] = {entity, number};
    ++size_;
    return true;
}

void EntityNumbers::grow() {
    const std::vector<Place> old = std::exchange(places_, std::vector<Place>(places_.size() * 2));
    --shift_;
    for (const Place& p : old) {
        if (p.entity) places_[place(p.entity)] = p;
    }
}

}  // namespace Ovik
