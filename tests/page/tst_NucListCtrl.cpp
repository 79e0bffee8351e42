#include "tests/page/NucListPage.h"
#include "tests/support/Test.h"

#include <QTemporaryDir>
#include <QUrl>

namespace
{

/// The control in the mode "new", as in the wizard, and what it has reported.
const QString source = QStringLiteral(R"(
Rectangle {
    id: wizard

    property var camera
    property int accepts
    property int starts
    property alias control: list

    function ask(isFactory: bool) {
        list.showOverwritePromptDialog(isFactory, "new", () => ++starts)
    }

    width: 700
    height: 500
    color: "black"

    NucListCtrl {
        id: list

        anchors.fill: parent
        camera: wizard.camera
        mode: "new"
        onAccepted: ++wizard.accepts
    }
})");

/// The page of a camera with three corrections, and the control over it.
class Wizard : public NucListPage
{
public:
    Wizard()
        : NucListPage({"Alpha", "Bravo", "Charlie"}),
          item(create(source, {{"camera", QVariant::fromValue(cameraModel())}})),
          control(item->property("control").value<QObject *>())
    {
        QMetaObject::invokeMethod(model(), "refresh");
        settle();
    }

    QObject *const item;
    QObject *const control;
};

} // namespace

/// The list of corrections as a page of the wizard, and the functions that other files call.
class tst_NucListCtrl : public Test
{
    Q_OBJECT

private slots:
    void newNucHasANameAndNoButtons();
    void aClickFillsTheName();
    void aDoubleClickIsReported();
    void theNameIsDarkForAnOffsetUpdate();
    void theIndexIsThatOfTheList();
    void theWantedNameIsSelectedOnce();
    void anInvalidNameIsShown();
    void aFailedTransferIsNotReported();
    void theQuestionCallsTheFunction_data();
    void theQuestionCallsTheFunction();
};

void tst_NucListCtrl::newNucHasANameAndNoButtons()
{
    const Wizard wizard;
    QCOMPARE(wizard.names(), QStringList({"Alpha", "Bravo", "Charlie"}));
    QVERIFY(wizard.findText("Name:"));
    QCOMPARE(wizard.name(), QString());
    QVERIFY(wizard.nameField()->isEnabled());
    QVERIFY(!wizard.nameField()->property("readOnly").toBool());
    QVERIFY(wizard.nameField()->width() > 500);
    for (const QString button : {"Save", "Load", "Rename", "Delete", "Upload", "Download", "Done", "Cancel"})
        QVERIFY2(!wizard.find(button), qPrintable(button));
}

void tst_NucListCtrl::aClickFillsTheName()
{
    Wizard wizard;
    wizard.choose("Bravo");
    QCOMPARE(wizard.control->property("nucName").toString(), "Bravo");
    wizard.click(wizard.nameField());
    wizard.press(Qt::Key_End);
    wizard.type("2");
    QCOMPARE(wizard.control->property("nucName").toString(), "Bravo2");
    QCOMPARE(wizard.control->property("currentIndex").toInt(), -1);
}

// The wizard does not listen to it.
void tst_NucListCtrl::aDoubleClickIsReported()
{
    Wizard wizard;
    const size_t mark = wizard.gate().mark();
    wizard.doubleClick("Charlie");
    QCOMPARE(wizard.item->property("accepts").toInt(), 1);
    QCOMPARE(wizard.selected(), QStringList("Charlie"));
    QCOMPARE(wizard.calls(mark), QStringList());
}

void tst_NucListCtrl::theNameIsDarkForAnOffsetUpdate()
{
    const Wizard wizard;
    wizard.tabModel("nucProcess")->setProperty("nucType", 2);
    QVERIFY(!wizard.nameField()->isEnabled());
}

void tst_NucListCtrl::theIndexIsThatOfTheList()
{
    Wizard wizard;
    QCOMPARE(wizard.control->property("currentIndex").toInt(), -1);
    wizard.control->setProperty("currentIndex", 1);
    wizard.awaitFrame();
    QCOMPARE(wizard.selected(), QStringList("Bravo"));
    QMetaObject::invokeMethod(wizard.control, "clearCurrentIndex");
    wizard.awaitFrame();
    QCOMPARE(wizard.selected(), QStringList());
    QCOMPARE(wizard.control->property("currentIndex").toInt(), -1);
}

void tst_NucListCtrl::theWantedNameIsSelectedOnce()
{
    Wizard wizard;
    const char *const wanted = "nameToSetIndexFromWhenNucListModelisLoaded";
    for (const auto &[name, row] : {std::pair{"Charlie", 2}, std::pair{"none", -1}}) {
        wizard.control->setProperty(wanted, QString::fromLatin1(name));
        QMetaObject::invokeMethod(wizard.control, "setCurrentIndexByNucName");
        QCOMPARE(wizard.control->property("currentIndex").toInt(), row);
        QCOMPARE(wizard.control->property(wanted).toString(), QString());
    }
    // A read selects it by itself.
    wizard.gate().hold("zvtListNUCs");
    QMetaObject::invokeMethod(wizard.model(), "refresh");
    wizard.control->setProperty(wanted, "Alpha");
    wizard.gate().release("*");
    wizard.settle();
    QCOMPARE(wizard.selected(), QStringList("Alpha"));
}

void tst_NucListCtrl::anInvalidNameIsShown()
{
    Wizard wizard;
    QMetaObject::invokeMethod(wizard.control, "showInvalidNameErrorDialog");
    QTRY_VERIFY(wizard.findText(invalidNucName));
    wizard.press(Qt::Key_Return);
    QTRY_VERIFY(!wizard.findText(invalidNucName));
}

// The dialog with the list reports it: the wizard starts no transfers.
void tst_NucListCtrl::aFailedTransferIsNotReported()
{
    Wizard wizard;
    wizard.gate().failNext("zvtDownloadNUCStd");
    const QTemporaryDir folder;
    const QString copy = QUrl::fromLocalFile(folder.filePath("copy")).toString();
    QMetaObject::invokeMethod(wizard.model(), "downloadNuc", Q_ARG(QString, "Alpha"), Q_ARG(QString, copy));
    QTRY_VERIFY(!wizard.model()->property("transferring").toBool());
    QVERIFY(!wizard.model()->property("transferOk").toBool());
    wizard.settle();
    QVERIFY(!wizard.findText("Failed to download file."));
}

void tst_NucListCtrl::theQuestionCallsTheFunction_data()
{
    QTest::addColumn<bool>("factory");
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << false << true;
    QTest::newRow("no") << false << false;
    QTest::newRow("factory, yes") << true << true;
}

void tst_NucListCtrl::theQuestionCallsTheFunction()
{
    QFETCH(const bool, factory);
    QFETCH(const bool, yes);
    const QString question = factory ? overwriteFactoryNuc : overwriteNuc;
    Wizard wizard;
    QMetaObject::invokeMethod(wizard.item, "ask", Q_ARG(bool, factory));
    QTRY_VERIFY(wizard.findText(question));
    wizard.awaitFrame();
    wizard.click(yes ? "Yes" : "No");
    QTRY_VERIFY(!wizard.findText(question));
    QCOMPARE(wizard.item->property("starts").toInt(), yes ? 1 : 0);
    QCOMPARE(wizard.item->property("accepts").toInt(), 0);
}

ZVT_TEST(tst_NucListCtrl)
#include "tst_NucListCtrl.moc"
