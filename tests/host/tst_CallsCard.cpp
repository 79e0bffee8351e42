#include "platform/emulator/control.h"
#include "platform/hlxcamui/WidgetFileDialog.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/CallListModel.h"
#include "standalone/desk/FileSaver.h"
#include "tests/host/CardRig.h"
#include "tests/support/Test.h"

#include "zvt/zvtsdk.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFutureSynchronizer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <atomic>

using hlx::cam::ui::WidgetFileDialog;

/// Tests the list of calls and its card.
class tst_CallsCard : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsNothingWhileItIsClosed();
    void opensWithTheLastCallsOfTheLog();
    void newCallsComeFirst();
    void aCallIsShownOnce();
    void showsTimeThreadStatusAndDuration();
    void failedCallsShowTheirStatus();
    void rowsDoNotMove();
    void filters_data();
    void filters();
    void filterFindsCallsAmongManyOthers();
    void pauses();
    void clears();
    void followsTheCamera();
    void aStormIsShownInFewUpdates();
    void exports();
    void anExportThatFailsSaysWhy();
    void worksWhileTheCardIsOpen();
    void controlsWork_data();
    void controlsWork();
    void restsWhileItIsRead();

private:
    CallListModel &model() { return *m_rig->desk().calls(); }
    emulator::Gate &gate() { return m_rig->camera().gate(); }
    int readGain();
    int writeGain(uint8_t level);
    QStringList names();
    QString value(int row, CallListModel::Role role);
    void showCard();
    void use(const QString &name, bool byKeyboard);
    bool shows(const QString &text) { return m_rig->shows(text); }

    std::unique_ptr<CardRig> m_rig;
};

void tst_CallsCard::init()
{
    Test::init();
    m_rig = std::make_unique<CardRig>();
    m_rig->camera().connect();
    // The StandaloneModel asks the controller once more.
    QTRY_VERIFY(m_rig->standalone().connected());
}

void tst_CallsCard::cleanup() { m_rig.reset(); }

int tst_CallsCard::readGain()
{
    uint8_t level = 0;
    return zvtGetGainLevel(m_rig->camera().handle(), &level);
}

int tst_CallsCard::writeGain(uint8_t level) { return zvtSetGainLevel(m_rig->camera().handle(), level); }

/// The names and arguments of the shown calls, the newest first.
QStringList tst_CallsCard::names()
{
    QStringList list;
    for (int row = 0; row < model().count(); ++row)
        list << (value(row, CallListModel::NameRole) + ' ' + value(row, CallListModel::InputsRole)).trimmed();
    return list;
}

QString tst_CallsCard::value(int row, CallListModel::Role role)
{
    return model().data(model().index(row), role).toString();
}

void tst_CallsCard::showCard()
{
    QCOMPARE(m_rig->show("CallsCard.qml", model()), QString());
    m_rig->click("Calls");
    QTRY_VERIFY(model().active());
}

void tst_CallsCard::use(const QString &name, bool byKeyboard)
{
    if (byKeyboard) {
        m_rig->find(name)->forceActiveFocus(Qt::TabFocusReason);
        m_rig->press(Qt::Key_Space);
    } else {
        m_rig->click(name);
    }
}

void tst_CallsCard::showsNothingWhileItIsClosed()
{
    QSignalSpy changed(&model(), &CallListModel::countChanged);
    readGain();
    model().setFilter("zvt");
    QCoreApplication::processEvents();
    QCOMPARE(model().count(), 0);
    model().setActive(true);
    QCOMPARE(model().count(), 1);
    model().setActive(false);
    // Neither calls nor changes of the filter.
    readGain();
    model().setFilter({});
    QVERIFY(!model().findChild<QTimer *>()->isActive());
    QCoreApplication::processEvents();
    QVERIFY(!model().findChild<QTimer *>()->isActive());
    QCOMPARE(model().count(), 1);
    QCOMPARE(changed.size(), 1);
    model().setActive(true);
    QVERIFY(model().count() > 1);
}

void tst_CallsCard::opensWithTheLastCallsOfTheLog()
{
    for (int call = 0; call < 250; ++call)
        writeGain(static_cast<uint8_t>(call));
    model().setActive(true);
    QCOMPARE(model().count(), 200);
    QCOMPARE(names().first(), "zvtSetGainLevel 249");
    QCOMPARE(names().last(), "zvtSetGainLevel 50");
    QCOMPARE(value(0, CallListModel::TimeRole), QString());
}

