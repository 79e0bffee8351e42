#include "tests/page/BatchPage.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QTemporaryDir>
#include <QUrl>

#include "platform/hlxcamui/WidgetFileDialog.h"

using hlx::cam::ui::WidgetFileDialog;

/// The dialog for batch downloads without a run: how it opens and closes, its tool bar, and how movies get into its
/// list.
class tst_BatchDownloadDialog : public Test
{
    Q_OBJECT

private slots:
    void opens_data();
    void opens();
    void keepsTheWindowLargeEnough();
    void columnsStandBelowTheirHeadings();
    void smallWindowShowsAll_data();
    void smallWindowShowsAll();
    void closesOnlyByItsButtons_data();
    void closesOnlyByItsButtons();
    void keepsTheListWithoutARun();
    void tabReachesEachControl();

    void theOutputFolderIsChosen();
    void theCalibrationFileIsChosen();
    void switchesSetTheModel_data();
    void switchesSetTheModel();
    void switchesShowTheModel();
    void theConversionEnablesItsOptions();

    void moviesAreAdded_data();
    void moviesAreAdded();
    void selectedMoviesAreAddedInTheirOrder();
    void noMovieIsAddedAfterClose();
    void allMoviesAreRemoved_data();
    void allMoviesAreRemoved();
    void duplicatesPreventTheStart();
};

namespace
{

const QString conversion = QStringLiteral("Convert to QDSEQ files after downloading");
const QString keepFile = QStringLiteral("Keep RQS file after converting");
const QString calibration = QStringLiteral("Add user calibration");

QRectF areaOf(const QQuickItem &item) { return item.mapRectToScene(item.boundingRect()); }

/// The visible items below an item, with those in the rows of lists.
QList<const QQuickItem *> itemsBelow(const QQuickItem &top)
{
    QList<const QQuickItem *> items;
    for (const QQuickItem *child : top.childItems())
        if (child->isVisible())
            items << child << itemsBelow(*child);
    return items;
}

/// Whether an item is a control or shows the progress of a run.
bool isControl(const QQuickItem &item)
{
    return item.inherits("QQuickAbstractButton") || item.inherits("QQuickComboBox") || item.inherits("QQuickTextField")
        || PageDriver::nameOf(item) == "Files" || PageDriver::nameOf(item) == "Batch Progress";
}

bool isText(const QQuickItem &item)
{
    return item.inherits("QQuickText") && !item.property("text").toString().isEmpty();
}

} // namespace

void tst_BatchDownloadDialog::opens_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_BatchDownloadDialog::opens()
{
    QFETCH(const bool, byKeyboard);
    BatchPage page;
    page.open(byKeyboard);
    QVERIFY(page.isOpen());
    QVERIFY(page.findText("No output files."));
    QCOMPARE(page.text("Files"), "0");
    QVERIFY(!page.enabled("Start"));
    QVERIFY(!page.enabled("Remove All Files"));
    QVERIFY(page.enabled("Add File(s)"));
    QVERIFY(page.enabled("Close"));
    QVERIFY(!page.find("Batch Progress"));
    for (const char *heading : {"#", "Input", "Output", "Range", "Output Directory:"})
        QVERIFY2(page.findText(heading), heading);
    QVERIFY(page.item("Add File(s)").hasActiveFocus());
    const QUrl folder(page.batch()->property("outputDir").toString());
    QCOMPARE(page.text("Output Directory"), QDir::toNativeSeparators(folder.toLocalFile()));
    page.saveScreenshot();
}

void tst_BatchDownloadDialog::keepsTheWindowLargeEnough()
{
    BatchPage page({900, 700});
    page.open();
    QVERIFY(page.window().minimumWidth() >= 1200);
    QVERIFY(page.window().minimumHeight() >= 720);
    QTRY_COMPARE(page.window().size(), QSize(1200, 720));
    page.settle();
    QCOMPARE(page.dialog("Batch Download")->size(), QSizeF(1200 - 32, 720 - 32));
    page.saveScreenshot();
    page.click("Close");
    QTRY_VERIFY(page.window().minimumWidth() < 1200);
}

void tst_BatchDownloadDialog::columnsStandBelowTheirHeadings()
{
    BatchPage page;
    page.open();
    page.add({"movie"});
    const QQuickItem *dialog = page.dialog("Batch Download");
    const auto left = [](const QQuickItem *item) { return item->mapToScene({}).x(); };
    for (const int width : {1280, 1600, 640}) {
        page.window().setMinimumSize({});
        page.resize({width, 800});
        QCOMPARE(dialog->width(), width - 32.0);
        QCOMPARE(left(page.findText("Input")), left(page.findText("1")));
        QCOMPARE(left(page.findText("Output")), left(&page.item("Output 1")));
        if (width == 640)
            QVERIFY(!page.findText("Range"));
        else
            QCOMPARE(left(page.findText("Range")), left(&page.item("Range 1")));
    }
}

