#include "standalone/desk/VideoView.h"
#include "tests/host/CardRig.h"
#include "tests/host/DeskRig.h"
#include "tests/support/Test.h"

using hlx::cam::ui::WidgetFileDialog;

/// The card "Picture", used by mouse and keyboard.
class tst_PictureCard : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsThePictureOfTheCamera();
    void worksOnlyWhileItIsOpen();
    void stopsWithItsWindow();
    void stopsWhileItIsScrolledOutOfSight();
    void saysThatTheCameraIsNotConnected();
    void valuesAreShown();
    void theViewIsChosenByKeyboard();
    void thePresetIsOfferedOnlyInASequence();
    void thePointerShowsItsPixel();
    void anotherPictureHasAnotherPixelUnderThePointer();
    void clicksAndKeysSetNothingInTheCamera();
    void savesByMouse();
    void aRefusedFolderIsShown();

private:
    PictureModel &model() { return *m_rig->desk().picture(); }
    VideoView &view() { return *qobject_cast<VideoView *>(m_rig->find(QStringLiteral("Live picture"))); }
    bool connect()
    {
        m_rig->standalone().connect(QStringLiteral("everything"));
        const bool connected = QTest::qWaitFor([this] { return m_rig->standalone().connected(); });
        emulator::Clock::advance(120'000);
        return connected && QTest::qWaitFor([this] { return model().hasFrame(); });
    }
    QString text(const char *name) { return m_rig->property(QString::fromLatin1(name), "text").toString(); }
    /// The difference between the brightest and the darkest level in a row of the picture in the window.
    int contrast()
    {
        const QImage grabbed = m_rig->window().grabWindow();
        int lowest = 255;
        int highest = 0;
        for (int i = 1; i < 100; ++i) {
            const int level = qGray(grabbed.pixel(onView(i / 100.0, 0.5)));
            lowest = std::min(lowest, level);
            highest = std::max(highest, level);
        }
        return highest - lowest;
    }
    QPoint onView(double x, double y)
    {
        const QRectF rect = view().imageRect();
        return view().mapToScene({rect.x() + x * rect.width(), rect.y() + y * rect.height()}).toPoint();
    }

    QTemporaryDir m_files;
    std::unique_ptr<CardRig> m_rig;
};

void tst_PictureCard::init()
{
    Test::init();
    m_rig = std::make_unique<CardRig>();
    QCOMPARE(m_rig->show(QStringLiteral("PictureCard.qml"), *m_rig->desk().picture()), QString());
}

void tst_PictureCard::cleanup() { m_rig.reset(); }

void tst_PictureCard::showsThePictureOfTheCamera()
{
    QVERIFY(connect());
    QCOMPARE(view().image().cacheKey(), model().image().cacheKey());
    // The first frame may be one of the warm detector, which is white.
    emulator::Clock::advance(1000);
    QTRY_VERIFY(contrast() > 60);
}

void tst_PictureCard::worksOnlyWhileItIsOpen()
{
    QVERIFY(connect());
    QVERIFY(model().frames().isRunning());
    m_rig->click(QStringLiteral("Picture"));
    QTRY_VERIFY(!model().frames().isRunning());
    QTRY_VERIFY(!model().frames().hasThread());
    QVERIFY(model().image().isNull());
    m_rig->click(QStringLiteral("Picture"));
    QTRY_VERIFY(model().hasFrame());
}

void tst_PictureCard::stopsWithItsWindow()
{
    QVERIFY(connect());
    m_rig->window().hide();
    QTRY_VERIFY(!model().frames().isRunning());
    m_rig->window().show();
    QTRY_VERIFY(model().frames().isRunning());
    m_rig->card().setVisible(false);
    QTRY_VERIFY(!model().frames().isRunning());
}

