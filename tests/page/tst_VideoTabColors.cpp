#include "tests/page/OverlaySection.h"
#include "tests/support/Test.h"

namespace
{

/// A colour that the operator can pick: what has it, its property, its SDK setter and the entry that the camera has.
struct PickedColor {
    QString subject;
    const char *property;
    QString setter;
    int entry;

    QString button() const { return QStringLiteral("Pick %1 Color").arg(subject); }
    QString command(int index) const { return QStringLiteral("zvtSetVideoOverlay%1 %2").arg(setter).arg(index); }
};

const QList<PickedColor> pickedColors{{"Foreground", "overlayTextColorIndex", "TextColor", 20},
                                      {"Background", "overlayTextBackgroundColorIndex", "TextBackground", 30},
                                      {"AGC ROI", "agcRoiColorIndex", "AGCROIColor", 40},
                                      {"Focus ROI", "focusRoiColorIndex", "FocusROIColor", 50}};

QString swatch(int index) { return QStringLiteral("Color %1").arg(index); }

/// The section on a camera that has all colours.
struct Colors : OverlaySection {
    Colors()
        : OverlaySection("everything", [](emulator::Camera &camera) {
              camera.otherClient().set("overlay.textColor", 20);
              camera.otherClient().set("overlay.textBackground", 30);
              camera.otherClient().set("overlay.agcRoiColor", 40);
              camera.otherClient().set("overlay.focusRoiColor", 50);
              camera.otherClient().set("overlay.showAgcRoi", true);
              camera.gate().script("zvtGetVideoOverlayShowFocusROI", true);
          })
    {
    }

    bool isOpen() const { return find(swatch(255)) != nullptr; }
    void open(const QString &button, bool byKeyboard = false)
    {
        use(button, byKeyboard);
        QTRY_VERIFY(isOpen());
        awaitFrame();
    }
    bool marked(int index) const
    {
        const auto *mark = item(swatch(index)).property("contentItem").value<QQuickItem *>();
        return !mark->property("text").toString().isEmpty();
    }
    /// The place of the open picker.
    QRectF pickerPlace() const
    {
        const QQuickItem *popup = &item(swatch(1));
        while (!popup->inherits("QQuickPopupItem"))
            popup = popup->parentItem();
        return popup->mapRectToScene(popup->boundingRect());
    }
    QList<int> entries() const
    {
        QList<int> values;
        for (const PickedColor &color : pickedColors)
            values << overlay()->property(color.property).toInt();
        return values;
    }
};

} // namespace

/// The colours of the section "Overlay Settings" of the Video page, and the popup that picks them.
class tst_VideoTabColors : public Test
{
    Q_OBJECT

private slots:
    void theRadiosFollowTheCamera();
    void theRadiosTurnAColourOnAndOff_data();
    void theRadiosTurnAColourOnAndOff();
    void buttonsShowTheirColour();
    void buttonsNeedTheirColour();
    void aTransparentTextHasNoColour();

    void onlyThePickedColourIsWritten_data();
    void onlyThePickedColourIsWritten();
    void closingWritesNothing_data();
    void closingWritesNothing();
    void closingKeepsWhatTheCameraHasNow();
    void aPickReplacesWhatTheCameraHasNow();
    void eachPickWritesToTheButtonThatOpened();
    void keysWalkOverTheColours();
    void aReadKeepsTheEntryOfTheKeyboard();
    void theFocusReturnsToTheButton();
    void aDisconnectedCameraClosesThePicker();
    void aRemovedCameraIsSurvived();

    void thePickerIsBelowItsButton();
    void thePickerIsAboveAButtonAtTheBottom();
    void thePickerStaysInANarrowWindow();
    void thePickerStaysInALowWindow();
    void itFitsItsWindow_data();
    void itFitsItsWindow();
};

void tst_VideoTabColors::theRadiosFollowTheCamera()
{
    Colors page;
    for (const bool on : {true, false, true}) {
        QVERIFY(page.set("overlay.textColor", on ? 20 : 0) && page.set("overlay.textBackground", on ? 0 : 30));
        page.refresh();
        QCOMPARE(page.checked("Foreground: Color"), on);
        QCOMPARE(page.checked("Foreground: Transparent"), !on);
        QCOMPARE(page.checked("Background: Color"), !on);
        QCOMPARE(page.checked("Background: Transparent"), on);
    }
}

