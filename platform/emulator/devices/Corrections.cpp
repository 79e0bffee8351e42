#include "platform/emulator/devices/Corrections.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Unlocked.h"
#include "platform/emulator/devices/AutomaticCorrection.h"
#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/devices/EventQueue.h"
#include "platform/emulator/devices/RecordedSettings.h"
#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/fileNames.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr int64_t loadMilliseconds = 300;
constexpr int64_t bytesPerMillisecond = 20'000;

int64_t transferMilliseconds(const image::Window &window)
{
    const uint64_t size = correctionFileSize(static_cast<uint64_t>(window.width), static_cast<uint64_t>(window.height));
    return loadMilliseconds + static_cast<int64_t>(size) / bytesPerMillisecond;
}

image::Window windowOf(const CorrectionInfo &info) { return {info.x, info.y, info.width, info.height}; }

} // namespace

Corrections::Corrections(Camera &camera, Section &section) : Device(camera), m_sensor(*camera.device<Sensor>())
{
    // The store of a new camera has them all. It exists later.
    const auto array = m_sensor.array().size();
    const QString key = u"names"_s;
    const QStringList profileNames = section.texts(key, {});
    if (profileNames.size() > m_sensor.numPresets())
        section.refuse(key, u"must have at most one text for each preset"_s);
    for (qsizetype preset = 0; preset < profileNames.size(); ++preset)
        if (const QString &name = profileNames.at(preset); !name.isEmpty())
            put(static_cast<int>(preset),
                Loaded{name.toStdString(), {0, 0, array.width, array.height}, ++m_number, {}});
    const auto get = [this] { return names(); };
    addSettings(section,
                {
                    {key, get, [this](const QStringList &names) { return restoreNames(names); }, Snapshot},
                    {key, get, [this](const QStringList &names) { return setNames(names); }, OtherClient},
                    {u"videoCorrected"_s, m_videoCorrected, Everywhere},
                    {u"digitalCorrected"_s, m_digitalCorrected, Everywhere},
                    {u"showBadPixels"_s, m_showBadPixels, Everywhere},
                    {u"bytesPerSecond"_s, m_bytesPerSecond, Between{1000, 1e9}, Profile | OtherClient},
                    Setting(u"repair"_s, m_repair, Between{0, double(image::Repair::None)}, Everywhere).onlyIf([this] {
                        return hasRepair();
                    }),
                });
}

CorrectionStore &Corrections::store() const { return *camera().device<CorrectionStore>(); }

bool Corrections::hasPreset(int preset) const { return preset >= 0 && preset < m_sensor.numPresets(); }

const Corrections::Slot &Corrections::slot(int preset) const { return m_loaded.at(static_cast<size_t>(preset)); }

/// Returns the correction on the picture.
template <class Self> auto Corrections::inUseOf(Self &self, int preset) -> decltype(&self.m_loaded[0].value())
{
    if (self.m_pending && self.m_pending->preset == preset)
        return &self.m_pending->loaded;
    return self.hasPreset(preset) && self.isLoaded(preset) ? &*self.m_loaded.at(static_cast<size_t>(preset)) : nullptr;
}

/// Reads a correction without a table. Called without the camera's lock, with a copy.
std::optional<Correction> Corrections::read(const Loaded &unused) const
{
    return unused.recorded ? unused.recorded->correction() : store().read(unused.name);
}

bool Corrections::fits(const image::Window &window) const
{
    const auto &present = m_sensor.geometry().window();
    return window.contains({present.x, present.y, present.width, present.height});
}

void Corrections::put(int preset, Slot loaded)
{
    m_loaded.at(static_cast<size_t>(preset)) = std::move(loaded);
    if (m_pending && m_pending->preset == preset)
        m_pending.reset();
    m_checkedWindow.reset();
}

/// Unloads a correction that cannot be read, unless another one has been loaded meanwhile.
void Corrections::drop(int preset, uint64_t number)
{
    Slot &slot = m_loaded.at(static_cast<size_t>(preset));
    if (!slot || slot->number != number)
        return;
    slot.reset();
    camera().device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
}

Status Corrections::name(uint8_t preset, std::string &text) const
{
    if (!hasPreset(preset))
        return Refused;
    text = isLoaded(preset) ? slot(preset)->name : std::string();
    return Ok;
}

