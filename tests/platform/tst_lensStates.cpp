#include "tests/platform/LensRig.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>

#include <future>

using emulator::Clock;

class tst_lensStates : public Test
{
    Q_OBJECT

private slots:
    void areListedByName();
    void tellWhenTheyWereWritten();
    void moveTheLens();
    void moveTheTurret();
    void keepAZoomThatHasCoasted();
    void savingGoesOverAStateOfThatName();
    void areRenamedAndDeleted();
    void refuseImpossibleNames_data();
    void refuseImpossibleNames();
    void takeUnusualNames_data();
    void takeUnusualNames();
    void refuseFilesThatAreNoStates_data();
    void refuseFilesThatAreNoStates();
    void manualModeRefusesThemAll();
    void outliveTheCameraAndNotItsSettings();
    void disconnectionEndsALoad();
    void aLensThatIsSentElsewhereFailsTheLoad();
    void aFolderThatIsGoneFails();

private:
    static QStringList names(uint64_t handle)
    {
        hlx::TArray<zvtSDirEntry> entries{zvtSDirEntry()};
        if (zvtListLensStates(handle, &entries) != 0)
            return {QStringLiteral("failed")};
        QStringList result;
        for (const auto &entry : entries)
            result << QString::fromUtf8(entry.name.c_str());
        return result;
    }

    static QString path(LensRig &rig, const QString &name)
    {
        return QStringLiteral("%1/lens/%2.lens").arg(rig.camera().folder(), name);
    }

    static void place(LensRig &rig, uint32_t zoom, uint32_t focus)
    {
        QCOMPARE(zvtSetFOVPos(rig.handle(), zoom), 0);
        QCOMPARE(zvtSetFocusPos(rig.handle(), focus), 0);
    }
};

void tst_lensStates::areListedByName()
{
    LensRig rig;
    QCOMPARE(names(rig.handle()), QStringList());
    for (const auto *name : {"near", "far", "In between"})
        QCOMPARE(zvtSaveLensStateAs(rig.handle(), name), 0);
    // Other files in the folder are not states.
    QVERIFY(QFile::copy(path(rig, QStringLiteral("near")), rig.camera().folder() + QStringLiteral("/lens/other.txt")));
    const QStringList listed{QStringLiteral("In between"), QStringLiteral("far"), QStringLiteral("near")};
    QCOMPARE(names(rig.handle()), listed);
    // Saving a state again does not change the order.
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "near"), 0);
    QCOMPARE(names(rig.handle()), listed);
}

void tst_lensStates::tellWhenTheyWereWritten()
{
    LensRig rig;
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QFile file(path(rig, QStringLiteral("one")));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime(QDate(1970, 1, 1), QTime(0, 0, 1), Qt::UTC), QFile::FileModificationTime));
    file.close();
    hlx::TArray<zvtSDirEntry> entries;
    QCOMPARE(zvtListLensStates(rig.handle(), &entries), 0);
    QCOMPARE(entries.size(), size_t(1));
    QCOMPARE(entries[0].time100ns, uint64_t(116'444'736'010'000'000));
    QCOMPARE(qint64(entries[0].size), file.size());
}

void tst_lensStates::moveTheLens()
{
    LensRig rig;
    place(rig, 5000, 2000);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    place(rig, 9500, 9000);
    const auto before = Clock::now();
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), 0);
    QCOMPARE(rig.zoom(), 5000U);
    QCOMPARE(rig.focus(), 2000U);
    // Zoom and focus move at the same time.
    QVERIFY(Clock::now() - before >= 1000 && Clock::now() - before < 2000);
}

