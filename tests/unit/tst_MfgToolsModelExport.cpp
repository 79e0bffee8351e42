#include "tests/support/Test.h"
#include "tests/unit/BadPixelExportRig.h"

#include <algorithm>

namespace
{

using Places = BadPixelExportRig::Places;

QStringList presetCalls(int preset)
{
    return {QStringLiteral("zvtSaveBadPixelList %1, \"/Temp/ps%1.bpl\"").arg(preset),
            QStringLiteral("zvtDownloadFileStd \"/Temp/ps%1.bpl\", \"LOCAL/ps%1.bpl\", delegate").arg(preset)};
}

const QStringList callsOfAllPresets = presetCalls(0) + presetCalls(1) + presetCalls(2) + presetCalls(3);
const QStringList factoryCalls{
    "zvtDownloadFileStd \"/flashfs/system/factoryConfig/factory.bpl\", \"LOCAL/factory.bpl\", delegate"};

/// The text of a list of 8 x 4 pixels with one bad pixel.
QByteArray textOf(const char *pixel)
{
    return "Width:  8\r\nHeight: 4\r\nCount:  1\r\n   X,   Y\r\n" + QByteArray(pixel) + "\r\n";
}

/// The summary of the lists of all presets of BadPixelExportRig::putAll().
QByteArray summaryOfAllPresets()
{
    return "**** Preset 0 ****\r\n" + textOf("   0,   1") + "**** Preset 1 ****\r\n" + textOf("   1,   1")
        + "**** Preset 2 ****\r\n" + textOf("   2,   1") + "**** Preset 3 ****\r\n" + textOf("   3,   1");
}

const QStringList filesOfAllPresets{"ps0.bpl", "ps0.bpl.png", "ps0.bpl.txt", "ps1.bpl", "ps1.bpl.png", "ps1.bpl.txt",
                                    "ps2.bpl", "ps2.bpl.png", "ps2.bpl.txt", "ps3.bpl", "ps3.bpl.png", "ps3.bpl.txt"};

} // namespace

/// The export of bad pixels into a folder: its calls, its texts byte for byte, and its pictures pixel for pixel.
class tst_MfgToolsModelExport : public Test
{
    Q_OBJECT

private slots:
    void indexSelectsTheLists_data();
    void indexSelectsTheLists();
    void otherIndicesExportNothing_data();
    void otherIndicesExportNothing();
    void folderThatIsNotLocalGetsNoFiles_data();
    void folderThatIsNotLocalGetsNoFiles();

    void textOfOneList();
    void summaryHasAllLists();
    void wideCoordinatesKeepTheirDigits();
    void listWithoutPixels();
    void fileIsThatOfTheCamera();
    void existingFilesAreReplaced();
    void folderMayHaveAnyName();

    void pixelIsMarkedTwoByTwo();
    void marksAreCutAtTheEdge();
    void imageWithoutPixelsEndsTheExport_data();
    void imageWithoutPixelsEndsTheExport();

    void summaryThatCannotBeOpenedEndsTheExport_data();
    void summaryThatCannotBeOpenedEndsTheExport();
    void failedListEndsTheExport_data();
    void failedListEndsTheExport();
    void failedFactoryListEndsTheExport_data();
    void failedFactoryListEndsTheExport();
    void textThatCannotBeOpenedIsLeftOut();
    void disconnectedCamera();
};

// Lists

void tst_MfgToolsModelExport::indexSelectsTheLists_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("first preset") << 0 << presetCalls(0);
    QTest::newRow("second preset") << 1 << presetCalls(1);
    QTest::newRow("third preset") << 2 << presetCalls(2);
    QTest::newRow("fourth preset") << 3 << presetCalls(3);
    QTest::newRow("all presets") << 4 << callsOfAllPresets;
    QTest::newRow("factory") << 5 << factoryCalls;
    QTest::newRow("everything") << 6 << callsOfAllPresets + factoryCalls;
}

void tst_MfgToolsModelExport::indexSelectsTheLists()
{
    QFETCH(const int, index);
    QFETCH(const QStringList, calls);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    QCOMPARE(tools.exportLists(index), calls);
    // Three files for each list, and the summary.
    const qsizetype lists = std::count_if(calls.cbegin(), calls.cend(),
                                          [](const QString &call) { return call.startsWith("zvtDownload"); });
    QCOMPARE(tools.localFiles().size(), 3 * lists + 1);
    QCOMPARE(tools.content("bpl.txt").count("****"), 2 * lists);
}

