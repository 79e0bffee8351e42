#include "tests/host/DeskRig.h"
#include "tests/support/Test.h"

#include <QSignalSpy>

/// Tests where the page, the handle and the desk are in their window.
class tst_DeskSplit : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_rig.reset(); }

    void divides_data();
    void divides();
    void isHiddenAtFirstAndHasCreatedNothing();
    void windowGrowsForTheDeskAndShrinksAgain();
    void changedWindowKeepsItsWidth();
    void pageKeepsItsLeastWidth();
    void f12ShowsAndHides();
    void handleShowsAndHidesByMouse();
    void handleShowsAndHidesByKeyboard();
    void handleIsDraggedToResize();
    void handleIsMovedByKeys();
    void stateIsKept();
    void focusStaysInThePage();
    void escReturnsToThePage();
    void hiddenDeskHasNoFocus();
    void deskIsUsableBesideADialog();

private:
    QQuickItem *handle()
    {
        return m_rig->button(m_rig->split().shown() ? "Hide the desk (F12)" : "Show the desk (F12)");
    }
    void key(Qt::Key key) { QTest::keyClick(&m_rig->window(), key); }

    std::unique_ptr<DeskRig> m_rig;
};

void tst_DeskSplit::initTestCase() { QVERIFY(DeskRig::loadPlugin()); }

void tst_DeskSplit::init()
{
    Test::init();
    m_rig = std::make_unique<DeskRig>();
    QVERIFY(QTest::qWaitForWindowExposed(&m_rig->window()));
}

void tst_DeskSplit::divides_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<int>("screen");
    QTest::addColumn<int>("wanted");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QList<int>>("widths"); // of the page, the desk, the least window, the wanted window
    QTest::newRow("hidden") << 900 << 1920 << 420 << false << QList<int>{892, 0, 648, 648};
    QTest::newRow("hidden in the smallest window") << 648 << 1920 << 420 << false << QList<int>{640, 0, 648, 648};
    QTest::newRow("window smaller than asked for") << 640 << 640 << 420 << false << QList<int>{640, 0, 648, 648};
    QTest::newRow("all fits") << 1280 << 1920 << 420 << true << QList<int>{852, 420, 988, 1068};
    QTest::newRow("desk yields to the page") << 1000 << 1920 << 420 << true << QList<int>{640, 352, 988, 1068};
    QTest::newRow("smallest window") << 988 << 1920 << 420 << true << QList<int>{640, 340, 988, 1068};
    QTest::newRow("screen as wide as wanted") << 900 << 1068 << 420 << true << QList<int>{640, 340, 988, 1068};
    QTest::newRow("desk yields to the screen") << 900 << 1000 << 420 << true << QList<int>{640, 340, 988, 1000};
    QTest::newRow("narrow screen") << 950 << 950 << 420 << true << QList<int>{640, 302, 950, 950};
    QTest::newRow("screen too narrow for both") << 800 << 800 << 420 << true << QList<int>{640, 280, 928, 928};
    QTest::newRow("window wider than the screen") << 1280 << 800 << 420 << true << QList<int>{852, 420, 928, 928};
}

void tst_DeskSplit::divides()
{
    QFETCH(int, window);
    QFETCH(int, screen);
    QFETCH(int, wanted);
    QFETCH(bool, shown);
    const DeskSplit::Widths widths = DeskSplit::divide(window, screen, wanted, shown);
    QTEST((QList<int>{widths.page, widths.desk, widths.leastWindow, widths.wantedWindow}), "widths");
}

void tst_DeskSplit::isHiddenAtFirstAndHasCreatedNothing()
{
    PageWindow &window = m_rig->window();
    QCOMPARE(m_rig->split().desk(), nullptr);
    QCOMPARE(window.minimumWidth(), 648);
    QCOMPARE(m_rig->page().size(), QSizeF(window.width() - 8, window.height()));
    window.resize(648, 480);
    QTRY_COMPARE(m_rig->page().size(), QSizeF(640, 480));
    QVERIFY(handle());
    QCOMPARE(handle()->position(), QPointF(640, 0));
    QCOMPARE(handle()->size(), QSizeF(8, 480));
}

