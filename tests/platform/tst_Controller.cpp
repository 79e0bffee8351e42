#include "platform/emulator/control.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/hlxcamzvt/makeController.h"
#include "tests/support/Test.h"

#include <QJsonValue>
#include <QTemporaryDir>

#include <array>
#include <functional>

using emulator::Camera;
using hlx::cam::CZVTController;
using hlx::cam::IController;

namespace
{

/// One operation, with a function that calls it and returns its outputs as a text. After a failed call the text
/// contains the unchanged outputs.
struct Operation {
    enum Kind { Read, Write, NeedsMovie };

    const char *name;
    Kind kind;
    std::function<QString(CZVTController &)> call;
    const char *arguments = "";
};

template <class... Values> QString text(const Values &...values)
{
    QString all;
    QDebug stream(&all);
    (stream << ... << values);
    return all;
}

template <class T, class Member> QString listText(const hlx::TArray<T> &list, Member member)
{
    QString all;
    for (const T &item : list)
        all += text(member(item));
    return all;
}

double same(double value) { return value; }

std::vector<Operation> windowOperations()
{
    using C = CZVTController;
    return {
        {"GetWindowSizes", Operation::Read,
         [](C &c) {
             hlx::TArray<IController::SWindowSize> sizes{{1, 2}};
             const bool ok = c.GetWindowSizes(&sizes);
             return text(ok, listText(sizes, [](const auto &s) {
                             return QString::number(s.width) + u'x' + QString::number(s.height);
                         }));
         }},
        {"GetWindowSizeIndex", Operation::Read,
         [](C &c) {
             int index = -7;
             const bool ok = c.GetWindowSizeIndex(&index);
             return text(ok, index);
         }},
        {"GetCanWindowCustom", Operation::Read,
         [](C &c) {
             bool allowed = false;
             const bool ok = c.GetCanWindowCustom(&allowed);
             return text(ok, allowed);
         }},
        {"GetCanWindowCustomOffset", Operation::Read,
         [](C &c) {
             bool allowed = false;
             const bool ok = c.GetCanWindowCustomOffset(&allowed);
             return text(ok, allowed);
         }},
        {"GetWindow", Operation::Read,
         [](C &c) {
             uint16_t x = 1;
             uint16_t y = 2;
             uint16_t width = 3;
             uint16_t height = 4;
             const bool ok = c.GetWindow(&x, &y, &width, &height);
             return text(ok, x, y, width, height);
         }},
        {"GetWindowLimits", Operation::Read,
         [](C &c) {
             uint16_t l[6] = {1, 2, 3, 4, 5, 6};
             c.GetWindowLimits(l, l + 1, l + 2, l + 3, l + 4, l + 5);
             return text(l[0], l[1], l[2], l[3], l[4], l[5]);
         }},
        {"SetWindowSizeIndex", Operation::Write, [](C &c) { return c.SetWindowSizeIndex(1), QString(); }, "1"},
        {"SetWindow", Operation::Write, [](C &c) { return text(c.SetWindow(16, 4, 64, 8)); }, "16, 4, 64, 8"},
    };
}

std::vector<Operation> rateOperations()
{
    using C = CZVTController;
    return {
        {"GetPresetFrameRates", Operation::Read,
         [](C &c) {
             hlx::TArray<double> rates{-7.0};
             c.GetPresetFrameRates(1, &rates);
             return listText(rates, same);
         },
         "1"},
        {"GetPresetFrameRateIndex", Operation::Read,
         [](C &c) {
             int index = -7;
             c.GetPresetFrameRateIndex(1, &index);
             return text(index);
         },
         "1"},
        {"GetPresetFrameRate", Operation::Read,
         [](C &c) {
             double hertz = -7;
             const bool ok = c.GetPresetFrameRate(1, &hertz);
             return text(ok, hertz);
         },
         "1"},
        {"GetSuperframeRates", Operation::Read,
         [](C &c) {
             hlx::TArray<double> rates{-7.0};
             c.GetSuperframeRates(&rates);
             return listText(rates, same);
         }},
        {"GetSuperframeRateIndex", Operation::Read,
         [](C &c) {
             int index = -7;
             const bool ok = c.GetSuperframeRateIndex(&index);
             return text(ok, index);
         }},
        {"GetSuperframeRate", Operation::Read,
         [](C &c) {
             double hertz = -7;
             const bool ok = c.GetSuperframeRate(&hertz);
             return text(ok, hertz);
         }},
        {"GetAverageFrameRate", Operation::Read,
         [](C &c) {
             double hertz = -7;
             const bool ok = c.GetAverageFrameRate(&hertz);
             return text(ok, hertz);
         }},
        {"GetPresetIntegrationTime", Operation::Read,
         [](C &c) {
             double milliseconds = -7;
             const bool ok = c.GetPresetIntegrationTime(1, &milliseconds);
             return text(ok, milliseconds);
         },
         "1"},
        {"SetPresetFrameRateIndex", Operation::Write, [](C &c) { return c.SetPresetFrameRateIndex(1, 0), QString(); },
         "1, 0"},
        {"SetPresetFrameRate", Operation::Write, [](C &c) { return c.SetPresetFrameRate(1, 1, 12.5), QString(); },
         "1, 1, 12.5"},
        {"SetSuperframeRateIndex", Operation::Write, [](C &c) { return c.SetSuperframeRateIndex(2), QString(); }, "2"},
        {"SetSuperframeRate", Operation::Write, [](C &c) { return c.SetSuperframeRate(1, 2.5), QString(); }, "1, 2.5"},
        {"SetPresetIntegrationTime", Operation::Write,
         [](C &c) { return c.SetPresetIntegrationTime(1, 1, 3.5), QString(); }, "1, 1, 3.5"},
    };
}

std::vector<Operation> presetOperations()
{
    using C = CZVTController;
    return {
        {"GetSequencingModes", Operation::Read,
         [](C &c) {
             hlx::TArray<uint32_t> modes{77};
             const bool ok = c.GetSequencingModes(&modes);
             return text(ok, listText(modes, same));
         }},
        {"GetPresetSequencingMode", Operation::Read,
         [](C &c) {
             int mode = -7;
             const bool ok = c.GetPresetSequencingMode(&mode);
             return text(ok, mode);
         }},
        {"GetPresetSequence", Operation::Read,
         [](C &c) {
             C::SPresetSequenceEntry entries[5];
             for (auto &entry : entries)
                 entry = {77, 77};
             const bool ok = c.GetPresetSequence(entries, 9);
             // At most four entries are written.
             return entries[4].preset == 77 ? text(ok, entries[0].preset, entries[3].preset, entries[0].count)
                                            : QString();
         },
         "9"},
        {"GetSubframeEnabled", Operation::Read,
         [](C &c) {
             bool enabled = false;
             c.GetSubframeEnabled(1, &enabled);
             return text(enabled);
         },
         "1"},
        {"GetDwellCount", Operation::Read,
         [](C &c) {
             unsigned int count = 77;
             c.GetDwellCount(1, &count);
             return text(count);
         },
         "1"},
        {"GetActivePreset", Operation::Read,
         [](C &c) {
             uint8_t preset = 77;
             const bool ok = c.GetActivePreset(&preset);
             return text(ok, int(preset));
         }},
        {"GetIsLowCost", Operation::Read, [](C &c) { return text(c.GetIsLowCost()); }},
        {"GetReduceNoise", Operation::Read, [](C &c) { return text(c.GetReduceNoise()); }},
        {"HasRealTimeClock", Operation::Read, [](C &c) { return text(c.HasRealTimeClock()); }},
        {"GetVideoSource", Operation::Read, [](C &c) { return text(bool(c.GetVideoSource())); }},
        {"IsConnected", Operation::Read, [](C &c) { return text(c.IsConnected()); }},
        {"GetHandle", Operation::Read, [](C &c) { return text(c.GetHandle() != 0); }},
        {"GetIsFactoryCalibrated", Operation::Read,
         [](C &c) {
             bool calibrated = false;
             const bool ok = c.GetIsFactoryCalibrated(&calibrated);
             return text(ok, calibrated);
         }},
        {"GetFactoryCalibrations", Operation::Read,
         [](C &c) {
             hlx::TArray<IController::SFactoryCalibration> list;
             const bool ok = c.GetFactoryCalibrations(&list);
             return text(ok, listText(list, [](const auto &item) { return QString::fromUtf8(item.name.c_str()); }));
         }},
        {"GetPresetCalibrationIndex", Operation::Read,
         [](C &c) {
             int index = -7;
             const bool ok = c.GetPresetCalibrationIndex(1, &index);
             return text(ok, index);
         },
         "1"},
        {"SetPresetCalibrationIndex", Operation::Write,
         [](C &c) { return c.SetPresetCalibrationIndex(1, 2, 1), QString(); }, "1, 2, 1"},
        {"SetPresetSequencingMode", Operation::Write, [](C &c) { return c.SetPresetSequencingMode(2), QString(); },
         "2"},
        {"SetSubframeEnabled", Operation::Write, [](C &c) { return c.SetSubframeEnabled(1, false), QString(); },
         "1, false"},
        {"SetDwellCount", Operation::Write, [](C &c) { return c.SetDwellCount(1, 6), QString(); }, "1, 6"},
        {"SetVideoPreset", Operation::Write, [](C &c) { return c.SetVideoPreset(2), QString(); }, "2"},
        {"SetActivePreset", Operation::Write, [](C &c) { return c.SetActivePreset(3), QString(); }, "3"},
        {"SetReduceNoise", Operation::Write, [](C &c) { return c.SetReduceNoise(false), QString(); }, "false"},
        {"CanDownload", Operation::Read, [](C &c) { return text(c.CanDownload()); }},
    };
}

/// Operations that need frames in the memory of the recorder.
std::vector<Operation> movieOperations()
{
    using C = CZVTController;
    return {
        {"DownloadMovie", Operation::NeedsMovie, [](C &c) { return text(c.DownloadMovie("movie.rqs", {}, 0, 9)); },
         "\"movie.rqs\", delegate, 0, 9"},
        {"FindFrameRange", Operation::NeedsMovie,
         [](C &c) {
             unsigned int first = 7;
             unsigned int last = 8;
             const bool ok = c.FindFrameRange({}, {}, &first, &last);
             return text(ok, first, last);
         },
         "object, object"},
    };
}

const std::vector<Operation> &operations()
{
    static const auto all = [] {
        std::vector<Operation> list;
        for (const auto &part : {windowOperations(), rateOperations(), presetOperations(), movieOperations()})
            list.insert(list.end(), part.begin(), part.end());
        return list;
    }();
    return all;
}

} // namespace

