// The SDK's functions of the camera's identity, and the names of its numbers.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Identity.h"
#include "platform/emulator/dispatch.h"
#include "platform/zvtsdk/names.h"

using emulator::Identity;
using emulator::onDevice;
using emulator::Status;
using emulator::Text;
using emulator::withoutHandle;

namespace
{

Status give(Text &text, const char *name)
{
    if (!name)
        return emulator::Refused;
    text.value = name;
    return emulator::Ok;
}

} // namespace

int zvtGetCameraModel(uint64_t handle, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { text.value = i.model(); }, text);
}

int zvtSetCameraModel(uint64_t handle, const char *model)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { return i.setModel(model); }, model);
}

int zvtGetCameraSN(uint64_t handle, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { text.value = i.serial(); }, text);
}

int zvtSetCameraSN(uint64_t handle, const char *serial)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { return i.setSerial(serial); }, serial);
}

int zvtGetCameraType(uint64_t handle, uint8_t *type)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *type = i.type(); }, type);
}

int zvtSetCameraType(uint64_t handle, uint8_t type)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { i.setType(type); }, type);
}

int zvtGetCameraSubtype(uint64_t handle, uint8_t *subtype)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *subtype = i.subtype(); }, subtype);
}

int zvtSetCameraSubtype(uint64_t handle, uint8_t subtype)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { i.setSubtype(subtype); }, subtype);
}

int zvtGetReadout(uint64_t handle, uint8_t *readout)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *readout = i.readout(); }, readout);
}

int zvtGetDetectorType(uint64_t handle, uint8_t *detector)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *detector = i.detector(); }, detector);
}

int zvtGetVariant(uint64_t handle, uint8_t *out)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *out = i.variant(); }, out);
}

int zvtGetBoardType(uint64_t handle, uint8_t *board)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *board = i.board(); }, board);
}

int zvtGetPleoraBoardType(uint64_t handle, uint8_t *out)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { *out = i.pleoraBoard(); }, out);
}

int zvtSetPleoraBoardType(uint64_t handle, uint8_t board)
{
    return onDevice<Identity>(
        __func__, handle, [&](Identity &i) { i.setPleoraBoard(board); }, board);
}

int zvtGetCameraTypeName(uint8_t type, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::nameIn(zvt::typeNames, type)); }, type, text);
}

int zvtGetCameraSubtypeName(uint8_t type, uint8_t subtype, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::subtypeName(type, subtype)); }, type, subtype, text);
}

int zvtGetReadoutName(uint8_t readout, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::nameIn(zvt::readoutNames, readout)); }, readout, text);
}

int zvtGetDetectorTypeName(uint8_t detector, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::nameIn(zvt::detectorNames, detector)); }, detector, text);
}

int zvtGetPleoraBoardTypeName(uint8_t board, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::nameIn(zvt::pleoraBoardNames, board)); }, board, text);
}

int zvtGetVariantName(uint8_t variant, char *buffer, uint32_t size)
{
    Text text(buffer, size);
    return withoutHandle(
        __func__, [&] { return give(text, zvt::nameIn(zvt::variantNames, variant)); }, variant, text);
}
