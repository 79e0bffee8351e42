#include "tests/support/Test.h"
#include "tests/support/computedMicroseconds.h"
#include "tests/unit/BadPixelExportRig.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

#include "zvt/zvtsdk.h"

namespace
{

/// The tools with the lists that the camera makes itself.
struct OwnLists : BadPixelExportRig {
    OwnLists() { gate().script("zvtSaveBadPixelList", {}); }

    uint64_t handle() const { return rig.controller()->GetHandle(); }

    /// A file that was exported.
    std::optional<List> exported(const QString &name) const
    {
        return List::load(hlx::fileSystem(), local(name).toUtf8().constData());
    }

    /// The number of bad pixels in the last run of a preset, as the camera counts them.
    uint32_t badPixels(uint8_t preset) const
    {
        uint32_t total = 0;
        uint32_t other = 0;
        zvtGetNUCResults(handle(), preset, &total, &other, &other, &other, &other, &other, &other, &other, &other,
                         &other);
        return total;
    }

    /// Makes a correction of the first preset, with a blackbody before the lens and these limits of the gain.
    bool correct(float gainMin, float gainMax)
    {
        constexpr std::array<uint16_t, 2> waitsForTheSource{2, 6};
        auto others = rig.camera().otherClient();
        CameraRig::coolDetector();
        if (!others.set("emulator./Pattern", 3) || !others.set("emulator./BlackbodyTemp1", 20)
            || zvtSetNUCSource(handle(), 0) != 0 || zvtSetNUCSetup(handle(), gainMin, gainMax, 1000, 15'000, true) != 0
            || zvtStartNUC(handle()) != 0)
            return false;
        constexpr int most = 4000; // More than three minutes.
        for (int turn = 0; turn < most; ++turn) {
            uint16_t status = 0;
            char text[256] = "";
            if (zvtGetNUCStatus(handle(), &status, text, sizeof text) != 0)
                return false;
            if (status == 0)
                return zvtGetNUCResult(handle(), &status, text, sizeof text) == 0 && status == 0
                    && zvtAcceptNUC(handle()) == 0;
            if (std::ranges::count(waitsForTheSource, status) != 0)
                zvtContinueNUC(handle());
            emulator::Clock::advance(50);
        }
        return false;
    }
};

/// The text of a list.
QByteArray textOf(const BadPixelExportRig::List &list)
{
    QString text = QStringLiteral("Width:  %1\r\nHeight: %2\r\nCount:  %3\r\n   X,   Y\r\n")
                       .arg(list.width)
                       .arg(list.height)
                       .arg(list.pixels.size());
    for (const auto &pixel : list.pixels)
        text += QStringLiteral("%1,%2\r\n").arg(pixel.x, 4).arg(pixel.y, 4);
    return text.toUtf8();
}

/// The marks of a list in its picture.
BadPixelExportRig::Places marksOf(const BadPixelExportRig::List &list)
{
    BadPixelExportRig::Places marks;
    for (const auto &pixel : list.pixels)
        for (int y = pixel.y; y <= std::min(pixel.y + 1, list.height - 1); ++y)
            for (int x = pixel.x; x <= std::min(pixel.x + 1, list.width - 1); ++x)
                marks.emplace(x, y);
    return marks;
}

} // namespace

/// The export of the lists that the camera makes of its corrections.
class tst_MfgToolsModelCamera : public Test
{
    Q_OBJECT

private slots:
    void listIsThatOfTheCamera_data();
    void listIsThatOfTheCamera();
    void listHasThePixelsOfTheRun();
    void factoryListOfOneCorrection();
    void longListsTakeLinearTime();
};

void tst_MfgToolsModelCamera::listIsThatOfTheCamera_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("cameraPath");
    QTest::addColumn<QByteArray>("title");
    QTest::newRow("ps0.bpl") << 0 << "/Temp/ps0.bpl" << QByteArray("**** Preset 0 ****\r\n");
    QTest::newRow("ps1.bpl") << 1 << "/Temp/ps1.bpl" << QByteArray("**** Preset 1 ****\r\n");
    QTest::newRow("factory.bpl") << 5 << BadPixelExportRig::factoryPath << QByteArray("**** Factory ****\r\n");
}