class tst_Controller : public Test
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyOperationAnswers_data() { addOperations(); }
    void everyOperationAnswers();
    void aFailureLeavesEverythingAlone_data() { addOperations(); }
    void aFailureLeavesEverythingAlone();
    void onlyWhatTheFrameworkAnswersIsSureToCome_data() { addOperations(); }
    void onlyWhatTheFrameworkAnswersIsSureToCome();
    void withoutAConnectionNothingWorks_data() { addOperations(); }
    void withoutAConnectionNothingWorks();
    void withoutACameraNothingWorks_data() { addOperations(); }
    void withoutACameraNothingWorks();
    void nullOutputsAreRefused();
    void aPresetSequenceHasOnlyThePresetsOfTheCamera();
    void answersCanBeScripted();
    void theStreamStopsAndStarts();
    void aCameraMayHaveNoStream();

private:
    void addOperations();
    const Operation &operation() const;
    /// Returns the text of the operation when it fails.
    QString untouched() const;
    emulator::Call lastCall() { return m_camera->gate().calls().back(); }
    emulator::Sensor &sensor() { return *m_camera->device<emulator::Sensor>(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<Camera> m_camera;
    hlx::TSharedPtr<CZVTController> m_controller;
};

void tst_Controller::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
    QFile profile(m_folder->filePath(QStringLiteral("camera.json")));
    QVERIFY(profile.open(QIODevice::WriteOnly));
    profile.write(R"({"title": "All", "extends": "everything", "devices": {"sensor": {"lowCost": true}}})");
    profile.close();
    m_camera = Camera::create(profile.fileName(), m_folder->path());
    m_camera->connect();
    // All values differ from those of a failed operation.
    sensor().setReduceNoise(true);
    m_controller = hlx::cam::makeController(m_camera);
}

