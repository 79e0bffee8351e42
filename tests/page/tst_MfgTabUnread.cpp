#include "tests/page/MfgPage.h"
#include "tests/support/Test.h"

namespace
{

constexpr auto identitySection = "Camera Settings";
constexpr auto nucSection = "NUC Settings";
constexpr auto coolerSection = "TE Cooler Settings";
constexpr auto miscSection = "Miscellaneous Settings";
constexpr auto readoutSection = "ROIC Config";

const QVariantList zeros(5, 0);

/// A value of the page, the call that reads it, what this call returns so that the value is the one that the model
/// starts with, and how this value is shown.
struct Value {
    const char *section;
    const char *control;
    const char *call;
    QVariant scripted;
    const char *shown;
};

const QList<Value> values{
    {nucSection, "Type", "zvtGetNUCType", 0, "One Point"},
    {nucSection, "Source", "zvtGetNUCSource", 0, "External"},
    {nucSection, "A/D Min", "zvtGetNUCSetup", zeros, "0"},
    {nucSection, "A/D Max", "zvtGetNUCSetup", zeros, "0"},
    {nucSection, "Gain Min", "zvtGetNUCSetup", zeros, "0.00"},
    {nucSection, "Gain Max", "zvtGetNUCSetup", zeros, "0.00"},
    {nucSection, "Number of Frames", "zvtGetNUCNumFrames", 0, "0"},
    {nucSection, "Twinkler Number of Frames", "zvtGetTwinklerSetup", zeros.mid(0, 3), "0"},
    {nucSection, "Twinkler Delta", "zvtGetTwinklerSetup", zeros.mid(0, 3), "0"},
    {nucSection, "Flag Max Temperature", "zvtGetNUCFlagConfig", zeros.mid(0, 4), "0.0"},
    {nucSection, "Flag Timeout", "zvtGetNUCFlagConfig", zeros.mid(0, 4), "0"},
    {nucSection, "Stable Delta", "zvtGetNUCFlagConfig", zeros.mid(0, 4), "0.00"},
    {nucSection, "Stable Count", "zvtGetNUCFlagConfig", zeros.mid(0, 4), "0"},
    {coolerSection, "Actual Temperature", "zvtGetFPATemperature", 0, "0.00"},
    {coolerSection, "Internal Temperature", "zvtGetSCTemperatures", zeros.mid(0, 3), "0.00"},
    {coolerSection, "kP", "zvtMfgGetCoolerSetup", zeros.mid(0, 4), "0.00"},
    {coolerSection, "kI", "zvtMfgGetCoolerSetup", zeros.mid(0, 4), "0.00"},
    {coolerSection, "kD", "zvtMfgGetCoolerSetup", zeros.mid(0, 4), "0.00"},
    {coolerSection, "kOff", "zvtMfgGetCoolerSetup", zeros.mid(0, 4), "0.00"},
    {coolerSection, "Setpoint", "zvtMfgGetCoolerSetpoint", 0, "0.00"},
    {miscSection, "DDE Threshold", "zvtGetVideoAGCDDEThreshold", 0, "0"},
    {miscSection, "FPA Clock Phase Shift", "zvtMfgGetClockPhaseShift", 0, "0"},
};

/// A text or switch with a value of its own, the call that reads it, and the text or "on".
const QList<Value> ownValues{
    {identitySection, "Serial", "zvtGetCameraSN", "Z-1", "Z-1"},
    {nucSection, "Detect Bad Pixels", "zvtGetNUCSetup", QVariantList{0, 1, 0, 1, true}, "on"},
    {nucSection, "Detect Twinkler Pixels", "zvtGetTwinklerSetup", QVariantList{true, 1, 0}, "on"},
    {nucSection, "Use Factory Bad Pixels", "zvtGetNUCUseFactoryBadPixels", true, "on"},
    {nucSection, "NUC Video Output", "zvtGetVideoOutputNUCEnabled", true, "on"},
    {nucSection, "Show Bad Pixels", "zvtGetShowBadPixels", true, "on"},
    {nucSection, "NUC Digital Data", "zvtGetDigitalOutputNUCEnabled", true, "on"},
    {coolerSection, "Cooler Type", "zvtMfgGetCoolerType", 1, "Thermoelectric"},
    {coolerSection, "Cooler Enabled", "zvtMfgGetCoolerPowerEnabled", true, "on"},
    {readoutSection, "Override Defaults", "zvtGetMfgOverrideRoicConfig", true, "on"},
    {readoutSection, "Has Extra LSync", "zvtGetMfgHasExtraLSync", true, "on"},
};

void addValues(const QList<Value> &list)
{
    QTest::addColumn<int>("index");
    for (qsizetype index = 0; index < list.size(); ++index)
        QTest::newRow(list.at(index).control) << static_cast<int>(index);
}

/// The page of a camera whose calls return what the values need.
struct UnreadPage : MfgPage {
    explicit UnreadPage(
        const QList<Value> &list, const Prepare &prepare = [](emulator::Camera &) {})
        : MfgPage(QStringLiteral("te-cooler"), [&](emulator::Camera &camera) {
              for (const Value &value : list)
                  camera.gate().script(value.call, value.scripted);
              prepare(camera);
          })
    {
    }

    /// The text of a field or label, the selected row of a combo box, or "on" for a switch that is on.
    QString shownText(const QString &name) const
    {
        const QQuickItem &control = item(name);
        if (control.inherits("QQuickSwitch"))
            return control.property("checked").toBool() ? QStringLiteral("on") : QString();
        return control.property(control.inherits("QQuickComboBox") ? "displayText" : "text").toString();
    }
};

} // namespace