void tst_MfgToolsModelCamera::listIsThatOfTheCamera()
{
    QFETCH(const int, index);
    QFETCH(const QString, cameraPath);
    QFETCH(const QByteArray, title);
    const QString name = QTest::currentDataTag();
    OwnLists tools;
    tools.exportLists(index);
    const auto list = tools.exported(name);
    QVERIFY(list && list->pixels.size() > 10);
    QCOMPARE(QSize(list->width, list->height), QSize(640, 512));
    QCOMPARE(tools.content(name + ".txt"), textOf(*list));
    QCOMPARE(tools.content("bpl.txt"), title + textOf(*list));
    QVERIFY(tools.whitePixels(name + ".png") == marksOf(*list));
    QFile ofCamera(tools.pathOf(cameraPath));
    QVERIFY(ofCamera.open(QIODevice::ReadOnly));
    QCOMPARE(tools.content(name), ofCamera.readAll());
}

void tst_MfgToolsModelCamera::listHasThePixelsOfTheRun()
{
    OwnLists tools;
    QVERIFY(tools.correct(0.5F, 1.5F));
    tools.exportLists(0);
    const auto list = tools.exported("ps0.bpl");
    QVERIFY(list && !list->pixels.empty());
    QCOMPARE(static_cast<uint32_t>(list->pixels.size()), tools.badPixels(0));
}

void tst_MfgToolsModelCamera::factoryListOfOneCorrection()
{
    OwnLists tools;
    for (uint8_t preset = 1; preset < 4; ++preset)
        QCOMPARE(zvtUnloadNUC(tools.handle(), preset), 0);
    tools.exportLists(6);
    // The second preset has no list any more, so the factory's is not reached.
    QCOMPARE(tools.localFiles(), QStringList({"bpl.txt", "ps0.bpl", "ps0.bpl.png", "ps0.bpl.txt"}));
    tools.exportLists(5);
    QVERIFY(tools.content("factory.bpl.txt") != tools.content("ps0.bpl.txt"));
    tools.model.createFactoryBplForAllLoadedNucs();
    tools.exportLists(5);
    QCOMPARE(tools.content("factory.bpl.txt"), tools.content("ps0.bpl.txt"));
}

void tst_MfgToolsModelCamera::longListsTakeLinearTime()
{
    OwnLists tools;
    // With limits as narrow as these, more than a third of the pixels are bad.
    QVERIFY(tools.correct(0.95F, 1.05F));
    tools.exportLists(0);
    const auto whole = tools.exported("ps0.bpl");
    QVERIFY2(whole && whole->pixels.size() > 100'000 && whole->pixels.size() < 150'000,
             QByteArray::number(whole ? whole->pixels.size() : 0));
    QCOMPARE(tools.content("ps0.bpl.txt"), textOf(*whole));
    tools.gate().script("zvtSaveBadPixelList", true);
    const auto timeOf = [&](size_t count) {
        auto part = *whole;
        part.pixels.resize(count);
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int turn = 0; turn < 3; ++turn) {
            if (!tools.putPreset(0, part))
                return -1.0;
            const qint64 start = computedMicroseconds();
            tools.exportLists(0);
            shortest = std::min(shortest, computedMicroseconds() - start);
            if (tools.content("ps0.bpl.txt").count('\n') != static_cast<qsizetype>(count) + 4)
                return -1.0;
        }
        return static_cast<double>(shortest);
    };
    const double ofQuarter = timeOf(whole->pixels.size() / 4);
    const double ofWhole = timeOf(whole->pixels.size());
    QVERIFY(ofQuarter > 0 && ofWhole > 0);
    // The picture and the transfer take their time in both, so linear time gives less than 4. Quadratic time would give
    // 16: it would be so long that these do not count.
    QVERIFY2(ofWhole / ofQuarter < 7, QByteArray::number(ofWhole / ofQuarter));
}

ZVT_TEST(tst_MfgToolsModelCamera)
#include "tst_MfgToolsModelCamera.moc"
