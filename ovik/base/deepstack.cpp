// Stack segments on the heap, entered with the context calls of the C library. The address
// sanitizer is told of each switch, or it would report the segment as a corrupt stack.
#include "ovik/base/deepstack.h"

#include <ucontext.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <utility>

#include "ovik/base/sanitizer.h"

#if defined(OVIK_ASAN)
#include <sanitizer/common_interface_defs.h>
#endif

namespace Ovik {
namespace {

// What a recursion may use of the host's own stack: little enough for a thread with a small one.
constexpr std::size_t kHostBudget = 160 * 1024;
constexpr std::size_t kSegmentSize = 1024 * 1024;
// What stays free at a segment's low end for the calls between two checks.
constexpr std::size_t kReserve = 96 * 1024;

// The lowest address that the recursion may go to on the current stack; null outside a recursion.
thread_local char* stackLimit = nullptr;
// One segment is kept while a recursion lasts, so that a loop across the end of a stack does not
// allocate at each turn. A plain pointer: recursions also run while a process ends, when thread
// variables with a destructor are gone.
thread_local char* spareSegment = nullptr;

char* stackPosition() {
    return static_cast<char*>(__builtin_frame_address(0));
}

struct Switch {
    DeepStack::Function function;
    void* argument;
    std::exception_ptr failure;
    ucontext_t caller;
#if defined(OVIK_ASAN)
    const void* callerBottom = nullptr;
    std::size_t callerSize = 0;
#endif
};

// makecontext passes ints only, so the address travels in two halves.
void segmentMain(unsigned high, unsigned low) {
    auto& s = *reinterpret_cast<Switch*>((static_cast<std::uintptr_t>(high) << 32) | low);
#if defined(OVIK_ASAN)
    __sanitizer_finish_switch_fiber(nullptr, &s.callerBottom, &s.callerSize);
#endif
    try {
        s.function(s.argument);
    } catch (...) {
        s.failure = std::current_exception();
    }
#if defined(OVIK_ASAN)
    __sanitizer_start_switch_fiber(nullptr, s.callerBottom, s.callerSize);
#endif
}

}  // namespace

DeepStack::Root::Root() : outermost_(stackLimit == nullptr) {
    if (outermost_) stackLimit = stackPosition() - kHostBudget;
}

DeepStack::Root::~Root() {
    if (!outermost_) return;
    stackLimit = nullptr;
    delete[] std::exchange(spareSegment, nullptr);
}

bool DeepStack::hasRoom() {
    return stackPosition() > stackLimit;
}

void DeepStack::runOnSegment(Function function, void* argument) {
    char* segment = std::exchange(spareSegment, nullptr);
    if (!segment) segment = new char[kSegmentSize];
    char* const outerLimit = stackLimit;

    Switch s{};
    s.function = function;
    s.argument = argument;
    ucontext_t inner;
    getcontext(&inner);
    inner.uc_stack.ss_sp = segment;
    inner.uc_stack.ss_size = kSegmentSize;
    inner.uc_link = &s.caller;
    const auto address = reinterpret_cast<std::uintptr_t>(&s);
    makecontext(&inner, reinterpret_cast<void (*)()>(segmentMain), 2,
                static_cast<unsigned>(address >> 32), static_cast<unsigned>(address));
    stackLimit = segment + kReserve;
#if defined(OVIK_ASAN)
    void* fakeStack = nullptr;
    __sanitizer_start_switch_fiber(&fakeStack, segment, kSegmentSize);
#endif
    swapcontext(&s.caller, &inner);
#if defined(OVIK_ASAN)
    __sanitizer_finish_switch_fiber(fakeStack, nullptr, nullptr);
#endif
    stackLimit = outerLimit;
    delete[] std::exchange(spareSegment, segment);
    if (s.failure) std::rethrow_exception(s.failure);
}

}  // namespace Ovik