void tst_CallsCard::newCallsComeFirst()
{
    writeGain(0);
    model().setActive(true);
    model().clear();
    writeGain(1);
    readGain();
    QTRY_COMPARE(names(), QStringList({"zvtGetGainLevel", "zvtSetGainLevel 1"}));
    writeGain(0);
    QTRY_COMPARE(names(), QStringList({"zvtSetGainLevel 0", "zvtGetGainLevel", "zvtSetGainLevel 1"}));
    for (int call = 0; call < 199; ++call)
        readGain();
    QTRY_COMPARE(names().last(), "zvtSetGainLevel 0");
    QCOMPARE(model().count(), 200);
}

void tst_CallsCard::aCallIsShownOnce()
{
    model().setActive(true);
    model().clear();
    readGain();
    // Reads the log while the call waits for the next update.
    model().setFilter("Gain");
    QCOMPARE(model().count(), 1);
    writeGain(0);
    QTRY_COMPARE(names(), QStringList({"zvtSetGainLevel 0", "zvtGetGainLevel"}));
}

void tst_CallsCard::showsTimeThreadStatusAndDuration()
{
    model().setActive(true);
    model().clear();
    readGain();
    const auto status = QtConcurrent::run([this] { return writeGain(1); });
    QTRY_COMPARE(model().count(), 2);
    QCOMPARE(value(0, CallListModel::NameRole), "zvtSetGainLevel");
    QCOMPARE(value(0, CallListModel::ThreadRole), "1");
    QCOMPARE(value(1, CallListModel::ThreadRole), "GUI");
    QCOMPARE(value(1, CallListModel::TimeRole),
             QDateTime::fromMSecsSinceEpoch(emulator::Clock::now()).toString("HH:mm:ss.zzz"));
    QCOMPARE(value(1, CallListModel::StatusRole), "OK");
    QVERIFY(!model().data(model().index(1), CallListModel::FailedRole).toBool());
    gate().delay(30);
    readGain();
    QTRY_COMPARE(model().count(), 3);
    const QString slow = value(0, CallListModel::DurationRole);
    QVERIFY2(slow.endsWith(" ms") && slow.chopped(3).toDouble() >= 30, qPrintable(slow));
}

void tst_CallsCard::failedCallsShowTheirStatus()
{
    model().setFilter("Gain");
    model().setActive(true);
    model().clear();
    writeGain(200);
    gate().failNext("zvtGetGainLevel");
    readGain();
    m_rig->camera().disconnect();
    readGain();
    QTRY_COMPARE(model().count(), 3);
    QStringList status;
    for (int row = 0; row < 3; ++row) {
        status << value(row, CallListModel::StatusRole);
        QVERIFY(model().data(model().index(row), CallListModel::FailedRole).toBool());
    }
    QCOMPARE(status, QStringList({"not connected", "failed", "refused"}));
}

void tst_CallsCard::rowsDoNotMove()
{
    model().setActive(true);
    QSignalSpy inserted(&model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model(), &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&model(), &QAbstractItemModel::modelReset);
    for (int round = 1; round <= 3; ++round) {
        const int before = model().count();
        for (int call = 0; call < 90; ++call)
            readGain();
        QTRY_COMPARE(inserted.size(), round);
        QCOMPARE(inserted.last().at(1).toInt(), before);
    }
    QCOMPARE(model().count(), 200);
    QCOMPARE(removed.size() + reset.size(), 0);
}

void tst_CallsCard::filters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("onlyFailed");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("all") << "" << false << QStringList{"zvtGetGainLevel", "zvtSetGainLevel 201", "zvtSetGainLevel 1"};
    QTest::newRow("name") << "set" << false << QStringList{"zvtSetGainLevel 201", "zvtSetGainLevel 1"};
    QTest::newRow("letters of either case") << "GETG" << false << QStringList{"zvtGetGainLevel"};
    QTest::newRow("arguments") << "201" << false << QStringList{"zvtSetGainLevel 201"};
    QTest::newRow("failed") << "" << true << QStringList{"zvtSetGainLevel 201"};
    QTest::newRow("both") << "get" << true << QStringList{};
}

void tst_CallsCard::filters()
{
    QFETCH(QString, filter);
    QFETCH(bool, onlyFailed);
    QFETCH(QStringList, expected);
    model().setFilter(filter);
    model().setOnlyFailed(onlyFailed);
    model().setActive(true);
    model().clear();
    const auto call = [this] {
        writeGain(1);
        writeGain(201);
        readGain();
    };
    call();
    if (!expected.isEmpty())
        QTRY_COMPARE(names(), expected);
    model().setActive(false);
    // From the log.
    model().setActive(true);
    QStringList shown = names();
    shown.removeIf([](const QString &name) { return !name.contains("Gain"); });
    QCOMPARE(shown, expected);
    // A change of the filter while it is shown.
    model().setFilter("zvtGetGain");
    model().setOnlyFailed(false);
    QCOMPARE(names(), QStringList{"zvtGetGainLevel"});
}

