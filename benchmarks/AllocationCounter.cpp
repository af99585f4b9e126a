#include "AllocationCounter.h"

#include <atomic>
#include <cstddef>

// The GNU C library's own entry points, behind the ones that are counted here.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
}

namespace {

std::atomic<std::uint64_t> allocations{0};

void count()
{
    allocations.fetch_add(1, std::memory_order_relaxed);
}

} // namespace

std::uint64_t allocationCount()
{
    return allocations.load(std::memory_order_relaxed);
}

// The program's definitions take the place of the C library's in every shared library.
#define COUNTED __attribute__((visibility("default")))

extern "C" {

COUNTED void *malloc(std::size_t size)
{
    count();
    return __libc_malloc(size);
}

COUNTED void *calloc(std::size_t number, std::size_t size)
{
    count();
    return __libc_calloc(number, size);
}

COUNTED void *realloc(void *block, std::size_t size)
{
    count();
    return __libc_realloc(block, size);
}
}
