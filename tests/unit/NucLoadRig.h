#pragma once

#include "tests/unit/CorrectionRig.h"

#include "zvt/zvttypes.h"

inline const QStringList optionNames{"loadSettings",    "useIntTime",      "useWindowSize",    "useInvertRevert",
                                     "useFrameRate",    "useFilter",       "useFrameSyncMode", "useDigitalGainOffset",
                                     "useAnalogOffset", "useDetectorBias", "useFPAGainLevel",  "useSkimming",
                                     "useColor"};

/// The description of the correction that the tests load.
inline zvtSNUCInfo record()
{
    zvtSNUCInfo info{};
    info.x = 16;
    info.y = 8;
    info.width = 320;
    info.height = 256;
    info.invert = true;
    info.revert = false;
    info.frameSyncMode = 0;
    info.integrationWidth = 40'000;
    info.frameWidth = 250'000;
    info.filterID = 5;
    info.biasKind = 1;
    info.detectorBias = 310.5F;
    info.secondDetectorBias = 290.5F;
    info.gainLevel = 2;
    info.digitalOffset = -3.5F;
    info.digitalGain = 1.25F;
    info.analogOffset = 0.75F;
    info.skimmingEnabled = true;
    info.skimmingVoltage = 3.25F;
    info.color = 1;
    return info;
}

/// A connected camera whose settings differ from those of the correction, with all options unchecked.
struct Load : Correction {
    Load()
    {
        gate().script("zvtQueryNUCInfo", QVariant::fromValue(record()));
        gate().script("zvtLoadNUC", true);
        gate().script("zvtSaveNUCAs", true);
        gate().script("zvtUnloadNUC", true);
        gate().script("zvtGetWindow", QVariantList{0, 0, 640, 512});
        gate().script("zvtGetPresetSequencingMode", 0);
        gate().script("zvtGetCurrentFilterID", 1);
        gate().script("zvtGetIntegrationWidth", 30'000);
        gate().script("zvtGetFrameSyncMode", 1);
        gate().script("zvtGetFrameWidth", 200'000);
        gate().script("zvtCalcMinFrameWidthEx", 150'000);
        gate().script("zvtGetSkimmingAvailable", true);
        gate().script("zvtGetNumColors", 2);
        choose({});
    }

    /// Checks the named options, and unchecks all others.
    void choose(const QStringList &names)
    {
        for (const QString &name : optionNames)
            options.setProperty(qPrintable(name), names.contains(name));
    }

    QStringList load()
    {
        return taskOf([this] { model.loadNuc(1, QStringLiteral("Sky")); });
    }
    /// The calls of a load that contain a text.
    QStringList callsWith(const QString &text) { return load().filter(text); }
};
