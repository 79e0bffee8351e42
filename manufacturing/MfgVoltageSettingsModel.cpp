#include "manufacturing/MfgVoltageSettingsModel.h"

#include "common/reading.h"
#include "common/setters.h"
#include "manufacturing/VoltageItemModel.h"

#include <utility>

#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "zvt/zvtsdk.h"

void MfgVoltageSettingsModel::setVisible(bool visible) { storeOnly(this, visible, m_visible, &Self::visibleChanged); }

void MfgVoltageSettingsModel::refresh() { m_refresh.start(&MfgVoltageSettingsResult::read); }

MfgVoltageSettingsModel::Voltage MfgVoltageSettingsModel::Voltage::read(uint64_t handle, const char *name)
{
    constexpr uint32_t nameSize = 100;
    Voltage voltage;
    voltage.sdkName = QString::fromUtf8(name);
    readText<nameSize>(voltage.displayName, zvtGetVoltageDisplayName, handle, name);
    fetch(voltage.volts, zvtGetVoltage, handle, name);
    fetch(voltage.editable, zvtGetVoltageEditable, handle, name);
    readPair(voltage.minVolts, voltage.maxVolts, zvtGetVoltageLimits, handle, name);
    return voltage;
}

MfgVoltageSettingsModel::MfgVoltageSettingsResult
MfgVoltageSettingsModel::MfgVoltageSettingsResult::read(const CameraAccess &camera)
{
    MfgVoltageSettingsResult result;
    hlx::TArray<hlx::CString> names;
    if (zvtListVoltages(camera.handle, &names) != 0)
        return result;
    for (const auto &name : names)
        if (Voltage voltage = Voltage::read(camera.handle, name.c_str()); voltage.complete())
            result.voltages << std::move(voltage);
    return result;
}

void MfgVoltageSettingsModel::finishedWatcher()
{
    const MfgVoltageSettingsResult result = m_refresh.result();
    m_voltages.removeAll();
    for (const Voltage &voltage : result.voltages)
        m_voltages.append(new VoltageItemModel(voltage.sdkName, voltage.displayName.get(), voltage.volts.get(),
                                               voltage.editable.get(), this, voltage.minVolts.get(),
                                               voltage.maxVolts.get()));
    m_refresh.finish();
}
