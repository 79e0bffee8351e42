#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

namespace
{

constexpr auto section = "Miscellaneous Settings";

/// The page with only this section expanded.
struct MiscSection : AdvancedPage {
    explicit MiscSection(
        const Prepare &prepare = [](emulator::Camera &) {}, const QString &profile = QStringLiteral("everything"))
        : AdvancedPage(prepare, profile)
    {
        openOnly(section);
    }

    void refresh() { AdvancedPage::refresh(section); }
};

/// A combo box of the section, its setter, the key of its setting, and its rows.
struct Box {
    const char *name;
    const char *setter;
    const char *key;
    QStringList rows;
};

const QList<Box> boxes{
    {"Integrate Active Polarity",
     "zvtSetIntegrateOutPolarity",
     "video.integratePolarity",
     {"Active Low", "Active High"}},
    {"Timestamp Latch",
     "zvtSetIRIGLatchSource",
     "video.irigLatch",
     {"Frame Start", "Integration Start", "Integration End"}},
    {"GigE Header Mode",
     "zvtSetGigEHeaderMode",
     "interfaces.gigEHeaderMode",
     {"Header And Image", "Header Only", "Image Only"}},
    {"CameraLink Header Mode",
     "zvtSetCameraLinkHeaderMode",
     "interfaces.cameraLinkHeaderMode",
     {"Header And Image", "Image Only"}},
    {"CoaXPress Header Mode",
     "zvtSetCoaXPressHeaderMode",
     "interfaces.coaXPressHeaderMode",
     {"Header And Image", "Image Only"}},
};

void addBoxes(qsizetype first)
{
    QTest::addColumn<int>("box");
    for (qsizetype box = first; box < boxes.size(); ++box)
        QTest::newRow(boxes.at(box).name) << static_cast<int>(box);
}

} // namespace

/// The section "Miscellaneous Settings" of the Advanced page.
class tst_AdvancedTabMisc : public Test
{
    Q_OBJECT

private slots:
    void eachRowIsChosen_data() { addBoxes(0); }
    void eachRowIsChosen();
    void eachBoxFollowsTheCamera_data() { addBoxes(0); }
    void eachBoxFollowsTheCamera();
    void refusedPolarityAndLatchSnapBack_data();
    void refusedPolarityAndLatchSnapBack();
    void refusedHeaderModeStaysUntilARead_data() { addBoxes(2); }
    void refusedHeaderModeStaysUntilARead();
    void headerModesNeedTheirInterface_data();
    void headerModesNeedTheirInterface();
    void theStreamRunsAfterEachChange_data();
    void theStreamRunsAfterEachChange();
};

void tst_AdvancedTabMisc::eachRowIsChosen()
{
    QFETCH(const int, box);
    const auto &[name, setter, key, rows] = boxes.at(box);
    MiscSection page;
    QVERIFY(page.findText(QLatin1String(name) + u':'));
    QCOMPARE(page.rowsOf(name), rows);
    QVERIFY(page.set(key, 0));
    page.refresh();
    QCOMPARE(page.shown(name), rows.first());
    const auto command = [&](qsizetype row) { return QStringList(QStringLiteral("%1 %2").arg(setter).arg(row)); };
    for (qsizetype row = rows.size() - 1; row >= 0; --row) {
        QCOMPARE(page.commandsOf([&] { page.choose(name, rows.at(row)); }).filter(setter), command(row));
        QCOMPARE(page.shown(name), rows.at(row));
    }
    QCOMPARE(page.commandsOf([&] { page.step(name, Qt::Key_Down); }).filter(setter), command(1));
    page.refresh();
    QCOMPARE(page.shown(name), rows.at(1));
}

void tst_AdvancedTabMisc::eachBoxFollowsTheCamera()
{
    QFETCH(const int, box);
    const auto &[name, setter, key, rows] = boxes.at(box);
    MiscSection page;
    for (qsizetype row = rows.size() - 1; row >= 0; --row) {
        QVERIFY(page.set(key, static_cast<int>(row)));
        QCOMPARE(page.commandsOf([&] { page.refresh(); }), QStringList());
        QCOMPARE(page.shown(name), rows.at(row));
    }
}