void tst_lensStates::moveTheTurret()
{
    LensRig rig("discrete-fov");
    QCOMPARE(zvtSetFOV(rig.handle(), 1), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 4000), 0);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "wide"), 0);
    QCOMPARE(zvtSetFOV(rig.handle(), 0), 0);
    QCOMPARE(zvtSetFocusPos(rig.handle(), 10'000), 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), "wide"), 0);
    QCOMPARE(rig.field(), uint8_t(1));
    QCOMPARE(rig.focus(), 4000U);
}

void tst_lensStates::keepAZoomThatHasCoasted()
{
    LensRig rig;
    zvtFOVMove(rig.handle(), 3);
    LensRig::finishMoves();
    QVERIFY(rig.zoom() > 9500);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "narrow"), 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), "narrow"), 0);
    QCOMPARE(rig.zoom(), 9500U);
}

void tst_lensStates::savingGoesOverAStateOfThatName()
{
    LensRig rig;
    place(rig, 5000, 2000);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    place(rig, 6000, 3000);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("one")});
    place(rig, 500, 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), 0);
    QCOMPARE(rig.zoom(), 6000U);
    QCOMPARE(rig.focus(), 3000U);
}

void tst_lensStates::areRenamedAndDeleted()
{
    LensRig rig;
    const auto refused = int(emulator::Refused);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "two"), 0);
    QCOMPARE(zvtRenameLensState(rig.handle(), "one", "two"), refused);
    QCOMPARE(zvtRenameLensState(rig.handle(), "one", "one"), refused);
    QCOMPARE(zvtRenameLensState(rig.handle(), "none", "three"), refused);
    QCOMPARE(names(rig.handle()), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    QCOMPARE(zvtRenameLensState(rig.handle(), "one", "ONE"), 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), refused);
    QCOMPARE(zvtLoadLensState(rig.handle(), "ONE"), 0);
    QCOMPARE(zvtDeleteLensState(rig.handle(), "ONE"), 0);
    QCOMPARE(zvtDeleteLensState(rig.handle(), "ONE"), refused);
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("two")});
}

void tst_lensStates::refuseImpossibleNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a blank first") << QByteArray(" one");
    QTest::newRow("a tab first") << QByteArray("\tone");
    QTest::newRow("out of the folder") << QByteArray("../one");
    QTest::newRow("into another") << QByteArray("a/one");
    QTest::newRow("another system's") << QByteArray("a\\one");
    QTest::newRow("a star") << QByteArray("one*");
    QTest::newRow("too long") << QByteArray(200, 'x');
    QTest::newRow("no UTF-8") << QByteArray("\xff\xfe");
}

void tst_lensStates::refuseImpossibleNames()
{
    QFETCH(QByteArray, name);
    LensRig rig;
    const auto refused = int(emulator::Refused);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), name.constData()), refused);
    QCOMPARE(zvtLoadLensState(rig.handle(), name.constData()), refused);
    QCOMPARE(zvtRenameLensState(rig.handle(), "one", name.constData()), refused);
    QCOMPARE(zvtRenameLensState(rig.handle(), name.constData(), "two"), refused);
    QCOMPARE(zvtDeleteLensState(rig.handle(), name.constData()), refused);
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("one")});
    QCOMPARE(QDir(rig.camera().folder()).entryList(QDir::Files), QStringList());
}

void tst_lensStates::takeUnusualNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks inside") << QStringLiteral("a b  c");
    QTest::newRow("umlauts") << QStringLiteral("Äöü ß €");
    QTest::newRow("dots") << QStringLiteral("..");
    QTest::newRow("the suffix") << QStringLiteral("x.lens");
    QTest::newRow("longest") << QString(199, QLatin1Char('x'));
}

void tst_lensStates::takeUnusualNames()
{
    QFETCH(QString, name);
    LensRig rig;
    place(rig, 5000, 2000);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), name.toUtf8().constData()), 0);
    QCOMPARE(names(rig.handle()), QStringList{name});
    place(rig, 500, 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), name.toUtf8().constData()), 0);
    QCOMPARE(rig.zoom(), 5000U);
    QCOMPARE(zvtRenameLensState(rig.handle(), name.toUtf8().constData(), "plain"), 0);
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("plain")});
}

