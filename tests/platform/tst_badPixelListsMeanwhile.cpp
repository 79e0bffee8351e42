#include "platform/emulator/devices/ImageMode.h"
#include "tests/platform/BadPixelRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

using Pixels = BadPixelRig::Pixels;
using namespace std::chrono_literals;

/// Lists of bad pixels while something else changes the camera on another thread, and the times of their functions.
class tst_badPixelListsMeanwhile : public Test
{
    Q_OBJECT

private slots:
    void aMovedWindowIsTheOneOfTheList();
    void aNewCorrectionIsTheOneOfTheList();
    void aDisconnectedCameraChangesNothing_data();
    void aDisconnectedCameraChangesNothing();
    void aDisconnectedCameraExportsNothing();
    void aDisconnectedCameraStartsNoRun();
    void aRunIsCheckedForAWindowThatWasMoved();
    void applyKeepsALoadedCorrection();
    void aDownloadReleasesTheLockForTheContents();
    void functionsAreFast();
    void functionsThatReadTheListAreFast_data();
    void functionsThatReadTheListAreFast();
};

namespace
{

using Function = int (*)(uint64_t handle, uint32_t presets);

// With sanitizers, the loops over pixels take much longer.
#ifdef __SANITIZE_ADDRESS__
constexpr int slowness = 20;
#else
constexpr int slowness = 1;
#endif

const QStringList fourCorrections{"10 to 60 °C", "50 to 150 °C", "120 to 350 °C", "Factory 1 ms"};

/// A list of the window of a rig with a good pixel.
const hlx::BadPixelFile oneGood{160, 128, {{80, 64}}};

/// A camera whose first two presets have corrections that have not been read.
struct UnreadRig : BadPixelRig {
    UnreadRig() { select({"10 to 60 °C", "50 to 150 °C"}); }

    bool select(const QStringList &names)
    {
        QStringList wanted = names;
        wanted.resize(4);
        return set("corrections.names", wanted);
    }
    bool isRead(int preset) { return camera().device<emulator::Corrections>()->readTable(preset).has_value(); }

    /// Calls a function on another thread, and `change` while it reads the second correction after the first one.
    /// Returns the status of the function; nothing if the change came too late.
    std::optional<int> call(Function function, const std::function<void()> &change)
    {
        std::atomic<bool> ended = false;
        int status = -1;
        std::thread thread([&] {
            status = function(handle(), 3);
            ended = true;
        });
        bool changed = false;
        while (!ended && !changed) {
            std::this_thread::yield();
            const std::lock_guard lock(camera().mutex());
            if (isRead(0) && !isRead(1)) {
                change();
                changed = true;
            }
        }
        thread.join();
        return changed ? std::optional(status) : std::nullopt;
    }
};

/// A camera with a correction that waits for the decision. Its factory's list takes long to be read.
struct LongListRig : BadPixelRig {
    LongListRig()
    {
        hlx::BadPixelFile list{160, 128, {}};
        for (uint16_t y = 0; y < list.height; ++y)
            for (uint16_t x = 0; x < list.width; ++x)
                list.pixels.push_back({x, y});
        zvtSetNUCUseFactoryBadPixels(handle(), false);
        run();
        zvtSetNUCUseFactoryBadPixels(handle(), true);
        putFactoryList(list);
    }
};

/// UnreadRig::call() with a new camera, whose factory's list has a good pixel, as often as the change comes too late.
int callMeanwhile(std::unique_ptr<UnreadRig> &rig, Function function, const std::function<void()> &change)
{
    for (int attempt = 0; attempt < 10; ++attempt) {
        rig = std::make_unique<UnreadRig>();
        rig->putFactoryList(oneGood);
        if (const auto status = rig->call(function, change))
            return *status;
    }
    return -1;
}

/// Calls a function on another thread, and `change` when it has released the camera's lock, or has not taken it yet.
/// The change comes too late if the function has ended before. Returns the status of the function.
int callWhileUnlocked(BadPixelRig &rig, const std::function<int()> &function, const std::function<void()> &change)
{
    std::unique_lock lock(rig.camera().mutex());
    const size_t mark = rig.camera().gate().mark();
    std::atomic<bool> ended = false;
    int status = -1;
    std::thread thread([&] {
        status = function();
        ended = true;
    });
    while (rig.camera().gate().mark() == mark)
        std::this_thread::yield();
    lock.unlock();
    // The lock cannot be taken while the function has it.
    while (!ended && lock.try_lock())
        lock.unlock();
    lock.lock();
    change();
    lock.unlock();
    thread.join();
    return status;
}

/// The same with new cameras, until the change has an effect. Returns the status of the function.
template <class Rig>
int callNewWhileUnlocked(std::unique_ptr<Rig> &rig, int (*function)(uint64_t handle),
                         const std::function<void()> &change)
{
    int status = 0;
    for (int attempt = 0; attempt < 10 && status == 0; ++attempt) {
        rig = std::make_unique<Rig>();
        const auto call = [function, handle = rig->handle()] { return function(handle); };
        status = callWhileUnlocked(*rig, call, change);
    }
    return status;
}

Pixels together(Pixels one, const Pixels &other)
{
    one.insert(other.begin(), other.end());
    return one;
}

} // namespace

