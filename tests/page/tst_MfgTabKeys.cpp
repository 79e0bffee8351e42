#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <algorithm>

namespace
{

/// The Mfg page with all sections expanded.
struct WholePage : MfgPage {
    explicit WholePage(
        const QString &profile, const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(profile, prepare)
    {
        for (qsizetype section = mfgSections().size() - 1; section > 0; --section)
            if (find(mfgSections().at(section)))
                toggle(mfgSections().at(section));
    }

    /// The names of the items that take the focus, from the first header on, until the focus leaves the page.
    QStringList walk(Qt::Key key, const QString &first)
    {
        item(first).forceActiveFocus(Qt::TabFocusReason);
        const QQuickItem *below = item("Camera Settings").parentItem()->parentItem();
        QStringList walked;
        for (int step = 0; step < 200 && below->isAncestorOf(window().activeFocusItem()); ++step) {
            walked << nameOf(*window().activeFocusItem());
            press(key);
        }
        return walked;
    }
};

QStringList header(const QString &section) { return {section, "Refresh " + section}; }

QStringList filterRow(int slot, bool selected)
{
    QStringList row{QStringLiteral("Filter ID of Slot %1").arg(slot),
                    QStringLiteral("Filter Name of Slot %1").arg(slot)};
    if (!selected)
        row << QStringLiteral("Select Slot %1").arg(slot);
    return row;
}

const QStringList identity{"Search", "Models", "Serial", "Apply Camera Settings"};

const QStringList nuc{"Type",
                      "Source",
                      "Detect Bad Pixels",
                      "A/D Min",
                      "A/D Max",
                      "Gain Min",
                      "Gain Max",
                      "Detect Twinkler Pixels",
                      "Number of Frames",
                      "Twinkler Number of Frames",
                      "Twinkler Delta",
                      "Flag Max Temperature",
                      "Flag Timeout",
                      "Stable Delta",
                      "Stable Count",
                      "Use Factory Bad Pixels",
                      "NUC Video Output",
                      "Show Bad Pixels",
                      "NUC Digital Data",
                      "Apply NUC Settings"};

const QStringList voltages{"Refresh Voltages", "Reference", "Detector common", "Skimming", "Global offset"};

const QStringList tools{"Download",          "Upload",   "Create Factory BPL", "Append to Factory BPL",
                        "Apply Factory BPL", "Save All", "Save BPL for...",    "Save",
                        "Auto Focus Full"};

const QStringList cooler{"Cooler Enabled", "kP", "kD", "kOff", "Setpoint", "kI", "Apply TE Cooler Settings"};

const QStringList misc{"DDE Threshold", "FPA Clock Phase Shift", "Apply Miscellaneous Settings"};

const QStringList simulation{"Record Start", "SSD Transfer", "Test Pattern", "BB1 Temp", "BB2 Temp", "Chamber Profile"};

const QStringList readout{"Override Defaults",       "Line Dead Width", "Line Dead Width Time (us)", "Pre Int Width",
                          "Pre Int Width Time (us)", "Post Int Width",  "Post Int Width Time (us)",  "Pre Dead Rows",
                          "Post Dead Rows",          "Has Extra LSync"};

} // namespace

/// The Mfg page for the keyboard and for a screen reader.
class tst_MfgTabKeys : public Test
{
    Q_OBJECT

private slots:
    void tabWalksOverEverything();
    void tabLeavesOutWhatIsOff();
    void everyControlHasAName_data();
    void everyControlHasAName();
};

void tst_MfgTabKeys::tabWalksOverEverything()
{
    WholePage page("discrete-fov", [](emulator::Camera &camera) {
        showAllSections(camera);
        camera.otherClient().set("roic.override", true);
        camera.otherClient().set("filters.current", 4);
    });
    QStringList expected = header("Camera Settings") + identity + header("NUC Settings") + nuc
        + header("Voltage Settings") + voltages + header("Tools") + tools + header("TE Cooler Settings") + cooler
        + header("Corvin Filter Settings");
    for (int slot = 0; slot < 3; ++slot)
        expected += filterRow(slot, slot == 1);
    expected += QStringList("Apply Filter IDs") + header("Miscellaneous Settings") + misc + header("Emulator Settings")
        + simulation + header("ROIC Config") + readout;
    QCOMPARE(page.walk(Qt::Key_Tab, "Camera Settings"), expected);
    std::reverse(expected.begin(), expected.end());
    QCOMPARE(page.walk(Qt::Key_Backtab, expected.first()), expected);
}

// The defaults of the readout circuit, an empty table of voltages, and a wheel without slots.
void tst_MfgTabKeys::tabLeavesOutWhatIsOff()
{
    WholePage page("bare");
    const QStringList walked = page.walk(Qt::Key_Tab, "Camera Settings");
    QCOMPARE(walked.mid(walked.indexOf("Voltage Settings"), 3), header("Voltage Settings") + QStringList("Tools"));
    QCOMPARE(walked.mid(walked.indexOf("Corvin Filter Settings"), 3),
             header("Corvin Filter Settings") + QStringList("Apply Filter IDs"));
    QCOMPARE(walked.mid(walked.indexOf("ROIC Config")), header("ROIC Config") + QStringList("Override Defaults"));
}

void tst_MfgTabKeys::everyControlHasAName_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"everything", "te-cooler", "discrete-fov", "low-cost", "bare"})
        QTest::newRow(profile) << profile;
}

void tst_MfgTabKeys::everyControlHasAName()
{
    QFETCH(const QString, profile);
    WholePage page(
        profile, [](emulator::Camera &camera) { camera.changeMakeUp(QStringLiteral("hasReplaceableFilters"), false); });
    int controls = 0;
    QList<const QQuickItem *> items{page.item("Camera Settings").parentItem()->parentItem()};
    while (!items.isEmpty()) {
        const QQuickItem *item = items.takeLast();
        for (const QQuickItem *child : item->childItems())
            items << child;
        const bool control = item->activeFocusOnTab() || item->inherits("QQuickAbstractButton");
        if (!item->isVisible() || !control)
            continue;
        const QString name = PageDriver::nameOf(*item);
        QVERIFY2(!name.isEmpty(), item->metaObject()->className());
        // A glyph is not a name.
        QVERIFY2(name.at(0).category() != QChar::Other_PrivateUse, qPrintable(name));
        ++controls;
    }
    QVERIFY(controls > 40);
}

ZVT_TEST(tst_MfgTabKeys)
#include "tst_MfgTabKeys.moc"
