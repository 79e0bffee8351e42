#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/output.h"
#include "tests/platform/RecorderRig.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QRegularExpression>

#include <map>
#include <mutex>
#include <sys/resource.h>

namespace
{

using emulator::image::Output;

/// A camera that records its corrected frames.
class Rig : public RecorderRig
{
public:
    using Counts = std::vector<uint16_t>;

    Rig()
    {
        // After a day no temperature drifts.
        wait(86'400'000);
        prepared = set("corrections.digitalCorrected", true) && set("sensor.window", QVariantList{240, 192, 160, 128})
            && set(zvtSetSsdRecordType, 2) && zvtSetSsdPretriggerFrames(handle(), 0) == 0;
    }

    /// Selects the correction of the first preset, which is not read before it is used.
    bool select(const char *name) { return set("corrections.names", QVariantList{name, "", "", ""}); }
    /// Saves the correction of the factory for 1 ms under a name.
    bool save(const char *name)
    {
        return select("") && zvtLoadNUC(handle(), 0, "Factory 1 ms") == 0 && zvtSaveNUCAs(handle(), 0, name) == 0
            && select("");
    }
    bool start() { return arm() && call(zvtSsdTrigger); }

    Counts live()
    {
        const auto frame = camera().newestFrame(0, Output::Digital);
        return frame ? frame->counts : Counts();
    }
    Counts recorded(uint64_t frame)
    {
        const auto played = recorder().frame(frame);
        return played ? played->frame.counts : Counts();
    }
    /// A recorded frame with another correction: that of the store with this name, or none.
    Counts renderedWith(uint64_t frame, const char *name)
    {
        emulator::image::Exposure exposure = recorder().recorded(*recorder().memory(), frame).exposure;
        exposure.detector = camera().device<emulator::Sensor>()->array().mapsFor(exposure.window);
        if (const auto read = camera().device<emulator::CorrectionStore>()->read(name))
            exposure.correction = read->table;
        Counts counts;
        emulator::image::renderOutput(exposure, Output::Digital, counts);
        return counts;
    }

    bool prepared = false;
};

} // namespace

/// The corrections of recorded frames.
class tst_RecorderCorrections : public Test
{
    Q_OBJECT

private slots:
    void framesKeepTheirCorrections();
    void unusedCorrectionsStay_data();
    void unusedCorrectionsStay();
    void aRecordedCorrectionIsAlsoShown_data();
    void aRecordedCorrectionIsAlsoShown();
    void oneFileIsOpenForEachContent();
    void aFileThatCannotBeOpenedIsNone();
    void aPendingCorrectionIsRecorded_data();
    void aPendingCorrectionIsRecorded();
    void aDamagedCorrectionIsNone();
};

void tst_RecorderCorrections::framesKeepTheirCorrections()
{
    Rig rig;
    const uint64_t h = rig.handle();
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select("Factory 2 ms") && rig.start());
    std::map<uint64_t, Rig::Counts> expected;
    const auto take = [&] {
        rig.wait(100);
        expected[rig.acquired() - 1] = rig.live();
    };
    take();
    QCOMPARE(zvtLoadNUC(h, 0, "Mine"), 0);
    take();
    QVERIFY(rig.select("Factory 1 ms"));
    take();
    QCOMPARE(zvtUnloadNUC(h, 0), 0);
    take();
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.save("Other"));
    QVERIFY(zvtDeleteNUC(h, "Mine") == 0 && zvtRenameNUC(h, "Other", "Mine") == 0);
    QVERIFY(zvtDeleteNUC(h, "Factory 1 ms") == 0 && zvtDeleteNUC(h, "Factory 2 ms") == 0);
    QCOMPARE(expected.size(), size_t(4));
    for (const auto &[frame, counts] : expected)
        QVERIFY2(!counts.empty() && rig.recorded(frame) == counts, qPrintable(QString::number(frame)));
    QVERIFY(rig.recorded(expected.rbegin()->first) == rig.renderedWith(expected.rbegin()->first, "none"));
    QVERIFY(rig.recorded(expected.begin()->first) != rig.renderedWith(expected.begin()->first, "none"));
}

void tst_RecorderCorrections::unusedCorrectionsStay_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("change");
    for (const char *change : {"deleted", "renamed", "replaced", "nothing"})
        QTest::newRow(change) << QByteArray("Mine") << QByteArray(change);
    QTest::newRow("factory") << QByteArray("Factory 1 ms") << QByteArray("deleted");
}

void tst_RecorderCorrections::unusedCorrectionsStay()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, change);
    Rig rig;
    const uint64_t h = rig.handle();
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select(name) && rig.start());
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    const auto expected = rig.renderedWith(5, name);
    QVERIFY(!expected.empty() && expected != rig.renderedWith(5, "none"));
    if (change == "deleted")
        QCOMPARE(zvtDeleteNUC(h, name), 0);
    else if (change == "renamed")
        QCOMPARE(zvtRenameNUC(h, name, "Other"), 0);
    else if (change == "replaced")
        QVERIFY(zvtLoadNUC(h, 1, "Factory 2 ms") == 0 && zvtSaveNUCAs(h, 1, name) == 0);
    QVERIFY(rig.recorded(5) == expected);
}

