#include "hlx/CString.h"

#include "platform/hlx/formatted.h"

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
    // Copies first, since `text` may point into this string.
    return *this = CString(text);
}

int CString::compare(const char *text) const { return m_text.compare(text == nullptr ? "" : text); }

CString CString::FromFormat(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    CString result;
    result.m_text = formatted(format, arguments);
    va_end(arguments);
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
