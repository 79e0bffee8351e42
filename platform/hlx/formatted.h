#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace hlx
{

/// A text in the manner of vprintf, of any length; empty if it can not be formatted. The arguments are used up.
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