void tst_badPixelListsMeanwhile::aMovedWindowIsTheOneOfTheList()
{
    std::unique_ptr<UnreadRig> rig;
    const auto move = [&] { rig->set("sensor.window", QVariantList{64, 32, 320, 256}); };
    QCOMPARE(callMeanwhile(rig, zvtMfgFactoryBPLCreate, move), 0);
    const auto list = rig->download(BadPixelRig::factoryPath);
    QCOMPARE(rig->sizeOf(list), "320x256");
    QVERIFY(rig->pixelsOf(list) == together(rig->flagged(0), rig->flagged(1)));
}

void tst_badPixelListsMeanwhile::aNewCorrectionIsTheOneOfTheList()
{
    std::unique_ptr<UnreadRig> rig;
    const auto load = [&] { rig->select({"120 to 350 °C", "50 to 150 °C"}); };
    QCOMPARE(callMeanwhile(rig, zvtMfgFactoryBPLCreate, load), 0);
    QVERIFY(rig->isRead(0));
    const Pixels flagged = together(rig->flagged(0), rig->flagged(1));
    QVERIFY(rig->pixelsOf(rig->download(BadPixelRig::factoryPath)) == flagged);

    // Whatever is in use when Apply returns has its flag.
    QCOMPARE(callMeanwhile(rig, zvtMfgFactoryBPLApply, load), 0);
    QVERIFY(rig->flagged(0).contains({80, 64}) && rig->flagged(1).contains({80, 64}));
}

void tst_badPixelListsMeanwhile::aDisconnectedCameraChangesNothing_data()
{
    QTest::addColumn<Function>("function");
    QTest::newRow("create") << Function(zvtMfgFactoryBPLCreate);
    QTest::newRow("append") << Function(zvtMfgFactoryBPLAppend);
    QTest::newRow("apply") << Function(zvtMfgFactoryBPLApply);
}

void tst_badPixelListsMeanwhile::aDisconnectedCameraChangesNothing()
{
    QFETCH(const Function, function);
    std::unique_ptr<UnreadRig> rig;
    const auto disconnect = [&] { rig->camera().disconnect(); };
    QCOMPARE(callMeanwhile(rig, function, disconnect), int(emulator::NotConnected));
    rig->camera().connect();
    const auto list = rig->download(BadPixelRig::factoryPath);
    QVERIFY(list && list->pixels == oneGood.pixels);
    QVERIFY(!rig->flagged(0).contains({80, 64}) && !rig->flagged(1).contains({80, 64}));
}

void tst_badPixelListsMeanwhile::aDisconnectedCameraExportsNothing()
{
    std::unique_ptr<UnreadRig> rig;
    const auto save = [](uint64_t handle) { return zvtSaveBadPixelList(handle, 1, "/Temp/ps.bpl"); };
    QCOMPARE(callNewWhileUnlocked(rig, save, [&] { rig->camera().disconnect(); }), int(emulator::NotConnected));
    rig->camera().connect();
    QVERIFY(!rig->download("/Temp/ps.bpl"));
    rig->camera().flushMemory();
    QVERIFY(!QFile::exists(rig->pathOf("/Temp/ps.bpl")));
}

void tst_badPixelListsMeanwhile::aDisconnectedCameraStartsNoRun()
{
    std::unique_ptr<LongListRig> rig;
    QCOMPARE(callNewWhileUnlocked(rig, zvtStartNUC, [&] { rig->camera().disconnect(); }), int(emulator::NotConnected));
    rig->camera().connect();
    QCOMPARE(rig->status(), uint16_t(0));
    // The correction of the last run still waits for the decision.
    QCOMPARE(zvtAcceptNUC(rig->handle()), 0);
}

void tst_badPixelListsMeanwhile::aRunIsCheckedForAWindowThatWasMoved()
{
    std::unique_ptr<LongListRig> rig;
    const auto move = [&] { rig->set("sensor.window", QVariantList{64, 32, 320, 256}); };
    QCOMPARE(callNewWhileUnlocked(rig, zvtStartNUC, move), int(emulator::Refused));
    QCOMPARE(rig->status(), uint16_t(0));
}

