#include "tests/support/Test.h"
#include "tests/unit/ForeignController.h"
#include "tests/unit/HeaderModesRig.h"

#include <functional>
#include <stdexcept>

#include "hlx/IVideoSource.h"

namespace
{

/// A stream that reports failures by exceptions. It then stops nevertheless, but does not start.
struct FailingStream : hlx::cam::IVideoSource {
    void StopStream() override
    {
        runs = false;
        onStop();
    }
    void StartStream() override
    {
        onStart();
        runs = true;
    }

    std::function<void()> onStop = [] {};
    std::function<void()> onStart = [] {};
    bool runs = true;
};

/// A controller with a FailingStream.
struct FailingController : ForeignController {
    using ForeignController::ForeignController;
    hlx::TSharedPtr<hlx::cam::IVideoSource> GetVideoSource() override { return stream; }

    hlx::TSharedPtr<FailingStream> stream = hlx::TSharedPtr<FailingStream>::make();
};

/// The header modes below a root with a FailingController.
struct FailingModes {
    FailingModes()
    {
        scriptMisc(rig.gate());
        CameraRig::settle();
    }

    CameraRig rig;
    hlx::TSharedPtr<FailingController> controller
        = hlx::TSharedPtr<FailingController>::make(rig.controller()->GetHandle());
    FailingStream &stream = *controller->stream;
    ZvtCameraModel root{controller, nullptr};
    AdvancedMiscSettingsModel &model = *root.advancedMiscSettingsModel();
};

} // namespace

/// Failures of a change of a header mode: the stream runs afterwards, or the next change starts it.
class tst_AdvancedMiscSettingsModelStream : public Test
{
    Q_OBJECT

private slots:
    void listenerThatThrowsLeavesTheStreamRunning();
    void streamThatFailsToStopIsStartedAgain();
    void exceptionOfTheStartIsLogged_data();
    void exceptionOfTheStartIsLogged();
    void listenerAndStartMayBothThrow();
    void nextChangeStartsAStreamThatDidNotStart_data() { HeaderModes::addRows(); }
    void nextChangeStartsAStreamThatDidNotStart();
    void failureBeforeTheStartLeavesTheStreamRunning_data();
    void failureBeforeTheStartLeavesTheStreamRunning();
};

void tst_AdvancedMiscSettingsModelStream::listenerThatThrowsLeavesTheStreamRunning()
{
    HeaderModes modes;
    modes.listen([] { throw std::runtime_error("a listener failed"); });
    modes.listen("later");
    QVERIFY_EXCEPTION_THROWN(modes.model.setGigeHeaderModeIndex(1), std::runtime_error);
    QCOMPARE(modes.events, QStringList({HeaderModes::stopStream, "zvtSetGigEHeaderMode", HeaderModes::startStream}));
    QVERIFY(modes.streaming());
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 1);
}

void tst_AdvancedMiscSettingsModelStream::streamThatFailsToStopIsStartedAgain()
{
    FailingModes modes;
    modes.stream.onStop = [] { throw std::runtime_error("the stream failed to stop"); };
    QVERIFY_EXCEPTION_THROWN(modes.model.setGigeHeaderModeIndex(1), std::runtime_error);
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 0);
    QVERIFY(modes.stream.runs);
}

void tst_AdvancedMiscSettingsModelStream::exceptionOfTheStartIsLogged_data()
{
    QTest::addColumn<bool>("isStandard");
    QTest::addColumn<QString>("warning");
    const QString warning = QStringLiteral("the stream did not start after a change of a header mode");
    QTest::newRow("std::exception") << true << warning + ": no bandwidth";
    QTest::newRow("any other") << false << warning;
}

