#include "tests/page/NucListPage.h"
#include "tests/support/Test.h"

#include <QDateTime>

namespace
{

const QStringList threeNucs{"Alpha", "Bravo", "Charlie"};
const char *const manage = "Manage NUCs";
const char *const save = "Save Current NUC 2";
const char *const load = "Load Existing NUC 2";

/// The frame of the dialog.
const QQuickItem *frameOf(const NucListPage &page)
{
    const QQuickItem *item = page.list();
    while (!item->inherits("QQuickPopupItem"))
        item = item->parentItem();
    return item;
}

} // namespace

/// The dialog with the list of corrections: its modes, the list, and the selection.
class tst_NucListDialog : public Test
{
    Q_OBJECT

private slots:
    void eachModeHasItsTitleAndControls_data();
    void eachModeHasItsTitleAndControls();
    void theNameIsShownAgainAfterManaging();
    void rowsShowWhatTheCameraReports();
    void rowWithoutInformationIsBlank();
    void freeSpaceIsShown();
    void listIsBusyWhileItIsRead();
    void anEmptyListSaysSo();
    void aClickSelectsAndCopiesTheName_data();
    void aClickSelectsAndCopiesTheName();
    void aClickAfterADeletionSelectsThatRow();
    void typingClearsTheSelection();
    void theNameCannotBeTypedWhenLoading();
    void theNameIsDarkForAnOffsetUpdate();
    void theNameIsDarkWhileTheListIsRead();
    void loadingClearsTheSelection();
    void aReadKeepsTheSelection();
    void keysMoveTheSelection();
    void keysDuringAReadSelectNothing();
    void onlyItsButtonsAndEscCloseIt();
    void theWindowBecomesLargeEnough_data();
    void theWindowBecomesLargeEnough();
    void everythingFitsASmallWindow_data();
    void everythingFitsASmallWindow();
    void theFocusReturnsToTheButton();
    void thePageOutlivesItsModel();
};

void tst_NucListDialog::eachModeHasItsTitleAndControls_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<bool>("hasName");
    QTest::addColumn<QString>("verb");
    QTest::addColumn<QString>("last");
    QTest::newRow(manage) << "Manage NUCs" << false << "Load"
                          << "Done";
    QTest::newRow(save) << "Save NUC in Preset 2" << true << "Save"
                        << "Cancel";
    QTest::newRow(load) << "Load NUC into Preset 2" << true << "Load"
                        << "Cancel";
}

void tst_NucListDialog::eachModeHasItsTitleAndControls()
{
    QFETCH(const QString, title);
    QFETCH(const bool, hasName);
    QFETCH(const QString, verb);
    QFETCH(const QString, last);
    NucListPage page(threeNucs);
    page.open(QTest::currentDataTag());
    QVERIFY(page.findText(title));
    QCOMPARE(page.nameField()->isVisible(), hasName);
    QCOMPARE(page.findText("Name:") != nullptr, hasName);
    for (const QString unused : {"Save", "Load"})
        QCOMPARE(page.find(unused) != nullptr, verb == unused);
    QCOMPARE(page.find(verb)->property("primary").toBool(), hasName);
    page.choose("Alpha");
    double x = 0;
    for (const QString &button : {QString("Rename"), QString("Delete"), QString("Upload"), QString("Download"), last}) {
        const QQuickItem *item = page.find(button);
        QVERIFY2(item, qPrintable(button));
        QVERIFY(item->mapToScene({0, 0}).x() > x);
        x = item->mapToScene({0, 0}).x();
        QVERIFY(item->isEnabled());
        QCOMPARE(item->property("destructive").toBool(), button == "Delete");
    }
    page.click(last);
    QTRY_VERIFY(!page.isOpen());
}

void tst_NucListDialog::theNameIsShownAgainAfterManaging()
{
    NucListPage page(threeNucs);
    for (const char *button : {manage, save, manage, load}) {
        page.open(button);
        QCOMPARE(page.findText("Name:") != nullptr, button != manage);
        // The field takes the whole width beside the button.
        if (button != manage)
            QVERIFY(page.nameField()->width() > 400);
        page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.isOpen());
    }
}

