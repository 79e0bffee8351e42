#include "tests/platform/OverlayRig.h"
#include "tests/platform/callTimes.h"
#include "tests/support/Test.h"

#include <QJsonObject>
#include <QTemporaryDir>

#include <functional>
#include <vector>

/// The settings of the video overlay and its texts.
class tst_videoOverlay : public Test
{
    Q_OBJECT

private slots:
    void everyFieldAddsItsText();
    void textsFollowTheOrderOfTheFields();
    void everySwitchIsItsOwn();
    void textsFollowTheCamera();
    void temperaturesHaveOneDecimal();
    void missingEquipmentHasNoText_data();
    void missingEquipmentHasNoText();
    void sensorsThatFailHaveNoNumber();
    void missingSensorsOfAFailingBoardHaveNoText();
    void anOverlayThatIsOffShowsNothing();
    void newCamerasHaveTheDefaults();
    void defaultsReplaceEverySetting();
    void coloursAreStored();
    void textColoursMayBeFixed();
    void aUserTextIsBounded();
    void aUserTextIsShownAsLatin1();
    void everyBufferHoldsABoundedUserText();
    void aCameraMayHaveNoUserText();
    void theColoursAreListed();
    void snapshotsHaveEverySetting();
    void otherClientsChangeEverySetting();
    void everyFunctionAnswersAtOnce();

private:
    using Get = int (*)(uint64_t, bool *);
    using Set = int (*)(uint64_t, bool);
    using GetByte = int (*)(uint64_t, uint8_t *);
    struct Field {
        Get get;
        Set set;
        const char *key;
        QString text;
    };
    static constexpr int refused = emulator::Refused;

    /// The fields in the order of their texts, with those of a new camera of the profile everything.
    static std::vector<Field> fields(const LensRig &rig);
    static QString celsius(float value) { return QString::number(value, 'f', 1) + " C"; }
    static bool flag(const LensRig &rig, Get get)
    {
        bool value = false;
        if (get(rig.handle(), &value) != 0)
            qFatal("the switch cannot be read");
        return value;
    }
    static int byte(const LensRig &rig, GetByte get)
    {
        uint8_t value = 77;
        return get(rig.handle(), &value) == 0 ? value : -1;
    }
    static void setAll(const LensRig &rig, bool on)
    {
        for (const Field &field : fields(rig))
            if (field.set(rig.handle(), on) != 0)
                qFatal("the switch cannot be set");
    }
    static QString userText(const LensRig &rig)
    {
        char text[65] = "";
        return zvtGetVideoOverlayUserDefinedFieldText(rig.handle(), text, sizeof text) == 0 ? QString::fromUtf8(text)
                                                                                            : "failed";
    }
};

#define FIELD(suffix, key, text)                                                                                       \
    {                                                                                                                  \
        zvtGetVideoOverlayShow##suffix, zvtSetVideoOverlayShow##suffix, key, text                                      \
    }

std::vector<tst_videoOverlay::Field> tst_videoOverlay::fields(const LensRig &rig)
{
    float frontPanel = 0, airGap = 0, internal = 0, chassis = 0, lens = 0, flag = 0;
    zvtGetSCTemperatures(rig.handle(), &frontPanel, &airGap, &internal);
    zvtGetRSTemperatures(rig.handle(), &chassis);
    zvtGetLensTemperature(rig.handle(), &lens);
    zvtGetFlagTemperature(rig.handle(), &flag);
    return {
        FIELD(Logo, "showLogo", "ZVT"),
        FIELD(Focus, "showFocus", "FOC 6000"),
        FIELD(Date, "showDate", "2024-02-29"),
        FIELD(CameraInfo, "showCameraInfo", "Campion 640 C ZE-100001"),
        FIELD(Time, "showTime", "12:00:00"),
        FIELD(IRIG, "showIrig", "060:12:00:00.000000"),
        FIELD(HourMeter, "showHourMeter", "1225 H"),
        FIELD(FrontPanelTemp, "showFrontPanelTemp", "FP " + celsius(frontPanel)),
        FIELD(Flag, "showFlag", "FLAG OUT " + celsius(flag)),
        FIELD(AirGapTemp, "showAirGapTemp", "AG " + celsius(airGap)),
        FIELD(Palette, "showPalette", "Grayscale"),
        FIELD(InternalTemp, "showInternalTemp", "INT " + celsius(internal)),
        FIELD(FOV, "showFov", "25 MM"),
        FIELD(StateName, "showStateName", "Factory Defaults"),
        FIELD(Zoom, "showZoom", "ZOOM 1X"),
        FIELD(Preset, "showPreset", "FREE RUN/PS0: 2.000 MS"),
        FIELD(FrameRate, "showFrameRate", "100.00 HZ"),
        FIELD(LensTemp, "showLensTemp", "LENS " + celsius(lens)),
        FIELD(ChassisTemp, "showChassisTemp", "CH " + celsius(chassis)),
    };
}

