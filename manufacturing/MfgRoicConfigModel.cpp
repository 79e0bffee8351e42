#include "manufacturing/MfgRoicConfigModel.h"

#include "common/publishing.h"
#include "common/reading.h"
#include "common/rows.h"
#include "common/setters.h"

#include <array>
#include <cmath>
#include <limits>
#include <tuple>

#include "zvt/zvtsdk.h"

struct MfgRoicConfigModel::Rows {
    static constexpr Row overrideDefaults{zvtGetMfgOverrideRoicConfig, &RoicConfigResult::overrideDefaults,
                                          &Self::m_overrideDefaults, &Self::overrideDefaultsChanged};
    static constexpr Row hasExtraLSync{zvtGetMfgHasExtraLSync, &RoicConfigResult::hasExtraLSync, &Self::m_hasExtraLSync,
                                       &Self::hasExtraLSyncChanged, zvtSetMfgHasExtraLSync};
    static constexpr Row lineDeadWidth{zvtGetMfgLineDeadWidth, &RoicConfigResult::lineDeadWidth, &Self::m_lineDeadWidth,
                                       &Self::lineDeadWidthChanged, zvtSetMfgLineDeadWidth};
    static constexpr Row preIntWidth{zvtGetMfgPreIntDeadWidth, &RoicConfigResult::preIntWidth, &Self::m_preIntWidth,
                                     &Self::preIntWidthChanged, zvtSetMfgPreIntDeadWidth};
    static constexpr Row postIntWidth{zvtGetMfgPostIntDeadWidth, &RoicConfigResult::postIntWidth, &Self::m_postIntWidth,
                                      &Self::postIntWidthChanged, zvtSetMfgPostIntDeadWidth};
    static constexpr Row preDeadRows{zvtGetMfgPreDeadRows, &RoicConfigResult::preDeadRows, &Self::m_preDeadRows,
                                     &Self::preDeadRowsChanged, zvtSetMfgPreDeadRows};
    static constexpr Row postDeadRows{zvtGetMfgPostDeadRows, &RoicConfigResult::postDeadRows, &Self::m_postDeadRows,
                                      &Self::postDeadRowsChanged, zvtSetMfgPostDeadRows};
    static constexpr std::tuple all{overrideDefaults, hasExtraLSync, lineDeadWidth, preIntWidth,
                                    postIntWidth,     preDeadRows,   postDeadRows};

    /// A number, for wasRead().
    struct Number {
        const char *name;
        Nullable<uint32_t> RoicConfigResult::*field;
    };
    static constexpr std::array numbers{
        Number{"lineDeadWidth", &RoicConfigResult::lineDeadWidth},
        Number{"preIntWidth", &RoicConfigResult::preIntWidth}, Number{"postIntWidth", &RoicConfigResult::postIntWidth},
        Number{"preDeadRows", &RoicConfigResult::preDeadRows}, Number{"postDeadRows", &RoicConfigResult::postDeadRows}};
};

// The read

void MfgRoicConfigModel::refresh() { m_refresh.start(&RoicConfigResult::read); }

MfgRoicConfigModel::RoicConfigResult MfgRoicConfigModel::RoicConfigResult::read(const CameraAccess &camera)
{
    RoicConfigResult result;
    readAll(result, Rows::all, camera.handle);
    fetch(result.clockFrequency, zvtGetClockFrequency, camera.handle);
    return result;
}

void MfgRoicConfigModel::finishedWatcher()
{
    const RoicConfigResult result = m_refresh.result();
    for (const auto &[name, field] : Rows::numbers)
        if ((result.*field).set())
            m_numbersRead.insert(QLatin1String(name));
    // First, since the times of the widths depend on it.
    if (result.clockFrequency.set() && result.clockFrequency.get() != m_clockFrequency) {
        m_clockFrequency = result.clockFrequency.get();
        emit lineDeadWidthChanged();
        emit preIntWidthChanged();
        emit postIntWidthChanged();
    }
    publishAllIfChanged(this, result, Rows::all);
    m_refresh.finish();
}

// Times

double MfgRoicConfigModel::clocksPerMicrosecond() const
{
    constexpr double hzPerMHz = 1000000.0;
    return m_clockFrequency / hzPerMHz;
}

double MfgRoicConfigModel::timeOf(uint32_t clocks) const { return clocks / clocksPerMicrosecond(); }

uint32_t MfgRoicConfigModel::widthOf(double microseconds) const
{
    const double clocks = std::ceil(clocksPerMicrosecond() * microseconds);
    // A NaN, from a time that is none or from a clock of 0 Hz, does not fit either.
    const bool fits = clocks >= 0 && clocks <= std::numeric_limits<uint32_t>::max();
    return fits ? static_cast<uint32_t>(clocks) : 0;
}

// Writes

void MfgRoicConfigModel::setOverrideDefaults(bool overrideDefaults)
{
    if (overrideDefaults == m_overrideDefaults)
        return;
    const uint64_t handle = CameraAccess::of(this).handle;
    if (zvtSetMfgOverrideRoicConfig(handle, static_cast<uint8_t>(overrideDefaults)) == 0)
        m_overrideDefaults = readOr(m_overrideDefaults, zvtGetMfgOverrideRoicConfig, handle);
    emit overrideDefaultsChanged();
}

void MfgRoicConfigModel::setHasExtraLSync(bool hasExtraLSync)
{
    writeConfirmed(this, hasExtraLSync, Rows::hasExtraLSync);
}

void MfgRoicConfigModel::setLineDeadWidth(uint clocks) { writeConfirmed(this, clocks, Rows::lineDeadWidth); }

void MfgRoicConfigModel::setPreIntWidth(uint clocks) { writeConfirmed(this, clocks, Rows::preIntWidth); }

void MfgRoicConfigModel::setPostIntWidth(uint clocks) { writeConfirmed(this, clocks, Rows::postIntWidth); }

void MfgRoicConfigModel::setPreDeadRows(uint rows) { writeConfirmed(this, rows, Rows::preDeadRows); }

void MfgRoicConfigModel::setPostDeadRows(uint rows) { writeConfirmed(this, rows, Rows::postDeadRows); }
