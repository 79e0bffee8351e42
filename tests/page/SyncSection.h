#pragma once

#include "tests/page/SetupPage.h"

/// The Setup page with only this section expanded.
struct SyncSection : SetupPage {
    explicit SyncSection(
        const QString &profile = QStringLiteral("everything"), const Prepare &prepare = [](emulator::Camera &) {})
        : SetupPage(profile, prepare)
    {
        click("General Setup");
        click("Sync Settings");
        settle();
    }

    QObject *sync() const { return tabModel("syncSettings"); }
    bool reads(const std::function<void()> &action)
    {
        const size_t mark = rig().gate().mark();
        action();
        settle();
        return rig().callsSince(mark).contains("zvtGetTriggerMode");
    }
    void refresh() { click(QStringLiteral("Refresh Sync Settings")); }
};

/// Its controls, in reading order.
inline const QStringList &syncControls()
{
    static const QStringList names{"Sync Source",
                                   "Frame Sync Starts",
                                   "Trigger Mode",
                                   "Sequence Count",
                                   "Trigger Source",
                                   "Trigger",
                                   "Rearm",
                                   "Trigger Rate (Hz)",
                                   "Trigger Time day",
                                   "Trigger Time hour",
                                   "Trigger Time min",
                                   "Trigger Time sec",
                                   "Trigger Time ms",
                                   "Trigger Time us",
                                   "Sync In Delay (us)",
                                   "Sync In Polarity",
                                   "Trigger In Delay (us)",
                                   "Trigger In Polarity",
                                   "Sync Out Delay (us) PS0",
                                   "Sync Out Delay (us) PS1",
                                   "Sync Out Delay (us) PS2",
                                   "Sync Out Delay (us) PS3",
                                   "Sync Out Reference",
                                   "Sync Out Polarity"};
    return names;
}
