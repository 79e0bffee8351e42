#pragma once

#include <cstddef>

namespace hlx
{

/// The framework's memory. Like the C functions of these names: at least `size` bytes, aligned for every standard type,
/// or null if there is no memory. Any thread.
void *Alloc(std::size_t size);

/// Grows or shrinks a block and keeps its content; a null block is a new one. On failure null, and the old block
/// stands.
void *Realloc(void *block, std::size_t size);

/// A null block is allowed.
void Free(void *block);

/// Asked before each allocation with its size in bytes; false makes that allocation fail.
using AllocationHook = bool (*)(std::size_t size);

/// Lets a test make allocations fail. Null, the initial value, lets all of them through. Gives back the hook that stood
/// before. Any thread; the hook itself may be called on every thread.
AllocationHook SetAllocationHook(AllocationHook hook);

/// Throws std::bad_alloc.
[[noreturn]] void ThrowBadAllocException();

/// Throws std::out_of_range with the text, in the manner of printf.
[[noreturn]] void ThrowOutOfRangeException(const char *format, ...) __attribute__((format(printf, 1, 2)));

} // namespace hlx
