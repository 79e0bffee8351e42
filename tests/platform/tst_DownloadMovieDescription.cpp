#include "hlx/CRCalReduceObject.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/devices/FactoryCalibrations.h"
#include "platform/emulator/image/CorrectionTable.h"
#include "tests/platform/TransferRig.h"
#include "tests/support/Test.h"

#include <cmath>

using namespace Qt::StringLiterals;

/// The description of camera and settings in a downloaded movie, its corrections and its calibration.
class tst_DownloadMovieDescription : public Test
{
    Q_OBJECT

private slots:
    void tellsOfTheCamera();
    void tellsOfTheSettingsOfTheRecording();
    void settingsAreThoseOfTheFirstFrame();
    void hasTheCorrectionsOfItsPresets();
    void hasTheCorrectionsOfItsFramesOnly();
    void hasThePartOfItsWindow();
    void hasTheCorrectionsOfTheRecording();
    void hasNoCorrectionsWithoutAny();
    void hasTheFactoryCalibrationOfItsIntegrationTime();
    void theCalibrationCountsWithSkimming();
    void hasNoCalibrationForAnotherTime();
    void anAbatedMovieHasNoObjects();

private:
    /// Digital output of recordings.
    static bool correct(TransferRig &rig, bool on) { return rig.set("corrections.digitalCorrected", on); }
    /// Frames of two presets, which both have a correction.
    static bool useTwoPresets(TransferRig &rig) { return rig.set("sensor.sequencingMode", 1); }
    static const hlx::CNucFile *correction(TransferRig &rig, uint8_t preset)
    {
        auto *const object = rig.objects.GetCorrection(preset, false);
        return object ? &object->correction() : nullptr;
    }
    static const hlx::reduce::CRCalReduceObject *calibration(TransferRig &rig)
    {
        using hlx::reduce::CRCalReduceObject;
        return dynamic_cast<CRCalReduceObject *>(
            rig.objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, false));
    }
    static double valueAt(const hlx::reduce::CRCalFile &file, double count)
    {
        double value = 0;
        for (size_t power = file.coefficients.size(); power-- > 0;)
            value = value * count + static_cast<double>(file.coefficients[static_cast<int>(power)]);
        return value;
    }
};

void tst_DownloadMovieDescription::tellsOfTheCamera()
{
    TransferRig rig;
    QVERIFY(rig.set("identity.model", u"Größe 640"_s) && rig.set("identity.serial", u"L-7"_s));
    QVERIFY(rig.record(2) && rig.download());
    const auto movie = rig.open();
    QCOMPARE(movie->description().cameraModel, std::string("Größe 640"));
    QCOMPARE(movie->description().cameraSerial, std::string("L-7"));
    QCOMPARE(movie->description().clockHertz, 20'000'000U);
    QVERIFY(!movie->description().abated);
}

void tst_DownloadMovieDescription::tellsOfTheSettingsOfTheRecording()
{
    TransferRig rig;
    QVERIFY(rig.set("sensor.window", QVariantList{32, 8, 64, 4}) && rig.set("sensor.sequencingMode", 2));
    QVERIFY(rig.record(8));
    std::array<uint32_t, 4> widths{};
    for (uint8_t preset = 0; preset < 4; ++preset)
        QCOMPARE(zvtGetFrameWidth(rig.handle(), preset, &widths[preset]), 0);
    // Later settings do not matter.
    QVERIFY(rig.set("sensor.window", QVariantList{0, 0, 320, 256}));
    QVERIFY(rig.set("sensor.frameRate", 20) && rig.set("sensor.integrationTime", 7));
    QVERIFY(rig.download());
    const auto movie = rig.open();
    const auto &description = movie->description();
    QCOMPARE(int(description.x), 32);
    QCOMPARE(int(description.y), 8);
    QCOMPARE(movie->imageFormat().width, 64U);
    const std::array<double, 4> times{2.0, 1.0, 0.5, 0.25};
    for (size_t preset = 0; preset < 4; ++preset) {
        QCOMPARE(description.presets[preset].integrationTime, times[preset]);
        QCOMPARE(description.presets[preset].frameWidth, widths[preset]);
        QVERIFY(widths[preset] > 0);
    }
}

void tst_DownloadMovieDescription::settingsAreThoseOfTheFirstFrame()
{
    TransferRig rig;
    QVERIFY(zvtSetSsdNumFrames(rig.handle(), 100) == 0 && rig.arm() && rig.call(zvtSsdTrigger));
    rig.wait(500);
    // The times of a preset stay during a recording, but not its correction.
    QVERIFY(rig.set("corrections.names", QStringList{"", "", "", ""}));
    rig.wait(500);
    QCOMPARE(rig.state(), 3);
    QVERIFY(rig.download(0, 10));
    QVERIFY(rig.open() && correction(rig, 0));
    QVERIFY(rig.download(80, 99));
    QVERIFY(rig.open() && !correction(rig, 0));
}

void tst_DownloadMovieDescription::hasTheCorrectionsOfItsPresets()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && useTwoPresets(rig) && rig.record(4) && rig.download());
    QVERIFY(rig.open());
    for (const uint8_t preset : {uint8_t(0), uint8_t(1)}) {
        const auto *const found = correction(rig, preset);
        QVERIFY(found);
        QCOMPARE(int(found->width), 64);
        QCOMPARE(int(found->height), 4);
        QCOMPARE(found->gains.size(), 256);
        QCOMPARE(found->offsets.size(), 256);
    }
    QVERIFY(!correction(rig, 2) && !correction(rig, 3));
}

