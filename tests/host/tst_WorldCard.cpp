#include "platform/emulator/devices/Environment.h"
#include "platform/emulator/devices/FilterWheel.h"
#include "platform/emulator/devices/Flag.h"
#include "platform/emulator/devices/Recorder.h"
#include "platform/emulator/image/Exposure.h"
#include "tests/host/SettingsRig.h"
#include "tests/support/Test.h"

#include <QSignalSpy>

/// The card "World" and its model.
class tst_WorldCard : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_rig.reset(); }

    void rowsAreThoseOfTheEquipment_data();
    void rowsAreThoseOfTheEquipment();
    void everyChoiceReachesTheCamera_data();
    void everyChoiceReachesTheCamera();
    void ambientByKeyboard();
    void chamberProgramByMouse();
    void anotherProgramIsShown();
    void patternAndBlackbodiesReachTheScene();
    void movingTargetsByMouseAndKeyboard();
    void signalsReachTheInputs();
    void singleTriggerByMouseAndKeyboard();
    void filterIsInserted();
    void twoFiltersAreInsertedAtOnce();
    void threeSlotsHaveThreeRows();
    void namesOfFiltersAreThoseOfTheUser();
    void newNamesKeepTheShownFilter();
    void refusalIsShownUntilEsc_data();
    void refusalIsShownUntilEsc();
    void faultsAreSetAndCleared_data();
    void faultsAreSetAndCleared();
    void lossOfTheLinkIsAFaultAboveTheUsualOne();
    void allFaultsAreClearedTogether();
    void waitingFaultIsCleared();
    void faultOfAnotherClientIsSeen();
    void faultBelongsToItsCamera();
    void wrongFilterIsNoFault();
    void isReadWhenItIsOpen();

private:
    void use(const QString &profile);
    WorldModel &model() { return *m_rig->desk().world(); }
    Faults &faults() { return *m_rig->desk().faults(); }
    emulator::Camera &camera() { return m_rig->camera(); }
    QVariant inCamera(const QString &name) { return m_rig->inCamera(name); }
    int rowOf(const QString &label) { return m_rig->rowOf(label); }
    QVariant shown(const QString &label, const QByteArray &role) { return m_rig->shown(label, role); }
    QStringList labels();
    bool read() { return m_rig->read(); }
    void open();
    void enter(const QString &name, const QString &text);
    void choose(const QString &name, int steps);
    emulator::image::Scene scene() { return camera().exposure({}).scene; }

    std::unique_ptr<SettingsRig> m_rig;
};

void tst_WorldCard::init()
{
    Test::init();
    use("everything");
}

void tst_WorldCard::use(const QString &profile)
{
    m_rig.reset();
    m_rig = std::make_unique<SettingsRig>(profile, &Desk::world);
}

QStringList tst_WorldCard::labels()
{
    QStringList list;
    for (int row = 0; row < model().count(); ++row)
        list.append(m_rig->shown(row, "label").toString());
    return list;
}

void tst_WorldCard::open()
{
    QCOMPARE(m_rig->show("WorldCard.qml", model()), QString());
    m_rig->click("World");
    QTRY_VERIFY(m_rig->find("Ambient"));
}

void tst_WorldCard::enter(const QString &name, const QString &text)
{
    m_rig->type(name, text);
    m_rig->press(Qt::Key_Return);
}

/// Opens a list of choices by the mouse and selects by the keyboard.
void tst_WorldCard::choose(const QString &name, int steps)
{
    m_rig->click(name);
    for (int step = 0; step < steps; ++step)
        m_rig->press(Qt::Key_Down);
    m_rig->press(Qt::Key_Return);
}

