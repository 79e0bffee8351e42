#include "platform/hlxcamui/IntValidatorEx.h"
#include "tests/platform/ControlPage.h"
#include "tests/support/Test.h"

#include <QPainter>
#include <QSignalSpy>

using hlx::cam::ui::IntValidatorEx;

class tst_hostControls : public Test
{
    Q_OBJECT

private slots:
    void cleanup() { m_page.close(); }

    void windowIsMovedByTheMouse();
    void windowIsSizedAtItsEdges_data();
    void windowIsSizedAtItsEdges();
    void windowStaysCentered();
    void mirroredWindowFollowsThePointer();
    void subWindowLiesOnTheWholeArray();
    void windowIsMovedAndSizedByKeys();
    void escapeTakesADragBack();
    void nothingIsPaintedOutside_data();
    void nothingIsPaintedOutside();
    void focusIsFramed_data();
    void focusIsFramed();
    void aPageWritesPartsOfTheWindow();
    void anEmptyEditorTakesNoHarm();

    void imageLiesWhereThePositionSays_data();
    void imageLiesWhereThePositionSays();
    void offsetHasLimits_data();
    void offsetHasLimits();
    void imageIsMovedByMouseAndKeys();
    void imageStaysWhileThePositionIsFixed();

    void numbersMeetRangeAndIncrement_data();
    void numbersMeetRangeAndIncrement();
    void aNumberIsMendedToTheNearest();

private:
    void show(const QString &contents) { m_item = m_page.show(contents); }
    template <class T> T get(const char *property) const { return m_item->property(property).value<T>(); }

    /// Returns the position in the window of a point of a frame. `x` and `y` are fractions of the size of the frame.
    QPoint at(const char *frame, qreal x, qreal y) const;

    ControlPage m_page;
    QQuickItem *m_item = nullptr;
};

QPoint tst_hostControls::at(const char *frame, qreal x, qreal y) const
{
    const auto rect = get<QRectF>(frame);
    return m_item->mapToScene({rect.x() + x * rect.width(), rect.y() + y * rect.height()}).toPoint();
}

namespace
{

/// Twice as large as the array, so that a pixel is two units.
const auto windowEditor = QStringLiteral(R"(
WindowEditor { x: 10; y: 10; width: 328; height: 264; window: Qt.rect(40, 40, 80, 64)
               minSize: Qt.size(16, 8); maxSize: Qt.size(160, 128); increment: Qt.point(8, 4); %1 })");

/// Shows the middle of an array of 640 by 512 on a raster of 640 by 480, unless the settings have other values.
QString displayEditor(const QString &settings)
{
    const auto unlessSet = [&settings](const char *name, const char *value) {
        return settings.contains(QLatin1String(name)) ? QString()
                                                      : QLatin1String(name) + QLatin1String(value) + QLatin1Char(';');
    };
    return QStringLiteral("DisplayEditor { width: 420; height: 300; displaySize: Qt.size(640, 480)\n"
                          "fpaSize: Qt.size(640, 512); increment: Qt.point(4, 4); %1 %2 %3 }")
        .arg(unlessSet("window:", "Qt.rect(160, 64, 320, 256)"), unlessSet("zoom:", "1"), settings);
}

} // namespace

void tst_hostControls::windowIsMovedByTheMouse()
{
    show(windowEditor.arg(""));
    QSignalSpy changed(m_item, SIGNAL(windowChanged()));
    m_page.shot("window");
    m_page.drag(at("windowFrame", 0.5, 0.5), at("windowFrame", 0.5, 0.5) + QPoint(35, -13));
    QCOMPARE(get<QRect>("window"), QRect(56, 32, 80, 64));
    QVERIFY(!changed.isEmpty());
    QVERIFY(m_item->hasActiveFocus());
    m_page.shot("window-focused");
    m_page.drag(at("windowFrame", 0.5, 0.5), QPoint(470, 350));
    QCOMPARE(get<QRect>("window"), QRect(80, 64, 80, 64));
    m_page.drag(QPoint(20, 20), QPoint(100, 100));
    QCOMPARE(get<QRect>("window"), QRect(80, 64, 80, 64));
}

