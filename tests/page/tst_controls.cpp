#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QFont>
#include <QSignalSpy>

#include <cmath>
#include <memory>

/// A fake of the general setup model, with the members that the preset numbers use.
class PresetFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int dwellCount MEMBER dwellCount NOTIFY changed)
    Q_PROPERTY(bool subframeEnabled MEMBER subframeEnabled NOTIFY changed)

public:
    int dwellCount = 0;
    bool subframeEnabled = false;

signals:
    void changed();
};

class SetupFake : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int sequencingMode MEMBER sequencingMode NOTIFY changed)
    Q_PROPERTY(int activePreset MEMBER activePreset NOTIFY changed)

public:
    Q_INVOKABLE QObject *ps(int number) { return number == 2 ? &preset : nullptr; }

    int sequencingMode = 0;
    int activePreset = 0;
    PresetFake preset;

signals:
    void changed();
};

class tst_controls : public Test
{
    Q_OBJECT

private slots:
    void aFocusIndicatorShowsThePlace_data();
    void aFocusIndicatorShowsThePlace();
    void aSectionHeaderTellsWhatWasPressed();
    void aSectionHeaderShowsThatItLoads();
    void aWrappingButtonIsPressedByEnter();
    void textsWrapAndAreNotCutOff();
    void arrowsAreRepaintedInANewColour_data();
    void arrowsAreRepaintedInANewColour();
    void theMaximumFrameRateButtonNamesItself();
    void presetTiles_data();
    void presetTiles();
    void aClickOnAPresetTile_data();
    void aClickOnAPresetTile();
    void theProgressBarShowsItsShare();
    void theProgressBarWalksWhileTheEndIsUnknown();
    void theBatchIconNamesTheState_data();
    void theBatchIconNamesTheState();
    void theFadeAlwaysRunsToItsEnd();

private:
    static QQuickItem *createItem(PageDriver &driver, const QString &qml, const QVariantMap &properties = {});
    static QVariantMap presetTwo(SetupFake &setup);
};

QQuickItem *tst_controls::createItem(PageDriver &driver, const QString &qml, const QVariantMap &properties)
{
    return qobject_cast<QQuickItem *>(driver.create(qml, properties));
}

QVariantMap tst_controls::presetTwo(SetupFake &setup)
{
    return {{"presetNumber", 2}, {"setupGeneralModel", QVariant::fromValue(&setup)}};
}

void tst_controls::aFocusIndicatorShowsThePlace_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("middle");
    QTest::newRow("at the beginning") << 100.0 << 300.0 << 100.0 << 8.0;
    QTest::newRow("in the middle") << 100.0 << 300.0 << 200.0 << 108.0;
    QTest::newRow("at the end") << 100.0 << 300.0 << 300.0 << 208.0;
    QTest::newRow("outside") << 100.0 << 300.0 << 900.0 << 208.0;
    QTest::newRow("falling") << 300.0 << 100.0 << 250.0 << 58.0;
    QTest::newRow("no range") << 100.0 << 100.0 << 100.0 << 8.0;
}

void tst_controls::aFocusIndicatorShowsThePlace()
{
    QFETCH(const double, from);
    QFETCH(const double, to);
    QFETCH(const double, value);
    QFETCH(const double, middle);
    PageDriver driver;
    QQuickItem *indicator = createItem(
        driver,
        QStringLiteral("FocusIndicator { width: 216; from: %1; to: %2; value: %3 }").arg(from).arg(to).arg(value));
    const auto *thumb = indicator->findChild<QQuickItem *>("thumbImage");
    QCOMPARE(thumb->mapToItem(indicator, {thumb->width() / 2, 0}).x(), middle);
}