void tst_BatchDownloadDialog::smallWindowShowsAll_data()
{
    QTest::addColumn<QString>("range");
    QTest::addColumn<bool>("isRunning");
    for (const char *range : {"Entire File", "Frames", "Time"})
        for (const bool isRunning : {false, true})
            QTest::addRow("%s%s", range, isRunning ? ", running" : "") << range << isRunning;
}

// A host may not enlarge its window.
void tst_BatchDownloadDialog::smallWindowShowsAll()
{
    QFETCH(const QString, range);
    QFETCH(const bool, isRunning);
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.chooseRange(1, range);
    page.window().setMinimumSize({});
    page.resize({640, 480});
    if (isRunning)
        QVERIFY(page.startAndHold("controller.DownloadMovie"));
    page.awaitFrame();
    page.saveScreenshot();
    const QQuickItem *dialog = page.dialog("Batch Download");
    QCOMPARE(dialog->size(), QSizeF(608, 448));
    const QRectF content = areaOf(*dialog).adjusted(16, 16, -16, -16);
    QList<const QQuickItem *> controls = itemsBelow(*dialog);
    controls.removeIf([](const QQuickItem *item) { return !isControl(*item); });
    QVERIFY2(controls.size() >= 17, qPrintable(QString::number(controls.size())));
    for (qsizetype i = 0; i < controls.size(); ++i) {
        const QString name = PageDriver::nameOf(*controls[i]);
        QVERIFY2(content.contains(areaOf(*controls[i])), qPrintable(name));
        QVERIFY2(controls[i]->width() >= (controls[i]->inherits("QQuickTextField") ? 60 : 1), qPrintable(name));
        for (qsizetype j = 0; j < i; ++j)
            QVERIFY2(!areaOf(*controls[i]).intersects(areaOf(*controls[j])),
                     qPrintable(name + " on " + PageDriver::nameOf(*controls[j])));
    }
    for (const QQuickItem *item : itemsBelow(*dialog))
        QVERIFY2(!isText(*item) || PageDriver::fits(*item, areaOf(*dialog)),
                 qPrintable(item->property("text").toString()));
    QVERIFY(page.finish());
}

void tst_BatchDownloadDialog::closesOnlyByItsButtons_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_BatchDownloadDialog::closesOnlyByItsButtons()
{
    QFETCH(const bool, byKeyboard);
    BatchPage page;
    page.open(true);
    page.press(Qt::Key_Escape);
    QTest::mouseClick(&page.window(), Qt::LeftButton, Qt::NoModifier, {4, 4});
    page.settle();
    QVERIFY(page.isOpen());
    page.use("Close", byKeyboard);
    QTRY_VERIFY(!page.isOpen());
    page.settle();
    QVERIFY(page.item("Batch Download Movies").hasActiveFocus());
}

void tst_BatchDownloadDialog::keepsTheListWithoutARun()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.click("Close");
    page.settle();
    QCOMPARE(page.size(), 2);
    page.open();
    QCOMPARE(page.text("Files"), "2");
    QCOMPARE(page.text("Output 2"), "2-b");
}

void tst_BatchDownloadDialog::tabReachesEachControl()
{
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.batch()->setProperty("convertToQdseq", true);
    page.batch()->setProperty("addCalFile", true);
    page.chooseRange(1, "Frames");
    page.item("Choose Output Directory").forceActiveFocus(Qt::TabFocusReason);
    const auto walk = [&page](Qt::KeyboardModifier modifier) {
        QStringList names;
        for (int i = 0; i < 16; ++i) {
            names << PageDriver::nameOf(*page.window().activeFocusItem());
            page.press(modifier == Qt::ShiftModifier ? Qt::Key_Backtab : Qt::Key_Tab, modifier);
        }
        return names;
    };
    const QStringList expected{"Choose Output Directory",
                               "Add File(s)",
                               "Remove All Files",
                               conversion,
                               keepFile,
                               calibration,
                               "Calibration File",
                               "Choose Calibration File",
                               "Output 1",
                               "Range 1",
                               "Start 1",
                               "End 1",
                               "Remove 1",
                               "Start",
                               "Close",
                               "Output Directory"};
    QCOMPARE(walk(Qt::NoModifier), expected);
    QStringList reversed{expected.constFirst()};
    for (qsizetype i = expected.size() - 1; i > 0; --i)
        reversed << expected[i];
    QCOMPARE(walk(Qt::ShiftModifier), reversed);
}

