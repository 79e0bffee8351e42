#include "platform/hlx/BadPixelFile.h"

#include "platform/hlx/ByteStream.h"
#include "platform/hlx/FileBytes.h"

namespace hlx
{

namespace
{

constexpr std::string_view magic = "HLX-BPL\n";
constexpr uint32_t version = 1;

} // namespace

std::optional<BadPixelFile> BadPixelFile::load(IFileSystem *files, const CString &path)
{
    const auto content = readFile(files, path);
    if (!content)
        return std::nullopt;
    ByteReader reader(*content);
    reader.expect(magic);
    if (reader.number<uint32_t>() != version)
        return std::nullopt;
    BadPixelFile list;
    list.width = reader.number<uint16_t>();
    list.height = reader.number<uint16_t>();
    const auto count = reader.number<uint32_t>();
    // Checked against the remaining bytes before the pixels are read.
    if (!reader.ok() || reader.left() != std::size_t{count} * 4)
        return std::nullopt;
    list.pixels.resize(count);
    for (Pixel &pixel : list.pixels) {
        pixel.x = reader.number<uint16_t>();
        pixel.y = reader.number<uint16_t>();
        if (pixel.x >= list.width || pixel.y >= list.height)
            return std::nullopt;
    }
    return list;
}

std::vector<uint8_t> BadPixelFile::bytes() const
{
    ByteWriter writer;
    writer.raw(magic.data(), magic.size());
    writer.number(version);
    writer.number(width);
    writer.number(height);
    writer.number(static_cast<uint32_t>(pixels.size()));
    for (const Pixel &pixel : pixels) {
        writer.number(pixel.x);
        writer.number(pixel.y);
    }
    return writer.bytes();
}

bool BadPixelFile::save(IFileSystem *files, const CString &path) const { return writeFile(files, path, bytes()); }

} // namespace hlx
