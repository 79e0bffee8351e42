#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hlx/IFileSystem.h"

namespace hlx
{

/// The content of a bad pixel list file. It stands on the ground floor, since the emulated camera writes these files
/// and the list class of the floor above reads them.
struct BadPixelFile {
    struct Pixel {
        uint16_t x = 0;
        uint16_t y = 0;

        friend bool operator==(const Pixel &, const Pixel &) = default;
    };

    uint16_t width = 0;
    uint16_t height = 0;
    std::vector<Pixel> pixels; ///< All inside the image.

    /// Nothing if there is no such file, or if it is foreign, cut short or corrupt.
    static std::optional<BadPixelFile> load(IFileSystem *files, const CString &path);

    /// The bytes of the file, for a camera that keeps its files in another way.
    std::vector<uint8_t> bytes() const;

    /// False if the file could not be written as a whole.
    bool save(IFileSystem *files, const CString &path) const;
};

} // namespace hlx
