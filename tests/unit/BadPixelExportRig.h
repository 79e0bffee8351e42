#pragma once

#include "tests/unit/TabRig.h"

#include "manufacturing/MfgToolsModel.h"
#include "platform/hlx/BadPixelFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QUrl>

#include <set>
#include <utility>

/// The tools of the factory with a local folder for files. The camera accepts to make the lists of presets, which a
/// test puts into its folder.
struct BadPixelExportRig : TabRig<MfgToolsModel> {
    using List = hlx::BadPixelFile;
    using Places = std::set<std::pair<int, int>>;

    static constexpr auto factoryPath = "/flashfs/system/factoryConfig/factory.bpl";

    BadPixelExportRig() : TabRig(QStringLiteral("everything"))
    {
        gate().script("zvtSaveBadPixelList", true);
        start();
    }

    /// Where a file of the camera is, after the camera has written what it was about to write.
    QString pathOf(const QString &cameraPath)
    {
        rig.camera().flushMemory();
        return rig.camera().folder() + cameraPath;
    }
    /// Puts a file into the camera.
    bool put(const QString &cameraPath, const QByteArray &content) { return writeFile(pathOf(cameraPath), content); }
    bool put(const QString &cameraPath, const List &list)
    {
        const auto bytes = list.bytes();
        return put(cameraPath, QByteArrayView(bytes).toByteArray());
    }
    bool putPreset(int preset, const List &list) { return put(QStringLiteral("/Temp/ps%1.bpl").arg(preset), list); }
    /// Puts a small list for each preset, and for the factory. Each has another pixel.
    bool putAll()
    {
        for (int preset = 0; preset < 4; ++preset)
            if (!putPreset(preset, {8, 4, {{static_cast<uint16_t>(preset), 1}}}))
                return false;
        return put(factoryPath, List{8, 4, {{7, 3}}});
    }

    /// Exports the lists of an index into the local folder. Returns the calls.
    QStringList exportLists(int index)
    {
        model.setSelectedSaveBplIndex(index);
        QStringList calls = callsOf([&] { model.saveBplForSelectedIndexAction(QUrl::fromLocalFile(folder.path())); });
        return calls.replaceInStrings(folder.path(), QStringLiteral("LOCAL"));
    }

    QString local(const QString &name) const { return folder.filePath(name); }
    QStringList localFiles() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
    QByteArray content(const QString &name) const
    {
        QFile file(local(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The places of the white pixels in a local picture in which all others are black; of all pixels that are not
    /// black or white, (-1, -1).
    Places whitePixels(const QString &name) const
    {
        const QImage picture(local(name));
        Places places;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (const QColor color = picture.pixelColor(x, y); color == Qt::white)
                    places.emplace(x, y);
                else if (color != Qt::black)
                    places.emplace(-1, -1);
        return places;
    }

    static bool writeFile(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
            && file.write(content) == content.size();
    }

    QTemporaryDir folder;
};
