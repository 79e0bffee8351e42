#include "platform/emulator/control.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/Faults.h"
#include "standalone/desk/LineModel.h"
#include "tests/host/CardRig.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

#include <QSemaphore>
#include <QSignalSpy>
#include <QtConcurrent>

/// Tests the faults of the line and their card.
class tst_LineCard : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fieldsAreSentToTheGate_data();
    void fieldsAreSentToTheGate();
    void badTextsAreRefused_data();
    void badTextsAreRefused();
    void anotherSeedFailsOtherCalls();
    void changesAreRefused_data();
    void changesAreRefused();
    void theRefusalEndsAlone();
    void theNextCallFails_data();
    void theNextCallFails();
    void badNamesAreRefused();
    void namesOfTheLogAreOffered();
    void namesAreChosenByKeyboard();
    void callsAreHeldAndReleased();
    void anotherHoldReleasesTheFirst();
    void theCableIsPulledAndPlugged_data();
    void theCableIsPulledAndPlugged();
    void aPulledCableOfADisconnectedCamera();
    void theCableRestsWhileTheCameraConnects();
    void theCableMayMoveForLong();
    void clearingPlugsInACableThatIsBeingPulled();
    void followsTheCamera();
    void clearsEverything();
    void faultsAreListed();
    void looksAtTheGateOnlyForWhatChangesByItself();

private:
    LineModel &model() { return *m_rig->desk().line(); }
    emulator::Gate &gate() { return m_rig->camera().gate(); }
    QStringList requests();
    void showCard();
    void use(const QString &name, bool byKeyboard);
    void enter(const QString &name, const QString &text);
    bool shows(const QString &text) { return m_rig->shows(text); }
    int readGain();
    int writeGain();
    bool connectCamera(const QString &key);

    std::unique_ptr<CardRig> m_rig;
};

void tst_LineCard::init()
{
    Test::init();
    m_rig = std::make_unique<CardRig>();
}

void tst_LineCard::cleanup()
{
    model().clear();
    m_rig.reset();
}

QStringList tst_LineCard::requests()
{
    QStringList lines;
    for (const std::string &line : gate().requests())
        lines << QString::fromStdString(line);
    return lines;
}

void tst_LineCard::showCard()
{
    QCOMPARE(m_rig->show("LineCard.qml", model()), QString());
    m_rig->click("Line");
    QVERIFY(m_rig->find("Latency"));
}

void tst_LineCard::use(const QString &name, bool byKeyboard)
{
    if (byKeyboard) {
        m_rig->find(name)->forceActiveFocus(Qt::TabFocusReason);
        m_rig->press(Qt::Key_Space);
    } else {
        m_rig->click(name);
    }
}

/// Replaces the text of a field, and presses Return.
void tst_LineCard::enter(const QString &name, const QString &text)
{
    m_rig->type(name, text);
    m_rig->press(Qt::Key_Return);
}

int tst_LineCard::readGain()
{
    uint8_t level = 0;
    return zvtGetGainLevel(m_rig->camera().handle(), &level);
}

int tst_LineCard::writeGain() { return zvtSetGainLevel(m_rig->camera().handle(), 0); }

bool tst_LineCard::connectCamera(const QString &key)
{
    StandaloneModel &standalone = m_rig->standalone();
    standalone.connect(key);
    return QTest::qWaitFor([&] { return !standalone.connecting(); }) && standalone.connected();
}

void tst_LineCard::fieldsAreSentToTheGate_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("latency") << "Latency"
                             << "2000" << QStringList{"Each call takes 2000 ms longer"};
    QTest::newRow("jitter") << "Jitter"
                            << " 20 " << QStringList{"Each call takes 0 to 20 ms longer"};
    QTest::newRow("failures") << "Failing calls"
                              << "12.5" << QStringList{"Each call fails with the probability 0.125"};
    // A hundredth of these times 100 is not the same number.
    for (const int percent : {7, 29})
        QTest::addRow("%d %% fail", percent)
            << "Failing calls" << QString::number(percent)
            << QStringList{QStringLiteral("Each call fails with the probability %1").arg(percent / 100.0)};
    QTest::newRow("all fail") << "Failing calls"
                              << "100" << QStringList{"Each call fails with the probability 1"};
    QTest::newRow("seed") << "Seed of failures"
                          << "4294967295" << QStringList{};
}

void tst_LineCard::fieldsAreSentToTheGate()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    showCard();
    enter(field, text);
    QCOMPARE(requests(), expected);
    QCOMPARE(m_rig->desk().faults()->texts(), expected);
    QCOMPARE(m_rig->property(field, "text").toString(), text.trimmed());
    enter(field, "0");
    QCOMPARE(requests(), QStringList());
    QVERIFY(!m_rig->desk().faults()->active());
}