void tst_Controller::cleanup()
{
    m_controller.reset();
    m_camera.reset();
    m_folder.reset();
}

void tst_Controller::addOperations()
{
    QTest::addColumn<int>("row");
    for (size_t row = 0; row < operations().size(); ++row)
        QTest::newRow(operations()[row].name) << static_cast<int>(row);
}

const Operation &tst_Controller::operation() const
{
    QFETCH(int, row);
    return operations()[static_cast<size_t>(row)];
}

QString tst_Controller::untouched() const { return operation().call(*hlx::cam::makeController(nullptr)); }

void tst_Controller::everyOperationAnswers()
{
    const QJsonObject before = sensor().save();
    const size_t mark = m_camera->gate().mark();
    const QString answer = operation().call(*m_controller);
    const auto calls = m_camera->gate().callsSince(mark);
    QCOMPARE(calls.size(), size_t(1));
    QCOMPARE(calls[0].name, "controller." + std::string(operation().name));
    QCOMPARE(calls[0].arguments, std::string(operation().arguments));
    QCOMPARE(calls[0].thread, std::this_thread::get_id());
    QCOMPARE(calls[0].status, int(operation().kind == Operation::NeedsMovie ? emulator::Refused : emulator::Ok));
    QCOMPARE(answer != untouched(),
             operation().kind == Operation::Read || (operation().kind == Operation::Write && !answer.isEmpty()));
    QCOMPARE(sensor().save() != before, operation().kind == Operation::Write);
}

