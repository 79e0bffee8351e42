#pragma once

#include "tests/unit/TabRig.h"

#include "advanced/AdvancedTabModel.h"

/// Lets each read return a value that differs from those of a new model.
inline void scriptDigital(emulator::Gate &gate)
{
    gate.script("zvtGetDigitalGain", 1.5);
    gate.script("zvtGetDigitalOffset", -20.5);
    gate.script("zvtGetCameraLinkType", 1);
    gate.script("zvtGetCameraLinkTypeWritable", 1);
    gate.script("zvtGetCoaXPressLinkCount", 1);
    gate.script("zvtGetCoaXPressLinkCountWritable", 1);
    gate.script("zvtGetBlackHotAvailable", 1);
    gate.script("zvtGetBlackHotEnabled", 1);
}

/// The Advanced tab below a root, with scripted values of the camera.
struct AdvancedTab : TabRig<AdvancedTabModel> {
    // The properties of one kind, by preset.
    static inline const QList<const char *> gains{"presetZeroGain", "presetOneGain", "presetTwoGain",
                                                  "presetThreeGain"};
    static inline const QList<const char *> offsets{"presetZeroOffset", "presetOneOffset", "presetTwoOffset",
                                                    "presetThreeOffset"};
    static inline const QStringList linkSignals{
        "selectedCameraLinkModeIndexChanged", "cameraLinkModeCanBeModifiedChanged", "coaXPressLinksListChanged",
        "selectedCoaXPressLinksIndexChanged", "coaXPressLinksCanBeModifiedChanged"};
    static inline const QStringList presetSignals{
        "presetZeroGainChanged",   "presetOneGainChanged",   "presetTwoGainChanged",   "presetThreeGainChanged",
        "presetZeroOffsetChanged", "presetOneOffsetChanged", "presetTwoOffsetChanged", "presetThreeOffsetChanged"};
    /// The signals of a read of a camera with both kinds of links, without those of "black hot".
    static inline const QStringList readSignals = presetSignals + linkSignals;

    explicit AdvancedTab(const QString &profile = QStringLiteral("everything"))
        : TabRig(profile, &ZvtCameraModel::advancedTabModel)
    {
        scriptDigital(gate());
        start();
    }
};