void tst_NucListDialog::rowsShowWhatTheCameraReports()
{
    NucListPage page(threeNucs);
    page.open(manage);
    QCOMPARE(page.names(), threeNucs);
    QStringList headings;
    for (const QString heading : {"Name", "Window", "Int Time", "Date"}) {
        const QQuickItem *item = page.findText(heading);
        QVERIFY2(item, qPrintable(heading));
        QVERIFY(item->mapToScene({0, 0}).y() < page.find("Alpha", page.list())->mapToScene({0, 0}).y());
    }
    const QQuickItem *row = page.find("Bravo", page.list());
    QStringList texts;
    for (const QQuickItem *text : PageDriver::shownTexts(*row))
        texts << text->property("text").toString();
    double milliseconds = 0;
    QCOMPARE(zvtClocksToMilliseconds(page.handle(), 20'000, &milliseconds), 0);
    const QModelIndex second = qobject_cast<QAbstractItemModel *>(page.model())->index(1, 0);
    const QString date = second.data(Qt::UserRole + 3).toDateTime().toLocalTime().toString("yyyy-MM-dd HH:mm");
    for (const QString &text : {QString("Bravo"), QString("64x4"),
                                QLocale::system().toString(milliseconds, 'f', 6) + QStringLiteral(" ms"), date})
        QVERIFY2(texts.contains(text), qPrintable(text + " is not in " + texts.join(", ")));
    QVERIFY(page.enabled("Show NUC Info of Bravo"));
}

void tst_NucListDialog::rowWithoutInformationIsBlank()
{
    NucListPage page({"Alpha", "Bravo"});
    QVERIFY(QFile::resize(correctionFolder(page.rig().camera()) + "/Alpha.nuc", 200));
    page.open(manage);
    QVERIFY(!page.enabled("Show NUC Info of Alpha"));
    QVERIFY(page.enabled("Show NUC Info of Bravo"));
    QStringList texts;
    for (const QQuickItem *text : PageDriver::shownTexts(*page.find("Alpha", page.list())))
        texts << text->property("text").toString();
    QVERIFY(texts.contains("Alpha"));
    QCOMPARE(texts.filter(QRegularExpression("x| ms")), QStringList());
    QCOMPARE(texts.filter(QRegularExpression("^\\d{4}-")).size(), 1);
}

void tst_NucListDialog::freeSpaceIsShown()
{
    NucListPage page(threeNucs);
    page.gate().script("zvtGetNUCFreeSpace", 1536);
    page.open(manage);
    QVERIFY(page.findText("Camera Free Space: 1.50 KB"));
    page.gate().script("zvtGetNUCFreeSpace", 5);
    QMetaObject::invokeMethod(page.model(), "refresh");
    page.settle();
    QVERIFY(page.findText("Camera Free Space: 5 B"));
}

void tst_NucListDialog::listIsBusyWhileItIsRead()
{
    NucListPage page(threeNucs);
    page.gate().hold("zvtListNUCs");
    page.click(manage);
    QTRY_VERIFY(page.object(QStringLiteral("nucListBusy")));
    QVERIFY(!page.findText("The camera holds no NUCs."));
    page.gate().release("zvtListNUCs");
    page.settle();
    // A hidden spinner does not turn.
    QVERIFY(!page.object(QStringLiteral("nucListBusy")));
    QCOMPARE(page.names(), threeNucs);
}

void tst_NucListDialog::anEmptyListSaysSo()
{
    NucListPage page({});
    page.open(load);
    QVERIFY(page.findText("The camera holds no NUCs."));
    page.press(Qt::Key_Down);
    QCOMPARE(page.list()->parentItem()->property("currentIndex").toInt(), -1);
    page.press(Qt::Key_Space);
    page.press(Qt::Key_Return);
    for (const QString button : {"Load", "Rename", "Delete", "Download"})
        QVERIFY2(!page.enabled(button), qPrintable(button));
    QVERIFY(page.enabled("Upload"));
    QVERIFY(page.isOpen());
}

void tst_NucListDialog::aClickSelectsAndCopiesTheName_data()
{
    QTest::addColumn<QString>("verb");
    QTest::newRow(save) << "Save";
    QTest::newRow(load) << "Load";
}

void tst_NucListDialog::aClickSelectsAndCopiesTheName()
{
    QFETCH(const QString, verb);
    NucListPage page(threeNucs);
    page.open(QTest::currentDataTag());
    for (const QString nuc : {"Charlie", "Alpha"}) {
        page.choose(nuc);
        QCOMPARE(page.selected(), QStringList(nuc));
        QCOMPARE(page.name(), nuc);
        for (const QString &button : {verb, QString("Rename"), QString("Delete"), QString("Download")})
            QVERIFY(page.enabled(button));
    }
}

// The rows below a deleted one have moved up.
void tst_NucListDialog::aClickAfterADeletionSelectsThatRow()
{
    NucListPage page({"Alpha", "Bravo", "Charlie", "Delta"});
    page.open(load);
    QMetaObject::invokeMethod(page.model(), "deleteNuc", Q_ARG(QString, "Alpha"));
    page.awaitFrame();
    page.choose("Charlie");
    QCOMPARE(page.selected(), QStringList("Charlie"));
    QCOMPARE(page.name(), "Charlie");
    page.press(Qt::Key_Down);
    QCOMPARE(page.name(), "Delta");
}

void tst_NucListDialog::typingClearsTheSelection()
{
    NucListPage page(threeNucs);
    page.open(save);
    QCOMPARE(page.selected(), QStringList("Bravo"));
    page.click(page.nameField());
    page.press(Qt::Key_End);
    page.type("2");
    QCOMPARE(page.name(), "Bravo2");
    QCOMPARE(page.selected(), QStringList());
    for (const QString button : {"Rename", "Delete", "Download"})
        QVERIFY(!page.enabled(button));
    QVERIFY(page.enabled("Save"));
    page.press(Qt::Key_A, Qt::ControlModifier);
    page.press(Qt::Key_Delete);
    QVERIFY(!page.enabled("Save"));
    page.press(Qt::Key_Return);
    QVERIFY(page.isOpen());
    page.choose("Alpha");
    QCOMPARE(page.name(), "Alpha");
}

void tst_NucListDialog::theNameCannotBeTypedWhenLoading()
{
    NucListPage page(threeNucs);
    page.open(load);
    page.choose("Alpha");
    page.click(page.nameField());
    page.type("2");
    QCOMPARE(page.name(), "Alpha");
    QCOMPARE(page.selected(), QStringList("Alpha"));
}

void tst_NucListDialog::theNameIsDarkForAnOffsetUpdate()
{
    for (const char *button : {save, load}) {
        NucListPage page(threeNucs);
        page.tabModel("nucProcess")->setProperty("nucType", 2);
        page.open(button);
        QVERIFY(!page.nameField()->isEnabled());
        page.choose("Alpha");
        QCOMPARE(page.name(), "Alpha");
        page.tabModel("nucProcess")->setProperty("nucType", 1);
        QVERIFY(page.nameField()->isEnabled());
    }
}

void tst_NucListDialog::theNameIsDarkWhileTheListIsRead()
{
    NucListPage page(threeNucs);
    page.gate().hold("zvtListNUCs");
    page.click(save);
    QTRY_VERIFY(page.isOpen());
    QVERIFY(!page.nameField()->isEnabled());
    QVERIFY(!page.enabled("Save"));
    page.gate().release("zvtListNUCs");
    page.settle();
    QVERIFY(page.enabled("Save"));
    // A name can be typed at once, in place of the old one.
    QTRY_VERIFY(page.nameField()->hasActiveFocus());
    page.type("New");
    QCOMPARE(page.name(), "New");
}

void tst_NucListDialog::loadingClearsTheSelection()
{
    NucListPage page(threeNucs);
    for (const char *before : {load, save, manage}) {
        page.open(before);
        page.choose("Alpha");
        page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.isOpen());
        page.open(load);
        QCOMPARE(page.selected(), QStringList());
        QCOMPARE(page.name(), QString());
        QVERIFY(!page.enabled("Load"));
        page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.isOpen());
    }
}

