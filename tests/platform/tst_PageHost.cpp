#include "platform/hlxcamui/PageHost.h"
#include "platform/hlxcamui/hostModules.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTemporaryDir>

using hlx::cam::ui::PageHost;
using hlx::cam::ui::PageOptions;

class tst_PageHost : public Test
{
    Q_OBJECT

private slots:
    void theIconFontIsThereBeforeAPage();
    void aPathBecomesAResource_data();
    void aPathBecomesAResource();
    void aPageSeesItsCamera();
    void optionsAreUndefinedUnlessGiven();
    void optionsReachThePage();
    void twoPagesInOneEngineHaveContextsOfTheirOwn();
    void theIconFontIsThere();
    void sharedControlsResolve();
    void theItemGoesBeforeItsContext();
    void aDeadCameraIsNullInThePage();
    void errorsAreText();
    void aPageThatIsNoItemIsAnError();
    void aMissingPageIsAnError();
    void pageCodeCannotNameWhatIsOnlyAttached();

private:
    /// Writes a page file with this text, and returns its path as PageHost::load() accepts it.
    QString page(const QString &text);

    QTemporaryDir m_folder;
    int m_pages = 0;
    QQmlEngine m_engine;
};

QString tst_PageHost::page(const QString &text)
{
    QFile file(m_folder.filePath(QStringLiteral("Page%1.qml").arg(++m_pages)));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", qPrintable(file.fileName()));
    file.write(text.toUtf8());
    return QUrl::fromLocalFile(file.fileName()).toString();
}

void tst_PageHost::theIconFontIsThereBeforeAPage()
{
    hlx::cam::ui::registerHostModules();
    QCOMPARE(QFontDatabase::applicationFontFamilies(0), QStringList{QStringLiteral("FontAwesome")});
}

void tst_PageHost::aPathBecomesAResource_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QUrl>("url");
    QTest::newRow("page of a plug-in") << "zvt/zvtmain.qml" << QUrl("qrc:/zvt/zvtmain.qml");
    QTest::newRow("from the root") << "/zvt/zvtmain.qml" << QUrl("qrc:/zvt/zvtmain.qml");
    QTest::newRow("resource") << "qrc:/zvt/zvtmain.qml" << QUrl("qrc:/zvt/zvtmain.qml");
    QTest::newRow("file") << "file:///tmp/Page.qml" << QUrl("file:///tmp/Page.qml");
}

void tst_PageHost::aPathBecomesAResource()
{
    QFETCH(QString, path);
    QTEST(PageHost::resourceUrl(path), "url");
}

void tst_PageHost::aPageSeesItsCamera()
{
    QObject model;
    model.setObjectName(QStringLiteral("camera 7"));
    const auto host
        = PageHost::load(m_engine, &model, page("import QtQuick\nItem { property string n: cameraModel.objectName }"));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    QVERIFY(host->errorText().isEmpty());
    QCOMPARE(host->item()->property("n").toString(), QStringLiteral("camera 7"));
}

namespace
{

const auto optionsPage = QStringLiteral(R"(
import QtQuick
Item {
    property string s: typeof standaloneModel === "undefined" ? "undefined" : standaloneModel.objectName
    property string k: typeof refreshCameraControllerHotkey === "undefined" ? "undefined" : refreshCameraControllerHotkey
})");

} // namespace

void tst_PageHost::optionsAreUndefinedUnlessGiven()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model, page(optionsPage));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    QCOMPARE(host->item()->property("s").toString(), QStringLiteral("undefined"));
    QCOMPARE(host->item()->property("k").toString(), QStringLiteral("undefined"));
}

void tst_PageHost::optionsReachThePage()
{
    QObject model;
    QObject standalone;
    standalone.setObjectName(QStringLiteral("controller"));
    PageOptions options;
    options.standaloneModel = &standalone;
    options.refreshCameraControllerHotkey = Qt::Key_F5;
    const auto host = PageHost::load(m_engine, &model, page(optionsPage), options);
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    QCOMPARE(host->item()->property("s").toString(), QStringLiteral("controller"));
    QCOMPARE(host->item()->property("k").toInt(), int(Qt::Key_F5));
}