void tst_controls::aSectionHeaderTellsWhatWasPressed()
{
    PageDriver driver;
    QQuickItem *header
        = createItem(driver, "SectionSwitchableHeaderButton { width: 400; y: 100; sectionTitle: \"Cooler Settings\" }");
    QSignalSpy clicked(header, SIGNAL(clicked()));
    QSignalSpy refresh(header, SIGNAL(refreshSection()));
    driver.click("Cooler Settings");
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(refresh.count(), 0);
    driver.click("Refresh Cooler Settings");
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(refresh.count(), 1);
    header->forceActiveFocus();
    driver.press(Qt::Key_Return);
    QCOMPARE(clicked.count(), 2);
    // A key press goes to the item with the focus.
    driver.press(Qt::Key_Tab);
    QVERIFY(driver.find("Refresh Cooler Settings")->hasActiveFocus());
    driver.press(Qt::Key_Return);
    driver.press(Qt::Key_Space);
    QCOMPARE(refresh.count(), 3);
    QCOMPARE(clicked.count(), 2);
    QVERIFY(!header->property("sectionExpanded").toBool());
}

void tst_controls::aSectionHeaderShowsThatItLoads()
{
    PageDriver driver;
    QQuickItem *header
        = createItem(driver, "SectionSwitchableHeaderButton { width: 400; y: 100; sectionTitle: \"A\" }");
    const auto busy = [header] {
        const auto *sign = header->findChild<QQuickItem *>("sectionBusy");
        return sign != nullptr && sign->isVisible();
    };
    QVERIFY(!busy());
    header->setProperty("sectionLoading", true);
    QVERIFY(busy());
    // An invisible animation would still wake the program.
    header->setProperty("sectionLoading", false);
    QTRY_VERIFY(header->findChild<QQuickItem *>("sectionBusy") == nullptr);
}

void tst_controls::aWrappingButtonIsPressedByEnter()
{
    PageDriver driver;
    QQuickItem *button = createItem(driver, "WrappingButton { y: 100; text: \"Wide\" }");
    QSignalSpy clicked(button, SIGNAL(clicked()));
    button->forceActiveFocus();
    driver.press(Qt::Key_Return);
    driver.press(Qt::Key_Enter);
    driver.press(Qt::Key_Space);
    driver.click("Wide");
    QCOMPARE(clicked.count(), 4);
}

void tst_controls::textsWrapAndAreNotCutOff()
{
    PageDriver driver;
    for (const QString control : {"WrappingButton { width: 120; text: \"Save State (a rather long name)\" }",
                                  "WrappingCheckBox { width: 120; text: \"Integration Time and more\" }",
                                  "PageTabButton { width: 73; height: 40; text: \"Correction\" }"}) {
        const QQuickItem *item = createItem(driver, control);
        driver.settle();
        const auto *text = item->property("contentItem").value<QQuickItem *>();
        QVERIFY2(!text->property("truncated").toBool(), qPrintable(control));
        QVERIFY2(text->property("contentWidth").toDouble() <= text->width() + 0.5, qPrintable(control));
        const double height = text->property("contentHeight").toDouble();
        QVERIFY2(height <= text->height() + 0.5, qPrintable(QStringLiteral("%1: %2").arg(control).arg(height)));
    }
}

void tst_controls::arrowsAreRepaintedInANewColour_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("LongLeftArrow") << QSizeF(60, 18);
    QTest::newRow("LongRightArrow") << QSizeF(60, 18);
    QTest::newRow("RamPlaybackArrow") << QSizeF(3 * 60 + 2 * 60 + 4 * 14, 28);
}

void tst_controls::arrowsAreRepaintedInANewColour()
{
    QFETCH(const QSizeF, size);
    PageDriver driver;
    // On an own background: letters below the ring would add pixels of many greys.
    const QQuickItem *ground
        = createItem(driver,
                     QStringLiteral("Rectangle { z: 10; width: 400; height: 400; color: \"black\"; %1 {} }")
                         .arg(QTest::currentDataTag()));
    QQuickItem *arrow = ground->childItems().constFirst();
    QCOMPARE(QSizeF(arrow->implicitWidth(), arrow->implicitHeight()), size);
    const auto holds = [&](const QColor &colour) {
        const QImage image = driver.grab().copy(0, 0, static_cast<int>(size.width()), static_cast<int>(size.height()));
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) == colour)
                    return true;
        return false;
    };
    QTRY_VERIFY(holds(QColor("gray")));
    arrow->setProperty("color", QColor("#00ff00"));
    QTRY_VERIFY(holds(QColor("#00ff00")));
    QVERIFY(!holds(QColor("gray")));
}

