#include "tests/platform/StateFixture.h"
#include "tests/platform/settingOf.h"

#include <QDir>

using namespace emulator;

/// The files that are transferred to the camera and from it, and their use on the camera.
class tst_stateFiles : public StateFixture
{
    Q_OBJECT

private slots:
    void init()
    {
        StateFixture::init();
        QCOMPARE(zvtSaveStateAs(m_handle, "night"), 0);
    }
    void cleanup() { StateFixture::cleanup(); }

    void namesAStateLikeItsFile_data();
    void namesAStateLikeItsFile();
    void refusesAFileOfAnInvalidName_data();
    void refusesAFileOfAnInvalidName();
    void refusesToTakeWhatIsUnsound_data() { addUnsoundContents(); }
    void refusesToTakeWhatIsUnsound();
    void refusesToTakeAnEndlessFile();
    void refusesToTakeTooLargeAFile();
    void givesNoDamagedState();
    void refusesToGiveWhatIsNotThere_data();
    void refusesToGiveWhatIsNotThere();
    void givesAStateThatIsDeletedMeanwhile();
    void aStateTravelsToAnotherCamera();
    void aNewCameraGivesItsFactoryDefault();
    void theFactoryDefaultTravels();
    void givesAnyFileOfItsOwn_data();
    void givesAnyFileOfItsOwn();
    void givesAnEmptyFileWithoutProgress();
    void refusesPathsThatLeadOut_data();
    void refusesPathsThatLeadOut();
    void refusesImpossibleSpeeds_data();
    void refusesImpossibleSpeeds();

private:
    int upload(const QString &file) { return zvtUploadStateStd(m_handle, qPrintable(file), nullptr); }
    int download(const char *name, const QString &file)
    {
        return zvtDownloadStateStd(m_handle, name, qPrintable(file), nullptr);
    }
    QString local(const QString &name) const { return m_folder->filePath(name); }
};

void tst_stateFiles::namesAStateLikeItsFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "day.qsf"
                           << "day";
    QTest::newRow("two extensions") << "day.v2.qsf"
                                    << "day.v2";
    QTest::newRow("other extension") << "day.txt"
                                     << "day";
    QTest::newRow("no extension") << "day"
                                  << "day";
    QTest::newRow("umlauts") << "Größe.qsf"
                             << "Größe";
    QTest::newRow("special in another case") << "hard defaults.qsf"
                                             << "hard defaults";
}

void tst_stateFiles::namesAStateLikeItsFile()
{
    QFETCH(QString, file);
    QFETCH(QString, name);
    write(local(file), otherState());
    QCOMPARE(upload(local(file)), 0);
    QCOMPARE(names().size(), 2);
    QCOMPARE(zvtStateExists(m_handle, qPrintable(name)), 0);
    QCOMPARE(contentOf(stateFile(name)), otherState());
}

void tst_stateFiles::refusesAFileOfAnInvalidName_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("nothing but an extension") << ".qsf";
    QTest::newRow("blank") << " .qsf";
    QTest::newRow("leading blank") << " day.qsf";
    QTest::newRow("forbidden character") << "a:b.qsf";
    QTest::newRow("backslash") << "a\\b.qsf";
    QTest::newRow("too long") << QString(200, u'x') + ".qsf";
    QTest::newRow("factory default") << "Factory Defaults.qsf";
    QTest::newRow("hard defaults") << "Hard Defaults.qsf";
}

void tst_stateFiles::refusesAFileOfAnInvalidName()
{
    QFETCH(QString, file);
    write(local(file), otherState());
    QCOMPARE(upload(local(file)), int(Refused));
    QCOMPARE(names(), QStringList{QStringLiteral("night")});
    QVERIFY(!QFile::exists(m_camera->folder() + "/factory.qsf"));
}

void tst_stateFiles::refusesToTakeWhatIsUnsound()
{
    QFETCH(QByteArray, content);
    const QByteArray before = contentOf(stateFile(QStringLiteral("night")));
    write(local(QStringLiteral("night.qsf")), content);
    write(local(QStringLiteral("day.qsf")), content);
    QCOMPARE(upload(local(QStringLiteral("night.qsf"))), int(Refused));
    QCOMPARE(upload(local(QStringLiteral("day.qsf"))), int(Refused));
    QCOMPARE(zvtUploadFactoryDefaultStateStd(m_handle, qPrintable(local(QStringLiteral("day.qsf"))), {}), int(Refused));
    QCOMPARE(contentOf(stateFile(QStringLiteral("night"))), before);
    QCOMPARE(names(), QStringList{QStringLiteral("night")});
    QVERIFY(!QFile::exists(m_camera->folder() + "/factory.qsf"));
}

