#ifndef KVSYNC_FUZZ_REQUIRE_H
#define KVSYNC_FUZZ_REQUIRE_H

#include <cstdio>
#include <cstdlib>

/// Ends the process, for the fuzzer to report the input, unless the condition holds.
#define KVSYNC_REQUIRE(condition)                                                                  \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: violated: %s\n", __FILE__, __LINE__, #condition);         \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

#endif