/// A correction that has been selected is that of its file when it is first used, and recording uses it.
void tst_RecorderCorrections::aRecordedCorrectionIsAlsoShown_data()
{
    QTest::addColumn<bool>("reconnects");
    QTest::newRow("connected") << false;
    QTest::newRow("reconnected") << true;
}

void tst_RecorderCorrections::aRecordedCorrectionIsAlsoShown()
{
    QFETCH(bool, reconnects);
    Rig rig;
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select("Mine") && rig.start());
    QCOMPARE(zvtDeleteNUC(rig.handle(), "Mine"), 0);
    if (reconnects) {
        rig.camera().disconnect();
        rig.camera().connect();
    }
    rig.wait(100);
    const auto live = rig.live();
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.recorded(9) == live);
    QVERIFY(live != rig.renderedWith(9, "none"));
}

void tst_RecorderCorrections::oneFileIsOpenForEachContent()
{
    Rig rig;
    QVERIFY(rig.prepared && rig.save("Mine") && rig.save("Other") && rig.select("Mine") && rig.start());
    rig.wait(100);
    const auto openFiles = [] { return QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size(); };
    const auto before = openFiles();
    for (int change = 0; change < 20; ++change) {
        for (const char *name : {"Other", "Mine"}) {
            QVERIFY(rig.select(name));
            rig.wait(20);
        }
        QVERIFY(rig.select(""));
        rig.wait(20);
    }
    QVERIFY2(openFiles() <= before + 1, qPrintable(QString("%1, %2").arg(before).arg(openFiles())));
    QVERIFY(rig.select("Other"));
    rig.wait(20);
    // Other contents are another correction, also under the same name.
    QVERIFY(zvtLoadNUC(rig.handle(), 1, "Factory 2 ms") == 0 && zvtSaveNUCAs(rig.handle(), 1, "Mine") == 0);
    QVERIFY(rig.select("Mine"));
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.recorded(5) == rig.renderedWith(5, "Factory 1 ms"));
    const uint64_t last = rig.acquired() - 1;
    QVERIFY(rig.recorded(last) == rig.renderedWith(last, "Factory 2 ms"));
    QVERIFY(rig.renderedWith(last, "Factory 1 ms") != rig.renderedWith(last, "Factory 2 ms"));
}

void tst_RecorderCorrections::aFileThatCannotBeOpenedIsNone()
{
    Rig rig;
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select("Mine"));
    rlimit usual{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const rlimit low{3, usual.rlim_max};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^cannot open .*/nucs/Mine\\.nuc: "));
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &low), 0);
    const bool started = rig.start();
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &usual), 0);
    QVERIFY(started);
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.recorded(5) == rig.renderedWith(5, "none"));
}

void tst_RecorderCorrections::aPendingCorrectionIsRecorded_data()
{
    QTest::addColumn<bool>("accepts");
    QTest::newRow("accepted") << true;
    QTest::newRow("discarded") << false;
}

/// A correction that a run has made is on the picture until the operator decides.
void tst_RecorderCorrections::aPendingCorrectionIsRecorded()
{
    QFETCH(bool, accepts);
    Rig rig;
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select("Factory 2 ms"));
    auto &corrections = *rig.camera().device<emulator::Corrections>();
    const auto made = rig.camera().device<emulator::CorrectionStore>()->read("Mine");
    {
        const std::lock_guard lock(rig.camera().mutex());
        corrections.offer(0, *made, false);
    }
    QVERIFY(rig.start());
    rig.wait(100);
    QCOMPARE(accepts ? zvtAcceptNUC(rig.handle()) : zvtDiscardNUC(rig.handle()), 0);
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QCOMPARE(rig.recorder().memory()->segments(), size_t(accepts ? 1 : 2));
    QVERIFY(rig.recorded(5) == rig.renderedWith(5, "Mine"));
    QVERIFY(rig.recorded(15) == rig.renderedWith(15, accepts ? "Mine" : "Factory 2 ms"));
    QVERIFY(rig.renderedWith(15, "Mine") != rig.renderedWith(15, "Factory 2 ms"));
}

void tst_RecorderCorrections::aDamagedCorrectionIsNone()
{
    Rig rig;
    QVERIFY(rig.prepared && rig.save("Mine") && rig.select("Mine"));
    QFile file(rig.camera().folder() + "/nucs/Mine.nuc");
    QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(5000) && file.write("damage") == 6);
    file.close();
    QVERIFY(rig.start());
    rig.wait(100);
    QVERIFY(rig.call(zvtSsdRecordStop));
    QVERIFY(rig.recorded(5) == rig.renderedWith(5, "none"));
}

ZVT_TEST(tst_RecorderCorrections)
#include "tst_RecorderCorrections.moc"