void tst_VideoTabColors::theRadiosTurnAColourOnAndOff_data()
{
    QTest::addColumn<int>("color");
    QTest::addColumn<bool>("byKeyboard");
    for (int color = 0; color < 2; ++color)
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s %s", qPrintable(pickedColors.at(color).subject), byKeyboard ? "keyboard" : "mouse")
                << color << byKeyboard;
}

void tst_VideoTabColors::theRadiosTurnAColourOnAndOff()
{
    QFETCH(const int, color);
    QFETCH(const bool, byKeyboard);
    const PickedColor &row = pickedColors.at(color);
    Colors page;
    const QString on = row.subject + ": Color";
    const QString off = row.subject + ": Transparent";
    QCOMPARE(page.commandsOf([&] { page.use(off, byKeyboard); }), QStringList(row.command(0)));
    QVERIFY(page.checked(off) && !page.checked(on));
    // A click on the chosen button does nothing.
    QCOMPARE(page.commandsOf([&] { page.use(off, byKeyboard); }), QStringList());
    // The colour returns.
    QCOMPARE(page.commandsOf([&] { page.use(on, byKeyboard); }), QStringList(row.command(row.entry)));
    QVERIFY(page.checked(on) && !page.checked(off));
}

void tst_VideoTabColors::buttonsShowTheirColour()
{
    Colors page;
    const QStringList palette = page.overlay()->property("videoPaletteStringList").toStringList();
    const auto shown = [&](const PickedColor &color) {
        const auto *face = page.item(color.button()).property("contentItem").value<QQuickItem *>();
        return face->property("color").value<QColor>();
    };
    for (const PickedColor &color : pickedColors)
        QCOMPARE(shown(color).name(), palette.at(color.entry));
    QVERIFY(page.set("overlay.agcRoiColor", 2));
    page.refresh();
    QCOMPARE(shown(pickedColors.at(2)), QColor("#ff0000"));
    QVERIFY(page.set("overlay.agcRoiColor", 0));
    page.refresh();
    QCOMPARE(shown(pickedColors.at(2)), QColor("black"));
}

void tst_VideoTabColors::buttonsNeedTheirColour()
{
    Colors page;
    for (const PickedColor &color : pickedColors)
        QVERIFY(page.enabled(color.button()));
    page.click("Foreground: Transparent");
    page.click("Background: Transparent");
    page.click("AGC ROI");
    page.click("Focus ROI");
    for (const PickedColor &color : pickedColors)
        QVERIFY(!page.enabled(color.button()));
}

// Entry 0 is transparent for the text, and the first colour of the palette for its background.
void tst_VideoTabColors::aTransparentTextHasNoColour()
{
    Colors page;
    const auto face = [&](const PickedColor &color) {
        return page.item(color.button()).property("contentItem").value<QQuickItem *>();
    };
    const auto dash = [&](const PickedColor &color) {
        const QQuickItem *label = face(color)->childItems().constFirst();
        return label->isVisible() ? label->property("text").toString() : QString();
    };
    for (const PickedColor &color : pickedColors)
        QCOMPARE(dash(color), QString());
    QVERIFY(page.set("overlay.textColor", 0) && page.set("overlay.textBackground", 0));
    page.refresh();
    QCOMPARE(face(pickedColors.at(0))->property("color").value<QColor>(), QColor("#1a1a21"));
    QCOMPARE(dash(pickedColors.at(0)), QStringLiteral("–"));
    QCOMPARE(face(pickedColors.at(1))->property("color").value<QColor>(), QColor("black"));
    QCOMPARE(dash(pickedColors.at(1)), QString());
}

void tst_VideoTabColors::onlyThePickedColourIsWritten_data()
{
    QTest::addColumn<int>("color");
    QTest::addColumn<bool>("byKeyboard");
    for (int color = 0; color < pickedColors.size(); ++color)
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s %s", qPrintable(pickedColors.at(color).subject), byKeyboard ? "keyboard" : "mouse")
                << color << byKeyboard;
}

void tst_VideoTabColors::onlyThePickedColourIsWritten()
{
    QFETCH(const int, color);
    QFETCH(const bool, byKeyboard);
    const PickedColor &row = pickedColors.at(color);
    Colors page;
    QList<int> expected = page.entries();
    page.open(row.button(), byKeyboard);
    for (int index = 1; index < 256; ++index)
        QCOMPARE(page.marked(index), index == row.entry);
    // The entry below the present one.
    const int picked = row.entry + 32;
    QCOMPARE(page.commandsOf([&] {
        if (byKeyboard) {
            page.press(Qt::Key_Down);
            page.press(Qt::Key_Return);
        } else {
            page.click(swatch(picked));
        }
    }),
             QStringList(row.command(picked)));
    QVERIFY(!page.isOpen());
    expected[color] = picked;
    QCOMPARE(page.entries(), expected);
    // The mark is on the new entry.
    page.open(row.button(), byKeyboard);
    QVERIFY(page.marked(picked) && !page.marked(row.entry));
}