void tst_Controller::aFailureLeavesEverythingAlone()
{
    const QJsonObject before = sensor().save();
    m_camera->gate().failAlways("controller." + std::string(operation().name));
    QCOMPARE(operation().call(*m_controller), untouched());
    QCOMPARE(lastCall().status, int(emulator::Injected));
    QCOMPARE(sensor().save(), before);
}

void tst_Controller::onlyWhatTheFrameworkAnswersIsSureToCome()
{
    const bool known = QStringList{"GetHandle", "HasRealTimeClock", "IsConnected"}.contains(operation().name);
    m_camera->gate().failRandomly(1, 1);
    if (known)
        m_camera->gate().delay(3'600'000);
    const QString answer = operation().call(*m_controller);
    QCOMPARE(lastCall().status, int(known ? emulator::Ok : emulator::Injected));
    QCOMPARE(answer != untouched(), known);
}

void tst_Controller::withoutAConnectionNothingWorks()
{
    const QJsonObject before = sensor().save();
    m_camera->disconnect();
    const QString answer = operation().call(*m_controller);
    QCOMPARE(sensor().save(), before);
    const std::string name = operation().name;
    if (name == "GetHandle") {
        QCOMPARE(m_controller->GetHandle(), m_camera->handle());
        return;
    }
    QCOMPARE(answer, untouched());
    // This operation succeeds on a camera that is not connected.
    QCOMPARE(lastCall().status, int(name == "IsConnected" ? emulator::Ok : emulator::NotConnected));
}

