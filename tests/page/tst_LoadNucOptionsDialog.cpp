#include "tests/page/CorrectionPage.h"
#include "tests/support/Test.h"

namespace
{

/// The check boxes in the order of the dialog, row by row, with their properties.
const QList<std::pair<QString, const char *>> boxes{{"Integration Time", "useIntTime"},
                                                    {"Frame Sync Mode", "useFrameSyncMode"},
                                                    {"Window Size", "useWindowSize"},
                                                    {"Digital Gain/Offset", "useDigitalGainOffset"},
                                                    {"Invert/Revert", "useInvertRevert"},
                                                    {"Analog Offset", "useAnalogOffset"},
                                                    {"Frame Rate", "useFrameRate"},
                                                    {"Detector Bias", "useDetectorBias"},
                                                    {"Filter", "useFilter"},
                                                    {"FPA Gain Level", "useFPAGainLevel"},
                                                    {"Skimming", "useSkimming"},
                                                    {"Color", "useColor"}};
const QString tableOnly = QStringLiteral("Load Table Only");
const QString withSettings = QStringLiteral("Load Table and the Following Settings");

/// The Correction page with its open dialog of the options.
struct Options : CorrectionPage {
    explicit Options(bool loadSettings = false)
    {
        model().setProperty("loadSettings", loadSettings);
        open();
    }

    void open()
    {
        click("Load NUC Options");
        settle();
        QTRY_VERIFY(isOpen());
    }
    bool isOpen() const { return find(tableOnly) != nullptr; }
    void waitUntilClosed() { QTRY_VERIFY(!isOpen()); }

    QObject &model() const { return *tabModel("loadNucOptions"); }
    bool option(const char *name) const { return model().property(name).toBool(); }
    QVariantList options() const
    {
        QVariantList list{option("loadSettings")};
        for (const auto &[name, property] : boxes)
            list << option(property);
        return list;
    }
};

} // namespace

/// The dialog of the settings that a load of a correction sets again.
class tst_LoadNucOptionsDialog : public Test
{
    Q_OBJECT

private slots:
    void textsInOrder();
    void boxesNeedTheSettings();
    void radioButtonsChoose_data();
    void radioButtonsChoose();
    void boxesAreIndependent_data();
    void boxesAreIndependent();
    void allAreSelectedAndCleared();
    void okKeepsTheChanges();
    void cancelRestores_data();
    void cancelRestores();
    void secondCancelRestoresTheSame();
    void nothingReachesTheCamera();
    void tabWalksInReadingOrder();
    void windowIsKeptLargeEnough();
    void itFitsASmallWindow();
    void dialogOutlivesItsModel();
};

void tst_LoadNucOptionsDialog::textsInOrder()
{
    const Options dialog(true);
    QVERIFY(dialog.findText("Load NUC Options"));
    QVERIFY(dialog.checked(withSettings) && !dialog.checked(tableOnly));
    QList<qreal> columns;
    QPointF last(0, 0);
    for (const auto &[name, property] : boxes) {
        const QPointF place = dialog.item(name).mapToScene({0, 0});
        QVERIFY2(place.y() > last.y() || (place.y() == last.y() && place.x() > last.x()), qPrintable(name));
        if (!columns.contains(place.x()))
            columns << place.x();
        last = place;
        QCOMPARE(dialog.checked(name), dialog.option(property));
    }
    QCOMPARE(columns.size(), 2);
    QVERIFY(dialog.item("Select All").mapToScene({0, 0}).y() > last.y());
    QVERIFY(dialog.find("Clear All"));
}

