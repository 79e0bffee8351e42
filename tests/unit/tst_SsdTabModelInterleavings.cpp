#include "tests/support/Test.h"
#include "tests/unit/SsdRig.h"

#include <QRandomGenerator>

#include <array>
#include <optional>
#include <vector>

namespace
{

using Input = SsdTabModel::SsdUIState;
using Update = SsdTabModel::SsdUpdateState;

/// A command of the operator and its pending state, or none if it polls at once.
struct Command {
    void (SsdTabModel::*run)();
    std::optional<int> pending;
};

const std::array commands{
    Command{&SsdTabModel::disarm, SsdTabModel::DISARMED},
    Command{&SsdTabModel::triggerRecording, SsdTabModel::TRIGGERED},
    Command{&SsdTabModel::pauseRecording, SsdTabModel::RECORD_PAUSED},
    Command{&SsdTabModel::resumeRecording, SsdTabModel::TRIGGERED},
    Command{&SsdTabModel::format, SsdTabModel::FORMATTING},
    Command{&SsdTabModel::play, SsdTabModel::PLAYING},
    Command{&SsdTabModel::pause, SsdTabModel::PAUSED},
    Command{&SsdTabModel::skipForwardToNextFrame, SsdTabModel::PAUSED},
    Command{&SsdTabModel::skipBackwardToPreviousFrame, SsdTabModel::PAUSED},
    Command{&SsdTabModel::stop, SsdTabModel::COMPLETE},
    Command{&SsdTabModel::stopRecording, {}},
    Command{&SsdTabModel::save, {}},
    Command{&SsdTabModel::arm, SsdTabModel::ARMING},
};
constexpr size_t arming = commands.size() - 1; ///< Arming sets a pending state, and polls.

/// What the page must show, by rules that know nothing of sequence numbers.
struct Oracle {
    int shown = SsdTabModel::DISARMED;
    bool canInteract = false;
    uint ticks = 0; ///< Of the polls that were shown.
    std::optional<int> newest; ///< The newest poll, unless a command has changed the state after its begin.

    void show(int state)
    {
        shown = state;
        canInteract = QList<int>{0, 1, 3, 4, 6, 10}.contains(state);
    }
    void command(int state)
    {
        if (shown == state)
            return;
        show(state);
        newest.reset();
    }
    void beginPoll(int poll) { newest = poll; }
    /// `state` is the one that the poll has read, none if it failed.
    void endPoll(int poll, std::optional<int> state)
    {
        if (newest != poll || !state)
            return;
        show(*state);
        ++ticks;
    }
    /// A refresh shows its state whatever happened since it began, and no poll becomes void.
    void endRefresh(std::optional<int> state)
    {
        if (state)
            show(*state);
    }
};

/// A poll that has begun: before its read the update has no value.
struct Poll {
    int number;
    Input input;
    std::optional<Update> update;
    std::optional<int> state; ///< As read; none if the read failed.
};

/// The SSD tab with an operator, a camera that changes its state by itself, and polls and a refresh that are held at
/// any point.
class Session
{
public:
    explicit Session(uint seed) : m_random(seed)
    {
        ssd.gate().script("zvtGetSsdRecordModeAvailable", m_random.bounded(2));
        ssd.gate().failAlways("zvtSsdAutoDownloadStart"); // A download would end the polls for a while.
        ssd.read();
        oracle.show(m_camera = SsdTabModel::COMPLETE);
    }

    int bounded(int bound) { return m_random.bounded(bound); }

    /// The operator or the camera does something.
    void disturb()
    {
        switch (bounded(4)) {
        case 0:
        case 1:
            moveCamera();
            break;
        case 2:
            press(bounded(commands.size()));
            break;
        default:
            // A seek pauses, as every step.
            ssd.model.skipToFrame(static_cast<uint>(bounded(1000)));
            oracle.command(SsdTabModel::PAUSED);
        }
    }

    /// The result of the next read of the state, which happens now. One of eight reads fails.
    std::optional<int> nextRead()
    {
        if (bounded(8) > 0)
            return m_camera;
        ssd.gate().failNext("zvtGetSsdState");
        return {};
    }

    void moveCamera() { ssd.setCameraState(m_camera = bounded(SsdTabModel::REQUEST_AUTO_DOWNLOAD + 1)); }

    void press(size_t number)
    {
        const Command &command = commands.at(number);
        const bool polls = !command.pending || number == arming;
        const auto state = polls ? nextRead() : std::nullopt;
        const bool unloads = command.run == &SsdTabModel::stop && ssd.model.movieLoaded();
        (ssd.model.*command.run)();
        if (command.pending)
            oracle.command(unloads ? int(SsdTabModel::DISARMED) : *command.pending);
        if (!polls)
            return;
        oracle.beginPoll(m_polls);
        oracle.endPoll(m_polls++, state);
    }

    // The three steps of a poll.

    Poll begin()
    {
        Poll poll{m_polls++, {}, {}, {}};
        ssd.model.GetUIState(poll.input);
        oracle.beginPoll(poll.number);
        return poll;
    }

    void read(Poll &poll)
    {
        poll.state = nextRead();
        SsdTabModel::UpdateSsdState(poll.input, poll.update.emplace());
    }

    void show(const Poll &poll)
    {
        ssd.model.UpdateUI(*poll.update);
        oracle.endPoll(poll.number, poll.state);
    }

    // A poll of the timer, which is held on the pool before it reads the state.

