#pragma once

#include "platform/emulator/control.h"

#include <QVariant>

/// The present value of a setting of a camera, which other clients may change. Invalid if there is no such setting.
inline QVariant settingOf(const emulator::Camera &camera, const QString &name)
{
    for (const emulator::SettingInfo &setting : camera.settings())
        if (setting.name == name)
            return setting.value.toVariant();
    return {};
}
