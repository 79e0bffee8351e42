#include "tests/page/AdvancedPage.h"
#include "tests/support/Test.h"

namespace
{

/// A value of the page, the camera's setting behind it, the call that reads it, and what is shown when the camera has
/// the value that the model starts with.
struct Value {
    const char *control;
    int section;
    const char *key;
    QVariant value;
    const char *call;
    const char *text;
};

const QVariantList zeros{0, 0, 0, 0};

const QList<Value> values{
    {"Preset 0 Digital Gain", 0, "digital.gains", zeros, "zvtGetDigitalGain", "0.000"},
    {"Preset 3 Digital Offset", 0, "digital.offsets", zeros, "zvtGetDigitalOffset", "0.0"},
    {"CameraLink Mode", 0, "interfaces.cameraLinkType", 0, "zvtGetCameraLinkType", "Base"},
    {"CoaXPress Links", 0, "interfaces.coaXPressLinks", 1, "zvtGetCoaXPressLinkCount", "Dual"},
    {"Global Analog Offset (v)", 1, "analog.globalOffset", 0, "zvtGetGlobalOffsetVoltage", "0.000"},
    {"Detector Bias (mv)", 1, "analog.bias", 0, "zvtGetFPABias", "0.00"},
    {"Skimming (v)", 1, "analog.skimmingVoltage", 0, "zvtGetSkimmingVoltage", "0.000"},
    {"Preset 1 Count Threshold", 2, "saturation.countThresholds", zeros, "zvtGetSaturationCountThreshold", "0"},
    {"Preset 2 Pixel Threshold", 2, "saturation.pixelThresholds", zeros, "zvtGetSaturationPixelThreshold", "0"},
    {"Coupling", 3, "lockin.coupling", 0, "zvtGetLockinCoupling", "AC - Alternating Current"},
    {"Estimated Input Frequency (Hz)", 3, "lockin.estimatedFrequency", 0, "zvtGetLockinEstInputFreq", "0.000"},
    {"Digital Filter", 3, "lockin.filter", 0, "zvtGetLockinAlphaFilter", "Off"},
    {"Integrate Active Polarity", 4, "video.integratePolarity", 0, "zvtGetIntegrateOutPolarity", "Active Low"},
    {"Timestamp Latch", 4, "video.irigLatch", 0, "zvtGetIRIGLatchSource", "Frame Start"},
    {"GigE Header Mode", 4, "interfaces.gigEHeaderMode", 0, "zvtGetGigEHeaderMode", "Header And Image"},
    {"CameraLink Header Mode", 4, "interfaces.cameraLinkHeaderMode", 0, "zvtGetCameraLinkHeaderMode",
     "Header And Image"},
    {"CoaXPress Header Mode", 4, "interfaces.coaXPressHeaderMode", 0, "zvtGetCoaXPressHeaderMode", "Header And Image"},
};

/// The page of a camera whose values are those that the models start with.
struct ZeroPage : AdvancedPage {
    explicit ZeroPage(const Prepare &prepare = [](emulator::Camera &) {})
        : AdvancedPage([&prepare](emulator::Camera &camera) {
              for (const Value &value : values)
                  QVERIFY2(camera.otherClient().set(QLatin1String(value.key), value.value), value.key);
              camera.gate().failAlways("zvtGetLockinSampleFreq");
              camera.gate().script("zvtGetSaturatedPixels", 0);
              prepare(camera);
          })
    {
    }

    /// The text of a field or label, or the selected row of a combo box.
    QString shownText(const QString &name) const
    {
        const QVariant row = item(name).property("displayText");
        return (item(name).inherits("QQuickComboBox") ? row : item(name).property("text")).toString();
    }
};

constexpr auto saturated = "Preset 3 Saturated Pixels";

} // namespace

/// What the Advanced page shows of values that have not been read.
class tst_AdvancedTabUnread : public Test
{
    Q_OBJECT

private slots:
    void aValueThatIsNotReadIsEmpty_data();
    void aValueThatIsNotReadIsEmpty();
    void aRefusedWriteIsNoRead_data();
    void aRefusedWriteIsNoRead();
    void aReadWithoutACameraShowsNothing();
    void absentPresetsAreEmpty();
    void presetsOfAnotherCameraAreShown();
};

void tst_AdvancedTabUnread::aValueThatIsNotReadIsEmpty_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("text");
    for (const Value &value : values)
        QTest::newRow(value.control) << value.section << value.call << value.text;
    QTest::newRow(saturated) << 2 << "zvtGetSaturatedPixels"
                             << "0";
}

