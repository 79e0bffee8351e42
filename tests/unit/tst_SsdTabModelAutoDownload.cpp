#include "tests/support/Test.h"
#include "tests/unit/DownloadRig.h"

#include <memory>

namespace
{

const QString startCall = QStringLiteral("zvtSsdAutoDownloadStart");
const QString doneCall = QStringLiteral("zvtSsdAutoDownloadDone");
const QString nameCall = QStringLiteral("zvtGetSsdSaveName");
const QString countCall = QStringLiteral("zvtGetSsdMovieCount");

/// The SSD tab of a camera that records to the memory and asks for a download, with the name "Shot".
struct AutoDownload : DownloadRig {
    AutoDownload()
    {
        gate().script("zvtGetSsdRecordMode", SsdTabModel::MODE_TO_MEMORY);
        read();
        model.setAutoDownloadDirectory(folder.path());
        log.take();
    }

    void recordToDrive() { model.setRecordMode(SsdTabModel::MODE_TO_DISK); }
    void forgetTheName()
    {
        model.setFilename({});
        log.take();
    }

    /// Shows that the camera asks for a download, as a poll does. Returns the calls of the GUI thread.
    QStringList ask()
    {
        SsdTabModel::SsdUIState input;
        model.GetUIState(input);
        SsdTabModel::SsdUpdateState update;
        update.sequence = input.sequence;
        update.state = uint8_t{SsdTabModel::REQUEST_AUTO_DOWNLOAD};
        return callsOf([&] { model.UpdateUI(update); });
    }
    /// The same, and waits for the end of the download. Returns the calls of the download.
    QStringList askAndDownload()
    {
        return downloadOf([this] { ask(); });
    }

    void createFile(const QString &name) const { QVERIFY(QFile(path(name)).open(QIODevice::WriteOnly)); }
};

} // namespace

/// The download that the camera asks for by its state.
class tst_SsdTabModelAutoDownload : public Test
{
    Q_OBJECT

private slots:
    void downloadsTheMemory();
    void downloadsTheNewestMovie();
    void driveWithoutMoviesDownloadsTheMemory();
    void signalsInOrder();
    void pollsStartIt();
    void askedOnceWhileItRuns();

    void failedStartIsTriedAgain();
    void failedCountEndsTheStart_data();
    void failedCountEndsTheStart();
    void emptyNameIsReadWithoutASignal();
    void longNameIsReadToItsEnd();
    void unreadableNameEndsTheStart();

    void existingFilesAreKept();
    void nameIsNotAFormat();
    void fileIsReplacedIfTheNameEndsTheUrl();
    void nameMayLeaveTheFolder();
    void folderThatIsNoFile();

    void failuresAreDoneToo_data();
    void failuresAreDoneToo();
    void requestDuringADownload();
    void deletionReportsTheEnd();
};

void tst_SsdTabModelAutoDownload::downloadsTheMemory()
{
    AutoDownload rig;
    const size_t mark = rig.gate().mark();
    QCOMPARE(rig.ask(), QStringList(startCall));
    QVERIFY(rig.model.downloading());
    QVERIFY(rig.finish());
    QCOMPARE(rig.calls(mark, false), QStringList({rig.transfer("Shot-1.rqs"), doneCall}));
    QVERIFY(rig.model.downloadOk());
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
    QCOMPARE(rig.askAndDownload(), QStringList({rig.transfer("Shot-2.rqs"), doneCall}));
}

void tst_SsdTabModelAutoDownload::downloadsTheNewestMovie()
{
    AutoDownload rig;
    rig.recordToDrive();
    const size_t mark = rig.gate().mark();
    QCOMPARE(rig.ask(), QStringList({startCall, countCall}));
    QVERIFY(rig.finish());
    QCOMPARE(
        rig.calls(mark, false),
        QStringList({"zvtSsdLoadMovie 4", rig.transfer("Shot-1.rqs"), "zvtSsdStopBuffer", "zvtSsdUnload", doneCall}));
}

// The number before the first movie is that of the memory.
void tst_SsdTabModelAutoDownload::driveWithoutMoviesDownloadsTheMemory()
{
    AutoDownload rig;
    rig.recordToDrive();
    rig.gate().script(countCall.toStdString(), 0U);
    QCOMPARE(rig.askAndDownload(), QStringList({rig.transfer("Shot-1.rqs"), doneCall}));
}

