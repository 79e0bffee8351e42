#include "tests/support/CameraRig.h"
#include "tests/support/Test.h"

#include "common/CameraAccess.h"
#include "common/CapabilityBlock.h"
#include "common/TInvokeEvent.h"
#include "plugin/ZvtCameraModel.h"
#include "status/StatusTabModel.h"

#include <QFile>
#include <QMetaProperty>
#include <QSettings>
#include <QSignalSpy>

#include <array>
#include <thread>

namespace
{

const QString mfgKey = QStringLiteral("zvtCamCtrlMfgTabVisibility");

/// A camera and its root; records the order of the root's signals.
struct Camera {
    explicit Camera(const QString &profile = QStringLiteral("everything"), bool connected = true)
        : rig(profile, connected), root(std::make_unique<ZvtCameraModel>(rig.controller(), nullptr))
    {
        const auto note = [this](auto signal, const char *name) {
            QObject::connect(root.get(), signal, root.get(), [this, name] { order << name; });
        };
        note(&ZvtCameraModel::connectedChanged, "connected");
        note(&ZvtCameraModel::modelChanged, "model");
        note(&ZvtCameraModel::serialChanged, "serial");
        note(&ZvtCameraModel::hasNucMaskChanged, "mask");
        QObject::connect(root->cameraCapabilitiesModel(), &CameraCapabilitiesModel::cameraCapabilitiesChanged,
                         root.get(), [this] { order << "capabilities"; });
    }

    CameraRig rig;
    std::unique_ptr<ZvtCameraModel> root;
    QStringList order;
};

} // namespace

class tst_ZvtCameraModel : public Test
{
    Q_OBJECT

private slots:
    void init();

    void identityIsReadOnEachGet();
    void failedIdentityIsEmpty_data();
    void failedIdentityIsEmpty();
    void textThatFillsItsBufferIsShownWhole();

    void constructionReadsTheMaskOfAConnectedCameraOnly();
    void taskReadsTheLiveCapabilities();
    void connectingPublishesInOrder();
    void disconnectEmitsOneSignalAndClearsNothing();
    void connectedThatIsLateReadsNothing();
    void otherNamesAreIgnored();
    void valueChangesArriveFromAnyThread();
    void delegateIsAddedOnceAndTakenOff();
    void eventsOfTheRangeAreTaken_data();
    void eventsOfTheRangeAreTaken();

    void maskCountsPresetsWithACorrection();
    void failedNameCountsAsNoCorrection();
    void modifyingTheMaskAlwaysSignals();
    void presetBitWrapsAtAWord();

    void freshInstallationShowsTheManufacturingTab();
    void manufacturingModeIsRemembered();
    void allowedToCloseIsAPlainFlag();

    void keysAreFolded_data();
    void keysAreFolded();
    void floatsHaveNoThousandsSeparator();

    void emulatorKnowsThatItIsOne();
    void emulatorPropertiesAreWrittenToTheDevice();
    void emulatorSetterSignalsEvenIfTheDeviceRefuses();
    void emulatorPropertiesOfARealCameraAreDead();

    void rootStandsWithoutAController();
    void rootMayDieWhileAValueChangeIsPosted();
    void propertiesAreFinal();
};

void tst_ZvtCameraModel::init()
{
    Test::init();
    QSettings().clear();
}

void tst_ZvtCameraModel::identityIsReadOnEachGet()
{
    Camera camera;
    camera.rig.gate().script("zvtGetCameraModel", "Corvin 7");
    camera.rig.gate().script("zvtGetCameraSN", "0042");
    QCOMPARE(camera.root->model(), QStringLiteral("Corvin 7"));
    QCOMPARE(camera.root->serial(), QStringLiteral("0042"));
    camera.rig.gate().script("zvtGetCameraSN", "0043");
    QCOMPARE(camera.root->serial(), QStringLiteral("0043"));
    for (const QString &text : {camera.root->cameraTypeName(), camera.root->cameraSubtypeName(),
                                camera.root->readoutName(), camera.root->detectorTypeName()})
        QVERIFY(!text.isEmpty());
}

