// The sequence of a model's entities: a table of blocks of pointers. Growing replaces the table
// only, so appending stays cheap in models of millions of entities.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "ovik/base/fastheap.h"

namespace Ovik {

/// Pointers to `T` in the order of appending. There is no removal. Not thread-safe. Internal.
template <class T>
class IfcEntityPool {
 public:
    IfcEntityPool() = default;
    /// Frees blocks and table. The entities are deleted by `deleteEntities` or not at all.
    virtual ~IfcEntityPool() {
        for (std::uint64_t i = 0; i < numBlocks_; ++i) {
            FastHeap::fastfree(blocks_[i], kFile, __LINE__);
        }
        FastHeap::fastfree(blocks_, kFile, __LINE__);
    }
    IfcEntityPool(const IfcEntityPool&) = delete;
    IfcEntityPool& operator=(const IfcEntityPool&) = delete;

    std::uint64_t size() const { return size_; }
    std::uint64_t numBlocks() const { return numBlocks_; }

    /// The entry at `index`, which is not checked.
    T* operator[](std::uint64_t index) const { return entry(index); }

    /// Appends `entity`. The number of blocks doubles when all are full.
    void append(T* entity) {
        if (position(size_) == 0 && block(size_) == numBlocks_) {
            grow(numBlocks_ ? numBlocks_ * 2 : 1);
        }
        entry(size_) = entity;
        ++size_;
    }

    /// Makes room for `count` more entries than there are, if there are fewer than `count`.
    void reserve(std::uint64_t count) {
        if (size_ >= count) return;
        const std::uint64_t last = block(count - 1 + size_);
        if (last >= numBlocks_) grow(last + 1);
    }

    /// Deletes every entity, in the order of the entries, and empties the pool.
    void deleteEntities() {
        for (std::uint64_t i = 0; i < size_; ++i) delete entry(i);
        size_ = 0;
    }

 private:
    static constexpr char kFile[] = "imp/ifcentitypool";
    static constexpr unsigned kBlockShift = 10;
    static constexpr std::uint64_t kBlockSize = 1u << kBlockShift;
    static constexpr std::uint64_t kBlockMask = 0x3FFFFF;

    static std::uint64_t block(std::uint64_t index) { return (index >> kBlockShift) & kBlockMask; }
    static std::uint64_t position(std::uint64_t index) { return index & (kBlockSize - 1); }
    T*& entry(std::uint64_t index) const { return blocks_[block(index)][position(index)]; }

    // A new table with all its blocks. The block count follows each allocation, so that a failed
    // one leaves a sound pool.
    void grow(std::uint64_t count) {
        T*** table = static_cast<T***>(FastHeap::fastmalloc(
            static_cast<std::size_t>(count) * sizeof(T**), kFile, __LINE__, 0));
        if (blocks_) std::memcpy(table, blocks_, numBlocks_ * sizeof(T**));
        FastHeap::fastfree(blocks_, kFile, __LINE__);
        blocks_ = table;
        while (numBlocks_ < count) {
            blocks_[numBlocks_] =
                static_cast<T**>(FastHeap::fastmalloc(kBlockSize * sizeof(T*), kFile, __LINE__, 0));
            ++numBlocks_;
        }
    }

    std::uint64_t size_ = 0;
    std::uint64_t numBlocks_ = 0;
    T*** blocks_ = nullptr;
};

}  // namespace Ovik
