#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QQmlEngine>

namespace
{

/// A second page of the same camera model in a window of its own, as a host may open it.
class SecondPage
{
public:
    explicit SecondPage(SetupPage &first) : m_first(first)
    {
        m_host = hlx::cam::ui::PageHost::load(m_engine, first.cameraModel(), QStringLiteral("zvt/zvtmain.qml"));
        m_window.resize(900, 1700);
        m_host->item()->setParentItem(m_window.contentItem());
        m_host->item()->setSize({900, 1700});
        m_window.show();
        m_window.requestActivate();
        if (!QTest::qWaitForWindowActive(&m_window))
            qFatal("the second window does not show");
        m_first.settle();
        press("Setup");
        release("Setup");
        m_first.settle();
        m_window.grabWindow();
    }

    QQuickItem &item(const QString &name) const
    {
        QQuickItem *found = m_first.find(name, m_window.contentItem());
        if (found == nullptr)
            qFatal("\"%s\" is not shown", qPrintable(name));
        return *found;
    }
    void press(const QString &name) { QTest::mousePress(&m_window, Qt::LeftButton, Qt::NoModifier, place(name)); }
    void release(const QString &name) { QTest::mouseRelease(&m_window, Qt::LeftButton, Qt::NoModifier, place(name)); }

private:
    /// A point near the right end of the item, where a press on a slider starts a move.
    QPoint place(const QString &name) const
    {
        const QQuickItem &found = item(name);
        return found.mapToScene({found.width() - 14, found.height() / 2}).toPoint();
    }

    SetupPage &m_first;
    QQuickWindow m_window;
    QQmlEngine m_engine;
    std::unique_ptr<hlx::cam::ui::PageHost> m_host;
};

} // namespace

/// The Setup page when its window is hidden or closed, and two pages of the same camera.
class tst_SetupTabLifetime : public Test
{
    Q_OBJECT

private slots:
    void hiddenWindowEndsTheMove_data();
    void hiddenWindowEndsTheMove();
    void secondPageShowsTheSame();
    void closedPageLeavesTheLensFree();
    void closedPageEndsTheMove_data();
    void closedPageEndsTheMove();
};

void tst_SetupTabLifetime::hiddenWindowEndsTheMove_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("control");
    QTest::addColumn<bool>("byKey");
    QTest::addColumn<QString>("stop");
    QTest::newRow("button") << "speed-moves"
                            << "Focus Farther Quickly" << false << "zvtFocusMove 0";
    QTest::newRow("button, key") << "speed-moves"
                                 << "Focus Farther Quickly" << true << "zvtFocusMove 0";
    QTest::newRow("slider") << "everything"
                            << "Focus Speed" << false << "zvtFocusMovePercent 0";
    QTest::newRow("slider, key") << "everything"
                                 << "Focus Speed" << true << "zvtFocusMovePercent 0";
}

void tst_SetupTabLifetime::hiddenWindowEndsTheMove()
{
    QFETCH(const QString, profile);
    QFETCH(const QString, control);
    QFETCH(const bool, byKey);
    QFETCH(const QString, stop);
    SetupPage page(profile);
    const QQuickItem &item = page.item(control);
    const size_t mark = page.rig().gate().mark();
    if (byKey) {
        page.item(control).forceActiveFocus(Qt::TabFocusReason);
        QTest::keyPress(&page.window(), profile == "everything" ? Qt::Key_Right : Qt::Key_Space);
    } else {
        QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier,
                          item.mapToScene({item.width() - 14, item.height() / 2}).toPoint());
    }
    QVERIFY(page.timer("focusPositionTimer")->isActive());
    page.window().hide();
    page.rig().settle();
    QCOMPARE(page.commands(mark).constLast(), stop);
    QVERIFY(!page.timer("focusPositionTimer")->isActive());
}

void tst_SetupTabLifetime::secondPageShowsTheSame()
{
    SetupPage page("discrete-fov");
    SecondPage second(page);
    page.settle();
    QCOMPARE(page.fieldOfViewReads([&page] { QMetaObject::invokeMethod(page.tab(), "refresh"); }), 4);
    page.choose("Field of View", "Wide");
    QCOMPARE(second.item("Field of View").property("displayText").toString(), "Wide");
    QCOMPARE(second.item("Focus Position").property("to"), page.item("Focus Position").property("to"));
}

void tst_SetupTabLifetime::closedPageLeavesTheLensFree()
{
    SetupPage page("speed-moves");
    auto second = std::make_unique<SecondPage>(page);
    second->press("Focus");
    second->release("Focus");
    page.settle();
    QVERIFY(!page.lensUnlocked());
    second.reset();
    page.settle();
    QVERIFY(page.lensUnlocked());
}

void tst_SetupTabLifetime::closedPageEndsTheMove_data()
{
    QTest::addColumn<QString>("profile");
    QTest::newRow("Focus Farther Quickly") << "speed-moves";
    QTest::newRow("Focus Speed") << "everything";
}

void tst_SetupTabLifetime::closedPageEndsTheMove()
{
    QFETCH(const QString, profile);
    SetupPage page(profile);
    auto second = std::make_unique<SecondPage>(page);
    second->press(QTest::currentDataTag());
    QVERIFY(page.timer("focusPositionTimer")->isActive());
    const size_t mark = page.rig().gate().mark();
    second.reset();
    page.settle();
    QVERIFY(!page.timer("focusPositionTimer")->isActive());
    QCOMPARE(page.commands(mark), QStringList{profile == "everything" ? "zvtFocusMovePercent 0" : "zvtFocusMove 0"});
}

ZVT_TEST(tst_SetupTabLifetime)
#include "tst_SetupTabLifetime.moc"
