#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>

#include <stdexcept>
#include <string>

#include "platform/emulator/control.h"
#include "platform/emulator/devices/CorrectionFile.h"
#include "zvt/zvtsdk.h"

/// The contents of a correction file whose table changes nothing. The integration time is in clocks.
inline QByteArray correctionFile(uint16_t width = 64, uint16_t height = 4, uint32_t integrationTime = 20'000)
{
    const auto pixels = static_cast<size_t>(width) * height;
    const emulator::image::CorrectionTable table{
        {0, 0, width, height}, std::vector<float>(pixels, 1), std::vector<float>(pixels), std::vector<uint8_t>(pixels)};
    emulator::CorrectionInfo info;
    info.integrationWidth = integrationTime;
    info.frameWidth = 5 * integrationTime;
    const auto bytes = emulator::toCorrectionFile(info, table);
    return {reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

/// Deletes all corrections of a connected camera, also those of the factory.
inline void deleteCorrections(uint64_t handle)
{
    hlx::TArray<zvtSDirEntry> corrections;
    zvtListNUCs(handle, &corrections);
    for (const auto &correction : corrections)
        zvtDeleteNUC(handle, correction.name.c_str());
}

/// The folder of the camera's correction files.
inline QString correctionFolder(const emulator::Camera &camera) { return camera.folder() + QStringLiteral("/nucs"); }

/// Puts files with this content into the camera, as corrections of these names.
inline void storeCorrections(const emulator::Camera &camera, const QStringList &names,
                             const QByteArray &content = correctionFile())
{
    QDir().mkpath(correctionFolder(camera));
    for (const QString &name : names) {
        const QString path = correctionFolder(camera) + u'/' + name + QStringLiteral(".nuc");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            throw std::runtime_error("cannot write " + path.toStdString());
    }
}