void tst_stateFiles::refusesToTakeAnEndlessFile()
{
    QVERIFY(QFile::link(QStringLiteral("/dev/zero"), local(QStringLiteral("day.qsf"))));
    QCOMPARE(upload(local(QStringLiteral("day.qsf"))), int(Refused));
}

void tst_stateFiles::refusesToTakeTooLargeAFile()
{
    QFile file(local(QStringLiteral("day.qsf")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(maximumStateFileSize + 1));
    const int64_t before = Clock::now();
    QCOMPARE(upload(file.fileName()), int(Refused));
    QCOMPARE(Clock::now(), before);
}

void tst_stateFiles::givesNoDamagedState()
{
    write(stateFile(QStringLiteral("bad")), otherState().chopped(1));
    QCOMPARE(download("bad", local(QStringLiteral("bad.qsf"))), int(Refused));
    QVERIFY(!QFile::exists(local(QStringLiteral("bad.qsf"))));
}

void tst_stateFiles::refusesToGiveWhatIsNotThere_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name :
         {"", "missing", "NIGHT", "night.qsf", "../states/night", "Factory Defaults", "Hard Defaults"})
        QTest::addRow("\"%s\"", name) << QByteArray(name);
}

void tst_stateFiles::refusesToGiveWhatIsNotThere()
{
    QFETCH(QByteArray, name);
    write(local(QStringLiteral("x.qsf")), "before");
    QCOMPARE(download(name.constData(), local(QStringLiteral("x.qsf"))), int(Refused));
    QCOMPARE(contentOf(local(QStringLiteral("x.qsf"))), QByteArray("before"));
}

void tst_stateFiles::givesAStateThatIsDeletedMeanwhile()
{
    const QByteArray content = contentOf(stateFile(QStringLiteral("night")));
    auto progress = hlx::delegate<int(unsigned int, unsigned int)>::FromLamda([this](unsigned int, unsigned int) {
        zvtDeleteState(m_handle, "night");
        return 0;
    });
    QCOMPARE(zvtDownloadStateStd(m_handle, "night", qPrintable(local(QStringLiteral("x.qsf"))), &progress), 0);
    QCOMPARE(contentOf(local(QStringLiteral("x.qsf"))), content);
    QCOMPARE(names(), QStringList());
}

void tst_stateFiles::aStateTravelsToAnotherCamera()
{
    QVERIFY(set("cooler.setpoint", 66.0));
    QCOMPARE(zvtSaveState(m_handle), 0);
    const QJsonObject settings = m_camera->snapshot();
    QCOMPARE(download("night", local(QStringLiteral("copy.qsf"))), 0);
    const QString file = local(QStringLiteral("copy.qsf"));

    const QTemporaryDir elsewhere;
    const auto other = Camera::create(QStringLiteral("everything"), elsewhere.path());
    other->connect();
    QCOMPARE(zvtUploadStateStd(other->handle(), qPrintable(file), nullptr), 0);
    QVERIFY(other->otherClient().set(QStringLiteral("states.current"), QStringLiteral("copy")));
    QCOMPARE(other->snapshot(), settings);
}

void tst_stateFiles::aNewCameraGivesItsFactoryDefault()
{
    QCOMPARE(zvtDownloadFactoryDefaultStateStd(m_handle, qPrintable(local(QStringLiteral("f.qsf"))), {}), 0);
    const auto settings = fromStateFile(contentOf(local(QStringLiteral("f.qsf"))), QStringLiteral("everything"));
    QVERIFY(settings);
    QCOMPARE(*settings, m_camera->newSettings());
}

