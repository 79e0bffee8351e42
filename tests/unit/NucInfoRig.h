#pragma once

#include "tests/support/CameraRig.h"

#include "correction/NucInfoModel.h"

#include <cstring>
#include <memory>

#include "zvt/zvttypes.h"

using NucInfoRows = QList<std::pair<QString, QString>>;

inline constexpr uint64_t someTime = 116'444'736'000'000'000; // 1970-01-01.

/// A description in which every field but the flags has another value.
inline zvtSNUCInfo someInfo()
{
    zvtSNUCInfo info{};
    std::strcpy(info.cameraModel, "Campion 640 C");
    std::strcpy(info.cameraSerial, "ZE-100001");
    info.x = 16;
    info.y = 8;
    info.width = 320;
    info.height = 256;
    info.invert = true;
    info.frameSyncMode = 1;
    info.integrationWidth = 20'000;
    info.frameWidth = 100'000;
    info.filterID = 7;
    info.biasKind = 1;
    info.detectorBias = 250.25F;
    info.secondDetectorBias = 99.5F;
    info.gainLevel = 3;
    info.digitalOffset = -12.5F;
    info.digitalGain = 1.25F;
    info.analogOffset = 4.5F;
    info.skimmingVoltage = 1.2F;
    info.nucType = 1;
    info.numFrames = 16;
    info.detectBadPixels = true;
    info.twinklerFrames = 32;
    info.twinklerDelta = 200;
    info.adMinimum = 1000;
    info.adMaximum = 15000;
    info.gainMinimum = 0.75F;
    info.gainMaximum = 1.5F;
    uint32_t count = 100;
    for (auto *number : {&info.totalBadPixels, &info.twinklingPixels, &info.factoryBadPixels, &info.aboveGainMaximum,
                         &info.belowGainMinimum, &info.aboveAdMaximumSource1, &info.belowAdMinimumSource1,
                         &info.aboveAdMaximumSource2, &info.belowAdMinimumSource2, &info.newBadPixels})
        *number = ++count;
    return info;
}

/// A camera with one correction, by scripts.
struct NucInfoRig {
    explicit NucInfoRig(const zvtSNUCInfo &info = someInfo())
    {
        rig.gate().script("zvtQueryNUCInfo", QVariant::fromValue(info));
        rig.gate().script("zvtClocksToMilliseconds", 2.0);
        rig.gate().script("zvtClocksToHertz", 119.875);
    }

    std::unique_ptr<NucInfoModel> start(unsigned int size = 2'950'148, uint64_t time = someTime,
                                        const char *name = "Warm")
    {
        return std::make_unique<NucInfoModel>(rig.camera().handle(), name, size, time, nullptr);
    }
    std::unique_ptr<NucInfoModel> read(unsigned int size = 2'950'148, uint64_t time = someTime)
    {
        auto model = start(size, time);
        CameraRig::settle();
        return model;
    }

    CameraRig rig;
};

inline NucInfoRows rowsOf(const NucInfoModel &model)
{
    NucInfoRows rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows.append({model.data(model.index(row), NucInfoModel::Name).toString(),
                     model.data(model.index(row), NucInfoModel::Value).toString()});
    return rows;
}

/// The value of the row with this name; "(none)" without one.
inline QString valueOf(const NucInfoModel &model, const QString &name)
{
    for (const auto &[rowName, value] : rowsOf(model))
        if (rowName == name)
            return value;
    return QStringLiteral("(none)");
}
