#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

#include <QKeyEvent>
#include <QRandomGenerator>

/// Moves of the lens from the Setup page: the controls that start them, and all events that end them.
class tst_SetupTabMoves : public Test
{
    Q_OBJECT

private slots:
    void heldButtonMovesAndItsReleaseStops_data();
    void heldButtonMovesAndItsReleaseStops();
    void whateverEndsTheHoldEndsTheMove_data();
    void whateverEndsTheHoldEndsTheMove();
    void heldKeyMoves();
    void whateverTakesTheKeyEndsTheMove_data();
    void whateverTakesTheKeyEndsTheMove();
    void lockThatThePressBringsLeavesTheRelease();
    void tenThousandHoldsAllEnd();
    void pageStandsWhileAButtonIsHeld();
    void pageStandsWhileASliderIsHeld();
    void percentSliderMovesAndSpringsBack_data();
    void percentSliderMovesAndSpringsBack();
    void whateverEndsTheHoldStopsThePercentSlider_data();
    void whateverEndsTheHoldStopsThePercentSlider();
    void endButtonsRunToTheEnds_data();
    void endButtonsRunToTheEnds();
    void endsFollowTheEncoder_data();
    void endsFollowTheEncoder();
    void eachDragOfASliderIsATarget();
    void keysOfASliderAreTargets_data();
    void keysOfASliderAreTargets();
    void moveButtonsAreEqual_data();
    void moveButtonsAreEqual();
    void slidersFollowTheLens();
    void rangeOfDistancesFollowsTheZoom();
    void lensWithoutZoomShowsItsPlaceOnly();

private:
    static void endHold(SetupPage &page, const QString &cause);
    static void causes();
};

void tst_SetupTabMoves::causes()
{
    QTest::addColumn<QString>("cause");
    for (const char *cause : {"release", "tab", "collapse", "refresh", "focus", "window", "disconnect", "manual"})
        QTest::newRow(cause) << cause;
}

void tst_SetupTabMoves::endHold(SetupPage &page, const QString &cause)
{
    static std::unique_ptr<QQuickWindow> other;
    if (cause == "tab") {
        page.showTab(0);
    } else if (cause == "collapse") {
        QMetaObject::invokeMethod(page.find("General Setup"), "clicked");
    } else if (cause == "refresh") {
        QMetaObject::invokeMethod(page.tab(), "refresh");
    } else if (cause == "focus") {
        page.press(Qt::Key_Tab);
    } else if (cause == "window") {
        other = std::make_unique<QQuickWindow>();
        other->show();
        other->requestActivate();
        QTRY_VERIFY(!page.window().isActive());
        other.reset();
    } else if (cause == "disconnect") {
        page.rig().camera().disconnect();
    } else if (cause == "manual") {
        page.rig().camera().otherClient().set("focus.manual", true);
        QMetaObject::invokeMethod(page.tab(), "refresh");
    }
    page.settle();
}

void tst_SetupTabMoves::heldButtonMovesAndItsReleaseStops_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("speed");
    const QString focus = QStringLiteral("zvtFocusMove");
    const QString zoom = QStringLiteral("zvtFOVMove");
    QTest::newRow("Focus Closer Quickly") << focus << -3;
    QTest::newRow("Focus Closer with Medium Speed") << focus << -2;
    QTest::newRow("Focus Closer Slowly") << focus << -1;
    QTest::newRow("Focus Farther Slowly") << focus << 1;
    QTest::newRow("Focus Farther with Medium Speed") << focus << 2;
    QTest::newRow("Focus Farther Quickly") << focus << 3;
    QTest::newRow("Zoom Out Quickly") << zoom << -3;
    QTest::newRow("Zoom Out with Medium Speed") << zoom << -2;
    QTest::newRow("Zoom Out Slowly") << zoom << -1;
    QTest::newRow("Zoom In Slowly") << zoom << 1;
    QTest::newRow("Zoom In with Medium Speed") << zoom << 2;
    QTest::newRow("Zoom In Quickly") << zoom << 3;
}

