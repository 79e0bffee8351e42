#pragma once

#include "hlx/CString.h"
#include "hlx/CVariant.h"

namespace hlx::cam
{

/// A tree of named values of a device. Keys are absolute paths such as "/Pattern". Any thread.
class CProperties
{
public:
    CProperties() = default;
    CProperties(const CProperties &) = delete;
    CProperties &operator=(const CProperties &) = delete;
    virtual ~CProperties();

    /// Returns true and sets `value` if the key exists; otherwise leaves `value` as it is.
    virtual bool get(const hlx::CString &key, hlx::CVariant &value) const = 0;

    /// Returns true if the key exists and the device accepted the value.
    virtual bool set(const hlx::CString &key, hlx::CVariant value) = 0;
};

} // namespace hlx::cam
