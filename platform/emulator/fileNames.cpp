#include "platform/emulator/fileNames.h"

#include <QUtf8StringView>

#include <algorithm>

namespace emulator
{

namespace
{

constexpr size_t longestFileName = 255;
constexpr size_t longestStateName = 199; // A state's name and its zero fit into 200 bytes.

} // namespace

bool isFileName(std::string_view name)
{
    const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    return name.size() <= longestFileName && !std::ranges::all_of(name, isSpace) && !isSpace(name.front())
        && name.find_first_of("/\\:\"*?<>|") == std::string_view::npos
        && QUtf8StringView(name.data(), static_cast<qsizetype>(name.size())).isValidUtf8();
}

bool isStateName(std::string_view name) { return name.size() <= longestStateName && isFileName(name); }

} // namespace emulator