void tst_SetupTabMoves::heldButtonMovesAndItsReleaseStops()
{
    QFETCH(const QString, command);
    QFETCH(const int, speed);
    const QString button = QString::fromLatin1(QTest::currentDataTag());
    SetupPage page("speed-moves", [](emulator::Camera &camera) { camera.otherClient().set("zoom.position", 5000); });
    static const QStringList texts{"< < <", "< <", "<", "", ">", "> >", "> > >"};
    QCOMPARE(page.text(button), texts.at(speed + 3));

    const size_t mark = page.rig().gate().mark();
    page.hold(button);
    const QTimer *timer = page.timer(command == "zvtFocusMove" ? "focusPositionTimer" : "zoomPositionTimer");
    QCOMPARE(page.commands(mark), QStringList{QStringLiteral("%1 %2").arg(command).arg(speed)});
    QVERIFY(timer->isActive());
    page.release(button);
    QCOMPARE(page.commands(mark),
             (QStringList{QStringLiteral("%1 %2").arg(command).arg(speed), command + QStringLiteral(" 0")}));
    QVERIFY(!timer->isActive());
}

void tst_SetupTabMoves::whateverEndsTheHoldEndsTheMove_data() { causes(); }

void tst_SetupTabMoves::whateverEndsTheHoldEndsTheMove()
{
    QFETCH(const QString, cause);
    SetupPage page("speed-moves");
    const QString button = QStringLiteral("Focus Farther Quickly");
    const QPoint place = page.middle(button);
    const QStringList moveAndStop{"zvtFocusMove 3", "zvtFocusMove 0"};
    const size_t mark = page.rig().gate().mark();
    page.hold(button);
    QVERIFY(page.timer("focusPositionTimer")->isActive());
    if (cause != "release") {
        endHold(page, cause);
        QCOMPARE(page.commands(mark), moveAndStop);
        QVERIFY(!page.timer("focusPositionTimer")->isActive());
    }
    // The release sends no second stop.
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, place);
    page.settle();
    QCOMPARE(page.commands(mark), moveAndStop);
}

void tst_SetupTabMoves::heldKeyMoves()
{
    SetupPage page("speed-moves");
    page.item("Focus Farther Slowly").forceActiveFocus(Qt::TabFocusReason);
    const size_t mark = page.rig().gate().mark();
    QTest::keyPress(&page.window(), Qt::Key_Space);
    for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent repeat(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
        QCoreApplication::sendEvent(&page.window(), &repeat);
    }
    QCOMPARE(page.commands(mark), QStringList{"zvtFocusMove 1"});
    QTest::keyRelease(&page.window(), Qt::Key_Space);
    QCOMPARE(page.commands(mark), (QStringList{"zvtFocusMove 1", "zvtFocusMove 0"}));
}

void tst_SetupTabMoves::whateverTakesTheKeyEndsTheMove_data() { causes(); }

void tst_SetupTabMoves::whateverTakesTheKeyEndsTheMove()
{
    QFETCH(const QString, cause);
    SetupPage page("speed-moves");
    page.item("Focus Farther Slowly").forceActiveFocus(Qt::TabFocusReason);
    const QStringList moveAndStop{"zvtFocusMove 1", "zvtFocusMove 0"};
    const size_t mark = page.rig().gate().mark();
    QTest::keyPress(&page.window(), Qt::Key_Space);
    QVERIFY(page.timer("focusPositionTimer")->isActive());
    if (cause == "release")
        QTest::keyRelease(&page.window(), Qt::Key_Space);
    else
        endHold(page, cause);
    QCOMPARE(page.commands(mark), moveAndStop);
    QVERIFY(!page.timer("focusPositionTimer")->isActive());
}

// A zoom that coasted past its end is moved back into its range. This move locks the lens while the button is still
// held.
void tst_SetupTabMoves::lockThatThePressBringsLeavesTheRelease()
{
    SetupPage page("speed-moves", [](emulator::Camera &camera) { camera.gate().script("zvtGetFOVPos", 400); });
    page.rig().gate().hold("zvtSetFOVPos");
    const size_t mark = page.rig().gate().mark();
    page.hold("Zoom Out Slowly");
    QVERIFY(page.rig().gate().waitHeld("zvtSetFOVPos"));
    QVERIFY(!page.lensUnlocked());
    QVERIFY(!page.enabled("Zoom Out Quickly"));
    QVERIFY(page.enabled("Zoom Out Slowly"));
    QCOMPARE(page.commands(mark), QStringList{"zvtSetFOVPos 500"});
    page.release("Zoom Out Slowly");
    QCOMPARE(page.commands(mark), (QStringList{"zvtSetFOVPos 500", "zvtFOVMove 0"}));
    QVERIFY(!page.timer("zoomPositionTimer")->isActive());
    QVERIFY(!page.enabled("Zoom Out Slowly"));
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(page.enabled("Zoom Out Slowly"));
}

