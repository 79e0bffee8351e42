#pragma once

#include "tests/page/SsdPage.h"

#include <QMetaObject>
#include <QTest>

#include <cstring>

#include "zvt/zvttypes.h"

/// The dialog for batch downloads of a camera with an empty list, and the actions of an operator in it. Movies load,
/// but no frames are transferred: DownloadMovie is scripted.
class BatchPage : public SsdPage
{
public:
    explicit BatchPage(QSize size = {1280, 800}) : SsdPage(PageSetup{.size = size})
    {
        for (const char *call : {"controller.DownloadMovie", "zvtSsdLoadMovie", "zvtSsdStopBuffer", "zvtSsdUnload"})
            gate().script(call, true);
        poll();
        settle();
    }

    /// Opens the dialog.
    void open(bool byKeyboard = false)
    {
        use("Batch Download Movies", byKeyboard);
        settle();
        settle();
    }

    bool isOpen() const { return findText("Batch Download") != nullptr; }
    QObject *batch() const { return recorder()->property("batchDownload").value<QObject *>(); }
    bool downloading() const { return batch()->property("downloading").toBool(); }
    QObject *entries() const { return batch()->property("entries").value<QObject *>(); }
    int size() const { return entries()->property("size").toInt(); }
    QObject *entry(int row) const
    {
        QObject *entry = nullptr;
        QMetaObject::invokeMethod(entries(), "at", Q_RETURN_ARG(QObject *, entry), Q_ARG(int, row));
        return entry;
    }
    QVariant value(int row, const char *property) const { return entry(row)->property(property); }

    /// A movie of 300 frames on the day 32, from 01:00:00.000 to 01:00:03.000.
    static zvtSSsdMovieInfo movie(uint32_t number, const QByteArray &name)
    {
        zvtSSsdMovieInfo info{};
        std::strncpy(info.name, name.constData(), sizeof(info.name) - 1);
        info.number = number;
        info.width = 640;
        info.height = 513;
        info.numFrames = 300;
        info.startTime = {.day = 32, .hour = 1, .minute = 0, .second = 0, .millisecond = 0, .microsecond = 0};
        info.endTime = {.day = 32, .hour = 1, .minute = 0, .second = 3, .millisecond = 0, .microsecond = 0};
        return info;
    }

    /// The drive holds this movie `count` times.
    void setDrive(const zvtSSsdMovieInfo &info, int count = 1)
    {
        gate().script("zvtGetSsdMovieCount", count);
        gate().script("zvtGetSsdMovieInfo", QVariant::fromValue(info));
    }

    /// Adds the movies of the drive to the batch, as the list of movies does.
    void addDrive()
    {
        QMetaObject::invokeMethod(recorder(), "loadAndViewFiles");
        CameraRig::settle();
        create("QtObject { Component.onCompleted: { const movies = cameraModel.ssdTabModel.fileListModel;"
               "for (let row = 0; row < movies.size; ++row)"
               "    cameraModel.ssdTabModel.batchDownload.add(movies.at(row)) } }");
        settle();
    }

    /// Adds movies of these names, with the numbers 1, 2, 3, ...
    void add(const QList<QByteArray> &names)
    {
        uint32_t number = 0;
        for (const QByteArray &name : names) {
            setDrive(movie(++number, name));
            addDrive();
        }
    }

    QQuickItem *list() const { return find("Output Files"); }

    /// The rows that exist, from the top.
    QList<QQuickItem *> rows() const
    {
        QMap<double, QQuickItem *> rows;
        for (QQuickItem *row : list()->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->isVisible() && row->property("_status").isValid())
                rows.insert(row->y(), row);
        return rows.values();
    }

    /// Whether a row, counted from 1, is in view.
    bool showsRow(int row) const
    {
        const QQuickItem *item = find(QStringLiteral("Output %1").arg(row));
        const double y = item ? item->mapToItem(list(), {}).y() : -1;
        return item && y >= 0 && y + item->height() <= list()->height();
    }

    static QQuickItem *partOf(const QQuickItem *row, const char *objectName)
    {
        return row->findChild<QQuickItem *>(QLatin1String(objectName));
    }
    QString rowColor(int row) const { return color(partOf(rows()[row], "batchRowColor")).name(); }
    /// Whether the narrow bar of a row is red.
    bool barIsRed(int row) const { return color(partOf(rows()[row], "batchValidityBar")).name() == "#ff5555"; }

    /// Moves the mouse to the middle of an item.
    void hover(const QString &name)
    {
        const QQuickItem &place = item(name);
        QTest::mouseMove(&window(), place.mapToScene({place.width() / 2, place.height() / 2}).toPoint());
    }

    /// The dialog with this title, which is open.
    QQuickItem *dialog(const QString &title) const
    {
        QQuickItem *item = findText(title);
        while (item != nullptr && item->parentItem() != nullptr && !item->parentItem()->inherits("QQuickOverlay"))
            item = item->parentItem();
        return item;
    }

    /// Chooses "Entire File", "Frames" or "Time" in a row, counted from 1.
    void chooseRange(int row, const QString &range)
    {
        click(QStringLiteral("Range %1").arg(row));
        settle();
        // The open list is above the boxes that show the same text.
        click(findText(range));
        settle();
    }

    /// Starts the run, which then stops at the call.
    bool startAndHold(const char *call)
    {
        gate().hold(call);
        click("Start");
        return gate().waitHeld(call) && deliver();
    }

    /// Lets all held calls pass and waits for the end of the run.
    bool finish()
    {
        gate().release("*");
        const bool ended = QTest::qWaitFor([this] { return !downloading(); }, 30'000);
        settle();
        return ended;
    }

    /// Delivers what a run has posted, which may be held.
    bool deliver()
    {
        QCoreApplication::processEvents();
        awaitFrame();
        return true;
    }

    static QColor color(const QQuickItem *item) { return item ? item->property("color").value<QColor>() : QColor(); }
};
