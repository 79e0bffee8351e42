#include "common/CameraCapabilitiesModel.h"
#include "common/CameraRoot.h"
#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <thread>

namespace
{

// A root with only the functions that the capabilities use.
class Root : public QObject, public CameraRoot
{
public:
    hlx::TSharedPtr<hlx::cam::IZVTController> controller() const override { return m_controller; }
    hlx::TSharedPtr<hlx::cam::IDevice> device() const override { return {}; }
    bool connected() const override { return m_controller && m_controller->IsConnected(); }
    QMetaObject::Connection onConnectedChanged(const QObject *, std::function<void()>) override { return {}; }
    QMetaObject::Connection onCapabilitiesChanged(const QObject *, std::function<void()>) override { return {}; }
    bool manufacturingMode() const override { return false; }
    QMetaObject::Connection onManufacturingModeChanged(const QObject *, std::function<void()>) override { return {}; }
    std::shared_ptr<CapabilityBlock> capabilities() const override { return m_block; }
    CameraCapabilitiesModel *cameraCapabilitiesModel() override { return &m_capabilities; }
    SetupGeneralModel *setupGeneralModel() override { return nullptr; }
    SyncSettingsModel *syncSettings() override { return nullptr; }
    SetupCoolerSettingsModel *setupCoolerSettingsModel() override { return nullptr; }
    FlagSettingsModel *flagSettings() override { return nullptr; }
    SetupFilterWheelSettingsModel *setupFilterWheelSettingsModel() override { return nullptr; }
    LoadNucOptionsModel *loadNucOptions() override { return nullptr; }
    uint8_t hasNucMask() override { return 0; }
    void modifyHasNucMask(uint8_t, uint8_t) override { }
    void setPresetHasNuc(uint8_t, bool) override { }
    void updateHasNucMask() override { }
    ZvtCameraModel *cameraModel() override { return nullptr; }

    hlx::TSharedPtr<hlx::cam::IZVTController> m_controller;
    const std::shared_ptr<CapabilityBlock> m_block = std::make_shared<CapabilityBlock>();
    CameraCapabilitiesModel m_capabilities{this};
};

// The properties in their order; all but one are bool.
const QStringList &names()
{
    static const QStringList list
        = QStringLiteral(
              "hasFrontPanelTemperature hasAirGapTemperature hasInternalTemperature hasChassisTemperature hasFPAGain "
              "numFPAGainLevels hasReplaceableFilters hasGigEPreset hasVideoOutputSettings hasLensStatesFunctionality "
              "hasContinuousOpticalZoom hasDiscontinuousOpticalZoom hasFocus hasFocusToDistance hasFovMovePercent "
              "hasFocusMovePercent hasWindowSettings hasWindowDimensionsThatCanBeArbitrary hasBilinearZoom "
              "hasFilterWheel "
              "hasFlag hasFlagCooler hasLensCover hasBadPixelCorrection hasUpdateRate hasTemporalFilter "
              "hasOverlayCustomization hasVideoAgcRoi hasCameraLinkMode hasCoaXPressLinksToUse hasSkimming hasLockin "
              "hasAdvancedMiscSettings hasSsd hasTeCooler")
              .split(u' ');
    return list;
}

const QString levels = QStringLiteral("numFPAGainLevels");
const QString chassis = QStringLiteral("hasChassisTemperature");
const QString internal = QStringLiteral("hasInternalTemperature");

// An explicit instantiation may name private members. The test reaches in this way a function that nothing calls.
using WildcardMatch = bool (*)(const hlx::CString &, const QString &);
template <WildcardMatch match> struct Access {
    friend WildcardMatch wildcardMatch() { return match; }
};
WildcardMatch wildcardMatch();
template struct Access<&CameraCapabilitiesModel::wildcardMatch>;

} // namespace

class tst_CameraCapabilitiesModel : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void offersThirtyFivePropertiesInTheirOrder();
    void startsWithNothing();
    void eachValueComesFromTheOperationOfItsName_data();
    void eachValueComesFromTheOperationOfItsName();
    void takesTheValuesOfTheProfile();
    void followsTheFrameworkOnlyWhenConfigured();
    void internalTemperatureIsAskedWithoutChassis();
    void internalTemperatureSticksWithChassis();
    void announcesOnceWithAController();
    void announcesOnceWithoutAController();
    void announcesOnceWithoutARoot();
    void keepsTheValuesWithoutAController();
    void keepsTheValuesAfterADisconnect();
    void theBlockIsLiveAndOutlivesTheModel();
    void theBlockIsReadFromAnotherThread();
    void fitsWildcards();