Status Corrections::load(uint8_t preset, const std::string &name)
{
    if (!hasPreset(preset))
        return Refused;
    Slot loaded;
    {
        const Camera::Unlocked unlocked(camera());
        if (auto read = store().read(name))
            loaded = Loaded{name, read->table->window, 0, *std::move(read)};
    }
    if (!loaded || !fits(loaded->window))
        return Refused;
    if (const Status status = camera().letTimePass(transferMilliseconds(loaded->window)); status != Ok)
        return status;
    // The window may have been changed meanwhile.
    if (!fits(loaded->window))
        return Refused;
    loaded->number = ++m_number;
    put(preset, std::move(loaded));
    return Ok;
}

Status Corrections::select(int preset, const std::string &name)
{
    CorrectionInfo info;
    if (!hasPreset(preset) || store().basicInfo(name, info) != Ok)
        return Refused;
    put(preset, Loaded{name, windowOf(info), ++m_number, {}});
    return Ok;
}

Status Corrections::unload(uint8_t preset)
{
    if (!hasPreset(preset))
        return Refused;
    put(preset, std::nullopt);
    return Ok;
}

Status Corrections::saveCurrent(uint8_t preset)
{
    std::string text;
    const Status status = name(preset, text);
    return status == Ok ? write(preset, text) : status;
}

Status Corrections::saveAs(uint8_t preset, const std::string &name) { return write(preset, name); }

Status Corrections::write(uint8_t preset, const std::string &name)
{
    if (!hasPreset(preset) || !isLoaded(preset) || !isCorrectionName(name))
        return Refused;
    Loaded saved = *slot(preset);
    if (!saved.correction.table) {
        const Camera::Unlocked unlocked(camera());
        if (auto found = read(saved))
            saved.correction = *std::move(found);
    }
    if (!saved.correction.table)
        return Refused;
    saved.window = saved.correction.table->window;
    if (const Status status = camera().letTimePass(transferMilliseconds(saved.window)); status != Ok)
        return status;
    Status written = Ok;
    {
        const Camera::Unlocked unlocked(camera());
        written = store().write(name, saved.correction.info, *saved.correction.table);
    }
    // Another correction may have been loaded meanwhile.
    if (Slot &present = m_loaded.at(preset); written == Ok && present && present->number == saved.number) {
        present->name = name;
        present->window = saved.window;
        present->correction = std::move(saved.correction);
        m_checkedWindow.reset();
    }
    return written;
}

void Corrections::offer(int preset, Correction made, bool keepsName)
{
    std::string name;
    if (keepsName && isLoaded(preset))
        name = slot(preset)->name;
    const image::Window window = made.table->window;
    m_pending = Pending{preset, Loaded{std::move(name), window, ++m_number, std::move(made)}};
    m_checkedWindow.reset();
}

Status Corrections::accept()
{
    if (!m_pending)
        return Refused;
    Pending pending = *std::exchange(m_pending, std::nullopt);
    put(pending.preset, std::move(pending.loaded));
    camera().device<AutomaticCorrection>()->corrected();
    return Ok;
}

Status Corrections::discard() { return std::exchange(m_pending, std::nullopt) ? Ok : Refused; }

std::shared_ptr<const image::CorrectionTable> Corrections::table(int preset)
{
    std::unique_lock lock(camera().mutex());
    const Loaded *const used = inUse(preset);
    if (!used || used->correction.table)
        return used ? used->correction.table : nullptr;
    const Loaded unused = *used;
    lock.unlock();
    const auto found = read(unused);
    lock.lock();
    if (!found) {
        drop(preset, unused.number);
        return nullptr;
    }
    if (Slot &present = m_loaded.at(static_cast<size_t>(preset)); present && present->number == unused.number) {
        present->correction = *found;
        // The file may have been replaced since the correction was selected.
        present->window = found->table->window;
        m_checkedWindow.reset();
    }
    return found->table;
}

std::shared_ptr<RecordedCorrection> Corrections::toRecord(int preset) const
{
    const Loaded *const used = inUse(preset);
    if (!used)
        return nullptr;
    if (!used->recorded)
        used->recorded = used->correction.table ? std::make_shared<RecordedCorrection>(used->correction)
                                                : store().toRecord(used->name);
    return used->recorded;
}

