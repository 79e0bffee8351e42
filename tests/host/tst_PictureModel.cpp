#include "standalone/desk/PictureModel.h"
#include "tests/host/PictureRig.h"
#include "tests/support/Test.h"

#include <QDir>
#include <QFile>
#include <QImageReader>
#include <QSignalSpy>

using hlx::cam::ui::WidgetFileDialog;

/// The model of the card "Picture".
class tst_PictureModel : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void saysWhyThereIsNoPicture();
    void saysThatTheWindowIsTooLarge();
    void showsTheNewestFrame();
    void worksOnlyWhileShownAndConnected();
    void followsTheCamera();
    void aPulledCableEndsThePicture();
    void valuesChangeLessOftenThanThePicture();
    void valuesChangeWithTheSizeOfThePicture();
    void theLastValuesAreShown();
    void theViewCanBeChosen();
    void presetsCanBeChosenIfSeveralAreSequenced();
    void aPresetThatIsNoLongerSequencedIsNotShown();
    void anotherCameraForgetsThePreset();
    void thePixelUnderThePointerIsShown_data();
    void thePixelUnderThePointerIsShown();
    void thePixelInTheVideoIsThatOfTheFrame();
    void gainLimitsAreOnTheHistogram();
    void savesTheFrameOnShow();
    void savesTheViewOnShow();
    void savesTheStatistics();
    void savesOnlyTheLastMinute();
    void statisticsOlderThanAMinuteAreNotSaved();
    void anotherCameraHasNoStatistics();
    void namesAreProposedWithoutASuffix();
    void aRefusedFolderIsReported();
    void aCancelledDialogSavesNothing();
    void nothingIsSavedWithoutAFrame();

private:
    bool showPicture()
    {
        m_model->setShown(true);
        return QTest::qWaitFor([this] { return m_model->hasFrame(); });
    }
    bool showNextFrame(int milliseconds = 500)
    {
        QSignalSpy changed(m_model.get(), &PictureModel::valuesChanged);
        emulator::Clock::advance(milliseconds);
        return QTest::qWaitFor([&] { return changed.size() > 0; });
    }
    QString answered(const QString &name)
    {
        const QString file = m_rig->file(name);
        WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file));
        return file;
    }
    bool finishSaving()
    {
        return QTest::qWaitFor([this] { return !m_model->saver()->result().isEmpty() && !m_model->saver()->saving(); });
    }

    std::unique_ptr<PictureRig> m_rig;
    std::unique_ptr<PictureModel> m_model;
};

void tst_PictureModel::init()
{
    Test::init();
    m_rig = std::make_unique<PictureRig>();
    m_model = std::make_unique<PictureModel>(m_rig->standalone());
}

void tst_PictureModel::cleanup()
{
    m_model.reset();
    m_rig.reset();
}

void tst_PictureModel::saysWhyThereIsNoPicture()
{
    QCOMPARE(m_model->message(), QStringLiteral("Not connected"));
    m_model->setShown(true);
    QCOMPARE(m_model->message(), QStringLiteral("Not connected"));
    QVERIFY(m_rig->connect());
    QCOMPARE(m_model->message(), QStringLiteral("No picture"));
    QTRY_COMPARE(m_model->message(), QString());
    QVERIFY(!m_model->image().isNull());
}

void tst_PictureModel::saysThatTheWindowIsTooLarge()
{
    m_model.reset();
    m_rig.reset();
    m_rig = std::make_unique<PictureRig>("edge-values");
    m_model = std::make_unique<PictureModel>(m_rig->standalone());
    QVERIFY(m_rig->connect());
    m_model->setShown(true);
    QTRY_COMPARE(m_model->message(), QStringLiteral("The window is too large for frames"));
    QVERIFY(m_model->image().isNull());
    QVERIFY(!m_model->hasFrame());
}