void tst_ZvtCameraModel::failedIdentityIsEmpty_data()
{
    QTest::addColumn<QString>("failing");
    QTest::addColumn<QString>("property");
    const std::array<const char *, 3> rows[]{{"model", "zvtGetCameraModel", "model"},
                                             {"serial", "zvtGetCameraSN", "serial"},
                                             {"type", "zvtGetCameraType", "cameraTypeName"},
                                             {"subtype", "zvtGetCameraSubtype", "cameraSubtypeName"},
                                             {"subtype without type", "zvtGetCameraType", "cameraSubtypeName"},
                                             {"readout", "zvtGetReadout", "readoutName"},
                                             {"detector", "zvtGetDetectorType", "detectorTypeName"}};
    for (const auto &[row, failing, property] : rows)
        QTest::newRow(row) << failing << property;
}

void tst_ZvtCameraModel::failedIdentityIsEmpty()
{
    QFETCH(QString, failing);
    QFETCH(QString, property);
    Camera camera;
    camera.rig.gate().failAlways(failing.toStdString());
    QCOMPARE(camera.root->property(property.toUtf8()).toString(), QString());
}

void tst_ZvtCameraModel::textThatFillsItsBufferIsShownWhole()
{
    Camera camera;
    camera.rig.gate().fillBuffers(true);
    QCOMPARE(camera.root->model().toUtf8().size(), 128);
    QCOMPARE(camera.root->serial().toUtf8().size(), 64);
}

// The connection

void tst_ZvtCameraModel::constructionReadsTheMaskOfAConnectedCameraOnly()
{
    for (const bool connected : {true, false}) {
        CameraRig rig(QStringLiteral("everything"), connected);
        const size_t mark = rig.gate().mark();
        const ZvtCameraModel root(rig.controller(), nullptr);
        QCOMPARE(rig.callsSince(mark).filter("zvtGetNUCName").size(), connected ? 4 : 0);
        QCOMPARE(root.findChildren<StatusTabModel *>().size(), 1);
    }
}

// A task gets the live values of the root, which are built before any sub-model.
void tst_ZvtCameraModel::taskReadsTheLiveCapabilities()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    const QObject model(&root);
    const CameraAccess access = CameraAccess::of(&model);
    QCOMPARE(access.handle, rig.camera().handle());
    QCOMPARE(access.capabilities, root.capabilities());
    QVERIFY(access.capabilities->hasSsd());
}

void tst_ZvtCameraModel::connectingPublishesInOrder()
{
    Camera camera(QStringLiteral("everything"), false);
    QVERIFY(!camera.root->connected());
    QVERIFY(!camera.root->cameraCapabilitiesModel()->hasSsd());
    camera.rig.camera().connect();
    CameraRig::settle();
    QCOMPARE(camera.order, QStringList({"model", "serial", "capabilities", "mask", "connected"}));
    QVERIFY(camera.root->connected());
    QVERIFY(camera.root->cameraCapabilitiesModel()->hasSsd());
}

void tst_ZvtCameraModel::disconnectEmitsOneSignalAndClearsNothing()
{
    Camera camera;
    const uint8_t mask = camera.root->hasNucMask();
    QVERIFY(mask != 0);
    camera.rig.camera().disconnect();
    CameraRig::settle();
    QCOMPARE(camera.order, QStringList({"connected"}));
    QCOMPARE(camera.root->hasNucMask(), mask);
    QVERIFY(camera.root->cameraCapabilitiesModel()->hasSsd());
    QCOMPARE(camera.root->model(), QString());
}

void tst_ZvtCameraModel::connectedThatIsLateReadsNothing()
{
    Camera camera(QStringLiteral("everything"), false);
    camera.rig.camera().connect();
    camera.rig.camera().disconnect();
    CameraRig::settle();
    QCOMPARE(camera.order, QStringList({"connected", "connected"}));
    QVERIFY(!camera.root->cameraCapabilitiesModel()->hasSsd());
}

void tst_ZvtCameraModel::otherNamesAreIgnored()
{
    Camera camera;
    for (const char *name : {"connected", "Connected ", "", "Window"})
        camera.rig.controller()->FireValueChanged(name);
    CameraRig::settle();
    QCOMPARE(camera.order, QStringList());
}

