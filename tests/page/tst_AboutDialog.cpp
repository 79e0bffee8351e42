#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include <algorithm>
#include <thread>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

class tst_AboutDialog : public Test
{
    Q_OBJECT

private slots:
    void theRowsStandInOrder();
    void aRowThatCannotBeReadIsLeftOut();
    void theDialogIsBusyUntilTheFirstReading();
    void theCamerasModelIsReadOnlyOnShow();
    void everyOpeningReadsAgain();
    void theRowsAreSaved();
    void theFileDialogIsAsked();
    void theFolderIsKept();
    void aCancelledFileDialogWritesNothing();
    void itStaysUntilItIsClosed();
    void theFocusReturnsToTheConfigurationButton();
    void itIsAsWideAsItsWindowLets_data();
    void itIsAsWideAsItsWindowLets();
    void longValuesWrap();
    void thePageOutlivesItsModel();

private:
    static void open(PageDriver &driver);
    /// How often this thread has read the camera model from the camera since `mark`.
    static qsizetype modelReads(PageDriver &driver, size_t mark);
    static QObject *model(PageDriver &driver) { return driver.tabModel("aboutModel"); }
};

void tst_AboutDialog::open(PageDriver &driver)
{
    driver.choose("About");
    driver.settle();
}

qsizetype tst_AboutDialog::modelReads(PageDriver &driver, size_t mark)
{
    const auto calls = driver.rig().gate().callsSince(mark);
    return std::ranges::count_if(calls, [](const auto &call) {
        return call.name == "zvtGetCameraModel" && call.thread == std::this_thread::get_id();
    });
}

void tst_AboutDialog::theRowsStandInOrder()
{
    PageDriver driver;
    open(driver);
    QVERIFY(driver.findText("About"));
    QVERIFY(driver.findText("Campion 640 C Camera Controller"));
    const QList<std::pair<QString, QString>> rows{
        {"Camera Model", "Campion 640 C"},           {"Camera Serial", "ZE-100001"}, {"Camera Type", "Campion"},
        {"Camera SubType", "Science, cold filter"},  {"ROIC Type", "R640-D"},        {"Detector Type", "MCT"},
        {"Operating Time", "1225 hours, 12 minutes"}};
    double y = 0;
    for (const auto &[name, text] : rows) {
        QCOMPARE(driver.text(name), text);
        const QPointF place = driver.find(name)->mapToScene({0, 0});
        QVERIFY2(place.y() > y, qPrintable(name));
        QVERIFY(driver.findText(name)->mapToScene({0, 0}).x() < place.x());
        y = place.y();
    }
}

void tst_AboutDialog::aRowThatCannotBeReadIsLeftOut()
{
    PageDriver driver;
    driver.rig().gate().failAlways("zvtGetReadout");
    open(driver);
    QVERIFY(!driver.find("ROIC Type"));
    QVERIFY(driver.find("Detector Type"));
}

void tst_AboutDialog::theDialogIsBusyUntilTheFirstReading()
{
    PageDriver driver;
    driver.rig().gate().hold("zvtGetOperatingTime");
    driver.choose("About");
    QVERIFY(driver.rig().gate().waitHeld("zvtGetOperatingTime"));
    QTRY_VERIFY(driver.object(QStringLiteral("aboutBusy")));
    QVERIFY(driver.object(QStringLiteral("aboutBusy"))->property("visible").toBool());
    QVERIFY(!driver.findText("Campion 640 C Camera Controller"));
    driver.rig().gate().release("zvtGetOperatingTime");
    driver.settle();
    // A hidden spinner does not turn.
    QVERIFY(!driver.object(QStringLiteral("aboutBusy")));
    QVERIFY(driver.findText("Campion 640 C Camera Controller"));
    QVERIFY(driver.find("Camera Model"));
}

