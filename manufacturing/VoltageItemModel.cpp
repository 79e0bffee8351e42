#include "manufacturing/VoltageItemModel.h"

#include "common/setters.h"

#include <utility>

#include "zvt/zvtsdk.h"

VoltageItemModel::VoltageItemModel(QString sdkName, QString displayName, float volts, bool editable, QObject *parent,
                                   double minVolts, double maxVolts)
    : QObject(parent), m_sdkName(std::move(sdkName)), m_displayName(std::move(displayName)), m_volts(volts),
      m_editable(editable), m_minVolts(minVolts), m_maxVolts(maxVolts)
{
}

void VoltageItemModel::setVolts(float volts)
{
    if (m_editable)
        writeStandard(this, volts, m_volts, &VoltageItemModel::voltsChanged, zvtSetVoltage,
                      m_sdkName.toUtf8().constData());
}
