#pragma once

// A small checker for the Qt-free Win32 tests: counts the checks and ends with the plain
// "N passed, N failed" line.
#include <cstdio>

namespace check {
inline int passed = 0;
inline int failed = 0;

inline void report(bool ok, const char *what, const char *file, int line)
{
    if (ok) {
        ++passed;
        return;
    }
    ++failed;
    std::printf("FAIL %s:%d: %s\n", file, line, what);
    std::fflush(stdout);
}

inline int finish()
{
    std::printf("%d passed, %d failed\n", passed, failed);
    return failed == 0 && passed > 0 ? 0 : 1;
}
} // namespace check

#define CHECK(condition) check::report(bool(condition), #condition, __FILE__, __LINE__)
