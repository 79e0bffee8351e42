#pragma once

#include <cstddef>

namespace hlx
{

/// Allocates at least `size` bytes, aligned for every standard type, as malloc. Returns null if it fails. Any thread.
void *Alloc(std::size_t size);

/// Grows or shrinks a block of Alloc() and keeps its content; a null block makes a new one. Returns null if it fails;
/// the old block is then still valid. Any thread.
void *Realloc(void *block, std::size_t size);

/// Frees a block of Alloc() or Realloc(). A null block is allowed. Any thread.
void Free(void *block);

/// Called before each allocation with its size in bytes. If it returns false, that allocation fails.
using AllocationHook = bool (*)(std::size_t size);

/// For tests: sets the hook that can make allocations fail; null, the initial value, for none. Returns the previous
/// hook. Any thread; the hook may be called on every thread.
AllocationHook SetAllocationHook(AllocationHook hook);

/// Throws std::bad_alloc.
[[noreturn]] void ThrowBadAllocException();

/// Throws std::out_of_range with a text formatted as by printf.
[[noreturn]] void ThrowOutOfRangeException(const char *format, ...) __attribute__((format(printf, 1, 2)));

} // namespace hlx