void tst_AdvancedTabMisc::refusedPolarityAndLatchSnapBack_data()
{
    QTest::addColumn<int>("box");
    for (const int box : {0, 1})
        QTest::newRow(boxes.at(box).name) << box;
}

void tst_AdvancedTabMisc::refusedPolarityAndLatchSnapBack()
{
    QFETCH(const int, box);
    const auto &[name, setter, key, rows] = boxes.at(box);
    MiscSection page;
    QVERIFY(page.set(key, 0));
    page.refresh();
    page.gate().failAlways(setter);
    QCOMPARE(page.commandsOf([&] { page.choose(name, rows.last()); }).size(), 1);
    QCOMPARE(page.shown(name), rows.first());
}

void tst_AdvancedTabMisc::refusedHeaderModeStaysUntilARead()
{
    QFETCH(const int, box);
    const auto &[name, setter, key, rows] = boxes.at(box);
    MiscSection page;
    QVERIFY(page.set(key, 0));
    page.refresh();
    page.gate().failAlways(setter);
    QCOMPARE(page.commandsOf([&] { page.choose(name, rows.last()); }).filter(setter).size(), 1);
    QCOMPARE(page.shown(name), rows.last());
    page.refresh();
    QCOMPARE(page.shown(name), rows.first());
}

void tst_AdvancedTabMisc::headerModesNeedTheirInterface_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QList<bool>>("available");
    QTest::newRow("all") << "everything" << QList<bool>{true, true, true};
    QTest::newRow("GigE") << "discrete-fov" << QList<bool>{true, false, false};
    QTest::newRow("CameraLink") << "low-cost" << QList<bool>{false, true, false};
    QTest::newRow("CoaXPress") << "board-6" << QList<bool>{false, false, true};
    QTest::newRow("none") << "edge-values" << QList<bool>{false, false, false};
}

void tst_AdvancedTabMisc::headerModesNeedTheirInterface()
{
    QFETCH(const QString, profile);
    QFETCH(const QList<bool>, available);
    MiscSection page([](emulator::Camera &) {}, profile);
    for (qsizetype i = 0; i < available.size(); ++i) {
        const char *name = boxes.at(i + 2).name;
        QCOMPARE(page.enabled(name), available.at(i));
        QCOMPARE(page.shown(name).isEmpty(), !available.at(i));
    }
    QVERIFY(page.enabled("Integrate Active Polarity") && page.enabled("Timestamp Latch"));
}

void tst_AdvancedTabMisc::theStreamRunsAfterEachChange_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QString>("fails");
    QTest::addColumn<int>("box");
    QTest::addColumn<QStringList>("commands");
    const QStringList restarted{"controller.StopStream", "zvtSetGigEHeaderMode 1", "controller.StartStream"};
    QTest::newRow("accepted") << "everything" << QString() << 2 << restarted;
    QTest::newRow("refused") << "everything"
                             << "zvtSetGigEHeaderMode" << 2 << restarted;
    for (const char *read : {"zvtGetDeviceTLTypeAvailable", "zvtGetDeviceTLType"})
        QTest::newRow(read) << "everything" << read << 2 << QStringList();
    QTest::newRow("CameraLink") << "low-cost" << QString() << 3 << QStringList("zvtSetCameraLinkHeaderMode 1");
    QTest::newRow("CoaXPress") << "board-6" << QString() << 4 << QStringList("zvtSetCoaXPressHeaderMode 1");
}

void tst_AdvancedTabMisc::theStreamRunsAfterEachChange()
{
    QFETCH(const QString, profile);
    QFETCH(const QString, fails);
    QFETCH(const int, box);
    QFETCH(const QStringList, commands);
    const auto &[name, setter, key, rows] = boxes.at(box);
    MiscSection page([](emulator::Camera &) {}, profile);
    QVERIFY(page.set(key, 0));
    page.refresh();
    if (!fails.isEmpty())
        page.gate().failAlways(fails.toStdString());
    QCOMPARE(page.commandsOf([&] { page.choose(name, rows.at(1)); }), commands);
    page.refresh();
    QCOMPARE(page.shown(name), rows.at(fails.isEmpty() ? 1 : 0));
}

ZVT_TEST(tst_AdvancedTabMisc)
#include "tst_AdvancedTabMisc.moc"