void tst_PictureModel::showsTheNewestFrame()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    const auto frame = m_rig->camera().newestFrame(0);
    QCOMPARE(m_model->frame(), QString::number(frame->start.number));
    QCOMPARE(m_model->preset(), QStringLiteral("0"));
    QCOMPARE(m_model->rate(), QStringLiteral("100.00 Hz"));
    const auto statistics = FrameStatistics::of(frame->counts, {});
    QCOMPARE(m_model->mean(), QString::number(statistics.mean, 'f', 1));
    QCOMPARE(m_model->spatialNoise(), QString::number(statistics.spatialNoise, 'f', 1));
    QCOMPARE(m_model->temporalNoise(), QString());
    QCOMPARE(m_model->lowest(), QString::number(statistics.lowest));
    QCOMPARE(m_model->highest(), QString::number(statistics.highest));
    QVERIFY(!m_model->histogram().isNull());
    QVERIFY(showNextFrame());
    QCOMPARE(m_model->frame(), QString::number(frame->start.number + 50));
    QVERIFY(m_model->temporalNoise().toDouble() > 0);
}

void tst_PictureModel::worksOnlyWhileShownAndConnected()
{
    QVERIFY(!m_model->frames().isRunning());
    m_model->setShown(true);
    QVERIFY(!m_model->frames().isRunning());
    QVERIFY(m_rig->connect());
    QVERIFY(m_model->frames().isRunning());
    QTRY_VERIFY(m_model->hasFrame());
    m_model->setShown(false);
    QVERIFY(!m_model->frames().isRunning());
    QTRY_VERIFY(!m_model->frames().hasThread());
    // Nothing of the picture is kept.
    QVERIFY(!m_model->hasFrame());
    QVERIFY(m_model->image().isNull());
    QVERIFY(m_model->histogram().isNull());
}

void tst_PictureModel::followsTheCamera()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QCOMPARE(m_model->image().size(), QSize(640, 512));
    m_rig->standalone().disconnect();
    QTRY_VERIFY(!m_rig->standalone().connected());
    QCOMPARE(m_model->message(), QStringLiteral("Not connected"));
    m_rig->standalone().connect(QStringLiteral("bare"));
    QTRY_VERIFY(m_rig->standalone().connected());
    QTRY_COMPARE(m_model->image().size(), QSize(320, 256));
}

void tst_PictureModel::aPulledCableEndsThePicture()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_rig->camera().disconnect();
    QTRY_COMPARE(m_model->message(), QStringLiteral("Not connected"));
    QVERIFY(m_model->image().isNull());
    QVERIFY(!m_model->frames().isRunning());
    m_rig->camera().connect();
    QTRY_VERIFY(m_model->hasFrame());
}

void tst_PictureModel::valuesChangeLessOftenThanThePicture()
{
    QVERIFY(m_rig->connect());
    QSignalSpy images(m_model.get(), &PictureModel::imageChanged);
    QSignalSpy values(m_model.get(), &PictureModel::valuesChanged);
    FrameMaker maker;
    // The model itself makes no frames while it is not shown.
    auto &frames = const_cast<FrameThread &>(m_model->frames());
    for (int i = 0; i < 10; ++i) {
        emulator::Clock::advance(10);
        emit frames.made(maker.make(m_rig->order()));
    }
    QCOMPARE(images.size(), 10);
    QCOMPARE(values.size(), 1);
    QTRY_COMPARE(m_model->frame(), QString::number(m_rig->camera().newestFrame(0)->start.number));
    QCOMPARE(values.size(), 2);
}

void tst_PictureModel::valuesChangeWithTheSizeOfThePicture()
{
    QVERIFY(m_rig->connect());
    FrameMaker maker;
    auto &frames = const_cast<FrameThread &>(m_model->frames());
    emit frames.made(maker.make(m_rig->order()));
    QSignalSpy values(m_model.get(), &PictureModel::valuesChanged);
    emit frames.made(maker.make(m_rig->order(FrameOrder::Video)));
    QCOMPARE(values.size(), 1);
    emit frames.made(maker.make(m_rig->order(FrameOrder::Video)));
    QCOMPARE(values.size(), 1);
}