void tst_PictureCard::stopsWhileItIsScrolledOutOfSight()
{
    m_rig.reset();
    QVERIFY(DeskRig::loadPlugin());
    DeskRig rig;
    for (const char *card : {"line", "world", "otherClient", "calls"})
        rig.settings().setOpen(QString::fromLatin1(card), true);
    rig.split().setShown(true);
    QVERIFY(rig.connectCamera());
    const FrameThread &frames = rig.desk().picture()->frames();
    QTRY_VERIFY(frames.isRunning());
    quint64 time = 0;
    const auto scroll = [&rig, &time](int degrees) {
        const QPointF place = rig.split().desk()->mapToScene({20, 100});
        QWheelEvent event(place, rig.window().mapToGlobal(place), {}, {0, 8 * degrees}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        // Only events after each other scroll.
        event.setTimestamp(time += 20);
        QCoreApplication::sendEvent(&rig.window(), &event);
    };
    scroll(-15);
    QCoreApplication::processEvents();
    QVERIFY(frames.isRunning());
    QVERIFY(QTest::qWaitFor([&] {
        scroll(-15);
        return !frames.isRunning();
    }));
    QTRY_VERIFY(!frames.hasThread());
    QVERIFY(QTest::qWaitFor([&] {
        scroll(15);
        return frames.isRunning();
    }));
}

void tst_PictureCard::saysThatTheCameraIsNotConnected()
{
    QCOMPARE(text("Picture message"), QStringLiteral("Not connected"));
    QVERIFY(connect());
    QVERIFY(!m_rig->find(QStringLiteral("Picture message")));
    m_rig->camera().disconnect();
    QTRY_COMPARE(text("Picture message"), QStringLiteral("Not connected"));
}

void tst_PictureCard::valuesAreShown()
{
    QVERIFY(connect());
    emulator::Clock::advance(500);
    QTRY_VERIFY(!model().temporalNoise().isEmpty());
    QCOMPARE(text("Frame"), model().frame());
    QCOMPARE(text("Frame preset"), model().preset());
    QCOMPARE(text("Frame rate"), model().rate());
    QCOMPARE(text("Mean"), model().mean());
    QCOMPARE(text("Spatial noise"), model().spatialNoise());
    QCOMPARE(text("Temporal noise"), model().temporalNoise());
    auto *const histogram = qobject_cast<VideoView *>(m_rig->find(QStringLiteral("Histogram")));
    QVERIFY(histogram);
    QCOMPARE(histogram->image().cacheKey(), model().histogram().cacheKey());
}

void tst_PictureCard::theViewIsChosenByKeyboard()
{
    QVERIFY(connect());
    QQuickItem *const box = m_rig->find(QStringLiteral("View"));
    QVERIFY(box);
    box->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Down);
    QTRY_COMPARE(model().view(), PictureModel::Corrected);
    m_rig->press(Qt::Key_Down);
    QTRY_COMPARE(model().view(), PictureModel::Video);
    QTRY_VERIFY(model().image().size() != QSize(640, 512));
    model().setView(PictureModel::Raw);
    QCOMPARE(box->property("currentIndex").toInt(), 0);
}

void tst_PictureCard::thePresetIsOfferedOnlyInASequence()
{
    QVERIFY(connect());
    QVERIFY(!m_rig->find(QStringLiteral("Preset")));
    QVERIFY(m_rig->camera().otherClient().set(QStringLiteral("sensor.sequencingMode"), 1));
    emulator::Clock::advance(1000);
    QTRY_VERIFY(m_rig->find(QStringLiteral("Preset")));
    QQuickItem *const box = m_rig->find(QStringLiteral("Preset"));
    box->forceActiveFocus(Qt::TabFocusReason);
    m_rig->press(Qt::Key_Down);
    m_rig->press(Qt::Key_Down);
    QCOMPARE(model().presetIndex(), 2);
    QTRY_COMPARE(text("Frame preset"), QStringLiteral("1"));
    model().setView(PictureModel::Video);
    QVERIFY(!box->isEnabled());
}