void tst_NucListDialog::aReadKeepsTheSelection()
{
    NucListPage page(threeNucs);
    page.open(load);
    page.choose("Charlie");
    storeCorrections(page.rig().camera(), {"Baker"});
    QMetaObject::invokeMethod(page.model(), "refresh");
    QVERIFY(!page.enabled("Rename"));
    page.settle();
    QCOMPARE(page.names(), QStringList({"Alpha", "Baker", "Bravo", "Charlie"}));
    QCOMPARE(page.selected(), QStringList("Charlie"));
    QVERIFY(page.enabled("Rename"));
    QCOMPARE(zvtDeleteNUC(page.handle(), "Charlie"), 0);
    QMetaObject::invokeMethod(page.model(), "refresh");
    page.settle();
    QCOMPARE(page.selected(), QStringList());
    QVERIFY(!page.enabled("Rename"));
}

void tst_NucListDialog::keysMoveTheSelection()
{
    NucListPage page(threeNucs);
    page.open(load);
    QTRY_VERIFY(page.list()->hasActiveFocus());
    const auto selects = [&page](Qt::Key key, const QString &nuc) {
        page.press(key);
        return page.selected() == QStringList(nuc) && page.name() == nuc;
    };
    QVERIFY(selects(Qt::Key_Down, "Alpha"));
    QVERIFY(selects(Qt::Key_Down, "Bravo"));
    QVERIFY(selects(Qt::Key_End, "Charlie"));
    QVERIFY(selects(Qt::Key_Down, "Charlie"));
    QVERIFY(selects(Qt::Key_Up, "Bravo"));
    QVERIFY(selects(Qt::Key_PageUp, "Alpha"));
    QVERIFY(selects(Qt::Key_Up, "Alpha"));
}

