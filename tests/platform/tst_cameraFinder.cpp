#include "hlxui/ObjectListModel.h"
#include "tests/platform/ControlPage.h"
#include "tests/support/Test.h"

#include <QPointer>
#include <QWheelEvent>

#include <functional>

namespace
{

class Camera : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString key MEMBER m_key CONSTANT)
    Q_PROPERTY(QString name MEMBER m_name CONSTANT)
    Q_PROPERTY(QString profile MEMBER m_profile CONSTANT)

public:
    Camera(const QString &key, const QString &name, const QString &profile)
        : m_key(key), m_name(name), m_profile(profile)
    {
    }

private:
    QString m_key;
    QString m_name;
    QString m_profile;
};

class CameraWithFolder : public Camera
{
    Q_OBJECT
    Q_PROPERTY(QString folder MEMBER m_folder CONSTANT)

public:
    CameraWithFolder(const QString &key, const QString &folder) : Camera(key, key, QString()), m_folder(folder) { }

private:
    QString m_folder;
};

class Finder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(ObjectListModel *cameras READ cameras CONSTANT)

public:
    ObjectListModel *cameras() { return &m_cameras; }

private:
    ObjectListModel m_cameras{true};
};

const auto finderPage = QStringLiteral(R"(
    Item {
        id: opener
        property var finder
        property string connected
        property bool openWhenConnecting
        function open() { popup.open() }
        CameraFinderPopup { id: popup; palette: root.palette; font.pixelSize: 13
                            cameraFinder: opener.finder; configDir: "/home/operator/.config/quarry"
                            exit: Transition { NumberAnimation { property: "opacity"; to: 0; duration: 50 } }
                            onConnect: camera => {
                                opener.openWhenConnecting = popup.visible
                                opener.connected = camera
                            } }
    })");

} // namespace

class tst_cameraFinder : public Test
{
    Q_OBJECT

private slots:
    void cleanup();

    void connectsByDoubleClick();
    void connectsByKeys();
    void connectsByButton();
    void connectsOnlyWhenClosed();
    void cancellingConnectsNothing();
    void followsItsCameras();
    void walksByPagesAndToTheEnds();
    void wheelWorksOverTheScrollBar();
    void scrollBarShowsOnlyWhereThereIsSomethingToScroll();
    void tellsTheFolderOfTheSelectedCamera();
    void tellsAWholeNameByAToolTip();
    void showsWhereTheFocusIs();
    void hasNoContentsWhileItIsClosed();

private:
    void open();
    void show(int cameras);
    QObject *popup() const;
    QQuickItem *find(const std::function<bool(QQuickItem &)> &condition) const;
    QQuickItem *named(const QString &name) const;
    QQuickItem *list() const;
    QQuickItem *scrollBar() const;
    void click(QQuickItem *item) const;
    QString connected() const { return m_item->property("connected").toString(); }

    Finder m_finder;
    ControlPage m_page;
    QQuickItem *m_item = nullptr;
};

void tst_cameraFinder::cleanup()
{
    m_page.close();
    m_finder.cameras()->removeAll();
}

void tst_cameraFinder::open()
{
    QVERIFY(QMetaObject::invokeMethod(m_item, "open"));
    QTRY_VERIFY(popup()->property("opened").toBool());
    // The list makes its rows when its first frame is rendered.
    m_page.window()->grabWindow();
}

/// Shows the finder with this number of additional cameras, "c1", "c2" and so on.
void tst_cameraFinder::show(int cameras)
{
    for (int number = 1; number <= cameras; ++number) {
        const QString key = QStringLiteral("c%1").arg(number);
        m_finder.cameras()->append(new Camera(key, QStringLiteral("Camera ") + key, "bare"));
    }
    m_item = m_page.show(finderPage);
    m_item->setProperty("finder", QVariant::fromValue<QObject *>(&m_finder));
    open();
}

QObject *tst_cameraFinder::popup() const
{
    for (QObject *child : m_item->findChildren<QObject *>())
        if (child->inherits("QQuickPopup"))
            return child;
    return nullptr;
}