void tst_stateFiles::theFactoryDefaultTravels()
{
    // The name of the local file does not matter here.
    const QString file = local(QStringLiteral("a:b"));
    write(file, otherState());
    QCOMPARE(zvtUploadFactoryDefaultStateStd(m_handle, qPrintable(file), {}), 0);
    QCOMPARE(zvtDownloadFactoryDefaultStateStd(m_handle, qPrintable(local(QStringLiteral("f.qsf"))), {}), 0);
    QCOMPARE(contentOf(local(QStringLiteral("f.qsf"))), otherState());
    QCOMPARE(names(), QStringList{QStringLiteral("night")});
    QVERIFY(set("states.current", QStringLiteral("Factory Defaults")));
    QCOMPARE(settingOf(*m_camera, "cooler.setpoint").toDouble(), 91.0);
}

void tst_stateFiles::givesAnyFileOfItsOwn_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("absolute") << "/Temp/ps0.bpl";
    QTest::newRow("relative") << "Temp/ps0.bpl";
    QTest::newRow("round about") << "/states/../Temp/./ps0.bpl";
}

void tst_stateFiles::givesAnyFileOfItsOwn()
{
    QFETCH(QString, path);
    QVERIFY(QDir(m_camera->folder()).mkpath(QStringLiteral("Temp")));
    const QByteArray content(1'000'000, 'x');
    write(m_camera->folder() + "/Temp/ps0.bpl", content);
    int calls = 0;
    const auto progress = hlx::delegate<int(unsigned int, unsigned int)>::FromLamda(
        [&](unsigned int, unsigned int) { return ++calls, 0; });
    QCOMPARE(zvtDownloadFileStd(m_handle, qPrintable(path), qPrintable(local(QStringLiteral("x"))), progress), 0);
    QCOMPARE(contentOf(local(QStringLiteral("x"))), content);
    QCOMPARE(calls, 50);
}

void tst_stateFiles::givesAnEmptyFileWithoutProgress()
{
    write(m_camera->folder() + "/empty", {});
    const auto progress
        = hlx::delegate<int(unsigned int, unsigned int)>::FromLamda([](unsigned int, unsigned int) { return 1; });
    QCOMPARE(zvtDownloadFileStd(m_handle, "/empty", qPrintable(local(QStringLiteral("x"))), progress), 0);
    QVERIFY(QFile::exists(local(QStringLiteral("x"))));
}

void tst_stateFiles::refusesPathsThatLeadOut_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << "/nobody";
    QTest::newRow("empty") << "";
    QTest::newRow("the camera itself") << "/";
    QTest::newRow("folder") << "/states";
    QTest::newRow("above") << "../secret";
    QTest::newRow("above from the root") << "/../secret";
    QTest::newRow("above from below") << "/states/../../secret";
    QTest::newRow("neighbour of the same beginning") << "/../everything2/secret";
    QTest::newRow("link to a file") << "/link";
    QTest::newRow("link to a folder") << "/up/secret";
}

void tst_stateFiles::refusesPathsThatLeadOut()
{
    QFETCH(QString, path);
    const QString cameras = QFileInfo(m_camera->folder()).path();
    write(cameras + "/secret", "secret");
    QVERIFY(QDir(cameras).mkdir(QStringLiteral("everything2")));
    write(cameras + "/everything2/secret", "secret");
    QVERIFY(QFile::link(cameras + "/secret", m_camera->folder() + "/link"));
    QVERIFY(QFile::link(cameras, m_camera->folder() + "/up"));
    QCOMPARE(zvtDownloadFileStd(m_handle, qPrintable(path), qPrintable(local(QStringLiteral("x"))), {}), int(Refused));
    QVERIFY(!QFile::exists(local(QStringLiteral("x"))));
}

void tst_stateFiles::refusesImpossibleSpeeds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("none") << "transfers.bytesPerSecond" << QVariant(0);
    QTest::newRow("too slow to end") << "transfers.bytesPerSecond" << QVariant(999);
    QTest::newRow("backwards") << "transfers.bytesPerSecond" << QVariant(-5000);
    QTest::newRow("no number") << "transfers.bytesPerSecond" << QVariant(QStringLiteral("fast"));
    QTest::newRow("other setting") << "transfers.colour" << QVariant(5000);
}

void tst_stateFiles::refusesImpossibleSpeeds()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QVERIFY(!set(qPrintable(name), value));
}

ZVT_TEST(tst_stateFiles)
#include "tst_stateFiles.moc"