#undef FIELD

void tst_videoOverlay::everyFieldAddsItsText()
{
    OverlayRig rig;
    setAll(rig, false);
    QCOMPARE(rig.lines(), QStringList());
    for (const Field &field : fields(rig)) {
        QCOMPARE(field.set(rig.handle(), true), 0);
        QCOMPARE(rig.lines(), QStringList(field.text));
        QCOMPARE(field.set(rig.handle(), false), 0);
        QCOMPARE(rig.lines(), QStringList());
    }
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "Range 3"), 0);
    QCOMPARE(rig.lines(), QStringList());
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), true), 0);
    QCOMPARE(rig.lines(), QStringList("Range 3"));
    // An empty text has no row.
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), ""), 0);
    QCOMPARE(rig.lines(), QStringList());
}

void tst_videoOverlay::textsFollowTheOrderOfTheFields()
{
    OverlayRig rig;
    setAll(rig, true);
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "Range 3"), 0);
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), true), 0);
    QStringList expected;
    for (const Field &field : fields(rig))
        expected << field.text;
    QCOMPARE(rig.lines(), expected + QStringList("Range 3"));
}

void tst_videoOverlay::everySwitchIsItsOwn()
{
    const OverlayRig rig;
    setAll(rig, false);
    std::vector<std::pair<Get, Set>> switches;
    for (const Field &field : fields(rig))
        switches.emplace_back(field.get, field.set);
    switches.insert(switches.end(),
                    {{zvtGetVideoOverlayEnabled, zvtSetVideoOverlayEnabled},
                     {zvtGetVideoOverlayShowMessage, zvtSetVideoOverlayShowMessage},
                     {zvtGetVideoOverlayShowAGCROI, zvtSetVideoOverlayShowAGCROI},
                     {zvtGetVideoOverlayShowFocusROI, zvtSetVideoOverlayShowFocusROI},
                     {zvtGetVideoOverlayShowUserDefinedField, zvtSetVideoOverlayShowUserDefinedField}});
    for (const auto &[get, set] : switches)
        QCOMPARE(set(rig.handle(), false), 0);
    for (const auto &[get, set] : switches) {
        QCOMPARE(set(rig.handle(), true), 0);
        for (const auto &[otherGet, otherSet] : switches)
            QCOMPARE(flag(rig, otherGet), otherGet == get);
        QCOMPARE(set(rig.handle(), false), 0);
    }
}