// The next change of a mode starts the stream.
void tst_AdvancedMiscSettingsModelStream::exceptionOfTheStartIsLogged()
{
    QFETCH(const bool, isStandard);
    QFETCH(const QString, warning);
    FailingModes modes;
    modes.stream.onStart = [isStandard] {
        if (isStandard)
            throw std::runtime_error("no bandwidth");
        throw 1;
    };
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    modes.model.setGigeHeaderModeIndex(1);
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 1);
    QVERIFY(!modes.stream.runs);
    modes.stream.onStart = [] {};
    modes.model.setClHeaderModeIndex(1);
    QCOMPARE(modes.model.clHeaderModeIndex(), 1);
    QVERIFY(modes.stream.runs);
}

// The exception of the listener is the one that the caller gets.
void tst_AdvancedMiscSettingsModelStream::listenerAndStartMayBothThrow()
{
    FailingModes modes;
    modes.controller->listeners.add(
        HeaderModes::Listener::FromLamda([] { throw std::logic_error("a listener failed"); }));
    modes.stream.onStart = [] { throw std::runtime_error("no bandwidth"); };
    QTest::ignoreMessage(QtWarningMsg, "the stream did not start after a change of a header mode: no bandwidth");
    QVERIFY_EXCEPTION_THROWN(modes.model.setGigeHeaderModeIndex(1), std::logic_error);
    QCOMPARE(modes.model.gigeHeaderModeIndex(), 1);
    QVERIFY(!modes.stream.runs);
}

// StartStream() does not tell whether the stream runs, so the model cannot try again by itself.
void tst_AdvancedMiscSettingsModelStream::nextChangeStartsAStreamThatDidNotStart()
{
    QFETCH(const QString, setter);
    const char *property = QTest::currentDataTag();
    HeaderModes modes;
    modes.gate().failNext(HeaderModes::startStream.toStdString());
    modes.write(property, 1);
    QCOMPARE(modes.value(property), 1);
    QCOMPARE(modes.events, QStringList({HeaderModes::stopStream, setter, HeaderModes::startStream}));
    QVERIFY(!modes.streaming());
    QCOMPARE(modes.write(property, 0).last(3),
             QStringList({HeaderModes::stopStream, setter + " 0", HeaderModes::startStream}));
    QCOMPARE(modes.value(property), 0);
    QVERIFY(modes.streaming());
}

void tst_AdvancedMiscSettingsModelStream::failureBeforeTheStartLeavesTheStreamRunning_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QString>("setter");
    QTest::addColumn<QString>("failing");
    for (int mode = 0; mode < HeaderModes::setters.size(); ++mode)
        for (const QString &failing : {HeaderModes::getSource, HeaderModes::getAvailable, HeaderModes::getType,
                                       HeaderModes::stopStream, HeaderModes::setters.at(mode)})
            QTest::addRow("%s, %s", qPrintable(HeaderModes::properties.at(mode)), qPrintable(failing))
                << HeaderModes::properties.at(mode) << HeaderModes::setters.at(mode) << failing;
}

// Each call but that of the start. After each failure the next change works.
void tst_AdvancedMiscSettingsModelStream::failureBeforeTheStartLeavesTheStreamRunning()
{
    QFETCH(const QString, property);
    QFETCH(const QString, setter);
    QFETCH(const QString, failing);
    HeaderModes modes;
    modes.gate().failNext(failing.toStdString());
    modes.write(property.toLatin1(), 1);
    QVERIFY(modes.streaming());
    QCOMPARE(modes.events.count(HeaderModes::stopStream), modes.events.count(HeaderModes::startStream));
    const int next = 1 - modes.value(property.toLatin1());
    QCOMPARE(modes.write(property.toLatin1(), next).last(3),
             QStringList(
                 {HeaderModes::stopStream, QStringLiteral("%1 %2").arg(setter).arg(next), HeaderModes::startStream}));
    QCOMPARE(modes.value(property.toLatin1()), next);
    QVERIFY(modes.streaming());
}

ZVT_TEST(tst_AdvancedMiscSettingsModelStream)
#include "tst_AdvancedMiscSettingsModelStream.moc"
