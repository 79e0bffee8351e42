#pragma once

#include "platform/emulator/devices/CorrectionStore.h"
#include "tests/platform/StateFixture.h"

#include <string>

/// A connected camera with a stopped clock, for tests of its correction files.
class CorrectionFixture : public StateFixture
{
protected:
    static constexpr uint64_t capacity = 536'870'912;
    static constexpr uint64_t factorySize = 2'950'148; ///< 640x512.
    static constexpr uint64_t smallSize = 3'332; ///< 64x4.

    emulator::CorrectionStore &store() { return *m_camera->device<emulator::CorrectionStore>(); }

    /// A table whose values depend on the pixel.
    static emulator::image::CorrectionTable table(const emulator::image::Window &window = {16, 8, 64, 4})
    {
        std::vector<float> gains;
        std::vector<float> offsets;
        std::vector<uint8_t> flags;
        for (int i = 0; i < window.width * window.height; ++i) {
            gains.push_back(1 + 0.001f * static_cast<float>(i));
            offsets.push_back(-0.5f * static_cast<float>(i));
            flags.push_back(static_cast<uint8_t>(i % 8));
        }
        return {window, std::move(gains), std::move(offsets), std::move(flags)};
    }

    /// A description in which every field differs from its first value and from the others.
    static emulator::CorrectionInfo description()
    {
        emulator::CorrectionInfo info;
        info.cameraModel = "Größe";
        info.cameraSerial = "ZE-7";
        int last = 0;
        emulator::forEachNumber([&last](auto &field) { field = static_cast<std::decay_t<decltype(field)>>(++last); },
                                info);
        return info;
    }

    static QByteArray bytesOf(const std::vector<uint8_t> &bytes) { return QByteArrayView(bytes).toByteArray(); }
    static QByteArray file(const emulator::image::Window &window = {16, 8, 64, 4})
    {
        return bytesOf(emulator::toCorrectionFile(description(), table(window)));
    }

    bool save(const char *name, const emulator::image::Window &window = {16, 8, 64, 4})
    {
        return store().write(name, description(), table(window)) == emulator::Ok;
    }

    QString pathOf(const char *name) const { return m_camera->folder() + "/nucs/" + QString::fromUtf8(name) + ".nuc"; }

    QStringList corrections() const
    {
        hlx::TArray<zvtSDirEntry> entries;
        if (zvtListNUCs(m_handle, &entries) != 0)
            return {QStringLiteral("failed")};
        QStringList all;
        for (const auto &entry : entries)
            all << QString::fromUtf8(entry.name.c_str());
        return all;
    }
    static QStringList factoryNames()
    {
        return {QStringLiteral("10 to 60 °C"), QStringLiteral("120 to 350 °C"), QStringLiteral("50 to 150 °C"),
                QStringLiteral("Factory 1 ms"), QStringLiteral("Factory 2 ms")};
    }

    /// UINT64_MAX if the camera refuses to return it.
    uint64_t freeSpace() const
    {
        uint64_t bytes = UINT64_MAX;
        zvtGetNUCFreeSpace(m_handle, &bytes);
        return bytes;
    }

    /// Sets the capacity so that this much is free.
    bool leaveFree(uint64_t bytes)
    {
        constexpr uint64_t large = 1'000'000'000'000;
        return set("nucs.capacity", QVariant::fromValue(large))
            && set("nucs.capacity", QVariant::fromValue(large - freeSpace() + bytes)) && freeSpace() == bytes;
    }
};
