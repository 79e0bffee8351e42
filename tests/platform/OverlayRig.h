#pragma once

#include "platform/emulator/devices/VideoOverlay.h"
#include "tests/platform/LensRig.h"

#include <QString>
#include <QStringList>

#include <mutex>

/// A camera with a stopped clock, and what the overlay of its video output shows.
class OverlayRig : public LensRig
{
public:
    using LensRig::LensRig;

    emulator::image::OverlayContent content()
    {
        const std::lock_guard lock(camera().mutex());
        camera().catchUp();
        return camera().device<emulator::VideoOverlay>()->content();
    }
    QStringList lines()
    {
        QStringList lines;
        for (const std::string &line : content().lines)
            lines << QString::fromLatin1(line.c_str());
        return lines;
    }
    QString message() { return QString::fromLatin1(content().message.c_str()); }
};
