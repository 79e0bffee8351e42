#include "tests/page/SsdPage.h"
#include "tests/support/Test.h"

#include <QWheelEvent>

/// The playback on the SSD page: the frame on show, the range, the slider and the banner.
class tst_SsdTabPlayback : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_page.reset(); }

    void withoutARecordingThereAreNoNumbers();
    void noStopButtonIsShown();

    void aFrameIsTyped_data();
    void aFrameIsTyped();
    void anEditIsDiscarded_data();
    void anEditIsDiscarded();
    void aFrameOutsideTheRangeIsNotAccepted();
    void limitsOfTheEditorAreAccepted();
    void theEditorClosesAtADisconnection();
    void theEditorClosesWithThePage();

    void theSliderMoves_data();
    void theSliderMoves();
    void theSliderFollowsThePlayback();

    void theRangeIsEdited();
    void limitsOfTheRangeAreAccepted_data();
    void limitsOfTheRangeAreAccepted();
    void theRangeIsConfirmedByEnter();
    void aWrongRangeIsMarked_data();
    void aWrongRangeIsMarked();
    void theRangeStaysAfterCancel();

    void theBannerFollowsTheState_data();
    void theBannerFollowsTheState();
    void backToLiveStops();

private:
    std::unique_ptr<SsdPage> m_page;
};

// A recording of 351 frames is in the memory. The playback is paused at frame 42 of 7 to 300.
void tst_SsdTabPlayback::init()
{
    Test::init();
    m_page = std::make_unique<SsdPage>([](emulator::Camera &camera) {
        emulator::Gate &gate = camera.gate();
        gate.script("zvtGetSsdState", Playing);
        gate.script("zvtGetSsdStartFrame", 7U);
        gate.script("zvtGetSsdEndFrame", 300U);
        gate.script("zvtGetSsdPlaybackFrame", 42U);
        gate.script("zvtGetSsdNumFramesAcquired", 351U);
        gate.script("zvtSsd*", true);
        gate.script("zvtSetSsd*", true);
    });
    m_page->poll();
    m_page->enterState(Paused);
}

void tst_SsdTabPlayback::withoutARecordingThereAreNoNumbers()
{
    QVERIFY(m_page->findText("7 /") && m_page->findText("42") && m_page->findText("/ 300"));
    m_page->enterState(Disarmed);
    QVERIFY(m_page->findText("-- /") && m_page->findText("--") && m_page->findText("/ --"));
}

void tst_SsdTabPlayback::noStopButtonIsShown()
{
    for (int state = 0; state <= 13; ++state) {
        m_page->enterState(state);
        QVERIFY(!m_page->find("Stop"));
    }
}

// The frame

void tst_SsdTabPlayback::aFrameIsTyped_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("check") << 0;
}

void tst_SsdTabPlayback::aFrameIsTyped()
{
    QFETCH(const int, key);
    m_page->click("Frame");
    m_page->awaitFrame();
    QVERIFY(m_page->item("Frame").hasActiveFocus());
    m_page->gate().script("zvtGetSsdPlaybackFrame", 123U);
    const QStringList commands = m_page->commandsOf([&] {
        m_page->type("123");
        if (key == 0)
            m_page->click("Apply");
        else
            m_page->press(static_cast<Qt::Key>(key));
    });
    QCOMPARE(commands, QStringList("zvtSsdSkipToFrame 123"));
    QVERIFY(!m_page->find("Apply"));
    QCOMPARE(m_page->text("Frame"), "123");
}

void tst_SsdTabPlayback::anEditIsDiscarded_data()
{
    QTest::addColumn<bool>("byCross");
    QTest::newRow("Escape") << false;
    QTest::newRow("cross") << true;
}

void tst_SsdTabPlayback::anEditIsDiscarded()
{
    QFETCH(const bool, byCross);
    m_page->click("Frame");
    m_page->awaitFrame();
    QCOMPARE(m_page->commandsOf([&] {
        m_page->type("123");
        if (byCross)
            m_page->click("Cancel");
        else
            m_page->press(Qt::Key_Escape);
    }),
             QStringList());
    QVERIFY(!m_page->find("Apply"));
    QCOMPARE(m_page->text("Frame"), "42");
}

void tst_SsdTabPlayback::aFrameOutsideTheRangeIsNotAccepted()
{
    m_page->click("Frame");
    m_page->awaitFrame();
    for (const char *text : {"6", "301", "x"}) {
        m_page->press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(m_page->commandsOf([&] {
            m_page->type(text);
            m_page->press(Qt::Key_Return);
        }),
                 QStringList());
        QVERIFY(!m_page->enabled("Apply"));
    }
}

