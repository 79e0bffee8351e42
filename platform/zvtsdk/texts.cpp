// The SDK's texts and name rules that do not depend on a camera.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"
#include "platform/emulator/fileNames.h"

#include <array>
#include <span>
#include <string>

using namespace emulator;

namespace
{

constexpr const char *frameSyncModes[] = {"Integration", "Readout"};
constexpr const char *nucTypes[] = {"One-Point", "Two-Point", "Offset Update"};
constexpr const char *nucSources[] = {"External", "Internal"};
constexpr const char *zoomFactors[] = {"0.5X", "1X", "2X", "4X", "1.3X", "Fit"};

constexpr size_t filterCount = 64;
constexpr const char *stockFilters[] = {
    "Empty",      "Open",       "Blocked",    "Sapphire",   "ND 0.3",     "ND 0.6",     "ND 1.0",     "ND 1.3",
    "ND 2.0",     "ND 3.0",     "SP 2.50 um", "SP 3.30 um", "SP 4.00 um", "SP 5.00 um", "LP 2.00 um", "LP 3.60 um",
    "LP 4.50 um", "LP 7.80 um", "BP 2.20 um", "BP 2.70 um", "BP 3.00 um", "BP 3.30 um", "BP 3.42 um", "BP 3.70 um",
    "BP 3.90 um", "BP 4.26 um", "BP 4.50 um", "BP 4.67 um", "BP 4.80 um", "BP 8.60 um", "BP 9.50 um", "BP 10.60 um",
};

const char *textAt(std::span<const char *const> texts, uint8_t index)
{
    return index < texts.size() ? texts[index] : nullptr;
}

/// Filters after the stock filters are made for single customers and have only a number.
const char *filterName(uint8_t id)
{
    static const auto customFilters = [] {
        std::array<std::string, filterCount - std::size(stockFilters)> names;
        for (size_t i = 0; i < names.size(); ++i)
            names[i] = "Custom " + std::to_string(i + 1);
        return names;
    }();
    if (id < std::size(stockFilters))
        return stockFilters[id];
    return id < filterCount ? customFilters[id - std::size(stockFilters)].c_str() : nullptr;
}

} // namespace

const char *zvtFrameSyncModeText(uint8_t mode)
{
    return lookUp(
        __func__, [=] { return textAt(frameSyncModes, mode); }, mode);
}

const char *zvtNUCTypeText(uint8_t type)
{
    return lookUp(
        __func__, [=] { return textAt(nucTypes, type); }, type);
}

const char *zvtNUCSourceText(uint8_t source)
{
    return lookUp(
        __func__, [=] { return textAt(nucSources, source); }, source);
}

const char *zvtVideoZoomFactorText(uint8_t value)
{
    const auto text = [=] {
        const char *known = textAt(zoomFactors, value);
        return known ? known : "Unknown";
    };
    return lookUp(__func__, text, value);
}

const char *zvtGetFilterName(uint8_t id)
{
    return lookUp(
        __func__, [=] { return filterName(id); }, id);
}

int zvtIsValidFileName(const char *name)
{
    return withoutHandle(
        __func__, [=] { return isFileName(name) ? Ok : Refused; }, name);
}

int zvtIsValidStateName(const char *name)
{
    return withoutHandle(
        __func__, [=] { return isStateName(name) ? Ok : Refused; }, name);
}