void tst_LoadNucOptionsDialog::boxesNeedTheSettings()
{
    Options dialog;
    QVERIFY(dialog.checked(tableOnly) && !dialog.checked(withSettings));
    for (const bool enabled : {false, true, false}) {
        dialog.model().setProperty("loadSettings", enabled);
        for (const auto &[name, property] : boxes)
            QCOMPARE(dialog.enabled(name), enabled);
        QCOMPARE(dialog.enabled("Select All"), enabled);
        QCOMPARE(dialog.enabled("Clear All"), enabled);
        QVERIFY(dialog.enabled(tableOnly) && dialog.enabled(withSettings) && dialog.enabled("OK"));
        QCOMPARE(dialog.checked(withSettings), enabled);
        QCOMPARE(dialog.checked(tableOnly), !enabled);
    }
}

void tst_LoadNucOptionsDialog::radioButtonsChoose_data()
{
    QTest::addColumn<int>("key"); // 0: by mouse.
    QTest::newRow("mouse") << 0;
    QTest::newRow("space") << int(Qt::Key_Space);
    QTest::newRow("enter") << int(Qt::Key_Return);
}

void tst_LoadNucOptionsDialog::radioButtonsChoose()
{
    QFETCH(const int, key);
    Options dialog;
    const auto choose = [&](const QString &name) {
        if (key == 0) {
            dialog.click(name);
        } else {
            dialog.item(name).forceActiveFocus(Qt::TabFocusReason);
            dialog.press(static_cast<Qt::Key>(key));
        }
    };
    for (const bool loadSettings : {true, true, false, false, true}) {
        choose(loadSettings ? withSettings : tableOnly);
        QCOMPARE(dialog.option("loadSettings"), loadSettings);
        QCOMPARE(dialog.checked(withSettings), loadSettings);
        QCOMPARE(dialog.checked(tableOnly), !loadSettings);
    }
    QVERIFY(dialog.isOpen());
}

void tst_LoadNucOptionsDialog::boxesAreIndependent_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("byKeyboard");
    for (const auto &[name, property] : boxes) {
        QTest::addRow("%s by mouse", property) << name << false;
        QTest::addRow("%s by keyboard", property) << name << true;
    }
}

void tst_LoadNucOptionsDialog::boxesAreIndependent()
{
    QFETCH(const QString, name);
    QFETCH(const bool, byKeyboard);
    Options dialog(true);
    QVariantList expected = dialog.options();
    qsizetype place = 0;
    while (boxes.at(place).first != name)
        ++place;
    for (int change = 0; change < 2; ++change) {
        expected[place + 1] = !expected.at(place + 1).toBool();
        dialog.use(name, byKeyboard);
        QCOMPARE(dialog.options(), expected);
        QCOMPARE(dialog.checked(name), expected.at(place + 1).toBool());
    }
    // The box follows the model.
    dialog.model().setProperty(boxes.at(place).second, !expected.at(place + 1).toBool());
    QCOMPARE(dialog.checked(name), !expected.at(place + 1).toBool());
}

void tst_LoadNucOptionsDialog::allAreSelectedAndCleared()
{
    Options dialog(true);
    for (const bool use : {true, false, true}) {
        dialog.click(use ? "Select All" : "Clear All");
        for (const auto &[name, property] : boxes) {
            QCOMPARE(dialog.option(property), use);
            QCOMPARE(dialog.checked(name), use);
        }
        QVERIFY(dialog.option("loadSettings"));
    }
}

void tst_LoadNucOptionsDialog::okKeepsTheChanges()
{
    Options dialog;
    dialog.click(withSettings);
    dialog.click("Skimming");
    dialog.click("OK");
    dialog.waitUntilClosed();
    QVERIFY(dialog.option("loadSettings") && dialog.option("useSkimming"));
    dialog.open();
    QVERIFY(dialog.checked(withSettings) && dialog.checked("Skimming"));
}

void tst_LoadNucOptionsDialog::cancelRestores_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Cancel") << false;
    QTest::newRow("Esc") << true;
}

void tst_LoadNucOptionsDialog::cancelRestores()
{
    QFETCH(const bool, byEscape);
    Options dialog;
    const QVariantList before = dialog.options();
    dialog.click(withSettings);
    dialog.click("Clear All");
    dialog.click("Filter");
    if (byEscape)
        dialog.press(Qt::Key_Escape);
    else
        dialog.click("Cancel");
    dialog.waitUntilClosed();
    QCOMPARE(dialog.options(), before);
}

