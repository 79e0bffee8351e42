#include "tests/page/VideoPage.h"
#include "tests/support/Test.h"

#include <algorithm>
#include <cmath>

namespace
{

/// One slider of the page, with the mode and format in which it is shown.
struct Subject {
    const char *name;
    const char *property;
    const char *call;
    int least;
    int most;
    int method;
};

constexpr Subject subjects[] = {
    {"Plateau P Variable", "plateauP", "zvtSetVideoAGCPlateauP", 1, 16383, 0},
    {"DDE Sharpness", "ddeSharpness", "zvtSetVideoAGCDDESharpness", 1, 7, 1},
    {"Brightness", "brightness", "zvtSetVideoBrightness", -15, 63, 0},
    {"Contrast", "contrast", "zvtSetVideoContrast", -128, 127, 0},
};

/// The page with one slider at its lower end, and the actions of the mouse on it.
struct SliderPage : VideoPage {
    explicit SliderPage(const Subject &shown)
        : VideoPage([&shown](emulator::Camera &camera) {
              camera.otherClient().set("video.format", 0);
              camera.otherClient().set("agc.method", shown.method);
          }),
          subject(shown)
    {
        video()->setProperty(subject.property, subject.least);
        settle();
    }

    QQuickItem &slider() const { return item(QLatin1String(subject.name)); }
    double shownValue() const { return slider().property("value").toDouble(); }
    int modelValue() const { return value(subject.property); }
    /// The place of the handle for a part, 0 to 1, of the range.
    QPoint placeOf(double part) const
    {
        constexpr double handle = 16;
        return slider().mapToScene({handle / 2 + part * (slider().width() - handle), slider().height() / 2}).toPoint();
    }
    void press(double part) { QTest::mousePress(&window(), Qt::LeftButton, {}, placeOf(part)); }
    void move(double part) { QTest::mouseMove(&window(), placeOf(part)); }
    void release(double part) { QTest::mouseRelease(&window(), Qt::LeftButton, {}, placeOf(part)); }
    /// Drags the handle by one pixel at a time.
    void drag(double from, double to)
    {
        const int pixels = std::abs(placeOf(to).x() - placeOf(from).x());
        press(from);
        for (int step = 1; step <= pixels; ++step)
            move(from + (to - from) * step / pixels);
        release(to);
    }
    /// The numbers that were sent since a mark.
    QList<int> sentSince(size_t mark)
    {
        QList<int> numbers;
        for (const QString &command : commands(mark)) {
            if (command.section(u' ', 0, 0) != QLatin1String(subject.call))
                qFatal("another value was sent: %s", qPrintable(command));
            numbers << command.section(u' ', 1).toInt();
        }
        return numbers;
    }

    const Subject &subject;
};

/// The page with the range slider of the manual mode, from 4000 to 8000.
struct RangePage : VideoPage {
    RangePage()
        : VideoPage([](emulator::Camera &camera) {
              camera.otherClient().set("agc.method", 3);
              camera.otherClient().set("agc.manualLow", 4000);
              camera.otherClient().set("agc.manualHigh", 8000);
          })
    {
    }

    QQuickItem &slider() const { return *item("Manual Low").parentItem(); }
    int handle(const char *name) const
    {
        return static_cast<int>(slider().property(name).value<QObject *>()->property("value").toDouble());
    }
    QPoint placeOf(double count) const
    {
        return slider().mapToScene({8 + count / 16383 * (slider().width() - 16), slider().height() / 2}).toPoint();
    }
    void drag(double from, double to)
    {
        const int first = placeOf(from).x();
        const int last = placeOf(to).x();
        QTest::mousePress(&window(), Qt::LeftButton, {}, placeOf(from));
        for (int x = first; x != last; x += last > first ? 1 : -1)
            QTest::mouseMove(&window(), {x, placeOf(to).y()});
        QTest::mouseMove(&window(), placeOf(to));
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, placeOf(to));
    }
    QList<int> values() const { return {handle("first"), handle("second"), value("manualLow"), value("manualHigh")}; }
};

} // namespace

