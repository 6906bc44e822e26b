// Counted memory blocks: the storage of strings, binaries and the entity pool.
// A block starts with a count of zero, so its first owner takes a count like every other.
#pragma once

#include <cstddef>

#include "ovik/base/export.h"

namespace Ovik {

/// Allocator of reference-counted blocks. `file` and `line` name the calling place in diagnostics.
/// Counts are atomic: blocks may be shared and dropped on any thread.
class OVIK_API FastHeap {
 public:
    /// A new block of `size` bytes, aligned for any type, with a count of zero.
    /// `flags` is reserved and must be 0. Throws `std::bad_alloc` if there is no memory.
    static void* fastmalloc(std::size_t size, const char* file, int line, int flags);

    /// Gives a block back whatever its count is. Null is ignored.
    static void fastfree(void* block, const char* file, int line);

    /// Raises the count of a block by one.
    static void addRef(const void* block, const char* file, int line);

    /// The count of a block.
    static unsigned numRefs(const void* block, const char* file, int line);

    /// Lowers the count of a block by one and frees the block when none is left.
    static void release(const void* block, const char* file, int line);
};

}  // namespace Ovik
