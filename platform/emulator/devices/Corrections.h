#pragma once

#include "platform/emulator/Device.h"
#include "platform/emulator/devices/CorrectionFile.h"
#include "platform/emulator/devices/presets.h"
#include "platform/emulator/image/CorrectionTable.h"
#include "platform/emulator/image/makeCorrection.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace emulator
{

class CorrectionStore;
class RecordedCorrection;
class Sensor;

/// The non-uniformity corrections (NUCs) in use: one for each preset, and the one that a run has made and that waits
/// for the operator's decision. It is in use on the picture meanwhile. Functions refuse a preset that the camera lacks.
///
/// A correction whose window does not contain the present one is unloaded, which raises ZVT_EVENT_SETTINGS_CHANGED. All
/// other settings may differ from those under which it was made; the picture is then worse.
class Corrections : public Device
{
public:
    /// Profile keys and settings: "names", a list with a text for each preset, empty for a preset without a correction
    /// (a profile names corrections of the factory; a change loads corrections at once); "videoCorrected" and
    /// "digitalCorrected" (the switches of the outputs), "repair" (of bad pixels, an image::Repair), "showBadPixels";
    /// "bytesPerSecond" (of the transfers of CorrectionStore, at least 1000).
    Corrections(Camera &camera, Section &section);

    int64_t bytesPerSecond() const { return m_bytesPerSecond; }

    /// The name of the correction of a preset in UTF-8. Empty if none is loaded, or if it has not been saved.
    Status name(uint8_t preset, std::string &text) const;
    /// Whether a preset has a correction, with or without a name.
    bool isLoaded(int preset) const { return slot(preset).has_value(); }

    /// Loads a correction from the store, in 0.3 s and a second for 20 MB. Refused if it does not exist or is damaged,
    /// or if its window does not contain the present one.
    Status load(uint8_t preset, const std::string &name);
    /// Loads a correction at once. Refused if it does not exist. A damaged one is unloaded when it is first used.
    Status select(int preset, const std::string &name);
    Status unload(uint8_t preset);
    /// Writes the correction of a preset into the store under its name, in the time of a load. Refused without a
    /// correction or a name, and if it does not fit.
    Status saveCurrent(uint8_t preset);
    /// The same under a name, which becomes that of the preset. Replaces a correction of this name.
    Status saveAs(uint8_t preset, const std::string &name);

    /// Takes the correction that a run has made for a preset into use, until the operator decides. With `keepsName` it
    /// gets the name of the preset's correction.
    void offer(int preset, Correction made, bool keepsName);
    bool hasPending() const { return m_pending.has_value(); }
    /// Makes the pending correction that of its preset. Refused without one; also discard(), which drops it. The
    /// automatic correction waits for its time again after accept().
    Status accept();
    Status discard();

    /// The correction in use for a preset, for recordings: the same object until the preset gets another correction.
    /// Null if there is none. A correction that has been selected but not used stays as it is now, as if it were used.
    std::shared_ptr<RecordedCorrection> toRecord(int preset) const;

    /// The table in use for a preset, null if there is none. Reads it from the store if it has not been used since it
    /// was selected. Any thread; it should not hold the camera's lock.
    std::shared_ptr<const image::CorrectionTable> table(int preset);

    /// The same without reading it: nothing if the correction has not been used.
    std::optional<std::shared_ptr<const image::CorrectionTable>> readTable(int preset) const;

    /// Replaces the table of the correction in use for a preset, which must exist, by one with other flags. Updates its
    /// description, and returns the new numbers of bad pixels. Its file stays.
    image::BadPixelCounts replaceFlags(int preset, std::shared_ptr<const image::CorrectionTable> changed);

    bool videoCorrected() const { return m_videoCorrected; }
    Status setVideoCorrected(bool corrected) { return assign(m_videoCorrected, corrected); }
    bool digitalCorrected() const { return m_digitalCorrected; }
    Status setDigitalCorrected(bool corrected) { return assign(m_digitalCorrected, corrected); }
    bool showBadPixels() const { return m_showBadPixels; }
    Status setShowBadPixels(bool show) { return assign(m_showBadPixels, show); }
    /// An image::Repair. Absent without the capability "hasBadPixelCorrection"; other numbers are refused.
    Status repair(uint8_t &method) const;
    Status setRepair(uint8_t method);

    void connectionChanged(bool connected) override;
    void catchUp() override;
    void expose(int preset, image::Exposure &exposure) const override;

private:
    struct Loaded {
        std::string name;
        image::Window window;
        uint64_t number; ///< Counts what has been loaded.
        Correction correction; ///< Without a table until it is used.
        mutable std::shared_ptr<RecordedCorrection> recorded = nullptr; ///< Null until it is recorded.
    };
    struct Pending {
        int preset;
        Loaded loaded;
    };
    using Slot = std::optional<Loaded>;

    CorrectionStore &store() const;
    bool hasPreset(int preset) const;
    const Slot &slot(int preset) const;
    const Loaded *inUse(int preset) const { return inUseOf(*this, preset); }
    Loaded *inUse(int preset) { return inUseOf(*this, preset); }
    template <class Self> static auto inUseOf(Self &self, int preset) -> decltype(&self.m_loaded[0].value());
    std::optional<Correction> read(const Loaded &unused) const;
    bool fits(const image::Window &window) const;
    void put(int preset, Slot loaded);
    void drop(int preset, uint64_t number);
    Status write(uint8_t preset, const std::string &name);

    QStringList names() const;
    bool selectable(const QString &name) const;
    void selectOrUnload(qsizetype preset, const QString &name);
    Status setNames(const QStringList &names);
    Status restoreNames(const QStringList &names);
    bool hasRepair() const;

    const Sensor &m_sensor;
    std::array<Slot, maximumPresets> m_loaded;
    std::optional<Pending> m_pending;
    uint64_t m_number = 0; ///< Of the last Loaded.
    std::optional<image::Window> m_checkedWindow; ///< All corrections contain it.
    bool m_videoCorrected = true;
    bool m_digitalCorrected = false;
    bool m_showBadPixels = false;
    int64_t m_bytesPerSecond = 2'000'000;
    uint8_t m_repair = static_cast<uint8_t>(image::Repair::TwoNearest);
};

} // namespace emulator
