#include "tests/support/Test.h"

#include "common/Refresh.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <memory>

namespace
{

/// A task waits for `go`, so that a test decides when a read ends.
struct Latch {
    QSemaphore started;
    QSemaphore go;
};

struct Value {
    int number = 0;
};

} // namespace

/// A model with a refresh of any form. It records its signals in order.
class RefreshedModel : public QObject
{
    Q_OBJECT

public:
    explicit RefreshedModel(RefreshForm form) : m_refresh(this, &RefreshedModel::finishedWatcher, form)
    {
        QObject::connect(this, &RefreshedModel::refreshingChanged, this,
                         [this] { m_log << (m_refresh.refreshing() ? "refreshing" : "not refreshing"); });
        QObject::connect(this, &RefreshedModel::hasRefreshedChanged, this,
                         [this] { m_log << (m_refresh.hasRefreshed() ? "refreshed" : "not refreshed"); });
    }

    bool refresh(int number, const std::shared_ptr<Latch> &latch = {})
    {
        return m_refresh.start([number, latch](const CameraAccess &) {
            if (latch) {
                latch->started.release();
                latch->go.acquire();
            }
            return Value{number};
        });
    }

    void refreshThrowing()
    {
        m_refresh.start([](const CameraAccess &) -> Value { throw std::runtime_error("no luck"); });
    }

    bool write(int number)
    {
        if (!m_refresh.begin(RefreshForm::RefreshingOnly))
            return false;
        m_refresh.run([number](const CameraAccess &) { return Value{number}; });
        return true;
    }

    void poll(int number)
    {
        m_poll.start([number](const CameraAccess &) { return Value{number}; });
    }

    void watch(const QFuture<Value> &poll) { m_poll.watch(poll); }
    bool lastPollRuns() const { return m_poll.lastRead().isRunning(); }

    bool begin() { return m_refresh.begin(); }
    bool running() const { return m_refresh.running(); }
    QList<int> polled() const { return m_polled; }
    bool refreshing() const { return m_refresh.refreshing(); }
    bool hasRefreshed() const { return m_refresh.hasRefreshed(); }
    QStringList takeLog() { return std::exchange(m_log, {}); }
    QList<int> published() const { return m_published; }
    std::function<void()> whenPublished;

signals:
    void refreshingChanged();
    void hasRefreshedChanged();

private slots:
    void finishedWatcher()
    {
        m_published << m_refresh.result().number;
        if (auto then = std::exchange(whenPublished, {}))
            then();
        m_refresh.finish();
    }

    void finishedPoll()
    {
        m_polled << m_poll.result().number;
        m_poll.finish();
    }

private:
    QStringList m_log;
    QList<int> m_published;
    QList<int> m_polled;
    Refresh<RefreshedModel, Value> m_poll{this, &RefreshedModel::finishedPoll, RefreshForm::NewestOnly};
    Refresh<RefreshedModel, Value> m_refresh;
};

/// A model without the two signals, which the contract does not require.
class BareModel : public QObject
{
    Q_OBJECT

public:
    void refresh()
    {
        m_refresh.start([](const CameraAccess &camera) { return Value{camera.handle == 0 && !camera.controller}; });
    }
    int number = -1;

private slots:
    void finishedWatcher()
    {
        number = m_refresh.result().number;
        m_refresh.finish();
    }

private:
    Refresh<BareModel, Value> m_refresh{this, &BareModel::finishedWatcher, RefreshForm::NoFlags};
};

class tst_Refresh : public Test
{
    Q_OBJECT

private slots:
    void flagsMoveInTheOrderOfTheForm_data();
    void flagsMoveInTheOrderOfTheForm();
    void secondRefreshWhileOneRunsEmitsNothing_data();
    void secondRefreshWhileOneRunsEmitsNothing();
    void unguardedFormsPublishTheNewestOnly_data();
    void unguardedFormsPublishTheNewestOnly();
    void startTellsWhetherItWasDropped();
    void secondKindOfTaskTakesOtherFlags();
    void pollBesideARefreshLeavesTheFlagsAlone();
    void refreshBetweenEndAndSlotKeepsTheResult();
    void refreshFromTheSlotStarts();
    void beginWithoutRunBlocksNoLaterRefresh();
    void modelMayDieWithItsReadInFlight();
    void exceptionCountsAsReadOfNothing();
    void modelWithoutRootReadsWithHandleZero();
    void readOfAnotherTaskIsFollowed();
};

