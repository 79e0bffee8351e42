#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

#include <QSet>

#include <vector>

namespace
{

/// A drive that has gone is not present, and still recognized.
enum class Drive { Absent, Unknown, Recognized, Gone };
enum Mode { ToMemory, ToDisk };
enum Type { NumFrames, Duration, StartStop };

/// What the rules for the controls depend on.
struct Case {
    int state;
    Drive drive;
    bool modes; ///< The camera has record modes.
    Mode mode;
    Type type;
    bool save; ///< A recording is saved automatically.
    bool download; ///< A recording is downloaded automatically.
    // Whether the text of the field is acceptable.
    bool rate = true;
    bool frames = true;
    bool pretrigger = true;
    bool duration = true;
    bool name = true;
    bool canDownload = true; ///< The connection can download.

    bool canInteract() const { return QSet<int>{0, 1, 3, 4, 6, 10}.contains(state); }
    bool video() const { return QSet<int>{3, 4, 6, 10}.contains(state); }
    bool usable() const { return canInteract() && state != Armed; }
    bool present() const { return drive == Drive::Unknown || drive == Drive::Recognized; }
    bool recognized() const { return drive == Drive::Recognized; }
    bool isOneOf(const QSet<int> &states) const { return states.contains(state); }
    QString text() const
    {
        return QStringLiteral("state %1, drive %2, modes %3, mode %4, type %5, save %6, download %7, "
                              "rate %8, frames %9, pretrigger %10, duration %11, name %12, link %13")
            .arg(state)
            .arg(static_cast<int>(drive))
            .arg(modes)
            .arg(mode)
            .arg(type)
            .arg(save)
            .arg(download)
            .arg(rate)
            .arg(frames)
            .arg(pretrigger)
            .arg(duration)
            .arg(name)
            .arg(canDownload);
    }
};

/// The rules for one control.
struct Rule {
    const char *name; ///< The accessible name of the control of a disarmed camera with recording to the memory.
    bool (*visible)(const Case &c);
    bool (*enabled)(const Case &c);
    QString (*toolTip)(const Case &c);
    char16_t (*glyph)(const Case &c) = nullptr; ///< Of a button with a glyph that depends on the state.
};

constexpr char16_t target = 0xf192;
constexpr char16_t disc = 0xf111;
constexpr char16_t stopCircle = 0xf28d;
constexpr char16_t pauseBars = 0xf04c;
constexpr char16_t playTriangle = 0xf04b;

bool always(const Case & /*unused*/) { return true; }
bool withModes(const Case &c) { return c.modes; }
bool usable(const Case &c) { return c.usable(); }
bool skips(const Case &c) { return c.isOneOf({Playing, Paused}); }
bool downloads(const Case &c) { return c.download; }
QString unchecked(const Case & /*unused*/) { return {}; }

const Rule rules[] = {
    {"Arm for recording", always,
     [](const Case &c) {
         return c.canInteract() && c.rate && (c.mode != ToMemory || c.pretrigger) && (c.type != NumFrames || c.frames)
             && (c.type != Duration || c.duration) && (c.mode != ToDisk || c.recognized())
             && c.isOneOf({Armed, Complete, MovieLoaded, Disarmed});
     },
     [](const Case &c) -> QString { return c.state == Armed ? "Disarm" : "Arm for recording"; },
     [](const Case &c) { return c.state == Armed ? stopCircle : target; }},
    {"Record to RAM", always,
     [](const Case &c) {
         return c.isOneOf({Armed, Triggered});
     },
     [](const Case &c) -> QString {
         return c.state == Triggered ? "Stop Recording" : c.mode == ToDisk ? "Record to SSD" : "Record to RAM";
     },
     [](const Case &c) { return c.state == Triggered ? stopCircle : disc; }},
    {"Resume Recording", withModes,
     [](const Case &c) {
         return c.isOneOf({Triggered, RecordPaused});
     },
     [](const Case &c) -> QString { return c.state == Triggered ? "Pause Recording" : "Resume Recording"; },
     [](const Case &c) { return c.state == RecordPaused ? playTriangle : pauseBars; }},
    {"Save to SSD", always,
     [](const Case &c) { return c.canInteract() && c.name && c.video() && c.state == Complete && c.recognized(); },
     [](const Case & /*unused*/) -> QString { return "Save to SSD"; }},
    {"Load Movie", always, [](const Case &c) { return c.usable() && c.recognized(); },
     [](const Case &c) -> QString { return c.modes ? "Load Movie" : "List Movies"; }},
    {"Download Movie", withModes, [](const Case &c) { return c.canInteract() && c.video() && c.canDownload; },
     [](const Case & /*unused*/) -> QString { return "Download Movie"; }},
    {"Batch Download Movies", withModes,
     [](const Case &c) {
         return c.usable() && c.recognized() && !c.isOneOf({Playing, Paused}) && c.canDownload;
     },
     [](const Case & /*unused*/) -> QString { return "Batch Download Movies"; }},

    {"Record Mode", withModes, usable, unchecked},
    {"Record Type", withModes, usable, unchecked},
    {"Gated record", withModes, usable, unchecked},
    {"SSD Filename", always, [](const Case &c) { return c.canInteract(); }, unchecked},
    {"Playback Rate (Hz)", always, usable,
     [](const Case & /*unused*/) -> QString { return "Maximum: 399.5 Hz @ 640x512"; }},
    {"Toggle Looping", always, usable, [](const Case & /*unused*/) -> QString { return "Toggle Looping"; }},
    {"Frame", always, usable, unchecked},
    {"Edit Playback Range", always, [](const Case &c) { return c.video(); },
     [](const Case & /*unused*/) -> QString { return "Edit Playback Range"; }},
    {"Previous Frame", always, skips, unchecked},
    {"Play", always, [](const Case &c) { return c.video(); },
     [](const Case &c) -> QString { return c.state == Playing ? "Pause" : "Play"; },
     [](const Case &c) { return c.state == Playing ? pauseBars : playTriangle; }},
    {"Next Frame", always, skips, unchecked},
    {"Current Frame", always, skips, unchecked},

    {"Frames To Record", [](const Case &c) { return c.type == NumFrames; }, usable,
     [](const Case &c) -> QString { return c.mode == ToDisk ? "Maximum: 900" : "Maximum: 5000"; }},
    {"Duration To Record", [](const Case &c) { return c.type == Duration; }, usable, unchecked},
    {"Pretrigger Frames", always, [](const Case &c) { return c.usable() && c.mode == ToMemory; },
     [](const Case &c) -> QString {
         const bool byMemory = c.mode == ToDisk || c.type == StartStop;
         return byMemory ? "Maximum: 5000" : c.frames ? "Maximum: 100" : "Maximum: 0";
     }},
    {"Begin playback", always, [](const Case &c) { return c.canInteract() && c.mode != ToDisk; }, unchecked},
    {"Save it to the SSD", always, [](const Case &c) { return c.canInteract() && c.recognized() && c.mode != ToDisk; },
     unchecked},
    {"Arm for the next recording", withModes,
     [](const Case &c) { return c.canInteract() && c.recognized() && (c.mode == ToDisk || c.save || c.download); },
     unchecked},
    {"Download the recording", withModes, [](const Case &c) { return c.canInteract(); }, unchecked},
    {"Format SSD", always,
     [](const Case &c) {
         return c.canInteract() && c.present() && c.isOneOf({Disarmed, Complete});
     },
     unchecked},

    {"Directory", withModes, downloads, unchecked},
    {"Choose Directory", withModes, downloads, unchecked},
    {"Count", withModes, downloads, unchecked},
    {"Refresh", always, always, [](const Case & /*unused*/) -> QString { return "Refresh"; }},
};

} // namespace