void tst_videoOverlay::textsFollowTheCamera()
{
    OverlayRig rig;
    rig.coolDetector();
    setAll(rig, false);
    const auto shows = [&rig](Set set, const char *setting, const QVariant &value, const QString &text) {
        set(rig.handle(), true);
        if (!rig.set(setting, value))
            return QString("%1 cannot be set").arg(setting);
        rig.finishMoves();
        const QStringList lines = rig.lines();
        set(rig.handle(), false);
        return lines == QStringList(text) ? QString() : lines.join('|');
    };
    QCOMPARE(shows(zvtSetVideoOverlayShowFocus, "focus.position", 3000, "FOC 3000"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowFOV, "zoom.position", 9500, "150 MM"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowPalette, "palette.name", "Iron", "Iron"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowZoom, "video.zoomFactor", 4, "ZOOM 1.3X"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowZoom, "video.zoomFactor", 5, "ZOOM FIT"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowCameraInfo, "identity.serial", "7", "Campion 640 C 7"), QString());
    // The preset is that of the video: the active one, or with several presets that of its own setting.
    QCOMPARE(shows(zvtSetVideoOverlayShowPreset, "sensor.activePreset", 2, "FREE RUN/PS2: 0.500 MS"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowPreset, "trigger.mode", 1, "TRIGGERED/PS2: 0.500 MS"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowPreset, "trigger.mode", 2, "SEQUENCE/PS2: 0.500 MS"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowFrameRate, "trigger.mode", 0, "100.00 HZ"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowFrameRate, "sensor.frameRate", 50, "50.00 HZ"), QString());
    QVERIFY(rig.set("sensor.sequencingMode", 2));
    QCOMPARE(shows(zvtSetVideoOverlayShowPreset, "sensor.videoPreset", 1, "FREE RUN/PS1: 1.000 MS"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowPreset, "trigger.mode", 3, "ADVANCE/PS1: 1.000 MS"), QString());
    QVERIFY(rig.set("flag.state", 1));
    QCOMPARE(zvtSetVideoOverlayShowFlag(rig.handle(), true), 0);
    QVERIFY(rig.lines().join("").startsWith("FLAG IN "));

    // A turret in place of the zoom.
    rig.open("discrete-fov");
    setAll(rig, false);
    QCOMPARE(shows(zvtSetVideoOverlayShowFOV, "fieldOfView.selected", 1, "WFOV"), QString());
    QCOMPARE(shows(zvtSetVideoOverlayShowFOV, "fieldOfView.selected", 0, "NFOV"), QString());
}

void tst_videoOverlay::temperaturesHaveOneDecimal()
{
    OverlayRig rig;
    const QTemporaryDir folder;
    rig.open(writeProfile(folder.path(), "everything", R"({"temperatures": {"noise": 0}})").toLatin1());
    setAll(rig, false);
    for (const Set set :
         {zvtSetVideoOverlayShowFrontPanelTemp, zvtSetVideoOverlayShowAirGapTemp, zvtSetVideoOverlayShowInternalTemp,
          zvtSetVideoOverlayShowLensTemp, zvtSetVideoOverlayShowChassisTemp})
        QCOMPARE(set(rig.handle(), true), 0);
    constexpr int settledMilliseconds = 24 * 3600 * 1000;
    emulator::Clock::advance(settledMilliseconds);
    QCOMPARE(rig.lines(), QStringList({"FP 27.0 C", "AG 31.5 C", "INT 37.0 C", "LENS 23.5 C", "CH 39.5 C"}));
}

void tst_videoOverlay::missingEquipmentHasNoText_data()
{
    QTest::addColumn<QStringList>("missing");
    QTest::newRow("bare") << QStringList({"FOC", "FP", "FLAG", "AG", "INT", "MM", "LENS", "CH"});
    QTest::newRow("low-cost") << QStringList({"FP", "AG", "MM", "LENS"});
    QTest::newRow("te-cooler") << QStringList({"AG", "MM"});
}

void tst_videoOverlay::missingEquipmentHasNoText()
{
    QFETCH(const QStringList, missing);
    OverlayRig rig(QTest::currentDataTag());
    setAll(rig, true);
    const QStringList lines = rig.lines();
    QCOMPARE(lines.size(), qsizetype(fields(rig).size()) - missing.size());
    for (const QString &line : lines)
        for (const QString &word : missing)
            QVERIFY2(!line.split(' ').contains(word), qPrintable(line));
}

void tst_videoOverlay::sensorsThatFailHaveNoNumber()
{
    OverlayRig rig("edge-values");
    setAll(rig, false);
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), false), 0);
    QCOMPARE(zvtSetVideoOverlayShowLensTemp(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayShowChassisTemp(rig.handle(), true), 0);
    QCOMPARE(rig.lines(), QStringList({"LENS --- C", "CH --- C"}));
}