void tst_Refresh::flagsMoveInTheOrderOfTheForm_data()
{
    QTest::addColumn<int>("form");
    QTest::addColumn<QStringList>("atStart");
    QTest::addColumn<QStringList>("atEnd");
    const QStringList both{"refreshed", "not refreshing"};
    QTest::newRow("standard") << int(RefreshForm::Standard) << QStringList{"refreshing", "not refreshed"} << both;
    QTest::newRow("swapped") << int(RefreshForm::Swapped) << QStringList{"not refreshed", "refreshing"} << both;
    QTest::newRow("refreshing only") << int(RefreshForm::RefreshingOnly) << QStringList{"refreshing"} << both;
    QTest::newRow("flag guard") << int(RefreshForm::FlagGuard) << QStringList{"refreshing"}
                                << QStringList{"not refreshing"};
    QTest::newRow("no flags") << int(RefreshForm::NoFlags) << QStringList{} << QStringList{};
    QTest::newRow("unguarded") << int(RefreshForm::Unguarded) << QStringList{} << both;
    QTest::newRow("newest only") << int(RefreshForm::NewestOnly) << QStringList{} << QStringList{};
}

void tst_Refresh::flagsMoveInTheOrderOfTheForm()
{
    QFETCH(int, form);
    QFETCH(QStringList, atStart);
    QFETCH(QStringList, atEnd);
    RefreshedModel model{RefreshForm(form)};
    QCOMPARE(model.refreshing(), RefreshForm(form) == RefreshForm::Unguarded);
    QVERIFY(!model.hasRefreshed());
    for (int round = 0; round < 2; ++round) {
        const auto latch = std::make_shared<Latch>();
        model.refresh(round, latch);
        QCOMPARE(model.takeLog(), atStart);
        // A later read leaves a section of this form enabled.
        if (RefreshForm(form) == RefreshForm::RefreshingOnly)
            QCOMPARE(model.hasRefreshed(), round == 1);
        latch->go.release();
        QTRY_COMPARE(model.published().size(), round + 1);
        // This form signals `hasRefreshed` only when it first becomes true.
        const bool roseBefore = round > 0 && RefreshForm(form) == RefreshForm::RefreshingOnly;
        QCOMPARE(model.takeLog(), roseBefore ? QStringList{"not refreshing"} : atEnd);
        QVERIFY(!model.refreshing());
    }
    QCOMPARE(model.published(), (QList<int>{0, 1}));
}

void tst_Refresh::secondRefreshWhileOneRunsEmitsNothing_data()
{
    QTest::addColumn<int>("form");
    QTest::newRow("standard") << int(RefreshForm::Standard);
    QTest::newRow("swapped") << int(RefreshForm::Swapped);
    QTest::newRow("refreshing only") << int(RefreshForm::RefreshingOnly);
    QTest::newRow("flag guard") << int(RefreshForm::FlagGuard);
    QTest::newRow("no flags") << int(RefreshForm::NoFlags);
}

void tst_Refresh::secondRefreshWhileOneRunsEmitsNothing()
{
    QFETCH(int, form);
    RefreshedModel model{RefreshForm(form)};
    const auto latch = std::make_shared<Latch>();
    model.refresh(1, latch);
    model.takeLog();
    model.refresh(2);
    QCOMPARE(model.takeLog(), QStringList());
    latch->go.release();
    QTRY_COMPARE(model.published(), QList<int>{1});
    // The dropped read was not queued either.
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCOMPARE(model.published(), QList<int>{1});
}

void tst_Refresh::unguardedFormsPublishTheNewestOnly_data()
{
    QTest::addColumn<int>("form");
    QTest::newRow("unguarded") << int(RefreshForm::Unguarded);
    QTest::newRow("newest only") << int(RefreshForm::NewestOnly);
}

void tst_Refresh::unguardedFormsPublishTheNewestOnly()
{
    QFETCH(int, form);
    RefreshedModel model{RefreshForm(form)};
    const auto latch = std::make_shared<Latch>();
    model.refresh(1, latch);
    latch->started.acquire();
    model.refresh(2);
    QTRY_COMPARE(model.published(), QList<int>{2});
    latch->go.release();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCOMPARE(model.published(), QList<int>{2});
}

