// The SDK's functions of the palettes of the video output.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/VideoPalette.h"
#include "platform/emulator/memberCalls.h"
#include "platform/zvtsdk/dirEntry.h"

using namespace emulator;

int zvtListPalettes(uint64_t handle, hlx::TArray<zvtSDirEntry> *out)
{
    const auto body = [&](const VideoPalette &) {
        for (const QString &name : VideoPalette::names())
            out->add(zvt::dirEntry(name.toStdString(), sizeof(image::Palette), 0));
    };
    return onDevice<VideoPalette>(__func__, handle, body, out);
}

int zvtGetPalette(uint64_t handle, char *buf, uint32_t size)
{
    return get<&VideoPalette::name>(__func__, handle, Text(buf, size));
}

int zvtLoadPalette(uint64_t handle, const char *name) { return call<&VideoPalette::load>(__func__, handle, name); }