void tst_Controller::withoutACameraNothingWorks()
{
    const size_t mark = emulator::Sdk::gate().mark();
    QVERIFY(!untouched().contains(QStringLiteral("true")));
    const auto calls = emulator::Sdk::gate().callsSince(mark);
    QCOMPARE(calls.size(), size_t(1));
    QCOMPARE(calls[0].status, int(emulator::InvalidHandle));
}

void tst_Controller::nullOutputsAreRefused()
{
    QVERIFY(!m_controller->GetWindow(nullptr, nullptr, nullptr, nullptr));
    QVERIFY(!m_controller->GetWindowSizes(nullptr));
    QVERIFY(!m_controller->GetPresetSequence(nullptr, 4));
    hlx::cam::IZVTController::SPresetSequenceEntry entry{77, 77};
    QVERIFY(!m_controller->GetPresetSequence(&entry, 0));
    QVERIFY(!m_controller->GetPresetSequence(&entry, -1));
    QCOMPARE(entry.preset, 77U);
    QVERIFY(m_controller->GetPresetSequence(&entry, 1));
    QCOMPARE(entry.preset, 0U);
}

void tst_Controller::aPresetSequenceHasOnlyThePresetsOfTheCamera()
{
    QJsonValue results;
    m_camera->gate().onCall([&](const emulator::CallEvent &event) { results = event.results; }, true);
    std::array<hlx::cam::IZVTController::SPresetSequenceEntry, emulator::maximumPresets + 1> entries{};
    entries.back().preset = 77;
    QVERIFY(m_controller->GetPresetSequence(entries.data(), int(entries.size())));
    QCOMPARE(entries.back().preset, 77U);
    const auto described = QByteArray::fromBase64(results[0]["base64"].toString().toLatin1());
    QCOMPARE(size_t(described.size()), sizeof entries - sizeof entries[0]);
}

void tst_Controller::answersCanBeScripted()
{
    auto &gate = m_camera->gate();
    gate.script("controller.IsConnected", false);
    QVERIFY(!m_controller->IsConnected());
    gate.script("controller.GetHandle", 12345ULL);
    QCOMPARE(m_controller->GetHandle(), uint64_t(12345));
    gate.script("controller.GetIsLowCost", false);
    QVERIFY(!m_controller->GetIsLowCost());
    gate.script("controller.GetAverageFrameRate", 0.0);
    double hertz = -7;
    QVERIFY(m_controller->GetAverageFrameRate(&hertz));
    QCOMPARE(hertz, 0.0);
    gate.script("controller.LoadState", true);
    QVERIFY(m_controller->LoadState("night"));
}

void tst_Controller::theStreamStopsAndStarts()
{
    const auto source = m_controller->GetVideoSource();
    QVERIFY(source);
    QVERIFY(sensor().streaming());
    source->StopStream();
    QCOMPARE(lastCall().name, std::string("controller.StopStream"));
    QVERIFY(!sensor().streaming());
    source->StartStream();
    QCOMPARE(lastCall().name, std::string("controller.StartStream"));
    QVERIFY(sensor().streaming());
    m_controller.reset();
    m_camera.reset();
    source->StopStream();
}

void tst_Controller::aCameraMayHaveNoStream()
{
    QFile profile(m_folder->filePath(QStringLiteral("mute.json")));
    QVERIFY(profile.open(QIODevice::WriteOnly));
    profile.write(R"({"title": "Mute", "extends": "bare", "devices": {"sensor": {"videoStream": false}}})");
    profile.close();
    const auto mute = Camera::create(profile.fileName(), m_folder->path());
    mute->connect();
    QVERIFY(!hlx::cam::makeController(mute)->GetVideoSource());
    QCOMPARE(mute->gate().calls().back().status, int(emulator::Absent));
}

ZVT_TEST(tst_Controller)
#include "tst_Controller.moc"
