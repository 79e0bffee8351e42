#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QLocale>
#include <QProcess>
#include <QQmlContext>
#include <QQmlProperty>

#include "zvt/zvtsdk.h"

namespace
{

/// Another page of the same camera model, as a host may open it, in a window of its own.
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
    /// Near the right end, where a slider moves.
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

/// The Setup page as a whole: what happens while it is in use, on several roads at once.
class tst_SetupTabRoads : public Test
{
    Q_OBJECT

private slots:
    void openListSurvivesAPoll_data();
    void openListSurvivesAPoll();
    void fieldOfViewIsAskedNoMoreThanNeeded();
    void noiseReductionIsAskedOnceForARead();
    void positionKeepsItsPlaceWhileTheLensMoves();
    void decimalsOfTheLocale();
    void hiddenWindowEndsTheMove_data();
    void hiddenWindowEndsTheMove();
    void secondPageShowsTheSame();
    void closedPageLeavesTheLensFree();
    void closedPageEndsTheMove_data();
    void closedPageEndsTheMove();
    void tabWalksInReadingOrder_data();
    void tabWalksInReadingOrder();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void warningComesIntoView();
    void longNameOfALensStateIsTold();
    void bareCameraShowsWhatItHas();
    void loadedStateIsShown();

private:
    static qsizetype asked(SetupPage &page, const std::function<void()> &action);
    static QString nameOf(const QQuickItem &item)
    {
        return QQmlProperty::read(&item, QStringLiteral("Accessible.name"), qmlContext(&item)).toString();
    }
    static QQuickItem *setupTab(const PageDriver &page);
    static void profiles();
};

qsizetype tst_SetupTabRoads::asked(SetupPage &page, const std::function<void()> &action)
{
    const size_t mark = page.rig().gate().mark();
    action();
    page.settle();
    page.settle();
    return page.rig().callsSince(mark).count("zvtGetFOV");
}

QQuickItem *tst_SetupTabRoads::setupTab(const PageDriver &page)
{
    for (QQuickItem *item : page.page()->findChildren<QQuickItem *>())
        if (item->property("generalSetupExpanded").isValid())
            return item;
    return nullptr;
}

void tst_SetupTabRoads::profiles()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("mode");
    for (const char *profile : {"everything", "speed-moves", "discrete-fov", "low-cost", "bare"})
        QTest::newRow(profile) << profile << 0;
    QTest::newRow("superframing") << "everything" << 1;
    QTest::newRow("sequencing") << "everything" << 2;
}

void tst_SetupTabRoads::openListSurvivesAPoll_data()
{
    QTest::addColumn<QString>("box");
    for (const char *box : {"Frame Rate 0", "Integration Time 2", "Sequencing Mode", "FPA Gain", "Image Size"})
        QTest::newRow(box) << box;
}

void tst_SetupTabRoads::openListSurvivesAPoll()
{
    QFETCH(const QString, box);
    SetupPage page;
    const auto listIsOpen = [&page, &box] { return page.item(box).property("listOpen").toBool(); };
    page.click(box);
    page.settle();
    QVERIFY(listIsOpen());
    const int index = page.item(box).property("currentIndex").toInt();

    QVERIFY(page.rig().camera().otherClient().set("image.reverted", true));
    QMetaObject::invokeMethod(page.tab(), "timeoutEventQueueTimer");
    page.settle();
    QVERIFY(page.tab()->property("hflipImage").toBool());
    QVERIFY(listIsOpen());
    QMetaObject::invokeMethod(page.general(), "refresh");
    page.settle();
    QVERIFY(listIsOpen());
    QCOMPARE(page.item(box).property("currentIndex").toInt(), index);
}

void tst_SetupTabRoads::fieldOfViewIsAskedNoMoreThanNeeded()
{
    SetupPage page("discrete-fov");
    QObject *tab = page.tab();
    // Twice by the read itself, once for the page.
    QCOMPARE(asked(page, [tab] { QMetaObject::invokeMethod(tab, "refresh"); }), 3);
    const auto toggle = [&page] { QMetaObject::invokeMethod(page.find("General Setup"), "clicked"); };
    QCOMPARE(asked(page, toggle), 0);
    QCOMPARE(asked(page, toggle), 3);
    QCOMPARE(asked(page, [&page] { page.showTab(0); }), 0);
    QCOMPARE(asked(page, [tab] { QMetaObject::invokeMethod(tab, "timeoutEventQueueTimer"); }), 0);
    QCOMPARE(asked(page, [&page] { page.showTab(1); }), 3);
    QCOMPARE(asked(page, [tab] { tab->setProperty("selectedFocusPosition", 3000); }), 0);
}

void tst_SetupTabRoads::noiseReductionIsAskedOnceForARead()
{
    SetupPage page;
    const size_t mark = page.rig().gate().mark();
    QMetaObject::invokeMethod(page.tab(), "refresh");
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("controller.GetReduceNoise"), 1);
}

