#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define VORN_TEST_LOOKS_FOR_LEAKS
#endif
#endif

namespace vorn::testing {

/// While it lives, leaks of what this thread allocates are ignored, for libraries that leak. Narrow its scope to the
/// code that runs them.
class ForeignLeaks {
public:
#ifdef VORN_TEST_LOOKS_FOR_LEAKS
    ForeignLeaks() { __lsan_disable(); }
    ~ForeignLeaks() { __lsan_enable(); }
#else
    ForeignLeaks() {}
#endif
    ForeignLeaks(ForeignLeaks&&) = delete;
};

} // namespace vorn::testing