void tst_SsdTabPlayback::limitsOfTheEditorAreAccepted()
{
    for (const char *frame : {"7", "300"}) {
        m_page->click("Frame");
        m_page->awaitFrame();
        m_page->press(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(m_page->commandsOf([&] {
            m_page->type(frame);
            m_page->press(Qt::Key_Return);
        }),
                 QStringList(QStringLiteral("zvtSsdSkipToFrame %1").arg(frame)));
    }
}

void tst_SsdTabPlayback::theEditorClosesAtADisconnection()
{
    m_page->click("Frame");
    m_page->awaitFrame();
    QVERIFY(m_page->find("Apply"));
    m_page->rig().camera().disconnect();
    m_page->settle();
    QVERIFY(!m_page->find("Apply"));
}

void tst_SsdTabPlayback::theEditorClosesWithThePage()
{
    m_page->enterState(Complete);
    m_page->click("Frame");
    m_page->awaitFrame();
    QVERIFY(m_page->find("Apply"));
    m_page->click("Video");
    m_page->settle();
    QVERIFY(!m_page->find("Frame"));
    m_page->click("SSD");
    m_page->settle();
    QVERIFY(m_page->find("Frame") && !m_page->find("Apply"));
}

// The slider

void tst_SsdTabPlayback::theSliderMoves_data()
{
    QTest::addColumn<QString>("by");
    QTest::addColumn<int>("frame");
    QTest::newRow("key") << "key" << 43;
    QTest::newRow("page key") << "page key" << 57;
    QTest::newRow("wheel") << "wheel" << 43;
    QTest::newRow("mouse") << "mouse" << 300;
}

void tst_SsdTabPlayback::theSliderMoves()
{
    QFETCH(const QString, by);
    QFETCH(const int, frame);
    QQuickItem &slider = m_page->item("Current Frame");
    QCOMPARE(slider.property("from").toInt(), 7);
    QCOMPARE(slider.property("to").toInt(), 300);
    QCOMPARE(slider.property("value").toInt(), 42);
    const QPointF middle = slider.mapToScene({slider.width() / 2, slider.height() / 2});
    const QStringList commands = m_page->commandsOf([&] {
        if (by == "wheel") {
            QWheelEvent event(middle, m_page->window().mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&m_page->window(), &event);
        } else if (by == "mouse") {
            const QPoint end = slider.mapToScene({slider.width() - 1, slider.height() / 2}).toPoint();
            QTest::mouseClick(&m_page->window(), Qt::LeftButton, Qt::NoModifier, end);
        } else {
            slider.forceActiveFocus(Qt::TabFocusReason);
            m_page->press(by == "key" ? Qt::Key_Right : Qt::Key_PageUp);
        }
    });
    QCOMPARE(commands, QStringList(QStringLiteral("zvtSsdSkipToFrame %1").arg(frame)));
}

void tst_SsdTabPlayback::theSliderFollowsThePlayback()
{
    m_page->gate().script("zvtGetSsdPlaybackFrame", 200U);
    m_page->enterState(Playing);
    QCOMPARE(m_page->item("Current Frame").property("value").toInt(), 200);
    QCOMPARE(m_page->text("Frame"), "200");
}

// The range

void tst_SsdTabPlayback::theRangeIsEdited()
{
    m_page->click("Edit Playback Range");
    m_page->settle();
    QCOMPARE(m_page->dialogTitle(), "Edit Playback Range");
    QVERIFY(m_page->findText("Frame Number Range:") && m_page->findText("0 - 350"));
    QCOMPARE(m_page->text("Start"), "7");
    QCOMPARE(m_page->text("Current"), "42");
    QCOMPARE(m_page->text("End"), "300");
    m_page->saveScreenshot();
    const QStringList commands = m_page->commandsOf([&] {
        m_page->enter(m_page->item("End"), "350");
        m_page->enter(m_page->item("Current"), "320");
        m_page->enter(m_page->item("Start"), "310");
    });
    QCOMPARE(commands, QStringList());
    QCOMPARE(m_page->commandsOf([&] { m_page->click("OK"); }),
             QStringList({"zvtSetSsdStartFrame 310", "zvtSsdSkipToFrame 320", "zvtSetSsdEndFrame 350"}));
    QTRY_VERIFY(!m_page->findText("Frame Number Range:"));
    // The dialog shows the present values when it is opened again.
    m_page->click("Edit Playback Range");
    m_page->settle();
    QCOMPARE(m_page->text("Start"), "310");
}

void tst_SsdTabPlayback::limitsOfTheRangeAreAccepted_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("wrong"); // The fields that are then not acceptable.
    const auto add = [](const char *field, const char *text, const QStringList &wrong = {}) {
        QTest::addRow("%s %s", field, text) << field << text << wrong;
    };
    add("Start", "0");
    add("Start", "42");
    // The start may be up to the frame before the end, also if the frame on show is then outside.
    add("Start", "299", {"Current"});
    add("Current", "7");
    add("Current", "300");
    add("End", "42");
    add("End", "350");
    // The end may be the start, which the start then may not.
    add("End", "7", {"Start", "Current"});
}

