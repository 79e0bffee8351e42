#include "tests/support/Test.h"
#include "tests/unit/SetupTabRig.h"

/// Presses and releases the controls that move the lens ten thousand times: nothing is left running.
class tst_SetupTabModelRelease : public Test
{
    Q_OBJECT

private slots:
    void everyReleaseStops();
    void everyReleaseEndsTheSteps();
};

namespace
{

constexpr int presses = 10000;

/// A random control that moves the lens while it is held, with a random speed.
struct Control {
    explicit Control(QRandomGenerator &random)
        : kind(random.bounded(4)), speed(random.bounded(1, 4) * (random.bounded(2) ? 1 : -1)),
          percent(static_cast<float>(random.bounded(-100, 101)))
    {
    }

    bool move(SetupTabModel &model, bool pressed) const
    {
        switch (kind) {
        case 0:
            return model.attemptMoveFocus(pressed ? speed : 0);
        case 1:
            return model.attemptMoveZoom(pressed ? speed : 0);
        case 2:
            return model.attemptMoveFocusPercent(pressed ? percent : 0.0F);
        default:
            return model.attemptMoveZoomPercent(pressed ? percent : 0.0F);
        }
    }

    int kind;
    int speed;
    float percent;
};

bool anyTimerRuns(SetupTab &tab)
{
    return tab.timer("focusPositionTimer")->isActive() || tab.timer("slowFocusTimer")->isActive()
        || tab.timer("zoomPositionTimer")->isActive();
}

/// The positions of zoom and focus, read a second later.
std::pair<uint, int> placeOneSecondLater(SetupTab &tab)
{
    emulator::Clock::advance(1000);
    tab.tick("zoomPositionTimer");
    return {tab.model->selectedZoomPosition(), tab.model->selectedFocusPosition()};
}

} // namespace

void tst_SetupTabModelRelease::everyReleaseStops()
{
    static const QRegularExpression moves(QStringLiteral("^zvt(Focus|FOV)Move"));
    SetupTab tab;
    tab.refresh();
    QRandomGenerator random(20240229);
    int moved = 0;
    for (int press = 0; press < presses; ++press) {
        const Control control(random);
        const size_t mark = tab.mark();
        const auto before = tab.model->selectedFocusPosition();
        control.move(*tab.model, true);
        emulator::Clock::advance(random.bounded(1000));
        if (!tab.model->lensBasedControlsEnabled()) // The zoom has coasted past its limit and is moved back.
            CameraRig::settle();
        QVERIFY(control.move(*tab.model, false));
        QVERIFY(tab.calls(mark).filter(moves).last().endsWith(QStringLiteral(" 0")));
        QVERIFY(!anyTimerRuns(tab));
        moved += tab.model->selectedFocusPosition() != before;
    }
    QVERIFY(moved > presses / 10);
    const auto rest = placeOneSecondLater(tab);
    QCOMPARE(placeOneSecondLater(tab), rest);
}

void tst_SetupTabModelRelease::everyReleaseEndsTheSteps()
{
    SetupTab tab(QStringLiteral("discrete-fov"));
    tab.refresh();
    QRandomGenerator random(20240301);
    for (int press = 0; press < presses; ++press) {
        QVERIFY(tab.model->attemptMoveFocus(random.bounded(2) ? 1 : -1));
        for (int step = random.bounded(5); step > 0; --step)
            QMetaObject::invokeMethod(tab.timer("slowFocusTimer"), "timeout");
        QVERIFY(tab.model->attemptMoveFocus(0));
        QVERIFY(!anyTimerRuns(tab));
        const auto position = static_cast<uint>(tab.model->selectedFocusPosition());
        QVERIFY(position >= tab.model->minimumFocusPosition() && position <= tab.model->maximumFocusPosition());
    }
    QCOMPARE(tab.tick("slowFocusTimer"), QStringList());
    const auto rest = placeOneSecondLater(tab);
    QCOMPARE(placeOneSecondLater(tab), rest);
}

ZVT_TEST(tst_SetupTabModelRelease)
#include "tst_SetupTabModelRelease.moc"
