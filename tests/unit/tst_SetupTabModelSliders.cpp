#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// The calls of the GUI thread during a drag on a slow camera: one command for each move and nothing else.
class tst_SetupTabModelSliders : public Test
{
    Q_OBJECT

private slots:
    void everyMoveIsOneCommand_data();
    void everyMoveIsOneCommand();
    void bindingsDoNotAskTheCamera();
    void pressAndReleaseAreTwoCommands_data();
    void pressAndReleaseAreTwoCommands();
};

namespace
{

constexpr int millisecondsOfACall = 5;
constexpr int moves = 60;

using Move = void (SetupTabModel::*)(uint);

} // namespace

void tst_SetupTabModelSliders::everyMoveIsOneCommand_data()
{
    QTest::addColumn<Move>("move");
    QTest::addColumn<QString>("command");
    QTest::newRow("focus") << Move(&SetupTabModel::focusMoveTo) << "zvtFocusMoveTo";
    QTest::newRow("zoom") << Move(&SetupTabModel::zoomMoveTo) << "zvtFOVMoveTo";
}

void tst_SetupTabModelSliders::everyMoveIsOneCommand()
{
    QFETCH(Move, move);
    QFETCH(QString, command);
    SetupTab tab;
    tab.refresh();
    tab.gate().delay(millisecondsOfACall);
    const size_t mark = tab.mark();
    QStringList expected;
    for (uint step = 1; step <= moves; ++step) {
        const uint target = 3000 + 10 * step;
        (tab.model->*move)(target);
        // A mouse move within the same step sends nothing.
        (tab.model->*move)(target);
        expected << QStringLiteral("%1 %2").arg(command).arg(target);
        // Without timer events, which a drag delays.
        QCoreApplication::sendPostedEvents();
    }
    tab.gate().delay(0);
    QCOMPARE(tab.calls(mark), expected);
    QCOMPARE(tab.calls(mark, SetupTab::OnGui), expected);
    // Each command also asks the controller for its handle; there are no other calls.
    QCOMPARE(tab.gate().callsSince(mark).size(), size_t(2 * moves));
    QVERIFY(tab.model->lensBasedControlsEnabled());
    QVERIFY(!tab.timer("focusPositionTimer")->isActive() && !tab.timer("zoomPositionTimer")->isActive());
    QCOMPARE(tab.timer("zoomSettleTimer")->isActive(), command == "zvtFOVMoveTo");
}

// Only the field of view and the noise reduction ask the camera, by design. All other getters return stored values.
void tst_SetupTabModelSliders::bindingsDoNotAskTheCamera()
{
    static const QStringList asking{"selectedDiscontinuousFieldOfViewIndex", "reduceNoise"};
    for (const auto *profile : {"everything", "discrete-fov"}) {
        SetupTab tab(QString::fromLatin1(profile));
        tab.refresh();
        const QMetaObject *meta = tab.model->metaObject();
        for (int i = QObject::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
            const size_t mark = tab.mark();
            meta->property(i).read(tab.model);
            QVERIFY2(asking.contains(QLatin1String(meta->property(i).name())) == !tab.gate().callsSince(mark).empty(),
                     meta->property(i).name());
        }
        CameraRig::settle();
    }
}

void tst_SetupTabModelSliders::pressAndReleaseAreTwoCommands_data()
{
    QTest::addColumn<bool>("zoom");
    QTest::newRow("focus") << false;
    QTest::newRow("zoom") << true;
}

void tst_SetupTabModelSliders::pressAndReleaseAreTwoCommands()
{
    QFETCH(bool, zoom);
    SetupTab tab;
    tab.readFocus(100, 5000, 700);
    tab.readZoom(100, 9000, 5000);
    const auto move
        = [&](int speed) { return zoom ? tab.model->attemptMoveZoom(speed) : tab.model->attemptMoveFocus(speed); };
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(move(1)); }).size(), 1);
    // Hiding the tab while the button is held does not stop the lens; the page sends the release.
    QTimer *timer = tab.timer(zoom ? "zoomPositionTimer" : "focusPositionTimer");
    tab.model->setVisible(true);
    tab.model->setVisible(false);
    QVERIFY(timer->isActive());
    // The stop, and one read of the position.
    QCOMPARE(tab.guiCallsOf([&] { QVERIFY(move(0)); }).size(), zoom ? 6 : 2);
    QVERIFY(!timer->isActive());

    // A disconnected camera accepts no stop. The timer stops anyway.
    QVERIFY(move(1));
    tab.rig.camera().disconnect();
    QVERIFY(!move(0));
    QVERIFY(!timer->isActive());
    CameraRig::settle();
}

ZVT_TEST(tst_SetupTabModelSliders)
#include "tst_SetupTabModelSliders.moc"