void tst_WorldCard::rowsAreThoseOfTheEquipment_data()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_WorldCard::rowsAreThoseOfTheEquipment()
{
    QFETCH(const QString, profile);
    use(profile);
    QVERIFY(read());
    QStringList wanted{"Ambient",     "Climate chamber", "Pattern",      "Moving targets", "Blackbody 1",
                       "Blackbody 2", "External sync",   "Trigger rate", "Single trigger"};
    const auto *const flag = camera().device<emulator::Flag>();
    for (qsizetype slot = 0; slot < inCamera("filters.inserted").toList().size(); ++slot)
        wanted.append(QString("Slot %1").arg(slot + 1));
    if (flag && flag->temperatureControlled())
        wanted.append("Heater stuck");
    if (const auto *const recorder = camera().device<emulator::Recorder>(); recorder && recorder->hasDrive())
        wanted.append({"Pulled", "Full", "Slow"});
    if (camera().device<emulator::Recorder>())
        wanted.append({"Lost frames", "Speed"});
    QCOMPARE(labels(), wanted);
    QCOMPARE(shown("Slot 1", "label").isValid(), camera().device<emulator::FilterWheel>() != nullptr);
}

void tst_WorldCard::everyChoiceReachesTheCamera_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("setting");
    QTest::newRow("chamber") << "Climate chamber"
                             << "emulator./ChamberProfile";
    QTest::newRow("pattern") << "Pattern"
                             << "emulator./Pattern";
    QTest::newRow("filter") << "Slot 2"
                            << "filters.inserted";
}

void tst_WorldCard::everyChoiceReachesTheCamera()
{
    QFETCH(const QString, label);
    QFETCH(const QString, setting);
    QVERIFY(read());
    const auto choices = shown(label, "choices").toStringList();
    QVERIFY(choices.size() >= 4);
    QVariantList seen;
    for (int choice = 0; choice < choices.size(); ++choice) {
        QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
        model().choose(rowOf(label), choice);
        QVERIFY(changed.wait());
        QCOMPARE(changed.at(0).at(1).toString(), QString());
        QCOMPARE(shown(label, "choice").toInt(), choice);
        QVERIFY(!seen.contains(inCamera(setting)));
        seen.append(inCamera(setting));
    }
}

void tst_WorldCard::ambientByKeyboard()
{
    open();
    enter("Ambient", "45.5");
    QTRY_COMPARE(camera().device<emulator::Environment>()->ambient(), 45.5);
    enter("Ambient", "81");
    QTRY_COMPARE(shown("Ambient", "refusal").toString(), "must lie between -60 and 80");
    QCOMPARE(m_rig->property("Ambient", "text").toString(), "45.5");
}

