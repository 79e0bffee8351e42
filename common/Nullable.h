#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

/// A value that may be missing: the usual field of a result record. It stays unset if the value could not be read from
/// the camera, and the model then keeps its old value.
template <class T> class Nullable
{
public:
    Nullable() = default;
    Nullable(T value) : m_value(std::move(value)), m_set(true) { } // NOLINT(google-explicit-constructor)

    Nullable &operator=(T value)
    {
        m_value = std::move(value);
        m_set = true;
        return *this;
    }

    /// Whether there is a value.
    bool set() const { return m_set; }

    /// Marks the value as missing, for use after a call that got its address and failed.
    void unset() { m_set = false; }

    /// The value. Throws std::runtime_error if there is none.
    const T &get() const
    {
        if (!m_set)
            throw std::runtime_error("nullable value is not set.");
        return m_value;
    }

    /// The value's address, for a function that fills it. Marks the value as set, before it is filled. Throws
    /// std::runtime_error if it is already set.
    T *operator&() // NOLINT(google-runtime-operator)
    {
        if (m_set)
            throw std::runtime_error("can't use & operator (set by pointer) because nullable value is set.");
        m_set = true;
        return std::addressof(m_value);
    }

private:
    T m_value{};
    bool m_set = false;
};