void tst_MfgToolsModelExport::otherIndicesExportNothing_data()
{
    QTest::addColumn<int>("index");
    for (const int index : {7, 1000, -1})
        QTest::addRow("%d", index) << index;
}

void tst_MfgToolsModelExport::otherIndicesExportNothing()
{
    QFETCH(const int, index);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    QCOMPARE(tools.exportLists(index), QStringList());
    QCOMPARE(tools.localFiles(), QStringList());
}

void tst_MfgToolsModelExport::folderThatIsNotLocalGetsNoFiles_data()
{
    QTest::addColumn<QUrl>("folder");
    QTest::newRow("empty") << QUrl();
    QTest::newRow("remote") << QUrl("https://example.com/folder");
}

// The working directory would get them.
void tst_MfgToolsModelExport::folderThatIsNotLocalGetsNoFiles()
{
    QFETCH(QUrl, folder);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    QCOMPARE(tools.callsOf([&] { tools.model.saveBplForSelectedIndexAction(folder); }), QStringList());
    QVERIFY(!QFile::exists(QStringLiteral("bpl.txt")));
}

// Files

void tst_MfgToolsModelExport::textOfOneList()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putPreset(0, {640, 512, {{12, 34}, {600, 500}}}));
    tools.exportLists(0);
    const QByteArray text = "Width:  640\r\n"
                            "Height: 512\r\n"
                            "Count:  2\r\n"
                            "   X,   Y\r\n"
                            "  12,  34\r\n"
                            " 600, 500\r\n";
    QCOMPARE(tools.localFiles(), QStringList({"bpl.txt", "ps0.bpl", "ps0.bpl.png", "ps0.bpl.txt"}));
    QCOMPARE(tools.content("ps0.bpl.txt"), text);
    QCOMPARE(tools.content("bpl.txt"), "**** Preset 0 ****\r\n" + text);
}

void tst_MfgToolsModelExport::summaryHasAllLists()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    tools.exportLists(6);
    QCOMPARE(tools.content("bpl.txt"), summaryOfAllPresets() + "**** Factory ****\r\n" + textOf("   7,   3"));
    QCOMPARE(tools.content("ps3.bpl.txt"), textOf("   3,   1"));
    QCOMPARE(tools.content("factory.bpl.txt"), textOf("   7,   3"));
    QCOMPARE(tools.localFiles(),
             QStringList({"bpl.txt", "factory.bpl", "factory.bpl.png", "factory.bpl.txt"}) + filesOfAllPresets);
}

void tst_MfgToolsModelExport::wideCoordinatesKeepTheirDigits()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putPreset(0, {16384, 1, {{9999, 0}, {16383, 0}}}));
    tools.exportLists(0);
    QCOMPARE(tools.content("ps0.bpl.txt"),
             "Width:  16384\r\nHeight: 1\r\nCount:  2\r\n   X,   Y\r\n9999,   0\r\n16383,   0\r\n");
}

void tst_MfgToolsModelExport::listWithoutPixels()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putPreset(2, {16, 12, {}}));
    tools.exportLists(2);
    const QByteArray text = "Width:  16\r\nHeight: 12\r\nCount:  0\r\n   X,   Y\r\n";
    QCOMPARE(tools.content("ps2.bpl.txt"), text);
    QCOMPARE(tools.content("bpl.txt"), "**** Preset 2 ****\r\n" + text);
    QCOMPARE(QImage(tools.local("ps2.bpl.png")).size(), QSize(16, 12));
    QVERIFY(tools.whitePixels("ps2.bpl.png").empty());
}

void tst_MfgToolsModelExport::fileIsThatOfTheCamera()
{
    BadPixelExportRig tools;
    const BadPixelExportRig::List list{640, 512, {{12, 34}, {600, 500}}};
    QVERIFY(tools.putPreset(0, list));
    tools.exportLists(0);
    QCOMPARE(tools.content("ps0.bpl"), QByteArrayView(list.bytes()).toByteArray());
}

