#include "tests/support/Test.h"
#include "tests/unit/PollRig.h"

#include "setup/FlagSettingsModel.h"
#include "setup/SetupCoolerSettingsModel.h"

#include <algorithm>
#include <array>

namespace
{

/// A Setup tab with the sections of cooler and flag, and what an operator does with them.
struct Sections : PollRig {
    enum Action : uint8_t {
        Show,
        Hide,
        ExpandCooler,
        CollapseCooler,
        ExpandFlag,
        CollapseFlag,
        Connect,
        Disconnect,
        ActionCount
    };

    void take(int action)
    {
        switch (action) {
        case Show:
        case Hide:
            shown = action == Show;
            root.setupTabModel()->setVisible(shown);
            break;
        case ExpandCooler:
        case CollapseCooler:
            coolerExpanded = action == ExpandCooler;
            root.setupCoolerSettingsModel()->setVisible(coolerExpanded);
            break;
        case ExpandFlag:
        case CollapseFlag:
            flagExpanded = action == ExpandFlag;
            root.flagSettings()->setVisible(flagExpanded);
            break;
        default:
            connected = action == Connect;
            connected ? rig.camera().connect() : rig.camera().disconnect();
        }
        CameraRig::settle();
    }

    /// What one second of polls asks the camera. A stopped timer does not fire.
    QStringList callsOfASecond()
    {
        return callsOf([this] {
            for (const QObject *model : {static_cast<QObject *>(root.setupCoolerSettingsModel()),
                                         static_cast<QObject *>(root.flagSettings())}) {
                if (timerOf(*model)->isActive())
                    fire(*model);
                CameraRig::settle();
            }
        });
    }

    /// What the polls must ask, as the operator sees the sections.
    QStringList expected() const
    {
        QStringList calls;
        if (shown && connected && coolerExpanded)
            calls << "zvtGetFlagTemperature"
                  << "zvtGetSCTemperatures";
        if (shown && connected && flagExpanded)
            calls << "zvtGetFlagTemperature";
        return calls;
    }

    bool shown = false;
    bool connected = true;
    bool coolerExpanded = false;
    bool flagExpanded = false;
};

} // namespace

/// When the sections of the Setup tab poll the camera.
class tst_SetupTabModelPolls : public Test
{
    Q_OBJECT

private slots:
    void pollsRunExactlyWhileTheyCanBeSeen();
    void sectionPollsWhileAllThreeHold_data();
    void sectionPollsWhileAllThreeHold();
    void sectionPollsWhileTheCameraHasItsEquipment_data();
    void sectionPollsWhileTheCameraHasItsEquipment();
    void runningTimerIsNotStartedAgain();
    void tabWithoutARootHasNoSections();
};

// Every sequence of four actions, one after the other.
void tst_SetupTabModelPolls::pollsRunExactlyWhileTheyCanBeSeen()
{
    constexpr int length = 4;
    constexpr int actions = Sections::ActionCount;
    Sections sections;
    int polls = 0;
    for (int sequence = 0; sequence < actions * actions * actions * actions; ++sequence) {
        QString path;
        for (int step = 0, rest = sequence; step < length; ++step, rest /= actions) {
            sections.take(rest % actions);
            path += QString::number(rest % actions);
            const QStringList calls = sections.callsOfASecond();
            QVERIFY2(calls == sections.expected(), qPrintable(path + ": " + calls.join(u' ')));
            polls += static_cast<int>(calls.size());
        }
    }
    QVERIFY(polls > 1000);
}

void tst_SetupTabModelPolls::sectionPollsWhileAllThreeHold_data()
{
    QTest::addColumn<QList<int>>("actions");
    using S = Sections;
    const std::array steps{S::Show, S::ExpandFlag, S::Connect};
    std::array order{0, 1, 2};
    do {
        QList<int> actions;
        QString name;
        for (const int step : order) {
            actions << steps.at(step);
            name += QStringList{"show ", "expand ", "connect "}.at(step);
        }
        QTest::newRow(qPrintable(name.trimmed())) << actions;
    } while (std::next_permutation(order.begin(), order.end()));
}

// Whichever comes last starts the timer.
void tst_SetupTabModelPolls::sectionPollsWhileAllThreeHold()
{
    QFETCH(const QList<int>, actions);
    Sections sections;
    sections.take(Sections::Disconnect);
    const QTimer *timer = PollRig::timerOf(*sections.root.flagSettings());
    for (const int action : actions) {
        QVERIFY(!timer->isActive());
        sections.take(action);
    }
    QVERIFY(timer->isActive());
    QVERIFY(!PollRig::timerOf(*sections.root.setupCoolerSettingsModel())->isActive());
}

void tst_SetupTabModelPolls::sectionPollsWhileTheCameraHasItsEquipment_data()
{
    QTest::addColumn<bool>("cooler");
    QTest::newRow("hasTeCooler") << true;
    QTest::newRow("hasFlag") << false;
}

// The page hides the section of missing equipment, and keeps it expanded.
void tst_SetupTabModelPolls::sectionPollsWhileTheCameraHasItsEquipment()
{
    QFETCH(const bool, cooler);
    const QString capability = QTest::currentDataTag();
    Sections sections;
    for (const int action : {Sections::Show, Sections::ExpandCooler, Sections::ExpandFlag})
        sections.take(action);
    const QTimer *own = PollRig::timerOf(*sections.root.setupCoolerSettingsModel());
    const QTimer *other = PollRig::timerOf(*sections.root.flagSettings());
    if (!cooler)
        std::swap(own, other);
    for (const bool present : {false, true, false}) {
        sections.setCapability(capability, present);
        QCOMPARE(own->isActive(), present);
        QVERIFY(other->isActive());
    }
    // The sections of a page that is hidden do not poll, whatever the camera gets.
    sections.take(Sections::Hide);
    sections.setCapability(capability, true);
    QVERIFY(!own->isActive() && !other->isActive());
    sections.take(Sections::Show);
    QVERIFY(own->isActive() && other->isActive());
}

// A restart would delay the next poll.
void tst_SetupTabModelPolls::runningTimerIsNotStartedAgain()
{
    Sections sections;
    sections.take(Sections::Show);
    sections.take(Sections::ExpandCooler);
    const QTimer *timer = PollRig::timerOf(*sections.root.setupCoolerSettingsModel());
    const int id = timer->timerId();
    emit sections.root.connectedChanged();
    QVERIFY(timer->isActive());
    QCOMPARE(timer->timerId(), id);
}

void tst_SetupTabModelPolls::tabWithoutARootHasNoSections()
{
    QObject parent;
    SetupTabModel tab(&parent);
    tab.setVisible(true);
    QVERIFY(tab.visible());
}

ZVT_TEST(tst_SetupTabModelPolls)
#include "tst_SetupTabModelPolls.moc"
