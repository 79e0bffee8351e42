#pragma once

#include "hlx/CString.h"
#include "hlx/CVariant.h"

namespace hlx::cam
{

/// A tree of named values of a device. Keys are absolute paths ("/Pattern"). Any thread.
class CProperties
{
public:
    CProperties() = default;
    CProperties(const CProperties &) = delete;
    CProperties &operator=(const CProperties &) = delete;
    virtual ~CProperties();

    /// True if the key exists; fills `value` then, and leaves it alone otherwise.
    virtual bool get(const hlx::CString &key, hlx::CVariant &value) const = 0;

    /// True if the key exists and took the value.
    virtual bool set(const hlx::CString &key, hlx::CVariant value) = 0;
};

} // namespace hlx::cam
