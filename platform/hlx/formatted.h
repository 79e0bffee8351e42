#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace hlx
{

/// Formats a text of any length like vprintf. Returns an empty text if the format is invalid. Consumes `arguments`.
inline std::string formatted(const char *format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    std::string text;
    if (const int length = std::vsnprintf(nullptr, 0, format, arguments); length > 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    return text;
}

} // namespace hlx
