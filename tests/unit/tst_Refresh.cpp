#include "tests/support/Test.h"

#include "common/Refresh.h"

#include <QSemaphore>
#include <QSignalSpy>

#include <memory>

namespace
{

/// What a task waits for, so that a test decides when a read ends.
struct Latch {
    QSemaphore started;
    QSemaphore go;
};

struct Value {
    int number = 0;
};

} // namespace

/// A model of every form. It writes down each of its signals in their order.
class RefreshedModel : public QObject
{
    Q_OBJECT

public:
    explicit RefreshedModel(Form form) : m_refresh(this, &RefreshedModel::finishedWatcher, form)
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
        if (!m_refresh.begin(Form::RefreshingOnly))
            return false;
        m_refresh.run([number](const CameraAccess &) { return Value{number}; });
        return true;
    }

    void poll(int number)
    {
        m_poll.start([number](const CameraAccess &) { return Value{number}; });
    }

    void follow(const QFuture<Value> &poll) { m_poll.follow(poll); }
    bool lastPollRuns() const { return m_poll.last().isRunning(); }

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
    Refresh<RefreshedModel, Value> m_poll{this, &RefreshedModel::finishedPoll, Form::NewestOnly};
    Refresh<RefreshedModel, Value> m_refresh;
};

/// A model with neither flag, to see that the contract asks for no signals.
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
    Refresh<BareModel, Value> m_refresh{this, &BareModel::finishedWatcher, Form::NoFlags};
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
    QTest::newRow("standard") << int(Form::Standard) << QStringList{"refreshing", "not refreshed"} << both;
    QTest::newRow("swapped") << int(Form::Swapped) << QStringList{"not refreshed", "refreshing"} << both;
    QTest::newRow("refreshing only") << int(Form::RefreshingOnly) << QStringList{"refreshing"} << both;
    QTest::newRow("flag guard") << int(Form::FlagGuard) << QStringList{"refreshing"} << QStringList{"not refreshing"};
    QTest::newRow("no flags") << int(Form::NoFlags) << QStringList{} << QStringList{};
    QTest::newRow("unguarded") << int(Form::Unguarded) << QStringList{} << both;
    QTest::newRow("newest only") << int(Form::NewestOnly) << QStringList{} << QStringList{};
}

void tst_Refresh::flagsMoveInTheOrderOfTheForm()
{
    QFETCH(int, form);
    QFETCH(QStringList, atStart);
    QFETCH(QStringList, atEnd);
    RefreshedModel model{Form(form)};
    QCOMPARE(model.refreshing(), Form(form) == Form::Unguarded);
    QVERIFY(!model.hasRefreshed());
    for (int round = 0; round < 2; ++round) {
        const auto latch = std::make_shared<Latch>();
        model.refresh(round, latch);
        QCOMPARE(model.takeLog(), atStart);
        // A later read leaves a section of this form enabled.
        if (Form(form) == Form::RefreshingOnly)
            QCOMPARE(model.hasRefreshed(), round == 1);
        latch->go.release();
        QTRY_COMPARE(model.published().size(), round + 1);
        // The form that leaves `hasRefreshed` alone signals it on its first rise only.
        const bool roseBefore = round > 0 && Form(form) == Form::RefreshingOnly;
        QCOMPARE(model.takeLog(), roseBefore ? QStringList{"not refreshing"} : atEnd);
        QVERIFY(!model.refreshing());
    }
    QCOMPARE(model.published(), (QList<int>{0, 1}));
}

void tst_Refresh::secondRefreshWhileOneRunsEmitsNothing_data()
{
    QTest::addColumn<int>("form");
    QTest::newRow("standard") << int(Form::Standard);
    QTest::newRow("swapped") << int(Form::Swapped);
    QTest::newRow("refreshing only") << int(Form::RefreshingOnly);
    QTest::newRow("flag guard") << int(Form::FlagGuard);
    QTest::newRow("no flags") << int(Form::NoFlags);
}

void tst_Refresh::secondRefreshWhileOneRunsEmitsNothing()
{
    QFETCH(int, form);
    RefreshedModel model{Form(form)};
    const auto latch = std::make_shared<Latch>();
    model.refresh(1, latch);
    model.takeLog();
    model.refresh(2);
    QCOMPARE(model.takeLog(), QStringList());
    latch->go.release();
    QTRY_COMPARE(model.published(), QList<int>{1});
    // Nothing was queued either.
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    QCOMPARE(model.published(), QList<int>{1});
}

void tst_Refresh::unguardedFormsPublishTheNewestOnly_data()
{
    QTest::addColumn<int>("form");
    QTest::newRow("unguarded") << int(Form::Unguarded);
    QTest::newRow("newest only") << int(Form::NewestOnly);
}

void tst_Refresh::unguardedFormsPublishTheNewestOnly()
{
    QFETCH(int, form);
    RefreshedModel model{Form(form)};
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
    RefreshedModel model{Form::Standard};
    const auto latch = std::make_shared<Latch>();
    QVERIFY(!model.running());
    QVERIFY(model.refresh(1, latch));
    QVERIFY(model.running());
    QVERIFY(!model.refresh(2));
    latch->go.release();
    QTRY_VERIFY(!model.running());
}

// A slow write behind the same slot as the reads: it shows as busy, and the section stays enabled.
void tst_Refresh::secondKindOfTaskTakesOtherFlags()
{
    RefreshedModel model{Form::Standard};
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
    RefreshedModel model{Form::Standard};
    model.poll(5);
    QTRY_COMPARE(model.polled(), QList<int>{5});
    QCOMPARE(model.takeLog(), QStringList());
}

// Between the end of a task and its slot the watcher already counts as finished; a new read there would void the
// result.
void tst_Refresh::refreshBetweenEndAndSlotKeepsTheResult()
{
    RefreshedModel model{Form::Standard};
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
    RefreshedModel model{Form::NoFlags};
    model.whenPublished = [&] { model.refresh(2); };
    model.refresh(1);
    QTRY_COMPARE(model.published(), (QList<int>{1, 2}));
}

// A model may find after the flags that there is nothing to read; they then stay where they are.
void tst_Refresh::beginWithoutRunBlocksNoLaterRefresh()
{
    RefreshedModel model{Form::Standard};
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
    auto model = std::make_unique<RefreshedModel>(Form::Standard);
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
    RefreshedModel model{Form::Standard};
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

// A task launches a read beside itself, and the model takes it over when the task has ended.
void tst_Refresh::readOfAnotherTaskIsFollowed()
{
    RefreshedModel model(Form::Standard);
    const auto latch = std::make_shared<Latch>();
    QVERIFY(!model.lastPollRuns());
    model.follow(launchRead<Value>(
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