void tst_videoOverlay::missingSensorsOfAFailingBoardHaveNoText()
{
    const QTemporaryDir folder;
    const QString profile
        = writeProfile(folder.path(), "everything", R"({"temperatures": {"airGap": false, "scFails": true}})");
    OverlayRig rig(qPrintable(profile));
    for (const Field &field : fields(rig))
        QCOMPARE(field.set(rig.handle(), QString(field.key).endsWith("Temp")), 0);
    QVERIFY(rig.set("overlay.showLensTemp", false) && rig.set("overlay.showChassisTemp", false));
    QCOMPARE(rig.lines(), QStringList({"FP --- C", "INT --- C"}));
}

void tst_videoOverlay::anOverlayThatIsOffShowsNothing()
{
    OverlayRig rig;
    QCOMPARE(zvtSetVideoOverlayShowFocusROI(rig.handle(), true), 0);
    QCOMPARE(rig.lines().size(), 4);
    QCOMPARE(rig.content().boxes.size(), size_t(1));
    QVERIFY(!rig.message().isEmpty());
    QCOMPARE(zvtSetVideoOverlayEnabled(rig.handle(), false), 0);
    QCOMPARE(rig.lines(), QStringList());
    QVERIFY(rig.content().boxes.empty());
    QCOMPARE(rig.message(), QString());
    QCOMPARE(zvtSetVideoOverlayEnabled(rig.handle(), true), 0);
    QCOMPARE(rig.lines().size(), 4);
}

void tst_videoOverlay::newCamerasHaveTheDefaults()
{
    for (const char *profile : {"everything", "bare", "te-cooler", "low-cost"}) {
        const OverlayRig rig(profile);
        QVERIFY(flag(rig, zvtGetVideoOverlayEnabled) && flag(rig, zvtGetVideoOverlayShowMessage));
        QVERIFY(!flag(rig, zvtGetVideoOverlayShowAGCROI));
        for (const Field &field : fields(rig)) {
            const QString key = field.key;
            const bool on
                = key == "showCameraInfo" || key == "showTime" || key == "showPreset" || key == "showFrameRate";
            QCOMPARE(flag(rig, field.get), on);
        }
        QCOMPARE(byte(rig, zvtGetVideoOverlayTextColor), 1);
        QCOMPARE(byte(rig, zvtGetVideoOverlayTextBackground), 0);
        QCOMPARE(byte(rig, zvtGetVideoOverlayAGCROIColor), 5);
        QCOMPARE(byte(rig, zvtGetVideoOverlayFocusROIColor), 3);
    }
}

void tst_videoOverlay::defaultsReplaceEverySetting()
{
    OverlayRig rig;
    const QJsonObject defaults = rig.camera().snapshot();
    for (const Field &field : fields(rig))
        QCOMPARE(field.set(rig.handle(), !flag(rig, field.get)), 0);
    QCOMPARE(zvtSetVideoOverlayEnabled(rig.handle(), false), 0);
    QCOMPARE(zvtSetVideoOverlayShowMessage(rig.handle(), false), 0);
    QCOMPARE(zvtSetVideoOverlayShowAGCROI(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayShowFocusROI(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayAGCROIColor(rig.handle(), 100), 0);
    QCOMPARE(zvtSetVideoOverlayFocusROIColor(rig.handle(), 101), 0);
    QCOMPARE(zvtSetVideoOverlayTextColor(rig.handle(), 102), 0);
    QCOMPARE(zvtSetVideoOverlayTextBackground(rig.handle(), 103), 0);
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "text"), 0);
    const QJsonObject changed = rig.camera().snapshot()["overlay"].toObject();
    for (const QString &key : changed.keys())
        QVERIFY2(changed[key] != defaults["overlay"].toObject()[key], qPrintable(key));
    QCOMPARE(zvtVideoOverlayUseDefaults(rig.handle()), 0);
    QCOMPARE(rig.camera().snapshot(), defaults);
    // The message is none of the settings.
    QCOMPARE(rig.message(), QStringLiteral("COOLING"));
    // A camera without an automatic focus has defaults, too.
    rig.open("bare");
    QCOMPARE(zvtVideoOverlayUseDefaults(rig.handle()), 0);
}

