// The hash by which attributes, choices and literals are found by name. Each schema has a table of
// its own, computed for its vocabulary; the sum is compared with constants and never an index.
// It is case-sensitive at its key positions, and that decides which spellings are accepted.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace Ovik::Schema {

/// The name hash of one schema.
class NameHash {
 public:
    /// `filler` is the value of every byte that `values` doesn't list. `keyPosition22` tells
    /// whether the 22nd byte counts.
    constexpr NameHash(std::uint16_t filler, bool keyPosition22,
                       std::initializer_list<std::pair<char, std::uint16_t>> values)
        : keyPosition22_(keyPosition22) {
        values_.fill(filler);
        for (const auto& [byte, value] : values) values_[static_cast<unsigned char>(byte)] = value;
    }

    /// The hash of `name`: its length, a table value for each key position that it reaches, and one
    /// for its last byte. An empty name is 0.
    constexpr unsigned operator()(std::string_view name) const {
        const std::size_t length = name.size();
        if (length == 0) return 0;
        auto value = [&](std::size_t position) {
            return values_[static_cast<unsigned char>(name[position - 1])];
        };
        unsigned sum = static_cast<unsigned>(length) + value(length);
        for (const std::size_t position : {1, 2, 3, 4, 5, 6, 7, 8, 10, 13, 15, 18, 35}) {
            if (position > length) break;
            sum += value(position);
        }
        if (length >= 16) sum += values_[(static_cast<unsigned char>(name[15]) + 1u) & 0xFF];
        if (keyPosition22_ && length >= 22) sum += value(22);
        return sum;
    }

 private:
    std::array<std::uint16_t, 256> values_{};
    bool keyPosition22_;
};

}  // namespace Ovik::Schema
