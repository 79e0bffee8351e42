#pragma once

#include <string>

namespace hlx
{

/// A text in UTF-8. Copies are independent: different objects may be used on different threads.
class CString
{
public:
    CString() = default;

    /// The first `length` bytes of `text`, or all up to the zero if `length` is negative. Null makes the empty text.
    CString(const char *text, int length = -1); // NOLINT(google-explicit-constructor)

    CString &operator=(const char *text);

    /// Never null; zero-ended. Valid until the text changes.
    const char *c_str() const { return m_text.c_str(); }
    bool empty() const { return m_text.empty(); }
    /// In bytes.
    int length() const { return static_cast<int>(m_text.size()); }

    /// 0 if equal, negative if this text comes before `text` in the order of bytes, else positive. Null is the empty
    /// text.
    int compare(const char *text) const;

    /// A text of any length, formatted as by printf.
    static CString FromFormat(const char *format, ...) __attribute__((format(printf, 1, 2)));

    /// A copy: the text is in UTF-8 already. Callers that write files use it to state the encoding that they need.
    CString ConvertToUTF8() const { return *this; }

    friend bool operator==(const CString &, const CString &) = default;
    friend std::strong_ordering operator<=>(const CString &, const CString &) = default;

private:
    std::string m_text;
};

/// Both texts, one after the other. Null adds nothing.
CString operator+(const CString &left, const char *right);

} // namespace hlx