void tst_AboutDialog::theCamerasModelIsReadOnlyOnShow()
{
    PageDriver driver;
    const auto readsOfReconnecting = [&driver] {
        const size_t mark = driver.rig().gate().mark();
        driver.rig().camera().disconnect();
        driver.rig().camera().connect();
        driver.settle();
        return modelReads(driver, mark);
    };
    const qsizetype withoutDialog = readsOfReconnecting();
    const size_t mark = driver.rig().gate().mark();
    open(driver);
    QCOMPARE(modelReads(driver, mark), 1);
    QVERIFY(readsOfReconnecting() > withoutDialog);
    driver.click("Close");
    QTRY_VERIFY(!driver.find("Save..."));
    QCOMPARE(readsOfReconnecting(), withoutDialog);
}

void tst_AboutDialog::everyOpeningReadsAgain()
{
    PageDriver driver;
    open(driver);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(!driver.find("Save..."));
    driver.rig().gate().script("zvtGetOperatingTime", 61);
    const size_t mark = driver.rig().gate().mark();
    open(driver);
    QCOMPARE(driver.rig().callsSince(mark).count("zvtGetOperatingTime"), 1);
    QCOMPARE(driver.text("Operating Time"), "1 hours, 1 minutes");
}

void tst_AboutDialog::theRowsAreSaved()
{
    QTemporaryDir folder;
    // A path with characters that a URL encodes.
    const QString path = folder.filePath("about 100%25 #1.txt");
    PageDriver driver;
    open(driver);
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(path));
    driver.click("Save...");
    driver.settle();
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    QVERIFY(text.startsWith("Campion 640 C Camera Controller Information\r\n\r\nCamera Model: Campion 640 C\r\n"));
    QVERIFY(text.contains("\r\nOperating Time: 1225 hours, 12 minutes\r\n"));
    // The dialog stays open.
    QVERIFY(driver.find("Save..."));
}

void tst_AboutDialog::theFileDialogIsAsked()
{
    PageDriver driver;
    open(driver);
    QVariantMap asked;
    WidgetFileDialog::setNextAnswer([&asked](const WidgetFileDialog &dialog) {
        for (const char *property : {"title", "selectExisting", "nameFilters", "folder"})
            asked.insert(property, dialog.property(property));
        return QUrl();
    });
    driver.find("Close")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Backtab);
    driver.press(Qt::Key_Return);
    QVERIFY(!WidgetFileDialog::hasNextAnswer());
    QCOMPARE(asked.value("title").toString(), "Select File");
    QCOMPARE(asked.value("selectExisting").toBool(), false);
    QCOMPARE(asked.value("nameFilters").toStringList(), QStringList({"Text Files (*.txt)", "All Files (*)"}));
    QCOMPARE(asked.value("folder").toUrl(), QUrl::fromLocalFile(QDir::homePath()));
    driver.settle();
}

void tst_AboutDialog::theFolderIsKept()
{
    QTemporaryDir folder;
    const QUrl folderUrl = QUrl::fromLocalFile(folder.path());
    PageDriver driver;
    open(driver);
    WidgetFileDialog::setNextAnswer([&](const WidgetFileDialog &dialog) {
        // The operator changes to this folder.
        const_cast<WidgetFileDialog &>(dialog).setProperty("folder", folderUrl);
        return QUrl::fromLocalFile(folder.filePath("about.txt"));
    });
    driver.click("Save...");
    driver.settle();
    QCOMPARE(model(driver)->property("lastDirectory").toUrl(), folderUrl);
    // The dialog starts in the folder of the model.
    model(driver)->setProperty("lastDirectory", QUrl::fromLocalFile(QDir::rootPath()));
    QUrl begins;
    WidgetFileDialog::setNextAnswer([&begins](const WidgetFileDialog &dialog) {
        begins = dialog.property("folder").toUrl();
        return QUrl();
    });
    driver.click("Save...");
    driver.settle();
    QCOMPARE(begins, QUrl::fromLocalFile(QDir::rootPath()));
}