void tst_hostControls::windowIsSizedAtItsEdges_data()
{
    QTest::addColumn<QPointF>("grip");
    QTest::addColumn<QPoint>("by");
    QTest::addColumn<QRect>("result");
    QTest::newRow("right") << QPointF(1, 0.5) << QPoint(20, 30) << QRect(40, 40, 88, 64);
    QTest::newRow("left") << QPointF(0, 0.5) << QPoint(20, 0) << QRect(48, 40, 72, 64);
    QTest::newRow("bottom") << QPointF(0.5, 1) << QPoint(0, -20) << QRect(40, 40, 80, 56);
    QTest::newRow("top") << QPointF(0.5, 0) << QPoint(0, -20) << QRect(40, 28, 80, 76);
    QTest::newRow("corner") << QPointF(1, 1) << QPoint(16, 16) << QRect(40, 40, 88, 72);
    QTest::newRow("beyond the array") << QPointF(0, 0) << QPoint(-300, -300) << QRect(0, 0, 120, 104);
    QTest::newRow("below the minimum") << QPointF(1, 1) << QPoint(-300, -300) << QRect(40, 40, 16, 8);
}

void tst_hostControls::windowIsSizedAtItsEdges()
{
    QFETCH(QPointF, grip);
    QFETCH(QPoint, by);
    show(windowEditor.arg(""));
    const QPoint from = at("windowFrame", grip.x(), grip.y());
    m_page.drag(from, from + by);
    QTEST(get<QRect>("window"), "result");
}