void tst_WorldCard::chamberProgramByMouse()
{
    open();
    choose("Climate chamber", 1);
    QTRY_COMPARE(inCamera("emulator./ChamberProfile").toString(), "0:-20,600:50");
    QTRY_VERIFY(!m_rig->find("Ambient")->isEnabled());
    emulator::Clock::advance(300'000);
    m_rig->poll();
    QTRY_COMPARE(m_rig->property("Ambient", "text").toString(), "15");
    emulator::Clock::advance(1'000);
    m_rig->poll();
    QTRY_COMPARE(m_rig->property("Ambient", "text").toString(), "15.12");
    m_rig->find("Climate chamber")->forceActiveFocus();
    m_rig->press(Qt::Key_Up);
    QTRY_COMPARE(inCamera("emulator./ChamberProfile").toString(), "");
    QTRY_VERIFY(m_rig->find("Ambient")->isEnabled());
}

void tst_WorldCard::anotherProgramIsShown()
{
    QVERIFY(camera().otherClient().set("emulator./ChamberProfile", "0:1,2:3"));
    QVERIFY(camera().otherClient().set("emulator./Pattern", 7));
    QVERIFY(read());
    QCOMPARE(shown("Climate chamber", "choices").toStringList().last(), "0:1,2:3");
    QCOMPARE(shown("Climate chamber", "choice").toInt(), 5);
    QCOMPARE(shown("Pattern", "choices").toStringList().last(), "7");
}

void tst_WorldCard::patternAndBlackbodiesReachTheScene()
{
    open();
    choose("Pattern", 2);
    QTRY_COMPARE(scene().pattern, emulator::image::Scene::Halves);
    enter("Blackbody 1", "12.5");
    enter("Blackbody 2", "60");
    QTRY_COMPARE(scene().blackbody2, 60.0);
    QCOMPARE(scene().blackbody1, 12.5);
}

void tst_WorldCard::movingTargetsByMouseAndKeyboard()
{
    open();
    QVERIFY(m_rig->property("Moving targets", "checked").toBool());
    m_rig->click("Moving targets");
    QTRY_VERIFY(!scene().hasTargets);
    QVERIFY(scene().discs().empty());
    m_rig->find("Moving targets")->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Space);
    QTRY_VERIFY(scene().hasTargets);
}

void tst_WorldCard::signalsReachTheInputs()
{
    open();
    enter("External sync", "0");
    enter("Trigger rate", "12.5");
    QTRY_COMPARE(inCamera("sync.triggerRate").toDouble(), 12.5);
    QCOMPARE(inCamera("sync.externalRate").toDouble(), 0.0);
    enter("External sync", "-1");
    QTRY_COMPARE(shown("External sync", "refusal").toString(), "must lie between 0 and 1000000");
}

void tst_WorldCard::singleTriggerByMouseAndKeyboard()
{
    QVERIFY(camera().otherClient().set("trigger.source", 1));
    QVERIFY(camera().otherClient().set("trigger.mode", 1));
    emulator::Clock::advance(1000);
    const auto frames = [this] {
        emulator::Clock::advance(1000);
        const auto frame = camera().newestFrame(0);
        return frame ? frame->start.number : 0;
    };
    const auto before = frames();
    QCOMPARE(frames(), before);
    open();
    QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
    m_rig->click("Single trigger");
    QTRY_COMPARE(changed.size(), 1);
    QVERIFY(frames() > before);
    m_rig->find("Single trigger")->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Space);
    QTRY_COMPARE(changed.size(), 2);
    QCOMPARE(changed.at(1).at(0).toString(), "sync.trigger");
}

void tst_WorldCard::filterIsInserted()
{
    open();
    const QVariantList before = inCamera("filters.inserted").toList();
    QCOMPARE(before, inCamera("filters.known").toList());
    QCOMPARE(shown("Slot 2", "note").toString(), "");
    const int filter = before.at(1).toInt();
    choose("Slot 2", 3);
    QTRY_VERIFY(inCamera("filters.inserted").toList() != before);
    QVariantList wanted = before;
    wanted[1] = filter + 3;
    QCOMPARE(inCamera("filters.inserted").toList(), wanted);
    QCOMPARE(inCamera("filters.known").toList(), before);
    QTRY_VERIFY(shown("Slot 2", "note").toString().startsWith(QString("The camera expects %1: ").arg(filter)));
    {
        const std::lock_guard lock(camera().mutex());
        QCOMPARE(camera().device<emulator::FilterWheel>()->scan(), emulator::Ok);
    }
    m_rig->poll();
    QTRY_COMPARE(shown("Slot 2", "note").toString(), "");
}

void tst_WorldCard::twoFiltersAreInsertedAtOnce()
{
    QVERIFY(read());
    {
        const std::lock_guard lock(camera().mutex());
        model().choose(rowOf("Slot 1"), 7);
        model().choose(rowOf("Slot 3"), 9);
        QCOMPARE(shown("Slot 1", "choice").toInt(), 7);
    }
    QTRY_COMPARE(inCamera("filters.inserted").toList().value(2).toInt(), 9);
    QCOMPARE(inCamera("filters.inserted").toList().value(0).toInt(), 7);
}

void tst_WorldCard::threeSlotsHaveThreeRows()
{
    QVERIFY(camera().otherClient().set("filters.inserted", QVariantList{1, 2, 3}));
    QVERIFY(read());
    QVERIFY(rowOf("Slot 3") >= 0);
    QCOMPARE(rowOf("Slot 4"), -1);
    QVERIFY(camera().otherClient().set("filters.known", QVariantList{1, 2, 3}));
    QVERIFY(camera().otherClient().set("filters.inserted", QVariantList{1, 2, 3, 4}));
    QVERIFY(read());
    QCOMPARE(shown("Slot 4", "note").toString(), "The camera expects no such slot until it scans the wheel.");
}

