// OVIK_ASAN is defined under the address sanitizer, which has to be told of switched stacks and of
// blocks that are kept on purpose. Internal.
#pragma once

#if defined(__SANITIZE_ADDRESS__)
#define OVIK_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OVIK_ASAN 1
#endif
#endif
