#include "hlx/CString.h"
#include "hlx/TArray.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/dispatch.h"
#include "tests/support/Test.h"
#include "zvt/zvttypes.h"

#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <future>
#include <limits>
#include <string>

using namespace emulator;
using namespace std::chrono_literals;

namespace
{

enum class Colour : uint8_t { Red = 1, Green = 2 };

/// A device that cameras do not have.
class Gearbox : public Device
{
public:
    using Device::Device;
};

} // namespace

class tst_Dispatch : public Test
{
    Q_OBJECT

private slots:
    void init()
    {
        Test::init();
        m_camera = Camera::create(QStringLiteral("everything"), m_folder.path());
        m_camera->connect();
    }

    void inputsAreLoggedOutputsAreNot()
    {
        uint8_t byte = 0;
        char buffer[8];
        Text text(buffer, sizeof buffer);
        hlx::TArray<int> list;
        call(true, &byte, false, text, &list, uint8_t(200), int8_t(-56));
        QCOMPARE(arguments(), std::string("true, false, 200, -56"));
    }

    void numbersAreLoggedInTheirShortestForm()
    {
        call(0.1f, 0.1, 1e300, 60.0, std::numeric_limits<uint64_t>::max(), int64_t(-5));
        QCOMPARE(arguments(), std::string("0.1, 0.1, 1e+300, 60, 18446744073709551615, -5"));
    }

    void textsAndOtherTypesAreLogged()
    {
        const char *const nothing = nullptr;
        hlx::delegate<int(unsigned, unsigned)> progress;
        call("one", "", hlx::CString("two"), Colour::Green, progress, &progress);
        QCOMPARE(arguments(), std::string("\"one\", \"\", \"two\", 2, delegate, delegate"));
        call(nothing, std::array<int, 2>{});
        QCOMPARE(arguments(), std::string("null, object"));
    }

    void nullOutputsAndTextsFail()
    {
        uint8_t *const number = nullptr;
        hlx::TArray<int> *const list = nullptr;
        const char *const name = nullptr;
        QCOMPARE(call(number), int(Refused));
        QCOMPARE(call(list), int(Refused));
        QCOMPARE(call(name), int(Refused));
        QCOMPARE(call(Text(nullptr, 10)), int(Refused));
        m_camera->gate().script("test", 1);
        QCOMPARE(call(number), int(Refused));
    }

    void aDelegateMayBeNull()
    {
        hlx::delegate<int(unsigned, unsigned)> *const progress = nullptr;
        QCOMPARE(call(progress), int(Ok));
    }