void tst_videoOverlay::coloursAreStored()
{
    OverlayRig rig;
    for (const uint8_t color : {0, 1, 16, 255}) {
        QCOMPARE(zvtSetVideoOverlayTextColor(rig.handle(), color), 0);
        QCOMPARE(zvtSetVideoOverlayTextBackground(rig.handle(), uint8_t(255 - color)), 0);
        QCOMPARE(zvtSetVideoOverlayAGCROIColor(rig.handle(), uint8_t(color ^ 64)), 0);
        QCOMPARE(zvtSetVideoOverlayFocusROIColor(rig.handle(), uint8_t(color ^ 128)), 0);
        QCOMPARE(byte(rig, zvtGetVideoOverlayTextColor), int(color));
        QCOMPARE(byte(rig, zvtGetVideoOverlayTextBackground), 255 - color);
        QCOMPARE(byte(rig, zvtGetVideoOverlayAGCROIColor), color ^ 64);
        QCOMPARE(byte(rig, zvtGetVideoOverlayFocusROIColor), color ^ 128);
        QCOMPARE(rig.content().textColor, color);
        QCOMPARE(rig.content().textBackground, uint8_t(255 - color));
    }
}

void tst_videoOverlay::textColoursMayBeFixed()
{
    OverlayRig rig;
    QVERIFY(flag(rig, zvtGetVideoOverlayTextColorsAvailable));
    rig.open("low-cost");
    QVERIFY(!flag(rig, zvtGetVideoOverlayTextColorsAvailable));
    QCOMPARE(zvtSetVideoOverlayTextColor(rig.handle(), 2), refused);
    QCOMPARE(zvtSetVideoOverlayTextBackground(rig.handle(), 2), refused);
    QCOMPARE(byte(rig, zvtGetVideoOverlayTextColor), 1);
    QCOMPARE(byte(rig, zvtGetVideoOverlayTextBackground), 0);
    // The frames have colours.
    QCOMPARE(zvtSetVideoOverlayAGCROIColor(rig.handle(), 2), 0);
}

void tst_videoOverlay::aUserTextIsBounded()
{
    const OverlayRig rig;
    QVERIFY(flag(rig, zvtGetVideoOverlayUserDefinedFieldAvailable));
    QCOMPARE(userText(rig), QString());
    const std::string longest(64, 'x');
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), longest.c_str()), 0);
    QCOMPARE(userText(rig), QString(64, 'x'));
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), (longest + 'x').c_str()), refused);
    // 65 bytes in 22 characters.
    const QByteArray euros = QString(21, u'€').toUtf8() + "xx";
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), euros.constData()), refused);
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), euros.left(64).constData()), 0);
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "\xFF\xFE"), refused);
    QCOMPARE(userText(rig), QString(21, u'€') + 'x');
}

void tst_videoOverlay::aUserTextIsShownAsLatin1()
{
    OverlayRig rig;
    setAll(rig, false);
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), true), 0);
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "21 °C 5 €"), 0);
    QCOMPARE(rig.content().lines,
             std::vector<std::string>{"21 \xB0"
                                      "C 5 ?"});
}

void tst_videoOverlay::everyBufferHoldsABoundedUserText()
{
    const OverlayRig rig;
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "1234"), 0);
    for (const uint32_t size : {1U, 4U, 5U, 65U}) {
        std::vector<char> text(size + 1, 'x');
        QCOMPARE(zvtGetVideoOverlayUserDefinedFieldText(rig.handle(), text.data(), size), 0);
        QCOMPARE(QString::fromLatin1(text.data()), QStringLiteral("1234").left(int(size) - 1));
        QCOMPARE(text[size], 'x');
    }
}

void tst_videoOverlay::aCameraMayHaveNoUserText()
{
    OverlayRig rig("te-cooler");
    QVERIFY(!flag(rig, zvtGetVideoOverlayUserDefinedFieldAvailable));
    bool show = true;
    QCOMPARE(zvtGetVideoOverlayShowUserDefinedField(rig.handle(), &show), refused);
    QVERIFY(show);
    QCOMPARE(zvtSetVideoOverlayShowUserDefinedField(rig.handle(), true), refused);
    char text[65] = "old";
    QCOMPARE(zvtGetVideoOverlayUserDefinedFieldText(rig.handle(), text, sizeof text), refused);
    QCOMPARE(text, "old");
    QCOMPARE(zvtSetVideoOverlayUserDefinedFieldText(rig.handle(), "new"), refused);
    QCOMPARE(rig.lines().size(), 4);
}