// Another thread loads corrections as quickly as it can.
void tst_badPixelListsMeanwhile::applyKeepsALoadedCorrection()
{
    UnreadRig rig;
    QVERIFY(rig.putFactoryList(oneGood));
    const QStringList names{QStringLiteral("10 to 60 °C"), QStringLiteral("120 to 350 °C")};
    auto &corrections = *rig.camera().device<emulator::Corrections>();
    std::vector<std::shared_ptr<const emulator::image::CorrectionTable>> tables;
    for (const QString &name : names) {
        QVERIFY(rig.select({name, ""}));
        tables.push_back(corrections.table(0));
    }
    QVERIFY(tables[0]->gains != tables[1]->gains);
    std::atomic<bool> ended = false;
    std::atomic<int> calls = 0;
    std::atomic<int> refusals = 0;
    std::thread thread([&] {
        for (; !ended; ++calls)
            refusals += zvtMfgFactoryBPLApply(rig.handle(), 1) == 0 ? 0 : 1;
    });
    int wrong = 0;
    for (size_t turn = 0; turn < 300; ++turn) {
        rig.select({names.at(static_cast<qsizetype>(turn % 2)), ""});
        // The first of these calls may have begun before.
        for (const int before = calls; calls < before + 2;)
            std::this_thread::yield();
        // What Apply has made of the correction has its gains.
        wrong += corrections.table(0)->gains == tables[turn % 2]->gains ? 0 : 1;
    }
    ended = true;
    thread.join();
    QCOMPARE(int(refusals), 0);
    QCOMPARE(wrong, 0);
    QVERIFY(rig.flagged().contains({80, 64}));
}

void tst_badPixelListsMeanwhile::aDownloadReleasesTheLockForTheContents()
{
    BadPixelRig rig;
    std::atomic<bool> taken = false;
    std::unique_lock lock(rig.camera().mutex());
    std::thread other([&] {
        const std::lock_guard waiting(rig.camera().mutex());
        taken = true;
    });
    // The other thread may come too late for one of them.
    constexpr int most = 1000;
    for (int turn = 0; turn < most && !taken; ++turn)
        rig.lists().unwritten(QLatin1String(BadPixelRig::factoryPath));
    const bool takenMeanwhile = taken;
    lock.unlock();
    other.join();
    QVERIFY(takenMeanwhile);
}

void tst_badPixelListsMeanwhile::functionsAreFast()
{
    UnreadRig rig;
    QVERIFY(rig.useWholeArray() && rig.select(fourCorrections));
    const auto callAll = [&rig] {
        return zvtSaveBadPixelList(rig.handle(), 0, "/Temp/ps0.bpl") == 0
            && zvtMfgFactoryBPLCreate(rig.handle(), BadPixelRig::all) == 0
            && zvtMfgFactoryBPLAppend(rig.handle(), BadPixelRig::all) == 0
            && zvtMfgFactoryBPLApply(rig.handle(), BadPixelRig::all) == 0;
    };
    // The first calls read the corrections.
    QVERIFY(callAll());
    const size_t mark = rig.camera().gate().mark();
    for (int pass = 0; pass < 10; ++pass)
        QVERIFY(callAll());
    const auto time = slowestFunction(rig.camera().gate(), mark);
    QVERIFY2(time < slowness * 1ms, QByteArray::number(qint64(time.count())));
}

void tst_badPixelListsMeanwhile::functionsThatReadTheListAreFast_data()
{
    QTest::addColumn<int>("every"); // Pixel is in the list.
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("500 pixels") << 655 << 2;
    // The reader of files is not optimized in a Debug build.
    QTest::newRow("164 000 pixels") << 2 << 20;
}

void tst_badPixelListsMeanwhile::functionsThatReadTheListAreFast()
{
    QFETCH(const int, every);
    QFETCH(const int, milliseconds);
    UnreadRig rig;
    QVERIFY(rig.useWholeArray() && rig.select(fourCorrections));
    hlx::BadPixelFile list{640, 512, {}};
    for (int i = 0; i < 640 * 512; i += every)
        list.pixels.push_back({static_cast<uint16_t>(i % 640), static_cast<uint16_t>(i / 640)});
    QVERIFY(rig.putFactoryList(list));
    // The first call reads the corrections.
    QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), BadPixelRig::all), 0);
    const size_t mark = rig.camera().gate().mark();
    for (int pass = 0; pass < 10; ++pass) {
        QVERIFY(rig.isWritten());
        QCOMPARE(zvtMfgFactoryBPLApply(rig.handle(), BadPixelRig::all), 0);
        QCOMPARE(zvtMfgFactoryBPLAppend(rig.handle(), BadPixelRig::all), 0);
        rig.camera().flushMemory();
    }
    const auto time = slowestFunction(rig.camera().gate(), mark);
    QVERIFY2(time < slowness * milliseconds * 1ms, QByteArray::number(qint64(time.count())));
}

ZVT_TEST(tst_badPixelListsMeanwhile)
#include "tst_badPixelListsMeanwhile.moc"