    bool beginTimedPoll()
    {
        oracle.beginPoll(m_polls);
        m_timedPoll = m_polls++;
        return ssd.holdPoll();
    }

    void endTimedPoll()
    {
        const auto state = nextRead();
        ssd.release();
        oracle.endPoll(m_timedPoll, state);
    }

    // A refresh, which is held on the pool before or after it reads the state.

    bool refreshing() const { return ssd.model.refreshing(); }
    bool beginRefresh(bool afterTheState)
    {
        m_refreshWaitsFor = afterTheState ? "zvtGetSsdSaveName" : "zvtGetSsdLoopPlayback";
        m_refreshHasRead = afterTheState;
        if (afterTheState)
            m_refreshRead = nextRead();
        ssd.gate().hold(m_refreshWaitsFor);
        ssd.model.refresh();
        return ssd.gate().waitHeld(m_refreshWaitsFor);
    }

    void endRefresh()
    {
        if (!m_refreshHasRead)
            m_refreshRead = nextRead();
        ssd.gate().release(m_refreshWaitsFor);
        while (refreshing())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        oracle.endRefresh(m_refreshRead);
    }

    bool isAsExpected() const
    {
        return ssd.model.state() == oracle.shown && ssd.model.canInteract() == oracle.canInteract;
    }
    QString difference() const
    {
        return QStringLiteral("shown %1, expected %2").arg(ssd.model.state()).arg(oracle.shown);
    }

    Ssd ssd;
    Oracle oracle;

private:
    QRandomGenerator m_random;
    int m_camera = SsdTabModel::COMPLETE; ///< The state that the camera reports.
    int m_polls = 0;
    int m_timedPoll = 0;
    std::string m_refreshWaitsFor;
    bool m_refreshHasRead = false;
    std::optional<int> m_refreshRead; ///< The state that the refresh has read; none if the read failed.
};

} // namespace

/// The order of commands, of transitions of the camera and of slow and failing polls must not matter: the SSD tab shows
/// the newest command until the next complete poll, then the camera's state, and no poll that began before a command. A
/// refresh shows its state when it ends. 100 000 polls are called directly, and 10 000 by the timer on the pool.
class tst_SsdTabModelInterleavings : public Test
{
    Q_OBJECT

private slots:
    void everyOrderShowsTheNewest_data();
    void everyOrderShowsTheNewest();
    void heldPollsOfThePool_data();
    void heldPollsOfThePool();
};

void tst_SsdTabModelInterleavings::everyOrderShowsTheNewest_data()
{
    QTest::addColumn<uint>("seed");
    for (uint seed = 1; seed <= 10; ++seed)
        QTest::addRow("%u", seed) << seed;
}

// The steps of the polls are called directly, so that up to four polls overlap at any point without waiting for
// threads. The refreshes run on the pool.
void tst_SsdTabModelInterleavings::everyOrderShowsTheNewest()
{
    constexpr int polls = 10'000;
    constexpr size_t mostOverlapping = 4;
    QFETCH(const uint, seed);
    Session session(seed);
    std::vector<Poll> running;
    int refreshes = 0;
    for (int begun = 0; begun < polls;) {
        const int action = session.bounded(80);
        if (action == 0) {
            if (session.refreshing())
                session.endRefresh();
            else
                QVERIFY(session.beginRefresh(++refreshes % 2 == 0));
        } else if (action <= 20 || running.empty()) {
            if (running.size() < mostOverlapping) {
                running.push_back(session.begin());
                ++begun;
            }
        } else if (action <= 60) {
            const auto poll = running.begin() + session.bounded(static_cast<int>(running.size()));
            if (!poll->update) {
                session.read(*poll);
            } else {
                session.show(*poll);
                running.erase(poll);
            }
        } else {
            session.disturb();
        }
        if (!session.isAsExpected())
            QFAIL(qPrintable(session.difference()));
    }
    // Enough polls were shown, and each drive flag was read at every fifth of them.
    QVERIFY(refreshes > polls / 50);
    QVERIFY(session.oracle.ticks > polls / 20);
    const Poll last = session.begin();
    QCOMPARE(last.input.tick, static_cast<int>(session.oracle.ticks % 5));
}

void tst_SsdTabModelInterleavings::heldPollsOfThePool_data()
{
    QTest::addColumn<uint>("seed");
    for (uint seed = 101; seed <= 110; ++seed)
        QTest::addRow("%u", seed) << seed;
}

// The same with the timer and the pool. One of four polls has a refresh beside it that has read an older state.
void tst_SsdTabModelInterleavings::heldPollsOfThePool()
{
    constexpr int polls = 1'000;
    QFETCH(const uint, seed);
    Session session(seed);
    for (int poll = 0; poll < polls; ++poll) {
        if (session.bounded(4) == 0)
            QVERIFY(session.beginRefresh(true));
        QVERIFY(session.beginTimedPoll());
        for (int disturbance = session.bounded(4); disturbance > 0; --disturbance) {
            session.disturb();
            QVERIFY2(session.isAsExpected(), qPrintable(session.difference()));
        }
        if (session.refreshing())
            session.endRefresh();
        for (int disturbance = session.bounded(2); disturbance > 0; --disturbance)
            session.disturb();
        QVERIFY2(session.isAsExpected(), qPrintable(session.difference()));
        session.endTimedPoll();
        QVERIFY2(session.isAsExpected(), qPrintable(session.difference()));
    }
}

ZVT_TEST(tst_SsdTabModelInterleavings)
#include "tst_SsdTabModelInterleavings.moc"