/// The sliders of the Video page: a slider sends each value once, and never an older one after a newer one.
class tst_VideoTabSliders : public Test
{
    Q_OBJECT

private slots:
    void eachValueIsSentOnce_data();
    void eachValueIsSentOnce();
    void aSlowCameraGetsTheSameValues();
    void keysMove_data() { eachValueIsSentOnce_data(); }
    void keysMove();
    void aReadSendsNothing_data() { eachValueIsSentOnce_data(); }
    void aReadSendsNothing();
    void aReadEndsADrag();
    void aRefusedValueGoesBack();
    void allControlsOfAValueAgree_data();
    void allControlsOfAValueAgree();

    void theRangeIsDragged();
    void theRangeIsMovedByKeys();
    void theHandlesDoNotPassEachOther();
    void theRangeFollowsTheCamera();
    void aReversedRangeIsAStep();
    void aRefusedEndGoesBack();
};

void tst_VideoTabSliders::eachValueIsSentOnce_data()
{
    QTest::addColumn<int>("subject");
    for (int index = 0; index < int(std::size(subjects)); ++index)
        QTest::newRow(subjects[index].name) << index;
}

void tst_VideoTabSliders::eachValueIsSentOnce()
{
    QFETCH(const int, subject);
    const Subject &of = subjects[subject];
    SliderPage page(of);
    QCOMPARE(int(page.shownValue()), of.least);
    size_t mark = page.gate().mark();
    page.drag(0, 1);
    QList<int> sent = page.sentSince(mark);
    QVERIFY(!sent.isEmpty());
    QVERIFY(std::ranges::adjacent_find(sent, std::greater_equal()) == sent.end());
    QCOMPARE(sent.last(), of.most);
    // Each value of a short range, and one for nearly each pixel of a long one.
    QVERIFY2(sent.size() >= std::min(of.most - of.least, 200), qPrintable(QString::number(sent.size())));
    QCOMPARE(page.modelValue(), of.most);
    QCOMPARE(int(page.shownValue()), of.most);

    mark = page.gate().mark();
    page.drag(1, 0);
    sent = page.sentSince(mark);
    QVERIFY(!sent.isEmpty());
    QVERIFY(std::ranges::adjacent_find(sent, std::less_equal()) == sent.end());
    QCOMPARE(sent.last(), of.least);
    QCOMPARE(page.modelValue(), of.least);
    page.settle();
    QCOMPARE(page.sentSince(mark), sent);
}

void tst_VideoTabSliders::aSlowCameraGetsTheSameValues()
{
    SliderPage page(subjects[2]);
    const auto sentByDrag = [&] {
        const size_t mark = page.gate().mark();
        page.drag(0, 1);
        page.settle();
        const QList<int> sent = page.sentSince(mark);
        page.drag(1, 0);
        return sent;
    };
    const QList<int> sent = sentByDrag();
    page.gate().delay(2);
    QCOMPARE(sentByDrag(), sent);
    QCOMPARE(page.modelValue(), page.subject.least);
    QCOMPARE(int(page.shownValue()), page.subject.least);
}

void tst_VideoTabSliders::keysMove()
{
    QFETCH(const int, subject);
    const Subject &of = subjects[subject];
    SliderPage page(of);
    page.slider().forceActiveFocus(Qt::TabFocusReason);
    const auto sentBy = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        const size_t mark = page.gate().mark();
        page.VideoPage::press(key, modifiers);
        return page.sentSince(mark);
    };
    const int pageStep = int(std::round(std::max(1.0, (of.most - of.least) / 20.0)));
    QCOMPARE(sentBy(Qt::Key_Right), QList<int>{of.least + 1});
    QCOMPARE(sentBy(Qt::Key_Left), QList<int>{of.least});
    QCOMPARE(sentBy(Qt::Key_Left), QList<int>());
    const QList<int> paged = sentBy(Qt::Key_PageUp);
    QVERIFY(paged.size() == 1 && std::abs(paged.first() - of.least - pageStep) <= 1);
    QCOMPARE(int(page.shownValue()), paged.first());
    QCOMPARE(sentBy(Qt::Key_Right, Qt::ShiftModifier), QList<int>{std::min(of.most, paged.first() + 10)});
    QCOMPARE(page.modelValue(), std::min(of.most, paged.first() + 10));
    QCOMPARE(int(page.shownValue()), page.modelValue());
}