void tst_VideoTabColors::closingWritesNothing_data()
{
    QTest::addColumn<int>("color");
    QTest::addColumn<bool>("byKeyboard");
    for (int color = 0; color < pickedColors.size(); ++color)
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s %s", qPrintable(pickedColors.at(color).subject), byKeyboard ? "Esc" : "outside")
                << color << byKeyboard;
}

void tst_VideoTabColors::closingWritesNothing()
{
    QFETCH(const int, color);
    QFETCH(const bool, byKeyboard);
    Colors page;
    const QList<int> before = page.entries();
    page.open(pickedColors.at(color).button(), byKeyboard);
    page.press(Qt::Key_Right);
    QCOMPARE(page.commandsOf([&] {
        if (byKeyboard)
            page.press(Qt::Key_Escape);
        else // On another control, which does not get the click.
            page.click("Show Messages");
    }),
             QStringList());
    QVERIFY(!page.isOpen());
    QCOMPARE(page.entries(), before);
    QVERIFY(page.checked("Show Messages"));
}

// Another client changes the colour, and a read shows it, while the picker is open.
void tst_VideoTabColors::closingKeepsWhatTheCameraHasNow()
{
    Colors page;
    page.open("Pick AGC ROI Color");
    QVERIFY(page.set("overlay.agcRoiColor", 100));
    QMetaObject::invokeMethod(page.overlay(), "refresh");
    page.settle();
    QVERIFY(page.isOpen());
    QVERIFY(page.marked(100) && !page.marked(40));
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Escape); }), QStringList());
    QCOMPARE(page.entries(), QList<int>({20, 30, 100, 50}));
}

void tst_VideoTabColors::aPickReplacesWhatTheCameraHasNow()
{
    Colors page;
    page.open("Pick AGC ROI Color");
    QVERIFY(page.set("overlay.agcRoiColor", 100));
    QMetaObject::invokeMethod(page.overlay(), "refresh");
    page.settle();
    // The entry with which the picker opened.
    QCOMPARE(page.commandsOf([&] { page.click(swatch(40)); }), QStringList("zvtSetVideoOverlayAGCROIColor 40"));
    QCOMPARE(page.entries(), QList<int>({20, 30, 40, 50}));
}

void tst_VideoTabColors::eachPickWritesToTheButtonThatOpened()
{
    Colors page;
    page.open("Pick Foreground Color");
    page.press(Qt::Key_Escape);
    page.open("Pick Focus ROI Color");
    QCOMPARE(page.commandsOf([&] { page.click(swatch(7)); }), QStringList("zvtSetVideoOverlayFocusROIColor 7"));
    page.open("Pick Background Color");
    QCOMPARE(page.commandsOf([&] { page.click(swatch(8)); }), QStringList("zvtSetVideoOverlayTextBackground 8"));
    page.open("Pick Foreground Color");
    // The present entry.
    QCOMPARE(page.commandsOf([&] { page.click(swatch(20)); }), QStringList());
    QCOMPARE(page.entries(), QList<int>({20, 8, 40, 7}));
}

void tst_VideoTabColors::keysWalkOverTheColours()
{
    Colors page;
    QVERIFY(page.set("overlay.agcRoiColor", 0));
    page.refresh();
    // Entry 0 is hidden, so the first one is 1, and no key leads to 0.
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Left, Qt::Key_Up, Qt::Key_Home}) {
        page.open("Pick AGC ROI Color", true);
        page.press(key);
        if (key != Qt::Key_Return)
            page.press(Qt::Key_Space);
        QVERIFY(!page.isOpen());
        QCOMPARE(page.entries().at(2), 1);
    }
}

