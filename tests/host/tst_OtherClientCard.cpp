#include "tests/host/SettingsRig.h"
#include "tests/support/Test.h"

/// The card "Other client", used by mouse and keyboard.
class tst_OtherClientCard : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_rig.reset(); }

    void isReadWhenItIsOpen();
    void flagByMouseAndKeyboard();
    void choiceByMouseAndKeyboard();
    void numberByKeyboard();
    void textAndListsByKeyboard();
    void capabilityByMouse();
    void refusalIsShownUntilEsc();
    void fieldFollowsAfterARefusal();
    void refusedFlagSnapsBack();
    void fieldBeingEditedIsNotOverwritten();
    void ownChangeOfTheCameraAppears();
    void filterField();

private:
    void open(const QString &filter);
    SettingListModel &model() { return *m_rig->desk().otherClient(); }
    emulator::Camera &camera() { return m_rig->camera(); }
    QVariant inCamera(const QString &name) { return m_rig->inCamera(name); }
    QVariant shown(int row, const QByteArray &role) { return m_rig->shown(row, role); }
    QVariant text(const QString &name) { return m_rig->property(name, "text"); }

    std::unique_ptr<SettingsRig> m_rig;
};

void tst_OtherClientCard::init()
{
    Test::init();
    m_rig = std::make_unique<SettingsRig>("everything", &Desk::otherClient);
}

void tst_OtherClientCard::open(const QString &filter)
{
    model().setFilter(filter);
    QCOMPARE(m_rig->show("OtherClientCard.qml", model()), QString());
    m_rig->click("Other client");
    QTRY_VERIFY(model().count() > 0);
}

void tst_OtherClientCard::isReadWhenItIsOpen()
{
    QCOMPARE(m_rig->show("OtherClientCard.qml", model()), QString());
    QVERIFY(!model().active());
    m_rig->click("Other client");
    QVERIFY(model().active());
    QTRY_VERIFY(m_rig->find("agc.method"));
    m_rig->card().setVisible(false);
    QVERIFY(!model().active());
    m_rig->card().setVisible(true);
    QVERIFY(model().active());
    m_rig->click("Other client");
    QVERIFY(!model().active());
}

void tst_OtherClientCard::flagByMouseAndKeyboard()
{
    open("image.");
    QTRY_VERIFY(m_rig->find("image.reverted"));
    m_rig->click("image.reverted");
    QTRY_VERIFY(inCamera("image.reverted").toBool());
    QTRY_VERIFY(m_rig->property("image.reverted", "checked").toBool());
    m_rig->find("image.reverted")->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Space);
    QTRY_VERIFY(!inCamera("image.reverted").toBool());
    QTRY_VERIFY(!m_rig->property("image.reverted", "checked").toBool());
}

void tst_OtherClientCard::choiceByMouseAndKeyboard()
{
    QVERIFY(camera().otherClient().set("autoFocus.regionSize", 64));
    open("autoFocus.regionSize");
    QTRY_VERIFY(m_rig->find("autoFocus.regionSize"));
    QCOMPARE(m_rig->property("autoFocus.regionSize", "currentText").toString(), "64");
    m_rig->click("autoFocus.regionSize");
    m_rig->press(Qt::Key_Down);
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("autoFocus.regionSize").toInt(), 128);
    QTRY_COMPARE(m_rig->property("autoFocus.regionSize", "currentText").toString(), "128");
    m_rig->press(Qt::Key_Up);
    QTRY_COMPARE(inCamera("autoFocus.regionSize").toInt(), 64);
}

void tst_OtherClientCard::numberByKeyboard()
{
    open("cooler.");
    QTRY_VERIFY(m_rig->find("cooler.setpoint"));
    m_rig->type("cooler.setpoint", "81.5");
    QVERIFY(inCamera("cooler.setpoint").toDouble() != 81.5);
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("cooler.setpoint").toDouble(), 81.5);
    m_rig->type("cooler.setpoint", "82.50");
    m_rig->press(Qt::Key_Tab);
    QTRY_COMPARE(inCamera("cooler.setpoint").toDouble(), 82.5);
    QTRY_COMPARE(text("cooler.setpoint").toString(), "82.5");
}

void tst_OtherClientCard::textAndListsByKeyboard()
{
    open("i");
    model().setFilter("identity.serial");
    QTRY_VERIFY(m_rig->find("identity.serial"));
    m_rig->type("identity.serial", "ZE-7");
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("identity.serial").toString(), "ZE-7");
    model().setFilter("filters.");
    QTRY_VERIFY(m_rig->find("filters.inserted"));
    m_rig->type("filters.inserted", "1, 2,3,4");
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("filters.inserted"), QVariant(QVariantList({1, 2, 3, 4})));
    QTRY_COMPARE(text("filters.inserted").toString(), "1, 2, 3, 4");
    m_rig->type("filters.names", R"("a, b", "c")");
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("filters.names").toList().value(0).toString(), "a, b");
}