void tst_WorldCard::namesOfFiltersAreThoseOfTheUser()
{
    QVERIFY(camera().otherClient().set("filters.names", QStringList{"", "Mine"}));
    QVERIFY(read());
    const QStringList choices = shown("Slot 1", "choices").toStringList();
    QCOMPARE(choices.size(), 64);
    QCOMPARE(choices.at(0), "0: Empty");
    QCOMPARE(choices.at(1), "1: Mine");
    QCOMPARE(choices.at(6), "6: ND 1.0");
}

void tst_WorldCard::newNamesKeepTheShownFilter()
{
    open();
    const int filter = inCamera("filters.inserted").toList().value(1).toInt();
    QVERIFY(filter > 0);
    QCOMPARE(m_rig->property("Slot 2", "currentIndex").toInt(), filter);
    QVERIFY(camera().otherClient().set("filters.names", QStringList{"", "Mine"}));
    m_rig->poll();
    QTRY_COMPARE(shown("Slot 2", "choices").toStringList().at(1), "1: Mine");
    QCOMPARE(m_rig->property("Slot 2", "currentIndex").toInt(), filter);
    choose("Slot 2", 1);
    QTRY_COMPARE(inCamera("filters.inserted").toList().value(1).toInt(), filter + 1);
    QCOMPARE(m_rig->property("Slot 2", "currentIndex").toInt(), filter + 1);
}

void tst_WorldCard::refusalIsShownUntilEsc_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("setting");
    QTest::newRow("switch") << "Moving targets"
                            << "environment.movingTargets";
    QTest::newRow("choice") << "Pattern"
                            << "emulator./Pattern";
    QTest::newRow("field") << "Blackbody 1"
                           << "emulator./BlackbodyTemp1";
    QTest::newRow("pulse") << "Single trigger"
                           << "sync.trigger";
}

// The test refuses in place of the camera, which accepts all values that these switches, choices and pulses can have.
void tst_WorldCard::refusalIsShownUntilEsc()
{
    QFETCH(const QString, label);
    QFETCH(const QString, setting);
    open();
    const auto refuse = [&] {
        emit m_rig->settings().changed(setting, "too late");
        emit m_rig->settings().updated();
    };
    QVERIFY(!m_rig->shows("Refused: too late"));
    refuse();
    QVERIFY(m_rig->shows("Refused: too late"));
    m_rig->find(label)->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Escape);
    QVERIFY(!m_rig->shows("Refused: too late"));
    refuse();
    QVERIFY(m_rig->shows("Refused: too late"));
    emit m_rig->settings().changed(setting, QString());
    emit m_rig->settings().updated();
    QVERIFY(!m_rig->shows("Refused: too late"));
}

void tst_WorldCard::faultsAreSetAndCleared_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("text");
    QTest::newRow("heater") << "Heater stuck"
                            << "flag.stuck"
                            << "The heater of the flag is stuck";
    QTest::newRow("pulled") << "Pulled"
                            << "recorder.drivePulled"
                            << "The drive of the recorder is pulled";
    QTest::newRow("full") << "Full"
                          << "recorder.driveFull"
                          << "The drive of the recorder is full";
    QTest::newRow("slow") << "Slow"
                          << "recorder.driveSlow"
                          << "The drive of the recorder is slow";
}

void tst_WorldCard::faultsAreSetAndCleared()
{
    QFETCH(const QString, label);
    QFETCH(const QString, setting);
    QFETCH(const QString, text);
    open();
    QVERIFY(!faults().active());
    m_rig->click(label);
    QTRY_VERIFY(inCamera(setting).toBool());
    QTRY_COMPARE(faults().texts(), QStringList(text));
    faults().clearAll();
    QTRY_VERIFY(!inCamera(setting).toBool());
    QTRY_VERIFY(!faults().active());
    QTRY_VERIFY(!m_rig->property(label, "checked").toBool());
}