void tst_PictureCard::thePointerShowsItsPixel()
{
    QVERIFY(connect());
    QTest::mouseMove(&m_rig->window(), onView(0.1, 0.1));
    QTest::mouseMove(&m_rig->window(), onView(0.5, 0.5));
    QTRY_VERIFY(!model().pixel().isEmpty());
    QCOMPARE(text("Under the pointer"), model().pixel());
    const auto words = model().pixel().split(u' ');
    QVERIFY(qAbs(words[1].chopped(1).toInt() - 320) <= 2);
    QVERIFY(qAbs(words[3].chopped(1).toInt() - 256) <= 2);
    QTest::mouseMove(&m_rig->window(), QPoint(5, 5));
    QTRY_VERIFY(model().pixel().isEmpty());
}

void tst_PictureCard::anotherPictureHasAnotherPixelUnderThePointer()
{
    QVERIFY(connect());
    const QPoint point = onView(0.3, 0.4);
    QTest::mouseMove(&m_rig->window(), onView(0.1, 0.1));
    QTest::mouseMove(&m_rig->window(), point);
    QTRY_VERIFY(!model().pixel().isEmpty());
    const QString before = model().pixel();
    // The picture of the video output has another shape. No events are delivered: Qt repeats those of the mouse before
    // each frame of the window.
    const FrameOrder order{m_rig->camera().shared_from_this(), FrameOrder::Video, std::nullopt};
    emit const_cast<FrameThread &>(model().frames()).made(FrameMaker().make(order));
    QVERIFY(model().image().size() != QSize(640, 512));
    const QString shown = model().pixel();
    QVERIFY(!shown.isEmpty() && shown != before);
    model().pointAt(view().onImage(view().mapFromScene(point)));
    QCOMPARE(shown, model().pixel());
}

void tst_PictureCard::clicksAndKeysSetNothingInTheCamera()
{
    QVERIFY(connect());
    const size_t mark = m_rig->camera().gate().mark();
    const QJsonObject before = m_rig->camera().snapshot();
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(&m_rig->window(), button, Qt::NoModifier, onView(0.3, 0.7));
        QTest::mouseDClick(&m_rig->window(), button, Qt::NoModifier, onView(0.6, 0.2));
    }
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Plus, Qt::Key_Left})
        m_rig->press(key);
    QCoreApplication::processEvents();
    QCOMPARE(m_rig->camera().snapshot(), before);
    for (const emulator::Call &call : m_rig->camera().gate().callsSince(mark))
        QVERIFY2(call.name == "controller.IsConnected", call.name.c_str());
}

void tst_PictureCard::savesByMouse()
{
    QVERIFY(!m_rig->find(QStringLiteral("Save frame..."))->isEnabled());
    QVERIFY(connect());
    const std::pair<const char *, const char *> buttons[]
        = {{"Save frame...", "frame.tiff"}, {"Save view...", "view.png"}, {"Save statistics...", "statistics.csv"}};
    for (const auto &[button, name] : buttons) {
        const QString file = m_files.filePath(QString::fromLatin1(name));
        WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file));
        m_rig->click(QString::fromLatin1(button));
        QTRY_COMPARE(model().saver()->result(), QStringLiteral("Saved: ") + file);
        QVERIFY(QFile::exists(file));
        QTRY_VERIFY(m_rig->find(QString::fromLatin1(button))->isEnabled());
    }
}

void tst_PictureCard::aRefusedFolderIsShown()
{
    QVERIFY(connect());
    const QString file = m_files.filePath(QStringLiteral("missing/frame.png"));
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file));
    m_rig->click(QStringLiteral("Save frame..."));
    QTRY_VERIFY(model().saver()->failed());
    QTRY_COMPARE(text("Result of saving"), model().saver()->result());
    QVERIFY(text("Result of saving").contains(QStringLiteral("cannot be written")));
}

ZVT_TEST(tst_PictureCard)
#include "tst_PictureCard.moc"