/// What the Mfg page shows of values that have not been read.
class tst_MfgTabUnread : public Test
{
    Q_OBJECT

private slots:
    void aNumberThatIsNotReadIsEmpty_data() { addValues(values); }
    void aNumberThatIsNotReadIsEmpty() { checkUnread(values); }
    void aSwitchThatIsNotReadIsOff_data() { addValues(ownValues); }
    void aSwitchThatIsNotReadIsOff() { checkUnread(ownValues); }
    void anEditReadsNoOtherNumber_data();
    void anEditReadsNoOtherNumber();
    void aReadWithoutACameraShowsNothing();
    void nothingCanBeAppliedBeforeTheFirstRead_data();
    void nothingCanBeAppliedBeforeTheFirstRead();

private:
    static void checkUnread(const QList<Value> &list);
};

void tst_MfgTabUnread::checkUnread(const QList<Value> &list)
{
    QFETCH(const int, index);
    const Value &unread = list.at(index);
    UnreadPage page(list, [&](emulator::Camera &camera) { camera.gate().failAlways(unread.call); });
    if (unread.section != QLatin1String(identitySection))
        page.toggle(unread.section);
    QCOMPARE(page.shownText(unread.control), "");
    for (const Value &value : list)
        if (value.section == unread.section)
            QCOMPARE(page.shownText(value.control), value.call == QLatin1String(unread.call) ? "" : value.shown);
    page.gate().failNoLonger(unread.call);
    page.refresh(unread.section);
    QCOMPARE(page.shownText(unread.control), unread.shown);
    page.gate().failAlways(unread.call);
    page.refresh(unread.section);
    QCOMPARE(page.shownText(unread.control), unread.shown);
}

void tst_MfgTabUnread::anEditReadsNoOtherNumber_data()
{
    QTest::addColumn<std::string>("call");
    QTest::addColumn<QString>("text");
    QTest::newRow("A/D Max") << std::string("zvtGetNUCSetup") << "100";
    QTest::newRow("Gain Min") << std::string("zvtGetNUCSetup") << "0.50";
    QTest::newRow("Twinkler Delta") << std::string("zvtGetTwinklerSetup") << "200";
    QTest::newRow("Flag Timeout") << std::string("zvtGetNUCFlagConfig") << "20000";
}

// The numbers of a group have one signal, which an edit of any of them emits.
void tst_MfgTabUnread::anEditReadsNoOtherNumber()
{
    QFETCH(const std::string, call);
    QFETCH(const QString, text);
    const QString edited = QString::fromLatin1(QTest::currentDataTag());
    UnreadPage page(values, [&](emulator::Camera &camera) { camera.gate().failAlways(call); });
    page.toggle(nucSection);
    page.enterNumber(edited, text);
    int others = 0;
    for (const Value &value : values) {
        if (value.call != call)
            continue;
        const bool isEdited = edited == QLatin1String(value.control);
        QCOMPARE(page.shownText(value.control), isEdited ? text : "");
        others += !isEdited;
    }
    QVERIFY(others > 0);
    page.gate().failNoLonger(call);
    page.refresh(nucSection);
    for (const Value &value : values)
        if (value.call == call)
            QCOMPARE(page.shownText(value.control), value.shown);
}

void tst_MfgTabUnread::aReadWithoutACameraShowsNothing()
{
    UnreadPage page(values);
    page.rig().camera().disconnect();
    page.settle();
    for (const char *section : {readoutSection, miscSection, coolerSection, nucSection})
        page.toggle(section);
    for (const Value &value : values)
        QVERIFY2(page.shownText(value.control).isEmpty(), value.control);
    for (const char *field : {"Line Dead Width", "Pre Int Width", "Post Int Width", "Pre Dead Rows", "Post Dead Rows"})
        QVERIFY2(page.text(field).isEmpty(), field);
    page.rig().camera().connect();
    page.settle();
    for (const Value &value : values)
        QCOMPARE(page.shownText(value.control), value.shown);
    QCOMPARE(page.text("Line Dead Width"), "20");
}

void tst_MfgTabUnread::nothingCanBeAppliedBeforeTheFirstRead_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<std::string>("call");
    QTest::newRow("Apply NUC Settings") << nucSection << std::string("zvtGetNUCType");
    QTest::newRow("Apply TE Cooler Settings") << coolerSection << std::string("zvtMfgGetCoolerType");
    QTest::newRow("Apply Miscellaneous Settings") << miscSection << std::string("zvtGetVideoAGCDDEThreshold");
}

void tst_MfgTabUnread::nothingCanBeAppliedBeforeTheFirstRead()
{
    QFETCH(const QString, section);
    QFETCH(const std::string, call);
    const QString apply = QString::fromLatin1(QTest::currentDataTag());
    UnreadPage page({});
    page.gate().hold(call);
    const size_t mark = page.gate().mark();
    page.click(section);
    QVERIFY(page.gate().waitHeld(call));
    page.awaitFrame();
    QVERIFY(!page.enabled(apply));
    page.click(apply);
    page.item(apply).forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Space);
    QCOMPARE(page.commands(mark), QStringList());
    page.gate().release("*");
    page.settle();
    QVERIFY(page.enabled(apply));
}

ZVT_TEST(tst_MfgTabUnread)
#include "tst_MfgTabUnread.moc"