void tst_WorldCard::lossOfTheLinkIsAFaultAboveTheUsualOne()
{
    open();
    enter("Speed", "1000");
    enter("Lost frames", "199");
    QTRY_COMPARE(inCamera("link.lossPerMillion").toInt(), 199);
    QCOMPARE(inCamera("link.bytesPerSecond").toInt(), 1000);
    QVERIFY(read());
    QVERIFY(!faults().active());
    enter("Lost frames", "201");
    QTRY_COMPARE(faults().texts(), QStringList("The link of the recorder loses more frames than usual"));
    faults().clearAll();
    QTRY_COMPARE(inCamera("link.lossPerMillion").toInt(), 200);
    QTRY_VERIFY(!faults().active());
    enter("Lost frames", "1000001");
    QTRY_COMPARE(shown("Lost frames", "refusal").toString(), "must lie between 0 and 1000000");
}

void tst_WorldCard::allFaultsAreClearedTogether()
{
    const QStringList settings{"flag.stuck", "recorder.drivePulled", "recorder.driveFull", "recorder.driveSlow"};
    for (const QString &setting : settings)
        QVERIFY(camera().otherClient().set(setting, true));
    QVERIFY(camera().otherClient().set("link.lossPerMillion", 1'000'000));
    QVERIFY(read());
    QCOMPARE(faults().texts().size(), settings.size() + 1);
    faults().clearAll();
    QTRY_VERIFY(!faults().active());
    for (const QString &setting : settings)
        QVERIFY2(!inCamera(setting).toBool(), qPrintable(setting));
    QCOMPARE(inCamera("link.lossPerMillion").toInt(), 200);
}

void tst_WorldCard::waitingFaultIsCleared()
{
    QVERIFY(read());
    QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
    {
        const std::lock_guard lock(camera().mutex());
        model().turn(rowOf("Heater stuck"), true);
        faults().clearAll();
    }
    QTRY_COMPARE(changed.size(), 2);
    QVERIFY(!inCamera("flag.stuck").toBool());
    QVERIFY(!faults().active());
}

// The card World is closed.
void tst_WorldCard::faultOfAnotherClientIsSeen()
{
    SettingListModel &other = *m_rig->desk().otherClient();
    other.setFilter("flag.stuck");
    other.setActive(true);
    QTRY_COMPARE(other.count(), 1);
    other.turn(0, true);
    QTRY_VERIFY(faults().active());
    faults().clearAll();
    QTRY_VERIFY(!faults().active());
    QVERIFY(!inCamera("flag.stuck").toBool());
}

void tst_WorldCard::faultBelongsToItsCamera()
{
    const auto connect = [this](const QString &key) {
        return m_rig->unplug()
            && (m_rig->standalone().connect(key), QTest::qWaitFor([this] { return m_rig->standalone().connected(); }));
    };
    QVERIFY(camera().otherClient().set("flag.stuck", true));
    QVERIFY(read());
    QVERIFY(faults().active());
    QVERIFY(connect("bare"));
    QTRY_VERIFY(!faults().active());
    QVERIFY(connect("everything"));
    QTRY_VERIFY(faults().active());
}

void tst_WorldCard::wrongFilterIsNoFault()
{
    QVERIFY(camera().otherClient().set("filters.inserted", QVariantList{9, 9, 9, 9}));
    QVERIFY(read());
    QVERIFY(!faults().active());
}

void tst_WorldCard::isReadWhenItIsOpen()
{
    QCOMPARE(m_rig->show("WorldCard.qml", model()), QString());
    QVERIFY(!model().active());
    m_rig->click("World");
    QVERIFY(model().active());
    m_rig->click("World");
    QVERIFY(!model().active());
}

ZVT_TEST(tst_WorldCard)
#include "tst_WorldCard.moc"
