#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "hlx/CCorrectionReduceObject.h"
#include "hlx/IReduceObject.h"

namespace hlx::reduce
{

/// What the frames of a movie look like.
struct SImageFormat {
    unsigned int width = 0; ///< Pixels in a row.
    unsigned int height = 0; ///< Rows.
    int dataType = 0; ///< The number of the element type, see bytesPerPixel().

    unsigned int bytesPerPixel() const;
    std::size_t frameBytes() const { return std::size_t{width} * height * bytesPerPixel(); }

    friend bool operator==(const SImageFormat &, const SImageFormat &) = default;
};

/// The reduce objects of a movie and the format of the frames that they apply to. A value: copies are deep. It owns its
/// objects; the pointers that it gives out stay valid until it is assigned to or dies.
class CReduceObjectArray
{
public:
    CReduceObjectArray() = default;
    CReduceObjectArray(const CReduceObjectArray &other);
    CReduceObjectArray(CReduceObjectArray &&) noexcept = default;
    CReduceObjectArray &operator=(CReduceObjectArray other) noexcept;
    ~CReduceObjectArray() = default;

    /// The object of this type with this index, or the first of the type for -1. If there is none: a new one if
    /// `create` is set and the type is known and can have that index, else null.
    IReduceObject *GetObjectOfType(SGuid type, int index, bool create);

    /// The correction of a preset, or null if there is none and `create` is not set.
    CCorrectionReduceObject *GetCorrection(unsigned char preset, bool create);

    std::size_t size() const { return m_objects.size(); }
    const IReduceObject &at(std::size_t index) const { return *m_objects.at(index); }
    void add(std::unique_ptr<IReduceObject> object) { m_objects.push_back(std::move(object)); }

    SImageFormat format;

private:
    std::vector<std::unique_ptr<IReduceObject>> m_objects;
};

} // namespace hlx::reduce
