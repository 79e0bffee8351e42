#pragma once

#include "tests/support/SignalLog.h"
#include "tests/support/modelOf.h"

#include "setup/FilterWheelItemModel.h"
#include "setup/SetupFilterWheelSettingsModel.h"

/// Gives a camera a wheel of four filters; the second one is in the optical path.
inline void scriptWheel(CameraRig &rig)
{
    rig.gate().script("zvtGetNumFilters", 4);
    rig.gate().script("zvtGetFilterIDs", QVariantList{1, 13, 21, 25});
    rig.gate().script("zvtGetFilterNameEx", "Cold filter");
    rig.gate().script("zvtGetCurrentFilterID", 13);
}

/// The filter wheel below a root, with helpers for tests.
struct Wheel {
    explicit Wheel(bool connected = true)
        : rig(QStringLiteral("everything"), connected), root(rig.controller(), nullptr),
          model(*root.setupFilterWheelSettingsModel())
    {
        scriptWheel(rig);
        CameraRig::settle();
    }

    emulator::Gate &gate() { return rig.gate(); }

    /// Starts `action` and waits for its end. Returns the calls that it made.
    template <class Action> QStringList callsOf(Action action)
    {
        const size_t mark = gate().mark();
        action();
        CameraRig::settle();
        return rig.callsSince(mark);
    }
    QStringList refresh()
    {
        return callsOf([this] { model.refresh(); });
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
    /// The filters to which the wheel was told to turn since `mark`.
    QStringList turnsSince(size_t mark)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(mark))
            if (call.name == "zvtSetCurrentFilterID")
                list << QString::fromStdString(call.arguments);
        return list;
    }

    CameraRig rig;
    ZvtCameraModel root;
    SetupFilterWheelSettingsModel &model;
};

inline const QStringList readCalls{"zvtGetNumFilters",     "zvtGetFilterIDs",    "zvtGetFilterNameEx",
                                   "zvtGetFilterNameEx",   "zvtGetFilterNameEx", "zvtGetFilterNameEx",
                                   "zvtGetCurrentFilterID"};
inline const QStringList scanCalls{"zvtGetNumFilters",   "zvtScanFilters",       "zvtGetFilterIDs",
                                   "zvtGetFilterNameEx", "zvtGetFilterNameEx",   "zvtGetFilterNameEx",
                                   "zvtGetFilterNameEx", "zvtGetCurrentFilterID"};

inline ModelUnderTest wheelModel()
{
    auto model = modelOf<SetupFilterWheelSettingsModel>();
    model.prepare = scriptWheel;
    return model;
}