void tst_VideoTabSliders::aReadSendsNothing()
{
    QFETCH(const int, subject);
    const Subject &of = subjects[subject];
    SliderPage page(of);
    const std::string getter = "zvtGet" + std::string(of.call).substr(6);
    for (const int number : {of.most, of.least, (of.most + of.least) / 2}) {
        page.gate().script(getter, number);
        QCOMPARE(page.commandsOf([&] { page.refresh(); }), QStringList());
        QCOMPARE(int(page.shownValue()), number);
    }
}

void tst_VideoTabSliders::aReadEndsADrag()
{
    SliderPage page(subjects[0]);
    page.press(0);
    page.move(0.25);
    const int dragged = page.modelValue();
    QVERIFY(dragged > 1000);
    page.gate().hold("zvtGetVideoAGCMethod");
    QMetaObject::invokeMethod(page.video(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtGetVideoAGCMethod"));
    const size_t mark = page.gate().mark();
    page.move(0.5);
    page.move(0.75);
    QVERIFY(page.set("agc.plateau", 77));
    page.gate().release("*");
    page.settle();
    page.move(0.9);
    page.release(0.9);
    page.settle();
    // Nothing was sent during the read, and the slider shows what was read.
    QCOMPARE(page.sentSince(mark), QList<int>());
    QCOMPARE(page.modelValue(), 77);
    QCOMPARE(int(page.shownValue()), 77);
}

void tst_VideoTabSliders::aRefusedValueGoesBack()
{
    SliderPage page(subjects[3]);
    page.gate().failAlways("zvtSetVideoContrast");
    page.press(0);
    page.move(0.5);
    QVERIFY(page.shownValue() > -10);
    page.release(0.5);
    QCOMPARE(int(page.shownValue()), -128);
    QCOMPARE(page.modelValue(), -128);
}

void tst_VideoTabSliders::allControlsOfAValueAgree_data()
{
    QTest::addColumn<bool>("refused");
    QTest::newRow("accepted") << false;
    QTest::newRow("refused") << true;
}

void tst_VideoTabSliders::allControlsOfAValueAgree()
{
    QFETCH(const bool, refused);
    SliderPage page(subjects[1]);
    const auto agree = [&] {
        const int plateau = page.value("plateauP");
        const int sharpness = page.value("ddeSharpness");
        return page.item("Plateau P Variable").property("value").toInt() == plateau
            && page.text("Plateau P Value").toInt() == plateau && int(page.shownValue()) == sharpness
            && page.shown("DDE Sharpness Value").toInt() == sharpness;
    };
    QVERIFY(agree());
    if (refused)
        for (const char *call : {"zvtSetVideoAGCPlateauP", "zvtSetVideoAGCDDESharpness"})
            page.gate().failAlways(call);
    page.drag(0, 0.5);
    page.choose("DDE Sharpness Value", "7");
    page.enter(page.item("Plateau P Value"), "555");
    page.step("Plateau P Variable", Qt::Key_PageUp);
    page.settle();
    if (!refused)
        QVERIFY(agree());
    page.refresh();
    QVERIFY(agree());
    QVERIFY(page.set("agc.plateau", 9999) && page.set("agc.sharpness", 2));
    page.refresh();
    QVERIFY(agree());
    QCOMPARE(page.text("Plateau P Value"), "9999");
}

// The range slider

void tst_VideoTabSliders::theRangeIsDragged()
{
    RangePage page;
    QCOMPARE(page.values(), QList<int>({4000, 8000, 4000, 8000}));
    QStringList sent = page.commandsOf([&] { page.drag(4000, 1000); });
    QVERIFY(sent.size() > 20);
    for (const QString &command : sent)
        QVERIFY2(command.startsWith("zvtSetVideoAGCManualLow "), qPrintable(command));
    QCOMPARE(sent.removeDuplicates(), 0);
    QVERIFY(std::abs(page.value("manualLow") - 1000) < 80);
    sent = page.commandsOf([&] { page.drag(8000, 12000); });
    for (const QString &command : sent)
        QVERIFY2(command.startsWith("zvtSetVideoAGCManualHigh "), qPrintable(command));
    QCOMPARE(sent.removeDuplicates(), 0);
    QVERIFY(std::abs(page.value("manualHigh") - 12000) < 80);
    QCOMPARE(page.text("Manual Low Value").toInt(), page.value("manualLow"));
    QCOMPARE(page.text("Manual High Value").toInt(), page.value("manualHigh"));
    QCOMPARE(page.values().mid(0, 2), page.values().mid(2, 2));
}

void tst_VideoTabSliders::theRangeIsMovedByKeys()
{
    RangePage page;
    page.item("Manual Low Value").forceActiveFocus(Qt::TabFocusReason);
    const auto sentBy = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        return page.commandsOf([&] { page.press(key, modifiers); });
    };
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Manual Low").hasActiveFocus());
    QCOMPARE(sentBy(Qt::Key_Left), QStringList("zvtSetVideoAGCManualLow 3999"));
    QCOMPARE(sentBy(Qt::Key_Right, Qt::ShiftModifier), QStringList("zvtSetVideoAGCManualLow 4009"));
    QCOMPARE(sentBy(Qt::Key_PageDown), QStringList("zvtSetVideoAGCManualLow 3190"));
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Manual High").hasActiveFocus());
    QCOMPARE(sentBy(Qt::Key_Right), QStringList("zvtSetVideoAGCManualHigh 8001"));
    QCOMPARE(sentBy(Qt::Key_PageUp), QStringList("zvtSetVideoAGCManualHigh 8820"));
    QCOMPARE(page.values(), QList<int>({3190, 8820, 3190, 8820}));
    page.press(Qt::Key_Tab);
    QVERIFY(page.item("Manual High Value").hasActiveFocus());
}

void tst_VideoTabSliders::theHandlesDoNotPassEachOther()
{
    RangePage page;
    page.drag(4000, 12000);
    page.settle();
    QCOMPARE(page.values(), QList<int>({8000, 8000, 8000, 8000}));
}

void tst_VideoTabSliders::theRangeFollowsTheCamera()
{
    RangePage page;
    // Each new end is beyond the other old one.
    for (const auto &[low, high] : {std::pair{9000, 12000}, {10, 20}, {0, 16383}, {16383, 16383}}) {
        QVERIFY(page.set("agc.manualLow", low) && page.set("agc.manualHigh", high));
        QCOMPARE(page.commandsOf([&] { page.refresh(); }), QStringList());
        QCOMPARE(page.values(), QList<int>({low, high, low, high}));
    }
}

void tst_VideoTabSliders::aReversedRangeIsAStep()
{
    RangePage page;
    QVERIFY(page.set("agc.manualLow", 6000) && page.set("agc.manualHigh", 2000));
    page.refresh();
    QCOMPARE(page.values(), QList<int>({6000, 6000, 6000, 2000}));
    QCOMPARE(page.text("Manual High Value"), "2000");
}

void tst_VideoTabSliders::aRefusedEndGoesBack()
{
    RangePage page;
    page.gate().failAlways("zvtSetVideoAGCManualLow");
    page.drag(4000, 1000);
    QCOMPARE(page.values(), QList<int>({4000, 8000, 4000, 8000}));
}

ZVT_TEST(tst_VideoTabSliders)
#include "tst_VideoTabSliders.moc"
