#pragma once

#include <cstdint>
#include <string>

namespace emulator
{

/// A text output of a function, with the buffer of the caller. The device writes `value`; the gate copies it into the
/// buffer after the call has succeeded.
class Text
{
public:
    Text(char *buffer, uint32_t size) : m_buffer(buffer), m_size(size) { }
    Text(const Text &) = delete;
    Text &operator=(const Text &) = delete;

    std::string value; ///< UTF-8.

    /// False for a null buffer or a buffer of 0 bytes.
    bool usable() const { return m_buffer && m_size > 0; }

    /// Writes `value` with a terminating zero. A text that does not fit is cut between two characters. With `fill` the
    /// text has no terminating zero and is extended by "#" to the end of the buffer.
    void copyToBuffer(bool fill) const;

private:
    char *m_buffer;
    uint32_t m_size;
};

/// A text field of a record that a function returns. The device writes the field with the record: UTF-8, zero-ended
/// unless it fills the field.
class TextField
{
public:
    /// The field of a null record is null.
    TextField(char *field, uint32_t size) : m_field(field), m_size(size) { }

    bool usable() const { return m_field != nullptr; }

    /// Extends the text by "#" to the end of the field, so that it has no terminating zero.
    void fill() const;

private:
    char *m_field;
    uint32_t m_size;
};

} // namespace emulator
