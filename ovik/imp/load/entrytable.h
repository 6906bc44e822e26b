// The table of a load: what is known of each instance number that a record or a reference of the
// file has named. Internal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace Ovik {

class IfcEntity;

/// What is known of one instance number.
struct EntityEntry {
    IfcEntity** slot = nullptr;  ///< where handles of this number lead to; null until one is asked
    std::uint32_t record = 0;    ///< the place of the record in the file, if losses are collected
    bool named = false;          ///< kept by the table

    bool hasEntity() const { return slot && *slot; }

    // Validation visits an entity once; one that can't be read is never visited.
    bool isVisiting() const { return state_ == State::Visiting; }
    bool isDone() const { return state_ == State::Invalid || state_ == State::Valid; }
    bool isValid() const { return state_ == State::Valid; }
    void setVisiting() { state_ = State::Visiting; }
    void setDone(bool valid) { state_ = valid ? State::Valid : State::Invalid; }

 private:
    enum class State : std::uint8_t { New, Visiting, Invalid, Valid };
    State state_ = State::New;
};

/// Entries by instance number. Files number densely, so nearly all entries stand in one array; what
/// lies far out, and what is negative, goes to an ordered map until the array reaches it. The
/// memory is proportional to the count of entries, whatever their numbers are.
class EntryTable {
 public:
    /// The entry of `number`, made if there is none. The reference holds until the next call that
    /// makes an entry.
    EntityEntry& operator[](int number) {
        const auto index = static_cast<std::size_t>(number);
        EntityEntry& entry = index < dense_.size() ? dense_[index] : farEntry(number);
        if (!entry.named) {
            entry.named = true;
            ++count_;
        }
        return entry;
    }

    /// The entry of `number`, or null.
    EntityEntry* find(int number) {
        const auto index = static_cast<std::size_t>(number);
        if (index < dense_.size()) return dense_[index].named ? &dense_[index] : nullptr;
        const auto found = far_.find(number);
        return found != far_.end() ? &found->second : nullptr;
    }

    /// Calls `visit(entry)` for each entry, in ascending order of number. It must make no entry.
    template <class Visit>
    void forEach(Visit&& visit) {
        auto outer = far_.begin();
        for (; outer != far_.end() && outer->first < 0; ++outer) visit(outer->second);
        for (EntityEntry& entry : dense_) {
            if (entry.named) visit(entry);
        }
        for (; outer != far_.end(); ++outer) visit(outer->second);
    }

    /// Number of entries.
    std::size_t size() const { return count_; }
    /// Number of entries that the array has room for.
    std::size_t denseSize() const { return dense_.size(); }

    /// Drops all entries and their memory.
    void clear() {
        dense_ = {};
        far_.clear();
        count_ = 0;
    }

 private:
    // Up to here the array always reaches: 64 KB.
    static constexpr std::size_t kFreeReach = 4096;
    // Beyond, it may be this many times as long as there are entries.
    static constexpr std::size_t kMaxSpread = 8;

    EntityEntry& farEntry(int number) {
        const auto index = static_cast<std::size_t>(number);
        const std::size_t reach = kMaxSpread * (count_ + 1);
        if (number < 0 || index >= std::max(kFreeReach, reach)) return far_[number];
        // Doubled, as far as the spread allows, so that ascending numbers make it grow rarely.
        growDense(std::max(index + 1, std::min(index * 2, reach)));
        return dense_[index];
    }

    void growDense(std::size_t size) {
        dense_.resize(size);
        auto it = far_.lower_bound(0);
        while (it != far_.end() && static_cast<std::size_t>(it->first) < size) {
            dense_[static_cast<std::size_t>(it->first)] = it->second;
            it = far_.erase(it);
        }
    }

    std::vector<EntityEntry> dense_;  // by number
    std::map<int, EntityEntry> far_;  // numbers below 0, and from the size of `dense_` on
    std::size_t count_ = 0;
};

}  // namespace Ovik
