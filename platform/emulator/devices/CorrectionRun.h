#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/CorrectionFlag.h"
#include "platform/emulator/devices/CorrectionInfo.h"
#include "platform/emulator/devices/CorrectionSetup.h"
#include "platform/emulator/devices/presets.h"
#include "platform/emulator/image/FrameCollector.h"
#include "platform/emulator/image/makeCorrection.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace emulator
{

/// The run that makes a correction: it collects frames of one or two sources and computes gains and offsets from them.
/// A run started by start() ends in a pending correction (Corrections::offer()). An automatic run updates the offsets
/// of presets, one after another, by the flag.
///
/// A run advances by Clock, with the calls to the camera. A call advances it up to a step that needs frames or their
/// computation; these are made by look(), on the calling thread and with the camera's lock released. So a run waits for
/// a call that looks at it. A disconnection does not end it.
class CorrectionRun : public Device
{
public:
    enum RunStatus : uint16_t {
        Ready = 0,
        Saving = 1,
        WaitingForFirst = 2, ///< For the operator; WaitingForFlag for the first source of the flag.
        WaitingForFlag = 3,
        CollectingFirst = 4,
        FirstDone = 5,
        WaitingForSecond = 6,
        WaitingForFlagAgain = 7,
        CollectingSecond = 8,
        SecondDone = 9,
        CollectingTwinklers = 10,
        TwinklersDone = 11,
        Computing = 12,
        Starting = 13,
        ApplyingFactoryBadPixels = 14,
    };
    enum Result : uint16_t { Done = 0, Aborted = 1, InvalidParameters = 2, FlagTooHot = 3 };

    /// No profile keys and no settings. The devices CorrectionSetup and Corrections must exist before.
    CorrectionRun(Camera &camera, Section &section);

    /// Starts a run with the values of CorrectionSetup, and discards a pending correction. Refused while a run is on,
    /// for a preset that makes no frames in the present sequencing mode, and if it had to use a factory's list of bad
    /// pixels that cannot be used. Releases the camera's lock, as look() does.
    Status start();
    /// Starts automatic runs for presets in turn. Refused while a run is on or a correction is pending, without a flag,
    /// and without a preset.
    Status startAutomatic(std::vector<int> presets);
    /// The source is in place. Refused unless the run waits for the operator.
    Status proceed();
    /// Ends the run. Refused without one.
    Status abort();

    /// Ends an automatic run, since its frames are needed otherwise. Returns false if another run is on.
    bool giveWay();

    bool running() const { return m_status != Ready; }
    /// Whether a thread exposes frames or computes at present.
    bool busy() const { return m_busy; }

    // These three look().

    /// The RunStatus, and a text for the operator in UTF-8.
    Status status(uint16_t &number, std::string &text);
    /// The Result of the last run and its text; Done before the first one.
    Status result(uint16_t &number, std::string &text);
    /// The counts of the last run with result Done for a preset. Zeros before such a run, and for a preset that the
    /// camera lacks.
    Status counts(uint8_t preset, image::BadPixelCounts &counts);

    /// The bad pixels of the correction in use for a preset have been changed to these. They replace the counts of the
    /// last run also if its correction has been discarded, or another one loaded since.
    void recount(int preset, const image::BadPixelCounts &counts) { m_counts.at(static_cast<size_t>(preset)) = counts; }

    /// Exposes frames that are due, at most 64, and computes the correction; the next look continues. Other threads
    /// that look meanwhile do not wait. The thread must hold the camera's lock exactly once, as in a call. Returns
    /// NotConnected if the camera is no longer connected afterwards.
    Status look();

    void catchUp() override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    enum CollectorIndex : size_t { First, Second, Twinkling };
    static constexpr size_t sources = 3;
    using Collector = std::shared_ptr<image::FrameCollector>;
    /// How the frames are read out. It must not change during a run.
    struct Readout {
        image::Window window;
        std::array<bool, 2> flips; ///< ImageMode::reverted() and inverted().
        bool operator==(const Readout &) const = default;
    };
    struct Made {
        std::shared_ptr<const image::CorrectionTable> table;
        image::BadPixelCounts counts;
    };

    bool mayStart() const;
    Readout presentReadout() const;
    void begin(const CorrectionSetup::Values &values);
    void enter(RunStatus status, int64_t time);
    RunStatus nextStatus() const;
    RunStatus firstWait() const;
    RunStatus lastSteps() const;
    std::optional<int64_t> endOfStep(int64_t now);
    std::optional<int64_t> endOfCollecting(int64_t now);
    std::optional<int64_t> endOfFlagWait(int64_t now);
    void finish(Result result);
    bool parametersAreValid() const;
    static bool usesFactoryList(const CorrectionSetup::Values &values);
    bool twoPoint() const { return m_values.type == CorrectionSetup::TwoPoint; }
    bool internal() const { return m_values.source == CorrectionSetup::Internal; }
    bool collecting() const;
    bool atSecondSource() const;
    size_t source() const;
    uint32_t wantedFrames() const;
    double frameRate() const;
    int64_t collectingMilliseconds(double rate) const;
    uint32_t dueFrames() const;
    int64_t computingMilliseconds() const;
    std::string statusText() const;
    bool exposeDueFrames(uint32_t &most);
    bool compute();
    std::optional<image::MadeCorrection> make(const CorrectionSetup::Values &values,
                                              const std::array<Collector, sources> &collectors);
    void deliver(Made made);

    std::atomic<uint64_t> m_number = 0; ///< Counts runs and their ends, so that late frames are dropped.
    RunStatus m_status = Ready;
    Result m_result = Done;
    CorrectionSetup::Values m_values; ///< Of the present run.
    std::array<image::BadPixelCounts, maximumPresets> m_counts;
    std::optional<std::vector<int>> m_automatic; ///< Of an automatic run: the presets that follow.
    Readout m_readout{}; ///< At the start of the run.
    CorrectionInfo m_info; ///< The camera when the first frames were collected.
    int64_t m_stepStart = 0; ///< Times of Clock.
    bool m_continued = false; ///< The operator has placed the source.
    std::optional<int64_t> m_silentSince; ///< While the camera makes no frames to collect.
    CorrectionFlag m_flag;
    bool m_busy = false; ///< A thread exposes frames or computes.
    uint32_t m_collected = 0; ///< Frames of the present step.
    std::array<Collector, sources> m_collectors; ///< By CollectorIndex.
    bool m_computed = false;
    std::optional<Made> m_made; ///< Nothing if the frames give no correction.
};

} // namespace emulator
