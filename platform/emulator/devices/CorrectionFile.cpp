#include "platform/emulator/devices/CorrectionFile.h"

#include "platform/emulator/crc32.h"
#include "platform/emulator/utf8.h"
#include "platform/hlx/ByteStream.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace emulator
{

namespace
{

constexpr std::string_view magic = "HLX-NUC\n";
constexpr uint32_t version = 1;
constexpr size_t textSize = 64;
constexpr size_t checksumSize = sizeof(uint32_t);
constexpr uint8_t knownFlags
    = image::CorrectionTable::Bad | image::CorrectionTable::Factory | image::CorrectionTable::Twinkling;

// The maps of a table are copied as they are in memory.
static_assert(std::endian::native == std::endian::little);

std::span<const uint8_t> firstBytes(const std::string &text)
{
    const std::string_view first = beginningOf(text, textSize);
    return {reinterpret_cast<const uint8_t *>(first.data()), first.size()};
}

void writeText(hlx::ByteWriter &writer, const std::string &text)
{
    const auto bytes = firstBytes(text);
    constexpr uint8_t zeros[textSize] = {};
    writer.raw(bytes.data(), bytes.size());
    writer.raw(zeros, textSize - bytes.size());
}

std::string readText(hlx::ByteReader &reader)
{
    const uint8_t *const bytes = reader.take(textSize);
    return bytes ? std::string(bytes, std::find(bytes, bytes + textSize, 0)) : std::string();
}

template <class Number> void writeNumber(hlx::ByteWriter &writer, Number value)
{
    if constexpr (std::same_as<Number, float>)
        writer.real(value);
    else if constexpr (std::same_as<Number, bool>)
        writer.number(static_cast<uint8_t>(value));
    else
        writer.number(value);
}

template <class Number> void readNumber(hlx::ByteReader &reader, Number &value)
{
    if constexpr (std::same_as<Number, float>)
        value = reader.real();
    else if constexpr (std::same_as<Number, bool>)
        value = reader.number<uint8_t>() != 0;
    else
        value = reader.number<Number>();
}

template <class Value> void appendMap(std::vector<uint8_t> &bytes, const std::vector<Value> &map)
{
    const size_t place = bytes.size();
    bytes.resize(place + map.size() * sizeof(Value));
    std::memcpy(bytes.data() + place, map.data(), map.size() * sizeof(Value));
}

/// Returns a map of the next bytes, and removes them.
template <class Value> std::vector<Value> takeMap(std::span<const uint8_t> &bytes, size_t pixels)
{
    std::vector<Value> map(pixels);
    std::memcpy(map.data(), bytes.data(), pixels * sizeof(Value));
    bytes = bytes.subspan(pixels * sizeof(Value));
    return map;
}

void appendChecksum(std::vector<uint8_t> &bytes, size_t from)
{
    appendMap(bytes, std::vector<uint32_t>{crc32(std::span(bytes).subspan(from))});
}

/// Whether the last bytes are the checksum of those before.
bool hasChecksum(std::span<const uint8_t> bytes)
{
    hlx::ByteReader reader(bytes.data() + bytes.size() - checksumSize, checksumSize);
    return reader.number<uint32_t>() == crc32(bytes.first(bytes.size() - checksumSize));
}

std::vector<uint8_t> head(const CorrectionInfo &info)
{
    hlx::ByteWriter writer;
    writer.raw(magic.data(), magic.size());
    writer.number(version);
    writeText(writer, info.cameraModel);
    writeText(writer, info.cameraSerial);
    forEachNumber([&writer](auto value) { writeNumber(writer, value); }, info);
    std::vector<uint8_t> bytes = writer.bytes();
    bytes.resize(correctionHeadSize - checksumSize);
    appendChecksum(bytes, 0);
    return bytes;
}

image::Window windowOf(const CorrectionInfo &info) { return {info.x, info.y, info.width, info.height}; }

} // namespace

std::vector<uint8_t> toCorrectionFile(const CorrectionInfo &info, const image::CorrectionTable &table)
{
    CorrectionInfo complete = info;
    complete.x = static_cast<uint16_t>(table.window.x);
    complete.y = static_cast<uint16_t>(table.window.y);
    complete.width = static_cast<uint16_t>(table.window.width);
    complete.height = static_cast<uint16_t>(table.window.height);
    std::vector<uint8_t> bytes = head(complete);
    bytes.reserve(correctionFileSize(complete.width, complete.height));
    appendMap(bytes, table.gains.values());
    appendMap(bytes, table.offsets.values());
    appendMap(bytes, table.flags);
    appendChecksum(bytes, correctionHeadSize);
    return bytes;
}

std::optional<CorrectionInfo> readCorrectionHead(std::span<const uint8_t> bytes)
{
    if (bytes.size() < correctionHeadSize || !hasChecksum(bytes.first(correctionHeadSize)))
        return std::nullopt;
    hlx::ByteReader reader(bytes.data(), correctionHeadSize);
    reader.expect(magic);
    if (reader.number<uint32_t>() != version)
        return std::nullopt;
    CorrectionInfo info;
    info.cameraModel = readText(reader);
    info.cameraSerial = readText(reader);
    forEachNumber([&reader](auto &value) { readNumber(reader, value); }, info);
    if (!windowOf(info).hasFrames())
        return std::nullopt;
    return info;
}

std::optional<Correction> fromCorrectionFile(std::span<const uint8_t> bytes)
{
    const auto info = readCorrectionHead(bytes);
    if (!info || bytes.size() != correctionFileSize(info->width, info->height)
        || !hasChecksum(bytes.subspan(correctionHeadSize)))
        return std::nullopt;
    auto table = std::make_shared<image::CorrectionTable>();
    table->window = windowOf(*info);
    const auto pixels = static_cast<size_t>(table->window.pixels());
    std::span<const uint8_t> maps = bytes.subspan(correctionHeadSize);
    table->gains = takeMap<float>(maps, pixels);
    table->offsets = takeMap<float>(maps, pixels);
    table->flags = takeMap<uint8_t>(maps, pixels);
    const auto isFinite = [](float value) { return std::isfinite(value); };
    const auto isKnown = [](uint8_t flags) { return (flags & ~knownFlags) == 0; };
    if (!std::ranges::all_of(table->gains, isFinite) || !std::ranges::all_of(table->offsets, isFinite)
        || !std::ranges::all_of(table->flags, isKnown))
        return std::nullopt;
    return Correction{*info, std::move(table)};
}

} // namespace emulator
