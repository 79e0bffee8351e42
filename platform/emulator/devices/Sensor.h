#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/DetectorArray.h"
#include "platform/emulator/devices/SensorGeometry.h"
#include "platform/emulator/devices/SensorReadout.h"
#include "platform/emulator/devices/SensorTiming.h"

#include <array>
#include <cstdint>
#include <vector>

namespace emulator
{

/// The detector with its timing: the window that is read out, the presets with their integration times and frame rates,
/// and the sequence of the presets. Times are kept in clocks, as in the hardware; times in milliseconds and rates in
/// hertz are set to the nearest whole number of clocks. Presets count from 0. Functions with a preset refuse one that
/// the camera lacks.
class Sensor : public Device
{
public:
    static constexpr int allPresets = 4;
    static constexpr uint32_t minimumIntegrationWidth = 20;
    static constexpr uint32_t maximumDwellCount = 0x7FFFFFFF;

    enum Sequencing : uint32_t { SinglePreset = 0, Superframing = 1, PresetSequencing = 2 };

    using Size = SensorGeometry::Size;
    using Window = SensorGeometry::Window;

    /// Profile keys: those of SensorGeometry, SensorReadout and DetectorArray; "clockFrequency" (Hz);
    /// "maximumIntegrationTime" and the list "integrationTimes" (ms; the last entry is for all further presets);
    /// "frameRate" (Hz); "numPresets"; the list "sequencingModes"; "lowCost", "videoStream" and "saturated".
    ///
    /// Settings: "window" (a list of x, y, width, height), "sequencingMode", "activePreset", "videoPreset",
    /// "gigEPreset", "reduceNoise", "saturated", "superframeRate" (Hz), and of the active preset "integrationTime"
    /// (ms), "frameRate" (Hz), "dwellCount" and "subframeEnabled".
    Sensor(Camera &camera, Section &section);

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    Refusal change(const QString &name, const QJsonValue &value) override;
    std::vector<SettingInfo> settings() const override;

    /// Whether a recorder needs the frames as they are. Meanwhile the window, the sequencing, the times of the presets
    /// and the settings on which their shortest times depend are refused.
    bool framesAreHeld() const;

    uint32_t clockFrequency() const { return m_clockFrequency; }
    /// Converts a period to a rate. Refuses 0 clocks.
    Status clocksToHertz(uint32_t clocks, double &hertz) const;
    Status clocksToMilliseconds(uint32_t clocks, double &milliseconds) const;
    /// Returns the nearest rate whose period is a whole number of clocks. Refuses a rate that is not above 0.
    Status snapHertz(double wanted, double &snapped) const;

    int numPresets() const { return m_numPresets; }
    bool lowCost() const { return m_lowCost; }
    bool hasVideoStream() const { return m_hasVideoStream; }

    const SensorGeometry &geometry() const { return m_geometry; }
    const SensorReadout::Constants &readoutConstants() const { return m_readout.constants(); }
    /// Changes the readout, and makes frames longer that have become too short for it. The caller asks framesAreHeld().
    void setReadoutConstants(const SensorReadout::Constants &constants);
    const DetectorArray &array() const { return m_array; }
    DetectorArray &array() { return m_array; }
    void expose(int preset, image::Exposure &exposure) const override;
    /// Sets the window as SensorGeometry does, and makes frames longer that have become too short for it.
    Status setWindowSizeIndex(int index);
    Status setWindow(const Window &window);

    Status integrationWidth(int preset, uint32_t &clocks) const;
    /// Does not change the frame width, even if it becomes too short. Refuses times outside the range of the sensor.
    Status setIntegrationWidth(int preset, uint32_t clocks);
    Status integrationTime(int preset, double &milliseconds) const;
    /// Sets the nearest valid time, and makes frames longer that have become too short for it.
    Status setIntegrationTime(int preset, double milliseconds);

    Status frameWidth(int preset, uint32_t &clocks) const;
    /// Sets the frame period in clocks. Refuses a period below the shortest one for the preset and the window.
    Status setFrameWidth(int preset, uint32_t clocks);
    /// The rates that the camera offers for a preset, in hertz, the highest first. The indices below are rows of them.
    Status frameRates(int preset, std::vector<double> &hertz) const;
    /// -1 if the present rate is not one of the offered rates.
    Status frameRateIndex(int preset, int &index) const;
    Status setFrameRateIndex(int preset, int index);
    Status frameRate(int preset, double &hertz) const;
    /// Sets the nearest valid rate. Refuses a rate that is not above 0.
    Status setFrameRate(int preset, double hertz);
    /// The frames that the present settings make: of all presets in use.
    SensorTiming timing() const;
    /// The frames of this preset alone, which must exist.
    SensorTiming timingOf(int preset) const;
    /// The shortest frame period for a window and an integration time, both in clocks. Refuses an empty window.
    Status minimumFrameWidth(const Size &size, uint32_t integration, bool sequencing, uint32_t &clocks) const;