void tst_BatchDownloadDialog::theOutputFolderIsChosen()
{
    BatchPage page;
    page.open();
    const QString before = page.text("Output Directory");
    WidgetFileDialog::setNextAnswer([](const WidgetFileDialog &dialog) {
        return dialog.property("selectFolder").toBool() ? QUrl() : QUrl::fromLocalFile("/wrong");
    });
    page.click("Choose Output Directory");
    QTRY_VERIFY(!WidgetFileDialog::hasNextAnswer());
    page.settle();
    QCOMPARE(page.text("Output Directory"), before);

    const QTemporaryDir folder;
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(folder.path()));
    page.use("Choose Output Directory", true);
    QTRY_COMPARE(page.text("Output Directory"), QDir::toNativeSeparators(folder.path()));
    QCOMPARE(page.batch()->property("outputDir").toString(), QUrl::fromLocalFile(folder.path()).toString());
}

void tst_BatchDownloadDialog::theCalibrationFileIsChosen()
{
    BatchPage page;
    page.open();
    QVERIFY(!page.enabled("Choose Calibration File"));
    page.click(conversion);
    page.click(calibration);
    QStringList filters;
    const QUrl file = QUrl::fromLocalFile("/calibrations/lab.cal");
    WidgetFileDialog::setNextAnswer([&](const WidgetFileDialog &dialog) {
        filters = dialog.property("nameFilters").toStringList();
        return dialog.property("selectExisting").toBool() ? file : QUrl();
    });
    page.click("Choose Calibration File");
    QTRY_COMPARE(page.text("Calibration File"), QDir::toNativeSeparators("/calibrations/lab.cal"));
    QCOMPARE(page.batch()->property("calFilename").toString(), file.toString());
    QCOMPARE(filters,
             QStringList({"Supported Files (*.cal *.xcalpk *.xnucpk)", "Calibration Files (*.cal)",
                          "Calibration Packs (*.xcalpk)", "NUC Packs (*.xnucpk)", "All Files (*.*)"}));
}

void tst_BatchDownloadDialog::switchesSetTheModel_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<bool>("atFirst");
    QTest::newRow("conversion") << conversion << QByteArray("convertToQdseq") << false;
    QTest::newRow("file kept") << keepFile << QByteArray("keepRqsFile") << true;
    QTest::newRow("calibration") << calibration << QByteArray("addCalFile") << false;
}

void tst_BatchDownloadDialog::switchesSetTheModel()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, property);
    QFETCH(const bool, atFirst);
    BatchPage page;
    page.open();
    QCOMPARE(page.checked(name), atFirst);
    if (property != "convertToQdseq")
        page.batch()->setProperty("convertToQdseq", true);
    page.use(name, false);
    QCOMPARE(page.batch()->property(property).toBool(), !atFirst);
    page.use(name, true);
    QCOMPARE(page.batch()->property(property).toBool(), atFirst);
}

void tst_BatchDownloadDialog::switchesShowTheModel()
{
    BatchPage page;
    page.open();
    page.click(conversion);
    for (const auto &[name, property] : {std::pair(conversion, "convertToQdseq"), std::pair(keepFile, "keepRqsFile"),
                                         std::pair(calibration, "addCalFile")}) {
        page.batch()->setProperty("convertToQdseq", true);
        page.use(name, false);
        for (const bool on : {true, false}) {
            page.batch()->setProperty(property, on);
            QCOMPARE(page.checked(name), on);
        }
    }
}

void tst_BatchDownloadDialog::theConversionEnablesItsOptions()
{
    BatchPage page;
    page.open();
    const auto enabled = [&page] {
        QStringList names;
        for (const QString &name : {conversion, keepFile, calibration, QStringLiteral("Calibration File"),
                                    QStringLiteral("Choose Calibration File")})
            if (page.enabled(name))
                names << name;
        return names;
    };
    QCOMPARE(enabled(), QStringList({conversion}));
    page.click(conversion);
    QCOMPARE(enabled(), QStringList({conversion, keepFile, calibration}));
    page.click(calibration);
    QCOMPARE(enabled(),
             QStringList({conversion, keepFile, calibration, "Calibration File", "Choose Calibration File"}));
    // The calibration follows its own switch only.
    page.click(conversion);
    QCOMPARE(enabled(), QStringList({conversion, "Calibration File", "Choose Calibration File"}));
}

void tst_BatchDownloadDialog::moviesAreAdded_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("by mouse") << false;
    QTest::newRow("by keyboard") << true;
}