void tst_Refresh::startTellsWhetherItWasDropped()
{
    RefreshedModel model{RefreshForm::Standard};
    const auto latch = std::make_shared<Latch>();
    QVERIFY(!model.running());
    QVERIFY(model.refresh(1, latch));
    QVERIFY(model.running());
    QVERIFY(!model.refresh(2));
    latch->go.release();
    QTRY_VERIFY(!model.running());
}

// A slow write with the same slot as the reads sets `refreshing` only, so the section stays enabled.
void tst_Refresh::secondKindOfTaskTakesOtherFlags()
{
    RefreshedModel model{RefreshForm::Standard};
    model.refresh(1);
    QTRY_VERIFY(model.hasRefreshed());
    model.takeLog();
    QVERIFY(model.write(2));
    QCOMPARE(model.takeLog(), QStringList{"refreshing"});
    QVERIFY(!model.write(3));
    QTRY_COMPARE(model.published(), (QList<int>{1, 2}));
}

void tst_Refresh::pollBesideARefreshLeavesTheFlagsAlone()
{
    RefreshedModel model{RefreshForm::Standard};
    model.poll(5);
    QTRY_COMPARE(model.polled(), QList<int>{5});
    QCOMPARE(model.takeLog(), QStringList());
}

// Between the end of a task and its slot the watcher counts as finished. A new read there would discard the result.
void tst_Refresh::refreshBetweenEndAndSlotKeepsTheResult()
{
    RefreshedModel model{RefreshForm::Standard};
    model.refresh(1);
    QThreadPool::globalInstance()->waitForDone();
    QVERIFY(model.published().isEmpty());
    model.takeLog();
    model.refresh(2);
    QCOMPARE(model.takeLog(), QStringList());
    QTRY_COMPARE(model.published(), QList<int>{1});
}

void tst_Refresh::refreshFromTheSlotStarts()
{
    RefreshedModel model{RefreshForm::NoFlags};
    model.whenPublished = [&] { model.refresh(2); };
    model.refresh(1);
    QTRY_COMPARE(model.published(), (QList<int>{1, 2}));
}

// A model may find after begin() that there is nothing to read. The flags then stay as begin() set them.
void tst_Refresh::beginWithoutRunBlocksNoLaterRefresh()
{
    RefreshedModel model{RefreshForm::Standard};
    QVERIFY(model.begin());
    QVERIFY(model.refreshing());
    QVERIFY(!model.hasRefreshed());
    model.refresh(1);
    QTRY_COMPARE(model.published(), QList<int>{1});
    QVERIFY(!model.refreshing());
}

void tst_Refresh::modelMayDieWithItsReadInFlight()
{
    const auto latch = std::make_shared<Latch>();
    auto model = std::make_unique<RefreshedModel>(RefreshForm::Standard);
    model->refresh(1, latch);
    latch->started.acquire();
    model.reset();
    latch->go.release();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

void tst_Refresh::exceptionCountsAsReadOfNothing()
{
    QTest::ignoreMessage(QtWarningMsg, "a read of the camera ended early: no luck");
    RefreshedModel model{RefreshForm::Standard};
    model.refreshThrowing();
    QTRY_COMPARE(model.published(), QList<int>{0});
    QVERIFY(model.hasRefreshed());
}

void tst_Refresh::modelWithoutRootReadsWithHandleZero()
{
    BareModel model;
    model.refresh();
    QTRY_COMPARE(model.number, 1);
}

// A task launches a second read, and the model watches it after the task has ended.
void tst_Refresh::readOfAnotherTaskIsFollowed()
{
    RefreshedModel model(RefreshForm::Standard);
    const auto latch = std::make_shared<Latch>();
    QVERIFY(!model.lastPollRuns());
    model.watch(launchRead<Value>(
        [latch](const CameraAccess &) {
            latch->started.release();
            latch->go.acquire();
            return Value{5};
        },
        CameraAccess::of(&model)));
    latch->started.acquire();
    QVERIFY(model.lastPollRuns());
    latch->go.release();
    QTRY_COMPARE(model.polled(), QList<int>{5});
    QVERIFY(!model.lastPollRuns());
}

ZVT_TEST(tst_Refresh)
#include "tst_Refresh.moc"
