#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include <QColor>
#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QLibrary>
#include <QLibraryInfo>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QThreadPool>

#include "hlxui/ControllerModel.h"
#include "hlxui/IControllerModelFactory.h"

namespace
{

const QString pluginFile = QStringLiteral(ZVT_BINARY_DIR "/bin/libhlxcamuiZVT.so");

/// A controller of another camera family.
class ForeignController : public hlx::cam::IController
{
};

} // namespace

/// The built plug-in, loaded as a host loads it.
class tst_Plugin : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void showsThreeSymbolsAndNoMore();
    void entryPointReturnsOneAndMayRunTwice();
    void readsLeaveThreadsToPaintWith();
    void iconFontIsAddedOnce();
    void nullControllerIsDeclined();
    void controllerOfAnotherFamilyIsDeclined();
    void controllerGetsARootAndItsPage();
    void resourcesHoldThePageTreeAndNothingElse();
    void modulesAreInTheResources_data();
    void modulesAreInTheResources();
    void oneTypeWhicheverWayItIsImported();
    void typesCanNotBeMadeInQmlExceptTwo_data();
    void typesCanNotBeMadeInQmlExceptTwo();
    void everyTypeIsRegistered();
    void fixedWidthNamesAreKnown_data();
    void fixedWidthNamesAreKnown();
    void libraryUnloadsWhenNothingOfItIsLeft();

private:
    using EntryPoint = int (*)();

    QLibrary m_library{pluginFile};
    EntryPoint m_entryPoint = nullptr;
};

void tst_Plugin::initTestCase()
{
    QVERIFY2(m_library.load(), qPrintable(m_library.errorString()));
    m_entryPoint = reinterpret_cast<EntryPoint>(m_library.resolve("hlxInitPlugin"));
    QVERIFY(m_entryPoint);
    QCOMPARE(m_entryPoint(), 1);
}

void tst_Plugin::cleanupTestCase() { QThreadPool::globalInstance()->waitForDone(); }

void tst_Plugin::showsThreeSymbolsAndNoMore()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"), {"-D", "--defined-only", "-C", pluginFile});
    QVERIFY(nm.waitForFinished());
    QStringList names;
    for (const QString &line : QString::fromUtf8(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts))
        names << line.section(u' ', 2).section(u'(', 0, 0);
    names.sort();
    QCOMPARE(names, QStringList({"CreateModelForController", "hlxInitPlugin", "initResources"}));
}

void tst_Plugin::entryPointReturnsOneAndMayRunTwice()
{
    const int creators = hlx::cam::ui::controllerModelFactory()->CreatorCount();
    QCOMPARE(creators, 1);
    QCOMPARE(m_entryPoint(), 1);
    QCOMPARE(hlx::cam::ui::controllerModelFactory()->CreatorCount(), creators);
}

// Painting shares the global pool with the reads. A host that has set a larger limit keeps it.
void tst_Plugin::readsLeaveThreadsToPaintWith()
{
    auto *pool = QThreadPool::globalInstance();
    for (const auto &[before, after] : {std::pair(1, 64), std::pair(100, 100)}) {
        pool->setMaxThreadCount(before);
        m_entryPoint();
        QCOMPARE(pool->maxThreadCount(), after);
    }
}

// The host would ask two entries of one family for every icon.
void tst_Plugin::iconFontIsAddedOnce()
{
    m_entryPoint();
    constexpr int moreThanTestsAdd = 100;
    int added = 0;
    for (int id = 0; id < moreThanTestsAdd; ++id)
        added += static_cast<int>(QFontDatabase::applicationFontFamilies(id).count(QStringLiteral("Material Icons")));
    QCOMPARE(added, 1);
}

void tst_Plugin::nullControllerIsDeclined()
{
    QObject *model = nullptr;
    QString qml = QStringLiteral("untouched");
    QVERIFY(!hlx::cam::ui::controllerModelFactory()->CreateModel({}, nullptr, model, qml));
    QVERIFY(!model);
    QCOMPARE(qml, QStringLiteral("untouched"));
}

void tst_Plugin::controllerOfAnotherFamilyIsDeclined()
{
    const hlx::TSharedPtr<hlx::cam::IController> foreign(new ForeignController);
    QObject *model = nullptr;
    QString qml = QStringLiteral("untouched");
    QVERIFY(!hlx::cam::ui::controllerModelFactory()->CreateModel(foreign, nullptr, model, qml));
    QVERIFY(!model);
    QCOMPARE(qml, QStringLiteral("untouched"));
}

void tst_Plugin::controllerGetsARootAndItsPage()
{
    CameraRig rig;
    QObject parent;
    QObject *model = nullptr;
    QString qml;
    QVERIFY(hlx::cam::ui::controllerModelFactory()->CreateModel(rig.controller(), &parent, model, qml));
    QVERIFY(model);
    QCOMPARE(model->parent(), &parent);
    QCOMPARE(model->metaObject()->className(), "ZvtCameraModel");
    QVERIFY(qobject_cast<ControllerModel *>(model));
    QCOMPARE(qml, QStringLiteral("zvt/zvtmain.qml"));
    QVERIFY(QFile::exists(QStringLiteral(":/") + qml));
}