private:
    // Changes the camera's capabilities and updates those of the framework.
    void makeUp(const QVariantMap &capabilities);
    QVariant value(const QString &name) const { return m_root->m_capabilities.property(qPrintable(name)); }

    std::unique_ptr<CameraRig> m_rig;
    std::unique_ptr<Root> m_root;
};

void tst_CameraCapabilitiesModel::init()
{
    Test::init();
    m_rig = std::make_unique<CameraRig>(QStringLiteral("bare"));
    m_root = std::make_unique<Root>();
    m_root->m_controller = m_rig->controller();
    QVariantMap nothing;
    for (const QString &name : names())
        nothing[name] = name == levels ? QVariant(0) : QVariant(false);
    makeUp(nothing);
}

void tst_CameraCapabilitiesModel::cleanup()
{
    m_root.reset();
    m_rig.reset();
}

void tst_CameraCapabilitiesModel::makeUp(const QVariantMap &capabilities)
{
    for (auto entry = capabilities.begin(); entry != capabilities.end(); ++entry)
        QVERIFY2(m_rig->camera().changeMakeUp(entry.key(), entry.value()), qPrintable(entry.key()));
    const auto controller = m_rig->controller();
    controller->capabilities.configure(controller.get());
}

void tst_CameraCapabilitiesModel::offersThirtyFivePropertiesInTheirOrder()
{
    const QMetaObject &meta = CameraCapabilitiesModel::staticMetaObject;
    QStringList found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        found << QString::fromLatin1(property.name());
        QVERIFY(!property.isWritable());
        QVERIFY(!property.isConstant());
        QCOMPARE(property.notifySignal().name(), QByteArray("cameraCapabilitiesChanged"));
        QCOMPARE(property.metaType().id(), int(property.name() == levels ? QMetaType::Int : QMetaType::Bool));
    }
    QCOMPARE(found.size(), 35);
    QCOMPARE(found, names());
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
}

void tst_CameraCapabilitiesModel::startsWithNothing()
{
    for (const QString &name : names())
        QCOMPARE(value(name).toInt(), 0);
}

