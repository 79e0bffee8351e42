#include "tests/page/DownloadPage.h"
#include "tests/support/Test.h"

#include "platform/emulator/devices/Recorder.h"

using hlx::cam::ui::WidgetFileDialog;

namespace
{

/// Replaces the text of the field with an IRIG time, key by key.
void typeTime(DownloadPage &page, const QString &field, const QString &digits)
{
    page.item(field).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Home);
    page.type(digits);
}

/// The digits of the IRIG time of a recorded frame.
QString timeOfFrame(DownloadPage &page, uint64_t frame)
{
    const auto &recorder = *page.rig().camera().device<emulator::Recorder>();
    const auto time = recorder.recorded(*recorder.memory(), frame).irigTime;
    return QString::asprintf("%03u%02u%02u%02u%03u%03u", time.day, time.hour, time.minute, time.second,
                             time.millisecond, time.microsecond);
}

} // namespace

/// The dialog that asks which part of a recording is downloaded, and the choice of the file.
class tst_DownloadSettings : public Test
{
    Q_OBJECT

private slots:
    void fieldsFollowTheRange();
    void framesAreThoseOfThePlayback();
    void openingResetsAllFields();
    void rangesDownload_data();
    void rangesDownload();
    void editedFramesDownload();
    void editedTimesDownload();
    void enterInAFieldSaves();
    void wrongFramesCannotBeSaved_data();
    void wrongFramesCannotBeSaved();
    void framesInTheWrongOrderAreExplained_data();
    void framesInTheWrongOrderAreExplained();
    void wrongTimesCannotBeSaved_data();
    void wrongTimesCannotBeSaved();
    void cancelDownloadsNothing_data();
    void cancelDownloadsNothing();
    void fileDialogHasNameAndFilters_data();
    void fileDialogHasNameAndFilters();
    void changedStatePreventsTheDownload();
    void changeDuringTheFileDialogPreventsTheDownload_data();
    void changeDuringTheFileDialogPreventsTheDownload();
    void fits_data();
    void fits();
};

void tst_DownloadSettings::fieldsFollowTheRange()
{
    DownloadPage page;
    page.open();
    QCOMPARE(page.dialogTitle(), "Download Settings");
    QCOMPARE(page.shown("Range"), "Frame Range");
    QVERIFY(page.find("Start Frame") && page.find("End Frame") && !page.find("Start Time") && !page.find("End Time"));
    const double height = page.item("Save").mapToScene({}).y();
    page.chooseRange("Entire Movie");
    QVERIFY(!page.find("Start Frame") && !page.find("End Frame") && !page.find("Start Time") && !page.find("End Time"));
    QCOMPARE(page.item("Save").mapToScene({}).y(), height);
    page.chooseRange("IRIG Range");
    QVERIFY(!page.find("Start Frame") && !page.find("End Frame") && page.find("Start Time") && page.find("End Time"));
    QCOMPARE(page.text("Start Time"), "001:00:00:00.000000");
    QCOMPARE(page.text("End Time"), "001:00:00:00.000000");
    QCOMPARE(page.item("End Time").property("inputMask").toString().section(u';', 0, 0), "999:99:99:99.999999");
    QCOMPARE(page.item("Save").mapToScene({}).y(), height);
}

void tst_DownloadSettings::framesAreThoseOfThePlayback()
{
    DownloadPage page;
    page.open();
    QCOMPARE(page.text("Start Frame"), "7");
    QCOMPARE(page.text("End Frame"), "300");
    page.enter(page.item("Start Frame"), "9");
    page.click("Cancel");
    page.settle();
    page.open();
    QCOMPARE(page.text("Start Frame"), "7");
    QCOMPARE(page.text("End Frame"), "300");
}

void tst_DownloadSettings::openingResetsAllFields()
{
    DownloadPage page;
    page.open();
    page.chooseRange("IRIG Range");
    typeTime(page, "Start Time", "045070509012345");
    // Not acceptable, so it stays in the field.
    typeTime(page, "End Time", "400070509012345");
    page.click("Cancel");
    page.settle();
    page.open();
    QCOMPARE(page.shown("Range"), "Frame Range");
    page.chooseRange("IRIG Range");
    QCOMPARE(page.text("Start Time"), "001:00:00:00.000000");
    QCOMPARE(page.text("End Time"), "001:00:00:00.000000");
}

void tst_DownloadSettings::rangesDownload_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<uint>("first");
    QTest::addColumn<uint>("last");
    for (const bool byKeyboard : {false, true}) {
        const char *way = byKeyboard ? "by keyboard" : "by mouse";
        QTest::addRow("Frame Range %s", way) << byKeyboard << 7U << 300U;
        QTest::addRow("Entire Movie %s", way) << byKeyboard << 0U << 4294967295U;
    }
}

