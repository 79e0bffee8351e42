#include "platform/emulator/dispatch.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

#include <algorithm>
#include <future>
#include <string>
#include <thread>
#include <vector>

using namespace emulator;
using namespace std::chrono_literals;

namespace
{

/// Makes a call that reaches the device and succeeds there.
int callOf(const std::shared_ptr<Camera> &camera, const char *name)
{
    return dispatch(name, camera->handle(), [](Camera &) { return Ok; });
}

} // namespace

class tst_Gate : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        m_camera->connect();
    }

    void cleanup()
    {
        m_camera->gate().release("*");
        for (auto &result : m_results)
            if (result.valid())
                result.wait();
        m_results.clear();
        m_camera.reset();
    }

    void logsWhatArrives()
    {
        const auto body = [](Camera &) { return Refused; };
        QCOMPARE(dispatch("test.set", m_camera->handle(), body, 7, "seven"), int(Refused));
        const auto calls = gate().calls();
        QCOMPARE(calls.size(), size_t(1));
        QCOMPARE(calls[0].name, std::string("test.set"));
        QCOMPARE(calls[0].arguments, std::string("7, \"seven\""));
        QVERIFY(calls[0].thread == std::this_thread::get_id());
        QCOMPARE(calls[0].status, int(Refused));
        QVERIFY(calls[0].duration > 0ns);
    }

    void logsTheCallingThread()
    {
        std::thread::id id;
        std::thread caller([&] {
            id = std::this_thread::get_id();
            callOf(m_camera, "test.a");
        });
        caller.join();
        QVERIFY(gate().calls().back().thread == id);
    }

    void aMarkDividesTheLog()
    {
        callOf(m_camera, "test.a");
        const size_t mark = gate().mark();
        QCOMPARE(mark, size_t(1));
        QVERIFY(gate().callsSince(mark).empty());
        callOf(m_camera, "test.b");
        QCOMPARE(gate().callsSince(mark).size(), size_t(1));
        QCOMPARE(gate().callsSince(mark)[0].name, std::string("test.b"));
        QVERIFY(gate().callsSince(1000).empty());
    }

    void theLogForgetsItsOldestCalls()
    {
        for (int i = 0; i < 100'002; ++i)
            callOf(m_camera, "test.a");
        callOf(m_camera, "test.last");
        QCOMPARE(gate().mark(), size_t(100'003));
        QCOMPARE(gate().calls().size(), size_t(100'000));
        QCOMPARE(gate().callsSince(1).size(), size_t(100'000));
        QCOMPARE(gate().callsSince(100'002).size(), size_t(1));
        QCOMPARE(gate().callsSince(100'002)[0].name, std::string("test.last"));
        QCOMPARE(gate().callsSince(100'002)[0].status, int(Ok));
    }

    void theLogIsWholeWhenManyThreadsCall()
    {
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i)
            threads.emplace_back([this] {
                for (int call = 0; call < 500; ++call)
                    callOf(m_camera, "test.a");
            });
        for (auto &thread : threads)
            thread.join();
        const auto calls = gate().calls();
        QCOMPARE(calls.size(), size_t(4000));
        QVERIFY(std::ranges::all_of(calls, [](const Call &call) { return call.status == Ok && call.duration > 0ns; }));
    }

    void theNthNextCallFailsOnce()
    {
        gate().failNext("test.a", 3);
        QCOMPARE(statuses({"test.a", "test.b", "test.a", "test.a", "test.a"}), outcome("...x."));
        gate().failNext("test.a");
        QCOMPARE(statuses({"test.a", "test.a"}), outcome("x."));
    }

    void severalFailuresCountOnTheirOwn()
    {
        gate().failNext("test.a", 1);
        gate().failNext("test.a", 3);
        gate().failNext("test.b", 2);
        QCOMPARE(statuses({"test.a", "test.b", "test.a", "test.b", "test.a", "test.b"}), outcome("x..xx."));
    }

    void theNthNextCallOfAnyNameFails()
    {
        gate().failNext("*", 2);
        QCOMPARE(statuses({"test.a", "test.b", "test.c"}), outcome(".x."));
    }

    void failsAlwaysUntilNever()
    {
        gate().failAlways("test.a");
        QCOMPARE(statuses({"test.a", "test.b", "test.a"}), outcome("x.x"));
        gate().failAlways("*");
        QCOMPARE(statuses({"test.b"}), outcome("x"));
        gate().failNext("test.b", 1);
        gate().failRandomly(1.0, 1);
        gate().failNever();
        QCOMPARE(statuses({"test.a", "test.b"}), outcome(".."));
    }

    void aFailingCallDoesNotReachTheDevice()
    {
        bool reached = false;
        const auto body = [&reached](Camera &) {
            reached = true;
            return Ok;
        };
        gate().failNext("test.a");
        QCOMPARE(dispatch("test.a", m_camera->handle(), body), int(Injected));
        QVERIFY(!reached);
    }

    void randomFailuresAreReproducible()
    {
        const auto run = [this](double probability, uint32_t seed) {
            gate().failRandomly(probability, seed);
            return statuses(std::vector<const char *>(200, "test.a"));
        };
        const QByteArray first = run(0.3, 42);
        QCOMPARE(run(0.3, 42), first);
        QVERIFY(run(0.3, 43) != first);
        QVERIFY(first.count('x') > 20 && first.count('x') < 120);
        QCOMPARE(run(0.0, 42).count('x'), 0);
        QCOMPARE(run(1.0, 42).count('x'), 200);
    }

    void randomFailuresOfANameDoNotDependOnOthers()
    {
        gate().failRandomly(0.5, 7);
        const QByteArray alone = statuses(std::vector<const char *>(50, "test.a"));
        gate().failRandomly(0.5, 7);
        QByteArray mixed;
        for (int i = 0; i < 50; ++i) {
            statuses({"test.b", "test.c"});
            mixed += statuses({"test.a"});
        }
        QCOMPARE(mixed, alone);
    }

    void callsOfAHeldNameWait()
    {
        gate().hold("test.a");
        for (int i = 0; i < 3; ++i)
            start("test.a");
        QVERIFY(gate().waitHeld("test.a", 3));
        QVERIFY(gate().waitHeld("*", 3));
        QCOMPARE(callOf(m_camera, "test.b"), int(Ok));
        const auto held = gate().calls();
        QCOMPARE(std::ranges::count(held, int(Pending), &Call::status), 3);
        gate().release("test.a");
        finishAll(Ok);
        start("test.a");
        finishAll(Ok);
    }

    void releasingOneNameKeepsTheOthers()
    {
        gate().hold("test.a");
        gate().hold("test.b");
        start("test.a");
        start("test.b");
        QVERIFY(gate().waitHeld("test.a") && gate().waitHeld("test.b"));
        gate().release("test.a");
        QCOMPARE(m_results[0].get(), int(Ok));
        QVERIFY(m_results[1].wait_for(0s) == std::future_status::timeout);
        QVERIFY(gate().waitHeld("test.b"));
        gate().release("*");
        QCOMPARE(m_results[1].get(), int(Ok));
    }

    void everythingCanBeHeld()
    {
        gate().hold("*");
        start("test.a");
        start("test.b");
        QVERIFY(gate().waitHeld("*", 2));
        gate().release("test.a");
        QCOMPARE(m_results[0].get(), int(Ok));
        start("test.a");
        QCOMPARE(m_results[2].get(), int(Ok));
        gate().hold("test.a");
        start("test.a");
        QVERIFY(gate().waitHeld("test.a"));
        gate().release("*");
        QCOMPARE(m_results[1].get(), int(Ok));
        QCOMPARE(m_results[3].get(), int(Ok));
    }

    void aReleasedCallIsNotCaughtAgain()
    {
        gate().hold("test.a");
        start("test.a");
        QVERIFY(gate().waitHeld("test.a"));
        gate().release("test.a");
        gate().hold("test.a");
        QCOMPARE(m_results[0].get(), int(Ok));
        start("test.a");
        QVERIFY(gate().waitHeld("test.a"));
    }

    void theGuiThreadIsNotHeld()
    {
        gate().hold("*");
        QCOMPARE(callOf(m_camera, "test.a"), int(Ok));
    }

    void aCameraCanGoWhileItsCallsAreHeld()
    {
        gate().hold("*");
        const uint64_t handle = m_camera->handle();
        auto result = std::async(std::launch::async,
                                 [handle] { return dispatch("test.a", handle, [](Camera &) { return Ok; }); });
        QVERIFY(gate().waitHeld("test.a"));
        m_camera = Camera::create(QStringLiteral("bare"), m_folder.path());
        QCOMPARE(result.get(), int(InvalidHandle));
    }

    void aGateThatGoesLeavesNobodyWaiting()
    {
        auto gate = std::make_unique<Gate>();
        gate->hold("test.a");
        auto result = std::async(std::launch::async, [&gate] {
            GatePass pass(*gate, "test.a", {});
            pass.wait();
            return pass.end(Ok);
        });
        QVERIFY(gate->waitHeld("test.a"));
        gate.reset();
        QCOMPARE(result.get(), int(Ok));
    }

    void theConnectionIsCheckedAfterTheLatch()
    {
        gate().hold("test.a");
        start("test.a");
        QVERIFY(gate().waitHeld("test.a"));
        m_camera->disconnect();
        gate().release("test.a");
        finishAll(NotConnected);
        QCOMPARE(gate().calls().back().status, int(NotConnected));
    }

    void aDisconnectedCameraUsesUpNoFailure()
    {
        gate().failNext("test.a");
        m_camera->disconnect();
        QCOMPARE(callOf(m_camera, "test.a"), int(NotConnected));
        m_camera->connect();
        QCOMPARE(callOf(m_camera, "test.a"), int(Injected));
    }

    void delaysAddUp()
    {
        gate().delay(20);
        gate().delay(30, "test.a");
        callOf(m_camera, "test.a");
        callOf(m_camera, "test.b");
        const auto calls = gate().calls();
        QVERIFY(calls[0].duration >= 50ms);
        QVERIFY(calls[1].duration >= 20ms);
    }

    void delaysConcernTheirNameOnly()
    {
        gate().delay(3'600'000, "test.a");
        QCOMPARE(callOf(m_camera, "test.b"), int(Ok));
        gate().delay(0, "test.a");
        QCOMPARE(callOf(m_camera, "test.a"), int(Ok));
    }

    void theGateIsOpenWhileADeviceAnswers()
    {
        std::promise<void> reached;
        std::promise<void> mayEnd;
        auto slow = std::async(std::launch::async, [&] {
            return dispatch("test.slow", m_camera->handle(), [&](Camera &) {
                reached.set_value();
                mayEnd.get_future().wait();
                return Ok;
            });
        });
        reached.get_future().wait();
        const auto other = Camera::create(QStringLiteral("bare"), m_folder.path());
        other->connect();
        QCOMPARE(callOf(other, "test.a"), int(Ok));
        QCOMPARE(gate().calls().front().status, int(Pending));
        gate().failNext("test.b");
        // A call that fails at the gate does not reach a device, so it does not wait for the slow one.
        QCOMPARE(callOf(m_camera, "test.b"), int(Injected));
        mayEnd.set_value();
        QCOMPARE(slow.get(), int(Ok));
    }

    void unknownHandlesAreLoggedWithTheSdk_data()
    {
        QTest::addColumn<bool>("stale");
        QTest::newRow("handle 0") << false;
        QTest::newRow("stale handle") << true;
    }

    void unknownHandlesAreLoggedWithTheSdk()
    {
        QFETCH(bool, stale);
        const uint64_t handle = stale ? Camera::create(QStringLiteral("bare"), m_folder.path())->handle() : 0;
        const size_t mark = Sdk::gate().mark();
        QCOMPARE(dispatch(
                     "test.a", handle, [](Camera &) { return Ok; }, 5),
                 int(InvalidHandle));
        QCOMPARE(absent("test.b", handle), int(InvalidHandle));
        const auto calls = Sdk::gate().callsSince(mark);
        QCOMPARE(calls.size(), size_t(2));
        QCOMPARE(calls[0].arguments, std::string("5"));
        QCOMPARE(calls[0].status, int(InvalidHandle));
        QVERIFY(gate().calls().empty());
    }

private:
    Gate &gate() { return m_camera->gate(); }

    static QByteArray outcome(const char *text) { return text; }

    /// Makes the calls one after another. The result contains "." for each call that succeeds and "x" for each that
    /// fails.
    QByteArray statuses(const std::vector<const char *> &names)
    {
        QByteArray result;
        for (const char *name : names)
            result += callOf(m_camera, name) == Ok ? '.' : 'x';
        return result;
    }

    void start(const char *name)
    {
        m_results.push_back(std::async(std::launch::async, [camera = m_camera, name] { return callOf(camera, name); }));
    }

    void finishAll(int status)
    {
        for (auto &result : m_results)
            QCOMPARE(result.get(), status);
        m_results.clear();
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
    std::vector<std::future<int>> m_results;
};

ZVT_TEST(tst_Gate)
#include "tst_Gate.moc"