void tst_CameraCapabilitiesModel::eachValueComesFromTheOperationOfItsName_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_CameraCapabilitiesModel::eachValueComesFromTheOperationOfItsName()
{
    QFETCH(QString, name);
    const int number = name == levels ? 3 : 1;
    makeUp({{name, name == levels ? QVariant(number) : QVariant(true)}});
    m_root->m_capabilities.configure();
    for (const QString &other : names())
        QCOMPARE(value(other).toInt(), other == name ? number : 0);

    makeUp({{name, name == levels ? QVariant(0) : QVariant(false)}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(name).toInt(), 0);
}

void tst_CameraCapabilitiesModel::takesTheValuesOfTheProfile()
{
    CameraRig rig;
    const auto controller = rig.controller();
    controller->capabilities.configure(controller.get());
    m_root->m_controller = controller;
    m_root->m_capabilities.configure();
    const QJsonObject profile = rig.camera().profile().capabilities();
    for (const QString &name : names())
        if (name != internal || !profile.value(chassis).toBool())
            QCOMPARE(value(name).toInt(), profile.value(name).toVariant().toInt());
}

void tst_CameraCapabilitiesModel::followsTheFrameworkOnlyWhenConfigured()
{
    makeUp({{QStringLiteral("hasFlag"), true}});
    QCOMPARE(value(QStringLiteral("hasFlag")), QVariant(false));
    m_root->m_capabilities.configure();
    QCOMPARE(value(QStringLiteral("hasFlag")), QVariant(true));
}

void tst_CameraCapabilitiesModel::internalTemperatureIsAskedWithoutChassis()
{
    makeUp({{internal, true}, {chassis, true}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(internal), QVariant(false));
    QCOMPARE(value(chassis), QVariant(true));
    // The chassis sensor is read first: one configure() is enough.
    makeUp({{chassis, false}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(internal), QVariant(true));
}

void tst_CameraCapabilitiesModel::internalTemperatureSticksWithChassis()
{
    makeUp({{internal, true}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(internal), QVariant(true));
    makeUp({{internal, false}, {chassis, true}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(internal), QVariant(true));
    makeUp({{chassis, false}});
    m_root->m_capabilities.configure();
    QCOMPARE(value(internal), QVariant(false));
}

void tst_CameraCapabilitiesModel::announcesOnceWithAController()
{
    QSignalSpy changed(&m_root->m_capabilities, &CameraCapabilitiesModel::cameraCapabilitiesChanged);
    bool isLast = false;
    connect(&m_root->m_capabilities, &CameraCapabilitiesModel::cameraCapabilitiesChanged, this,
            [&] { isLast = value(names().constLast()).toBool() && value(internal).toBool(); });
    makeUp({{names().constLast(), true}, {internal, true}});
    m_root->m_capabilities.configure();
    QCOMPARE(changed.count(), 1);
    QVERIFY(isLast);
    m_root->m_capabilities.configure();
    QCOMPARE(changed.count(), 2);
}

void tst_CameraCapabilitiesModel::announcesOnceWithoutAController()
{
    m_root->m_controller = {};
    QSignalSpy changed(&m_root->m_capabilities, &CameraCapabilitiesModel::cameraCapabilitiesChanged);
    m_root->m_capabilities.configure();
    QCOMPARE(changed.count(), 1);
    for (const QString &name : names())
        QCOMPARE(value(name).toInt(), 0);
}

void tst_CameraCapabilitiesModel::announcesOnceWithoutARoot()
{
    CameraCapabilitiesModel model;
    QSignalSpy changed(&model, &CameraCapabilitiesModel::cameraCapabilitiesChanged);
    model.configure();
    QCOMPARE(changed.count(), 1);
    QVERIFY(!model.hasFlag());
}

void tst_CameraCapabilitiesModel::keepsTheValuesWithoutAController()
{
    makeUp({{QStringLiteral("hasSsd"), true}});
    m_root->m_capabilities.configure();
    m_root->m_controller = {};
    m_root->m_capabilities.configure();
    QVERIFY(m_root->m_capabilities.hasSsd());
}

void tst_CameraCapabilitiesModel::keepsTheValuesAfterADisconnect()
{
    makeUp({{QStringLiteral("hasSsd"), true}});
    m_root->m_capabilities.configure();
    m_rig->camera().disconnect();
    QVERIFY(m_root->m_capabilities.hasSsd());
    m_root->m_capabilities.configure();
    QVERIFY(m_root->m_capabilities.hasSsd());
}

void tst_CameraCapabilitiesModel::theBlockIsLiveAndOutlivesTheModel()
{
    const auto block = m_root->m_capabilities.block();
    QCOMPARE(m_root->m_capabilities.block(), block);
    QVERIFY(!block->hasLockin());
    makeUp({{QStringLiteral("hasLockin"), true}, {levels, 4}});
    m_root->m_capabilities.configure();
    QVERIFY(block->hasLockin());
    m_root.reset();
    QVERIFY(block->hasLockin());
    QCOMPARE(block->numFPAGainLevels(), 4);
}

void tst_CameraCapabilitiesModel::theBlockIsReadFromAnotherThread()
{
    makeUp({{levels, 4}});
    std::atomic<bool> seen = false;
    std::thread reader([&seen, block = m_root->m_capabilities.block()] {
        while (block->numFPAGainLevels() != 4)
            std::this_thread::yield();
        seen = true;
    });
    m_root->m_capabilities.configure();
    reader.join();
    QVERIFY(seen);
}

void tst_CameraCapabilitiesModel::fitsWildcards()
{
    QVERIFY(wildcardMatch()(hlx::CString("ps*.bpl"), QStringLiteral("ps1.bpl")));
    QVERIFY(wildcardMatch()(hlx::CString("50%s"), QStringLiteral("50%s")));
    QVERIFY(!wildcardMatch()(hlx::CString("ps*.bpl"), QStringLiteral("factory.bpl")));
}

ZVT_TEST(tst_CameraCapabilitiesModel)
#include "tst_CameraCapabilitiesModel.moc"
