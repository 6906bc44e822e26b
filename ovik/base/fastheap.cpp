// Counted blocks over malloc: a header of one alignment unit before the block holds the count.
#include "ovik/base/fastheap.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace Ovik {
namespace {

struct alignas(std::max_align_t) Header {
    std::atomic<std::uint32_t> count{0};
};

Header* headerOf(const void* block) {
    return static_cast<Header*>(const_cast<void*>(block)) - 1;
}

}  // namespace

void* FastHeap::fastmalloc(std::size_t size, const char*, int, int) {
    void* memory = std::malloc(sizeof(Header) + size);
    if (!memory) throw std::bad_alloc();
    return new (memory) Header + 1;
}

void FastHeap::fastfree(void* block, const char*, int) {
    if (block) std::free(headerOf(block));
}

void FastHeap::addRef(const void* block, const char*, int) {
    headerOf(block)->count.fetch_add(1, std::memory_order_relaxed);
}

unsigned FastHeap::numRefs(const void* block, const char*, int) {
    return headerOf(block)->count.load(std::memory_order_acquire);
}

void FastHeap::release(const void* block, const char*, int) {
    Header* header = headerOf(block);
    // A sole owner need not synchronise with anyone: no other thread can reach the block.
    if (header->count.load(std::memory_order_acquire) <= 1 ||
        header->count.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        std::free(header);
    }
}

}  // namespace Ovik
