// Feeds the reader of correction files with whatever the fuzzer invents, as it is and with valid checksums. It must
// neither crash nor allocate beyond what the input can pay for, and a table that it accepts must be complete.
#include <cstdlib>
#include <cstring>
#include <span>
#include <vector>

#include "platform/emulator/crc32.h"
#include "platform/emulator/devices/CorrectionFile.h"

namespace
{

void putChecksum(std::vector<uint8_t> &bytes, std::size_t from, std::size_t to)
{
    const uint32_t checksum = emulator::crc32(std::span(bytes).subspan(from, to - from));
    std::memcpy(bytes.data() + to, &checksum, sizeof checksum);
}

void read(std::span<const uint8_t> bytes)
{
    const auto correction = emulator::fromCorrectionFile(bytes);
    if (!correction)
        return;
    const auto written = emulator::toCorrectionFile(correction->info, *correction->table);
    if (!correction->table->isComplete() || written.size() != bytes.size())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    read({data, size});
    constexpr std::size_t checksum = sizeof(uint32_t);
    if (size >= emulator::correctionHeadSize + checksum) {
        std::vector<uint8_t> sealed(data, data + size);
        putChecksum(sealed, 0, emulator::correctionHeadSize - checksum);
        putChecksum(sealed, emulator::correctionHeadSize, size - checksum);
        read(sealed);
    }
    return 0;
}
