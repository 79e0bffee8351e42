#pragma once

#include "platform/emulator/devices/CorrectionFile.h"
#include "platform/emulator/devices/presets.h"
#include "platform/emulator/image/Exposure.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace emulator
{

/// The correction of a preset when a frame was recorded. It does not change afterwards, also if the preset gets another
/// one, or the file of the correction is replaced, renamed or deleted. Any thread.
class RecordedCorrection
{
public:
    /// Returns the correction, and takes up to 0.1 s. Nothing if it is damaged.
    using Read = std::function<std::optional<Correction>()>;

    explicit RecordedCorrection(const Correction &correction)
        : m_info(correction.info), m_table(correction.table), m_kept(correction.table)
    {
    }
    /// A correction that has not been in use. It is read in the first call of correction(), and kept.
    explicit RecordedCorrection(Read read) : m_read(std::move(read)) { }

    /// Nothing if it is damaged. The thread must not hold the camera's lock.
    std::optional<Correction> correction();
    /// Whether the last correction() could not read a correction that was stored: the frames cannot be rendered as they
    /// were recorded.
    bool isLost();
    /// The correction can be read as often as needed from now on, and is not kept.
    void readFrom(Read source);

private:
    std::mutex m_mutex;
    Read m_read; ///< Empty after its only call.
    Read m_source; ///< May be called again.
    bool m_lost = false;
    CorrectionInfo m_info; ///< Of the table.
    std::weak_ptr<const image::CorrectionTable> m_table; ///< While anybody uses it.
    std::shared_ptr<const image::CorrectionTable> m_kept; ///< Null with a source.
};

/// The values of an exposure that change without a command.
struct RecordedMotion {
    double magnification = 1;
    double defocus = 0;
    double lensCelsius = 0;
    double flagCover = 0;
    double flagCelsius = 0;
    double transmission = 1;
    double filterCelsius = 0;
    double warmth = 0;
    double caseCelsius = 0;
    bool blocked = false;

    /// Moves these values out of an exposure, which gets the same values for all.
    static RecordedMotion takeFrom(image::Exposure &exposure);
    void putInto(image::Exposure &exposure) const;
    /// Whether frames show a difference.
    bool differsFrom(const RecordedMotion &other) const;
};

/// The settings at a time, of all presets.
struct RecordedSettings {
    struct Preset {
        image::Exposure exposure; ///< Without motion, frame and correction.
        std::shared_ptr<RecordedCorrection> correction; ///< Null: none.
    };

    /// What the IRIG time of a frame is that of. The numbers of VideoOutput::irigLatch().
    enum IrigLatch : uint8_t { FrameStarts, IntegrationStarts, IntegrationEnds };

    std::array<Preset, maximumPresets> presets;
    int64_t irigShift = 0; ///< See CameraClock::irigShift().
    int64_t realTimeShift = 0; ///< See CameraClock::realTimeShift().
    IrigLatch irigLatch = FrameStarts;
    double integrationDelay = 0; ///< From the beginning of a frame until the integration, in microseconds.

    bool equals(const RecordedSettings &other) const;
};

} // namespace emulator