void tst_lensStates::refuseFilesThatAreNoStates_data()
{
    QTest::addColumn<QByteArray>("content");
    const auto file = [](const char *magic, int version, const char *values) {
        return QByteArray(R"({"magic": ")") + magic + R"(", "version": )" + QByteArray::number(version)
            + R"(, "values": )" + values + "}";
    };
    const char *magic = "zvt-emulated-lens-state";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut short") << file(magic, 1, R"({"zoom": 5000, "focus": 20)").chopped(1);
    QTest::newRow("other magic") << file("zvt-emulated-camera", 1, R"({"zoom": 5000, "focus": 2000})");
    QTest::newRow("other version") << file(magic, 2, R"({"zoom": 5000, "focus": 2000})");
    QTest::newRow("no zoom") << file(magic, 1, R"({"focus": 2000})");
    QTest::newRow("no focus") << file(magic, 1, R"({"zoom": 5000})");
    QTest::newRow("zoom out of range") << file(magic, 1, R"({"zoom": 100, "focus": 2000})");
    QTest::newRow("focus out of range") << file(magic, 1, R"({"zoom": 5000, "focus": 10001})");
    QTest::newRow("broken count") << file(magic, 1, R"({"zoom": 5000.5, "focus": 2000})");
    QTest::newRow("text") << file(magic, 1, R"({"zoom": "5000", "focus": 2000})");
}

void tst_lensStates::refuseFilesThatAreNoStates()
{
    QFETCH(QByteArray, content);
    LensRig rig;
    QFile file(path(rig, QStringLiteral("one")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), int(emulator::Refused));
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 500U);
    QCOMPARE(rig.focus(), 6000U);
    // The state is in the list, can be replaced, and can then be loaded.
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("one")});
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), 0);
}

void tst_lensStates::manualModeRefusesThemAll()
{
    LensRig rig;
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(zvtFOVMax(rig.handle()), 0);
    QVERIFY(rig.set("focus.manual", true));
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), int(emulator::Refused));
    LensRig::finishMoves();
    QCOMPARE(rig.zoom(), 9500U);
}

void tst_lensStates::outliveTheCameraAndNotItsSettings()
{
    LensRig rig;
    const QJsonObject before = rig.camera().snapshot();
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), 0);
    QCOMPARE(rig.camera().snapshot(), before);
    rig.camera().restore(before);
    rig.open("everything");
    QCOMPARE(names(rig.handle()), QStringList{QStringLiteral("one")});
}

void tst_lensStates::disconnectionEndsALoad()
{
    LensRig rig(LensRig::slow);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "wide"), 0);
    place(rig, 9500, 0);
    Clock::automatic();
    auto loading = std::async(std::launch::async, [&] { return zvtLoadLensState(rig.handle(), "wide"); });
    QTRY_VERIFY(rig.zoom() < 9500);
    rig.camera().disconnect();
    QCOMPARE(loading.get(), int(emulator::NotConnected));
    rig.camera().connect();
    QVERIFY(rig.zoom() > 500);
}

void tst_lensStates::aLensThatIsSentElsewhereFailsTheLoad()
{
    LensRig rig(LensRig::slow);
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "wide"), 0);
    place(rig, 600, 0);
    Clock::automatic();
    // The load waits for the zoom first. Meanwhile another command moves the focus.
    auto loading = std::async(std::launch::async, [&] { return zvtLoadLensState(rig.handle(), "wide"); });
    QTRY_VERIFY(rig.zoom() < 600);
    QCOMPARE(zvtFocusMoveTo(rig.handle(), 50), 0);
    QCOMPARE(loading.get(), int(emulator::Refused));
}

void tst_lensStates::aFolderThatIsGoneFails()
{
    LensRig rig;
    QVERIFY(QDir(rig.camera().folder() + QStringLiteral("/lens")).removeRecursively());
    QCOMPARE(zvtSaveLensStateAs(rig.handle(), "one"), int(emulator::Refused));
    QCOMPARE(zvtLoadLensState(rig.handle(), "one"), int(emulator::Refused));
    QCOMPARE(names(rig.handle()), QStringList());
}

ZVT_TEST(tst_lensStates)
#include "tst_lensStates.moc"