void tst_CallsCard::filterFindsCallsAmongManyOthers()
{
    writeGain(201);
    for (int call = 0; call < 1'000; ++call)
        readGain();
    model().setOnlyFailed(true);
    model().setActive(true);
    QVERIFY(names().contains("zvtSetGainLevel 201"));
    writeGain(202);
    for (int call = 0; call < 1'000; ++call)
        readGain();
    QTRY_VERIFY(names().contains("zvtSetGainLevel 202"));
}

void tst_CallsCard::pauses()
{
    model().setActive(true);
    model().clear();
    model().setPaused(true);
    readGain();
    QTRY_COMPARE(model().waiting(), 1);
    QCOMPARE(model().count(), 0);
    for (int call = 0; call < 300; ++call)
        writeGain(1);
    QTRY_COMPARE(model().waiting(), 200);
    QSignalSpy inserted(&model(), &QAbstractItemModel::rowsInserted);
    model().setPaused(false);
    QCOMPARE(model().waiting(), 0);
    QCOMPARE(model().count(), 200);
    QCOMPARE(inserted.size(), 1);
    model().setPaused(true);
    readGain();
    QTRY_COMPARE(model().waiting(), 1);
    model().clear();
    QCOMPARE(model().waiting() + model().count(), 0);
}

void tst_CallsCard::clears()
{
    readGain();
    model().setActive(true);
    QVERIFY(model().count() > 0);
    readGain();
    model().clear();
    QCOMPARE(model().count(), 0);
    writeGain(1);
    QTRY_COMPARE(names(), QStringList{"zvtSetGainLevel 1"});
    QVERIFY(gate().calls().size() > 1);
}

void tst_CallsCard::followsTheCamera()
{
    const auto former = m_rig->camera().shared_from_this();
    model().setActive(true);
    m_rig->camera().disconnect();
    QTRY_VERIFY(!m_rig->standalone().connected());
    m_rig->standalone().connect("bare");
    QTRY_VERIFY(m_rig->standalone().connected());
    QVERIFY(&m_rig->camera() != former.get());
    QTRY_VERIFY(names().contains("controller.Connect"));
    model().clear();
    uint8_t level = 0;
    zvtGetGainLevel(former->handle(), &level);
    writeGain(7);
    QTRY_VERIFY(names().contains("zvtSetGainLevel 7"));
    QVERIFY(!names().contains("zvtGetGainLevel"));
}

void tst_CallsCard::aStormIsShownInFewUpdates()
{
    model().setActive(true);
    model().clear();
    QSignalSpy inserted(&model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy updates(&model(), &QAbstractItemModel::dataChanged);
    QElapsedTimer time;
    time.start();
    std::atomic<bool> ends = false;
    std::atomic<int> calls = 0;
    const auto storm = [&] {
        uint8_t level = 0;
        while (!ends) {
            zvtGetGainLevel(m_rig->camera().handle(), &level);
            ++calls;
        }
    };
    QFutureSynchronizer<void> threads;
    for (int thread = 0; thread < 2; ++thread)
        threads.addFuture(QtConcurrent::run(storm));
    // Before the threads are waited for, also after a failure.
    const auto end = qScopeGuard([&] { ends = true; });
    QTRY_VERIFY_WITH_TIMEOUT(calls > 20'000 && updates.size() > 1, 60'000);
    QVERIFY2(updates.size() <= time.elapsed() / CallListModel::updateInterval,
             qPrintable(QString::number(updates.size())));
    QCOMPARE(model().count(), 200);
    QVERIFY(inserted.last().at(2).toInt() < 200);
}

void tst_CallsCard::exports()
{
    const QTemporaryDir folder;
    model().setActive(true);
    model().clear();
    const QFuture<int> other = QtConcurrent::run([this] { return writeGain(201); });
    QTRY_COMPARE(model().count(), 1);
    readGain();
    QTRY_COMPARE(model().count(), 2);
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(folder.filePath("calls.jsonl")));
    model().exportCalls();
    QTRY_VERIFY(!model().saver()->result().isEmpty());
    QVERIFY2(!model().saver()->failed(), qPrintable(model().saver()->result()));
    QFile file(folder.filePath("calls.jsonl"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.last(), QByteArray());
    const QJsonObject oldest = QJsonDocument::fromJson(lines.at(0)).object();
    QCOMPARE(oldest["name"].toString(), "zvtSetGainLevel");
    QCOMPARE(oldest["arguments"].toString(), "201");
    QCOMPARE(oldest["thread"].toInt(), 1);
    QCOMPARE(oldest["status"].toInt(), int{emulator::Refused});
    QCOMPARE(oldest["time"].toInteger(), qint64{emulator::Clock::now()});
    QVERIFY(oldest.contains("duration") && !oldest.contains("results"));
    const QJsonObject newest = QJsonDocument::fromJson(lines.at(1)).object();
    QCOMPARE(newest["name"].toString(), "zvtGetGainLevel");
    QCOMPARE(newest["number"].toInteger(), oldest["number"].toInteger() + 1);
}

void tst_CallsCard::anExportThatFailsSaysWhy()
{
    readGain();
    model().setActive(true);
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile("/nowhere/calls.jsonl"));
    model().exportCalls();
    QTRY_VERIFY(model().saver()->failed());
    QVERIFY2(model().saver()->result().startsWith("/nowhere/calls.jsonl cannot be written: "),
             qPrintable(model().saver()->result()));
}

void tst_CallsCard::worksWhileTheCardIsOpen()
{
    showCard();
    QVERIFY(model().active());
    m_rig->click("Calls");
    QTRY_VERIFY(!model().active());
    m_rig->click("Calls");
    QTRY_VERIFY(model().active());
    m_rig->card().setVisible(false);
    QTRY_VERIFY(!model().active());
    m_rig->card().setVisible(true);
    QTRY_VERIFY(model().active());
}

void tst_CallsCard::controlsWork_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("mouse") << false;
    QTest::newRow("keyboard") << true;
}

void tst_CallsCard::controlsWork()
{
    QFETCH(bool, byKeyboard);
    const QTemporaryDir folder;
    showCard();
    use("Clear", byKeyboard);
    QVERIFY(shows("No calls"));
    QVERIFY(!m_rig->property("Export...", "enabled").toBool());
    writeGain(201);
    readGain();
    QTRY_VERIFY(shows("zvtGetGainLevel"));
    QVERIFY(shows("201"));
    QVERIFY(shows("refused"));
    use("Only failed calls", byKeyboard);
    QTRY_VERIFY(!shows("zvtGetGainLevel"));
    QVERIFY(shows("zvtSetGainLevel"));
    use("Only failed calls", byKeyboard);
    QTRY_VERIFY(shows("zvtGetGainLevel"));
    m_rig->type("Filter by name or arguments", "nothing");
    QTRY_VERIFY(shows("No such calls"));
    m_rig->type("Filter by name or arguments", "gainlevel");
    QTRY_VERIFY(shows("zvtGetGainLevel"));
    use("Pause", byKeyboard);
    QVERIFY(model().paused());
    writeGain(1);
    QTRY_VERIFY(shows("Paused: 1 new call(s)"));
    use("Pause", byKeyboard);
    QTRY_VERIFY(shows("1"));
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(folder.filePath("calls.jsonl")));
    use("Export...", byKeyboard);
    QTRY_VERIFY(QFile::exists(folder.filePath("calls.jsonl")));
    QTRY_VERIFY(shows(model().saver()->result()));
}

void tst_CallsCard::restsWhileItIsRead()
{
    for (int call = 0; call < 100; ++call)
        readGain();
    showCard();
    QQuickItem *list = m_rig->find("Calls list");
    QVERIFY(list);
    QVERIFY(!model().paused());
    QTest::mouseMove(&m_rig->window(), list->mapToScene({100, 100}).toPoint());
    QTRY_VERIFY(model().paused());
    QTest::mouseMove(&m_rig->window(), {10, 10});
    QTRY_VERIFY(!model().paused());
    list->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Down);
    QTRY_VERIFY(model().paused());
    writeGain(1);
    QTRY_COMPARE(model().waiting(), 1);
    const double place = list->property("contentY").toDouble();
    QVERIFY(place > 0);
    m_rig->press(Qt::Key_Up);
    QTRY_VERIFY(!model().paused());
    QTRY_VERIFY(shows("zvtSetGainLevel"));
    QCOMPARE(list->property("contentY").toDouble(), 0);
}

ZVT_TEST(tst_CallsCard)
#include "tst_CallsCard.moc"
