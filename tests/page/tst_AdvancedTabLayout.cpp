#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

namespace
{

/// The visible text fields.
QList<const QQuickItem *> fieldsBelow(const QQuickItem &item)
{
    QList<const QQuickItem *> fields;
    for (const QQuickItem *child : item.childItems()) {
        if (!child->isVisible())
            continue;
        if (child->inherits("QQuickTextField"))
            fields << child;
        fields << fieldsBelow(*child);
    }
    return fields;
}

} // namespace

/// The layout of the Advanced page.
class tst_AdvancedTabLayout : public Test
{
    Q_OBJECT

private slots:
    void everyTextFits_data();
    void everyTextFits();
    void tabWalksInReadingOrder();
};

void tst_AdvancedTabLayout::everyTextFits_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("width");
    for (const QString profile : {"everything", "low-cost", "board-6", "edge-values"})
        for (const int width : {640, 900, 1280})
            QTest::addRow("%s, %d wide", qPrintable(profile), width) << profile << width;
}

void tst_AdvancedTabLayout::everyTextFits()
{
    QFETCH(const QString, profile);
    QFETCH(const int, width);
    PageDriver page({.profile = profile, .size = {width, 1400}});
    page.click("Advanced");
    page.settle();
    for (const QString &section : advancedSections().mid(1)) {
        if (page.find(section))
            page.click(section);
        page.settle();
    }
    page.saveScreenshot();
    const QRectF place(0, 0, width, page.page()->height());
    const auto texts = page.shownTexts(*page.page());
    QVERIFY(texts.size() > 20);
    for (const QQuickItem *text : texts)
        QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
    const auto fields = fieldsBelow(*page.page());
    QVERIFY(fields.size() >= 18);
    for (const QQuickItem *field : fields) {
        QVERIFY(place.contains(field->mapRectToScene(field->boundingRect())));
        const auto number = [field](const char *name) { return field->property(name).toDouble(); };
        QVERIFY2(number("contentWidth") <= number("width") - number("leftPadding") - number("rightPadding"),
                 qPrintable(field->property("text").toString()));
    }
}

void tst_AdvancedTabLayout::tabWalksInReadingOrder()
{
    AdvancedPage page([](emulator::Camera &camera) {
        QVERIFY(camera.otherClient().set(QStringLiteral("analog.skimmingEnabled"), true));
    });
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    QStringList expected;
    const auto expectTable = [&](const QString &first, const QString &second) {
        for (int preset = 0; preset < 4; ++preset)
            for (const QString &column : {first, second})
                expected << QStringLiteral("Preset %1 %2").arg(preset).arg(column);
    };
    expectTable("Digital Gain", "Digital Offset");
    expected += QStringList{"CameraLink Mode",
                            "CoaXPress Links",
                            "Black Hot Mode",
                            "Analog Settings",
                            "Refresh Analog Settings",
                            "Global Analog Offset (v)",
                            "Detector Bias (mv)",
                            "Enable Skimming",
                            "Skimming (v)",
                            "Saturation Settings",
                            "Refresh Saturation Settings"};
    expectTable("Count Threshold", "Pixel Threshold");
    expected += QStringList{"Lockin Settings",
                            "Refresh Lockin Settings",
                            "Coupling",
                            "Estimated Input Frequency (Hz)",
                            "Digital Filter",
                            "Miscellaneous Settings",
                            "Refresh Miscellaneous Settings",
                            "Integrate Active Polarity",
                            "Timestamp Latch",
                            "GigE Header Mode",
                            "CameraLink Header Mode",
                            "CoaXPress Header Mode"};
    page.item(expected.first()).forceActiveFocus(Qt::TabFocusReason);
    QStringList walked;
    for (qsizetype step = 0; step < expected.size(); ++step) {
        walked << PageDriver::nameOf(*page.window().activeFocusItem());
        page.press(Qt::Key_Tab);
    }
    QCOMPARE(walked, expected);
}

ZVT_TEST(tst_AdvancedTabLayout)
#include "tst_AdvancedTabLayout.moc"
