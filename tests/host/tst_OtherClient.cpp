#include "platform/emulator/control.h"
#include "standalone/OtherClient.h"
#include "standalone/StandaloneModel.h"
#include "tests/support/Test.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <array>
#include <memory>

#include <unistd.h>

#include "zvt/zvtsdk.h"

class tst_OtherClient : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void settingsAreChanged_data();
    void settingsAreChanged();
    void capabilitiesAreChanged();
    void badLinesAreTold_data();
    void badLinesAreTold();
    void linesAreTakenAsTheyCome();

private:
    emulator::Camera &camera() { return m_model->camera(); }
    zvtEEventType nextEvent()
    {
        zvtEEventType type = ZVT_EVENT_NONE;
        zvtReadEventQueue(camera().handle(), &type);
        return type;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<StandaloneModel> m_model;
};

void tst_OtherClient::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_model
        = std::make_unique<StandaloneModel>(QStringLiteral("everything"), m_folder->path(), StandaloneModel::Line{});
    camera().connect();
}

void tst_OtherClient::cleanup()
{
    m_model.reset();
    m_folder.reset();
}

void tst_OtherClient::settingsAreChanged_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("number") << "sensor.activePreset 2";
    QTest::newRow("truth") << "image.reverted true";
    QTest::newRow("room around it") << "sensor.activePreset   3 ";
    QTest::newRow("text") << "states.current Hard Defaults";
}

void tst_OtherClient::settingsAreChanged()
{
    QFETCH(const QString, line);
    QCOMPARE(OtherClient::apply(camera(), line), QString());
    QCOMPARE(nextEvent(), ZVT_EVENT_SETTINGS_CHANGED);
}

void tst_OtherClient::capabilitiesAreChanged()
{
    QVERIFY(camera().capabilities().value("hasLensCover").toBool());
    QCOMPARE(OtherClient::apply(camera(), "capabilities.hasLensCover false"), QString());
    QVERIFY(!camera().capabilities().value("hasLensCover").toBool());
    QCOMPARE(nextEvent(), ZVT_EVENT_MAKE_UP_CHANGED);
}

void tst_OtherClient::badLinesAreTold_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("fault");
    QTest::newRow("no value") << "focus.position"
                              << "a line holds a setting and its value";
    QTest::newRow("unknown device") << "engine.power 3"
                                    << "engine.power: there is no such setting";
    QTest::newRow("unknown setting") << "focus.colour 3"
                                     << "focus.colour: there is no such setting";
    QTest::newRow("unknown capability") << "capabilities.flies true"
                                        << "capabilities.flies: there is no such setting";
    QTest::newRow("refused value") << "sensor.activePreset 9"
                                   << "sensor.activePreset: must lie between 0 and 3";
    QTest::newRow("value of another kind") << "sensor.activePreset [1"
                                           << "sensor.activePreset: must be a number";
}

void tst_OtherClient::badLinesAreTold()
{
    QFETCH(const QString, line);
    QFETCH(const QString, fault);
    const QString told = OtherClient::apply(camera(), line);
    QVERIFY2(told.contains(fault), qPrintable(told));
    QCOMPARE(nextEvent(), ZVT_EVENT_NONE);
}

// Lines may arrive in pieces of any size, until the writer closes its end.
void tst_OtherClient::linesAreTakenAsTheyCome()
{
    std::array<int, 2> ends{};
    QCOMPARE(::pipe(ends.data()), 0);
    const OtherClient client(*m_model, ends[0]);
    QSignalSpy changed(&client, &OtherClient::changed);
    const auto write = [&](const QByteArray &text) {
        return ::write(ends[1], text.constData(), static_cast<size_t>(text.size())) == text.size();
    };
    const auto activePreset = [this] {
        uint8_t preset = 0;
        zvtGetActivePreset(camera().handle(), &preset);
        return int(preset);
    };
    QVERIFY(write("sensor.activePre"));
    QCoreApplication::processEvents();
    QVERIFY(write("set 2\n\nimage.reverted true\nsensor."));
    QTRY_COMPARE(activePreset(), 2);
    QCOMPARE(changed.size(), 2);
    QVERIFY(write("activePreset 3\n"));
    QTRY_COMPARE(activePreset(), 3);
    bool reverted = false;
    zvtGetRevertEnabled(camera().handle(), &reverted);
    QVERIFY(reverted);
    QCOMPARE(changed.size(), 3);
    // A last line without a line end is ignored.
    QVERIFY(write("sensor.activePreset 1"));
    ::close(ends[1]);
    const auto *notifier = client.findChild<QSocketNotifier *>();
    QTRY_VERIFY(!notifier->isEnabled());
    QCOMPARE(activePreset(), 3);
    ::close(ends[0]);
}

ZVT_TEST(tst_OtherClient)
#include "tst_OtherClient.moc"