void tst_SetupTabRoads::positionKeepsItsPlaceWhileTheLensMoves()
{
    SetupPage page("speed-moves");
    const auto width = [&page] {
        page.settle();
        return page.item("Focus").width();
    };
    const double before = width();
    page.rig().gate().script("zvtGetFocusCurrentPos", 7);
    QMetaObject::invokeMethod(page.tab(), "updateFocusPosition");
    QCOMPARE(page.text("Focus"), "7");
    QCOMPARE(width(), before);
}

void tst_SetupTabRoads::decimalsOfTheLocale()
{
    const QString comma = QStringLiteral(",");
    if (QLocale::system().decimalPoint() != comma) {
        // The system's locale is settled when a program starts.
        QProcess other;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", "de_DE.UTF-8");
        other.setProcessEnvironment(environment);
        other.start(QCoreApplication::applicationFilePath(), {metaObject()->className(), QTest::currentTestFunction()});
        QVERIFY(other.waitForFinished());
        QVERIFY2(other.exitStatus() == QProcess::NormalExit && other.exitCode() == 0,
                 other.readAllStandardOutput().constData());
        return;
    }
    SetupPage page;
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "2,000000");
    QCOMPARE(page.item("Frame Rate 0").property("editText").toString(), "100,00");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Integration Time 0", "1,5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetIntegrationTime 0, 1, 1.5"});
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), "1,500000");
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "33,3");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetFrameRate 0, 1, 33.3"});
    page.type("Distance", "12,25");
    page.press(Qt::Key_Tab);
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QCOMPARE(page.text("Distance"), "12,25");
    QVERIFY(page.text("Range").contains(u','));
    // A point is no comma, and the lens is not sent to a distance that nobody typed.
    QCOMPARE(page.commandsOf([&page] {
        page.type("Distance", "13.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QVERIFY(!page.enabled("Focus To Distance"));
    page.press(Qt::Key_Escape);
    QCOMPARE(page.text("Distance"), "12,25");
    page.type("Distance", "2.5");
    page.press(Qt::Key_Tab);
    QCOMPARE(page.tab()->property("distanceToFocus").toFloat(), 12.25F);
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "13.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QCOMPARE(page.commandsOf([&page] {
        page.type("Frame Rate 0", "1.013,5");
        page.press(Qt::Key_Return);
    }),
             QStringList{"controller.SetPresetFrameRate 0, 1, 1013.5"});
    page.click("Focus");
    page.settle();
    QCOMPARE(page.commandsOf([&page] {
        page.type("Focus", "2.5");
        page.press(Qt::Key_Return);
    }),
             QStringList());
    QVERIFY(!page.enabled("Apply"));
    QCOMPARE(page.commandsOf([&page] {
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.PageDriver::type("4321");
        page.press(Qt::Key_Return);
    }),
             QStringList{"zvtSetFocusPos 4321"});
}

void tst_SetupTabRoads::hiddenWindowEndsTheMove_data()
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

void tst_SetupTabRoads::hiddenWindowEndsTheMove()
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

void tst_SetupTabRoads::secondPageShowsTheSame()
{
    SetupPage page("discrete-fov");
    SecondPage second(page);
    page.settle();
    QCOMPARE(asked(page, [&page] { QMetaObject::invokeMethod(page.tab(), "refresh"); }), 4);
    page.choose("Field of View", "Wide");
    QCOMPARE(second.item("Field of View").property("displayText").toString(), "Wide");
    QCOMPARE(second.item("Focus Position").property("to"), page.item("Focus Position").property("to"));
}

void tst_SetupTabRoads::closedPageLeavesTheLensFree()
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

void tst_SetupTabRoads::closedPageEndsTheMove_data()
{
    QTest::addColumn<QString>("profile");
    QTest::newRow("Focus Farther Quickly") << "speed-moves";
    QTest::newRow("Focus Speed") << "everything";
}

void tst_SetupTabRoads::closedPageEndsTheMove()
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

void tst_SetupTabRoads::tabWalksInReadingOrder_data() { profiles(); }

void tst_SetupTabRoads::tabWalksInReadingOrder()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    SetupPage page(profile);
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
    const auto *view = setupTab(page)->property("contentItem").value<QQuickItem *>();
    page.item("General Setup").forceActiveFocus(Qt::TabFocusReason);
    QPointF last(0, 0);
    int walked = 0;
    for (; walked < 200; ++walked) {
        page.press(Qt::Key_Tab);
        const QQuickItem *item = page.window().activeFocusItem();
        if (!item || !view->isAncestorOf(item))
            break;
        const QPointF place = item->mapToScene({0, item->height() / 2});
        const bool nextInRow = qAbs(place.y() - last.y()) < 14 && place.x() > last.x();
        const bool below = place.y() > last.y() + 10;
        const bool besideEditor = place.x() > last.x() + 100;
        QVERIFY2(nextInRow || below || besideEditor,
                 qPrintable(QStringLiteral("%1 %2,%3 after %4,%5")
                                .arg(item->metaObject()->className())
                                .arg(place.x())
                                .arg(place.y())
                                .arg(last.x())
                                .arg(last.y())));
        last = place;
    }
    QVERIFY(walked > 8 && walked < 200);
}

