#include "hlx/CBadPixelList.h"

#include "platform/hlx/BadPixelFile.h"

#include <utility>

namespace hlx::cam::zvt
{

namespace
{

/// More than any detector has. Users of a list make pictures of its size, and a damaged one must not make them ask for
/// gigabytes.
constexpr uint32_t mostPixels = 4'194'304;

} // namespace

bool CBadPixelList::Load(const CString &path)
{
    const auto file = BadPixelFile::load(fileSystem(), path);
    if (!file || uint32_t{file->width} * file->height > mostPixels)
        return false;
    TArray<Pixel> pixels;
    for (const BadPixelFile::Pixel &pixel : file->pixels)
        pixels.add({pixel.x, pixel.y});
    m_width = file->width;
    m_height = file->height;
    m_pixels = std::move(pixels);
    return true;
}

void CBadPixelList::GetSize(uint16_t &width, uint16_t &height) const
{
    width = m_width;
    height = m_height;
}

unsigned CBadPixelList::GetCount() const { return static_cast<unsigned>(m_pixels.size()); }

void CBadPixelList::GetAt(unsigned index, uint16_t &x, uint16_t &y) const
{
    if (index >= m_pixels.size())
        return;
    x = m_pixels[index].x;
    y = m_pixels[index].y;
}

} // namespace hlx::cam::zvt
