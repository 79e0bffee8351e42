#pragma once

#include "common/CameraAccess.h"
#include "common/Nullable.h"
#include "correction/LoadNucOptions.h"

#include <QByteArray>
#include <QString>

#include <cstdint>

#include "zvt/zvttypes.h"

/// Loads a correction into a preset, with the settings that the operator chose from those that it was made with. It has
/// copies of all its inputs, so it may run in a pool task.
class NucLoad
{
public:
    /// `name` is that of a stored correction in UTF-8.
    NucLoad(uint8_t preset, QByteArray name, const LoadNucOptions &options);

    /// Makes all calls. Returns the name that the preset then has; unset if the camera has refused the correction. The
    /// settings are set also in this case, and the status of a setting is ignored. Without the description of the
    /// correction no settings are set. Any thread; blocks for the time of the load.
    Nullable<QString> run(const CameraAccess &camera);

private:
    void restoreWindow(const CameraAccess &camera);
    void restoreSettings(uint64_t handle);
    void restoreAnalogSettings(uint64_t handle) const;
    void restoreTiming(uint64_t handle, uint8_t sequencingMode);
    void restoreSkimmingAndColor(uint64_t handle) const;

    uint8_t m_preset;
    QByteArray m_name;
    LoadNucOptions m_options;
    /// The settings that the correction was made with. A setting that later steps need, and that is not set again, is
    /// replaced by the present one.
    zvtSNUCInfo m_record{};
};