void tst_SsdTabModelAutoDownload::signalsInOrder()
{
    AutoDownload rig;
    rig.ask();
    QCOMPARE(rig.log.take(),
             QStringList({"canInteractChanged", "stateChanged", "autoDownloadCountChanged", "progressChanged",
                          "downloadingChanged"}));
    QVERIFY(rig.finish());
    QCOMPARE(rig.log.take(), QStringList("downloadingChanged"));
}

void tst_SsdTabModelAutoDownload::pollsStartIt()
{
    AutoDownload rig;
    const size_t mark = rig.gate().mark();
    for (int number = 1; number <= 2; ++number) {
        rig.setCameraState(SsdTabModel::REQUEST_AUTO_DOWNLOAD);
        // Once from the timer, once after a command.
        if (number == 1)
            rig.poll();
        else
            rig.model.stopRecording();
        QVERIFY(rig.finish());
        rig.enter(SsdTabModel::COMPLETE);
    }
    QCOMPARE(rig.calls(mark, true), QStringList({startCall, "zvtSsdRecordStop", "zvtGetSsdState", startCall}));
    QCOMPARE(rig.calls(mark, false).filter(transferCall),
             QStringList({rig.transfer("Shot-1.rqs"), rig.transfer("Shot-2.rqs")}));
}

// Polls that began before it arrive later.
void tst_SsdTabModelAutoDownload::askedOnceWhileItRuns()
{
    AutoDownload rig;
    rig.gate().hold(transferCall.toStdString());
    rig.ask();
    QVERIFY(rig.gate().waitHeld(transferCall.toStdString()));
    QCOMPARE(rig.ask(), QStringList());
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.ask(), QStringList(startCall));
    QVERIFY(rig.finish());
}

// Starts that fail

void tst_SsdTabModelAutoDownload::failedStartIsTriedAgain()
{
    AutoDownload rig;
    rig.gate().failAlways(startCall.toStdString());
    rig.setCameraState(SsdTabModel::REQUEST_AUTO_DOWNLOAD);
    for (int poll = 0; poll < 3; ++poll) {
        QCOMPARE(rig.callsOf([&] { rig.poll(); }), QStringList(startCall));
        QVERIFY(!rig.model.downloading());
        QCOMPARE(rig.model.autoDownloadCount(), 1U);
        QVERIFY(!rig.log.take().contains("downloadingChanged"));
    }
    rig.gate().failNoLonger(startCall.toStdString());
    rig.poll();
    QVERIFY(rig.finish());
    QVERIFY(rig.model.downloadOk());
}

void tst_SsdTabModelAutoDownload::failedCountEndsTheStart_data()
{
    QTest::addColumn<bool>("named");
    QTest::newRow("with a name") << true;
    QTest::newRow("without a name") << false;
}

// An empty name is read and kept before the start ends.
void tst_SsdTabModelAutoDownload::failedCountEndsTheStart()
{
    QFETCH(const bool, named);
    AutoDownload rig;
    rig.recordToDrive();
    if (!named)
        rig.forgetTheName();
    rig.gate().failNext(countCall.toStdString());
    QCOMPARE(rig.ask(), named ? QStringList({startCall, countCall}) : QStringList({startCall, countCall, nameCall}));
    QVERIFY(!rig.model.downloading());
    QCOMPARE(rig.model.filename(), "Shot");
    QCOMPARE(rig.model.autoDownloadCount(), 1U);
    QCOMPARE(rig.ask(), QStringList({startCall, countCall}));
    QVERIFY(rig.finish());
}

void tst_SsdTabModelAutoDownload::emptyNameIsReadWithoutASignal()
{
    AutoDownload rig;
    rig.forgetTheName();
    rig.gate().script("zvtGetSsdSaveName", QString::fromUtf8("Größe"));
    const size_t mark = rig.gate().mark();
    QCOMPARE(rig.ask(), QStringList({startCall, nameCall}));
    QVERIFY(!rig.log.take().contains("filenameChanged"));
    QCOMPARE(rig.model.filename(), QString::fromUtf8("Größe"));
    QVERIFY(rig.finish());
    QCOMPARE(rig.calls(mark, false).value(0), rig.transfer(QString::fromUtf8("Größe-1.rqs")));
}

void tst_SsdTabModelAutoDownload::longNameIsReadToItsEnd()
{
    AutoDownload rig;
    rig.forgetTheName();
    rig.gate().script("zvtGetSsdSaveName", QString(300, u'x'));
    rig.gate().fillBuffers(true);
    rig.ask();
    QCOMPARE(rig.model.filename(), QString(128, u'x'));
    QVERIFY(rig.finish());
}

