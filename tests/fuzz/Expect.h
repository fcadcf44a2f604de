#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the program, which is what a fuzzer takes for a find, unless `condition` holds.
inline void Expect(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "expected: %s\n", what);
    std::abort();
}
