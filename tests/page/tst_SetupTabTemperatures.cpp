#include "tests/page/TemperaturePage.h"
#include "tests/support/Test.h"

#include <QRandomGenerator>

/// The sections of the cooler and the flag on the Setup page: when they are shown, read and polled.
class tst_SetupTabTemperatures : public Test
{
    Q_OBJECT

private slots:
    void sectionsNeedTheirEquipment_data();
    void sectionsNeedTheirEquipment();
    void collapsedSectionsAreNotRead();
    void sectionReadsBeforeItOpens_data();
    void sectionReadsBeforeItOpens();
    void headerRefreshes_data();
    void headerRefreshes();
    void sectionOpenedElsewhereIsRead();
    void shownPageReadsOpenSectionsOnce();
    void sectionIsOffWithoutACamera_data();
    void sectionIsOffWithoutACamera();
    void pollsRunWhileTheSectionCanBeSeen_data();
    void pollsRunWhileTheSectionCanBeSeen();
    void hiddenTabKeepsTheSectionOpen();
    void pollsNeedTheEquipment_data();
    void pollsNeedTheEquipment();
    void disconnectionDuringARead();
    void nothingIsClipped_data();
    void nothingIsClipped();
    void pageOutlivesItsModel();
};

void tst_SetupTabTemperatures::sectionsNeedTheirEquipment_data()
{
    QTest::addColumn<bool>("cooler");
    QTest::addColumn<bool>("flag");
    QTest::newRow("everything") << true << true;
    QTest::newRow("te-cooler") << true << true;
    QTest::newRow("low-cost") << false << true;
    QTest::newRow("board-6") << false << true;
    QTest::newRow("bare") << false << false;
}

void tst_SetupTabTemperatures::sectionsNeedTheirEquipment()
{
    QFETCH(const bool, cooler);
    QFETCH(const bool, flag);
    const SetupPage page(QTest::currentDataTag());
    QCOMPARE(page.find(coolerSection) != nullptr, cooler);
    QCOMPARE(page.find(flagSection) != nullptr, flag);
}

void tst_SetupTabTemperatures::collapsedSectionsAreNotRead()
{
    SetupPage page;
    const size_t mark = page.rig().gate().mark();
    page.showTab(0);
    page.showTab(1);
    for (const char *call : {"zvtMfgGetCoolerSetpoint", "zvtGetFlagState", "zvtGetFlagTemperature"})
        QVERIFY2(!page.rig().callsSince(mark).contains(QLatin1String(call)), call);
}

void tst_SetupTabTemperatures::sectionReadsBeforeItOpens_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<bool>("byKeyboard");
    for (const QString &section : {coolerSection, flagSection})
        for (const bool byKeyboard : {false, true})
            QTest::addRow("%s by %s", qPrintable(section), byKeyboard ? "keyboard" : "mouse") << section << byKeyboard;
}

void tst_SetupTabTemperatures::sectionReadsBeforeItOpens()
{
    QFETCH(const QString, section);
    QFETCH(const bool, byKeyboard);
    SetupPage page;
    page.click("General Setup");
    const QString first = section == coolerSection ? "Cooler Enabled" : "State";
    const QString call = section == coolerSection ? "zvtMfgGetCoolerSetpoint" : "zvtGetFlagState";
    QVERIFY(!page.find(first));
    const size_t mark = page.rig().gate().mark();
    if (byKeyboard) {
        page.item(section).forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Space);
    } else {
        page.click(section);
    }
    page.settle();
    QVERIFY(page.enabled(first));
    // The body of the flag asks for a read too, which is dropped.
    QCOMPARE(page.rig().callsSince(mark).count(call), 1);
    page.click(section);
    page.settle();
    QVERIFY(!page.find(first));
    QCOMPARE(page.rig().callsSince(mark).count(call), 1);
}

void tst_SetupTabTemperatures::headerRefreshes_data()
{
    QTest::addColumn<QString>("call");
    QTest::newRow("Cooler Settings") << "zvtMfgGetCoolerSetpoint";
    QTest::newRow("Flag Settings") << "zvtGetFlagDesiredTemperature";
}

void tst_SetupTabTemperatures::headerRefreshes()
{
    QFETCH(const QString, call);
    const QString section = QTest::currentDataTag();
    TemperaturePage page(section);
    const size_t mark = page.gate().mark();
    page.click("Refresh " + section);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count(call), 1);
}

void tst_SetupTabTemperatures::sectionOpenedElsewhereIsRead()
{
    SetupPage page;
    const size_t mark = page.rig().gate().mark();
    page.tabModel("flagSettings")->setProperty("visible", true);
    page.settle();
    QVERIFY(page.enabled("State"));
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetFlagState"), 1);
    // Also when it is opened again.
    page.tabModel("flagSettings")->setProperty("visible", false);
    page.settle();
    page.tabModel("flagSettings")->setProperty("visible", true);
    page.settle();
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetFlagState"), 2);
}

void tst_SetupTabTemperatures::shownPageReadsOpenSectionsOnce()
{
    TemperaturePage page(flagSection);
    page.click(coolerSection);
    page.settle();
    page.showTab(0);
    const size_t mark = page.gate().mark();
    page.showTab(1);
    QCOMPARE(page.rig().callsSince(mark).count("zvtGetFlagState"), 1);
    QCOMPARE(page.rig().callsSince(mark).count("zvtMfgGetCoolerSetpoint"), 1);
}

void tst_SetupTabTemperatures::sectionIsOffWithoutACamera_data()
{
    QTest::addColumn<QString>("control");
    QTest::newRow("Cooler Settings") << "Cooler Enabled";
    QTest::newRow("Flag Settings") << "State";
}