void tst_SetupTabMoves::tenThousandHoldsAllEnd()
{
    SetupPage page("speed-moves");
    QRandomGenerator random(4);
    static const QStringList actions{"Focus Closer", "Focus Farther", "Zoom Out", "Zoom In"};
    static const QStringList speeds{" Slowly", " with Medium Speed", " Quickly"};
    for (int hold = 1; hold <= 10000; ++hold) {
        const QString button = actions.at(random.bounded(4)) + speeds.at(random.bounded(3));
        const QPoint place = page.middle(button);
        const size_t mark = page.rig().gate().mark();
        QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, place);
        emulator::Clock::advance(1000);
        const int end = random.bounded(3);
        if (end == 1)
            QTest::mouseMove(&page.window(), place + QPoint(0, 200));
        else if (end == 2)
            page.press(Qt::Key_Backtab);
        QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, place + QPoint(0, end == 1 ? 200 : 0));
        // A zoom that coasted out of its range is also moved back into it, from another thread.
        QVERIFY(page.commands(mark).filter("Move ").constLast().endsWith(" 0"));
        QVERIFY(!page.timer("focusPositionTimer")->isActive());
        QVERIFY(!page.timer("zoomPositionTimer")->isActive());
        page.rig().settle();
    }
    const auto places = [&page] {
        emulator::Clock::advance(5000);
        QMetaObject::invokeMethod(page.tab(), "updateZoomPosition");
        return QList{page.tab()->property("selectedZoomPosition"), page.tab()->property("selectedFocusPosition")};
    };
    const auto before = places();
    QCOMPARE(places(), before);
}

void tst_SetupTabMoves::pageStandsWhileAButtonIsHeld()
{
    SetupPage page("speed-moves");
    page.page()->setHeight(480);
    page.settle();
    const QString button = QStringLiteral("Zoom In Slowly");
    page.item(button).forceActiveFocus(Qt::TabFocusReason);
    page.settle();
    const size_t mark = page.rig().gate().mark();
    const QPoint place = page.middle(button);
    page.hold(button);
    for (int step = 1; step <= 8; ++step)
        QTest::mouseMove(&page.window(), place - QPoint(0, 10 * step));
    QCOMPARE(page.middle(button), place);
    QCOMPARE(page.commands(mark), QStringList{"zvtFOVMove 1"});
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, place - QPoint(0, 80));
    QCOMPARE(page.commands(mark), (QStringList{"zvtFOVMove 1", "zvtFOVMove 0"}));
}

void tst_SetupTabMoves::pageStandsWhileASliderIsHeld()
{
    SetupPage page;
    for (const QString slider : {"Zoom Position", "Focus Position"}) {
        const QQuickItem *view = &page.item(slider);
        while (!view->inherits("QQuickFlickable"))
            view = view->parentItem();
        page.hold(slider);
        QVERIFY(!view->property("interactive").toBool());
        page.release(slider);
        QVERIFY(view->property("interactive").toBool());
    }
}

void tst_SetupTabMoves::percentSliderMovesAndSpringsBack_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("Zoom Speed") << "zvtFOVMovePercent";
    QTest::newRow("Focus Speed") << "zvtFocusMovePercent";
}

void tst_SetupTabMoves::percentSliderMovesAndSpringsBack()
{
    QFETCH(const QString, command);
    const QString slider = QString::fromLatin1(QTest::currentDataTag());
    SetupPage page;
    const QQuickItem &item = page.item(slider);
    const QPoint right = item.mapToScene({item.width() - 12, item.height() / 2}).toPoint();
    const QPoint left = item.mapToScene({12, item.height() / 2}).toPoint();
    const size_t mark = page.rig().gate().mark();
    QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, right);
    QTest::mouseMove(&page.window(), left);
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, left);
    QCOMPARE(page.commands(mark), (QStringList{command + " 100", command + " -100", command + " 0"}));
}

void tst_SetupTabMoves::whateverEndsTheHoldStopsThePercentSlider_data() { causes(); }

void tst_SetupTabMoves::whateverEndsTheHoldStopsThePercentSlider()
{
    QFETCH(const QString, cause);
    SetupPage page;
    const QQuickItem &item = page.item("Focus Speed");
    const QPoint right = item.mapToScene({item.width() - 12, item.height() / 2}).toPoint();
    const size_t mark = page.rig().gate().mark();
    QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, right);
    QVERIFY(page.timer("focusPositionTimer")->isActive());
    const QStringList moveAndStop{"zvtFocusMovePercent 100", "zvtFocusMovePercent 0"};
    if (cause != "release") {
        endHold(page, cause);
        QCOMPARE(page.commands(mark), moveAndStop);
        QVERIFY(!page.timer("focusPositionTimer")->isActive());
    }
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, right);
    page.settle();
    QCOMPARE(page.commands(mark), moveAndStop);
    QVERIFY(!page.timer("focusPositionTimer")->isActive());
}

