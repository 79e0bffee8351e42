#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

#include <limits>

namespace
{

/// The page in a window of this size, with all sections of the camera expanded.
struct LayoutPage : MfgPage {
    LayoutPage(
        const QString &profile, const QSize &size, const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(profile, prepare)
    {
        resize(size);
        for (const QString &section : mfgSections().mid(1))
            if (find(section))
                toggle(section);
    }

    void resize(const QSize &size)
    {
        window().resize(size);
        page()->setSize(size);
        settle();
    }
};

/// The visible text fields and combo boxes.
QList<const QQuickItem *> fieldsBelow(const QQuickItem &item)
{
    QList<const QQuickItem *> fields;
    for (const QQuickItem *child : item.childItems()) {
        if (!child->isVisible())
            continue;
        if (child->inherits("QQuickTextField") || child->inherits("QQuickComboBox"))
            fields << child;
        fields << fieldsBelow(*child);
    }
    return fields;
}

} // namespace

/// The texts of the Mfg page, and their places.
class tst_MfgTabLayout : public Test
{
    Q_OBJECT

private slots:
    void everySectionHasItsTexts_data();
    void everySectionHasItsTexts();
    void everyTextFits_data();
    void everyTextFits();
    void everySectionFitsInASmallWindow_data();
    void everySectionFitsInASmallWindow();
};

void tst_MfgTabLayout::everySectionHasItsTexts_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("Camera Settings") << QStringList{"Board Set", "Detector", "ROIC",    "Search",
                                                    "Model",     "Type",     "Subtype", "Pleora Board",
                                                    "Wheel",     "Variant",  "Serial:", "Apply"};
    QTest::newRow("NUC Settings") << QStringList{"Type:",
                                                 "Source:",
                                                 "Detect Bad Pixels",
                                                 "A/D Min & Max:",
                                                 "Gain Min & Max:",
                                                 "Detect Twinkler Pixels",
                                                 "Number of Frames:",
                                                 "Twinkler Number of Frames:",
                                                 "Twinkler Delta:",
                                                 "Flag Max Temperature:",
                                                 "Flag Timeout:",
                                                 "Stable Delta:",
                                                 "Stable Count:",
                                                 "Use Factory Bad Pixels",
                                                 "NUC Video Output",
                                                 "Show Bad Pixels",
                                                 "NUC Digital Data",
                                                 "Apply"};
    QTest::newRow("Voltage Settings") << QStringList{"Warning: Setting voltages improperly can damage the camera.",
                                                     "Name", "Value"};
    QTest::newRow("Tools") << QStringList{
        "Factory Default State", "Download",          "Upload",   "All Loaded NUCs", "Create Factory BPL",
        "Append to Factory BPL", "Apply Factory BPL", "Save All", "Save BPL for...", "Save",
        "TK2950 Only",           "Auto Focus Full"};
    QTest::newRow("TE Cooler Settings") << QStringList{"Cooler Type:",
                                                       "Actual Temperature:",
                                                       "Cooler Enabled:",
                                                       "Internal Temperature:",
                                                       "Setup Variables:",
                                                       "kP",
                                                       "kD",
                                                       "kOff",
                                                       "Setpoint",
                                                       "kI",
                                                       "Apply"};
    QTest::newRow("Corvin Filter Settings")
        << QStringList{"Slot", "Filter ID", "Filter Name", "Actions", "Select", "Apply Filter IDs"};
    QTest::newRow("Miscellaneous Settings") << QStringList{"DDE Threshold:", "FPA Clock Phase Shift:", "Apply"};
    QTest::newRow("Emulator Settings") << QStringList{"Record Start", "SSD Transfer", "Test Pattern",
                                                      "BB1 Temp",     "BB2 Temp",     "Chamber Profile"};
    QTest::newRow("ROIC Config") << QStringList{
        "Override Defaults", "Line Dead Width:", "Time (us):",      "Pre Int Width:",
        "Post Int Width:",   "Pre Dead Rows:",   "Post Dead Rows:", "Has Extra LSync"};
}

