#pragma once

#include <string>

namespace hlx
{

/// A text in UTF-8. A value: copies are independent, and different objects may be used on different threads.
class CString
{
public:
    CString() = default;

    /// The first `length` bytes of `text`, or all up to the zero if the length is negative. Null gives the empty text.
    CString(const char *text, int length = -1); // NOLINT(google-explicit-constructor)

    CString &operator=(const char *text);

    /// Never null; ended by a zero. Valid until the text changes.
    const char *c_str() const { return m_text.c_str(); }
    bool empty() const { return m_text.empty(); }
    /// In bytes.
    int length() const { return static_cast<int>(m_text.size()); }

    /// 0 if equal, else the sign says which of the two comes first in the order of bytes. Null is the empty text.
    int compare(const char *text) const;

    /// A text in the manner of printf, of any length.
    static CString FromFormat(const char *format, ...) __attribute__((format(printf, 1, 2)));

    /// The text in UTF-8. It is in UTF-8 already, so this is a copy; callers that write files say by it what they need.
    CString ConvertToUTF8() const { return *this; }

    friend bool operator==(const CString &, const CString &) = default;
    friend std::strong_ordering operator<=>(const CString &, const CString &) = default;

private:
    std::string m_text;
};

/// Null adds nothing.
CString operator+(const CString &left, const char *right);

} // namespace hlx
