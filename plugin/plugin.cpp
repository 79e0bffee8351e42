#include "plugin/plugin.h"

#include "common/FPASizeIntValidator.h"
#include "common/ZvtModelTable.h"
#include "correction/NucInfoModel.h"
#include "correction/NucProcessModel.h"
#include "manufacturing/MfgRoicConfigModel.h"
#include "plugin/ZvtCameraModel.h"
#include "recording/BatchDownloadEntry.h"
#include "recording/BatchDownloadModel.h"
#include "recording/SsdMovieFileInfoModel.h"
#include "recording/SsdTabModel.h"
#include "setup/SetupGeneralModel.h"
#include "setup/SyncSettingsModel.h"
#include "setup/ZvtCameraPresetModel.h"
#include "video/VideoTabModel.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QMetaType>
#include <QThreadPool>
#include <QtQml>

#include <algorithm>

#include "hlxui/IControllerModelFactory.h"

namespace
{

constexpr const char *moduleUri = "com.kestrin.hlx.cam.ui.zvt";

// Registers a fixed-width name, so that QML accepts properties and signals declared with it.
template <class Type> void registerTypedef(const char *name)
{
    const QByteArray normalized = QMetaObject::normalizedType(name);
    const QMetaType type = QMetaType::fromType<Type>();
    if (normalized != type.name())
        QMetaType::registerNormalizedTypedef(normalized, type);
}

void registerTypedefs()
{
    registerTypedef<uint64_t>("uint64_t");
    registerTypedef<uint32_t>("uint32_t");
    registerTypedef<uint16_t>("uint16_t");
    registerTypedef<uint8_t>("uint8_t");
    registerTypedef<int64_t>("int64_t");
    registerTypedef<int32_t>("int32_t");
    registerTypedef<int16_t>("int16_t");
    registerTypedef<int8_t>("int8_t");
}

template <class Type> void registerUncreatable(const char *name, const char *reason)
{
    qmlRegisterUncreatableType<Type>(moduleUri, 1, 0, name, QString::fromLatin1(reason));
}

template <class Type> void registerCreatable(const char *name) { qmlRegisterType<Type>(moduleUri, 1, 0, name); }

void registerTypes()
{
    registerUncreatable<ZvtCameraPresetModel>("ZvtCameraPresetModel", "Can only get through ZvtCameraModel");
    registerUncreatable<ZvtCameraModel>("ZvtCameraModel", "Can only get through controller plugin");
    registerUncreatable<SetupGeneralModel>("SetupGeneralModel", "Can only get through controller plugin");
    registerUncreatable<NucInfoModel>("NucInfoModel", "Can only get through NucListModel");
    registerUncreatable<NucProcessModel>("NucProcessModel", "Can only get through ZvtCameraModel");
    registerUncreatable<VideoTabModel>("VideoTabModel", "Can only get through ZvtCameraModel");
    registerUncreatable<SsdTabModel>("SsdTabModel", "Can only get through ZvtCameraModel");
    registerUncreatable<BatchDownloadModel>("BatchDownloadModel", "Can only get from parent");
    registerUncreatable<BatchDownloadEntry>("BatchDownloadEntry", "Can only get from parent");
    registerUncreatable<SsdMovieFileInfoModel>("SsdMovieFileInfoModel", "Can only get from parent");
    registerUncreatable<SyncSettingsModel>("SyncSettingsModel", "Can only get through controller plugin");
    registerUncreatable<MfgRoicConfigModel>("MfgRoicConfigModel", "Can only get through controller plugin");
    registerCreatable<FPASizeIntValidator>("FPASizeIntValidator");
    registerCreatable<ZvtModelTable>("ZvtModelTable");
}

// Reads mostly wait for the camera, and Qt's raster engine paints with threads of the same pool. With the default
// limit, reads could use all threads, and the page would not be painted until one of them ends. 64 is more than all
// models of a page start at once.
void raiseThreadLimit()
{
    constexpr int threadLimit = 64;
    auto *pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(std::max(pool->maxThreadCount(), threadLimit));
}

// Adds the icon font before there is a window: a font that is added later makes Qt lay out all texts again. A host
// without a user interface has no font database.
void addIconFont()
{
    static bool added = false;
    if (added || !qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return;
    // The first query fills the database. The font added after it takes precedence over an installed one of the same
    // name.
    static_cast<void>(QFontDatabase::hasFamily(QString()));
    added = QFontDatabase::addApplicationFont(QStringLiteral(":/zvt/fonts/MaterialIcons-Regular.ttf")) != -1;
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is part of the interface.
bool CreateModelForController(hlx::TSharedPtr<hlx::cam::IController> controller, QObject *parent, QObject *&model,
                              QString &qml)
{
    if (!controller)
        return false;
    auto zvtController = controller.dynamicCast<hlx::cam::IZVTController>();
    if (!zvtController)
        return false;
    model = new ZvtCameraModel(std::move(zvtController), parent);
    qml = QStringLiteral("zvt/zvtmain.qml");
    return true;
}

// Outside any namespace, as Q_INIT_RESOURCE requires. In the shared library a static initialiser has already
// initialised the resources; a host that links statically needs this call.
void initResources()
{
    Q_INIT_RESOURCE(hlxcamuiZVT_raw_qml_0); // The pages.
    Q_INIT_RESOURCE(hlxcamuiZVT_raw_qml_1); // The modules of parts/.
    Q_INIT_RESOURCE(zvtqmldir);
}

int hlxInitPlugin()
{
    initResources();
    addIconFont();
    raiseThreadLimit();
    hlx::cam::ui::controllerModelFactory()->RegisterModelCreator(CreateModelForController);
    registerTypedefs();
    registerTypes();
    return 1;
}
