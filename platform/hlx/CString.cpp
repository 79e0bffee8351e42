#include "hlx/CString.h"

#include <cstdarg>
#include <cstdio>

namespace hlx
{

CString::CString(const char *text, int length)
{
    if (text == nullptr)
        return;
    if (length < 0)
        m_text.assign(text);
    else
        m_text.assign(text, static_cast<std::size_t>(length));
}

CString &CString::operator=(const char *text)
{
    // A copy first: the text may be this one's own.
    return *this = CString(text);
}

int CString::compare(const char *text) const { return m_text.compare(text == nullptr ? "" : text); }

CString CString::FromFormat(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    CString result;
    if (length > 0) {
        result.m_text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(result.m_text.data(), result.m_text.size() + 1, format, again);
    }
    va_end(again);
    return result;
}

CString operator+(const CString &left, const char *right)
{
    std::string text(left.c_str(), static_cast<std::size_t>(left.length()));
    if (right != nullptr)
        text += right;
    return CString(text.data(), static_cast<int>(text.size()));
}

} // namespace hlx
