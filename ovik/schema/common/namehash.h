// The hash by which attributes, choices and literals are found by name. A schema may have a table
// of its own, computed for its vocabulary; the sum is compared with constants and never an index.
// It is case-sensitive at its key positions, and that decides which spellings are accepted.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace Ovik::Schema {

/// The name hash of one schema.
class NameHash {
 public:
    static constexpr std::size_t kMaxPositions = 16;

    struct ByteValue {
        char byte;
        std::uint16_t value;
    };

    /// The hash of a schema without a table: all bytes of a name count.
    constexpr NameHash() = default;

    /// The hash of a table: the `positions` that count, from 1 on in ascending order, at most
    /// `kMaxPositions`, and the values of bytes; those not listed have the value `filler`.
    constexpr NameHash(std::uint16_t filler, std::span<const std::uint8_t> positions,
                       std::span<const ByteValue> values)
        : numPositions_(positions.size()) {
        for (std::size_t i = 0; i < positions.size(); ++i) positions_[i] = positions[i];
        values_.fill(filler);
        for (const auto& [byte, value] : values) values_[static_cast<unsigned char>(byte)] = value;
    }

    /// The hash of `name`. By a table: its length, a value for each key position that it reaches,
    /// and one for its last byte; an empty name is 0.
    constexpr std::uint32_t operator()(std::string_view name) const {
        return numPositions_ > 0 ? byTable(name) : ofAllBytes(name);
    }

 private:
    constexpr std::uint32_t byTable(std::string_view name) const {
        const std::size_t length = name.size();
        if (length == 0) return 0;
        auto sum = static_cast<std::uint32_t>(length);
        sum += values_[static_cast<unsigned char>(name[length - 1])];
        for (std::size_t i = 0; i < numPositions_ && positions_[i] <= length; ++i) {
            const auto byte = static_cast<unsigned char>(name[positions_[i] - 1u]);
            // The tables are computed with the byte behind it in the code where the 16th counts.
            sum += values_[positions_[i] == 16 ? (byte + 1u) & 0xFF : byte];
        }
        return sum;
    }

    // FNV-1a.
    static constexpr std::uint32_t ofAllBytes(std::string_view name) {
        std::uint32_t hash = 2166136261u;
        for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
        return hash;
    }

    std::size_t numPositions_ = 0;
    std::array<std::uint8_t, kMaxPositions> positions_{};
    std::array<std::uint16_t, 256> values_{};
};

}  // namespace Ovik::Schema