void tst_controls::theMaximumFrameRateButtonNamesItself()
{
    PageDriver driver;
    QQuickItem *button = createItem(driver, "MaxFrameRateButton { y: 100 }");
    QSignalSpy clicked(button, SIGNAL(clicked()));
    driver.click("Set to Maximum Frame Rate");
    QCOMPARE(clicked.count(), 1);
    const auto *icon = button->property("contentItem").value<QQuickItem *>();
    const QColor plain = icon->property("color").value<QColor>();
    button->setProperty("highlighted", true);
    QVERIFY(icon->property("color").value<QColor>() != plain);
    QCOMPARE(icon->property("color").value<QColor>(), driver.rootProperty("kestrinAccentBlue").value<QColor>());
}

void tst_controls::presetTiles_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("used");
    QTest::addColumn<QString>("onSetup");
    QTest::addColumn<QString>("onCorrection");
    QTest::newRow("active") << 0 << true << "This is the Active Preset"
                            << "This is the Active Preset";
    QTest::newRow("not active") << 0 << false << "Make Preset Active" << QString();
    QTest::newRow("in the superframe") << 1 << true << "Preset included in superframe."
                                       << "Preset included in superframe.";
    QTest::newRow("not in the superframe") << 1 << false << "Preset excluded from superframe."
                                           << "Preset excluded from superframe.";
    QTest::newRow("in the sequence") << 2 << true << "Preset included in sequence. (Dwell is greater than 0)"
                                     << "Preset included in sequence. (Dwell is greater than 0)";
    QTest::newRow("not in the sequence") << 2 << false << "Preset excluded from sequence. (Dwell is 0)"
                                         << "Preset excluded from sequence. (Dwell is 0)";
}

void tst_controls::presetTiles()
{
    QFETCH(const int, mode);
    QFETCH(const bool, used);
    PageDriver driver;
    SetupFake setup;
    setup.sequencingMode = mode;
    // Only the property that is valid in this mode decides whether the preset is in use.
    setup.activePreset = (mode == 0) == used ? 2 : 1;
    setup.preset.subframeEnabled = (mode == 1) == used;
    setup.preset.dwellCount = (mode == 2) == used ? 3 : 0;
    const QColor accent = driver.rootProperty("kestrinAccentBlue").value<QColor>();
    for (const QString control : {"SetupTabPresetNumberButton", "CorrectionTabPresetNumberLabel"}) {
        const std::unique_ptr<QQuickItem> tile(createItem(driver, control + " { y: 100 }", presetTwo(setup)));
        QCOMPARE(tile->property("text").toString(), "2");
        QCOMPARE(tile->property("inUse").toBool(), used);
        QFETCH(const QString, onSetup);
        QFETCH(const QString, onCorrection);
        QCOMPARE(tile->property("toolTip").toString(), control.startsWith("Setup") ? onSetup : onCorrection);
        const auto *text = tile->property("contentItem").value<QQuickItem *>();
        QCOMPARE(text->property("color").value<QColor>() == accent, used);
        QCOMPARE(text->property("font").value<QFont>().bold(), used);
    }
}

void tst_controls::aClickOnAPresetTile_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("activePreset");
    QTest::addColumn<bool>("subframeEnabled");
    QTest::newRow("makes the preset active") << 0 << 2 << false;
    QTest::newRow("toggles its place in the superframe") << 1 << 0 << true;
    QTest::newRow("does nothing in a sequence") << 2 << 0 << false;
}

