#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process where the fuzzer sees it, unless the expectation holds.
inline void Expect(bool condition, const char* expectation) {
    if (!condition) {
        std::fprintf(stderr, "not so: %s\n", expectation);
        std::abort();
    }
}
