#include "recording/convertToQdseq.h"

#include "hlx/CCalPack.h"
#include "hlx/CQDSEQImagerFile.h"
#include "hlx/CRCalReduceObject.h"
#include "hlx/CRQSImagerFile.h"
#include "hlx/memory.h"

#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>

namespace
{

using hlx::file::CRQSImagerFile;
using hlx::reduce::CRCalReduceObject;
using hlx::reduce::CReduceObjectArray;

constexpr int conversionStage = 2;

struct Release {
    void operator()(void *block) const { hlx::Free(block); }
};
using Buffer = std::unique_ptr<void, Release>;

/// The bytes of a pixel by the number of its data type.
std::size_t bytesPerPixel(int dataType)
{
    constexpr std::array<std::size_t, 12> widths{1, 1, 2, 2, 4, 4, 8, 8, 4, 8, 3, 6};
    const auto place = static_cast<std::size_t>(dataType);
    return place < widths.size() ? widths[place] : 1;
}

/// A cleared buffer for one frame. Null for frames without pixels.
Buffer allocateFrame(const CRQSImagerFile &movie)
{
    const std::size_t size = std::size_t{movie.xPixels()} * movie.yPixels() * bytesPerPixel(movie.GetDaType());
    if (size == 0)
        return nullptr;
    constexpr std::size_t largestPower = std::numeric_limits<std::size_t>::max() / 2 + 1;
    Buffer buffer(size > largestPower ? nullptr : hlx::Realloc(nullptr, std::bit_ceil(size)));
    if (buffer == nullptr)
        hlx::ThrowBadAllocException();
    std::memset(buffer.get(), 0, size);
    return buffer;
}

void replaceCalibration(CReduceObjectArray &objects, const hlx::reduce::CRCalFile &calibration)
{
    auto *object
        = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true));
    if (object == nullptr)
        return;
    object->calibration = calibration;
    object->flag = 1;
}

void replaceCorrection(CReduceObjectArray &objects, unsigned char preset, const hlx::CNucFile &correction)
{
    auto *object = objects.GetCorrection(preset, true);
    if (object == nullptr)
        return;
    object->CreateFromNucFile(correction);
    object->flag = 1;
}

/// Replaces the reduce objects of a movie by those in a cal pack. False if the pack cannot be loaded.
bool replaceObjects(CReduceObjectArray &objects, const hlx::CString &calFile)
{
    hlx::CCalPack pack;
    if (!pack.Load(hlx::fileSystem(), calFile))
        return false;
    if (const auto *calibration = pack.cal(false))
        replaceCalibration(objects, *calibration);
    for (unsigned char preset = 0; preset < hlx::CCalPack::presetCount; ++preset)
        if (const auto *correction = pack.nuc(preset, false))
            replaceCorrection(objects, preset, *correction);
    return true;
}

} // namespace

// NOLINTBEGIN(performance-unnecessary-value-param): the signature is part of the interface.
int ConvertToQdseq(hlx::CString rqsFile, hlx::CString qdseqFile, hlx::CString calFile,
                   hlx::delegate<int(int, unsigned int, unsigned int)> progress)
// NOLINTEND(performance-unnecessary-value-param)
{
    CRQSImagerFile input;
    hlx::file::CQDSEQImagerFile output;
    if (!input.Open(hlx::fileSystem(), rqsFile, 0) || input.IsAbated())
        return 0;
    progress(conversionStage, 0, input.nFrames());
    if (!calFile.empty() && !replaceObjects(input.reduceObjects(), calFile))
        return 0;
    if (!output.Create(hlx::fileSystem(), qdseqFile, input.reduceObjects(), 0))
        return 0;

    const Buffer buffer = allocateFrame(input);
    // Kept from the frame before if a frame cannot be read, as the pixels are.
    unsigned char preset = 0;
    for (unsigned int frame = 0; frame < input.nFrames(); ++frame) {
        input.GetFrame(buffer.get(), frame, preset, input.reduceObjects());
        output.PutFrame(buffer.get(), preset, input.reduceObjects());
        if (progress(conversionStage, frame, input.nFrames()) != 0)
            break;
    }
    input.Close();
    output.Close();
    return 1;
}
