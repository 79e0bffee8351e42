#pragma once

#include "tests/platform/FrameRig.h"

#include <QList>
#include <QVariantList>

#include <initializer_list>
#include <iterator>
#include <string>

inline constexpr int refused = emulator::Refused;

using Ids = QList<int>;

/// A camera with a filter wheel.
struct Wheel : FrameRig {
    using FrameRig::FrameRig;

    int count()
    {
        uint8_t count = 77;
        zvtGetNumFilters(handle(), &count);
        return count;
    }
    /// What the camera believes to be in the slots; empty if it does not tell.
    Ids known()
    {
        uint8_t ids[] = {77, 77, 77, 77};
        return zvtGetFilterIDs(handle(), &ids[0], &ids[1], &ids[2], &ids[3]) == 0 ? Ids(std::begin(ids), std::end(ids))
                                                                                  : Ids();
    }
    /// The ID in the optical path, -1 while the wheel turns.
    int current()
    {
        uint8_t id = 77;
        return zvtGetCurrentFilterID(handle(), &id) == 0 ? id : -1;
    }
    int turnTo(uint8_t id) { return zvtSetCurrentFilterID(handle(), id); }
    std::string name(uint8_t id)
    {
        char text[200] = "?";
        return zvtGetFilterNameEx(handle(), id, text, sizeof text) == 0 ? text : "?";
    }
    int setName(uint8_t id, const std::string &name) { return zvtSetFilterInfoName(handle(), id, name.c_str()); }
    /// Switches the camera off and on.
    void restart(const char *profile = "everything") { open(profile); }

    /// The milliseconds that `operation` takes on the camera's clock.
    template <class Operation> static int64_t durationOf(Operation operation)
    {
        const int64_t before = emulator::Clock::now();
        operation();
        return emulator::Clock::now() - before;
    }
    /// Whether the newest frame is as dark as behind a spoke. A body of 35 C is before the camera.
    bool isDark() { return mean() < 2500; }
};

inline QVariantList listOf(std::initializer_list<int> ids)
{
    QVariantList list;
    for (const int id : ids)
        list << id;
    return list;
}