void tst_SetupTabRoads::everyControlHasAName_data() { profiles(); }

void tst_SetupTabRoads::everyControlHasAName()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    SetupPage page(profile);
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
    int controls = 0;
    QList<QQuickItem *> items{setupTab(page)};
    while (!items.isEmpty()) {
        const QQuickItem *item = items.takeLast();
        items += item->childItems();
        const bool control = item->activeFocusOnTab() || item->inherits("QQuickAbstractButton");
        if (item->window() == nullptr || !item->isVisible() || !control)
            continue;
        // The field of a box bears the name of the box.
        const bool ofBox = item->inherits("QQuickTextField") && nameOf(*item).isEmpty();
        const QString name = nameOf(ofBox ? *item->parentItem() : *item);
        QVERIFY2(!name.isEmpty(), item->metaObject()->className());
        // A name is no glyph.
        QVERIFY2(!name.at(0).isNull() && name.at(0).category() != QChar::Other_PrivateUse, qPrintable(name));
        ++controls;
    }
    QVERIFY(controls > 8);
}

void tst_SetupTabRoads::warningComesIntoView()
{
    SetupPage page;
    page.page()->setHeight(480);
    page.settle();
    page.type("Width", "639");
    page.settle();
    page.item("Apply Settings").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Return);
    page.settle();
    page.settle();
    const QQuickItem &warning = page.item("Window Warning");
    const QRectF place = warning.mapRectToScene(warning.boundingRect());
    QVERIFY(place.height() > 10);
    QVERIFY2(place.bottom() <= 480, qPrintable(QString::number(place.bottom())));
}

void tst_SetupTabRoads::longNameOfALensStateIsTold()
{
    SetupPage page;
    const QString name(31, u'W');
    QMetaObject::invokeMethod(page.tab(), "addLensState", Q_ARG(QString, name));
    page.settle();
    // The offscreen platform has no hovering of its own.
    page.item("Lens States").setProperty("hoverEnabled", true);
    QTest::mouseMove(&page.window(), page.middle("Lens States"));
    QTRY_COMPARE(page.hint(), name);
}

void tst_SetupTabRoads::bareCameraShowsWhatItHas()
{
    SetupPage page("bare");
    for (const char *name : {"Integration Time 0", "Frame Rate 0", "Maximum Frame Rate 0", "Reduce Noise", "Image Size",
                             "Flip Horizontally", "Flip Vertically"})
        QVERIFY2(page.find(name), name);
    for (const char *name : {"Lens Cover", "Lens States", "Field of View", "Optical Zoom", "Focus", "Auto Focus",
                             "Distance", "FPA Gain", "Enable High Sensitivity Mode", "GigE Preset"})
        QVERIFY2(!page.find(name), name);
    QVERIFY(!page.findText("Lens Control"));
    QVERIFY(!page.rig().callsSince(0).contains("zvtGetFOV"));
    QVERIFY(!page.rig().callsSince(0).contains("zvtListLensStates"));
}

void tst_SetupTabRoads::loadedStateIsShown()
{
    SetupPage page;
    page.page()->setSize({900, 1700});
    const auto camera = page.rig().camera().handle();
    QCOMPARE(zvtSaveStateAs(camera, "Night"), 0);
    const QString gain = page.shown("FPA Gain");
    const QString time = page.item("Integration Time 0").property("editText").toString();
    page.tab()->setProperty("selectedFPAGainLevel", page.tab()->property("selectedFPAGainLevel").toInt() == 0 ? 1 : 0);
    page.type("Integration Time 0", "1.5");
    page.press(Qt::Key_Return);
    page.tab()->setProperty("hflipImage", true);
    page.settle();
    QVERIFY(page.shown("FPA Gain") != gain);
    QVERIFY(page.item("Integration Time 0").property("editText").toString() != time);
    page.PageDriver::choose("Load State");
    page.settle();
    page.click("Night");
    page.click("Load");
    QTRY_VERIFY(!page.tabModel("cameraState")->property("loading").toBool());
    page.settle();
    QCOMPARE(page.shown("FPA Gain"), gain);
    QCOMPARE(page.item("Integration Time 0").property("editText").toString(), time);
    QVERIFY(page.findText(time));
    QVERIFY(!page.item("Flip Horizontally").property("highlighted").toBool());
}

ZVT_TEST(tst_SetupTabRoads)
#include "tst_SetupTabRoads.moc"