void tst_LineCard::badTextsAreRefused_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("reason");
    const QString milliseconds = QStringLiteral("Enter a whole number from 0 to 2000.");
    for (const char *field : {"Latency", "Jitter"})
        for (const char *text : {"-1", "2001", "1.5", "ten", ""})
            QTest::addRow("%s \"%s\"", field, text) << field << text << milliseconds;
    for (const char *text : {"-0.1", "100.5", "nan", "inf", "5 %", ""})
        QTest::addRow("failures \"%s\"", text) << "Failing calls" << text << "Enter a number from 0 to 100.";
    for (const char *text : {"-1", "4294967296", "x", ""})
        QTest::addRow("seed \"%s\"", text)
            << "Seed of failures" << text << "Enter a whole number from 0 to 4294967295.";
}

void tst_LineCard::badTextsAreRefused()
{
    QFETCH(QString, field);
    QFETCH(QString, text);
    QFETCH(QString, reason);
    showCard();
    const QString before = m_rig->property(field, "text").toString();
    enter(field, text.isEmpty() ? QStringLiteral(" ") : text);
    QCOMPARE(requests(), QStringList());
    QVERIFY(shows(reason));
    m_rig->press(Qt::Key_Escape);
    QVERIFY(!shows(reason));
    QCOMPARE(m_rig->property(field, "text").toString(), before);
}

void tst_LineCard::anotherSeedFailsOtherCalls()
{
    m_rig->camera().connect();
    const auto outcome = [this] {
        QString text;
        for (int call = 0; call < 40; ++call)
            text += readGain() == emulator::Ok ? '.' : 'x';
        return text;
    };
    QCOMPARE(model().enterFailPercent("50"), QString());
    const QString first = outcome();
    QVERIFY(first.contains('.'));
    QVERIFY(first.contains('x'));
    QCOMPARE(model().enterSeed("2"), QString());
    QVERIFY(outcome() != first);
    QCOMPARE(model().enterSeed("1"), QString());
    QCOMPARE(outcome(), first);
}

void tst_LineCard::changesAreRefused_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_LineCard::changesAreRefused()
{
    QFETCH(bool, byKeyboard);
    m_rig->camera().connect();
    showCard();
    use("Refuse all changes", byKeyboard);
    QVERIFY(m_rig->property("Refuse all changes", "checked").toBool());
    QCOMPARE(writeGain(), int{emulator::Injected});
    QCOMPARE(readGain(), int{emulator::Ok});
    m_rig->standalone().controller()->SetWindow(0, 0, 64, 64);
    QCOMPARE(gate().calls().back().status, int{emulator::Injected});
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList{"All changes are refused"});
    use("Refuse all changes", byKeyboard);
    QCOMPARE(writeGain(), int{emulator::Ok});
    QVERIFY(!m_rig->desk().faults()->active());
}

void tst_LineCard::theRefusalEndsAlone()
{
    QCOMPARE(model().enterFailPercent("50"), QString());
    QCOMPARE(model().enterFailNext("zvtSetGainLevel"), QString());
    const QStringList before = requests();
    model().setRefusesChanges(true);
    model().setRefusesChanges(false);
    QCOMPARE(requests(), before);
}

void tst_LineCard::theNextCallFails_data() { changesAreRefused_data(); }

void tst_LineCard::theNextCallFails()
{
    QFETCH(bool, byKeyboard);
    m_rig->camera().connect();
    showCard();
    m_rig->type("Calls named", "zvtGet*");
    use("Fail next", byKeyboard);
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList{"The next call of zvtGet* fails"});
    QCOMPARE(writeGain(), int{emulator::Ok});
    QCOMPARE(readGain(), int{emulator::Injected});
    QCOMPARE(readGain(), int{emulator::Ok});
    QTRY_VERIFY(!m_rig->desk().faults()->active());
}

void tst_LineCard::badNamesAreRefused()
{
    showCard();
    const QMap<QString, QString> reasons{
        {"", "Enter the name of a call."},
        {"a b", "Enter the name of a call, or its beginning and a \"*\"."},
        {"zvt*Level", "Enter the name of a call, or its beginning and a \"*\"."},
    };
    for (auto [text, reason] : reasons.asKeyValueRange()) {
        for (const char *button : {"Fail next", "Hold"}) {
            m_rig->type("Calls named", "x");
            m_rig->press(Qt::Key_Backspace);
            for (const QChar character : text)
                QTest::keyClick(&m_rig->window(), character.toLatin1());
            QVERIFY(!shows(reason));
            m_rig->click(button);
            QVERIFY2(shows(reason), qPrintable(text));
            QCOMPARE(requests(), QStringList());
        }
    }
}

