#pragma once

#include <cstdint>
#include <variant>

#include "hlx/CString.h"

namespace hlx
{

/// A value of one of five kinds: none, bool, int, float or text. Each conversion accepts every kind, and returns false,
/// 0 or the empty text if the value has no meaning in the wanted kind. Numbers in texts have a decimal point in every
/// locale.
class CVariant
{
public:
    CVariant() = default;
    CVariant(bool value) : m_value(value) { } // NOLINT(google-explicit-constructor)
    CVariant(int value) : m_value(value) { } // NOLINT(google-explicit-constructor)
    CVariant(float value) : m_value(value) { } // NOLINT(google-explicit-constructor)
    CVariant(CString value) : m_value(std::move(value)) { } // NOLINT(google-explicit-constructor)
    /// A text. Without this constructor a literal would become a bool.
    CVariant(const char *value) : m_value(CString(value)) { } // NOLINT(google-explicit-constructor)

    /// A number is true if it is not 0, a text if it is "true" (small letters) or a number that is not 0.
    bool ToBool() const;

    /// A fraction is cut towards 0; a number out of range becomes the nearest end of the range.
    int32_t ToInt32() const;
    float ToFlt32() const;

    /// "true" or "false" for a bool; for a float the shortest text that reads back as the same number.
    CString ToString() const;

    friend bool operator==(const CVariant &, const CVariant &) = default;

private:
    std::variant<std::monostate, bool, int, float, CString> m_value;
};

} // namespace hlx