void tst_videoOverlay::theColoursAreListed()
{
    const OverlayRig rig;
    std::vector<uint8_t> bytes(769, 77);
    QCOMPARE(zvtGetVideoOverlayPalette(rig.handle(), bytes.data()), 0);
    const auto color = [&bytes](size_t index) {
        return QList<int>{bytes[3 * index], bytes[3 * index + 1], bytes[3 * index + 2]};
    };
    QCOMPARE(color(1), QList<int>({255, 255, 255}));
    QCOMPARE(color(2), QList<int>({255, 0, 0}));
    QCOMPARE(color(9), QList<int>({128, 0, 0}));
    QCOMPARE(color(16 + 36 * 1 + 6 * 2 + 3), QList<int>({51, 102, 153}));
    QCOMPARE(color(255), QList<int>({238, 238, 238}));
    QCOMPARE(bytes[768], uint8_t(77));
}

void tst_videoOverlay::snapshotsHaveEverySetting()
{
    OverlayRig rig;
    QVERIFY(rig.set("overlay.showLogo", true) && rig.set("overlay.textColor", 9) && rig.set("overlay.userText", "text")
            && rig.set("overlay.showMessages", false));
    const QJsonObject changed = rig.camera().snapshot();
    QCOMPARE(changed["overlay"].toObject().size(), 28);
    QCOMPARE(zvtVideoOverlayUseDefaults(rig.handle()), 0);
    QVERIFY(rig.camera().snapshot() != changed);
    rig.camera().restore(changed);
    QCOMPARE(rig.camera().snapshot(), changed);
    QCOMPARE(userText(rig), QStringLiteral("text"));
}

void tst_videoOverlay::otherClientsChangeEverySetting()
{
    OverlayRig rig;
    for (const Field &field : fields(rig)) {
        const bool before = flag(rig, field.get);
        const std::string setting = std::string("overlay.") + field.key;
        QVERIFY2(rig.set(setting.c_str(), !before), field.key);
        QCOMPARE(flag(rig, field.get), !before);
    }
    QVERIFY(rig.set("overlay.enabled", false) && !flag(rig, zvtGetVideoOverlayEnabled));
    QVERIFY(rig.set("overlay.showAgcRoi", true) && flag(rig, zvtGetVideoOverlayShowAGCROI));
    QVERIFY(rig.set("overlay.agcRoiColor", 200) && byte(rig, zvtGetVideoOverlayAGCROIColor) == 200);
    QVERIFY(rig.set("overlay.focusRoiColor", 201) && byte(rig, zvtGetVideoOverlayFocusROIColor) == 201);
    QVERIFY(rig.set("overlay.textBackground", 202) && byte(rig, zvtGetVideoOverlayTextBackground) == 202);
    QVERIFY(rig.set("overlay.showUserField", true) && flag(rig, zvtGetVideoOverlayShowUserDefinedField));
    QVERIFY(!rig.set("overlay.textColor", 256));
    QVERIFY(!rig.set("overlay.userText", QString(65, 'x')));
    rig.open("te-cooler");
    QVERIFY(!rig.set("overlay.userText", "x"));
}

void tst_videoOverlay::everyFunctionAnswersAtOnce()
{
    OverlayRig rig;
    auto &gate = rig.camera().gate();
    const size_t mark = gate.mark();
    for (int round = 0; round < 20; ++round) {
        for (const Field &field : fields(rig)) {
            flag(rig, field.get);
            field.set(rig.handle(), round % 2 == 0);
        }
        hlx::TArray<zvtSDirEntry> palettes;
        zvtListPalettes(rig.handle(), &palettes);
        zvtLoadPalette(rig.handle(), "Iron");
        uint8_t bytes[768];
        zvtGetVideoOverlayPalette(rig.handle(), bytes);
        zvtVideoOverlayUseDefaults(rig.handle());
        zvtVideoOverlayClearMessage(rig.handle());
    }
    QVERIFY(slowestFunction(gate, mark) < std::chrono::milliseconds(1));
}

ZVT_TEST(tst_videoOverlay)
#include "tst_videoOverlay.moc"