void tst_DeskSplit::windowGrowsForTheDeskAndShrinksAgain()
{
    PageWindow &window = m_rig->window();
    window.resize(700, 600);
    QTRY_COMPARE(window.width(), 700);
    const auto wanted = DeskSplit::divide(700, window.screen()->availableSize().width(), 420, true);
    m_rig->split().setShown(true);
    QTRY_COMPARE(window.width(), wanted.wantedWindow);
    QCOMPARE(window.minimumWidth(), wanted.leastWindow);
    QCOMPARE(m_rig->page().width(), 640.0);
    QCOMPARE(m_rig->split().desk()->x(), 648.0);
    QCOMPARE(m_rig->split().desk()->width(), wanted.wantedWindow - 648.0);
    m_rig->split().setShown(false);
    QTRY_COMPARE(window.width(), 700);
    QCOMPARE(window.minimumWidth(), 648);
    QCOMPARE(m_rig->page().width(), 692.0);
}

void tst_DeskSplit::changedWindowKeepsItsWidth()
{
    PageWindow &window = m_rig->window();
    m_rig->split().setShown(true);
    window.resize(1300, 700);
    QTRY_COMPARE(m_rig->page().width(), 872.0);
    m_rig->split().setShown(false);
    QCOMPARE(window.width(), 1300);
}

void tst_DeskSplit::pageKeepsItsLeastWidth()
{
    m_rig->split().setShown(true);
    for (const int width : {1280, 1068, 1000, 988}) {
        m_rig->window().resize(width, 600);
        QTRY_COMPARE(m_rig->split().desk()->x() + m_rig->split().desk()->width(), qreal(width));
        QCOMPARE(m_rig->page().width(), std::max(640.0, width - 428.0));
        QCOMPARE(m_rig->split().desk()->width(), width - 8 - m_rig->page().width());
    }
}

void tst_DeskSplit::f12ShowsAndHides()
{
    key(Qt::Key_F12);
    QVERIFY(m_rig->split().shown());
    QVERIFY(m_rig->split().desk()->isVisible());
    key(Qt::Key_F12);
    QVERIFY(!m_rig->split().shown());
    QVERIFY(!m_rig->split().desk()->isVisible());
    QTest::keyClick(&m_rig->window(), Qt::Key_F12, Qt::ShiftModifier);
    QVERIFY(!m_rig->split().shown());
}

void tst_DeskSplit::handleShowsAndHidesByMouse()
{
    m_rig->user().press(*handle());
    QVERIFY(m_rig->split().shown());
    m_rig->user().press(*handle());
    QVERIFY(!m_rig->split().shown());
}

void tst_DeskSplit::handleShowsAndHidesByKeyboard()
{
    handle()->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    QVERIFY(m_rig->split().shown());
    key(Qt::Key_Return);
    QVERIFY(!m_rig->split().shown());
}

void tst_DeskSplit::handleIsDraggedToResize()
{
    m_rig->split().setShown(true);
    m_rig->window().resize(1280, 700);
    QTRY_COMPARE(m_rig->split().desk()->width(), 420.0);
    const QPoint start = handle()->mapToScene({4, 300}).toPoint();
    QTest::mousePress(&m_rig->window(), Qt::LeftButton, {}, start);
    for (int x = 10; x <= 100; x += 10)
        QTest::mouseMove(&m_rig->window(), start - QPoint(x, 0));
    QTRY_COMPARE(m_rig->split().desk()->width(), 520.0);
    QTest::mouseRelease(&m_rig->window(), Qt::LeftButton, {}, start - QPoint(100, 0));
    QVERIFY(m_rig->split().shown());
    QCOMPARE(m_rig->settings().width(), 520);

    // Not further than page and desk allow.
    QTest::mousePress(&m_rig->window(), Qt::LeftButton, {}, start - QPoint(100, 0));
    for (int x = 100; x <= 500; x += 20)
        QTest::mouseMove(&m_rig->window(), start - QPoint(x, 0));
    QCOMPARE(m_rig->page().width(), 640.0);
    for (int x = 500; x >= -300; x -= 20)
        QTest::mouseMove(&m_rig->window(), start - QPoint(x, 0));
    QTest::mouseRelease(&m_rig->window(), Qt::LeftButton, {}, start + QPoint(300, 0));
    QCOMPARE(m_rig->split().desk()->width(), 340.0);
    QCOMPARE(m_rig->settings().width(), 340);
}

