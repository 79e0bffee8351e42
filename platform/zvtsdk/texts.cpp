// The SDK's texts and name rules that do not depend on a camera.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/VideoOutput.h"
#include "platform/emulator/devices/filterTable.h"
#include "platform/emulator/dispatch.h"
#include "platform/emulator/fileNames.h"

#include <span>

using namespace emulator;

namespace
{

constexpr const char *frameSyncModes[] = {"Integration", "Readout"};
constexpr const char *nucTypes[] = {"One-Point", "Two-Point", "Offset Update"};
constexpr const char *nucSources[] = {"External", "Internal"};

const char *textAt(std::span<const char *const> texts, uint8_t index)
{
    return index < texts.size() ? texts[index] : nullptr;
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
        const char *known = VideoOutput::zoomFactorText(value);
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