void tst_ZvtCameraModel::valueChangesArriveFromAnyThread()
{
    Camera camera;
    std::thread([&] { camera.rig.controller()->FireValueChanged("Connected"); }).join();
    QCOMPARE(camera.order, QStringList());
    CameraRig::settle();
    QCOMPARE(camera.order, QStringList({"model", "serial", "capabilities", "mask", "connected"}));
}

void tst_ZvtCameraModel::delegateIsAddedOnceAndTakenOff()
{
    Camera camera;
    const auto controller = camera.rig.controller();
    QCOMPARE(controller->ValueChangedDelegates().size(), 1U);
    {
        const ZvtCameraModel second(controller, nullptr);
        QCOMPARE(controller->ValueChangedDelegates().size(), 2U);
    }
    QCOMPARE(controller->ValueChangedDelegates().size(), 1U);
    camera.root.reset();
    QCOMPARE(controller->ValueChangedDelegates().size(), 0U);
}

void tst_ZvtCameraModel::eventsOfTheRangeAreTaken_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("taken");
    QTest::newRow("below") << 999 << false;
    QTest::newRow("first") << 1000 << true;
    QTest::newRow("last") << 2000 << true;
    QTest::newRow("above") << 2001 << false;
}

void tst_ZvtCameraModel::eventsOfTheRangeAreTaken()
{
    QFETCH(int, type);
    QFETCH(bool, taken);
    Camera camera;
    // A foreign event in the range is accepted without a call; any other goes to QObject.
    QEvent foreign{QEvent::Type(type)};
    QCOMPARE(camera.root->event(&foreign), taken || QObject().event(&foreign));
    bool invoked = false;
    struct Event : IInvokeEvent {
        Event(int eventType, bool &flag) : IInvokeEvent(QEvent::Type(eventType)), m_flag(flag) { }
        void invoke() override { m_flag = true; }
        bool &m_flag;
    } own(type, invoked);
    camera.root->event(&own);
    QCOMPARE(invoked, taken);
}

// The mask

void tst_ZvtCameraModel::maskCountsPresetsWithACorrection()
{
    Camera camera;
    const size_t mark = camera.rig.gate().mark();
    camera.root->updateHasNucMask();
    QStringList presets;
    for (const auto &call : camera.rig.gate().callsSince(mark))
        if (call.name == "zvtGetNUCName")
            presets << QString::fromStdString(call.arguments).section(u',', 0, 0);
    QCOMPARE(presets, QStringList({"0", "1", "2", "3"}));
    QCOMPARE(camera.order, QStringList({"mask"}));
    camera.rig.gate().script("zvtGetNUCName", "Day");
    camera.root->updateHasNucMask();
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0b1111});
    camera.rig.gate().script("zvtGetNUCName", "");
    camera.root->updateHasNucMask();
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0});
}

void tst_ZvtCameraModel::failedNameCountsAsNoCorrection()
{
    Camera camera;
    camera.rig.gate().script("zvtGetNUCName", "Day");
    camera.rig.gate().failNext("zvtGetNUCName", 3);
    camera.root->updateHasNucMask();
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0b1011});
    QCOMPARE(camera.order, QStringList({"mask"}));
}

void tst_ZvtCameraModel::modifyingTheMaskAlwaysSignals()
{
    Camera camera;
    camera.root->modifyHasNucMask(0xff, 0b0001);
    camera.root->setPresetHasNuc(2, true);
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0b0101});
    camera.root->setPresetHasNuc(0, false);
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0b0100});
    camera.root->setPresetHasNuc(0, false);
    QCOMPARE(camera.order, QStringList({"mask", "mask", "mask", "mask"}));
}

void tst_ZvtCameraModel::presetBitWrapsAtAWord()
{
    Camera camera;
    camera.root->modifyHasNucMask(0xff, 0);
    camera.root->setPresetHasNuc(8, true); // The mask has no such bit: nothing changes, but it is signalled.
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0});
    QCOMPARE(camera.order.size(), 2);
    camera.root->setPresetHasNuc(33, true);
    QCOMPARE(camera.root->hasNucMask(), uint8_t{0b0010});
}

// Modes