/// The rules for when the controls of the SSD page are shown and enabled, and for their tool tips: each combination of
/// what they depend on.
class tst_SsdTabRules : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void controlsFollowTheirRules_data();
    void controlsFollowTheirRules();
    void downloadsNeedALink_data() { controlsFollowTheirRules_data(); }
    void downloadsNeedALink();
    void anOpenEditorDisablesThePlayback_data();
    void anOpenEditorDisablesThePlayback();
    void theCommandsHaveTheirColours();
    void aReadDisablesEverything();
    void aDisconnectionDisablesEverything();

private:
    void script(const char *call, const QVariant &value) { m_page->gate().script(call, value); }
    void enter(const Case &c);
    void enterFields(const Case &c);
    QString fault(const Case &c) const;

    std::unique_ptr<SsdPage> m_page;
    std::vector<QQuickItem *> m_controls; ///< In the order of the rules.
};

void tst_SsdTabRules::init()
{
    Test::init();
    m_page = std::make_unique<SsdPage>();
    script("zvtSetSsd*", true);
    script("zvtGetSsdMaxNumFrames", 5000U);
    script("zvtGetSsdMaxNumFramesDisk", 900U);
    script("zvtGetSsdNumFrames", 100U);
    script("zvtCalcMinFrameWidth", 1000U);
    script("zvtClocksToHertz", 399.5);
    m_controls.clear();
    enter({Disarmed, Drive::Recognized, true, ToMemory, NumFrames, false, true});
    for (const Rule &rule : rules) {
        if (rule.name == QLatin1String("Duration To Record"))
            enter({Disarmed, Drive::Recognized, true, ToMemory, Duration, false, true});
        m_controls.push_back(&m_page->item(QLatin1String(rule.name)));
    }
}