QQuickItem *tst_cameraFinder::find(const std::function<bool(QQuickItem &)> &condition) const
{
    QList<QQuickItem *> items{m_page.window()->contentItem()};
    while (!items.isEmpty()) {
        QQuickItem *item = items.takeFirst();
        if (item->isVisible() && condition(*item))
            return item;
        items += item->childItems();
    }
    return nullptr;
}

QQuickItem *tst_cameraFinder::named(const QString &name) const
{
    return find([&name](const QQuickItem &item) { return item.property("text").toString() == name; });
}

QQuickItem *tst_cameraFinder::list() const
{
    return find([](const QQuickItem &item) { return item.inherits("QQuickListView"); });
}

QQuickItem *tst_cameraFinder::scrollBar() const
{
    return find([](const QQuickItem &item) { return item.inherits("QQuickScrollBar"); });
}

void tst_cameraFinder::click(QQuickItem *item) const
{
    QVERIFY(item);
    QTest::mouseClick(m_page.window(), Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
}

void tst_cameraFinder::connectsByDoubleClick()
{
    m_finder.cameras()->append(new Camera("n1", "Tower North", "everything"));
    m_finder.cameras()->append(new Camera("s1", "Tower South", "discrete-fov"));
    show(0);
    m_page.shot("finder");
    QQuickItem *row = named("Tower South");
    QVERIFY(row);
    QTest::mouseDClick(m_page.window(), Qt::LeftButton, {}, row->mapToScene({10, 5}).toPoint());
    QTRY_COMPARE(connected(), QStringLiteral("s1"));
    QTRY_VERIFY(!popup()->property("visible").toBool());
}

void tst_cameraFinder::connectsByKeys()
{
    show(3);
    m_page.key(Qt::Key_Down);
    m_page.key(Qt::Key_Down);
    m_page.key(Qt::Key_Up);
    m_page.key(Qt::Key_Return);
    QTRY_COMPARE(connected(), QStringLiteral("c2"));
    open();
    m_page.key(Qt::Key_Tab);
    m_page.shot("finder-button-focus");
    m_page.key(Qt::Key_Space);
    QTRY_COMPARE(connected(), QStringLiteral("c1"));
}

void tst_cameraFinder::connectsByButton()
{
    const QString longName = "Tower South with a name that is much too long for its row, even in this window";
    m_finder.cameras()->append(new Camera("n1", "Tower North", "everything"));
    m_finder.cameras()->append(new Camera("s1", longName, "edge-values"));
    show(0);
    click(named(longName));
    m_page.shot("finder-second");
    click(named("Connect"));
    QTRY_COMPARE(connected(), QStringLiteral("s1"));
}

void tst_cameraFinder::connectsOnlyWhenClosed()
{
    show(1);
    m_page.key(Qt::Key_Return);
    QCOMPARE(connected(), QString());
    QTRY_COMPARE(connected(), QStringLiteral("c1"));
    QVERIFY(!m_item->property("openWhenConnecting").toBool());
}

void tst_cameraFinder::cancellingConnectsNothing()
{
    show(1);
    m_page.key(Qt::Key_Escape);
    QTRY_VERIFY(!popup()->property("visible").toBool());
    open();
    click(named("Cancel"));
    QTRY_VERIFY(!popup()->property("visible").toBool());
    QCOMPARE(connected(), QString());
}

void tst_cameraFinder::followsItsCameras()
{
    show(0);
    QVERIFY(named("No cameras found"));
    QVERIFY(!named("Connect")->isEnabled());
    for (const auto key : {Qt::Key_Home, Qt::Key_PageDown, Qt::Key_Return})
        m_page.key(key);
    m_page.shot("finder-empty");
    auto *camera = new Camera("n1", "Tower North", "everything");
    m_finder.cameras()->append(camera);
    QTRY_VERIFY(named("Tower North"));
    QVERIFY(!named("No cameras found"));
    QTRY_VERIFY(named("Connect")->isEnabled());
    m_finder.cameras()->remove(camera);
    QTRY_VERIFY(named("No cameras found"));
    QTRY_VERIFY(!named("Connect")->isEnabled());
    QCOMPARE(connected(), QString());
}

void tst_cameraFinder::walksByPagesAndToTheEnds()
{
    show(40);
    const auto current = [this] { return list()->property("currentIndex").toInt(); };
    m_page.key(Qt::Key_PageDown);
    const int rowsOfAPage = current();
    QVERIFY2(rowsOfAPage > 3 && rowsOfAPage < 12, qPrintable(QString::number(rowsOfAPage)));
    m_page.key(Qt::Key_PageDown);
    QCOMPARE(current(), 2 * rowsOfAPage);
    m_page.key(Qt::Key_End);
    QCOMPARE(current(), 39);
    QTRY_VERIFY(list()->property("atYEnd").toBool());
    m_page.shot("finder-end");
    m_page.key(Qt::Key_PageDown);
    QCOMPARE(current(), 39);
    m_page.key(Qt::Key_PageUp);
    QCOMPARE(current(), 39 - rowsOfAPage);
    m_page.key(Qt::Key_Home);
    QCOMPARE(current(), 0);
    QTRY_VERIFY(list()->property("atYBeginning").toBool());
    m_page.key(Qt::Key_PageUp);
    QCOMPARE(current(), 0);
}

void tst_cameraFinder::wheelWorksOverTheScrollBar()
{
    show(40);
    QVERIFY(scrollBar());
    const QPointF place = scrollBar()->mapToScene({scrollBar()->width() / 2, scrollBar()->height() / 2});
    QWheelEvent wheel(place, m_page.window()->mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(m_page.window(), &wheel);
    QTRY_VERIFY(list()->property("contentY").toReal() > 0);
}

void tst_cameraFinder::scrollBarShowsOnlyWhereThereIsSomethingToScroll()
{
    show(2);
    QVERIFY(!scrollBar());
    for (int number = 3; number <= 40; ++number)
        m_finder.cameras()->append(new Camera(QString::number(number), "Another", "bare"));
    QTRY_VERIFY(scrollBar());
}

void tst_cameraFinder::tellsTheFolderOfTheSelectedCamera()
{
    m_finder.cameras()->append(new CameraWithFolder("a", "/data/a"));
    m_finder.cameras()->append(new CameraWithFolder("b", "/data/b"));
    show(1);
    QVERIFY(named("Settings: /data/a"));
    m_page.key(Qt::Key_Down);
    QTRY_VERIFY(named("Settings: /data/b"));
    m_page.key(Qt::Key_Down);
    QTRY_VERIFY(named("Settings: /home/operator/.config/quarry"));
}

void tst_cameraFinder::tellsAWholeNameByAToolTip()
{
    const QString longName = "Tower South with a name that is much too long for its row, even in this window";
    m_finder.cameras()->append(new Camera("s1", longName, "edge-values"));
    show(0);
    const auto toolTip = [&] {
        return find([&](const QQuickItem &item) {
            return item.property("text").toString() == longName && item.property("wrapMode").toInt() != 0;
        });
    };
    QVERIFY(!toolTip());
    QTest::mouseMove(m_page.window(), named(longName)->mapToScene({40, 14}).toPoint());
    QTRY_VERIFY(toolTip());
    m_page.shot("finder-tool-tip");
    QVERIFY(toolTip()->width() <= 264);
}

void tst_cameraFinder::showsWhereTheFocusIs()
{
    show(1);
    const QColor accent(0x18, 0xaa, 0xe2);
    // In the middle of the left line of the ring, which is three units outside of the item.
    const auto isRinged = [&](QQuickItem *item) {
        const QPoint place = item->mapToScene({-3, item->height() / 2}).toPoint();
        return m_page.window()->grabWindow().pixelColor(place) == accent;
    };
    QVERIFY(isRinged(list()->parentItem()));
    QVERIFY(!isRinged(named("Cancel")));
    m_page.key(Qt::Key_Tab);
    QTRY_VERIFY(isRinged(named("Connect")));
    QVERIFY(!isRinged(list()->parentItem()));
    m_page.key(Qt::Key_Tab);
    QTRY_VERIFY(isRinged(named("Cancel")));
}

void tst_cameraFinder::hasNoContentsWhileItIsClosed()
{
    show(1);
    const QPointer<QQuickItem> contents = list();
    QVERIFY(contents);
    m_page.key(Qt::Key_Escape);
    QTRY_VERIFY(!contents);
    open();
    QVERIFY(list());
}

ZVT_TEST(tst_cameraFinder)
#include "tst_cameraFinder.moc"