void tst_PictureModel::theLastValuesAreShown()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    for (int i = 0; i < 3; ++i) {
        QSignalSpy images(m_model.get(), &PictureModel::imageChanged);
        emulator::Clock::advance(10);
        QTRY_COMPARE(images.size(), 1);
    }
    // No more frames come.
    QTRY_COMPARE(m_model->frame(), QString::number(m_rig->camera().newestFrame(0)->start.number));
}

void tst_PictureModel::theViewCanBeChosen()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QSignalSpy changed(m_model.get(), &PictureModel::viewChanged);
    m_model->setView(PictureModel::Video);
    QCOMPARE(changed.size(), 1);
    const auto picture = m_rig->camera().device<emulator::VideoOutput>()->render();
    QTRY_COMPARE(m_model->image().size(), QSize(picture.width, picture.height));
    m_model->setView(PictureModel::Corrected);
    QTRY_COMPARE(m_model->image().size(), QSize(640, 512));
    m_model->setView(PictureModel::Corrected);
    QCOMPARE(changed.size(), 2);
}

void tst_PictureModel::presetsCanBeChosenIfSeveralAreSequenced()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QCOMPARE(m_model->presets(), QStringList({QStringLiteral("Of the video output")}));
    QVERIFY(m_rig->set("sensor.sequencingMode", 1));
    emulator::Clock::advance(1000);
    QTRY_COMPARE(m_model->presets(),
                 QStringList({QStringLiteral("Of the video output"), QStringLiteral("Preset 0"),
                              QStringLiteral("Preset 1"), QStringLiteral("Preset 2"), QStringLiteral("Preset 3")}));
    QCOMPARE(m_model->presetIndex(), 0);
    m_model->setPresetIndex(3);
    QCOMPARE(m_model->presetIndex(), 3);
    QTRY_COMPARE(m_model->preset(), QStringLiteral("2"));
    for (const int wrong : {-1, 5}) {
        m_model->setPresetIndex(wrong);
        QCOMPARE(m_model->presetIndex(), 3);
    }
    m_model->setPresetIndex(0);
    QTRY_COMPARE(m_model->preset(), QStringLiteral("0"));
}

void tst_PictureModel::aPresetThatIsNoLongerSequencedIsNotShown()
{
    QVERIFY(m_rig->set("sensor.sequencingMode", 1));
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_model->setPresetIndex(2);
    QTRY_COMPARE(m_model->preset(), QStringLiteral("1"));
    QVERIFY(m_rig->set("sensor.sequencingMode", 0));
    emulator::Clock::advance(1000);
    QTRY_COMPARE(m_model->presetIndex(), 0);
    QCOMPARE(m_model->presets().size(), 1);
    QTRY_COMPARE(m_model->preset(), QStringLiteral("0"));
}

void tst_PictureModel::anotherCameraForgetsThePreset()
{
    QVERIFY(m_rig->set("sensor.sequencingMode", 1));
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_model->setPresetIndex(2);
    QTRY_COMPARE(m_model->preset(), QStringLiteral("1"));
    m_rig->standalone().disconnect();
    QTRY_VERIFY(!m_rig->standalone().connected());
    m_rig->standalone().connect(QStringLiteral("bare"));
    QTRY_VERIFY(m_model->hasFrame());
    QCOMPARE(m_model->presetIndex(), 0);
    QCOMPARE(m_model->presets().size(), 1);
}

void tst_PictureModel::thePixelUnderThePointerIsShown_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::newRow("top left") << QPointF(0, 0) << 0 << 0;
    QTest::newRow("middle") << QPointF(0.5, 0.25) << 320 << 128;
    QTest::newRow("bottom right") << QPointF(0.9999, 0.9999) << 639 << 511;
    QTest::newRow("right of it") << QPointF(1.01, 0.5) << -1 << -1;
    QTest::newRow("below it") << QPointF(0.5, 1.0) << -1 << -1;
    QTest::newRow("no image") << QPointF(-1, -1) << -1 << -1;
}