void tst_LineCard::namesOfTheLogAreOffered()
{
    m_rig->camera().connect();
    showCard();
    QVERIFY(!model().names().contains("zvtGetGainLevel"));
    readGain();
    m_rig->type("Calls named", "zvtX");
    QQuickItem *box = m_rig->find("Calls named");
    const QPointF arrow = box->mapToScene({box->width() - 8, box->height() / 2});
    QTest::mouseClick(&m_rig->window(), Qt::LeftButton, Qt::NoModifier, arrow.toPoint());
    QTRY_VERIFY(box->property("popup").value<QObject *>()->property("opened").toBool());
    QCOMPARE(box->property("editText").toString(), "zvtX");
    QCOMPARE(model().names().first(), "*");
    QVERIFY(model().names().contains("zvtGetGainLevel"));
    m_rig->press(Qt::Key_Down);
    m_rig->press(Qt::Key_Return);
    QTRY_VERIFY(model().names().contains(box->property("editText").toString()));
}

void tst_LineCard::namesAreChosenByKeyboard()
{
    m_rig->camera().connect();
    showCard();
    readGain();
    QQuickItem *box = m_rig->find("Calls named");
    box->forceActiveFocus(Qt::TabFocusReason);
    QVERIFY(model().names().contains("zvtGetGainLevel"));
    while (box->property("editText").toString() != model().names().last())
        m_rig->press(Qt::Key_Down);
    use("Hold", true);
    QCOMPARE(model().held(), model().names().last());
}

void tst_LineCard::callsAreHeldAndReleased()
{
    m_rig->camera().connect();
    showCard();
    QVERIFY(!m_rig->property("Release", "enabled").toBool());
    m_rig->type("Calls named", "zvtGet*");
    m_rig->click("Hold");
    QCOMPARE(model().held(), "zvtGet*");
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList{"Calls of zvtGet* are held"});
    const QFuture<int> read = QtConcurrent::run([this] { return readGain(); });
    QVERIFY(gate().waitHeld("zvtGetGainLevel"));
    QTRY_COMPARE(model().heldCalls(), 1);
    QVERIFY(shows("Holds zvtGet*: 1 call(s) wait"));
    QVERIFY(!read.isFinished());
    use("Release", true);
    QTRY_VERIFY(read.isFinished());
    QCOMPARE(read.result(), int{emulator::Ok});
    QCOMPARE(model().heldCalls(), 0);
    QCOMPARE(requests(), QStringList());
}

void tst_LineCard::anotherHoldReleasesTheFirst()
{
    m_rig->camera().connect();
    QCOMPARE(model().enterHold("zvtGetGainLevel"), QString());
    const QFuture<int> read = QtConcurrent::run([this] { return readGain(); });
    QVERIFY(gate().waitHeld("zvtGetGainLevel"));
    QCOMPARE(model().enterHold("zvtSet*"), QString());
    QTRY_VERIFY(read.isFinished());
    QCOMPARE(requests(), QStringList{"Calls of zvtSet* are held"});
}

void tst_LineCard::theCableIsPulledAndPlugged_data() { changesAreRefused_data(); }

void tst_LineCard::theCableIsPulledAndPlugged()
{
    QFETCH(bool, byKeyboard);
    StandaloneModel &standalone = m_rig->standalone();
    QVERIFY(connectCamera("everything"));
    showCard();
    use("Pull the cable", byKeyboard);
    QTRY_VERIFY(!standalone.connected());
    QVERIFY(!standalone.disconnecting());
    QVERIFY(!m_rig->camera().connected());
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList{"The cable is pulled"});
    QVERIFY(!connectCamera("everything"));
    QCOMPARE(standalone.connectError(), "The camera does not answer.");
    QTRY_VERIFY(m_rig->property("Plug in the cable", "enabled").toBool());
    use("Plug in the cable", byKeyboard);
    QTRY_VERIFY(standalone.connected());
    QVERIFY(!m_rig->desk().faults()->active());
}

void tst_LineCard::aPulledCableOfADisconnectedCamera()
{
    model().pull();
    QTRY_VERIFY(model().canMoveCable());
    QVERIFY(!connectCamera("everything"));
    model().plug();
    QTRY_VERIFY(model().canMoveCable());
    QVERIFY(!m_rig->camera().connected());
    QVERIFY(connectCamera("everything"));
}

void tst_LineCard::theCableRestsWhileTheCameraConnects()
{
    showCard();
    gate().hold("controller.Connect");
    m_rig->standalone().connect("everything");
    QVERIFY(gate().waitHeld("controller.Connect"));
    QVERIFY(!m_rig->property("Pull the cable", "enabled").toBool());
    model().pull();
    QVERIFY(!model().pulled());
    gate().release("*");
    QTRY_VERIFY(m_rig->standalone().connected());
    QVERIFY(m_rig->property("Pull the cable", "enabled").toBool());
    m_rig->standalone().disconnect();
    QVERIFY(!model().canMoveCable());
    QTRY_VERIFY(model().canMoveCable());
}