void tst_ZvtCameraModel::freshInstallationShowsTheManufacturingTab()
{
    QVERIFY(!QSettings().contains(mfgKey));
    const Camera camera;
    QVERIFY(camera.root->manufacturingMode());
    QCOMPARE(QSettings().value(mfgKey).toInt(), 1);
}

void tst_ZvtCameraModel::manufacturingModeIsRemembered()
{
    {
        Camera camera;
        const QSignalSpy spy(camera.root.get(), &ZvtCameraModel::manufacturingModeChanged);
        camera.root->setManufacturingMode(true);
        QCOMPARE(spy.size(), 0);
        camera.root->setManufacturingMode(false);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(QSettings().value(mfgKey), QVariant(0));
    }
    Camera camera;
    QVERIFY(!camera.root->manufacturingMode());
    camera.root->setManufacturingMode(true);
    QCOMPARE(QSettings().value(mfgKey), QVariant(1));
    // The setting is also in the file, which the next start reads.
    CameraRig::settle();
    QFile file(QSettings().fileName());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains(mfgKey.toLatin1() + "=1"));
    QCOMPARE(int(ZvtCameraModel::SHOW_MFG_TAB), 1);
    QCOMPARE(int(ZvtCameraModel::HIDE_MFG_TAB), 0);
}

void tst_ZvtCameraModel::allowedToCloseIsAPlainFlag()
{
    Camera camera;
    const QSignalSpy spy(camera.root.get(), &ZvtCameraModel::allowedToCloseControllerChanged);
    QVERIFY(camera.root->allowedToCloseController());
    camera.root->setAllowedToCloseController(true);
    camera.root->setAllowedToCloseController(false);
    QVERIFY(!camera.root->allowedToCloseController());
    QCOMPARE(spy.size(), 1);
}

// Helpers of the page

void tst_ZvtCameraModel::keysAreFolded_data()
{
    QTest::addColumn<uint>("modifiers");
    QTest::addColumn<uint>("key");
    QTest::addColumn<uint>("folded");
    QTest::newRow("plain") << 0U << uint(Qt::Key_F5) << uint(Qt::Key_F5);
    QTest::newRow("control") << uint(Qt::ControlModifier) << uint(Qt::Key_R) << 0x04000052U;
    QTest::newRow("all three") << uint(Qt::ControlModifier | Qt::AltModifier | Qt::ShiftModifier) << uint(Qt::Key_R)
                               << 0x0e000052U;
    QTest::newRow("bare shift") << uint(Qt::ShiftModifier) << uint(Qt::Key_Shift) << 0x02000000U;
    QTest::newRow("bare control") << uint(Qt::ControlModifier) << uint(Qt::Key_Control) << 0x04000000U;
    QTest::newRow("bare alt") << uint(Qt::AltModifier) << uint(Qt::Key_Alt) << 0x08000000U;
    QTest::newRow("meta stays a key") << uint(Qt::ControlModifier) << 0x01000022U << 0x05000022U;
    QTest::newRow("other modifiers are dropped")
        << uint(Qt::MetaModifier | Qt::KeypadModifier) << uint(Qt::Key_5) << 0x35U;
}

void tst_ZvtCameraModel::keysAreFolded()
{
    QFETCH(uint, modifiers);
    QFETCH(uint, key);
    const Camera camera;
    QTEST(camera.root->integrateModifiersIntoKey(modifiers, key), "folded");
}

void tst_ZvtCameraModel::floatsHaveNoThousandsSeparator()
{
    const Camera camera;
    const QString point(QLocale::system().decimalPoint());
    QCOMPARE(camera.root->safeConvertFloatToLocaleString(1234567.891, 2), "1234567" + point + "89");
    QCOMPARE(camera.root->safeConvertFloatToLocaleString(-0.5, 0), QLocale::system().toString(-0.5, 'f', 0));
}

// The emulator

void tst_ZvtCameraModel::emulatorKnowsThatItIsOne()
{
    const Camera camera;
    QVERIFY(camera.root->isEmulator());
}