    void textsFitTheirBuffers_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("size");
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<QByteArray>("filled");
        QTest::newRow("shorter") << QByteArray("abc") << 8 << QByteArray("abc") << QByteArray("abc#####");
        QTest::newRow("fits") << QByteArray("abc") << 4 << QByteArray("abc") << QByteArray("abc#");
        QTest::newRow("cut") << QByteArray("abcdef") << 4 << QByteArray("abc") << QByteArray("abcd");
        QTest::newRow("one byte") << QByteArray("abc") << 1 << QByteArray("") << QByteArray("a");
        QTest::newRow("empty") << QByteArray("") << 4 << QByteArray("") << QByteArray("####");
        QTest::newRow("two bytes in a character") << QByteArray("aü") << 3 << QByteArray("a") << QByteArray("aü");
        QTest::newRow("three bytes") << QByteArray("a€") << 3 << QByteArray("a") << QByteArray("a##");
        QTest::newRow("cut behind") << QByteArray("ü€x") << 6 << QByteArray("ü€") << QByteArray("ü€x");
    }

    void textsFitTheirBuffers()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, size);
        QFETCH(QByteArray, expected);
        QFETCH(QByteArray, filled);
        std::array<char, 16> buffer;
        const auto ask = [&] {
            buffer.fill('?');
            Text text(buffer.data(), static_cast<uint32_t>(size));
            const auto body = [&](Camera &) {
                text.value = value.toStdString();
                return Ok;
            };
            return dispatch("test", m_camera->handle(), body, text);
        };
        QCOMPARE(ask(), int(Ok));
        QCOMPARE(QByteArray(buffer.data()), expected);
        QCOMPARE(buffer[static_cast<size_t>(size)], '?');
        m_camera->gate().fillBuffers(true);
        QCOMPARE(ask(), int(Ok));
        QCOMPARE(QByteArray(buffer.data(), size), filled);
        QCOMPARE(buffer[static_cast<size_t>(size)], '?');
        m_camera->gate().fillBuffers(false);
        QCOMPARE(ask(), int(Ok));
        QCOMPARE(QByteArray(buffer.data()), expected);
    }

    void anEmptyBufferFails()
    {
        char untouched = '?';
        QCOMPARE(call(Text(&untouched, 0)), int(Refused));
        QCOMPARE(untouched, '?');
    }

    void aFailureLeavesTheBufferAlone()
    {
        char buffer[] = "old";
        Text text(buffer, sizeof buffer);
        const auto body = [&](Camera &) {
            text.value = "new";
            return Refused;
        };
        m_camera->gate().fillBuffers(true);
        QCOMPARE(dispatch("test", m_camera->handle(), body, text), int(Refused));
        QCOMPARE(buffer, "old");
    }

    void scriptsGiveEachKindOfValue()
    {
        QCOMPARE(scripted<bool>(true), true);
        QCOMPARE(scripted<uint8_t>(200), uint8_t(200));
        QCOMPARE(scripted<int8_t>(-56), int8_t(-56));
        QCOMPARE(scripted<uint16_t>(65535), uint16_t(65535));
        QCOMPARE(scripted<int32_t>(-100000), -100000);
        QCOMPARE(scripted<uint32_t>(4294967295u), 4294967295u);
        QCOMPARE(scripted<int64_t>(qlonglong(-5'000'000'000)), int64_t(-5'000'000'000));
        QCOMPARE(scripted<uint64_t>(std::numeric_limits<qulonglong>::max()), std::numeric_limits<uint64_t>::max());
        QCOMPARE(scripted<float>(0.1), 0.1f);
        QCOMPARE(scripted<double>(1e300), 1e300);
        QVERIFY(scripted<Colour>(2) == Colour::Green);
        QVERIFY(qIsNaN(scripted<float>(qQNaN())));
        struct Point {
            int x = 0;
            int y = 0;
        };
        QCOMPARE(scripted<Point>(QVariant::fromValue(Point{3, 4})).y, 4);
    }

    void scriptsGiveTexts()
    {
        char buffer[6];
        m_camera->gate().script("test", QStringLiteral("größer"));
        QCOMPARE(call(Text(buffer, sizeof buffer)), int(Ok));
        QCOMPARE(buffer, "grö");
        m_camera->gate().fillBuffers(true);
        m_camera->gate().script("test", QStringLiteral("a"));
        QCOMPARE(call(Text(buffer, sizeof buffer)), int(Ok));
        QCOMPARE(QByteArray(buffer, sizeof buffer), QByteArray("a#####"));
    }

    void scriptsGiveSeveralValuesInOrder()
    {
        uint16_t status = 0;
        hlx::TArray<int> list;
        char buffer[16];
        bool flag = false;
        double untouched = 1.5;
        m_camera->gate().script("test", QVariantList{14, QVariantList{7, 8}, QStringLiteral("Starting"), true});
        QCOMPARE(call(3, &status, &list, Text(buffer, sizeof buffer), "input", &flag, &untouched), int(Ok));
        QCOMPARE(status, uint16_t(14));
        QCOMPARE(list.size(), size_t(2));
        QCOMPARE(list[1], 8);
        QCOMPARE(buffer, "Starting");
        QVERIFY(flag);
        QCOMPARE(untouched, 1.5);
        QCOMPARE(arguments(), std::string("3, \"input\""));
    }

    void scriptsReplaceLists()
    {
        hlx::TArray<hlx::CString> names{"old"};
        m_camera->gate().script("test", QVariantList{QVariantList{QStringLiteral("größer"), QString()}});
        QCOMPARE(call(&names), int(Ok));
        QCOMPARE(names.size(), size_t(2));
        QCOMPARE(names[0].c_str(), "größer");
        QVERIFY(names[1].empty());
        zvtSDirEntry entry;
        entry.name = "a.bin";
        entry.size = 12;
        hlx::TArray<zvtSDirEntry> files;
        m_camera->gate().script("test", QVariantList{QVariantList{QVariant::fromValue(entry)}});
        QCOMPARE(call(&files), int(Ok));
        QCOMPARE(files.size(), size_t(1));
        QCOMPARE(files[0].size, 12u);
        m_camera->gate().script("test", QVariantList{QVariantList{}});
        QCOMPARE(call(&files), int(Ok));
        QVERIFY(files.empty());
    }

    void aScriptAsksNoDevice()
    {
        int asked = 0;
        const auto body = [&asked](Camera &) {
            ++asked;
            return Refused;
        };
        m_camera->gate().script("test", 1);
        QCOMPARE(dispatch("test", m_camera->handle(), body), int(Ok));
        QCOMPARE(asked, 0);
        QCOMPARE(absent("test", m_camera->handle()), int(Ok));
        m_camera->gate().script("test", {});
        QCOMPARE(dispatch("test", m_camera->handle(), body), int(Refused));
        QCOMPARE(asked, 1);
    }

    void aScriptForANameGoesBeforeTheOneForAll()
    {
        m_camera->gate().script("*", 1);
        m_camera->gate().script("test", 2);
        int value = 0;
        call(&value);
        QCOMPARE(value, 2);
        m_camera->gate().script("test", {});
        call(&value);
        QCOMPARE(value, 1);
    }

    void aFailureGoesBeforeAScript()
    {
        m_camera->gate().script("test", 1);
        m_camera->gate().failNext("test");
        int value = 0;
        QCOMPARE(call(&value), int(Injected));
        QCOMPARE(value, 0);
    }

    void aCameraWithoutTheDeviceFails()
    {
        const auto body = [](Gearbox &) { return Ok; };
        QCOMPARE(onDevice<Gearbox>("test", m_camera->handle(), body), int(Absent));
        QCOMPARE(absent("test", m_camera->handle(), 5), int(Absent));
        QVERIFY(!controllerOnDevice<Gearbox>(m_camera, "controller.Test", body));
        QCOMPARE(m_camera->gate().calls().back().status, int(Absent));
    }

    void controllerOperationsReturnWhatTheirBodiesSay()
    {
        QVERIFY(dispatchController(m_camera, "controller.Test", [](Camera &) { return true; }));
        QCOMPARE(lastStatus(), int(Ok));
        QVERIFY(!dispatchController(m_camera, "controller.Test", [](Camera &) { return false; }));
        QCOMPARE(lastStatus(), int(Refused));
        QVERIFY(dispatchController(m_camera, "controller.Test", [](Camera &) {}));
        QCOMPARE(lastStatus(), int(Ok));
        QVERIFY(!dispatchController(
            m_camera, "controller.Test", [](Camera &) { return Absent; }, 2, 60.0));
        QCOMPARE(lastStatus(), int(Absent));
        QCOMPARE(arguments(), std::string("2, 60"));
    }

    void controllerOperationsAreScriptedByTheirResultOrOutputs()
    {
        const auto yes = [](Camera &) { return true; };
        const auto no = [](Camera &) { return false; };
        m_camera->gate().script("controller.Test", false);
        QVERIFY(!dispatchController(m_camera, "controller.Test", yes));
        m_camera->gate().script("controller.Test", true);
        QVERIFY(dispatchController(m_camera, "controller.Test", no));
        m_camera->gate().script("controller.Test", false);
        bool value = true;
        QVERIFY(dispatchController(m_camera, "controller.Test", no, 0, &value));
        QVERIFY(!value);
    }

    void aNullCameraFails()
    {
        const size_t mark = Sdk::gate().mark();
        QVERIFY(!dispatchController(
            nullptr, "controller.Test", [](Camera &) { return true; }, 4));
        const auto calls = Sdk::gate().callsSince(mark);
        QCOMPARE(calls.size(), size_t(1));
        QCOMPARE(calls[0].name, std::string("controller.Test"));
        QCOMPARE(calls[0].arguments, std::string("4"));
        QCOMPARE(calls[0].status, int(InvalidHandle));
    }

    void functionsWithoutAHandlePassTheSdksGate()
    {
        const size_t mark = Sdk::gate().mark();
        uint8_t out = 0;
        const auto body = [&out] {
            out = 9;
            return Ok;
        };
        QCOMPARE(withoutHandle("test.static", body, 3, &out), int(Ok));
        QCOMPARE(out, uint8_t(9));
        Sdk::gate().failNext("test.static");
        QCOMPARE(withoutHandle("test.static", body, 3, &out), int(Injected));
        QVERIFY(!lookUp("test.pointer", [] { return static_cast<const void *>(nullptr); }));
        const auto calls = Sdk::gate().callsSince(mark);
        QCOMPARE(calls.size(), size_t(3));
        QCOMPARE(calls[0].arguments, std::string("3"));
        QCOMPARE(calls[2].status, int(Refused));
    }

    void theCameraIsLockedForABody()
    {
        const auto body = [this](Camera &camera) {
            bool locked = false;
            std::thread([&] {
                locked = !camera.mutex().try_lock();
                if (!locked)
                    camera.mutex().unlock();
            }).join();
            return locked && &camera == m_camera.get();
        };
        QVERIFY(dispatchController(m_camera, "controller.Test", body));
    }

    void aSlowOperationLetsOthersIn()
    {
        std::atomic<bool> end{false};
        auto slow = inBackground([&](Camera &camera) {
            while (!end)
                if (const Status status = camera.letTimePass(1); status != Ok)
                    return status;
            return Ok;
        });
        auto read = std::async(std::launch::async, [this] {
            return onDevice<Sensor>("test.read", m_camera->handle(), [](Sensor &) { return Ok; });
        });
        const bool answered = read.wait_for(10s) == std::future_status::ready;
        QCOMPARE(m_camera->gate().calls().front().status, int(Pending));
        end = true;
        QVERIFY(answered);
        QCOMPARE(read.get(), int(Ok));
        QCOMPARE(slow.get(), int(Ok));
    }

    void aSlowOperationEndsWithTheConnection()
    {
        auto slow = inBackground([](Camera &camera) {
            Status status = Ok;
            for (int turn = 0; turn < 10'000 && status == Ok; ++turn)
                status = camera.letTimePass(1);
            return status;
        });
        m_camera->disconnect();
        QCOMPARE(slow.get(), int(NotConnected));
    }

    void takenTimeMovesAManualClock()
    {
        Clock::manual();
        const int64_t before = Clock::now();
        QCOMPARE(dispatch("test", m_camera->handle(), [](Camera &camera) { return camera.letTimePass(1500); }),
                 int(Ok));
        QCOMPARE(Clock::now() - before, int64_t(1500));
        Clock::automatic();
    }

private:
    /// Makes a call on another thread. Returns when the call has the camera's lock.
    template <class Body> std::future<int> inBackground(Body body)
    {
        const auto begun = std::make_shared<std::promise<void>>();
        auto call = std::async(std::launch::async, [=, this] {
            return dispatch("test.slow", m_camera->handle(), [&](Camera &camera) {
                begun->set_value();
                return body(camera);
            });
        });
        begun->get_future().wait();
        return call;
    }

    /// Makes a call with these arguments, which succeeds.
    template <class... Args> int call(Args &&...args)
    {
        return dispatch(
            "test", m_camera->handle(), [](Camera &) { return Ok; }, std::forward<Args>(args)...);
    }

    template <class T> T scripted(const QVariant &value)
    {
        T result{};
        m_camera->gate().script("test", value);
        call(&result);
        return result;
    }

    std::string arguments() const { return m_camera->gate().calls().back().arguments; }
    int lastStatus() const { return m_camera->gate().calls().back().status; }

    QTemporaryDir m_folder;
    std::shared_ptr<Camera> m_camera;
};

ZVT_TEST(tst_Dispatch)
#include "tst_Dispatch.moc"