void tst_Plugin::resourcesHoldThePageTreeAndNothingElse()
{
    constexpr int allFiles = 58;
    QStringList files;
    QDirIterator it(QStringLiteral(":/zvt"), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next().mid(6);
    QVERIFY2(!files.contains("qmldir"), "a qmldir in the resources changes how the host's folders resolve");
    QCOMPARE(files.size(), allFiles);
    for (const char *path :
         {"zvtmain.qml", "fonts/MaterialIcons-Regular.ttf", "images/play1.png", "images/play1@2x.png"})
        QVERIFY2(files.contains(path), path);
}

void tst_Plugin::modulesAreInTheResources_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("tree") << "WrappingButton";
    QTest::newRow("module") << "PlainLabel";
}

// An engine of a host finds the modules without any setting, and finds all their files in the library.
void tst_Plugin::modulesAreInTheResources()
{
    QFETCH(QString, type);
    QQmlEngine engine;
    engine.setImportPathList({QLibraryInfo::path(QLibraryInfo::QmlImportsPath), "qrc:/qt-project.org/imports"});
    QQmlComponent component(&engine);
    component.setData(
        QStringLiteral("import QtQuick\nimport zvt\nimport zvt.look\n%1 { property color shade: Look.backColor }")
            .arg(type)
            .toUtf8(),
        {});
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QVERIFY(object->property("shade").value<QColor>().isValid());
}

void tst_Plugin::oneTypeWhicheverWayItIsImported()
{
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import zvt\n"
                      "import \"zvt/controls\" as Folder\n"
                      "WrappingButton { property bool same: this instanceof Folder.WrappingButton }",
                      QUrl(QStringLiteral("qrc:/Page.qml")));
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    QVERIFY(object->property("same").toBool());
}

void tst_Plugin::typesCanNotBeMadeInQmlExceptTwo_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("reason"); // Why it cannot be made; empty if it can.
    QTest::newRow("root") << "ZvtCameraModel"
                          << "Can only get through controller plugin";
    QTest::newRow("validator") << "FPASizeIntValidator"
                               << "";
    QTest::newRow("table") << "ZvtModelTable"
                           << "";
}

void tst_Plugin::typesCanNotBeMadeInQmlExceptTwo()
{
    QFETCH(QString, type);
    QFETCH(QString, reason);
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(QStringLiteral("import com.kestrin.hlx.cam.ui.zvt 1.0\n%1 {}").arg(type).toUtf8(), {});
    QVERIFY2(component.errorString().contains(reason), qPrintable(component.errorString()));
    QCOMPARE(component.isReady(), reason.isEmpty());
    if (component.isReady())
        QVERIFY(std::unique_ptr<QObject>(component.create()));
}

void tst_Plugin::everyTypeIsRegistered()
{
    const QStringList types{"ZvtCameraPresetModel", "ZvtCameraModel",       "SetupGeneralModel",  "NucInfoModel",
                            "NucProcessModel",      "VideoTabModel",        "SsdTabModel",        "FPASizeIntValidator",
                            "ZvtModelTable",        "SyncSettingsModel",    "MfgRoicConfigModel", "BatchDownloadModel",
                            "BatchDownloadEntry",   "SsdMovieFileInfoModel"};
    for (const QString &type : types)
        QVERIFY2(qmlTypeId("com.kestrin.hlx.cam.ui.zvt", 1, 0, type.toUtf8()) != -1, qPrintable(type));
}

void tst_Plugin::fixedWidthNamesAreKnown_data()
{
    QTest::addColumn<QMetaType>("type");
    QTest::newRow("uint64_t") << QMetaType::fromType<uint64_t>();
    QTest::newRow("uint32_t") << QMetaType::fromType<uint32_t>();
    QTest::newRow("uint16_t") << QMetaType::fromType<uint16_t>();
    QTest::newRow("uint8_t") << QMetaType::fromType<uint8_t>();
    QTest::newRow("int64_t") << QMetaType::fromType<int64_t>();
    QTest::newRow("int32_t") << QMetaType::fromType<int32_t>();
    QTest::newRow("int16_t") << QMetaType::fromType<int16_t>();
    QTest::newRow("int8_t") << QMetaType::fromType<int8_t>();
}

void tst_Plugin::fixedWidthNamesAreKnown()
{
    QFETCH(QMetaType, type);
    QCOMPARE(QMetaType::fromName(QTest::currentDataTag()), type);
}

// A host may unload the plug-in when its page, its root and the engine are destroyed and no task runs. It must not load
// it again: QML and the meta type registry keep the registrations of the library.
void tst_Plugin::libraryUnloadsWhenNothingOfItIsLeft()
{
    CameraRig rig;
    QObject *model = nullptr;
    QString qml;
    QVERIFY(hlx::cam::ui::controllerModelFactory()->CreateModel(rig.controller(), nullptr, model, qml));
    QMetaObject::invokeMethod(model, "refreshAllVisible");
    delete model;
    CameraRig::settle();
    const auto creator = reinterpret_cast<hlx::cam::ui::ModelCreator>(m_library.resolve(
        "_Z24CreateModelForControllerN3hlx10TSharedPtrINS_3cam11IControllerEEEP7QObjectRS5_R7QString"));
    QVERIFY2(creator, "the creator has another signature");
    hlx::cam::ui::controllerModelFactory()->UnregisterModelCreator(creator);
    QVERIFY(m_library.unload());
    QVERIFY(!QFile::exists(QStringLiteral(":/zvt/zvtmain.qml")));
    rig.controller()->FireValueChanged("Connected");
    CameraRig::settle();
}

ZVT_TEST(tst_Plugin)
#include "tst_Plugin.moc"
