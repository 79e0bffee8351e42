#pragma once

#include "tests/unit/TabRig.h"

#include "manufacturing/MfgCorvinFilterSettingsModel.h"
#include "setup/FilterWheelItemModel.h"

/// The table of the filter wheel below a root. The camera `everything` has the filters 1, 13, 21 and 25; the second one
/// is in the optical path.
struct FilterTableRig : TabRig<MfgCorvinFilterSettingsModel> {
    explicit FilterTableRig(const QString &profile = QStringLiteral("everything")) : TabRig(profile)
    {
        gate().script("zvtGetCurrentFilterID", 13);
        start();
    }

    FilterWheelItemModel *filter(int row) const
    {
        return qobject_cast<FilterWheelItemModel *>(model.filterListModel()->at(row));
    }
    QList<int> ids() const
    {
        QList<int> list;
        for (int row = 0; row < model.filterListModel()->size(); ++row)
            list << filter(row)->filterID();
        return list;
    }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < model.filterListModel()->size(); ++row)
            list << filter(row)->filterName();
        return list;
    }
    QStringList apply()
    {
        return callsOf([this] { model.applyFilterIDs(); });
    }
};
