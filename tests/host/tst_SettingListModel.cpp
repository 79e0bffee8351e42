#include "tests/host/SettingsRig.h"
#include "tests/support/Test.h"

#include <QJsonArray>
#include <QSignalSpy>

using emulator::SettingInfo;

/// The model of the card "Other client".
class tst_SettingListModel : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_rig.reset(); }

    void hasARowForEachSettingAndCapability_data() { profiles(); }
    void hasARowForEachSettingAndCapability();
    void everyRowCanBeChanged_data() { profiles(); }
    void everyRowCanBeChanged();
    void refusedTextSnapsBackWithTheReason();
    void shownTextRemovesTheRefusal();
    void settingThatCannotBeChangedIsDisabled();
    void filterSelectsRowsByName();
    void headingsStartTheGroups();
    void isReadOnlyWhileActive();
    void changesAreMadeInOrder();
    void heldLockDoesNotBlock();
    void anotherCameraIsShown();
    void resultsOfTheFormerCameraAreIgnored();
    void mayBeDeletedWhileItReads();

private:
    static void profiles();
    void use(const QString &profile);
    SettingListModel &model() { return *m_rig->desk().otherClient(); }
    emulator::Camera &camera() { return m_rig->camera(); }
    QVariant inCamera(const QString &name) { return m_rig->inCamera(name); }
    int rowOf(const QString &name) { return m_rig->rowOf(name); }
    QVariant shown(int row, const QByteArray &role) { return m_rig->shown(row, role); }
    QVariant shown(const QString &name, const QByteArray &role) { return m_rig->shown(name, role); }
    bool read() { return m_rig->read(); }
    QString sendAndAwait(const std::function<void()> &send);
    QString tryValue(const SettingInfo &setting, const QJsonValue &value);
    QList<QJsonValue> otherValues(const SettingInfo &setting);

    std::unique_ptr<SettingsRig> m_rig;
};

void tst_SettingListModel::init()
{
    Test::init();
    use("everything");
}