void tst_ZvtCameraModel::emulatorPropertiesAreWrittenToTheDevice()
{
    Camera camera;
    const QMap<QString, QVariant> values{
        {"recordStart", !camera.root->recordStart()},    {"ssdTransfer", !camera.root->ssdTransfer()},
        {"testPattern", camera.root->testPattern() + 1}, {"bb1Temp", camera.root->bb1Temp() + 1.5F},
        {"bb2Temp", camera.root->bb2Temp() + 2.5F},      {"chamberProfile", "0:23,9:60"}};
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        const QMetaProperty property
            = camera.root->metaObject()->property(camera.root->metaObject()->indexOfProperty(it.key().toUtf8()));
        const QSignalSpy spy(camera.root.get(), property.notifySignal());
        QVERIFY(property.write(camera.root.get(), it.value()));
        QCOMPARE(property.read(camera.root.get()), it.value());
        property.write(camera.root.get(), it.value());
        QVERIFY2(spy.size() == 1, property.name());
    }
    hlx::CVariant pattern;
    QVERIFY(camera.root->device()->properties().get("/Pattern", pattern));
    QCOMPARE(pattern.ToInt32(), values.value("testPattern").toInt());
    QVERIFY(camera.root->device()->properties().get("/ChamberProfile", pattern));
    QCOMPARE(QString::fromUtf8(pattern.ToString().c_str()), QStringLiteral("0:23,9:60"));
}

void tst_ZvtCameraModel::emulatorSetterSignalsEvenIfTheDeviceRefuses()
{
    Camera camera;
    QVERIFY(camera.root->isEmulator());
    const int pattern = camera.root->testPattern();
    const QSignalSpy spy(camera.root.get(), &ZvtCameraModel::testPatternChanged);
    camera.rig.gate().failNext("controller.properties.set");
    camera.root->setTestPattern(pattern + 1);
    QCOMPARE(camera.root->testPattern(), pattern);
    QCOMPARE(spy.size(), 1);
}

void tst_ZvtCameraModel::emulatorPropertiesOfARealCameraAreDead()
{
    // Without a device isEmulator() is false, as for a camera on a real interface.
    ZvtCameraModel root({}, nullptr);
    const QSignalSpy spy(&root, &ZvtCameraModel::testPatternChanged);
    root.setTestPattern(5);
    root.setChamberProfile(QStringLiteral("x"));
    QCOMPARE(spy.size(), 0);
    QVERIFY(!root.isEmulator());
    QCOMPARE(root.testPattern(), 0);
    QCOMPARE(root.bb1Temp(), 0.0F);
    QCOMPARE(root.recordStart(), false);
    QCOMPARE(root.chamberProfile(), QString());
}

// Construction and destruction

void tst_ZvtCameraModel::rootStandsWithoutAController()
{
    ZvtCameraModel root({}, nullptr);
    QVERIFY(!root.connected());
    QCOMPARE(root.model(), QString());
    root.refreshAllVisible();
    root.updateHasNucMask();
    QCOMPARE(root.hasNucMask(), uint8_t{0});
    QVERIFY(!root.cameraCapabilitiesModel()->hasSsd());
    CameraRig::settle();
    QCOMPARE(root.statusTabModel()->frameSize(), QString());
    QVERIFY(root.setupGeneralModel()->hasRefreshed());
}

void tst_ZvtCameraModel::rootMayDieWhileAValueChangeIsPosted()
{
    Camera camera;
    camera.rig.controller()->FireValueChanged("Connected");
    camera.root.reset();
    CameraRig::settle();
    // Also while another thread fires changes continuously.
    std::thread firing([&] {
        for (int change = 0; change < 500; ++change)
            camera.rig.controller()->FireValueChanged("Connected");
    });
    for (int life = 0; life < 50; ++life) {
        const ZvtCameraModel root(camera.rig.controller(), nullptr);
        QCoreApplication::processEvents();
    }
    firing.join();
    CameraRig::settle();
}

void tst_ZvtCameraModel::propertiesAreFinal()
{
    const QMetaObject &meta = ZvtCameraModel::staticMetaObject;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        QVERIFY2(meta.property(i).isFinal(), meta.property(i).name());
}

ZVT_TEST(tst_ZvtCameraModel)
#include "tst_ZvtCameraModel.moc"