void tst_MfgToolsModelExport::existingFilesAreReplaced()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    for (const char *name : {"bpl.txt", "ps0.bpl", "ps0.bpl.txt", "ps0.bpl.png"})
        QVERIFY(BadPixelExportRig::writeFile(tools.local(name), QByteArray(100'000, 'x')));
    tools.exportLists(0);
    QCOMPARE(tools.content("bpl.txt"), "**** Preset 0 ****\r\n" + textOf("   0,   1"));
    QCOMPARE(tools.content("ps0.bpl.txt"), textOf("   0,   1"));
    QCOMPARE(QImage(tools.local("ps0.bpl.png")).size(), QSize(8, 4));
}

void tst_MfgToolsModelExport::folderMayHaveAnyName()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    const QString name = QStringLiteral("W\u00e4rme 100%d #1");
    QVERIFY(QDir(tools.folder.path()).mkdir(name));
    tools.model.setSelectedSaveBplIndex(5);
    tools.model.saveBplForSelectedIndexAction(QUrl::fromLocalFile(tools.local(name)));
    QCOMPARE(QDir(tools.local(name)).entryList(QDir::Files, QDir::Name),
             QStringList({"bpl.txt", "factory.bpl", "factory.bpl.png", "factory.bpl.txt"}));
}

// Pictures

void tst_MfgToolsModelExport::pixelIsMarkedTwoByTwo()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putPreset(0, {20, 10, {{3, 4}, {10, 7}, {11, 7}}}));
    tools.exportLists(0);
    QCOMPARE(QImage(tools.local("ps0.bpl.png")).size(), QSize(20, 10));
    QVERIFY((tools.whitePixels("ps0.bpl.png")
             == Places{{3, 4}, {4, 4}, {3, 5}, {4, 5}, {10, 7}, {11, 7}, {12, 7}, {10, 8}, {11, 8}, {12, 8}}));
}

void tst_MfgToolsModelExport::marksAreCutAtTheEdge()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putPreset(0, {20, 10, {{19, 2}, {5, 9}, {19, 9}, {0, 0}}}));
    tools.exportLists(0);
    QVERIFY((tools.whitePixels("ps0.bpl.png")
             == Places{{19, 2}, {19, 3}, {5, 9}, {6, 9}, {19, 9}, {0, 0}, {1, 0}, {0, 1}, {1, 1}}));
}

void tst_MfgToolsModelExport::imageWithoutPixelsEndsTheExport_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("width") << 0 << 512;
    QTest::newRow("height") << 640 << 0;
}

void tst_MfgToolsModelExport::imageWithoutPixelsEndsTheExport()
{
    QFETCH(const int, width);
    QFETCH(const int, height);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    QVERIFY(tools.putPreset(0, {static_cast<uint16_t>(width), static_cast<uint16_t>(height), {}}));
    QCOMPARE(tools.exportLists(4), presetCalls(0));
    const QByteArray text
        = QStringLiteral("Width:  %1\r\nHeight: %2\r\nCount:  0\r\n   X,   Y\r\n").arg(width).arg(height).toUtf8();
    QCOMPARE(tools.localFiles(), QStringList({"bpl.txt", "ps0.bpl", "ps0.bpl.txt"}));
    QCOMPARE(tools.content("ps0.bpl.txt"), text);
    QCOMPARE(tools.content("bpl.txt"), "**** Preset 0 ****\r\n" + text);
}

// Failures

void tst_MfgToolsModelExport::summaryThatCannotBeOpenedEndsTheExport_data()
{
    QTest::addColumn<QString>("blocked");
    QTest::newRow("a folder in its place") << "bpl.txt/in";
    QTest::newRow("no folder") << "";
}

void tst_MfgToolsModelExport::summaryThatCannotBeOpenedEndsTheExport()
{
    QFETCH(const QString, blocked);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    if (blocked.isEmpty())
        QVERIFY(tools.folder.remove());
    else
        QVERIFY(QDir(tools.folder.path()).mkpath(blocked));
    QCOMPARE(tools.exportLists(6), QStringList());
    QCOMPARE(tools.localFiles(), QStringList());
}

void tst_MfgToolsModelExport::failedListEndsTheExport_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("inSummary");
    const QStringList before{"bpl.txt", "ps0.bpl", "ps0.bpl.png", "ps0.bpl.txt"};
    const QStringList both = presetCalls(0) + presetCalls(1);
    QTest::newRow("list of the camera") << "zvtSaveBadPixelList" << both.first(3) << before << false;
    QTest::newRow("transfer") << "zvtDownloadFileStd" << both << before << false;
    QTest::newRow("damaged list") << "list" << both << before + QStringList("ps1.bpl") << false;
    QTest::newRow("picture") << "ps1.bpl.png" << both << before + QStringList({"ps1.bpl", "ps1.bpl.txt"}) << true;
}

