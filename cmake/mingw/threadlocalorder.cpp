// Linked into every program the MinGW toolchain builds (see VelmorinCompilerFlags.cmake).
//
// GCC for MinGW keeps C++ thread_local variables in memory it allocates per thread and frees
// from a thread-exit callback; the variables' destructors run from a second callback. The
// callbacks run in the order they were first registered, and the first use of any thread_local
// registers the freeing one before the destructors' one. So a thread that ends runs destructors
// on freed memory. Qt keeps thread_local caches (the regular expression JIT stacks), and a pool
// thread that used one could fault on its way out. The fault is swallowed, but a lock the runtime
// held at that moment stays held, and the program then hangs in exit() when it quits.
//
// Registering the destructors' callback first, before any static constructor can touch a
// thread_local, puts the two in the right order.
#include <cxxabi.h>

namespace {
void nothing(void *) {}

__attribute__((constructor(101))) void registerThreadLocalDestructorsFirst()
{
    abi::__cxa_thread_atexit(nothing, nullptr, nullptr);
}
} // namespace
