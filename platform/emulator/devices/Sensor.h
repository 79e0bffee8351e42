#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/SensorGeometry.h"

#include <array>
#include <cstdint>
#include <vector>

namespace emulator
{

/// The detector with its timing: the window that is read out, the presets with their integration times and frame rates,
/// and the order in which the presets follow one another. Times and rates are kept in clocks, as the hardware keeps
/// them; milliseconds and hertz are set to the nearest value that clocks can express. Presets count from 0.
class Sensor : public Device
{
public:
    static constexpr int maxPresets = 4;
    static constexpr int allPresets = 4;
    static constexpr uint32_t maximumDwellCount = 0x7FFFFFFF;

    enum Sequencing : uint32_t { SinglePreset = 0, Superframing = 1, PresetSequencing = 2 };

    using Size = SensorGeometry::Size;
    using Window = SensorGeometry::Window;

    /// Profile keys: those of SensorGeometry, and "clockFrequency" (Hz), "maximumIntegrationTime",
    /// "saturatingIntegrationTime" and the list "integrationTimes" (ms), "frameRate" (Hz), "numPresets",
    /// "sequencingModes", "lowCost", "videoStream" and "saturated".
    ///
    /// Settings: "window" (a list x, y, width, height), "sequencingMode", "activePreset", "videoPreset", "gigEPreset",
    /// "reduceNoise", "saturated", "superframeRate" (Hz), and of the active preset "integrationTime" (ms), "frameRate"
    /// (Hz), "dwellCount" and "subframeEnabled".
    Sensor(Camera &camera, Section &section);

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    Refusal change(const QString &name, const QJsonValue &value) override;
    std::vector<SettingInfo> settings() const override;

    uint32_t clockFrequency() const { return m_clockFrequency; }
    Status clocksToHertz(uint32_t clocks, double &hertz) const;
    Status clocksToMilliseconds(uint32_t clocks, double &milliseconds) const;
    /// The nearest rate whose period is a whole number of clocks. Refuses what is not above 0.
    Status snapHertz(double wanted, double &snapped) const;

    int numPresets() const { return m_numPresets; }
    bool lowCost() const { return m_lowCost; }
    bool hasVideoStream() const { return m_hasVideoStream; }

    const SensorGeometry &geometry() const { return m_geometry; }
    Status setWindowSizeIndex(int index);
    Status setWindow(const Window &window);

    Status integrationWidth(int preset, uint32_t &clocks) const;
    /// Writes the register alone: the frame width stays, even if the integration no longer fits into it.
    Status setIntegrationWidth(int preset, uint32_t clocks);
    Status integrationTime(int preset, double &milliseconds) const;
    /// Takes the nearest valid time, and makes frames longer where they have become too short for it.
    Status setIntegrationTime(int preset, double milliseconds);

    Status frameWidth(int preset, uint32_t &clocks) const;
    /// Refuses a width below the shortest one for the preset's integration and the window.
    Status setFrameWidth(int preset, uint32_t clocks);
    Status frameRates(int preset, std::vector<double> &hertz) const;
    Status frameRateIndex(int preset, int &index) const;
    Status setFrameRateIndex(int preset, int index);
    Status frameRate(int preset, double &hertz) const;
    /// Takes the nearest valid rate.
    Status setFrameRate(int preset, double hertz);
    /// The rate at which frames come, over all presets in use.
    double averageFrameRate() const;
    /// The shortest frame for a window and an integration, all in clocks. Refuses an empty window.
    Status minimumFrameWidth(const Size &size, uint32_t integration, bool sequencing, uint32_t &clocks) const;

    const std::vector<uint32_t> &sequencingModes() const { return m_sequencingModes; }
    uint32_t sequencingMode() const { return m_sequencingMode; }
    Status setSequencingMode(uint32_t mode) { return assign(m_sequencingMode, mode); }
    /// Frames of the preset in one cycle of the present mode; 0 for a preset that is not in use.
    uint32_t repeats(int preset) const;
    Status subframeEnabled(int preset, bool &enabled) const;
    Status setSubframeEnabled(int preset, bool enabled);
    Status dwellCount(int preset, uint32_t &count) const;
    Status setDwellCount(int preset, uint32_t count);

    std::vector<double> superframeRates() const;
    int superframeRateIndex() const;
    Status setSuperframeRateIndex(int index);
    double superframeRate() const;
    /// Takes the nearest valid rate.
    Status setSuperframeRate(double hertz);

    int activePreset() const { return m_activePreset; }
    Status setActivePreset(int preset) { return assign(m_activePreset, preset); }
    int videoPreset() const { return m_videoPreset; }
    Status setVideoPreset(int preset) { return assign(m_videoPreset, preset); }
    /// The preset streamed over GigE; allPresets for every one as it comes. Absent without that equipment.
    Status gigEPreset(uint8_t &preset) const;
    Status setGigEPreset(int preset);
    bool reduceNoise() const { return m_reduceNoise; }
    Status setReduceNoise(bool reduce) { return assign(m_reduceNoise, reduce); }

    /// The scene drives pixels of a preset in use into saturation, or the flag is set. The hotter of the emulator's two
    /// blackbodies saturates first.
    bool saturated() const;

    bool streaming() const { return m_streaming; }
    void setStreaming(bool streaming) { m_streaming = streaming; }

private:
    struct Preset {
        uint32_t integrationWidth = 0;
        uint32_t frameWidth = 0;
        uint32_t dwellCount = 1;
        bool subframeEnabled = true;
        SettingTable settings; ///< Those of this preset alone.
    };

    void readSettings(Section &section);
    void addPresetSettings(int preset);
    Status restoreIntegrationWidth(int preset, uint32_t clocks);
    Status restoreFrameWidth(int preset, uint32_t clocks);
    Size windowSize() const { return {m_geometry.window().width, m_geometry.window().height}; }
    bool hasPreset(int preset) const { return preset >= 0 && preset < m_numPresets; }
    bool hasGigEPreset() const;
    uint32_t minimumFrameWidth(const Size &size, uint32_t integration, bool sequencing) const;
    uint32_t minimumFrameWidth(int preset) const;
    uint32_t effectiveFrameWidth(int preset) const;
    uint32_t minimumSuperframeWidth() const;
    std::vector<uint32_t> offeredWidths(uint32_t minimum) const;
    uint32_t nearestWidth(double hertz, uint32_t minimum) const;
    std::vector<double> toHertz(const std::vector<uint32_t> &widths) const;
    void stretchFrames();
    double light() const;

    uint32_t m_clockFrequency;
    uint32_t m_maximumIntegrationWidth;
    uint32_t m_saturatingIntegrationWidth;
    int m_numPresets;
    bool m_lowCost;
    bool m_hasVideoStream;
    std::vector<uint32_t> m_sequencingModes;

    SensorGeometry m_geometry;
    std::array<Preset, maxPresets> m_presets;
    uint32_t m_superframeWidth = 0;
    uint32_t m_sequencingMode = SinglePreset;
    int m_activePreset = 0;
    int m_videoPreset = 0;
    int m_gigEPreset = allPresets;
    bool m_reduceNoise = false;
    bool m_saturationFlag = false;
    bool m_streaming = true;
};

} // namespace emulator
