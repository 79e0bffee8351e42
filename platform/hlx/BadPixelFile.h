#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "hlx/IFileSystem.h"

namespace hlx
{

/// The content of a bad pixel list file. It is in the lowest library, because the emulated camera writes these files
/// and the list class of a higher library reads them.
struct BadPixelFile {
    struct Pixel {
        uint16_t x = 0;
        uint16_t y = 0;

        friend bool operator==(const Pixel &, const Pixel &) = default;
    };

    uint16_t width = 0;
    uint16_t height = 0;
    std::vector<Pixel> pixels; ///< All are inside the image.

    /// Reads a file. Returns nothing if the file does not exist, has another format, or is truncated or corrupt.
    static std::optional<BadPixelFile> load(IFileSystem *files, const CString &path);

    /// The bytes of the file, for a camera that stores its files in another way.
    std::vector<uint8_t> bytes() const;

    /// Writes the file. Returns false if it could not be written completely.
    bool save(IFileSystem *files, const CString &path) const;
};

} // namespace hlx