void tst_hostControls::windowStaysCentered()
{
    show(windowEditor.arg("centeredOnly: true"));
    m_page.drag(at("windowFrame", 0.5, 0.5), QPoint(20, 20));
    QCOMPARE(get<QRect>("window"), QRect(40, 40, 80, 64));
    const QPoint corner = at("windowFrame", 1, 1);
    m_page.drag(corner, corner + QPoint(16, 8));
    QCOMPARE(get<QRect>("window"), QRect(32, 28, 96, 72));
    m_page.key(Qt::Key_Right);
    QCOMPARE(get<QRect>("window"), QRect(32, 28, 96, 72));
    m_page.key(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(get<QRect>("window"), QRect(32, 28, 88, 72));
}

void tst_hostControls::mirroredWindowFollowsThePointer()
{
    show(windowEditor.arg("hFlip: true; vFlip: true"));
    const auto array = get<QRectF>("arrayFrame");
    QCOMPARE(get<QRectF>("windowFrame"), QRectF(array.x() + 80, array.y() + 48, 160, 128));
    m_page.drag(at("windowFrame", 0.5, 0.5), at("windowFrame", 0.5, 0.5) + QPoint(16, 16));
    QCOMPARE(get<QRect>("window"), QRect(32, 32, 80, 64));
    const QPoint seenRight = at("windowFrame", 1, 0.5);
    m_page.drag(seenRight, seenRight + QPoint(16, 0));
    QCOMPARE(get<QRect>("window"), QRect(24, 32, 88, 64));
    m_page.key(Qt::Key_Right);
    QCOMPARE(get<QRect>("window"), QRect(16, 32, 88, 64));
}

void tst_hostControls::subWindowLiesOnTheWholeArray()
{
    show(QStringLiteral("WindowEditor { x: 10; y: 10; width: 328; height: 264; window: Qt.rect(10, 20, 40, 30)\n"
                        "maxSize: Qt.size(80, 64); fullSize: Qt.size(160, 128); isSubWindow: true\n"
                        "subWindowPosition: Qt.point(40, 32) }"));
    const auto array = get<QRectF>("arrayFrame");
    QCOMPARE(array.size(), QSizeF(320, 256));
    QCOMPARE(get<QRectF>("areaFrame"), QRectF(array.x() + 80, array.y() + 64, 160, 128));
    QCOMPARE(get<QRectF>("windowFrame"), QRectF(array.x() + 100, array.y() + 104, 80, 60));
    m_page.shot("window-sub");
    m_page.drag(at("windowFrame", 0.5, 0.5), QPoint(470, 350));
    QCOMPARE(get<QRect>("window"), QRect(40, 34, 40, 30));
}

void tst_hostControls::windowIsMovedAndSizedByKeys()
{
    show(windowEditor.arg(""));
    m_page.key(Qt::Key_Tab);
    QVERIFY(m_item->hasActiveFocus());
    m_page.key(Qt::Key_Right);
    m_page.key(Qt::Key_Up);
    QCOMPARE(get<QRect>("window"), QRect(48, 36, 80, 64));
    m_page.key(Qt::Key_Right, Qt::ShiftModifier);
    m_page.key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(get<QRect>("window"), QRect(48, 36, 88, 60));
    m_page.key(Qt::Key_Left, Qt::ControlModifier);
    m_page.key(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(get<QRect>("window"), QRect(0, 68, 88, 60));
}

void tst_hostControls::escapeTakesADragBack()
{
    show(windowEditor.arg(""));
    const QPoint from = at("windowFrame", 0.5, 0.5);
    QTest::mousePress(m_page.window(), Qt::LeftButton, {}, from);
    QTest::mouseMove(m_page.window(), from + QPoint(40, 0));
    QCOMPARE(get<QRect>("window"), QRect(64, 40, 80, 64));
    m_page.key(Qt::Key_Escape);
    QCOMPARE(get<QRect>("window"), QRect(40, 40, 80, 64));
    QTest::mouseMove(m_page.window(), from + QPoint(60, 0));
    QTest::mouseRelease(m_page.window(), Qt::LeftButton, {}, from + QPoint(60, 0));
    QCOMPARE(get<QRect>("window"), QRect(40, 40, 80, 64));
}

void tst_hostControls::nothingIsPaintedOutside_data()
{
    QTest::addColumn<QString>("control");
    QTest::newRow("whole array") << windowEditor.arg("Component.onCompleted: window = Qt.rect(0, 0, 160, 128)");
    QTest::newRow("beyond the array") << windowEditor.arg("Component.onCompleted: window = Qt.rect(-40, 90, 240, 90)");
    QTest::newRow("area beyond the array")
        << windowEditor.arg("isSubWindow: true; fullSize: Qt.size(80, 64); subWindowPosition: Qt.point(-20, 40)");
    QTest::newRow("image beyond the raster") << displayEditor("offsetType: 2; offset: Qt.point(300, 400)");
}

void tst_hostControls::nothingIsPaintedOutside()
{
    QFETCH(QString, control);
    show(control);
    m_item->forceActiveFocus(Qt::TabFocusReason);
    QImage image = m_page.window()->grabWindow();
    const QColor back = image.pixelColor(image.width() - 1, image.height() - 1);
    QPainter(&image).fillRect(m_item->mapRectToScene(m_item->boundingRect()), back);
    QImage empty = image;
    empty.fill(back);
    QCOMPARE(image, empty);
}

void tst_hostControls::focusIsFramed_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("outset");
    QTest::newRow("window") << windowEditor.arg("") << QByteArray("arrayFrame") << 1;
    QTest::newRow("display") << displayEditor("") << QByteArray("displayFrame") << -1;
}

void tst_hostControls::focusIsFramed()
{
    QFETCH(QString, control);
    QFETCH(QByteArray, frame);
    QFETCH(int, outset);
    show(control);
    const QPoint place = at(frame, 0, 0.25) - QPoint(outset, 0);
    const QColor accent(0x18, 0xaa, 0xe2);
    QVERIFY(m_page.window()->grabWindow().pixelColor(place) != accent);
    m_page.key(Qt::Key_Tab);
    QTRY_COMPARE(m_page.window()->grabWindow().pixelColor(place), accent);
}

void tst_hostControls::aPageWritesPartsOfTheWindow()
{
    show(windowEditor.arg("function type(w) { window.width = w }"));
    QMetaObject::invokeMethod(m_item, "type", Q_ARG(QVariant, 7));
    QCOMPARE(get<QRect>("window"), QRect(40, 40, 7, 64));
}

void tst_hostControls::anEmptyEditorTakesNoHarm()
{
    show(QStringLiteral("WindowEditor { width: 160; height: 128; increment: Qt.point(0, 0) }"));
    m_page.drag({20, 20}, {60, 60});
    m_page.key(Qt::Key_Right);
    m_page.key(Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(get<QRect>("window").isEmpty());
}

void tst_hostControls::imageLiesWhereThePositionSays_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QRectF>("image");
    QTest::newRow("same as the array") << "offsetType: 0" << QRectF(160, 64, 320, 256);
    QTest::newRow("mirrored") << "offsetType: 0; vFlip: true" << QRectF(160, 192, 320, 256);
    QTest::newRow("same, half as large") << "offsetType: 0; zoom: 0.5" << QRectF(80, 32, 160, 128);
    QTest::newRow("centered") << "offsetType: 1" << QRectF(160, 112, 320, 256);
    QTest::newRow("centered, to fit") << "offsetType: 1; zoom: 0" << QRectF(20, 0, 600, 480);
    QTest::newRow("free") << "offsetType: 2; offset: Qt.point(8, 12)" << QRectF(8, 12, 320, 256);
    QTest::newRow("no window") << "offsetType: 0; window: Qt.rect(0, 0, 0, 0)" << QRectF(320, 240, 0, 0);
}

void tst_hostControls::imageLiesWhereThePositionSays()
{
    QFETCH(QString, settings);
    QFETCH(QRectF, image);
    show(displayEditor(settings));
    const auto display = get<QRectF>("displayFrame");
    const qreal scale = display.width() / 640;
    QVERIFY(qFuzzyCompare(display.height(), 480 * scale));
    const auto frame = get<QRectF>("imageFrame");
    const QRectF seen((frame.topLeft() - display.topLeft()) / scale, frame.size() / scale);
    QVERIFY2(qAbs(seen.x() - image.x()) + qAbs(seen.y() - image.y()) + qAbs(seen.width() - image.width()) < 0.01,
             qPrintable(QDebug::toString(seen)));
}

void tst_hostControls::offsetHasLimits_data()
{
    QTest::addColumn<QString>("settings");
    QTest::addColumn<QPoint>("least");
    QTest::addColumn<QPoint>("most");
    QTest::addColumn<bool>("valid");
    QTest::newRow("inside") << "offset: Qt.point(320, 224)" << QPoint(0, 0) << QPoint(320, 224) << true;
    QTest::newRow("outside") << "offset: Qt.point(324, 0)" << QPoint(0, 0) << QPoint(320, 224) << false;
    QTest::newRow("odd") << "offset: Qt.point(0, 2)" << QPoint(0, 0) << QPoint(320, 224) << false;
    QTest::newRow("larger than the raster")
        << "zoom: 4; offset: Qt.point(-640, -544)" << QPoint(-640, -544) << QPoint(0, 0) << true;
    QTest::newRow("no room for a step") << "window: Qt.rect(0, 0, 637, 481)" << QPoint(0, 0) << QPoint(0, 0) << true;
    QTest::newRow("no matter while fixed")
        << "offsetType: 1; offset: Qt.point(3, 999)" << QPoint(0, 0) << QPoint(320, 224) << true;
}

void tst_hostControls::offsetHasLimits()
{
    QFETCH(QString, settings);
    show(displayEditor((settings.contains("offsetType") ? "" : "offsetType: 2; ") + settings));
    QTEST(get<QPoint>("offsetMin"), "least");
    QTEST(get<QPoint>("offsetMax"), "most");
    QTEST(get<bool>("isValid"), "valid");
}

void tst_hostControls::imageIsMovedByMouseAndKeys()
{
    show(displayEditor("offsetType: 2; showNtscLines: true; property point heard; onOffsetChanged: heard = offset"));
    const qreal scale = get<QRectF>("displayFrame").width() / 640;
    const QPoint from = at("imageFrame", 0.5, 0.5);
    m_page.drag(from, from + QPoint(qRound(100 * scale), qRound(50 * scale)));
    const auto offset = get<QPoint>("offset");
    QVERIFY2((offset - QPoint(100, 50)).manhattanLength() <= 4, qPrintable(QDebug::toString(offset)));
    QVERIFY(get<bool>("isValid"));
    QCOMPARE(get<QPointF>("heard").toPoint(), offset);
    m_page.shot("display-focused");
    m_page.key(Qt::Key_Left);
    m_page.key(Qt::Key_Down);
    QCOMPARE(get<QPoint>("offset"), offset + QPoint(-4, 4));
    m_page.key(Qt::Key_Right, Qt::ControlModifier);
    m_page.key(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(get<QPoint>("offset"), offset + QPoint(36, -36));
    m_page.drag(at("imageFrame", 0.5, 0.5), {470, 350});
    QCOMPARE(get<QPoint>("offset"), QPoint(320, 224));
    QVERIFY(m_item->setProperty("offset", QPoint(402, 10)));
    QCOMPARE(get<bool>("isValid"), false);
    m_page.shot("display-invalid");
}

void tst_hostControls::imageStaysWhileThePositionIsFixed()
{
    show(displayEditor("offsetType: 1"));
    m_page.shot("display-fixed");
    m_page.drag(at("imageFrame", 0.5, 0.5), {400, 280});
    m_page.key(Qt::Key_Left);
    QCOMPARE(get<QPoint>("offset"), QPoint());
}

void tst_hostControls::numbersMeetRangeAndIncrement_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QValidator::State>("state");
    QTest::newRow("least") << "-8" << QValidator::Acceptable;
    QTest::newRow("most") << "100" << QValidator::Acceptable;
    QTest::newRow("between two") << "42" << QValidator::Intermediate;
    QTest::newRow("too small") << "-12" << QValidator::Invalid;
    QTest::newRow("begun") << "-" << QValidator::Intermediate;
    QTest::newRow("nothing") << "" << QValidator::Intermediate;
    QTest::newRow("letters") << "4x" << QValidator::Invalid;
    QTest::newRow("separator") << "1,0" << QValidator::Invalid;
}

void tst_hostControls::numbersMeetRangeAndIncrement()
{
    QFETCH(QString, text);
    IntValidatorEx validator;
    QSignalSpy changed(&validator, &QValidator::changed);
    validator.setRange(-8, 100);
    validator.setIncrement(4);
    validator.setIncrement(4);
    QCOMPARE(changed.size(), 2);
    int position = 0;
    QTEST(validator.validate(text, position), "state");
}

void tst_hostControls::aNumberIsMendedToTheNearest()
{
    IntValidatorEx validator;
    validator.setRange(-8, 100);
    validator.setIncrement(4);
    const auto mended = [&](QString text) {
        validator.fixup(text);
        return text;
    };
    QCOMPARE(mended("42"), QStringLiteral("44"));
    QCOMPARE(mended("9999"), QStringLiteral("100"));
    QCOMPARE(mended("-50"), QStringLiteral("-8"));
    QCOMPARE(mended("x"), QStringLiteral("x"));
    validator.setIncrement(0);
    QCOMPARE(mended("43"), QStringLiteral("43"));
}

ZVT_TEST(tst_hostControls)
#include "tst_hostControls.moc"