void tst_SsdTabPlayback::limitsOfTheRangeAreAccepted()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const QStringList, wrong);
    m_page->click("Edit Playback Range");
    m_page->settle();
    m_page->enter(m_page->item(field), text);
    for (const char *name : {"Start", "Current", "End"})
        QCOMPARE(m_page->item(name).property("acceptable").toBool(), !wrong.contains(QLatin1String(name)));
    QCOMPARE(m_page->enabled("OK"), wrong.isEmpty());
}

void tst_SsdTabPlayback::theRangeIsConfirmedByEnter()
{
    m_page->click("Edit Playback Range");
    m_page->settle();
    QCOMPARE(m_page->commandsOf([&] { m_page->enter(m_page->item("Start"), "20", Qt::Key_Return); }),
             QStringList("zvtSetSsdStartFrame 20"));
    QTRY_VERIFY(!m_page->findText("Frame Number Range:"));
}

void tst_SsdTabPlayback::aWrongRangeIsMarked_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("wrong"); // The fields that are then not acceptable.
    QTest::newRow("Start") << "300" << QStringList{"Start"};
    QTest::newRow("Current") << "301" << QStringList{"Current"};
    QTest::newRow("End") << "351" << QStringList{"End"};
    // The start is acceptable, but the current frame is not in the range any more.
    QTest::newRow("Start ") << "100" << QStringList{"Current"};
    QTest::newRow("End ") << "41" << QStringList{"Current"};
}

void tst_SsdTabPlayback::aWrongRangeIsMarked()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, wrong);
    const QString field = QString::fromLatin1(QTest::currentDataTag()).trimmed();
    m_page->click("Edit Playback Range");
    m_page->settle();
    const auto isRed = [&] {
        const QQuickItem *range = m_page->findText("0 - 350");
        const QColor color = range->property("color").value<QColor>();
        return range->property("font").value<QFont>().bold() && color.red() > color.green()
            && color.red() > color.blue();
    };
    QVERIFY(!isRed() && m_page->enabled("OK"));
    const QStringList commands = m_page->commandsOf([&] { m_page->enter(m_page->item(field), text, Qt::Key_Return); });
    QVERIFY(!commands.join(u' ').contains("zvtSsdSkip"));
    for (const char *name : {"Start", "Current", "End"})
        QCOMPARE(m_page->item(name).property("acceptable").toBool(), !wrong.contains(QLatin1String(name)));
    QVERIFY(isRed() && !m_page->enabled("OK"));
    m_page->saveScreenshot();
}

void tst_SsdTabPlayback::theRangeStaysAfterCancel()
{
    m_page->click("Edit Playback Range");
    m_page->settle();
    m_page->enter(m_page->item("Start"), "20");
    QCOMPARE(m_page->commandsOf([&] {
        m_page->press(Qt::Key_Escape);
        m_page->press(Qt::Key_Escape);
    }),
             QStringList());
    QTRY_VERIFY(!m_page->findText("Frame Number Range:"));
    m_page->click("Edit Playback Range");
    m_page->settle();
    QCOMPARE(m_page->text("Start"), "7");
    // A click outside does not close it.
    QTest::mouseClick(&m_page->window(), Qt::LeftButton, Qt::NoModifier, {5, 500});
    m_page->settle();
    QVERIFY(m_page->findText("Frame Number Range:"));
}

// The banner

void tst_SsdTabPlayback::theBannerFollowsTheState_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state <= 13; ++state)
        QTest::addRow("%d", state) << state;
}

void tst_SsdTabPlayback::theBannerFollowsTheState()
{
    QFETCH(const int, state);
    m_page->enterState(state);
    QCOMPARE(m_page->bannerIsShown(), state == Playing || state == Paused);
}

void tst_SsdTabPlayback::backToLiveStops()
{
    QCOMPARE(m_page->commandsOf([&] { m_page->click("Back to live"); }), QStringList("zvtSsdStopBuffer"));
    QVERIFY(!m_page->bannerIsShown());
}

ZVT_TEST(tst_SsdTabPlayback)
#include "tst_SsdTabPlayback.moc"
