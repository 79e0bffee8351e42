#include "platform/emulator/textArguments.h"

#include <algorithm>
#include <cstring>

namespace emulator
{

void Text::copyToBuffer(bool fill) const
{
    const size_t capacity = fill ? m_size : m_size - 1;
    size_t length = std::min(capacity, value.size());
    const auto continues = [this](size_t index) { return (static_cast<unsigned char>(value[index]) & 0xC0) == 0x80; };
    if (length < value.size())
        while (length > 0 && continues(length))
            --length;
    std::memcpy(m_buffer, value.data(), length);
    if (fill)
        std::memset(m_buffer + length, '#', capacity - length);
    else
        m_buffer[length] = '\0';
}

void TextField::fill() const
{
    char *const end = m_field + m_size;
    std::fill(std::find(m_field, end, '\0'), end, '#');
}

} // namespace emulator