void tst_NucListDialog::keysDuringAReadSelectNothing()
{
    NucListPage page(threeNucs);
    page.gate().hold("zvtListNUCs");
    page.click(load);
    QTRY_VERIFY(page.isOpen());
    QTRY_VERIFY(page.list()->hasActiveFocus());
    page.press(Qt::Key_Down);
    page.press(Qt::Key_End);
    page.gate().release("*");
    page.settle();
    QCOMPARE(page.names(), threeNucs);
    QCOMPARE(page.selected(), QStringList());
    page.press(Qt::Key_Down);
    QCOMPARE(page.selected(), QStringList("Alpha"));
    QCOMPARE(page.name(), "Alpha");
}

void tst_NucListDialog::onlyItsButtonsAndEscCloseIt()
{
    NucListPage page(threeNucs);
    page.open(manage);
    QTest::mouseClick(&page.window(), Qt::LeftButton, Qt::NoModifier, {4, 590});
    page.settle();
    QVERIFY(page.isOpen());
    page.press(Qt::Key_Escape);
    QTRY_VERIFY(!page.isOpen());
}

void tst_NucListDialog::theWindowBecomesLargeEnough_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<QSize>("dialog");
    QTest::newRow("a small window") << QSize(640, 420) << QSize(664, 400);
    QTest::newRow("a large window") << QSize(1000, 800) << QSize(664, 736);
}

void tst_NucListDialog::theWindowBecomesLargeEnough()
{
    QFETCH(const QSize, window);
    QFETCH(const QSize, dialog);
    NucListPage page(threeNucs, window);
    page.open(manage);
    QTRY_COMPARE(page.window().minimumSize(), dialog + QSize(64, 64));
    QTRY_COMPARE(frameOf(page)->size().toSize(), dialog);
    page.click("Done");
    QTRY_VERIFY(!page.isOpen());
    QTRY_VERIFY(page.window().minimumWidth() < 664);
}

void tst_NucListDialog::everythingFitsASmallWindow_data() { eachModeHasItsTitleAndControls_data(); }

void tst_NucListDialog::everythingFitsASmallWindow()
{
    QStringList nucs;
    for (int number = 0; number < 40; ++number)
        nucs << QStringLiteral("NUC %1").arg(number, 2, 10, QLatin1Char('0')) + QString(number == 0 ? 120 : 0, u'x');
    NucListPage page(nucs, {640, 480});
    // A host may not be able to enlarge its window.
    page.window().setMaximumSize({640, 480});
    page.open(QTest::currentDataTag());
    const QQuickItem *frame = frameOf(page);
    const QRectF inside = frame->mapRectToScene(frame->boundingRect());
    QVERIFY(QRectF({0, 0}, page.window().size()).contains(inside));
    const QRectF content = inside.adjusted(16, 16, -16, -16);
    for (const QString button : {"Rename", "Delete", "Upload", "Download", "Done", "Cancel", "Save", "Load"})
        if (const QQuickItem *item = page.find(button))
            QVERIFY2(content.contains(item->mapRectToScene(item->boundingRect())), qPrintable(button));
    for (const QQuickItem *text : PageDriver::shownTexts(*page.find(nucs.at(1), page.list())))
        QVERIFY2(PageDriver::fits(*text, inside), qPrintable(text->property("text").toString()));
    const QQuickItem *longName = page.findText(nucs.constFirst());
    QVERIFY(longName->property("truncated").toBool());
    // The keys scroll to the last row and back.
    page.list()->forceActiveFocus(Qt::TabFocusReason);
    for (const auto &[key, nuc] :
         {std::pair{Qt::Key_End, nucs.constLast()}, std::pair{Qt::Key_Home, nucs.constFirst()}}) {
        page.press(key);
        page.awaitFrame();
        page.settle();
        const QQuickItem *row = page.find(nuc, page.list());
        QVERIFY(row);
        const QRectF place = row->mapRectToItem(page.list(), row->boundingRect());
        QVERIFY2(place.top() >= -1 && place.bottom() <= page.list()->height() + 1, qPrintable(nuc));
    }
}

void tst_NucListDialog::theFocusReturnsToTheButton()
{
    NucListPage page(threeNucs);
    page.open(load);
    QTRY_VERIFY(page.list()->hasActiveFocus());
    page.choose("Bravo");
    for (const QString button : {"Rename", "Delete"}) {
        page.find(button)->forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Return);
        QTRY_VERIFY(page.findText(button + " NUC"));
        page.press(Qt::Key_Escape);
        QTRY_VERIFY(!page.findText(button + " NUC"));
        QTRY_VERIFY(page.find(button)->property("visualFocus").toBool());
    }
}

void tst_NucListDialog::thePageOutlivesItsModel()
{
    NucListPage page(threeNucs);
    page.open(manage);
    page.choose("Bravo");
    page.deleteModel();
    page.settle();
    QCOMPARE(page.names(), QStringList());
    page.click("Done");
    QTRY_VERIFY(!page.isOpen());
}

ZVT_TEST(tst_NucListDialog)
#include "tst_NucListDialog.moc"
