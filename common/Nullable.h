#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

/// A value that may be missing: the usual field of a result record. It stays unset when the camera could not give the
/// value, so that the model keeps the one it had.
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

    bool set() const { return m_set; }

    /// Takes the mark back, after a call that was given the address and failed.
    void unset() { m_set = false; }

    /// The value. Throws std::runtime_error if there is none.
    const T &get() const
    {
        if (!m_set)
            throw std::runtime_error("nullable value is not set.");
        return m_value;
    }

    /// The value's address, for a function that fills it, which marks it as set before it is filled. Throws
    /// std::runtime_error if it is set already.
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