void tst_LoadNucOptionsDialog::secondCancelRestoresTheSame()
{
    Options dialog;
    const QVariantList before = dialog.options();
    for (int opening = 0; opening < 2; ++opening) {
        dialog.click(withSettings);
        dialog.click("Select All");
        dialog.click("Cancel");
        dialog.waitUntilClosed();
        QCOMPARE(dialog.options(), before);
        dialog.open();
    }
}

void tst_LoadNucOptionsDialog::nothingReachesTheCamera()
{
    Options dialog;
    const size_t mark = dialog.gate().mark();
    dialog.click(withSettings);
    dialog.click("Select All");
    dialog.click("OK");
    dialog.settle();
    QCOMPARE(dialog.rig().callsSince(mark), QStringList());
}

void tst_LoadNucOptionsDialog::tabWalksInReadingOrder()
{
    Options dialog(true);
    // The focus is on the present choice.
    QTRY_VERIFY(dialog.item(withSettings).hasActiveFocus());
    QStringList expected{withSettings};
    for (const auto &[name, property] : boxes)
        expected << name;
    expected << "Select All"
             << "Clear All"
             << "OK"
             << "Cancel" << tableOnly;
    QStringList walked;
    for (qsizetype step = 0; step < expected.size(); ++step) {
        walked << PageDriver::nameOf(*dialog.window().activeFocusItem());
        dialog.press(Qt::Key_Tab);
    }
    QCOMPARE(walked, expected);
}

void tst_LoadNucOptionsDialog::windowIsKeptLargeEnough()
{
    Options dialog;
    const QSize least(564, 440);
    for (int opening = 0; opening < 2; ++opening) {
        QCOMPARE(dialog.window().minimumSize(), least);
        dialog.click("Cancel");
        dialog.waitUntilClosed();
        QCOMPARE(dialog.window().minimumSize(), QSize(0, 0));
        dialog.open();
    }
    // In such a window the whole dialog is shown.
    dialog.window().resize(least);
    dialog.settle();
    const QQuickItem &last = dialog.item("Clear All");
    const QQuickItem &first = dialog.item(tableOnly);
    QQuickItem *scroller = dialog.item("Clear All").parentItem();
    while (!scroller->inherits("QQuickFlickable"))
        scroller = scroller->parentItem();
    const QRectF place = scroller->mapRectToScene(scroller->boundingRect());
    QVERIFY(place.contains(first.mapRectToScene(first.boundingRect())));
    QVERIFY(place.contains(last.mapRectToScene(last.boundingRect())));
}

void tst_LoadNucOptionsDialog::itFitsASmallWindow()
{
    PageDriver page({.size = {640, 480}, .prepare = scriptCorrections});
    page.click("Correction");
    page.settle();
    page.click("Load NUC Options");
    page.settle();
    QTRY_VERIFY(page.find("Clear All"));
    const QRectF window(QPointF(0, 0), page.window().size());
    for (const auto &[name, property] : boxes)
        QVERIFY2(PageDriver::fits(*page.findText(name), window), qPrintable(name));
    for (const QString &name : {tableOnly, withSettings, QStringLiteral("Select All"), QStringLiteral("Cancel")})
        QVERIFY2(PageDriver::fits(*page.find(name)->property("contentItem").value<QQuickItem *>(), window),
                 qPrintable(name));
}

void tst_LoadNucOptionsDialog::dialogOutlivesItsModel()
{
    Options dialog;
    dialog.deleteModel();
    dialog.settle();
    dialog.click("Cancel");
    dialog.waitUntilClosed();
}

ZVT_TEST(tst_LoadNucOptionsDialog)
#include "tst_LoadNucOptionsDialog.moc"
