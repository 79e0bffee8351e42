#include "hlx/CVariant.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace hlx
{

namespace
{

template <class Number> bool parse(const CString &text, Number &number)
{
    const char *begin = text.c_str();
    const char *end = begin + text.length();
    const auto [rest, error] = std::from_chars(begin, end, number);
    return error == std::errc() && rest == end;
}

int32_t toInt(double number)
{
    using Limits = std::numeric_limits<int32_t>;
    if (std::isnan(number))
        return 0;
    if (number <= Limits::min())
        return Limits::min();
    if (number >= Limits::max())
        return Limits::max();
    return static_cast<int32_t>(number);
}

double textToNumber(const CString &text)
{
    double number = 0.0;
    if (text.compare("true") == 0)
        return 1.0;
    return parse(text, number) ? number : 0.0;
}

// The first step of each conversion to a number: converts every kind to a double, which holds all ints and floats
// exactly.
struct ToNumber {
    double operator()(std::monostate) const { return 0.0; }
    double operator()(bool value) const { return value ? 1.0 : 0.0; }
    double operator()(int value) const { return value; }
    double operator()(float value) const { return value; }
    double operator()(const CString &value) const { return textToNumber(value); }
};

struct ToText {
    CString operator()(std::monostate) const { return {}; }
    CString operator()(bool value) const { return value ? "true" : "false"; }
    CString operator()(int value) const { return CString::FromFormat("%d", value); }
    CString operator()(float value) const
    {
        char text[64];
        const auto result = std::to_chars(text, text + sizeof text, value);
        return CString(text, static_cast<int>(result.ptr - text));
    }
    CString operator()(const CString &value) const { return value; }
};

} // namespace

bool CVariant::ToBool() const { return std::visit(ToNumber(), m_value) != 0.0; }

int32_t CVariant::ToInt32() const { return toInt(std::visit(ToNumber(), m_value)); }

float CVariant::ToFlt32() const { return static_cast<float>(std::visit(ToNumber(), m_value)); }

CString CVariant::ToString() const { return std::visit(ToText(), m_value); }

} // namespace hlx