void tst_SsdTabModelAutoDownload::unreadableNameEndsTheStart()
{
    AutoDownload rig;
    rig.forgetTheName();
    rig.gate().failNext("zvtGetSsdSaveName");
    QCOMPARE(rig.ask(), QStringList({startCall, nameCall}));
    QVERIFY(!rig.model.downloading());
    QCOMPARE(rig.model.filename(), QString());
    QCOMPARE(rig.model.autoDownloadCount(), 1U);
}

// The file

void tst_SsdTabModelAutoDownload::existingFilesAreKept()
{
    AutoDownload rig;
    rig.createFile("Shot-1.rqs");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("Shot-1 (1).rqs"));
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
    rig.model.setAutoDownloadCount(1);
    rig.createFile("Shot-1 (1).rqs");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("Shot-1 (2).rqs"));
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
}

void tst_SsdTabModelAutoDownload::nameIsNotAFormat()
{
    AutoDownload rig;
    rig.model.setFilename("a%4b %3 c");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("a%4b %3 c-1.rqs"));
}

// A number after the "#" does not reach the path: no other number would find a free name.
void tst_SsdTabModelAutoDownload::fileIsReplacedIfTheNameEndsTheUrl()
{
    AutoDownload rig;
    rig.model.setFilename("a#b");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("a"));
    rig.createFile("a");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("a"));
}

void tst_SsdTabModelAutoDownload::nameMayLeaveTheFolder()
{
    AutoDownload rig;
    rig.model.setFilename("../up/a");
    QCOMPARE(rig.askAndDownload().value(0), rig.transfer("../up/a-1.rqs"));
}

void tst_SsdTabModelAutoDownload::folderThatIsNoFile()
{
    AutoDownload rig;
    rig.model.setAutoDownloadDirectoryUrl("nowhere");
    QCOMPARE(rig.askAndDownload().value(0), transferCall + " \"\", delegate, 0, 4294967295");
}

// The end

void tst_SsdTabModelAutoDownload::failuresAreDoneToo_data()
{
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("zvtSsdLoadMovie") << QStringList{"zvtSsdLoadMovie 4", doneCall};
    QTest::newRow("controller.DownloadMovie")
        << QStringList{"zvtSsdLoadMovie 4", transferCall, "zvtSsdStopBuffer", "zvtSsdUnload", doneCall};
}

// The number in the name of the next file goes up all the same.
void tst_SsdTabModelAutoDownload::failuresAreDoneToo()
{
    QFETCH(QStringList, calls);
    AutoDownload rig;
    rig.recordToDrive();
    rig.gate().failNext(QTest::currentDataTag());
    calls.replaceInStrings(transferCall, rig.transfer("Shot-1.rqs"));
    QCOMPARE(rig.askAndDownload(), calls);
    QVERIFY(!rig.model.downloadOk());
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
}

// A poll in flight when the operator starts a download. The camera gets its start but no end, and is asked again after
// the download if it still waits.
void tst_SsdTabModelAutoDownload::requestDuringADownload()
{
    AutoDownload rig;
    QVERIFY(rig.holdDownload());
    QCOMPARE(rig.ask(), QStringList(startCall));
    QCOMPARE(rig.model.autoDownloadCount(), 2U);
    CameraRig::settle();
    QCOMPARE(rig.workers(), 1);
    QCOMPARE(rig.ask(), QStringList());
    const size_t mark = rig.gate().mark();
    QVERIFY(rig.releaseDownload());
    QCOMPARE(rig.calls(mark, false), QStringList());
    QCOMPARE(rig.askAndDownload(), QStringList({rig.transfer("Shot-2.rqs"), doneCall}));
}

void tst_SsdTabModelAutoDownload::deletionReportsTheEnd()
{
    DownloadRig rig;
    auto model = std::make_unique<SsdTabModel>(&rig.root);
    const size_t mark = rig.gate().mark();
    SsdTabModel::SsdUpdateState update;
    update.state = uint8_t{SsdTabModel::REQUEST_AUTO_DOWNLOAD};
    model->setFilename("Shot");
    model->UpdateUI(update);
    QVERIFY(model->downloading());
    model.reset();
    QCOMPARE(rig.calls(mark, false).last(), doneCall);
}

ZVT_TEST(tst_SsdTabModelAutoDownload)
#include "tst_SsdTabModelAutoDownload.moc"
