#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "hlx/CCorrectionReduceObject.h"
#include "hlx/IReduceObject.h"

namespace hlx::reduce
{

/// The format of the frames of a movie.
struct SImageFormat {
    unsigned int width = 0; ///< Pixels in a row.
    unsigned int height = 0; ///< Rows.
    int dataType = 0; ///< The number of the data type of a pixel, which defines bytesPerPixel().

    unsigned int bytesPerPixel() const;
    std::size_t frameBytes() const { return std::size_t{width} * height * bytesPerPixel(); }

    friend bool operator==(const SImageFormat &, const SImageFormat &) = default;
};

/// The reduce objects of a movie and the format of the frames to which they apply. Copies are deep. The array owns its
/// objects; the pointers that it returns are valid until it is assigned to or destroyed. One thread at a time.
class CReduceObjectArray
{
public:
    CReduceObjectArray() = default;
    CReduceObjectArray(const CReduceObjectArray &other);
    CReduceObjectArray(CReduceObjectArray &&) noexcept = default;
    CReduceObjectArray &operator=(CReduceObjectArray other) noexcept;
    ~CReduceObjectArray() = default;

    /// The object of this type with this index, or the first of the type for -1. If there is none: with `create` a new
    /// one, provided that the type is known and can have that index, else null.
    IReduceObject *GetObjectOfType(SGuid type, int index, bool create);

    /// The correction of a preset. If there is none: with `create` a new one, else null.
    CCorrectionReduceObject *GetCorrection(unsigned char preset, bool create);

    std::size_t size() const { return m_objects.size(); }
    const IReduceObject &at(std::size_t index) const { return *m_objects.at(index); }
    void add(std::unique_ptr<IReduceObject> object) { m_objects.push_back(std::move(object)); }

    SImageFormat format;

private:
    std::vector<std::unique_ptr<IReduceObject>> m_objects;
};

} // namespace hlx::reduce