void tst_PageHost::twoPagesInOneEngineHaveContextsOfTheirOwn()
{
    const QString file = page("import QtQuick\nItem { property string n: cameraModel.objectName\n"
                              "property bool s: typeof standaloneModel !== 'undefined' }");
    QObject left;
    QObject right;
    QObject standalone;
    left.setObjectName(QStringLiteral("left"));
    right.setObjectName(QStringLiteral("right"));
    auto first = PageHost::load(m_engine, &left, file);
    const auto second = PageHost::load(m_engine, &right, file, {.standaloneModel = &standalone});
    QVERIFY(first->item() && second->item());
    QCOMPARE(first->item()->property("n").toString(), QStringLiteral("left"));
    QCOMPARE(first->item()->property("s").toBool(), false);
    QCOMPARE(second->item()->property("n").toString(), QStringLiteral("right"));
    QCOMPARE(second->item()->property("s").toBool(), true);
    first.reset();
    right.setObjectName(QStringLiteral("still there"));
    QCOMPARE(second->item()->property("n").toString(), QStringLiteral("still there"));
}

void tst_PageHost::theIconFontIsThere()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model,
                                     page("import QtQuick\nText { font.family: fontAwesome.name; text: '\\uf021' }"));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    const auto font = host->item()->property("font").value<QFont>();
    QVERIFY(!font.family().isEmpty());
    QCOMPARE(QFontInfo(font).family(), font.family());
    QVERIFY(QFontMetrics(font).inFontUcs4(0xf021));
}

void tst_PageHost::sharedControlsResolve()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model, page(R"(
import QtQuick
import com.kestrin.hlxcamui 1.0
import com.kestrin.hlxui 1.0
import "qrc:/hlxcamui/controls"
Item {
    property list<QtObject> all: [
        WidgetFileDialog { }, WindowEditor { }, CameraFinderPopup { }, DisplayEditor { }, IntValidatorEx { }
    ]
    Component.onCompleted: DialogWindowResizer.popMinSize()
})"));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
}

void tst_PageHost::theItemGoesBeforeItsContext()
{
    QObject model;
    // A page that uses its context while it is destroyed: without the context the name would be an error.
    auto host = PageHost::load(m_engine, &model,
                               page("import QtQuick\n"
                                    "Item { Component.onDestruction: cameraModel.objectName = fontAwesome.name }"));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    QPointer<QQuickItem> item = host->item();
    QQuickItem parent;
    item->setParentItem(&parent);
    host.reset();
    QVERIFY(!item);
    QVERIFY(parent.childItems().isEmpty());
    QCOMPARE(model.objectName(), QStringLiteral("FontAwesome"));
}

void tst_PageHost::aDeadCameraIsNullInThePage()
{
    auto model = std::make_unique<QObject>();
    const auto host = PageHost::load(m_engine, model.get(),
                                     page("import QtQuick\nItem { property bool dead: cameraModel === null }"));
    QVERIFY2(host->item(), qPrintable(host->errorText()));
    QCOMPARE(host->item()->property("dead").toBool(), false);
    model.reset();
    QCOMPARE(host->item()->property("dead").toBool(), true);
}

void tst_PageHost::errorsAreText()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model, page("import QtQuick\nItem { nonsense: 1 }"));
    QVERIFY(!host->item());
    QVERIFY2(host->errorText().contains("nonsense"), qPrintable(host->errorText()));
    QVERIFY(host->errorText().contains(".qml:2"));
}

void tst_PageHost::aPageThatIsNoItemIsAnError()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model, page("import QtQml\nQtObject { }"));
    QVERIFY(!host->item());
    QVERIFY(host->errorText().contains("not an item"));
}

void tst_PageHost::aMissingPageIsAnError()
{
    QObject model;
    const auto host = PageHost::load(m_engine, &model, QStringLiteral("zvt/missing.qml"));
    QVERIFY(!host->item());
    QVERIFY2(host->errorText().contains("qrc:/zvt/missing.qml"), qPrintable(host->errorText()));
}

void tst_PageHost::pageCodeCannotNameWhatIsOnlyAttached()
{
    QObject model;
    const auto host = PageHost::load(
        m_engine, &model, page("import QtQuick\nimport com.kestrin.hlxcamui 1.0\nItem { DialogWindowResizer { } }"));
    QVERIFY(!host->item());
    QVERIFY2(host->errorText().contains("Can only be used attached to an object"), qPrintable(host->errorText()));
}

ZVT_TEST(tst_PageHost)
#include "tst_PageHost.moc"
