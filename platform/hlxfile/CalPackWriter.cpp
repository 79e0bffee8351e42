#include "platform/hlxfile/CalPackWriter.h"

#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/CalPackFormat.h"
#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx
{

bool saveCalPack(CCalPack &pack, IFileSystem *files, const CString &path)
{
    ByteWriter writer;
    writer.raw(calPackMagic.data(), calPackMagic.size());
    writer.number(calPackVersion);
    const reduce::CRCalFile *calibration = pack.cal(false);
    writer.number(static_cast<uint8_t>(calibration == nullptr ? 0 : 1));
    if (calibration != nullptr)
        reduce::write(writer, *calibration);
    for (unsigned char preset = 0; preset < CCalPack::presetCount; ++preset) {
        const CNucFile *correction = pack.nuc(preset, false);
        writer.number(static_cast<uint8_t>(correction == nullptr ? 0 : 1));
        if (correction != nullptr)
            reduce::write(writer, *correction);
    }
    return writeFile(files, path, writer.bytes());
}

} // namespace hlx