void tst_AdvancedTabUnread::aValueThatIsNotReadIsEmpty()
{
    QFETCH(const int, section);
    QFETCH(const QString, call);
    QFETCH(const QString, text);
    const QString control = QString::fromLatin1(QTest::currentDataTag());
    ZeroPage page([&](emulator::Camera &camera) { camera.gate().failAlways(call.toStdString()); });
    const QString name = advancedSections().at(section);
    if (section > 0)
        page.openOnly(name);
    QCOMPARE(page.shownText(control), "");
    for (const Value &value : values)
        if (value.section == section && value.call != call)
            QCOMPARE(page.shownText(value.control), value.text);
    page.gate().failNoLonger(call.toStdString());
    page.refresh(name);
    QCOMPARE(page.shownText(control), text);
    page.gate().failAlways(call.toStdString());
    page.refresh(name);
    QCOMPARE(page.shownText(control), text);
}

void tst_AdvancedTabUnread::aRefusedWriteIsNoRead_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<std::string>("getter");
    QTest::addColumn<std::string>("setter");
    QTest::addColumn<QString>("choice");
    QTest::newRow("Integrate Active Polarity")
        << 4 << std::string("zvtGetIntegrateOutPolarity") << std::string("zvtSetIntegrateOutPolarity") << "Active High";
    QTest::newRow("Timestamp Latch") << 4 << std::string("zvtGetIRIGLatchSource")
                                     << std::string("zvtSetIRIGLatchSource") << "Integration End";
    QTest::newRow("Digital Filter") << 3 << std::string("zvtGetLockinAlphaFilter")
                                    << std::string("zvtSetLockinAlphaFilter") << "1/8";
    QTest::newRow("Estimated Input Frequency (Hz)")
        << 3 << std::string("zvtGetLockinEstInputFreq") << std::string("zvtSetLockinEstInputFreq") << "";
}

// The setters of these values signal also what the camera has refused.
void tst_AdvancedTabUnread::aRefusedWriteIsNoRead()
{
    QFETCH(const int, section);
    QFETCH(const std::string, getter);
    QFETCH(const std::string, setter);
    QFETCH(const QString, choice);
    const QString control = QString::fromLatin1(QTest::currentDataTag());
    ZeroPage page([&](emulator::Camera &camera) {
        for (const std::string &name : {getter, setter})
            camera.gate().failAlways(name);
    });
    page.openOnly(advancedSections().at(section));
    QCOMPARE(page.shownText(control), "");
    const QStringList commands = page.commandsOf([&] {
        if (choice.isEmpty())
            page.enter(page.item(control), "5", Qt::Key_Return);
        else
            page.choose(control, choice);
    });
    QVERIFY(!commands.filter(QString::fromStdString(setter)).isEmpty());
    QCOMPARE(page.shownText(control), "");
}

void tst_AdvancedTabUnread::aReadWithoutACameraShowsNothing()
{
    ZeroPage page;
    page.rig().camera().disconnect();
    page.settle();
    for (const QString &section : advancedSections().mid(1))
        page.toggle(section);
    page.rig().camera().connect();
    page.settle();
    for (const Value &value : values)
        if (value.section > 0)
            QVERIFY2(page.shownText(value.control).isEmpty(), value.control);
    for (const char *label : {saturated, "Sample Rate (Hz)"})
        QVERIFY2(page.shownText(label).isEmpty(), label);
    for (const QString &section : advancedSections().mid(1))
        page.refresh(section);
    for (const Value &value : values)
        QCOMPARE(page.shownText(value.control), value.text);
    QCOMPARE(page.shownText(saturated), "0");
    QCOMPARE(page.shownText("Sample Rate (Hz)"), "Not Set");
}

void tst_AdvancedTabUnread::absentPresetsAreEmpty()
{
    AdvancedPage page([](emulator::Camera &) {}, "low-cost");
    page.toggle("Saturation Settings");
    for (const char *column :
         {"Digital Gain", "Digital Offset", "Count Threshold", "Pixel Threshold", "Saturated Pixels"})
        for (int preset = 0; preset < 4; ++preset) {
            const QString control = QStringLiteral("Preset %1 %2").arg(preset).arg(QLatin1String(column));
            QVERIFY(page.enabled(control));
            QCOMPARE(page.text(control).isEmpty(), preset > 0);
        }
}

// The page does not read how many presets there are.
void tst_AdvancedTabUnread::presetsOfAnotherCameraAreShown()
{
    AdvancedPage page([](emulator::Camera &camera) { camera.gate().script("zvtGetNumPresets", 1); });
    QCOMPARE(page.text("Preset 3 Digital Gain"), "1.000");
    QVERIFY(page.enabled("Preset 3 Digital Gain"));
}

ZVT_TEST(tst_AdvancedTabUnread)
#include "tst_AdvancedTabUnread.moc"
