#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include "hlx/CString.h"
#include "hlx/TArray.h"

namespace hlx
{

/// Builds the bytes of a file. Numbers are little-endian; a float is stored as the integer with the same bits.
class ByteWriter
{
public:
    template <std::unsigned_integral Number> void number(Number value)
    {
        for (std::size_t i = 0; i < sizeof value; ++i)
            m_bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
    }

    void real(float value) { number(std::bit_cast<uint32_t>(value)); }
    void raw(const void *data, std::size_t size)
    {
        // Not insert(): g++ 12 wrongly warns of an overflow in it if it optimises a known size.
        std::copy_n(static_cast<const uint8_t *>(data), size, std::back_inserter(m_bytes));
    }
    /// Writes the number of bytes as 32 bits, then the bytes.
    void text(const CString &value)
    {
        number(static_cast<uint32_t>(value.length()));
        raw(value.c_str(), static_cast<std::size_t>(value.length()));
    }

    const std::vector<uint8_t> &bytes() const { return m_bytes; }

private:
    std::vector<uint8_t> m_bytes;
};

/// Reads the bytes that a ByteWriter built. After a read beyond the end, or after fail(), ok() is false and every
/// further read returns 0, so it is enough to check ok() once, before the values are used.
class ByteReader
{
public:
    ByteReader(const uint8_t *data, std::size_t size) : m_data(data), m_left(size) { }
    explicit ByteReader(const std::vector<uint8_t> &bytes) : ByteReader(bytes.data(), bytes.size()) { }

    template <std::unsigned_integral Number> Number number()
    {
        const uint8_t *bytes = take(sizeof(Number));
        uint64_t value = 0;
        for (std::size_t i = 0; bytes != nullptr && i < sizeof value && i < sizeof(Number); ++i)
            value |= uint64_t{bytes[i]} << (8 * i);
        return static_cast<Number>(value);
    }

    float real() { return std::bit_cast<float>(number<uint32_t>()); }

    /// Returns a pointer to the next `size` bytes and skips them. If there are fewer, fails and returns null.
    const uint8_t *take(std::size_t size)
    {
        if (!m_ok || size > m_left) {
            fail();
            return nullptr;
        }
        const uint8_t *bytes = m_data;
        m_data += size;
        m_left -= size;
        return bytes;
    }

    CString text()
    {
        const auto length = number<uint32_t>();
        const auto *bytes = reinterpret_cast<const char *>(take(length));
        return bytes == nullptr ? CString() : CString(bytes, static_cast<int>(length));
    }

    /// Reads `count` floats. Allocates no memory unless all of them are there.
    TArray<float> reals(std::size_t count)
    {
        TArray<float> values;
        if (count > m_left / sizeof(float))
            fail();
        for (std::size_t i = 0; m_ok && i < count; ++i)
            values.add(real());
        return values;
    }

    /// Skips the magic bytes of a file. Fails if the next bytes are different.
    void expect(std::string_view magic)
    {
        const auto *bytes = reinterpret_cast<const char *>(take(magic.size()));
        if (bytes != nullptr && std::string_view(bytes, magic.size()) != magic)
            fail();
    }

    void fail()
    {
        m_ok = false;
        m_left = 0;
    }

    bool ok() const { return m_ok; }
    /// Whether no read has failed and no bytes are left.
    bool complete() const { return m_ok && m_left == 0; }
    std::size_t left() const { return m_left; }

private:
    const uint8_t *m_data;
    std::size_t m_left;
    bool m_ok = true;
};

} // namespace hlx