// A read shows other colours: a palette that could not be read is black.
void tst_VideoTabColors::aReadKeepsTheEntryOfTheKeyboard()
{
    Colors page;
    page.open("Pick AGC ROI Color", true);
    page.press(Qt::Key_Right);
    const QQuickItem *button = &page.item(swatch(41));
    const auto *face = button->property("background").value<QQuickItem *>();
    QVERIFY(face->property("color").value<QColor>() != QColor("black"));
    page.rig().gate().failNext("zvtGetVideoOverlayPalette");
    QMetaObject::invokeMethod(page.overlay(), "refresh");
    page.settle();
    QVERIFY(page.isOpen());
    QVERIFY(&page.item(swatch(41)) == button);
    QCOMPARE(face->property("color").value<QColor>(), QColor("black"));
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList(pickedColors.at(2).command(41)));
}

void tst_VideoTabColors::theFocusReturnsToTheButton()
{
    Colors page;
    page.open("Pick Background Color", true);
    page.press(Qt::Key_Escape);
    QVERIFY(page.item("Pick Background Color").hasActiveFocus());
    QVERIFY(page.item("Pick Background Color").property("visualFocus").toBool());
}

void tst_VideoTabColors::aDisconnectedCameraClosesThePicker()
{
    Colors page;
    page.open("Pick AGC ROI Color");
    QCOMPARE(page.commandsOf([&] { page.rig().camera().disconnect(); }), QStringList());
    QVERIFY(!page.isOpen());
}

void tst_VideoTabColors::aRemovedCameraIsSurvived()
{
    Colors page;
    page.open("Pick AGC ROI Color");
    page.deleteModel();
    page.awaitFrame();
    QVERIFY(!page.isOpen());
}

// The place of the picker

void tst_VideoTabColors::thePickerIsBelowItsButton()
{
    Colors page;
    page.resize({1000, 1000});
    page.open("Pick Foreground Color");
    const QRectF button = page.place("Pick Foreground Color");
    QRectF picker = page.pickerPlace();
    QVERIFY(picker.top() >= button.bottom() && picker.top() <= button.bottom() + 4);
    // The right ends differ if the picker would leave the window at the left.
    QCOMPARE(picker.left(), std::max(0.0, button.right() - picker.width()));
    page.press(Qt::Key_Escape);
    page.resize({1500, 1000});
    page.open("Pick Focus ROI Color");
    picker = page.pickerPlace();
    QCOMPARE(picker.right(), page.place("Pick Focus ROI Color").right());
    QVERIFY(picker.left() > 0);
}

void tst_VideoTabColors::thePickerIsAboveAButtonAtTheBottom()
{
    Colors page;
    page.resize({1000, 1000});
    const QRectF before = page.place("Pick Background Color");
    // The button is at the bottom of the window.
    page.resize({1000, int(before.bottom()) + 40});
    page.open("Pick Background Color");
    const QRectF button = page.place("Pick Background Color");
    const QRectF picker = page.pickerPlace();
    QVERIFY(button.bottom() + picker.height() > page.window().height());
    QVERIFY(picker.bottom() <= button.top() && picker.bottom() >= button.top() - 4);
    QVERIFY(picker.top() >= 0);
}

void tst_VideoTabColors::thePickerStaysInANarrowWindow()
{
    Colors page;
    page.resize({640, 800});
    for (const PickedColor &color : pickedColors) {
        page.open(color.button());
        QVERIFY(QRectF(0, 0, 640, 800).contains(page.pickerPlace()));
        page.press(Qt::Key_Escape);
    }
    // Narrower than the picker: it begins at the left.
    page.resize({500, 800});
    page.open("Pick Foreground Color");
    QCOMPARE(page.pickerPlace().left(), 0.0);
}

void tst_VideoTabColors::thePickerStaysInALowWindow()
{
    Colors page;
    page.resize({640, 180});
    const double wanted = 8 * 17 + 16;
    page.open("Pick Foreground Color", true);
    // There is room neither below the button nor above it.
    const QRectF button = page.place("Pick Foreground Color");
    QVERIFY(button.top() < wanted && button.bottom() + wanted > 180);
    QCOMPARE(page.pickerPlace(), QRectF(0, 180 - wanted, 560, wanted));
}

void tst_VideoTabColors::itFitsItsWindow_data()
{
    QTest::addColumn<int>("width");
    QTest::newRow("640") << 640;
    QTest::newRow("900") << 900;
}

void tst_VideoTabColors::itFitsItsWindow()
{
    QFETCH(const int, width);
    Colors page;
    page.resize({width, 700});
    page.open("Pick AGC ROI Color", true);
    QVERIFY(QRectF(0, 0, width, 700).contains(page.pickerPlace()));
    page.saveScreenshot();
}

ZVT_TEST(tst_VideoTabColors)
#include "tst_VideoTabColors.moc"