void tst_SetupTabMoves::endButtonsRunToTheEnds_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("command");
    QTest::newRow("widest") << "speed-moves"
                            << "Wide"
                            << "zvtFOVMin";
    QTest::newRow("narrowest") << "everything"
                               << "Narrow"
                               << "zvtFOVMax";
    QTest::newRow("nearest") << "speed-moves"
                             << "Nearest"
                             << "zvtFocusNear";
    QTest::newRow("farthest") << "speed-moves"
                              << "Farthest"
                              << "zvtFocusFar";
    QTest::newRow("near, by percent") << "everything"
                                      << "Near Focus"
                                      << "zvtFocusNear";
    QTest::newRow("far, by percent") << "everything"
                                     << "Far Focus"
                                     << "zvtFocusFar";
    QTest::newRow("nearest, descending") << "discrete-fov"
                                         << "Nearest"
                                         << "zvtFocusNear";
    QTest::newRow("farthest, descending") << "discrete-fov"
                                          << "Farthest"
                                          << "zvtFocusFar";
}

void tst_SetupTabMoves::endButtonsRunToTheEnds()
{
    QFETCH(const QString, profile);
    QFETCH(const QString, button);
    QFETCH(const QString, command);
    SetupPage page(profile, [&profile](emulator::Camera &camera) {
        camera.changeMakeUp("hasFocusMovePercent", profile == "everything");
    });
    QCOMPARE(page.commandsOf([&] { page.click(button); }), QStringList{command});
}

void tst_SetupTabMoves::endsFollowTheEncoder_data()
{
    QTest::addColumn<bool>("percent");
    QTest::addColumn<QString>("near");
    QTest::addColumn<QString>("far");
    QTest::newRow("by speed") << false << "Nearest"
                              << "Farthest";
    QTest::newRow("by percent") << true << "Near Focus"
                                << "Far Focus";
}

void tst_SetupTabMoves::endsFollowTheEncoder()
{
    QFETCH(const bool, percent);
    QFETCH(const QString, near);
    QFETCH(const QString, far);
    const auto prepare = [percent](emulator::Camera &camera) { camera.changeMakeUp("hasFocusMovePercent", percent); };
    SetupPage ascending("everything", prepare);
    QVERIFY(ascending.middle(near).x() < ascending.middle(far).x());
    SetupPage descending("discrete-fov", prepare);
    QVERIFY(descending.middle(near).x() > descending.middle(far).x());
}

void tst_SetupTabMoves::eachDragOfASliderIsATarget()
{
    SetupPage page;
    for (const QString name : {"Zoom Position", "Focus Position"}) {
        const QQuickItem &slider = page.item(name);
        const double from = slider.property("from").toDouble();
        const double to = slider.property("to").toDouble();
        QVERIFY(to > from);
        QVERIFY(!slider.property("wheelEnabled").toBool());
        QCOMPARE(slider.property("stepSize").toDouble(), 1.0);
        const auto place = [&slider](double share) {
            return slider.mapToScene({slider.width() * share, slider.height() / 2}).toPoint();
        };
        const size_t mark = page.rig().gate().mark();
        QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, place(0.5));
        for (const double share : {0.6, 0.7, 0.8})
            QTest::mouseMove(&page.window(), place(share));
        QVERIFY(page.lensUnlocked());
        QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, place(0.8));
        const QStringList commands = page.commands(mark);
        QVERIFY2(commands.size() >= 3, qPrintable(commands.join(u'\n')));
        const char *property = name == "Zoom Position" ? "selectedZoomPosition" : "selectedFocusPosition";
        QCOMPARE(commands.constLast(),
                 QStringLiteral("%1 %2").arg(name == "Zoom Position" ? "zvtFOVMoveTo" : "zvtFocusMoveTo",
                                             page.tab()->property(property).toString()));
    }
}