void tst_DownloadSettings::rangesDownload()
{
    QFETCH(const bool, byKeyboard);
    QFETCH(const uint, first);
    QFETCH(const uint, last);
    DownloadPage page;
    page.open();
    if (QTest::currentDataTag()[0] == 'E')
        page.chooseRange("Entire Movie");
    page.answerFile("A shot.rqs");
    const size_t mark = page.gate().mark();
    page.save(byKeyboard);
    QCOMPARE(page.downloads(mark), QStringList(page.downloadOf("A shot.rqs", first, last)));
    QCOMPARE(page.dialogTitle(), "");
}

void tst_DownloadSettings::editedFramesDownload()
{
    DownloadPage page;
    page.open();
    page.enter(page.item("Start Frame"), "12");
    page.item("End Frame").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.type("4294967295");
    page.answerFile("Shot.rqs");
    const size_t mark = page.gate().mark();
    page.save();
    QCOMPARE(page.downloads(mark), QStringList(page.downloadOf("Shot.rqs", 12, 4294967295)));
}

void tst_DownloadSettings::editedTimesDownload()
{
    DownloadPage page;
    QVERIFY(page.record(20));
    page.open();
    page.chooseRange("IRIG Range");
    typeTime(page, "Start Time", timeOfFrame(page, 5));
    typeTime(page, "End Time", timeOfFrame(page, 12));
    page.saveScreenshot();
    page.answerFile("Shot.rqs");
    const size_t mark = page.gate().mark();
    page.save();
    QCOMPARE(page.downloads(mark), (QStringList{"FindFrameRange object, object", page.downloadOf("Shot.rqs", 5, 12)}));
    QCOMPARE(page.dialogTitle(), "");
}

void tst_DownloadSettings::enterInAFieldSaves()
{
    DownloadPage page;
    page.open();
    page.answerFile("Shot.rqs");
    const size_t mark = page.gate().mark();
    page.enter(page.item("End Frame"), "20", Qt::Key_Return);
    QVERIFY(QTest::qWaitFor([&] { return !page.downloads(mark).isEmpty(); }));
    page.settle();
    QCOMPARE(page.downloads(mark), QStringList(page.downloadOf("Shot.rqs", 7, 20)));
}

void tst_DownloadSettings::wrongFramesCannotBeSaved_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QStringLiteral("Start Frame") << QString();
    QTest::newRow("no number") << QStringLiteral("End Frame") << QStringLiteral("x");
    QTest::newRow("too large") << QStringLiteral("End Frame") << QStringLiteral("4294967296");
    QTest::newRow("end before start") << QStringLiteral("End Frame") << QStringLiteral("6");
    QTest::newRow("start after end") << QStringLiteral("Start Frame") << QStringLiteral("301");
}

void tst_DownloadSettings::wrongFramesCannotBeSaved()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    DownloadPage page;
    page.open();
    page.item(field).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    page.type(text);
    QVERIFY(!page.enabled("Save"));
    page.press(Qt::Key_Return);
    page.settle();
    QCOMPARE(page.dialogTitle(), "Download Settings");
    page.saveScreenshot();
    // Another range does not need the field.
    page.chooseRange("Entire Movie");
    QVERIFY(page.enabled("Save"));
}

void tst_DownloadSettings::framesInTheWrongOrderAreExplained_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::newRow("end before start") << QStringLiteral("End Frame") << QStringLiteral("6");
    QTest::newRow("start after end") << QStringLiteral("Start Frame") << QStringLiteral("301");
}

void tst_DownloadSettings::framesInTheWrongOrderAreExplained()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    DownloadPage page;
    page.open();
    page.enter(page.item(field), text);
    for (const char *shown : {"Start Frame", "End Frame"}) {
        QQuickItem &box = page.item(shown);
        QVERIFY2(box.property("marked").toBool(), shown);
        // The offscreen platform does not enable hover effects itself.
        box.setProperty("hoverEnabled", true);
        QTest::mouseMove(&page.window(), box.mapToScene({20, box.height() / 2}).toPoint());
        QTRY_COMPARE(page.hint(), "The end is before the start");
        // The tool tip covers the other field.
        QTest::mouseMove(&page.window(), {4, 4});
        QTRY_COMPARE(page.hint(), "");
    }
    QVERIFY(!page.enabled("Save"));
    page.enter(page.item(field), "100");
    for (const char *shown : {"Start Frame", "End Frame"})
        QVERIFY2(!page.item(shown).property("marked").toBool(), shown);
    QVERIFY(page.enabled("Save"));
}

void tst_DownloadSettings::wrongTimesCannotBeSaved_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("day 0") << QStringLiteral("000000000000000");
    QTest::newRow("day 367") << QStringLiteral("367000000000000");
    QTest::newRow("hour 24") << QStringLiteral("001240000000000");
    QTest::newRow("minute 60") << QStringLiteral("001006000000000");
    QTest::newRow("second 60") << QStringLiteral("001000060000000");
}

