#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "hlx/memory.h"

namespace hlx
{

/// A growing array of three words: capacity, data, size. Copies are deep. An allocation (by Alloc()) that fails throws
/// std::bad_alloc and leaves the array as it was. operator[] throws std::out_of_range. One thread at a time.
template <class T> class TArray
{
public:
    TArray() = default;

    TArray(std::initializer_list<T> items) : TArray() { copyFrom(items.begin(), items.end()); }

    // Delegating makes the destructor run if a copy throws.
    TArray(const TArray &other) : TArray() { copyFrom(other.begin(), other.end()); }

    TArray(TArray &&other) noexcept { swap(other); }

    TArray &operator=(TArray other) noexcept
    {
        swap(other);
        return *this;
    }

    ~TArray() { Destroy(); }

    std::size_t size() const { return m_size; }
    std::size_t capacity() const { return m_capacity; }
    bool empty() const { return m_size == 0; }

    T *data() { return m_data; }
    const T *data() const { return m_data; }
    T *begin() { return m_data; }
    T *end() { return m_data + m_size; }
    const T *begin() const { return m_data; }
    const T *end() const { return m_data + m_size; }

    T &operator[](std::size_t index) { return m_data[checked(index)]; }
    const T &operator[](std::size_t index) const { return m_data[checked(index)]; }

    /// Adds at the end. Takes the item by value, so that an element of this array may be added.
    void add(T item)
    {
        fit(m_size + 1);
        ::new (static_cast<void *>(m_data + m_size)) T(std::move(item));
        ++m_size;
    }
    void Add(T item) { add(std::move(item)); }
    void push_back(T item) { add(std::move(item)); }

    /// Removes one element and shifts down the rest. Throws std::out_of_range for an index out of range.
    void remove(std::size_t index)
    {
        if (index >= m_size)
            ThrowOutOfRangeException("TArray::remove: index out of range.");
        std::move(begin() + index + 1, end(), begin() + index);
        std::destroy_at(end() - 1);
        --m_size;
    }

    /// Removes all elements and keeps the memory.
    void clear()
    {
        std::destroy(begin(), end());
        m_size = 0;
    }

    /// Removes all elements and releases the memory.
    void Destroy()
    {
        clear();
        Free(m_data);
        m_data = nullptr;
        m_capacity = 0;
    }

    void swap(TArray &other) noexcept
    {
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_data, other.m_data);
        std::swap(m_size, other.m_size);
    }

private:
    std::size_t checked(std::size_t index) const
    {
        if (index >= m_size)
            ThrowOutOfRangeException("TArray::operator[]: index out of range.");
        return index;
    }

    void copyFrom(const T *first, const T *last)
    {
        fit(static_cast<std::size_t>(last - first));
        std::uninitialized_copy(first, last, m_data);
        m_size = static_cast<std::size_t>(last - first);
    }

    // Doubles the capacity until `size` elements fit.
    void fit(std::size_t size)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t) && std::is_nothrow_move_constructible_v<T>);
        if (size <= m_capacity)
            return;
        std::size_t capacity = m_capacity == 0 ? 1 : m_capacity;
        while (capacity < size && capacity <= std::numeric_limits<std::size_t>::max() / 2)
            capacity *= 2;
        if (capacity < size || capacity > std::numeric_limits<std::size_t>::max() / sizeof(T))
            ThrowBadAllocException();
        move(capacity);
    }

    void move(std::size_t capacity)
    {
        void *memory = nullptr;
        if constexpr (std::is_trivially_copyable_v<T>)
            memory = Realloc(static_cast<void *>(m_data), capacity * sizeof(T));
        else
            memory = Alloc(capacity * sizeof(T));
        if (memory == nullptr)
            ThrowBadAllocException();
        if constexpr (!std::is_trivially_copyable_v<T>) {
            std::uninitialized_move(begin(), end(), static_cast<T *>(memory));
            std::destroy(begin(), end());
            Free(m_data);
        }
        m_data = static_cast<T *>(memory);
        m_capacity = capacity;
    }

    std::size_t m_capacity = 0;
    T *m_data = nullptr;
    std::size_t m_size = 0;
};

static_assert(sizeof(TArray<char>) == 3 * sizeof(void *));

} // namespace hlx
