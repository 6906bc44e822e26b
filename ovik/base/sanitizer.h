// Tells whether the address sanitizer is at work, which has to hear of stacks and blocks that it
// would take for faults. Internal.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define OVIK_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OVIK_ASAN 1
#endif
#endif
