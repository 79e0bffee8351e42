#include "hlx/CCalPack.h"

#include "platform/hlx/FileBytes.h"
#include "platform/hlxfile/CalPackFormat.h"
#include "platform/hlxreduce/ReduceBytes.h"

namespace hlx
{

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is part of the interface.
bool CCalPack::Load(IFileSystem *files, CString path)
{
    const auto content = readFile(files, path);
    if (!content)
        return false;
    ByteReader reader(*content);
    reader.expect(calPackMagic);
    if (reader.number<uint32_t>() != calPackVersion)
        return false;
    CCalPack found;
    if (reader.number<uint8_t>() != 0)
        *found.cal(true) = reduce::readCalibration(reader);
    for (unsigned char preset = 0; preset < presetCount; ++preset)
        if (reader.number<uint8_t>() != 0)
            *found.nuc(preset, true) = reduce::readCorrection(reader);
    if (!reader.complete())
        return false;
    *this = std::move(found);
    return true;
}

reduce::CRCalFile *CCalPack::cal(bool create)
{
    if (m_calibration == nullptr && create)
        m_calibration = std::make_unique<reduce::CRCalFile>();
    return m_calibration.get();
}

CNucFile *CCalPack::nuc(unsigned char preset, bool create)
{
    if (preset >= presetCount)
        return nullptr;
    auto &correction = m_corrections[preset];
    if (correction == nullptr && create)
        correction = std::make_unique<CNucFile>();
    return correction.get();
}

} // namespace hlx
