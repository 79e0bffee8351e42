#include "platform/emulator/GateState.h"
#include "platform/emulator/dispatch.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <deque>
#include <future>
#include <string>
#include <thread>
#include <vector>

using namespace emulator;
using namespace std::chrono_literals;

/// The requests of a gate for several names, their texts, and the listeners of calls.
class tst_GateRequests : public Test
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
        gate().clear();
        for (auto &result : m_results)
            if (result.valid())
                result.wait();
        m_results.clear();
        m_camera.reset();
    }

    void aBeginningMeansAllNamesWithIt()
    {
        gate().failAlways("test.set*");
        QCOMPARE(statuses({"test.setA", "test.set", "test.getA", "test.se", "other.set"}), QByteArray("xx..."));
        gate().failNever();
        gate().failNext("test.set*", 2);
        QCOMPARE(statuses({"test.setA", "test.getA", "test.setB", "test.setA"}), QByteArray("..x."));
    }

    void aStarInTheMiddleIsACharacter()
    {
        gate().failAlways("te*t.a");
        QCOMPARE(statuses({"test.a", "te*t.a"}), QByteArray(".x"));
    }

    void scriptsOfTheLongestMatchingNameApply()
    {
        gate().script("test.*", 1);
        gate().script("test.set*", 2);
        gate().script("test.setA", 3);
        gate().script("test.setA*", 4);
        QCOMPARE(valueOf("test.getA"), 1);
        QCOMPARE(valueOf("test.setB"), 2);
        QCOMPARE(valueOf("test.setA"), 3);
        QCOMPARE(valueOf("test.setAB"), 4);
    }

    void delaysOfAllMatchingNamesAddUp()
    {
        GateDelays delays;
        delays.set("test.set*", {20, 0});
        delays.set("test.setA", {30, 0});
        delays.set("*", {100, 0});
        QVERIFY(delays.draw("test.setA", AnsweredBy::Camera) == 150ms);
        QVERIFY(delays.draw("test.setA", AnsweredBy::Framework) == 50ms);
        QVERIFY(delays.draw("test.setB", AnsweredBy::Camera) == 120ms);
        QVERIFY(delays.draw("test.get", AnsweredBy::Framework) == 0ms);
        delays.set("test.setA", {0, 0});
        QVERIFY(delays.draw("test.setA", AnsweredBy::Framework) == 20ms);
    }

    void aDelayMakesACallLonger()
    {
        gate().delay(20, "test.a");
        QVERIFY(durationOf("test.a") >= 20ms);
        gate().delay(0, "test.a");
        QVERIFY(gate().requests().empty());
    }

    void aJitterMakesEachDelayLonger()
    {
        GateDelays delays;
        delays.set("*", {5, 20});
        const std::vector<int64_t> drawn = draw(delays, "test.a", 1000);
        // 0 to 20 in addition, each of them about equally often.
        for (int64_t milliseconds = 5; milliseconds <= 25; ++milliseconds)
            QVERIFY(std::ranges::count(drawn, milliseconds) > 20);
        QCOMPARE(std::ranges::count_if(drawn, [](int64_t value) { return value < 5 || value > 25; }), 0);
    }

    void eachNameHasItsOwnJitter()
    {
        GateDelays delays;
        GateDelays others;
        delays.set("test.*", {0, 1000});
        others.set("test.*", {0, 1000});
        const auto first = draw(delays, "test.a", 10);
        QVERIFY(draw(delays, "test.b", 10) != first);
        // The same sequence for another camera and after calls of another name.
        draw(others, "test.b", 3);
        QCOMPARE(draw(others, "test.a", 10), first);
        QCOMPARE(draw(others, "test.a", 10), draw(delays, "test.a", 10));
    }

    void oneFailureCanEndAlone()
    {
        gate().failAlways("test.set*");
        gate().failAlways("test.setA");
        gate().failNext("test.setB");
        gate().failNoLonger("test.set*");
        QCOMPARE(statuses({"test.setA", "test.setC", "test.setB", "test.setB"}), QByteArray("x.x."));
        gate().failNoLonger("test.setA");
        QVERIFY(gate().requests().empty());
    }

    void theLastOfHoldAndReleaseDecides()
    {
        gate().hold("*");
        gate().release("test.get*");
        gate().hold("test.getB");
        start("test.setA");
        start("test.getB");
        QVERIFY(gate().waitHeld("test.*", 2));
        QVERIFY(gate().waitHeld("test.get*", 1));
        QCOMPARE(start("test.getA").get(), int(Ok));
        gate().release("test.g*");
        QCOMPARE(m_results[1].get(), int(Ok));
        QCOMPARE(start("test.getB").get(), int(Ok));
        QVERIFY(m_results[0].wait_for(0s) == std::future_status::timeout);
    }

    void aReleaseOfMoreNamesEndsAHold()
    {
        gate().hold("test.setA");
        gate().hold("test.get*");
        start("test.setA");
        QVERIFY(gate().waitHeld("test.setA"));
        gate().release("test.*");
        QCOMPARE(m_results[0].get(), int(Ok));
        QVERIFY(gate().requests().empty());
    }

    void requestsAreListedInWords()
    {
        QVERIFY(gate().requests().empty());
        gate().delay(200, "*", 50);
        gate().delay(20, "zvtSet*");
        gate().failNext("zvtGetGainLevel");
        gate().failNext("*", 3);
        gate().failAlways("zvtSet*");
        gate().failRandomly(0.25, 1);
        gate().hold("*");
        gate().release("zvtGet*");
        gate().script("zvtGetFocusPos", 5);
        gate().fillBuffers(true);
        const std::vector<std::string> expected{"Each call takes 200 to 250 ms longer",
                                                "Calls of zvtSet* take 20 ms longer",
                                                "The next call of zvtGetGainLevel fails",
                                                "Call 3 from now on fails",
                                                "Calls of zvtSet* fail",
                                                "Each call fails with the probability 0.25",
                                                "All calls are held",
                                                "Calls of zvtGet* are not held",
                                                "Calls of zvtGetFocusPos return scripted values",
                                                "Texts fill their buffers"};
        QCOMPARE(gate().requests(), expected);
    }

    void clearEndsEveryRequest()
    {
        gate().delay(3'600'000, "test.b", 10);
        gate().failAlways("test.*");
        gate().failNext("*", 5);
        gate().failRandomly(1, 1);
        gate().script("test.a", 5);
        gate().fillBuffers(true);
        gate().hold("*");
        start("test.a");
        QVERIFY(gate().waitHeld("*"));
        gate().clear();
        m_results[0].wait();
        QVERIFY(gate().requests().empty());
        QCOMPARE(statuses({"test.a", "test.b"}), QByteArray(".."));
        QCOMPARE(start("test.a").get(), int(Ok));
    }

    void aListenerGetsEachCallAfterItsEnd()
    {
        std::vector<CallEvent> events;
        const int listener = gate().onCall([&](const CallEvent &event) { events.push_back(event); });
        callOf("test.a", Refused);
        callOf("test.b", Ok);
        QCOMPARE(events.size(), size_t(2));
        QCOMPARE(events[0].call.name, std::string("test.a"));
        QCOMPARE(events[0].call.status, int(Refused));
        QVERIFY(events[0].call.duration > 0ns);
        QVERIFY(events[0].call.thread == std::this_thread::get_id());
        QVERIFY(events[0].results.isUndefined());
        QCOMPARE(events[1].number, size_t(1));
        gate().removeListener(listener);
        callOf("test.a", Ok);
        QCOMPARE(events.size(), size_t(2));
    }

    void resultsAreOnlyDescribedOnRequest()
    {
        QJsonValue without;
        QJsonValue with;
        int value = 7;
        const auto call = [&](int status) {
            dispatch(
                "test.a", m_camera->handle(), [&](Camera &) { return status; }, 3, &value);
        };
        gate().onCall([&](const CallEvent &event) { without = event.results; });
        call(Ok);
        QVERIFY(without.isUndefined());
        const int listener = gate().onCall([&](const CallEvent &event) { with = event.results; }, true);
        call(Ok);
        QCOMPARE(with, QJsonValue(QJsonArray{7}));
        call(Refused);
        QVERIFY(with.isNull());
        callOf("test.b", Ok);
        QVERIFY(with.isUndefined());
        gate().removeListener(listener);
        call(Ok);
        QVERIFY(without.isUndefined());
    }

    void aListenerMayUseTheCamera()
    {
        int calls = 0;
        const int listener = gate().onCall([&](const CallEvent &event) {
            ++calls;
            if (event.call.name == "test.a")
                callOf("test.b", Ok);
            // Another thread gets the locks of camera and gate.
            std::async(std::launch::async, [&] {
                gate().mark();
                const std::lock_guard lock(m_camera->mutex());
            }).wait();
        });
        callOf("test.a", Ok);
        QCOMPARE(calls, 2);
        gate().removeListener(listener);
    }

    void aListenerMayRemoveItself()
    {
        int calls = 0;
        int listener = 0;
        listener = gate().onCall([&](const CallEvent &) {
            ++calls;
            gate().removeListener(listener);
        });
        callOf("test.a", Ok);
        callOf("test.a", Ok);
        QCOMPARE(calls, 1);
    }

    void aRemovalWaitsForARunningListener()
    {
        std::promise<void> entered;
        std::promise<void> mayEnd;
        std::atomic<bool> ended{false};
        const int listener = gate().onCall([&](const CallEvent &) {
            entered.set_value();
            mayEnd.get_future().wait();
            ended = true;
        });
        start("test.a");
        entered.get_future().wait();
        auto removal = std::async(std::launch::async, [&] {
            gate().removeListener(listener);
            return ended.load();
        });
        QVERIFY(removal.wait_for(20ms) == std::future_status::timeout);
        mayEnd.set_value();
        QVERIFY(removal.get());
    }

    void answersReplaceThoseOfTheCamera()
    {
        int asked = 0;
        int value = 0;
        const auto read = [&] {
            return dispatch(
                "test.get", m_camera->handle(), [&](Camera &) { return ++asked, Absent; }, &value);
        };
        const auto command
            = [&] { return dispatch("test.set", m_camera->handle(), [&](Camera &) { return ++asked, Absent; }); };
        int status = Ok;
        gate().answerFrom([&](const Call &) { return Answer{status, {5}, QStringLiteral("file:3")}; });
        QCOMPARE(read(), int(Ok));
        QCOMPARE(value, 5);
        QCOMPARE(asked, 0);
        QCOMPARE(command(), int(Ok));
        QCOMPARE(asked, 1);
        status = Refused;
        QCOMPARE(command(), int(Refused));
        QCOMPARE(asked, 1);
        gate().answerFrom([](const Call &) { return std::optional<Answer>(); });
        QCOMPARE(command(), int(Absent));
        gate().answerFrom({});
        QCOMPARE(command(), int(Absent));
    }

    void anAnswerOfAnotherTypeIsNotTaken()
    {
        gate().answerFrom([&](const Call &) { return Answer{Ok, {5, "word"}, QStringLiteral("file:3")}; });
        int first = 0;
        int second = 0;
        QTest::ignoreMessage(QtWarningMsg, "file:3: test.get: must be a number; the camera answers instead");
        const auto body = [&](Camera &) { second = 9; };
        QCOMPARE(dispatch("test.get", m_camera->handle(), body, &first, &second), int(Ok));
        QCOMPARE(first, 0);
        QCOMPARE(second, 9);
    }