void tst_SetupTabTemperatures::sectionIsOffWithoutACamera()
{
    QFETCH(const QString, control);
    TemperaturePage page(QTest::currentDataTag());
    QVERIFY(page.enabled(control));
    page.rig().camera().disconnect();
    page.settle();
    QVERIFY(!page.enabled(control));
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.enabled(control));
}

void tst_SetupTabTemperatures::pollsRunWhileTheSectionCanBeSeen_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 4; ++seed)
        QTest::addRow("%d", seed) << seed;
}

// The actions of an operator in any order. The model has tests of every short sequence.
void tst_SetupTabTemperatures::pollsRunWhileTheSectionCanBeSeen()
{
    QFETCH(const int, seed);
    TemperaturePage page(coolerSection);
    QRandomGenerator random(static_cast<quint32>(seed));
    bool shown = true;
    bool windowShown = true;
    bool connected = true;
    bool coolerOpen = true;
    bool flagOpen = false;
    for (int step = 0; step < 40; ++step) {
        const int action = random.bounded(5);
        if (action == 1) {
            windowShown = !windowShown;
            page.window().setVisible(windowShown);
        } else if (action == 2) {
            connected = !connected;
            connected ? page.rig().camera().connect() : page.rig().camera().disconnect();
        } else if (!windowShown) {
            continue; // The operator sees no window to click on.
        } else if (action == 0) {
            shown = !shown;
            page.showTab(shown ? 1 : 0);
        } else if (shown) {
            bool &open = random.bounded(2) ? coolerOpen : flagOpen;
            open = !open;
            page.click(&open == &coolerOpen ? coolerSection : flagSection);
        }
        CameraRig::settle();
        const bool live = shown && windowShown && connected;
        const auto polls = [&page](const QObject *model) {
            const size_t mark = page.gate().mark();
            auto *timer = model->findChild<QTimer *>("temperatureTimer");
            if (timer->isActive())
                QMetaObject::invokeMethod(timer, "timeout");
            CameraRig::settle();
            return page.rig().callsSince(mark).count("zvtGetFlagTemperature");
        };
        QCOMPARE(polls(page.cooler()), live && coolerOpen ? 1 : 0);
        QCOMPARE(polls(page.flag()), live && flagOpen ? 1 : 0);
    }
}

void tst_SetupTabTemperatures::hiddenTabKeepsTheSectionOpen()
{
    TemperaturePage page(flagSection);
    page.showTab(0);
    QVERIFY(page.flag()->property("visible").toBool());
    QCOMPARE(page.pollsOfASecond(page.flag()), 0);
    page.showTab(1);
    QVERIFY(page.find("State"));
    QCOMPARE(page.pollsOfASecond(page.flag()), 1);
}

void tst_SetupTabTemperatures::pollsNeedTheEquipment_data()
{
    QTest::addColumn<QString>("capability");
    QTest::newRow("Cooler Settings") << "hasTeCooler";
    QTest::newRow("Flag Settings") << "hasFlag";
}

// A change of the camera's make-up hides and shows the section, which stays expanded.
void tst_SetupTabTemperatures::pollsNeedTheEquipment()
{
    QFETCH(const QString, capability);
    const QString section = QTest::currentDataTag();
    TemperaturePage page(section);
    const QObject *model = section == coolerSection ? page.cooler() : page.flag();
    for (const bool present : {false, true}) {
        QVERIFY(page.rig().camera().changeMakeUp(capability, present));
        QMetaObject::invokeMethod(page.timer("eventQueueTimer"), "timeout");
        page.settle();
        QCOMPARE(page.find(section) != nullptr, present);
        QVERIFY(model->property("visible").toBool());
        QCOMPARE(page.pollsOfASecond(model), present ? 1 : 0);
    }
}

void tst_SetupTabTemperatures::disconnectionDuringARead()
{
    TemperaturePage page(flagSection);
    page.gate().hold("zvtGetFlagTemperature");
    QMetaObject::invokeMethod(page.flag(), "refresh");
    QVERIFY(page.gate().waitHeld("zvtGetFlagTemperature"));
    page.rig().camera().disconnect();
    page.gate().release("*");
    page.settle();
    QVERIFY(!page.flag()->property("refreshing").toBool());
    QVERIFY(!page.enabled("State"));
    page.rig().camera().connect();
    page.settle();
    QVERIFY(page.enabled("State") && page.enabled("Desired"));
}

void tst_SetupTabTemperatures::nothingIsClipped_data()
{
    QTest::addColumn<QString>("section");
    QTest::addColumn<int>("width");
    for (const QString &section : {coolerSection, flagSection})
        for (const int width : {640, 900})
            QTest::addRow("%s, %d", qPrintable(section), width) << section << width;
}

void tst_SetupTabTemperatures::nothingIsClipped()
{
    QFETCH(const QString, section);
    QFETCH(const int, width);
    TemperaturePage page(section);
    page.page()->setWidth(width);
    page.settle();
    const QQuickItem *body = &page.item(section == coolerSection ? "Cooler Enabled" : "State");
    while (!body->inherits("QQuickLoader"))
        body = body->parentItem();
    const QRectF place = body->mapRectToScene(body->boundingRect());
    QVERIFY(place.right() <= width);
    const QList<QQuickItem *> texts = PageDriver::shownTexts(*body);
    for (const QQuickItem *text : texts)
        QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
    QVERIFY(texts.size() > 5);
}

void tst_SetupTabTemperatures::pageOutlivesItsModel()
{
    TemperaturePage page(coolerSection);
    page.click(flagSection);
    page.settle();
    page.deleteModel();
    page.settle();
    QVERIFY(page.findText("No camera connected"));
    QVERIFY(!page.find(coolerSection) && !page.find(flagSection));
}

ZVT_TEST(tst_SetupTabTemperatures)
#include "tst_SetupTabTemperatures.moc"
