#include "tests/support/CameraRig.h"
#include "tests/support/SignalLog.h"
#include "tests/support/Test.h"

#include "plugin/ZvtCameraModel.h"
#include "status/StatusTabModel.h"

#include <QMetaProperty>
#include <QScopeGuard>
#include <QSettings>
#include <QThreadPool>

namespace
{

/// Expands or collapses the sections of all models of the root, and records the signals of the models.
void watchSections(ZvtCameraModel &root, bool visible, SignalLog &log)
{
    const QMetaObject &meta = ZvtCameraModel::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        if (auto *const model = meta.property(i).read(&root).value<QObject *>()) {
            if (model->metaObject()->indexOfProperty("visible") >= 0)
                model->setProperty("visible", visible);
            log.watch(model, meta.property(i).name() + QStringLiteral("."));
        }
}

/// The models whose reads have started, in order.
QStringList startedReads(SignalLog &log)
{
    QStringList started = log.take().filter(QStringLiteral(".refreshingChanged"));
    started.removeDuplicates();
    started.replaceInStrings(QStringLiteral(".refreshingChanged"), QString());
    return started;
}

} // namespace

/// What the root refreshes of its models.
class tst_ZvtCameraModelRefresh : public Test
{
    Q_OBJECT

private slots:
    void refreshReadsTheStatusTab();
    void refreshStartsInOrder();
    void hiddenSectionIsNotRead();
    void storedSettingDecidesOnTheMfgTab_data();
    void storedSettingDecidesOnTheMfgTab();
};

void tst_ZvtCameraModelRefresh::refreshReadsTheStatusTab()
{
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    root.refreshAllVisible();
    CameraRig::settle();
    QVERIFY(!root.statusTabModel()->frameSize().isEmpty());
}

// The start of a read is signalled at once. The Status tab has no such flag: on one thread the reads run in the order
// of their starts, and its first call is the first of all. The lock-in settings are left to their page.
void tst_ZvtCameraModelRefresh::refreshStartsInOrder()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle(); // The root reads the general setup.
    SignalLog log;
    watchSections(root, true, log);
    CameraRig::settle();
    log.take();
    QThreadPool &pool = *QThreadPool::globalInstance();
    const auto restore = qScopeGuard([&pool, threads = pool.maxThreadCount()] { pool.setMaxThreadCount(threads); });
    pool.setMaxThreadCount(1);
    const size_t mark = rig.gate().mark();
    root.refreshAllVisible();
    const QStringList started = startedReads(log);
    QCOMPARE(started,
             QStringList({"setupTabModel",
                          "correctionTabModel",
                          "videoTabModel",
                          "advancedTabModel",
                          "ssdTabModel",
                          "mfgTabModel",
                          "setupGeneralModel",
                          "syncSettings",
                          "videoOutputSettings",
                          "setupFilterWheelSettingsModel",
                          "setupCoolerSettingsModel",
                          "flagSettings",
                          "agcRoiSettings",
                          "overlaySettings",
                          "advancedAnalogSettingsModel",
                          "advancedSaturationSettingsModel",
                          "advancedMiscSettingsModel",
                          "mfgNucSettingsModel",
                          "mfgVoltageSettingsModel",
                          "mfgToolsModel",
                          "mfgCoolerSettingsModel",
                          "mfgCorvinFilterSettingsModel",
                          "mfgMiscSettingsModel"}));
    CameraRig::settle();
    QCOMPARE(rig.callsSince(mark).value(0), "controller.GetWindow");
}

void tst_ZvtCameraModelRefresh::hiddenSectionIsNotRead()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    CameraRig::settle();
    SignalLog log;
    watchSections(root, false, log);
    log.take();
    root.refreshAllVisible();
    QCOMPARE(startedReads(log),
             QStringList({"setupTabModel", "correctionTabModel", "videoTabModel", "advancedTabModel", "ssdTabModel",
                          "mfgTabModel"}));
}

void tst_ZvtCameraModelRefresh::storedSettingDecidesOnTheMfgTab_data()
{
    QTest::addColumn<int>("stored");
    QTest::newRow("hidden") << 0;
    QTest::newRow("shown") << 1;
}

// The setting is that of all cameras: the root of another one may have changed it.
void tst_ZvtCameraModelRefresh::storedSettingDecidesOnTheMfgTab()
{
    QFETCH(const int, stored);
    const CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    root.setManufacturingMode(stored == 0);
    const QString key = QStringLiteral("zvtCamCtrlMfgTabVisibility");
    const auto restore = qScopeGuard([&key] { QSettings().remove(key); });
    QSettings().setValue(key, stored);
    CameraRig::settle();
    SignalLog log;
    watchSections(root, false, log);
    log.take();
    root.refreshAllVisible();
    QCOMPARE(startedReads(log).contains("mfgTabModel"), stored == 1);
}

ZVT_TEST(tst_ZvtCameraModelRefresh)
#include "tst_ZvtCameraModelRefresh.moc"