void tst_AboutDialog::aCancelledFileDialogWritesNothing()
{
    PageDriver driver;
    open(driver);
    const QUrl before = model(driver)->property("lastDirectory").toUrl();
    const size_t mark = driver.rig().gate().mark();
    WidgetFileDialog::setNextAnswer(QUrl());
    driver.click("Save...");
    driver.settle();
    QCOMPARE(model(driver)->property("lastDirectory").toUrl(), before);
    QVERIFY(!driver.rig().callsSince(mark).contains("zvtGetCameraModel"));
}

void tst_AboutDialog::itStaysUntilItIsClosed()
{
    PageDriver driver;
    open(driver);
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
    driver.settle();
    QVERIFY(driver.find("Save..."));
    driver.click("Close");
    QTRY_VERIFY(!driver.find("Save..."));
    open(driver);
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!driver.find("Save..."));
}

void tst_AboutDialog::theFocusReturnsToTheConfigurationButton()
{
    PageDriver driver;
    driver.find("Configuration")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(driver.find("About"));
    driver.find("About")->forceActiveFocus(Qt::TabFocusReason);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(driver.find("Close")->hasActiveFocus());
    driver.settle();
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(driver.find("Configuration")->hasActiveFocus());
    QVERIFY(driver.find("Configuration")->property("visualFocus").toBool());
}

void tst_AboutDialog::itIsAsWideAsItsWindowLets_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<double>("width");
    QTest::newRow("roomy") << QSize(640, 480) << 500.0;
    QTest::newRow("narrow") << QSize(400, 480) << 368.0;
}

void tst_AboutDialog::itIsAsWideAsItsWindowLets()
{
    QFETCH(const QSize, window);
    QFETCH(const double, width);
    PageDriver driver({.size = window});
    open(driver);
    const QQuickItem *title = driver.findText("About");
    QCOMPARE(title->parentItem()->width(), width);
}

void tst_AboutDialog::longValuesWrap()
{
    PageDriver driver;
    const std::pair<const char *, QString> names[]{{"zvtGetCameraTypeName", QStringLiteral("typical ").repeated(24)},
                                                   {"zvtGetCameraSubtypeName", QStringLiteral("special ").repeated(24)},
                                                   {"zvtGetReadoutName", QStringLiteral("reading ").repeated(24)},
                                                   {"zvtGetDetectorTypeName", QString(190, QLatin1Char('x'))}};
    const auto unscript = qScopeGuard([&names] {
        for (const auto &[call, name] : names)
            emulator::Sdk::gate().script(call, {});
    });
    for (const auto &[call, name] : names)
        emulator::Sdk::gate().script(call, name);
    open(driver);
    const QRectF window(0, 0, 640, 480);
    for (const QString name : {"ROIC Type", "Detector Type", "Camera Type", "Camera SubType"}) {
        const QQuickItem *label = driver.find(name);
        QVERIFY(label->property("contentWidth").toDouble() <= label->width());
        QVERIFY(label->property("lineCount").toInt() > 1);
    }
    const QQuickItem *close = driver.find("Close");
    QVERIFY(window.contains(close->mapRectToScene(close->boundingRect())));
    // The keyboard scrolls to the rows that do not fit.
    const QQuickItem *last = driver.find("Operating Time");
    const double below = last->mapToScene({0, 0}).y();
    driver.press(Qt::Key_Down);
    QTRY_VERIFY(last->mapToScene({0, 0}).y() < below);
}

void tst_AboutDialog::thePageOutlivesItsModel()
{
    PageDriver driver;
    open(driver);
    driver.deleteModel();
    driver.settle();
    QVERIFY(!driver.find("Camera Model"));
    driver.click("Close");
    QTRY_VERIFY(!driver.find("Save..."));
}

ZVT_TEST(tst_AboutDialog)
#include "tst_AboutDialog.moc"
