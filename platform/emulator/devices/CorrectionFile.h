#pragma once

#include "platform/emulator/devices/CorrectionInfo.h"
#include "platform/emulator/image/CorrectionTable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace emulator
{

// The contents of a correction file (.nuc): a head with the description of the correction, and its table.
// docs/correction-files.md describes the format. Any thread.

/// The size of the head in bytes.
constexpr size_t correctionHeadSize = 1024;

/// Returns the size of a correction file for a window, in bytes.
constexpr uint64_t correctionFileSize(uint64_t width, uint64_t height)
{
    constexpr uint64_t bytesPerPixel = 2 * sizeof(float) + 1;
    constexpr uint64_t tableChecksumSize = sizeof(uint32_t);
    return correctionHeadSize + bytesPerPixel * width * height + tableChecksumSize;
}

/// A correction: what is in a correction file.
struct Correction {
    CorrectionInfo info;
    std::shared_ptr<const image::CorrectionTable> table;
};

/// Returns the contents of a correction file. Its window is that of the table, which has a value for each pixel. A text
/// of more than 64 bytes is cut between two characters.
std::vector<uint8_t> toCorrectionFile(const CorrectionInfo &info, const image::CorrectionTable &table);

/// Returns the description in the first correctionHeadSize bytes of a correction file; further bytes are ignored. Empty
/// if it is not a correction file, has another version, is damaged, or has a window without frames.
std::optional<CorrectionInfo> readCorrectionHead(std::span<const uint8_t> bytes);

/// Returns the correction in a file. Empty if the head or the table is not valid, or the file has another size than its
/// window needs. A table is not valid if its checksum is wrong, a number in it is not finite, or a flag is unknown.
std::optional<Correction> fromCorrectionFile(std::span<const uint8_t> bytes);

} // namespace emulator
