#include "hlx/memory.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <stdexcept>

namespace hlx
{

namespace
{

std::atomic<AllocationHook> allocationHook{nullptr};

bool allowed(std::size_t size)
{
    const AllocationHook hook = allocationHook.load(std::memory_order_acquire);
    return hook == nullptr || hook(size);
}

} // namespace

void *Alloc(std::size_t size) { return allowed(size) ? std::malloc(size) : nullptr; }

void *Realloc(void *block, std::size_t size) { return allowed(size) ? std::realloc(block, size) : nullptr; }

void Free(void *block) { std::free(block); }

AllocationHook SetAllocationHook(AllocationHook hook)
{
    return allocationHook.exchange(hook, std::memory_order_acq_rel);
}

void ThrowBadAllocException() { throw std::bad_alloc(); }

void ThrowOutOfRangeException(const char *format, ...)
{
    char text[512];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    throw std::out_of_range(text);
}

} // namespace hlx