void tst_LineCard::theCableMayMoveForLong()
{
    QVERIFY(connectCamera("everything"));
    QSemaphore answers;
    const int listener = m_rig->camera().onConnectionChanged([&answers] { answers.acquire(); });
    model().pull();
    QVERIFY(!model().canMoveCable());
    QTRY_VERIFY(!m_rig->standalone().connected());
    model().plug();
    QVERIFY(model().pulled());
    QVERIFY(!model().canMoveCable());
    answers.release(2);
    QTRY_VERIFY(model().canMoveCable());
    model().plug();
    QTRY_VERIFY(m_rig->standalone().connected());
    QTRY_VERIFY(model().canMoveCable());
    m_rig->camera().removeListener(listener);
}

void tst_LineCard::clearingPlugsInACableThatIsBeingPulled()
{
    QVERIFY(connectCamera("everything"));
    model().pull();
    QVERIFY(!model().canMoveCable());
    m_rig->desk().faults()->clearAll();
    QVERIFY(!model().pulled());
    QTRY_VERIFY(model().canMoveCable());
    QTRY_VERIFY(m_rig->camera().connected());
}

void tst_LineCard::followsTheCamera()
{
    QCOMPARE(model().enterLatency("1"), QString());
    QCOMPARE(model().enterFailNext("zvtGetGainLevel"), QString());
    model().setRefusesChanges(true);
    const auto former = m_rig->camera().shared_from_this();
    QVERIFY(connectCamera("bare"));
    QVERIFY(&m_rig->camera() != former.get());
    QVERIFY(former->gate().requests().empty());
    QVERIFY(requests().contains("Each call takes 1 ms longer"));
    QCOMPARE(writeGain(), int{emulator::Injected});
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList({"All changes are refused", "Each call takes 1 ms longer"}));
}

void tst_LineCard::clearsEverything()
{
    QVERIFY(connectCamera("everything"));
    showCard();
    for (const char *field : {"Latency", "Jitter", "Failing calls"})
        enter(field, "1");
    model().setRefusesChanges(true);
    QCOMPARE(model().enterFailNext("x"), QString());
    QCOMPARE(model().enterHold("y"), QString());
    gate().fillBuffers(true);
    model().pull();
    QTRY_VERIFY(!m_rig->standalone().connected());
    m_rig->desk().faults()->clearAll();
    QCOMPARE(requests(), QStringList());
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList());
    QTRY_VERIFY(m_rig->standalone().connected());
    for (const char *field : {"Latency", "Jitter", "Failing calls"})
        QCOMPARE(m_rig->property(field, "text").toString(), "0");
    QVERIFY(!m_rig->property("Refuse all changes", "checked").toBool());
    QCOMPARE(m_rig->standalone().line().latency, 0);
}

void tst_LineCard::faultsAreListed()
{
    QSignalSpy changed(m_rig->desk().faults(), &Faults::changed);
    QCOMPARE(model().enterLatency("200"), QString());
    QCOMPARE(model().enterJitter("50"), QString());
    QCOMPARE(changed.size(), 2);
    QCOMPARE(m_rig->desk().faults()->texts(), QStringList{"Each call takes 200 to 250 ms longer"});
    // Also a request that another part of the program has made.
    gate().script("zvtGetGainLevel", 1);
    showCard();
    QCOMPARE(m_rig->desk().faults()->texts().size(), 2);
}

void tst_LineCard::looksAtTheGateOnlyForWhatChangesByItself()
{
    const auto *watch = model().findChild<QTimer *>();
    QCOMPARE(model().enterLatency("5"), QString());
    QCOMPARE(model().enterHold("zvtGet*"), QString());
    QVERIFY(!watch->isActive());
    showCard();
    QVERIFY(watch->isActive());
    m_rig->click("Line");
    QVERIFY(!watch->isActive());
    // The label "faults on" ends with the failure, also while the card is closed.
    QCOMPARE(model().enterFailNext("controller.Connect"), QString());
    QVERIFY(watch->isActive());
    QVERIFY(!connectCamera("everything"));
    QTRY_VERIFY(!watch->isActive());
    QCOMPARE(m_rig->desk().faults()->texts(),
             QStringList({"Each call takes 5 ms longer", "Calls of zvtGet* are held"}));
    model().release();
    showCard();
    QVERIFY(!watch->isActive());
}

ZVT_TEST(tst_LineCard)
#include "tst_LineCard.moc"