void tst_PictureModel::thePixelUnderThePointerIsShown()
{
    QFETCH(QPointF, point);
    QFETCH(int, column);
    QFETCH(int, row);
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    const auto frame = m_rig->camera().newestFrame(0);
    const QString expected = column < 0 ? QString()
                                        : QStringLiteral("column %1, row %2: %3")
                                              .arg(column)
                                              .arg(row)
                                              .arg(frame->counts[static_cast<size_t>(row * 640 + column)]);
    m_model->pointAt(point);
    QCOMPARE(m_model->pixel(), expected);
    m_model->pointAway();
    QCOMPARE(m_model->pixel(), QString());
}

void tst_PictureModel::thePixelInTheVideoIsThatOfTheFrame()
{
    QVERIFY(m_rig->set("video.position", 1));
    QVERIFY(m_rig->set("video.zoomFactor", 2));
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_model->setView(PictureModel::Video);
    QTRY_VERIFY(m_model->image().size() != QSize(640, 512));
    QTRY_VERIFY(m_model->hasFrame());
    // The centred image is enlarged twice, so its pixel is in the middle.
    m_model->pointAt({0.5001, 0.5001});
    QTRY_VERIFY2(m_model->pixel().startsWith(QStringLiteral("column 320, row 256: ")), qPrintable(m_model->pixel()));
}

void tst_PictureModel::gainLimitsAreOnTheHistogram()
{
    QVERIFY(m_rig->set("agc.method", 2));
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QVERIFY(m_model->black() > 0);
    QVERIFY(m_model->black() < m_model->white());
    QVERIFY(m_model->white() < 1);
    const double range = m_model->highest().toInt() - m_model->lowest().toInt() + 1;
    const int black = qRound(m_model->black() * range) + m_model->lowest().toInt();
    const int white = qRound(m_model->white() * range) + m_model->lowest().toInt() - 1;
    QCOMPARE(m_model->gainLimits(), QStringLiteral("%1 to %2").arg(black).arg(white));
}

void tst_PictureModel::savesTheFrameOnShow()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    const auto frame = m_rig->camera().newestFrame(0);
    const QString file = answered(QStringLiteral("frame.png"));
    m_model->saveFrame();
    QVERIFY(finishSaving());
    QVERIFY(!m_model->saver()->failed());
    QCOMPARE(m_model->saver()->result(), QStringLiteral("Saved: ") + file);
    const QImage image(file);
    QCOMPARE(image.format(), QImage::Format_Grayscale16);
    QCOMPARE(image.size(), QSize(640, 512));
    for (int y = 0; y < 512; y += 5)
        QVERIFY(std::equal(frame->counts.begin() + y * 640, frame->counts.begin() + y * 640 + 640,
                           reinterpret_cast<const uint16_t *>(image.constScanLine(y))));
}

void tst_PictureModel::savesTheViewOnShow()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    const QString file = answered(QStringLiteral("view.png"));
    const QImage shown = m_model->image();
    m_model->savePicture();
    QVERIFY(finishSaving());
    QCOMPARE(QImage(file).convertToFormat(QImage::Format_RGB32), shown);
}

void tst_PictureModel::savesTheStatistics()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    for (int i = 0; i < 4; ++i)
        QVERIFY(showNextFrame());
    const QString file = answered(QStringLiteral("statistics.csv"));
    m_model->saveStatistics();
    QVERIFY(finishSaving());
    QFile csv(file);
    QVERIFY(csv.open(QIODevice::ReadOnly));
    const auto lines = csv.readAll().split('\n');
    QCOMPARE(lines.size(), 7); // The headings and the empty line after the last one.
    QVERIFY(lines[5].contains("," + m_model->frame().toLatin1() + ",0,raw,"));
}

void tst_PictureModel::savesOnlyTheLastMinute()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QVERIFY(showNextFrame(40'000));
    const QByteArray last = m_model->frame().toLatin1();
    m_model->setShown(false);
    emulator::Clock::advance(40'000);
    const QString file = answered(QStringLiteral("statistics.csv"));
    m_model->saveStatistics();
    QVERIFY(finishSaving());
    QFile csv(file);
    QVERIFY(csv.open(QIODevice::ReadOnly));
    const auto lines = csv.readAll().split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].contains("," + last + ",0,raw,"));
}