void tst_SsdTabRules::cleanup() { m_page.reset(); }

void tst_SsdTabRules::enter(const Case &c)
{
    script("zvtGetSsdState", c.state);
    script("zvtGetSsdDrivePresent", c.present());
    script("zvtGetSsdDriveRecognized", c.drive == Drive::Recognized || c.drive == Drive::Gone);
    script("zvtGetSsdRecordModeAvailable", c.modes);
    script("zvtGetSsdRecordMode", c.mode);
    script("zvtGetSsdRecordType", c.type);
    // A duration of 24 hours or more cannot be shown.
    script("zvtGetSsdRecordDuration", c.duration ? 2000U : 90'000'000U);
    script("zvtGetSsdAutoSave", c.save);
    script("zvtGetSsdAutoDownload", c.download);
    script("controller.CanDownload", c.canDownload);
    m_page->refresh();
}

/// Lets the fields show values that are acceptable or not.
void tst_SsdTabRules::enterFields(const Case &c)
{
    QObject *recorder = m_page->recorder();
    recorder->setProperty("playbackRateInHertz", c.rate ? 30.0 : 0.0);
    recorder->setProperty("framesToRecord", c.frames ? 100U : 0U);
    recorder->setProperty("pretriggerFramesToRecord", c.pretrigger ? 0U : 5001U);
    recorder->setProperty("filename", c.name ? QStringLiteral("Shot") : QStringLiteral(" Shot"));
}

/// The first control that does not follow its rule; empty if there is none.
QString tst_SsdTabRules::fault(const Case &c) const
{
    for (size_t i = 0; i < m_controls.size(); ++i) {
        const Rule &rule = rules[i];
        const QQuickItem &control = *m_controls[i];
        const QString toolTip = rule.toolTip(c);
        if (control.isVisible() != rule.visible(c))
            return QStringLiteral("%1 is shown: %2").arg(rule.name).arg(control.isVisible());
        if (control.isEnabled() != rule.enabled(c))
            return QStringLiteral("%1 is enabled: %2").arg(rule.name).arg(control.isEnabled());
        if (rule.toolTip != unchecked && control.property("toolTip").toString() != toolTip)
            return QStringLiteral("%1 has the tool tip %2").arg(rule.name, control.property("toolTip").toString());
        if (rule.glyph != nullptr && control.property("glyph").toString() != QChar(rule.glyph(c)))
            return QStringLiteral("%1 has another glyph").arg(rule.name);
    }
    return {};
}

void tst_SsdTabRules::controlsFollowTheirRules_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state <= 13; ++state)
        QTest::addRow("%d", state) << state;
}

// Without record modes, mode and type are 0.
void tst_SsdTabRules::controlsFollowTheirRules()
{
    QFETCH(const int, state);
    int cases = 0;
    for (const Drive drive : {Drive::Absent, Drive::Unknown, Drive::Recognized, Drive::Gone}) {
        for (int bits = 0; bits < 7 * 8; ++bits) {
            const int modeAndType = bits / 8;
            Case c{state, drive, modeAndType > 0, ToMemory, NumFrames, (bits & 1) != 0, (bits & 2) != 0};
            c.duration = (bits & 4) == 0;
            if (c.modes) {
                c.mode = static_cast<Mode>((modeAndType - 1) / 3);
                c.type = static_cast<Type>((modeAndType - 1) % 3);
            } else if (c.download || !c.duration) {
                continue;
            }
            enter(c);
            for (int fields = 0; fields < 16; ++fields) {
                c.rate = (fields & 1) == 0;
                c.frames = (fields & 2) == 0;
                c.pretrigger = (fields & 4) == 0;
                c.name = (fields & 8) == 0;
                enterFields(c);
                const QString found = fault(c);
                QVERIFY2(found.isEmpty(), qPrintable(found + ": " + c.text()));
                ++cases;
            }
        }
    }
    QCOMPARE(cases, 4 * (6 * 8 + 2) * 16);
}

