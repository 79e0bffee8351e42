#pragma once

#include "platform/emulator/devices/BadPixelLists.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/hlx/BadPixelFile.h"
#include "tests/platform/CorrectionRig.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <mutex>
#include <set>
#include <utility>

/// A camera with a window of 160x128, and its lists of bad pixels.
struct BadPixelRig : CorrectionRig {
    using CorrectionRig::CorrectionRig;
    using Pixels = std::set<std::pair<int, int>>;
    using List = hlx::BadPixelFile;

    static constexpr auto factoryPath = "/flashfs/system/factoryConfig/factory.bpl";
    static constexpr uint32_t all = 0xFFFFFFFF;

    QString pathOf(const char *cameraPath) { return camera().folder() + QLatin1String(cameraPath); }

    /// Transfers a file of the camera, without progress.
    std::optional<List> download(const char *cameraPath)
    {
        const QString local = m_folder.filePath(QStringLiteral("list.bpl"));
        QFile::remove(local);
        if (zvtDownloadFileStd(handle(), cameraPath, qPrintable(local), {}) != 0)
            return std::nullopt;
        return List::load(hlx::fileSystem(), qPrintable(local));
    }
    std::optional<List> exported(uint8_t preset = 0)
    {
        return zvtSaveBadPixelList(handle(), preset, "/Temp/ps.bpl") == 0 ? download("/Temp/ps.bpl") : std::nullopt;
    }
    static Pixels pixelsOf(const std::optional<List> &list)
    {
        Pixels places;
        for (const auto &pixel : list ? list->pixels : std::vector<List::Pixel>())
            places.emplace(pixel.x, pixel.y);
        return places;
    }
    /// "WIDTHxHEIGHT", empty without a list.
    static QString sizeOf(const std::optional<List> &list)
    {
        return list ? QStringLiteral("%1x%2").arg(list->width).arg(list->height) : QString();
    }

    emulator::BadPixelLists &lists() { return *camera().device<emulator::BadPixelLists>(); }
    /// Whether all lists have their files.
    bool isWritten()
    {
        const std::lock_guard lock(camera().mutex());
        return !lists().filesToWrite();
    }

    /// Writes the factory's list as another program would, after the camera has written its own.
    bool putFactoryList(const QByteArray &content)
    {
        camera().flushMemory();
        const QString path = pathOf(factoryPath);
        QFile file(path);
        return QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly)
            && file.write(content) == content.size();
    }
    /// Removes it in the same way.
    bool removeFactoryList()
    {
        camera().flushMemory();
        return QFile::remove(pathOf(factoryPath));
    }
    bool putFactoryList(const List &list)
    {
        const auto bytes = list.bytes();
        return putFactoryList(QByteArrayView(bytes).toByteArray());
    }

    /// The pixels that the correction in use for a preset calls bad, in the window by array coordinates.
    Pixels flagged(int preset = 0, bool mirrored = false, bool inverted = false)
    {
        const auto table = camera().device<emulator::Corrections>()->table(preset);
        emulator::image::Optics flips;
        flips.mirrored = mirrored;
        flips.inverted = inverted;
        const auto read = window();
        const auto part = table ? table->partFor(read, flips) : emulator::image::CorrectionTable();
        Pixels places;
        for (int i = 0; i < static_cast<int>(part.flags.size()); ++i)
            if ((part.flags[static_cast<size_t>(i)] & emulator::image::CorrectionTable::Bad) != 0) {
                const int x = i % read.width;
                const int y = i / read.width;
                places.emplace(mirrored ? read.width - 1 - x : x, inverted ? read.height - 1 - y : y);
            }
        return places;
    }

    bool useWholeArray() { return set("sensor.window", QVariantList{0, 0, 640, 512}); }
    /// Limits by which more than a third of the pixels are bad.
    bool useNarrowLimits() { return zvtSetNUCSetup(handle(), 0.95f, 1.05f, 1000, 15'000, true) == 0; }

    /// The pixels of the factory's list, and those alone, become bad in runs from now on.
    bool useOnlyTheList()
    {
        return zvtSetNUCSetup(handle(), 0.75F, 1.5F, 1000, 15'000, false) == 0
            && zvtSetTwinklerSetup(handle(), false, 32, 200) == 0 && zvtSetNUCUseFactoryBadPixels(handle(), true) == 0;
    }

    /// Adds rows with a "content" that is not a list.
    static void addDamagedLists()
    {
        QTest::addColumn<QByteArray>("content");
        const auto bytes = List{160, 128, {{80, 64}}}.bytes();
        const QByteArray sound = QByteArrayView(bytes).toByteArray();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("foreign") << QByteArray("Width: 640, a text, not a list");
        QTest::newRow("truncated") << sound.chopped(1);
        QTest::newRow("with a tail") << sound + 'x';
        QByteArray later = sound;
        later[8] = 2;
        QTest::newRow("later version") << later;
        const auto outside = List{160, 128, {{160, 0}}}.bytes();
        QTest::newRow("pixel outside") << QByteArrayView(outside).toByteArray();
        const auto huge = List{65'535, 65'535, {}}.bytes();
        QTest::newRow("huge") << QByteArrayView(huge).toByteArray();
    }

private:
    QTemporaryDir m_folder;
};