void tst_PictureModel::statisticsOlderThanAMinuteAreNotSaved()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_model->setShown(false);
    QVERIFY(m_model->hasStatistics());
    emulator::Clock::advance(61'000);
    QSignalSpy changed(m_model.get(), &PictureModel::valuesChanged);
    answered(QStringLiteral("statistics.csv"));
    m_model->saveStatistics();
    QVERIFY(WidgetFileDialog::hasNextAnswer());
    WidgetFileDialog::setNextAnswer(WidgetFileDialog::Answer());
    QVERIFY(!m_model->hasStatistics());
    QCOMPARE(changed.size(), 1);
}

void tst_PictureModel::anotherCameraHasNoStatistics()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    m_model->setShown(false);
    QVERIFY(m_model->hasStatistics());
    m_rig->standalone().disconnect();
    QTRY_VERIFY(!m_rig->standalone().connected());
    bool announced = true;
    connect(m_model.get(), &PictureModel::valuesChanged, this, [&] { announced = m_model->hasStatistics(); });
    m_rig->standalone().connect(QStringLiteral("bare"));
    QTRY_VERIFY(m_rig->standalone().connected());
    QVERIFY(!m_model->hasStatistics());
    QVERIFY(!announced);
}

void tst_PictureModel::namesAreProposedWithoutASuffix()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    QStringList names;
    for (const auto save : {&PictureModel::saveFrame, &PictureModel::savePicture, &PictureModel::saveStatistics}) {
        WidgetFileDialog::setNextAnswer([&names](const WidgetFileDialog &dialog) {
            names << dialog.property("defaultName").toString();
            return QUrl();
        });
        (m_model.get()->*save)();
        QTRY_VERIFY(!WidgetFileDialog::hasNextAnswer());
        QCoreApplication::processEvents();
    }
    // The dialog adds the suffix of the chosen filter, so that TIFF is not written as PNG.
    QCOMPARE(names, QStringList({QStringLiteral("frame"), QStringLiteral("view"), QStringLiteral("statistics")}));
}

void tst_PictureModel::aRefusedFolderIsReported()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    const QString file = answered(QStringLiteral("missing/frame.png"));
    m_model->saveFrame();
    QVERIFY(finishSaving());
    QVERIFY(m_model->saver()->failed());
    QVERIFY2(m_model->saver()->result().startsWith(file + QStringLiteral(" cannot be written: ")),
             qPrintable(m_model->saver()->result()));
    // The next attempt clears the message.
    answered(QStringLiteral("frame.png"));
    m_model->saveFrame();
    QTRY_VERIFY(m_model->saver()->result().startsWith(QStringLiteral("Saved: ")));
    QVERIFY(!m_model->saver()->failed());
}

void tst_PictureModel::aCancelledDialogSavesNothing()
{
    QVERIFY(m_rig->connect());
    QVERIFY(showPicture());
    WidgetFileDialog::setNextAnswer(QUrl());
    m_model->saveFrame();
    QCoreApplication::processEvents();
    QVERIFY(!m_model->saver()->saving());
    QCOMPARE(m_model->saver()->result(), QString());
    const QString file = answered(QStringLiteral("frame.png"));
    m_model->saveFrame();
    QVERIFY(finishSaving());
    QVERIFY(QFile::exists(file));
}

void tst_PictureModel::nothingIsSavedWithoutAFrame()
{
    WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(m_rig->file(QStringLiteral("frame.png"))));
    m_model->saveFrame();
    m_model->savePicture();
    m_model->saveStatistics();
    QVERIFY(WidgetFileDialog::hasNextAnswer());
    WidgetFileDialog::setNextAnswer(WidgetFileDialog::Answer());
}

ZVT_TEST(tst_PictureModel)
#include "tst_PictureModel.moc"
