// The SDK's functions of the camera's identity, with the names of its numbers.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/memberCalls.h"
#include "platform/zvtsdk/names.h"

using namespace emulator;

namespace
{

Status writeText(Text &text, const char *name)
{
    if (!name)
        return Refused;
    text.value = name;
    return Ok;
}

} // namespace

int zvtGetCameraModel(uint64_t handle, char *buffer, uint32_t size)
{
    return get<&Identity::model>(__func__, handle, Text(buffer, size));
}

int zvtSetCameraModel(uint64_t handle, const char *model) { return call<&Identity::setModel>(__func__, handle, model); }

int zvtGetCameraSN(uint64_t handle, char *buffer, uint32_t size)
{
    return get<&Identity::serial>(__func__, handle, Text(buffer, size));
}

int zvtSetCameraSN(uint64_t handle, const char *serial) { return call<&Identity::setSerial>(__func__, handle, serial); }

int zvtGetCameraType(uint64_t handle, uint8_t *type) { return get<&Identity::type>(__func__, handle, type); }

int zvtSetCameraType(uint64_t handle, uint8_t type) { return call<&Identity::setType>(__func__, handle, type); }

int zvtGetCameraSubtype(uint64_t handle, uint8_t *subtype)
{
    return get<&Identity::subtype>(__func__, handle, subtype);
}

int zvtSetCameraSubtype(uint64_t handle, uint8_t subtype)
{
    return call<&Identity::setSubtype>(__func__, handle, subtype);
}

int zvtGetReadout(uint64_t handle, uint8_t *readout) { return get<&Identity::readout>(__func__, handle, readout); }

int zvtGetDetectorType(uint64_t handle, uint8_t *detector)
{
    return get<&Identity::detector>(__func__, handle, detector);
}

int zvtGetVariant(uint64_t handle, uint8_t *out) { return get<&Identity::variant>(__func__, handle, out); }

int zvtGetBoardType(uint64_t handle, uint8_t *board) { return get<&Identity::board>(__func__, handle, board); }

int zvtGetPleoraBoardType(uint64_t handle, uint8_t *out) { return get<&Identity::pleoraBoard>(__func__, handle, out); }

int zvtSetPleoraBoardType(uint64_t handle, uint8_t board)
{
    return call<&Identity::setPleoraBoard>(__func__, handle, board);
}

int zvtGetCameraTypeName(uint8_t type, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::nameIn(zvt::typeNames, type)); }, type, text);
}

int zvtGetCameraSubtypeName(uint8_t type, uint8_t subtype, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::subtypeName(type, subtype)); }, type, subtype, text);
}

int zvtGetReadoutName(uint8_t readout, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::nameIn(zvt::readoutNames, readout)); }, readout, text);
}

int zvtGetDetectorTypeName(uint8_t detector, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::nameIn(zvt::detectorNames, detector)); }, detector, text);
}

int zvtGetPleoraBoardTypeName(uint8_t board, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::nameIn(zvt::pleoraBoardNames, board)); }, board, text);
}

int zvtGetVariantName(uint8_t variant, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return writeText(text, zvt::nameIn(zvt::variantNames, variant)); }, variant, text);
}