void tst_DownloadSettings::wrongTimesCannotBeSaved()
{
    QFETCH(const QString, text);
    DownloadPage page;
    page.open();
    page.chooseRange("IRIG Range");
    QVERIFY(page.enabled("Save"));
    typeTime(page, "End Time", text);
    QVERIFY(!page.enabled("Save"));
    QCOMPARE(page.item("End Time").property("fault").toString(), "Not an IRIG time");
    page.press(Qt::Key_Home);
    page.type("366235959999999");
    QVERIFY(page.enabled("Save"));
    page.press(Qt::Key_Home);
    page.press(Qt::Key_Delete);
    QVERIFY(!page.enabled("Save"));
}

void tst_DownloadSettings::cancelDownloadsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"Cancel", "Escape", "Cancel of the file dialog"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void tst_DownloadSettings::cancelDownloadsNothing()
{
    QFETCH(const QString, way);
    DownloadPage page;
    page.open();
    const size_t mark = page.gate().mark();
    if (way == "Cancel") {
        page.click(way);
    } else if (way == "Escape") {
        page.press(Qt::Key_Escape);
    } else {
        WidgetFileDialog::setNextAnswer(QUrl());
        page.click("Save");
    }
    page.settle();
    QCOMPARE(page.dialogTitle(), "");
    QCOMPARE(page.downloads(mark), QStringList());
}

void tst_DownloadSettings::fileDialogHasNameAndFilters_data()
{
    QTest::addColumn<bool>("movie");
    QTest::addColumn<QString>("name");
    QTest::newRow("recording") << false << QStringLiteral("Shot");
    QTest::newRow("movie") << true << QStringLiteral("2-Engine start");
}

void tst_DownloadSettings::fileDialogHasNameAndFilters()
{
    QFETCH(const bool, movie);
    QFETCH(const QString, name);
    DownloadPage page;
    if (movie) {
        page.gate().script("zvtSsdLoadMovie", true);
        page.gate().script("controller.SetWindow", true);
        page.click("Load Movie");
        page.settle();
        page.settle();
        page.press(Qt::Key_Down);
        page.press(Qt::Key_Down);
        page.press(Qt::Key_Return);
        page.settle();
        QVERIFY(page.value("movieLoaded").toBool());
    }
    page.open();
    QString shownName;
    QStringList filters;
    bool writes = false;
    WidgetFileDialog::setNextAnswer([&](const WidgetFileDialog &dialog) {
        shownName = dialog.property("defaultName").toString();
        filters = dialog.property("nameFilters").toStringList();
        writes = !dialog.property("selectExisting").toBool();
        return QUrl();
    });
    page.click("Save");
    QVERIFY(QTest::qWaitFor([] { return !WidgetFileDialog::hasNextAnswer(); }));
    QCOMPARE(shownName, name);
    QCOMPARE(filters, (QStringList{"RQS Files (*.rqs)", "All Files (*.*)"}));
    QVERIFY(writes);
}

void tst_DownloadSettings::changedStatePreventsTheDownload()
{
    DownloadPage page;
    page.open();
    page.enterState(Triggered);
    QVERIFY(!page.enabled("Save") && page.enabled("Cancel"));
    page.enterState(Complete);
    QVERIFY(page.enabled("Save"));
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled("Save"));
}

void tst_DownloadSettings::changeDuringTheFileDialogPreventsTheDownload_data()
{
    QTest::addColumn<bool>("connected");
    QTest::newRow("recording") << true;
    QTest::newRow("disconnected") << false;
}

void tst_DownloadSettings::changeDuringTheFileDialogPreventsTheDownload()
{
    QFETCH(const bool, connected);
    DownloadPage page;
    page.open();
    page.chooseRange("Entire Movie");
    const size_t mark = page.gate().mark();
    WidgetFileDialog::setNextAnswer([&](const WidgetFileDialog &) {
        if (connected)
            page.enterState(Triggered);
        else
            page.rig().camera().disconnect();
        CameraRig::settle();
        return QUrl::fromLocalFile(page.file("Shot.rqs"));
    });
    page.save();
    QCOMPARE(page.downloads(mark), QStringList());
    QCOMPARE(page.dialogTitle(), "");
}

void tst_DownloadSettings::fits_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("least") << QSize(640, 480);
    QTest::newRow("large") << QSize(900, 700);
}

void tst_DownloadSettings::fits()
{
    QFETCH(const QSize, size);
    DownloadPage page(size);
    page.item("Download Movie").forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    page.settle();
    const QRectF place(QPointF(), size);
    for (const char *range : {"Frame Range", "Entire Movie", "IRIG Range"}) {
        if (page.shown("Range") != range)
            page.chooseRange(range);
        page.saveScreenshot(QString::fromLatin1(range));
        const auto texts = page.dialogTexts();
        QVERIFY(texts.size() >= 4);
        for (const QQuickItem *text : texts)
            QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    }
}

ZVT_TEST(tst_DownloadSettings)
#include "tst_DownloadSettings.moc"
