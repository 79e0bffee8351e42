#include "platform/emulator/textArguments.h"

#include "platform/emulator/utf8.h"

#include <algorithm>
#include <cstring>

namespace emulator
{

void Text::copyToBuffer(bool fill) const
{
    const size_t capacity = fill ? m_size : m_size - 1;
    const size_t length = beginningOf(value, capacity).size();
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