void tst_MfgTabLayout::everySectionHasItsTexts()
{
    QFETCH(const QStringList, texts);
    const QString section = QString::fromLatin1(QTest::currentDataTag());
    MfgPage page("discrete-fov", showAllSections);
    QVERIFY(page.findText(section));
    if (section != mfgSections().first())
        page.openOnly(section);
    for (const QString &text : texts)
        QVERIFY2(page.findText(text), qPrintable(text));
}

void tst_MfgTabLayout::everyTextFits_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("width");
    for (const QString profile : {"everything", "discrete-fov", "low-cost", "edge-values"})
        for (const int width : {640, 900, 1280})
            QTest::addRow("%s, %d wide", qPrintable(profile), width) << profile << width;
}

// Long texts of the camera are shortened.
void tst_MfgTabLayout::everyTextFits()
{
    QFETCH(const QString, profile);
    QFETCH(const int, width);
    LayoutPage page(profile, {width, 3000});
    page.saveScreenshot({}, {width, 2200});
    const QRectF place(0, 0, width, page.page()->height());
    const auto texts = page.shownTexts(*page.page());
    QVERIFY(texts.size() > 60);
    for (const QQuickItem *text : texts)
        if (text->property("elide").toInt() == Qt::ElideNone)
            QVERIFY2(page.fits(*text, place), qPrintable(text->property("text").toString()));
        else
            QVERIFY(place.contains(text->mapRectToScene(QRectF(0, 0, text->width(), text->height()))));
    for (const char *heading : {"Model", "Type", "Subtype", "Pleora Board", "Wheel", "Variant"})
        QVERIFY2(!page.findText(heading)->property("truncated").toBool(), heading);
    const auto fields = fieldsBelow(*page.page());
    QVERIFY(fields.size() > 20);
    for (const QQuickItem *field : fields) {
        const auto number = [field](const char *name) { return field->property(name).toDouble(); };
        QVERIFY2(place.contains(field->mapRectToScene(QRectF(0, 0, field->width(), field->height()))),
                 qPrintable(PageDriver::nameOf(*field)));
        // Other texts may be longer than their fields, and scroll, also numbers whose only limit is that of a float.
        if (field->property("to").isValid() && number("to") < std::numeric_limits<float>::max())
            QVERIFY2(number("contentWidth") <= number("width") - number("leftPadding") - number("rightPadding"),
                     qPrintable(PageDriver::nameOf(*field)));
    }
}

void tst_MfgTabLayout::everySectionFitsInASmallWindow_data()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<QSize>("size");
    for (const char *profile : {"everything", "te-cooler", "discrete-fov"})
        for (const QSize size : {QSize(640, 480), QSize(900, 600)})
            QTest::addRow("%s, %d wide", profile, size.width()) << profile << size;
}

// The first control of each section comes into view with the focus.
void tst_MfgTabLayout::everySectionFitsInASmallWindow()
{
    QFETCH(const QString, profile);
    QFETCH(const QSize, size);
    LayoutPage page(profile, {size.width(), 3000});
    page.resize(size);
    for (const QString &section : mfgSections()) {
        if (!page.find(section))
            continue;
        page.item(section).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Tab);
        page.press(Qt::Key_Tab);
        page.settle();
        const QQuickItem *focused = page.window().activeFocusItem();
        QVERIFY(focused);
        QVERIFY2(QRectF({}, size).contains(focused->mapRectToScene(focused->boundingRect())),
                 qPrintable(PageDriver::nameOf(*focused)));
        QQuickItem *view = page.item(section).parentItem();
        while (!view->inherits("QQuickFlickable"))
            view = view->parentItem();
        view->setProperty("contentY", page.item(section).mapToItem(view, {}).y() + view->property("contentY").toReal());
        page.settle();
        page.saveScreenshot(section);
    }
}

ZVT_TEST(tst_MfgTabLayout)
#include "tst_MfgTabLayout.moc"