void tst_controls::aClickOnAPresetTile()
{
    QFETCH(const int, mode);
    QFETCH(const int, activePreset);
    QFETCH(const bool, subframeEnabled);
    PageDriver driver;
    SetupFake setup;
    setup.sequencingMode = mode;
    // The preset number on the Correction tab is read-only.
    const std::unique_ptr<QQuickItem> label(
        createItem(driver, "CorrectionTabPresetNumberLabel { y: 200 }", presetTwo(setup)));
    driver.click(label.get());
    QCOMPARE(setup.activePreset, 0);
    QVERIFY(!setup.preset.subframeEnabled);

    const std::unique_ptr<QQuickItem> tile(
        createItem(driver, "SetupTabPresetNumberButton { y: 100 }", presetTwo(setup)));
    driver.click(tile.get());
    QCOMPARE(setup.activePreset, activePreset);
    QCOMPARE(setup.preset.subframeEnabled, subframeEnabled);
    driver.click(tile.get());
    QVERIFY(!setup.preset.subframeEnabled);
}

void tst_controls::theProgressBarShowsItsShare()
{
    PageDriver driver;
    const QQuickItem *bar = createItem(driver, "BatchDownloadEntryProgressBar { width: 202; y: 100; value: 0.25 }");
    const auto *content = bar->property("contentItem").value<QQuickItem *>();
    const QQuickItem *block = content->childItems().constFirst();
    QCOMPARE(block->x(), 0.0);
    QCOMPARE(block->width(), content->width() / 4);
    QVERIFY(!bar->findChild<QObject *>("walk")->property("running").toBool());
}

void tst_controls::theProgressBarWalksWhileTheEndIsUnknown()
{
    PageDriver driver;
    const QQuickItem *bar
        = createItem(driver, "BatchDownloadEntryProgressBar { width: 202; y: 100; indeterminate: true }");
    QObject *timer = bar->findChild<QObject *>("walk");
    QCOMPARE(timer->property("interval").toInt(), 50);
    QVERIFY(timer->property("repeat").toBool());
    QVERIFY(timer->property("running").toBool());
    // From here on only this test advances the block.
    timer->setProperty("running", false);
    const auto place = [bar] { return bar->property("blockPosition").toDouble(); };
    const auto step = [timer, place] {
        const double before = place();
        QMetaObject::invokeMethod(timer, "triggered");
        return place() - before;
    };
    const auto *block = bar->property("contentItem").value<QQuickItem *>()->childItems().constFirst();
    while (place() < 0.9 - 1e-6)
        QVERIFY(std::abs(step() - 0.02) < 1e-6);
    QVERIFY(std::abs(place() - 0.9) < 1e-6);
    QVERIFY(std::abs(block->x() + block->width() - block->parentItem()->width()) < 1e-6);
    while (place() > 1e-6)
        QVERIFY(std::abs(step() + 0.02) < 1e-6);
    QVERIFY(std::abs(step() - 0.02) < 1e-6);
}

void tst_controls::theBatchIconNamesTheState_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("Not Started") << 0;
    QTest::newRow("In Progress") << 3;
    QTest::newRow("Failed") << 6;
    QTest::newRow("Succeeded") << 7;
}

void tst_controls::theBatchIconNamesTheState()
{
    QFETCH(const int, status);
    PageDriver driver;
    createItem(driver, "BatchDownloadProgressItemIcon { y: 100 }", {{"status", status}});
    QVERIFY(driver.find(QTest::currentDataTag()));
}

void tst_controls::theFadeAlwaysRunsToItsEnd()
{
    PageDriver driver;
    QQuickItem *row = createItem(driver, "Rectangle { width: 50; height: 40 }");
    QObject *fade = driver.create("FadeAndShrinkAnimation { }", {{"target", QVariant::fromValue(row)}});
    QCOMPARE(fade->property("duration").toInt(), 150);
    QMetaObject::invokeMethod(fade, "start");
    QMetaObject::invokeMethod(fade, "stop");
    QVERIFY(row->opacity() > 0);
    QTRY_COMPARE(row->opacity(), 0.0);
    QCOMPARE(row->height(), 0.0);
}

ZVT_TEST(tst_controls)
#include "tst_controls.moc"