void tst_SsdTabRules::downloadsNeedALink()
{
    QFETCH(const int, state);
    for (const Drive drive : {Drive::Absent, Drive::Unknown, Drive::Recognized, Drive::Gone}) {
        for (const bool modes : {false, true}) {
            for (const bool canDownload : {false, true}) {
                Case c{state, drive, modes, ToMemory, NumFrames, false, false};
                c.canDownload = canDownload;
                enter(c);
                enterFields(c);
                const QString found = fault(c);
                QVERIFY2(found.isEmpty(), qPrintable(found + ": " + c.text()));
            }
        }
    }
}

void tst_SsdTabRules::anOpenEditorDisablesThePlayback_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {Complete, Playing, Paused, MovieLoaded})
        QTest::addRow("%d", state) << state;
}

void tst_SsdTabRules::anOpenEditorDisablesThePlayback()
{
    QFETCH(const int, state);
    enter({state, Drive::Recognized, true, ToMemory, NumFrames, false, false});
    const QString play = state == Playing ? "Pause" : "Play";
    QVERIFY(m_page->enabled("Edit Playback Range") && m_page->enabled(play));
    m_page->click("Frame");
    m_page->awaitFrame();
    for (const QString &name : {QStringLiteral("Edit Playback Range"), play, QStringLiteral("Previous Frame"),
                                QStringLiteral("Next Frame"), QStringLiteral("Current Frame")})
        QVERIFY2(!m_page->enabled(name), qPrintable(name));
    m_page->press(Qt::Key_Escape);
    QVERIFY(m_page->enabled("Edit Playback Range") && m_page->enabled(play));
    QCOMPARE(m_page->enabled("Previous Frame"), state == Playing || state == Paused);
}

void tst_SsdTabRules::theCommandsHaveTheirColours()
{
    const auto color = [this](const char *name) {
        const QQuickItem &button = m_page->item(name);
        return button.property("contentItem").value<QObject *>()->property("color").value<QColor>();
    };
    enter({Disarmed, Drive::Recognized, true, ToMemory, NumFrames, false, false});
    const QColor normal = color("Save to SSD");
    QCOMPARE(color("Arm for recording"), QColor("yellow"));
    QCOMPARE(color("Record to RAM"), normal);
    enter({Armed, Drive::Recognized, true, ToMemory, NumFrames, false, false});
    QCOMPARE(color("Disarm"), QColor("yellow"));
    QCOMPARE(color("Record to RAM"), m_page->rootProperty("tidepoolAccentRed").value<QColor>());
    enter({Triggered, Drive::Recognized, true, ToMemory, NumFrames, false, false});
    QCOMPARE(color("Arm for recording"), normal);
    QCOMPARE(color("Stop Recording"), m_page->rootProperty("tidepoolAccentRed").value<QColor>());
}

void tst_SsdTabRules::aReadDisablesEverything()
{
    enter({Playing, Drive::Recognized, true, ToMemory, NumFrames, true, true});
    m_page->gate().hold("zvtGetSsdState");
    m_page->click("Refresh");
    QVERIFY(m_page->gate().waitHeld("zvtGetSsdState"));
    for (const QQuickItem *control : m_controls)
        QVERIFY(!control->isEnabled());
    QVERIFY(m_page->arrowsPulse());
    QVERIFY(m_page->diagram()->property("visible").toBool());
    m_page->gate().release("zvtGetSsdState");
    m_page->settle();
    QVERIFY(m_page->enabled("Edit Playback Range"));
}

void tst_SsdTabRules::aDisconnectionDisablesEverything()
{
    enter({Complete, Drive::Recognized, true, ToMemory, NumFrames, true, true});
    m_page->rig().camera().disconnect();
    m_page->settle();
    for (const QQuickItem *control : m_controls)
        QVERIFY(!control->isEnabled());
    QVERIFY(m_page->findText("No camera connected"));
}

ZVT_TEST(tst_SsdTabRules)
#include "tst_SsdTabRules.moc"