void tst_SettingListModel::profiles()
{
    QTest::addColumn<QString>("profile");
    for (const QString &name : emulator::Profile::names())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_SettingListModel::use(const QString &profile)
{
    m_rig.reset();
    m_rig = std::make_unique<SettingsRig>(profile, &Desk::otherClient);
}

/// Returns why the camera refuses a change, empty if it accepts it.
QString tst_SettingListModel::sendAndAwait(const std::function<void()> &send)
{
    QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
    send();
    if (changed.isEmpty() && !changed.wait())
        return "no answer";
    return changed.at(0).at(1).toString();
}

/// Changes a row as its control does.
QString tst_SettingListModel::tryValue(const SettingInfo &setting, const QJsonValue &value)
{
    SettingRow wanted = SettingRow::of(setting);
    const int choice = static_cast<int>(wanted.choiceValues.indexOf(value));
    wanted.value = value;
    const int row = rowOf(setting.name);
    return sendAndAwait([&] {
        if (wanted.control == SettingRow::Switch)
            model().turn(row, value.toBool());
        else if (wanted.control == SettingRow::Choice)
            model().choose(row, choice);
        else
            model().enter(row, wanted.text());
    });
}

/// Values that a setting may take, other than the present one. The camera may refuse some of them.
QList<QJsonValue> tst_SettingListModel::otherValues(const SettingInfo &setting)
{
    const QHash<QString, QJsonValue> special{
        {"emulator./ChamberProfile", "0:23,600:60"},
        {"palette.name", "Rainbow"},
        {"states.current", "Hard Defaults"},
        {"trigger.time", QJsonArray{2, 3, 4, 5, 6, 7}},
    };
    QList<QJsonValue> values;
    if (special.contains(setting.name))
        values = {special.value(setting.name)};
    else if (setting.name == "corrections.names")
        values = {QJsonArray::fromStringList(QStringList(setting.value.toArray().size(), QString()))};
    else if (setting.name == "video.offset")
        for (const int offset : {0, 4, -4, 16, -16})
            values += QList<QJsonValue>{QJsonArray{offset, 0}, QJsonArray{0, offset}};
    else if (setting.name == "filters.current")
        for (const QVariant &id : inCamera("filters.known").toList())
            values.append(id.toInt());
    else if (setting.kind == SettingInfo::Flag)
        values = {!setting.value.toBool()};
    else if (!setting.choices.isEmpty())
        for (const double number : setting.choices)
            values.append(number);
    else if (setting.kind == SettingInfo::WholeNumber || setting.kind == SettingInfo::Number)
        for (const double number :
             {setting.value.toDouble() + 1, setting.value.toDouble() - 1, setting.value.toDouble() + 0.01,
              setting.value.toDouble() / 2, 0.0, setting.range.minimum, setting.range.maximum}) {
            if (setting.range.holds(number))
                values.append(number);
        }
    else if (setting.kind == SettingInfo::Text)
        values = {setting.value.toString() + "x", "x"};
    else if (setting.kind == SettingInfo::Texts)
        values = {QJsonArray{"an entry, \"quoted\""}, QJsonArray()};
    else if (setting.kind == SettingInfo::Numbers && setting.range.minimum < setting.range.maximum)
        for (const double step : {1.0, -1.0, 0.5, -16.0, -64.0})
            for (qsizetype entry = 0; entry < setting.value.toArray().size(); ++entry) {
                QJsonArray list = setting.value.toArray();
                list[entry] = list[entry].toDouble() + step;
                values.append(list);
            }
    if (setting.name == "sensor.window")
        values += {QJsonArray{0, 0, 320, 256}, QJsonArray{160, 128, 320, 256}, QJsonArray{0, 0, 160, 128},
                   QJsonArray{0, 0, 640, 512}, QJsonArray{0, 0, 64, 4},        QJsonArray{96, 72, 192, 144}};
    values.removeAll(setting.value);
    return values;
}

void tst_SettingListModel::hasARowForEachSettingAndCapability()
{
    QFETCH(const QString, profile);
    use(profile);
    QVERIFY(read());
    QStringList names;
    for (const SettingInfo &setting : camera().settings())
        names.append(setting.name);
    for (const QString &capability : camera().capabilities().keys())
        names.append("capabilities." + capability);
    QVERIFY(names.size() > 35);
    QStringList rows;
    for (int row = 0; row < model().count(); ++row) {
        rows.append(shown(row, "name").toString());
        const QVariant value = inCamera(rows.last());
        const SettingRow wanted
            = SettingRow::of({rows.last(), SettingInfo::Text, {}, {}, QJsonValue::fromVariant(value), true});
        QCOMPARE(shown(row, "label").toString(), wanted.label);
        QCOMPARE(shown(row, "text").toString(), wanted.text());
        if (shown(row, "control") == SettingRow::Switch)
            QCOMPARE(shown(row, "on"), value);
    }
    QCOMPARE(rows, names);
}

void tst_SettingListModel::everyRowCanBeChanged()
{
    QFETCH(const QString, profile);
    use(profile);
    QVERIFY(read());
    int tried = 0;
    for (const SettingInfo &listed : CameraSettings::settingsOf(camera())) {
        // Earlier changes may have changed the setting.
        SettingInfo setting = listed;
        setting.value = QJsonValue::fromVariant(inCamera(setting.name));
        const QList<QJsonValue> values = otherValues(setting);
        if (!shown(setting.name, "usable").toBool())
            continue;
        // The only window of this camera, and the longest frame and superframe, which cannot be shorter.
        if ((profile == "bare" && setting.name == "sensor.window")
            || (profile == "edge-values"
                && QStringList{"sensor.frameRate", "sensor.superframeRate"}.contains(setting.name)))
            continue;
        // One preset, colour or mode, and a camera without corrections.
        if (values.isEmpty()
            && (setting.range.minimum == setting.range.maximum || setting.choices.size() == 1
                || setting.name == "corrections.names"))
            continue;
        QString why = "no other value is valid";
        for (const QJsonValue &value : values) {
            why = tryValue(setting, value);
            if (why.isEmpty()) {
                if (setting.name.endsWith(".position"))
                    emulator::Clock::advance(60'000); // The move ends.
                QVERIFY2(read(), qPrintable(setting.name));
                const QJsonValue present = QJsonValue::fromVariant(inCamera(setting.name));
                // A trigger pulse is not stored, and the camera may replace a number by the nearest possible one.
                if (setting.name != "sync.trigger" && present == setting.value) {
                    why = "still has its value";
                    continue;
                }
                SettingRow row = SettingRow::of(setting);
                row.value = present;
                QCOMPARE(shown(setting.name, "text").toString(), row.text());
                QCOMPARE(shown(setting.name, "refusal").toString(), QString());
                ++tried;
                break;
            }
            QCOMPARE(shown(setting.name, "refusal").toString(), why);
        }
        QVERIFY2(why.isEmpty(), qPrintable(setting.name + ": " + why));
        // Later settings may depend on this one, as the offset of the video does on the window. Flags make them
        // available.
        if (setting.kind != SettingInfo::Flag)
            camera().otherClient().set(setting.name, setting.value.toVariant());
    }
    QVERIFY(tried > 35);
}

void tst_SettingListModel::refusedTextSnapsBackWithTheReason()
{
    QVERIFY(read());
    const QString before = shown("cooler.setpoint", "text").toString();
    const QString why = sendAndAwait([this, &before] {
        model().enter(rowOf("cooler.setpoint"), "999");
        // The new value is shown until the camera has answered.
        QCOMPARE(shown("cooler.setpoint", "text").toString(), "999");
        QVERIFY(before != "999");
    });
    QCOMPARE(shown("cooler.setpoint", "text").toString(), before);
    QCOMPARE(shown("cooler.setpoint", "refusal").toString(), why);
    QVERIFY2(why.startsWith("must lie between 60 and "), qPrintable(why));
    QCOMPARE(sendAndAwait([this] { model().enter(rowOf("cooler.setpoint"), "cold"); }), "must be a number");
    QCOMPARE(sendAndAwait([this] { model().enter(rowOf("sensor.window"), "1, x"); }), "must be a list of numbers");
    QCOMPARE(sendAndAwait([this] { model().enter(rowOf("cooler.setpoint"), "90"); }), "");
    QCOMPARE(shown("cooler.setpoint", "refusal").toString(), "");
    QCOMPARE(shown("cooler.setpoint", "text").toString(), "90");
}

void tst_SettingListModel::shownTextRemovesTheRefusal()
{
    QVERIFY(read());
    QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
    QVERIFY(sendAndAwait([this] { model().enter(rowOf("cooler.setpoint"), "999"); }) != "");
    QVERIFY(!shown("cooler.setpoint", "refusal").toString().isEmpty());
    model().enter(rowOf("cooler.setpoint"), shown("cooler.setpoint", "text").toString());
    QCOMPARE(shown("cooler.setpoint", "refusal").toString(), "");
    QVERIFY(read());
    QCOMPARE(changed.size(), 1);
}

void tst_SettingListModel::settingThatCannotBeChangedIsDisabled()
{
    QVERIFY(read());
    QVERIFY(shown("environment.ambient", "usable").toBool());
    QVERIFY(camera().otherClient().set("emulator./ChamberProfile", "0:23,600:60"));
    QVERIFY(read());
    QVERIFY(!shown("environment.ambient", "usable").toBool());
    emulator::Clock::advance(600'000);
    QVERIFY(read());
    QCOMPARE(shown("environment.ambient", "text").toString(), "60");
}

void tst_SettingListModel::filterSelectsRowsByName()
{
    QVERIFY(read());
    const int all = model().count();
    QSignalSpy count(&model(), &SettingRows::countChanged);
    model().setFilter("COOLER.");
    QVERIFY(model().count() > 0 && model().count() < 10);
    for (int row = 0; row < model().count(); ++row)
        QVERIFY(shown(row, "name").toString().startsWith("cooler."));
    model().setFilter("no such name");
    QCOMPARE(model().count(), 0);
    QCOMPARE(count.size(), 2);
    // A row that is not there changes nothing.
    model().enter(0, "1");
    model().turn(0, true);
    model().choose(0, 0);
    model().pulse(-1);
    model().setFilter("");
    QCOMPARE(model().count(), all);
}

void tst_SettingListModel::headingsStartTheGroups()
{
    QVERIFY(read());
    QString group;
    for (int row = 0; row < model().count(); ++row) {
        const QString own = shown(row, "name").toString().section('.', 0, 0);
        QCOMPARE(shown(row, "heading").toString(), own == group ? QString() : own);
        group = own;
    }
    QCOMPARE(group, "capabilities");
}

void tst_SettingListModel::isReadOnlyWhileActive()
{
    QSignalSpy active(&model(), &SettingRows::activeChanged);
    QVERIFY(!model().findChild<QTimer *>()->isActive());
    QCoreApplication::processEvents();
    QCOMPARE(model().count(), 0);
    model().setActive(true);
    model().setActive(true);
    QTRY_VERIFY(model().count() > 35);
    QCOMPARE(model().findChild<QTimer *>()->interval(), 500);
    QVERIFY(model().findChild<QTimer *>()->isActive());
    model().setActive(false);
    QVERIFY(!model().findChild<QTimer *>()->isActive());
    QCOMPARE(active.size(), 2);
}

void tst_SettingListModel::changesAreMadeInOrder()
{
    QVERIFY(read());
    std::unique_lock lock(camera().mutex());
    const int row = rowOf("cooler.setpoint");
    QSignalSpy changed(&m_rig->settings(), &CameraSettings::changed);
    for (const char *value : {"70", "71", "72", "73"})
        model().enter(row, value);
    QCOMPARE(shown(row, "text").toString(), "73");
    lock.unlock();
    QTRY_COMPARE(changed.size(), 4);
    QCOMPARE(inCamera("cooler.setpoint").toInt(), 73);
    QCOMPARE(shown(row, "text").toString(), "73");
}

// The test fails by its time limit if the model waits for the lock.
void tst_SettingListModel::heldLockDoesNotBlock()
{
    QVERIFY(read());
    HeldLock lock(camera());
    model().setActive(true);
    m_rig->poll();
    model().enter(rowOf("cooler.setpoint"), "80");
    QCoreApplication::processEvents();
    QCOMPARE(shown("cooler.setpoint", "text").toString(), "80");
    lock.release();
    QTRY_COMPARE(inCamera("cooler.setpoint").toInt(), 80);
}

void tst_SettingListModel::anotherCameraIsShown()
{
    model().setActive(true);
    QTRY_VERIFY(rowOf("zoom.position") >= 0);
    QVERIFY(m_rig->unplug());
    m_rig->standalone().connect("bare");
    QTRY_VERIFY(m_rig->standalone().connected());
    QTRY_VERIFY(rowOf("sensor.window") >= 0);
    QCOMPARE(rowOf("zoom.position"), -1);
    QCOMPARE(sendAndAwait([this] { model().turn(rowOf("image.reverted"), true); }), "");
    QCOMPARE(inCamera("image.reverted"), true);
}

void tst_SettingListModel::resultsOfTheFormerCameraAreIgnored()
{
    QVERIFY(read());
    QVERIFY(m_rig->unplug());
    HeldLock lock(camera());
    model().setActive(true);
    QSignalSpy changed(&m_rig->standalone(), &StandaloneModel::cameraChanged);
    m_rig->standalone().connect("bare");
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(model().count(), 0);
    bool showedFormer = false;
    connect(&model(), &QAbstractItemModel::modelReset, &model(),
            [this, &showedFormer] { showedFormer = showedFormer || rowOf("zoom.position") >= 0; });
    lock.release();
    QTRY_VERIFY(model().count() > 0);
    QVERIFY(!showedFormer);
}

void tst_SettingListModel::mayBeDeletedWhileItReads()
{
    for (int time = 0; time < 20; ++time) {
        SettingListModel model(m_rig->standalone());
        model.setActive(true);
    }
    QThreadPool::globalInstance()->waitForDone();
}

ZVT_TEST(tst_SettingListModel)
#include "tst_SettingListModel.moc"
