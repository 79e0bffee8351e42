#include "platform/emulator/fileNames.h"

#include <QUtf8StringView>

#include <algorithm>

namespace emulator
{

namespace
{

constexpr size_t maximumFileNameBytes = 255;
constexpr size_t maximumStateNameBytes = 199; // The name and its terminating zero fit into 200 bytes.
constexpr size_t maximumCorrectionNameBytes = 200;

} // namespace

bool isFileName(std::string_view name)
{
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    return name.size() <= maximumFileNameBytes && !std::ranges::all_of(name, isSpace) && !isSpace(name.front())
        && name.find_first_of("/\\:\"*?<>|") == std::string_view::npos
        && QUtf8StringView(name.data(), static_cast<qsizetype>(name.size())).isValidUtf8();
}

bool isStateName(std::string_view name) { return name.size() <= maximumStateNameBytes && isFileName(name); }

bool isCorrectionName(std::string_view name) { return name.size() <= maximumCorrectionNameBytes && isFileName(name); }

} // namespace emulator