void tst_MfgToolsModelExport::failedListEndsTheExport()
{
    QFETCH(const QString, failing);
    QFETCH(const QStringList, calls);
    QFETCH(const QStringList, files);
    QFETCH(const bool, inSummary);
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    if (failing.startsWith("zvt"))
        tools.gate().failNext(failing.toStdString(), 2);
    else if (failing == "list")
        QVERIFY(tools.put("/Temp/ps1.bpl", QByteArray("no list")));
    else
        QVERIFY(QDir(tools.folder.path()).mkdir(failing));
    QCOMPARE(tools.exportLists(6), calls);
    QCOMPARE(tools.localFiles(), files);
    const QByteArray second = "**** Preset 1 ****\r\n" + textOf("   1,   1");
    QCOMPARE(tools.content("bpl.txt"),
             "**** Preset 0 ****\r\n" + textOf("   0,   1") + (inSummary ? second : QByteArray()));
}

void tst_MfgToolsModelExport::failedFactoryListEndsTheExport_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("inSummary");
    QTest::newRow("transfer") << "zvtDownloadFileStd" << QStringList("factory.bpl") << false;
    QTest::newRow("damaged list") << "list" << QStringList("factory.bpl") << false;
    QTest::newRow("picture") << "factory.bpl.png" << QStringList({"factory.bpl", "factory.bpl.txt"}) << true;
}

void tst_MfgToolsModelExport::failedFactoryListEndsTheExport()
{
    QFETCH(const QString, failing);
    QFETCH(const QStringList, files);
    QFETCH(const bool, inSummary);
    const QByteArray ofFactory = inSummary ? "**** Factory ****\r\n" + textOf("   7,   3") : QByteArray();
    const BadPixelExportRig::List earlier{8, 4, {{6, 2}}};
    for (const bool everything : {false, true}) {
        BadPixelExportRig tools;
        QVERIFY(tools.putAll());
        // A list of an earlier export must not count as the one that was not transferred.
        QVERIFY(
            BadPixelExportRig::writeFile(tools.local("factory.bpl"), QByteArrayView(earlier.bytes()).toByteArray()));
        if (failing.startsWith("zvt"))
            tools.gate().failNext(failing.toStdString(), everything ? 5 : 1);
        else if (failing == "list")
            QVERIFY(tools.put(BadPixelExportRig::factoryPath, QByteArray("no list")));
        else
            QVERIFY(QDir(tools.folder.path()).mkdir(failing));
        QCOMPARE(tools.exportLists(everything ? 6 : 5),
                 (everything ? callsOfAllPresets : QStringList()) + factoryCalls);
        // The lists of the presets stay.
        QCOMPARE(tools.localFiles(), QStringList("bpl.txt") + files + (everything ? filesOfAllPresets : QStringList()));
        QCOMPARE(tools.content("bpl.txt"), (everything ? summaryOfAllPresets() : QByteArray()) + ofFactory);
    }
}

void tst_MfgToolsModelExport::textThatCannotBeOpenedIsLeftOut()
{
    BadPixelExportRig tools;
    QVERIFY(tools.putAll());
    QVERIFY(QDir(tools.folder.path()).mkdir("ps0.bpl.txt"));
    QCOMPARE(tools.exportLists(4).size(), 8);
    QVERIFY(QFile::exists(tools.local("ps0.bpl.png")));
    QVERIFY(tools.content("bpl.txt").startsWith("**** Preset 0 ****\r\n" + textOf("   0,   1") + "**** Preset 1"));
}

void tst_MfgToolsModelExport::disconnectedCamera()
{
    BadPixelExportRig tools;
    tools.rig.camera().disconnect();
    QCOMPARE(tools.exportLists(6).size(), 1);
    QCOMPARE(tools.localFiles(), QStringList("bpl.txt"));
    QCOMPARE(tools.content("bpl.txt"), QByteArray());
}

ZVT_TEST(tst_MfgToolsModelExport)
#include "tst_MfgToolsModelExport.moc"