void tst_DeskSplit::handleIsMovedByKeys()
{
    m_rig->split().setShown(true);
    m_rig->window().resize(1280, 700);
    QTRY_COMPARE(m_rig->split().desk()->width(), 420.0);
    handle()->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Left);
    QCOMPARE(m_rig->split().desk()->width(), 440.0);
    QCOMPARE(m_rig->settings().width(), 440);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    QCOMPARE(m_rig->split().desk()->width(), 400.0);
}

void tst_DeskSplit::stateIsKept()
{
    QVERIFY(m_rig->settings().shown()); // before it is ever hidden
    m_rig->split().setShown(true);
    m_rig->window().resize(1280, 700);
    handle()->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Left);
    QVERIFY(m_rig->button("Save frame..."));
    m_rig->user().press(*m_rig->button("Picture"));
    m_rig->user().press(*m_rig->button("Line"));
    QVERIFY(!m_rig->button("Save frame..."));
    QVERIFY(m_rig->button("Pull the cable"));

    m_rig->restart();
    QVERIFY(m_rig->settings().shown());
    m_rig->split().setShown(true);
    m_rig->window().resize(1280, 700);
    QTRY_COMPARE(m_rig->split().desk()->width(), 440.0);
    QVERIFY(!m_rig->button("Save frame..."));
    QVERIFY(m_rig->button("Pull the cable"));
    m_rig->split().setShown(false);
    m_rig->restart();
    QVERIFY(!m_rig->settings().shown());
}

void tst_DeskSplit::focusStaysInThePage()
{
    QQuickItem *connect = m_rig->button("Connect");
    QVERIFY(connect);
    connect->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_F12);
    QCOMPARE(m_rig->window().activeFocusItem(), connect);
    m_rig->user().press(*handle());
    QCOMPARE(m_rig->window().activeFocusItem(), connect);
}

void tst_DeskSplit::escReturnsToThePage()
{
    QQuickItem *connect = m_rig->button("Connect");
    connect->forceActiveFocus(Qt::TabFocusReason);
    m_rig->split().setShown(true);
    m_rig->button("Line")->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(!connect->hasActiveFocus());
    key(Qt::Key_Escape);
    QCOMPARE(m_rig->window().activeFocusItem(), connect);
}

void tst_DeskSplit::hiddenDeskHasNoFocus()
{
    QQuickItem *connect = m_rig->button("Connect");
    connect->forceActiveFocus(Qt::TabFocusReason);
    m_rig->split().setShown(true);
    m_rig->button("Line")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_F12);
    QCOMPARE(m_rig->window().activeFocusItem(), connect);
}

// The page's dialogs dim and block only the page.
void tst_DeskSplit::deskIsUsableBesideADialog()
{
    QVERIFY(m_rig->connectCamera());
    m_rig->split().setShown(true);
    m_rig->window().resize(1280, 700);
    m_rig->user().press(*m_rig->button("Configuration"));
    QTRY_VERIFY(m_rig->button("About"));
    QVERIFY(m_rig->user().settle());
    m_rig->user().press(*m_rig->button("About"));
    const QString inTheDialog = "Save...";
    QTRY_VERIFY(m_rig->button(inTheDialog));
    QVERIFY(m_rig->user().settle());
    const QQuickItem *button = m_rig->button(inTheDialog);
    QVERIFY(button->mapToScene({button->width(), 0}).x() < m_rig->page().width());
    m_rig->user().press(*m_rig->button("Line"));
    QVERIFY(m_rig->button("Pull the cable"));

    // The same after a change of the window's size.
    m_rig->window().resize(1200, 720);
    QTRY_COMPARE(m_rig->page().width(), 772.0);
    m_rig->user().press(*m_rig->button("Line"));
    QVERIFY(!m_rig->button("Pull the cable"));

    // The dialog still blocks the page, and is still open.
    m_rig->user().press(*m_rig->button("Configuration"));
    QVERIFY(m_rig->button(inTheDialog));
    QVERIFY(!m_rig->button("Adjust Time"));
}

ZVT_TEST(tst_DeskSplit)
#include "tst_DeskSplit.moc"
