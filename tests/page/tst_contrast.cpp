#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QHash>

#include <cmath>

/// The contrast of the controls in each of their states, measured on the painted window.
class tst_contrast : public Test
{
    Q_OBJECT

private slots:
    void textsStandOut_data();
    void textsStandOut();
    void framesStandOut_data();
    void framesStandOut();
    void theFocusRingStandsOut_data();
    void theFocusRingStandsOut();
    void theHintStandsOut();

private:
    static constexpr double leastOfText = 4.5;
    static constexpr double leastOfFrame = 3;

    static double luminance(QRgb color);
    static double contrast(QRgb one, QRgb other);
    static QQuickItem *create(PageDriver &driver, const QString &qml);
    /// The rectangle of the item in the picture of the window.
    static QRect placeOf(const QQuickItem &item) { return item.mapRectToScene(item.boundingRect()).toAlignedRect(); }
    /// The highest contrast of a pixel of this part of the picture to its most frequent colour.
    static double contrastWithin(const QImage &picture, const QRect &place);
    /// The highest contrast between the page's background and a pixel `first` to `last` pixels right of the left edge.
    static double contrastOfEdge(const QImage &picture, const QRect &place, int first, int last);
};

double tst_contrast::luminance(QRgb color)
{
    const auto linear = [](int channel) {
        const double value = channel / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

double tst_contrast::contrast(QRgb one, QRgb other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QQuickItem *tst_contrast::create(PageDriver &driver, const QString &qml)
{
    // Covers the page, so that it does not influence the picture.
    const QString sheet = QStringLiteral("Rectangle { property alias subject: subject; anchors.fill: parent; color: "
                                         "Look.backColor; %1 }");
    QString subject = qml;
    subject.insert(subject.indexOf('{') + 1, QStringLiteral(" id: subject; x: 40; y: 100; "));
    QObject *made = driver.create(sheet.arg(subject));
    driver.awaitFrame();
    return made->property("subject").value<QQuickItem *>();
}

double tst_contrast::contrastWithin(const QImage &picture, const QRect &place)
{
    QHash<QRgb, int> counts;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            ++counts[picture.pixel(x, y)];
    QRgb fill = 0;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color)
        if (color.value() > counts.value(fill))
            fill = color.key();
    double highest = 1;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color)
        highest = std::max(highest, contrast(color.key(), fill));
    return highest;
}

double tst_contrast::contrastOfEdge(const QImage &picture, const QRect &place, int first, int last)
{
    const QRgb back = picture.pixel(place.left() - 20, place.center().y());
    double highest = 1;
    for (int x = place.left() + first; x <= place.left() + last; ++x)
        highest = std::max(highest, contrast(picture.pixel(x, place.center().y()), back));
    return highest;
}

void tst_contrast::textsStandOut_data()
{
    QTest::addColumn<QString>("qml");
    const std::pair<const char *, const char *> subjects[] = {
        {"button", "WrappingButton { text: \"Wide\" }"},
        {"primary button", "WrappingButton { text: \"Save\"; primary: true }"},
        {"destructive button", "WrappingButton { text: \"Delete\"; destructive: true }"},
        {"button with a glyph", "GlyphButton { glyph: Glyph.add; toolTip: \"Add\" }"},
        {"button that is on", "GlyphButton { glyph: Glyph.add; toolTip: \"Add\"; highlighted: true }"},
        {"switch", "Toggle { text: \"Enable\" }"},
        {"switch that is on", "Toggle { text: \"Enable\"; checked: true }"},
        {"check box", "WrappingCheckBox { text: \"Enable\"; checked: true }"},
        {"choice", "Choice { model: [\"Low\", \"High\"] }"},
        {"value that can be typed", "FrameRateComboBox { editable: true; editText: \"100.00\"; model: [\"100.00\"] }"},
        {"value of a list", "FrameRateComboBox { currentIndex: 0; model: [\"100.00\"] }"},
        {"field", "TextBox { modelText: \"100\" }"},
        {"field that is marked", "TextBox { modelText: \"100\"; marked: true }"},
        {"unit", "Unit { text: \"ms\" }"},
        {"tab", "PageTabButton { text: \"Status\"; width: 90; height: 40 }"},
        {"header of a section", "SectionSwitchableHeaderButton { sectionTitle: \"General\"; width: 300 }"},
        {"heading", "SubsectionHeaderLabel { text: \"Lens\"; width: 300 }"},
        {"banner", "NoCameraConnectedRectangle { width: 300 }"},
    };
    for (const auto &[name, qml] : subjects)
        for (const char *state : {"", "enabled: false; "}) {
            QString text = QString::fromLatin1(qml);
            text.insert(text.indexOf('{') + 1, QLatin1String(state));
            QTest::addRow("%s%s", name, *state == 0 ? "" : ", disabled") << text;
        }
}

void tst_contrast::textsStandOut()
{
    QFETCH(const QString, qml);
    PageDriver driver;
    QQuickItem *subject = create(driver, qml);
    // The offscreen platform does not enable hover effects itself.
    subject->setProperty("hoverEnabled", true);
    // Without the frame.
    const QRect inside = placeOf(*subject).adjusted(4, 4, -4, -4);
    const double rest = contrastWithin(driver.grab(), inside);
    QVERIFY2(rest >= leastOfText, qPrintable(QString::number(rest)));
    if (!subject->isEnabled())
        return;
    QTest::mouseMove(&driver.window(), placeOf(*subject).center());
    driver.awaitFrame();
    const double hovered = contrastWithin(driver.grab(), inside);
    QVERIFY2(hovered >= leastOfText, qPrintable(QString::number(hovered)));
}

void tst_contrast::framesStandOut_data()
{
    QTest::addColumn<QString>("qml");
    QTest::newRow("button") << "WrappingButton { text: \"Wide\" }";
    QTest::newRow("primary button") << "WrappingButton { text: \"Save\"; primary: true }";
    QTest::newRow("destructive button") << "WrappingButton { text: \"Delete\"; destructive: true }";
    QTest::newRow("switch") << "Toggle { }";
    QTest::newRow("switch that is on") << "Toggle { checked: true }";
    QTest::newRow("check box") << "WrappingCheckBox { text: \"Enable\" }";
    QTest::newRow("choice") << "Choice { model: [\"Low\"] }";
    QTest::newRow("value that can be typed") << "FrameRateComboBox { editable: true; editText: \"100.00\" }";
    QTest::newRow("field") << "TextBox { modelText: \"100\" }";
    QTest::newRow("field that is marked") << "TextBox { modelText: \"100\"; marked: true }";
    QTest::newRow("speed slider") << "PercentSlider { width: 200 }";
    QTest::newRow("position") << "FocusIndicator { width: 200 }";
}

void tst_contrast::framesStandOut()
{
    QFETCH(const QString, qml);
    PageDriver driver;
    const QQuickItem *subject = create(driver, qml);
    const QRect place = placeOf(*subject);
    const QImage picture = driver.grab();
    // Sliders have no frame: their parts must contrast with the page.
    const double reached = std::max(contrastOfEdge(picture, place, -8, 1),
                                    qml.contains("width:") ? contrastWithin(picture, place) : 1.0);
    QVERIFY2(reached >= leastOfFrame, qPrintable(QString::number(reached)));
}

void tst_contrast::theFocusRingStandsOut_data()
{
    QTest::addColumn<QString>("qml");
    QTest::newRow("button") << "WrappingButton { text: \"Wide\" }";
    QTest::newRow("switch") << "Toggle { }";
    QTest::newRow("check box") << "WrappingCheckBox { text: \"Enable\" }";
    QTest::newRow("choice") << "Choice { model: [\"Low\"] }";
    QTest::newRow("value that can be typed") << "FrameRateComboBox { editable: true; editText: \"100.00\" }";
    QTest::newRow("field") << "TextBox { modelText: \"100\" }";
    QTest::newRow("speed slider") << "PercentSlider { width: 200 }";
}

void tst_contrast::theFocusRingStandsOut()
{
    QFETCH(const QString, qml);
    PageDriver driver;
    QQuickItem *subject = create(driver, qml);
    const QRect place = placeOf(*subject);
    const auto ring = [&] { return contrastOfEdge(driver.grab(), place, -5, -2); };
    QCOMPARE(ring(), 1.0);
    subject->forceActiveFocus(Qt::TabFocusReason);
    driver.awaitFrame();
    QVERIFY2(ring() >= leastOfFrame, qPrintable(QString::number(ring())));
}

void tst_contrast::theHintStandsOut()
{
    PageDriver driver;
    // The offscreen platform does not enable hover effects itself.
    const QQuickItem *subject
        = create(driver, "GlyphButton { hoverEnabled: true; glyph: Glyph.add; toolTip: \"Adds a state\" }");
    QTest::mouseMove(&driver.window(), placeOf(*subject).center());
    QTRY_COMPARE(driver.hint(), "Adds a state");
    driver.awaitFrame();
    const auto *text = driver.findText("Adds a state");
    const QRect place = placeOf(*text);
    QVERIFY(place.top() > placeOf(*subject).bottom());
    QVERIFY(contrastWithin(driver.grab(), place) >= leastOfText);
    // A press hides the tool tip.
    driver.click(driver.find("Adds a state"));
    QTRY_COMPARE(driver.hint(), QString());
}

ZVT_TEST(tst_contrast)
#include "tst_contrast.moc"