    const std::vector<uint32_t> &sequencingModes() const { return m_sequencingModes; }
    /// Whether the frame sync starts the readout: then the change to another preset takes no time of its own, since it
    /// happens during the readout. Makes frames longer that become too short without it.
    bool syncStartsReadout() const { return m_syncStartsReadout; }
    void setSyncStartsReadout(bool startsReadout);

    uint32_t sequencingMode() const { return m_sequencingMode; }
    Status setSequencingMode(uint32_t mode) { return assign(m_sequencingMode, mode); }
    /// Number of frames of a preset in one cycle of the present mode, 0 for a preset that is not in use.
    uint32_t repeats(int preset) const;
    /// Whether superframes contain a frame of the preset.
    Status subframeEnabled(int preset, bool &enabled) const;
    Status setSubframeEnabled(int preset, bool enabled);
    /// The number of frames of a preset in one cycle of PresetSequencing, 0 to maximumDwellCount.
    Status dwellCount(int preset, uint32_t &count) const;
    Status setDwellCount(int preset, uint32_t count);

    std::vector<double> superframeRates() const;
    int superframeRateIndex() const;
    Status setSuperframeRateIndex(int index);
    double superframeRate() const;
    /// Sets the nearest valid rate. Refuses a rate that is not above 0.
    Status setSuperframeRate(double hertz);

    int activePreset() const { return m_activePreset; }
    Status setActivePreset(int preset) { return assign(m_activePreset, preset); }
    /// Makes the `count`-th preset with a dwell count after the active one the active one, in the order of the presets.
    /// Returns false if no preset has a dwell count.
    bool advanceActivePreset(uint64_t count);
    int videoPreset() const { return m_videoPreset; }
    Status setVideoPreset(int preset) { return assign(m_videoPreset, preset); }
    /// The preset that is streamed over GigE, or allPresets. Absent if the camera lacks the capability "hasGigEPreset".
    Status gigEPreset(uint8_t &preset) const;
    Status setGigEPreset(int preset);
    bool reduceNoise() const { return m_reduceNoise; }
    Status setReduceNoise(bool reduce) { return assign(m_reduceNoise, reduce); }

    /// Whether another client has raised the saturation flag.
    bool saturationFlag() const { return m_saturationFlag; }

    /// Whether the frames are streamed to the client. A new connection streams, also if the last one had stopped it.
    bool streaming() const { return m_streaming; }
    void setStreaming(bool streaming) { m_streaming = streaming; }
    void connectionChanged(bool connected) override { m_streaming = m_streaming || connected; }

private:
    struct Preset {
        uint32_t integrationWidth = 0; ///< Clocks.
        uint32_t frameWidth = 0; ///< Clocks. Frames take longer if it is too short for the integration.
        uint32_t dwellCount = 1;
        bool subframeEnabled = true;
        SettingTable settings; ///< The settings of this preset.
    };

    void readSettings(Section &section);
    void addPresetSettings(int preset);
    QStringList restorePreset(int preset, const QJsonObject &saved);
    Between integrationWidths() const { return {minimumIntegrationWidth, double(m_maximumIntegrationWidth)}; }
    bool hasPreset(int preset) const { return preset >= 0 && preset < m_numPresets; }
    bool hasGigEPreset() const;
    uint32_t minimumFrameWidth(int preset, bool sequencing) const;
    uint32_t minimumFrameWidth(int preset) const;
    uint32_t effectiveFrameWidth(int preset) const;
    SensorTiming::Preset presetTiming(int preset, uint32_t repeats) const;
    uint64_t minimumSuperframeWidth() const;
    uint64_t superframeWidth() const;
    template <class Width> std::vector<Width> offeredWidths(Width minimum) const;
    template <class Width> Width nearestWidth(double hertz, Width minimum) const;
    template <class Width> std::vector<double> toHertz(const std::vector<Width> &widths) const;
    void stretchFrames();

    uint32_t m_clockFrequency;
    uint32_t m_maximumIntegrationWidth;
    int m_numPresets;
    bool m_lowCost;
    bool m_hasVideoStream;
    std::vector<uint32_t> m_sequencingModes;

    SensorGeometry m_geometry;
    SensorReadout m_readout;
    DetectorArray m_array;
    std::array<Preset, maximumPresets> m_presets;
    uint64_t m_superframeWidth = 0; ///< Clocks. Some superframes take longer than 32 bits can count.
    uint32_t m_sequencingMode = SinglePreset;
    int m_activePreset = 0;
    int m_videoPreset = 0;
    int m_gigEPreset = allPresets;
    bool m_reduceNoise = false;
    bool m_syncStartsReadout = false;
    bool m_saturationFlag = false;
    bool m_streaming = true;
};

} // namespace emulator