void tst_SetupTabMoves::keysOfASliderAreTargets_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<int>("zoom");
    QTest::addColumn<int>("focus");
    QTest::newRow("right") << Qt::Key_Right << Qt::KeyboardModifiers() << 5001 << 6001;
    QTest::newRow("left") << Qt::Key_Left << Qt::KeyboardModifiers() << 4999 << 5999;
    QTest::newRow("ten right") << Qt::Key_Right << Qt::KeyboardModifiers(Qt::ShiftModifier) << 5010 << 6010;
    QTest::newRow("ten left") << Qt::Key_Left << Qt::KeyboardModifiers(Qt::ShiftModifier) << 4990 << 5990;
    QTest::newRow("page up") << Qt::Key_PageUp << Qt::KeyboardModifiers() << 5450 << 6500;
    QTest::newRow("page down") << Qt::Key_PageDown << Qt::KeyboardModifiers() << 4550 << 5500;
}

void tst_SetupTabMoves::keysOfASliderAreTargets()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const int, zoom);
    QFETCH(const int, focus);
    SetupPage page("everything", [](emulator::Camera &camera) { camera.otherClient().set("zoom.position", 5000); });
    const auto commandsOf = [&](const QString &slider) {
        page.item(slider).forceActiveFocus(Qt::TabFocusReason);
        const size_t mark = page.rig().gate().mark();
        page.press(key, modifiers);
        return page.commands(mark);
    };
    QCOMPARE(commandsOf("Zoom Position"), QStringList{QStringLiteral("zvtFOVMoveTo %1").arg(zoom)});
    QCOMPARE(page.item("Zoom Position").property("value").toInt(), zoom);
    QCOMPARE(commandsOf("Focus Position"), QStringList{QStringLiteral("zvtFocusMoveTo %1").arg(focus)});
}

void tst_SetupTabMoves::moveButtonsAreEqual_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {640, 701, 1300})
        QTest::addRow("%d", width) << width;
}

void tst_SetupTabMoves::moveButtonsAreEqual()
{
    QFETCH(const int, width);
    SetupPage page("speed-moves");
    page.page()->setWidth(width);
    page.settle();
    for (const QString way : {"Zoom Out", "Zoom In", "Focus Closer", "Focus Farther"})
        for (const QString speed : {" Quickly", " with Medium Speed", " Slowly"})
            QCOMPARE(page.item(way + speed).width(), page.item("Zoom In Slowly").width());
    QVERIFY(page.item("Zoom In Slowly").width() >= 40);
}

// A read of the lens publishes the focus position before its limits.
void tst_SetupTabMoves::slidersFollowTheLens()
{
    SetupPage page;
    QCOMPARE(page.item("Focus Position").property("value").toDouble(), 6000.0);
    page.tab()->setProperty("selectedZoomPosition", 7000);
    page.settle();
    QCOMPARE(page.item("Zoom Position").property("value").toDouble(), 7000.0);
}

void tst_SetupTabMoves::rangeOfDistancesFollowsTheZoom()
{
    SetupPage page;
    const QString before = page.text("Range");
    const QQuickItem &slider = page.item("Zoom Position");
    const auto place = [&slider](double share) {
        return slider.mapToScene({slider.width() * share, slider.height() / 2}).toPoint();
    };
    QTest::mousePress(&page.window(), Qt::LeftButton, Qt::NoModifier, place(0.02));
    QTest::mouseMove(&page.window(), place(0.5));
    QTest::mouseMove(&page.window(), place(0.9));
    QTest::mouseRelease(&page.window(), Qt::LeftButton, Qt::NoModifier, place(0.9));
    QTimer *settling = page.timer("zoomSettleTimer");
    QVERIFY(settling->isActive());
    QCOMPARE(page.text("Range"), before);
    for (int poll = 0; poll < 100 && settling->isActive(); ++poll) {
        emulator::Clock::advance(settling->interval());
        QMetaObject::invokeMethod(settling, "timeout");
    }
    QVERIFY(!settling->isActive());
    QVERIFY(page.text("Range") != before);
}

void tst_SetupTabMoves::lensWithoutZoomShowsItsPlaceOnly()
{
    SetupPage page("low-cost");
    QVERIFY(!page.find("Focus Position"));
    // The ends are labels here, not buttons.
    QVERIFY(page.item("Near Focus").inherits("QQuickLabel"));
    QVERIFY(page.item("Far Focus").inherits("QQuickLabel"));
    QVERIFY(page.find("Focus Speed"));
    QVERIFY(!page.find("Optical Zoom"));
}

ZVT_TEST(tst_SetupTabMoves)
#include "tst_SetupTabMoves.moc"
