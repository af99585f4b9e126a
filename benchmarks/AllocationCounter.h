#ifndef KVSYNC_BENCHMARKS_ALLOCATIONCOUNTER_H
#define KVSYNC_BENCHMARKS_ALLOCATIONCOUNTER_H

#include <cstdint>

/// How often this process has asked the C library for memory so far: malloc, calloc, realloc and
/// operator new, in every library of it. Any thread may call.
std::uint64_t allocationCount();

#endif