void tst_OtherClientCard::capabilityByMouse()
{
    open("capabilities.hasL");
    QTRY_VERIFY(m_rig->find("capabilities.hasLensCover"));
    QVERIFY(m_rig->property("capabilities.hasLensCover", "checked").toBool());
    m_rig->click("capabilities.hasLensCover");
    QTRY_VERIFY(!inCamera("capabilities.hasLensCover").toBool());
    model().setFilter("numFPA");
    QTRY_VERIFY(m_rig->find("capabilities.numFPAGainLevels"));
    m_rig->type("capabilities.numFPAGainLevels", "2");
    m_rig->press(Qt::Key_Return);
    QTRY_COMPARE(inCamera("capabilities.numFPAGainLevels").toInt(), 2);
}

void tst_OtherClientCard::refusalIsShownUntilEsc()
{
    open("cooler.setpoint");
    QTRY_VERIFY(m_rig->find("cooler.setpoint"));
    const QVariant before = text("cooler.setpoint");
    m_rig->type("cooler.setpoint", "999");
    m_rig->press(Qt::Key_Return);
    QTRY_VERIFY(!shown(0, "refusal").toString().isEmpty());
    QCOMPARE(text("cooler.setpoint"), before);
    const QString reason = "Refused: " + shown(0, "refusal").toString();
    QTRY_VERIFY(m_rig->shows(reason));
    m_rig->press(Qt::Key_Escape);
    QVERIFY(!m_rig->shows(reason));
}

void tst_OtherClientCard::fieldFollowsAfterARefusal()
{
    open("cooler.setpoint");
    QTRY_VERIFY(m_rig->find("cooler.setpoint"));
    const QString before = text("cooler.setpoint").toString();
    m_rig->type("cooler.setpoint", "999");
    m_rig->press(Qt::Key_Return);
    QTRY_VERIFY(!shown(0, "refusal").toString().isEmpty());
    m_rig->type("cooler.setpoint", before);
    m_rig->press(Qt::Key_Return);
    QCOMPARE(shown(0, "refusal").toString(), "");
    QVERIFY(camera().otherClient().set("cooler.setpoint", 91));
    m_rig->poll();
    QTRY_COMPARE(text("cooler.setpoint").toString(), "91");
}

void tst_OtherClientCard::refusedFlagSnapsBack()
{
    open("athermalization.enabled");
    QTRY_VERIFY(m_rig->find("athermalization.enabled"));
    const bool before = inCamera("athermalization.enabled").toBool();
    model().findChild<QTimer *>()->stop(); // The switch would be disabled before the click.
    QVERIFY(camera().otherClient().set("athermalization.available", false));
    m_rig->click("athermalization.enabled");
    QTRY_VERIFY(m_rig->shows("Refused: cannot be changed now"));
    QCOMPARE(m_rig->property("athermalization.enabled", "checked").toBool(), before);
    QVERIFY(!m_rig->find("athermalization.enabled")->isEnabled());
}

void tst_OtherClientCard::fieldBeingEditedIsNotOverwritten()
{
    open("cooler.setpoint");
    QTRY_VERIFY(m_rig->find("cooler.setpoint"));
    m_rig->type("cooler.setpoint", "8");
    QVERIFY(camera().otherClient().set("cooler.setpoint", 90));
    m_rig->poll();
    QTRY_COMPARE(shown(0, "text").toString(), "90");
    QCOMPARE(text("cooler.setpoint").toString(), "8");
    m_rig->press(Qt::Key_Escape);
    QCOMPARE(text("cooler.setpoint").toString(), "90");
    QVERIFY(camera().otherClient().set("cooler.setpoint", 91));
    m_rig->poll();
    QTRY_COMPARE(text("cooler.setpoint").toString(), "91");
}

void tst_OtherClientCard::ownChangeOfTheCameraAppears()
{
    open("focus.position");
    QTRY_VERIFY(m_rig->find("focus.position"));
    const int before = text("focus.position").toInt();
    const int target = before > 1000 ? before - 1000 : before + 1000;
    m_rig->type("focus.position", QString::number(target));
    m_rig->press(Qt::Key_Return);
    emulator::Clock::advance(60'000);
    m_rig->poll();
    QTRY_COMPARE(text("focus.position").toInt(), target);
}

void tst_OtherClientCard::filterField()
{
    open("");
    m_rig->type("Filter of the settings", "REVERTED");
    QCOMPARE(model().count(), 1);
    QTRY_VERIFY(m_rig->find("image.reverted"));
}

ZVT_TEST(tst_OtherClientCard)
#include "tst_OtherClientCard.moc"