private:
    Gate &gate() { return m_camera->gate(); }

    int callOf(const char *name, Status status)
    {
        return dispatch(name, m_camera->handle(), [=](Camera &) { return status; });
    }

    QByteArray statuses(const std::vector<const char *> &names)
    {
        QByteArray result;
        for (const char *name : names)
            result += callOf(name, Ok) == Ok ? '.' : 'x';
        return result;
    }

    int valueOf(const char *name)
    {
        int value = 0;
        dispatch(
            name, m_camera->handle(), [](Camera &) { return Ok; }, &value);
        return value;
    }

    static std::vector<int64_t> draw(GateDelays &delays, const std::string &name, int count)
    {
        std::vector<int64_t> milliseconds;
        for (int i = 0; i < count; ++i)
            milliseconds.push_back(delays.draw(name, AnsweredBy::Camera) / 1ms);
        return milliseconds;
    }

    std::chrono::nanoseconds durationOf(const char *name)
    {
        callOf(name, Ok);
        return gate().calls().back().duration;
    }

    std::future<int> &start(const char *name)
    {
        return m_results.emplace_back(std::async(std::launch::async, [camera = m_camera, name] {
            return dispatch(name, camera->handle(), [](Camera &) { return Ok; });
        }));
    }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
    std::deque<std::future<int>> m_results;
};

ZVT_TEST(tst_GateRequests)
#include "tst_GateRequests.moc"