void tst_BatchDownloadDialog::moviesAreAdded()
{
    QFETCH(const bool, byKeyboard);
    BatchPage page;
    page.setDrive(BatchPage::movie(7, "seven"), 3);
    page.open();
    page.use("Add File(s)", byKeyboard);
    page.settle();
    page.settle();
    QVERIFY(page.findText("Add Movies"));
    QVERIFY(!page.enabled("Add Movie"));
    page.press(Qt::Key_Home);
    page.press(Qt::Key_End, Qt::ShiftModifier);
    page.settle();
    page.use("Add 3 Movies", byKeyboard);
    page.settle();
    QCOMPARE(page.text("Files"), "3");
    // The same movie may be in the list several times.
    for (const QString row : {"1", "2", "3"}) {
        QCOMPARE(page.text("Output " + row), "7-seven");
        QVERIFY(page.find("Duplicate " + row));
    }
    QVERIFY(page.enabled("Start"));
    QVERIFY(page.item("Add File(s)").hasActiveFocus());
}

void tst_BatchDownloadDialog::selectedMoviesAreAddedInTheirOrder()
{
    BatchPage page;
    page.setDrive(BatchPage::movie(7, "seven"), 6);
    page.open();
    page.click("Add File(s)");
    page.settle();
    page.settle();
    const auto clickRow = [&page](int row, Qt::KeyboardModifiers modifiers) {
        const QQuickItem &list = page.item("Movies");
        QTest::mouseClick(&page.window(), Qt::LeftButton, modifiers, list.mapToScene({60, 28 * (row + 0.5)}).toPoint());
    };
    clickRow(4, Qt::NoModifier);
    clickRow(0, Qt::ControlModifier);
    clickRow(1, Qt::ShiftModifier);
    clickRow(4, Qt::ControlModifier);
    clickRow(5, Qt::ControlModifier);
    page.settle();
    page.click("Add 3 Movies");
    page.settle();
    QCOMPARE(page.size(), 3);
    QCOMPARE(page.value(0, "index").toInt(), 0);
    QCOMPARE(page.value(1, "index").toInt(), 1);
    QCOMPARE(page.value(2, "index").toInt(), 5);
}

void tst_BatchDownloadDialog::noMovieIsAddedAfterClose()
{
    BatchPage page;
    page.setDrive(BatchPage::movie(7, "seven"));
    page.open();
    page.click("Add File(s)");
    page.settle();
    page.settle();
    page.click(page.find("seven"));
    page.settle();
    page.click("Close");
    page.settle();
    QVERIFY(page.isOpen());
    QCOMPARE(page.size(), 0);
}

void tst_BatchDownloadDialog::allMoviesAreRemoved_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("byKeyboard");
    QTest::addColumn<int>("left");
    for (const bool byKeyboard : {false, true}) {
        QTest::addRow("removed by %s", byKeyboard ? "keyboard" : "mouse") << "Remove All" << byKeyboard << 0;
        QTest::addRow("kept by %s", byKeyboard ? "keyboard" : "mouse") << "Keep Files" << byKeyboard << 2;
    }
}

void tst_BatchDownloadDialog::allMoviesAreRemoved()
{
    QFETCH(const QString, answer);
    QFETCH(const bool, byKeyboard);
    QFETCH(const int, left);
    BatchPage page;
    page.open();
    page.add({"a", "b"});
    page.use("Remove All Files", byKeyboard);
    page.settle();
    QVERIFY(page.findText("Confirm"));
    QVERIFY(page.findText("Remove all files from the batch?"));
    // Enter must not remove them.
    QVERIFY(page.item("Keep Files").hasActiveFocus());
    QCOMPARE(page.size(), 2);
    page.use(answer, byKeyboard);
    page.settle();
    QCOMPARE(page.size(), left);
    QCOMPARE(page.rows().size(), left);
    QVERIFY(page.isOpen());
}

void tst_BatchDownloadDialog::duplicatesPreventTheStart()
{
    BatchPage page;
    page.open();
    page.setDrive(BatchPage::movie(1, "a"), 2);
    page.addDrive();
    const size_t mark = page.gate().mark();
    page.click("Start");
    page.settle();
    QVERIFY(page.findText("All output filenames must be unique."));
    QVERIFY(!page.downloading());
    QCOMPARE(page.commands(mark), QStringList());
    page.saveScreenshot();
    page.click("OK");
    page.settle();
    QVERIFY(page.isOpen());
}

ZVT_TEST(tst_BatchDownloadDialog)
#include "tst_BatchDownloadDialog.moc"