std::optional<std::shared_ptr<const image::CorrectionTable>> Corrections::readTable(int preset) const
{
    const Loaded *const used = inUse(preset);
    if (used && !used->correction.table)
        return std::nullopt;
    return used ? used->correction.table : nullptr;
}

image::BadPixelCounts Corrections::replaceFlags(int preset, std::shared_ptr<const image::CorrectionTable> changed)
{
    Loaded &used = *inUse(preset);
    used.number = ++m_number;
    used.recorded.reset();
    used.correction.table = std::move(changed);
    const auto counts = image::countFlags(used.correction.table->flags, countsOf(used.correction.info));
    setCounts(used.correction.info, counts);
    return counts;
}

Status Corrections::repair(uint8_t &method) const
{
    if (!hasRepair())
        return Absent;
    method = m_repair;
    return Ok;
}

Status Corrections::setRepair(uint8_t method) { return hasRepair() ? assign(m_repair, method) : Absent; }

bool Corrections::hasRepair() const { return camera().capabilities().value(u"hasBadPixelCorrection"_s).toBool(); }

void Corrections::connectionChanged(bool connected)
{
    // The state in which the camera starts may name corrections that do not exist any more.
    CorrectionInfo ignored;
    for (Slot &slot : m_loaded)
        if (connected && slot && !slot->correction.table && !slot->recorded
            && store().basicInfo(slot->name, ignored) != Ok)
            slot.reset();
}

void Corrections::catchUp()
{
    const auto &window = m_sensor.geometry().window();
    const image::Window present{window.x, window.y, window.width, window.height};
    if (m_checkedWindow == present)
        return;
    m_checkedWindow = present;
    bool dropped = false;
    for (Slot &slot : m_loaded)
        if (slot && !slot->window.contains(present)) {
            slot.reset();
            dropped = true;
        }
    if (m_pending && !m_pending->loaded.window.contains(present)) {
        m_pending.reset();
        dropped = true;
    }
    if (dropped)
        camera().device<EventQueue>()->push(ZVT_EVENT_SETTINGS_CHANGED);
}

void Corrections::expose(int preset, image::Exposure &exposure) const
{
    const Loaded *const used = inUse(preset);
    exposure.correction = used ? used->correction.table : nullptr;
    exposure.repair = static_cast<image::Repair>(m_repair);
    exposure.showBadPixels = m_showBadPixels;
    exposure.videoCorrected = m_videoCorrected;
    exposure.digitalCorrected = m_digitalCorrected;
}

// The names in states and for other clients.

QStringList Corrections::names() const
{
    QStringList names;
    for (int preset = 0; preset < m_sensor.numPresets(); ++preset)
        names.append(isLoaded(preset) ? QString::fromStdString(slot(preset)->name) : QString());
    return names;
}

bool Corrections::selectable(const QString &name) const
{
    CorrectionInfo info;
    return name.isEmpty() || (store().basicInfo(name.toStdString(), info) == Ok && fits(windowOf(info)));
}

void Corrections::selectOrUnload(qsizetype preset, const QString &name)
{
    if (name.isEmpty() || select(static_cast<int>(preset), name.toStdString()) != Ok)
        unload(static_cast<uint8_t>(preset));
}

/// Presets whose correction has the wanted name already keep it.
Status Corrections::setNames(const QStringList &names)
{
    const QStringList present = this->names();
    if (names.size() != present.size())
        return Refused;
    const auto changes = [&](qsizetype preset) {
        const QString &name = names.at(preset);
        return name != present.at(preset) || name.isEmpty() == isLoaded(static_cast<int>(preset));
    };
    for (qsizetype preset = 0; preset < names.size(); ++preset)
        if (changes(preset) && !selectable(names.at(preset)))
            return Refused;
    for (qsizetype preset = 0; preset < names.size(); ++preset)
        if (changes(preset))
            selectOrUnload(preset, names.at(preset));
    return Ok;
}

/// Loads the corrections that exist from their files, also those that have been updated since; presets of others have
/// none. The window of the state may follow, so it is checked by catchUp().
Status Corrections::restoreNames(const QStringList &names)
{
    const qsizetype presets = m_sensor.numPresets();
    for (qsizetype preset = 0; preset < std::min(names.size(), presets); ++preset)
        selectOrUnload(preset, names.at(preset));
    return names.size() == presets ? Ok : Refused;
}

} // namespace emulator
