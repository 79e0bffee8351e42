#pragma once

#include "tests/page/SsdPage.h"

#include <QRegularExpression>
#include <QVariant>

#include <cstring>

#include "zvt/zvtsdk.h"

/// The SSD page of a camera with a number of movies on its drive, all with the same description, and the actions of an
/// operator in the dialog with their list. The size of the movies is that of the camera's window.
class MovieListPage : public SsdPage
{
public:
    explicit MovieListPage(uint movies = 10, const PageSetup &setup = {.size = {900, 700}}) : SsdPage(setup)
    {
        setMovies(movies, movie("Flight over the field"));
        gate().script("zvtGetSsdDriveSpaceTotal", qint64{4096});
        gate().script("zvtGetSsdDriveSpaceFree", qint64{1536});
        gate().script("zvtGetSsdDriveSpaceUsed", qint64{1023});
        gate().script("zvtSsdLoadMovie", true);
    }

    static zvtSSsdMovieInfo movie(const char *name)
    {
        zvtSSsdMovieInfo info{};
        std::strncpy(info.name, name, sizeof info.name - 1);
        info.number = 17;
        info.width = 640;
        info.height = 513;
        info.numFrames = 60;
        info.startTime = {45, 7, 5, 9, 12, 345};
        info.endTime = {45, 7, 5, 11, 500, 0};
        return info;
    }
    void setMovies(uint count, const zvtSSsdMovieInfo &info)
    {
        gate().script("zvtGetSsdMovieCount", count);
        gate().script("zvtGetSsdMovieInfo", QVariant::fromValue(info));
    }

    /// Opens the list by the button of the page.
    void open(const QString &button = QStringLiteral("Load Movie"))
    {
        click(button);
        settle();
        settle();
    }
    bool isOpen() const { return dialogTitle() != QString(); }

    /// The button that loads or adds movies. Its text may be that of the title.
    QQuickItem &loadButton() const
    {
        for (QQuickItem *item : page()->findChildren<QQuickItem *>())
            if (item->isVisible() && item->inherits("QQuickButton")
                && QRegularExpression("^(Load|Add)").match(item->property("text").toString()).hasMatch())
                return *item;
        qFatal("no button loads movies");
    }
    QString verb() const { return loadButton().property("text").toString(); }

    QQuickItem *list() const { return find(QStringLiteral("Movies")); }
    int rows() const { return list()->property("count").toInt(); }

    /// A row that is in view; null if it is not.
    QQuickItem *row(int index) const
    {
        for (QQuickItem *row : list()->property("contentItem").value<QQuickItem *>()->childItems())
            if (row->isVisible() && row->inherits("QQuickItemDelegate") && row->property("index").toInt() == index)
                return row;
        return nullptr;
    }
    void clickRow(int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(&window(), Qt::LeftButton, modifiers, middleOf(*row(index)));
    }
    void doubleClickRow(int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseDClick(&window(), Qt::LeftButton, modifiers, middleOf(*row(index)));
    }
    QPoint middleOf(const QQuickItem &item) const
    {
        return item.mapToScene({item.width() / 2, item.height() / 2}).toPoint();
    }

    /// The movie of a row.
    QObject *movie(int index) const
    {
        QObject *movie = nullptr;
        QMetaObject::invokeMethod(value("fileListModel").value<QObject *>(), "at", Q_RETURN_ARG(QObject *, movie),
                                  Q_ARG(int, index));
        return movie;
    }
    /// The rows that are selected.
    QList<int> selected() const
    {
        QList<int> found;
        for (int index = 0; index < value("fileListModel").value<QObject *>()->property("size").toInt(); ++index)
            if (movie(index)->property("selected").toBool())
                found << index;
        return found;
    }
};
