// Recursion without a bound. Files decide how deep references and lists nest, so a recursion over
// them must not overflow the thread's stack: `callDeep` makes a plain call while there is stack
// left and continues on a segment from the heap when it runs low.
#pragma once

#include <type_traits>
#include <utility>

#include "ovik/base/export.h"

namespace Ovik {

/// The machinery behind `callDeep`. Internal.
class OVIK_API DeepStack {
 public:
    using Function = void (*)(void* argument);

    /// In the outermost call of a recursion: sets the limit of the current stack that `hasRoom`
    /// compares with, for the life of this object. In a nested call: nothing.
    class OVIK_API Root {
     public:
        Root();
        ~Root();
        Root(const Root&) = delete;
        Root& operator=(const Root&) = delete;

     private:
        bool outermost_;
    };

    /// True while the current stack has room for some more levels of recursion.
    static bool hasRoom();

    /// Runs `function(argument)` on a fresh segment. Exceptions pass through.
    static void runOnSegment(Function function, void* argument);
};

/// Calls `f()`, on this stack or on a fresh segment, and returns its result. To be used at one
/// place of each cycle of a recursion; the levels between two such calls may use 32 KB of stack.
template <class F>
auto callDeep(F&& f) -> std::invoke_result_t<F&> {
    using Result = std::invoke_result_t<F&>;
    const DeepStack::Root root;
    if (DeepStack::hasRoom()) return f();
    if constexpr (std::is_void_v<Result>) {
        DeepStack::runOnSegment([](void* p) { (*static_cast<std::remove_reference_t<F>*>(p))(); },
                                &f);
    } else {
        struct Call {
            std::remove_reference_t<F>& f;
            Result result{};
        } call{f};
        DeepStack::runOnSegment(
            [](void* p) {
                Call& c = *static_cast<Call*>(p);
                c.result = c.f();
            },
            &call);
        return std::move(call.result);
    }
}

}  // namespace Ovik