void tst_DownloadMovieDescription::hasTheCorrectionsOfItsFramesOnly()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && rig.record(4) && rig.download());
    QVERIFY(rig.open());
    QVERIFY(correction(rig, 0) && !correction(rig, 1));
    QVERIFY(rig.set("sensor.activePreset", 1) && rig.record(4) && rig.download());
    QVERIFY(rig.open());
    QVERIFY(!correction(rig, 0) && correction(rig, 1));
}

void tst_DownloadMovieDescription::hasThePartOfItsWindow()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && rig.set("sensor.window", QVariantList{96, 200, 64, 8}));
    QVERIFY(rig.record(4) && rig.download());
    QVERIFY(rig.open());
    const auto whole = rig.camera().device<emulator::Corrections>()->table(0);
    const auto *const part = correction(rig, 0);
    QVERIFY(whole && part);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 64; ++x) {
            const auto place = static_cast<size_t>((y + 200) * 640 + x + 96);
            QCOMPARE(part->gains[y * 64 + x], whole->gains[place]);
            QCOMPARE(part->offsets[y * 64 + x], whole->offsets[place]);
        }
}

void tst_DownloadMovieDescription::hasTheCorrectionsOfTheRecording()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && useTwoPresets(rig) && rig.record(4));
    QVERIFY(rig.set("corrections.names", QStringList{"", "", "Factory 1 ms", ""}));
    QVERIFY(rig.download());
    QVERIFY(rig.open() && correction(rig, 0) && correction(rig, 1) && !correction(rig, 2));
}

void tst_DownloadMovieDescription::hasNoCorrectionsWithoutAny()
{
    TransferRig rig;
    QVERIFY(rig.set("corrections.names", QStringList{"", "", "", ""}));
    QVERIFY(rig.record(4) && rig.download());
    QVERIFY(rig.open());
    QCOMPARE(rig.objects.GetCorrection(0, false), nullptr);
    QCOMPARE(calibration(rig), nullptr);
}

void tst_DownloadMovieDescription::hasTheFactoryCalibrationOfItsIntegrationTime()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && rig.set("factoryCalibrations.selected", 0));
    QVERIFY(rig.record(4));
    QVERIFY(rig.set("factoryCalibrations.selected", 1));
    QVERIFY(rig.download());
    QVERIFY(rig.open());
    const auto *const object = calibration(rig);
    QVERIFY(object);
    const hlx::reduce::CRCalFile &file = object->calibration;
    QCOMPARE(QString::fromUtf8(file.name.c_str()), u"10 to 60 °C"_s);
    QVERIFY2(file.low > 270 && file.low < 300, qPrintable(QString::number(file.low)));
    QVERIFY2(file.high > 305 && file.high < 350, qPrintable(QString::number(file.high)));
    // The value rises with the count, from one end of the range to the other.
    double before = static_cast<double>(file.low);
    for (double count = 2700; count <= 14'800; count += 100) {
        const double value = valueAt(file, count);
        QVERIFY2(value > before && value < static_cast<double>(file.high), qPrintable(QString::number(count)));
        before = value;
    }
}

void tst_DownloadMovieDescription::theCalibrationCountsWithSkimming()
{
    constexpr double volts = 1.2;
    TransferRig rig;
    QVERIFY(correct(rig, false) && rig.set("factoryCalibrations.selected", 0));
    QVERIFY(rig.record(4) && rig.download());
    const double integrationTime = rig.open()->description().presets[0].integrationTime;
    const hlx::reduce::CRCalFile plain = calibration(rig)->calibration;
    QVERIFY(rig.set("analog.skimmingEnabled", true) && rig.set("analog.skimmingVoltage", volts));
    QVERIFY(rig.record(4) && rig.download());
    QVERIFY(rig.open());
    const hlx::reduce::CRCalFile skimmed = calibration(rig)->calibration;
    const double lost = 600 * volts * integrationTime / 2;
    const double difference = valueAt(skimmed, 8000 - lost) - valueAt(plain, 8000);
    QVERIFY2(lost > 200 && std::abs(difference) < 0.3, qPrintable(QString::number(difference)));
}

void tst_DownloadMovieDescription::hasNoCalibrationForAnotherTime()
{
    TransferRig rig;
    QVERIFY(correct(rig, false) && rig.set("sensor.integrationTime", 1.4));
    QVERIFY(rig.record(4) && rig.download());
    QVERIFY(rig.open());
    QCOMPARE(calibration(rig), nullptr);
}

void tst_DownloadMovieDescription::anAbatedMovieHasNoObjects()
{
    TransferRig rig;
    QVERIFY(correct(rig, true) && rig.set("factoryCalibrations.selected", 0));
    QVERIFY(rig.record(4) && rig.download());
    const auto movie = rig.open();
    QVERIFY(movie && movie->description().abated);
    QCOMPARE(correction(rig, 0), nullptr);
    QCOMPARE(calibration(rig), nullptr);
    QCOMPARE(rig.downloaded(), rig.recorded());
}

ZVT_TEST(tst_DownloadMovieDescription)
#include "tst_DownloadMovieDescription.moc"
