#include "platform/emulator/devices/FilterWheel.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/Clock.h"
#include "platform/emulator/devices/filterTable.h"
#include "platform/emulator/image/Exposure.h"

#include <algorithm>
#include <cmath>

namespace emulator
{

using namespace Qt::StringLiterals;

namespace
{

constexpr size_t fewestSlots = 3;
constexpr size_t mostSlots = 4;
constexpr int longestName = 199; // Bytes of UTF-8.
constexpr double millisecondsPerSlot = 800;
constexpr int64_t settlingMilliseconds = 200;
constexpr double scanMillisecondsPerSlot = 1000;
constexpr int64_t scanSettlingMilliseconds = 1000;
// In slots: a filter is before the detector up to this distance, then a spoke of the wheel.
constexpr double filterReach = 0.3;
// The interval of the checks whether the camera is still connected.
constexpr int64_t checkIntervalMilliseconds = 50;

Refusal checkSlots(const std::vector<uint8_t> &ids)
{
    return ids.size() >= fewestSlots && ids.size() <= mostSlots ? Refusal() : u"must be three or four numbers"_s;
}

Refusal checkNames(const QStringList &names)
{
    const auto isTooLong = [](const QString &name) { return name.toUtf8().size() > longestName; };
    if (names.size() > filterCount)
        return u"must have at most 64 entries"_s;
    return std::ranges::any_of(names, isTooLong) ? u"a name must have at most 199 bytes"_s : Refusal();
}

} // namespace

FilterWheel::FilterWheel(Camera &camera, Section &section) : Device(camera)
{
    const Between known{0, filterCount - 1.0};
    setNames({});
    // In this order: inserting a wheel moves it, and restoring an ID selects the first slot with this ID.
    addSettings(
        section,
        {
            {u"inserted"_s,
             [this] { return m_inserted; },
             [this](const Ids &ids) { return insert(ids); },
             {known, checkSlots},
             Profile | Memory | OtherClient},
            Setting(u"known"_s, m_known, {known, checkSlots}, Memory | OtherClient).then([this] { remember(); }),
            {u"names"_s, [this] { return m_names; }, [this](const QStringList &names) { return setNames(names); },
             checkNames, Profile | Memory | OtherClient},
            {u"current"_s, [this] { return knownAt(m_slot); }, [this](uint8_t id) { return select(id); }, known,
             Snapshot | OtherClient},
            {u"slot"_s, [this] { return m_slot; }, [this](uint8_t slot) { return place(slot); },
             Between{0, mostSlots - 1.0}, Memory},
        });
    m_known = m_inserted;
}

// The filters

void FilterWheel::ids(uint8_t &first, uint8_t &second, uint8_t &third, uint8_t &fourth) const
{
    first = knownAt(0);
    second = knownAt(1);
    third = knownAt(2);
    fourth = knownAt(3);
}

Status FilterWheel::idInSlot(uint8_t slot, uint8_t &id) const
{
    if (slot >= mostSlots)
        return Refused;
    id = knownAt(slot);
    return Ok;
}

Status FilterWheel::setIdInSlot(uint8_t slot, uint8_t id)
{
    if (slot >= m_known.size() || id >= filterCount)
        return Refused;
    m_known[slot] = id;
    remember();
    return Ok;
}

Status FilterWheel::insert(const Ids &ids)
{
    const bool isAnotherWheel = ids.size() != m_inserted.size();
    m_inserted = ids;
    if (isAnotherWheel)
        place(0);
    remember();
    return Ok;
}

// The motion

bool FilterWheel::turning() const { return millisecondsUntil(m_restTime) > 0; }

int64_t FilterWheel::millisecondsUntil(int64_t time) const { return Clock::remaining(time, time - m_startTime); }

double FilterWheel::position() const
{
    const int64_t remaining = millisecondsUntil(m_endTime);
    if (remaining == 0)
        return m_slot;
    const double share = 1 - static_cast<double>(remaining) / static_cast<double>(m_endTime - m_startTime);
    const double present = std::fmod(m_from + m_distance * share, slotCount());
    return present < 0 ? present + slotCount() : present;
}

double FilterWheel::transmission() const
{
    const double present = position();
    const double nearest = std::round(present);
    if (std::abs(present - nearest) > filterReach)
        return 0;
    return filterTransmission(m_inserted[static_cast<size_t>(nearest) % m_inserted.size()]);
}

Status FilterWheel::current(uint8_t &id) const
{
    if (turning())
        return Refused;
    id = knownAt(m_slot);
    return Ok;
}

Status FilterWheel::turnTo(uint8_t id)
{
    const Status status = select(id);
    return status == Ok ? awaitRest() : status;
}

Status FilterWheel::select(uint8_t id)
{
    const auto slot = static_cast<int>(std::ranges::find(m_known, id) - m_known.begin());
    // The camera may believe in a slot that the wheel lacks.
    if (slot >= static_cast<int>(m_known.size()) || slot >= slotCount())
        return Refused;
    if (!camera().connected())
        return place(static_cast<uint8_t>(slot));
    if (slot == m_slot && !(m_scans && turning()))
        return Ok;
    const double forwards = std::fmod(slot - position() + slotCount(), slotCount());
    start(static_cast<uint8_t>(slot), forwards > slotCount() / 2.0 ? forwards - slotCount() : forwards,
          millisecondsPerSlot, settlingMilliseconds);
    return Ok;
}

Status FilterWheel::scan()
{
    // A whole round, which ends at the slot to which a turn in progress would go.
    const double distance = slotCount() + std::fmod(m_slot - position() + slotCount(), slotCount());
    start(m_slot, distance, scanMillisecondsPerSlot * slotCount() / distance, scanSettlingMilliseconds);
    m_scans = true;
    const Status status = awaitRest();
    if (status == Ok) {
        m_known = m_inserted;
        remember();
    }
    return status;
}

Status FilterWheel::place(uint8_t slot)
{
    if (slot >= slotCount())
        return Refused;
    start(slot, 0, 0, 0);
    return Ok;
}

void FilterWheel::start(uint8_t slot, double distance, double slotMilliseconds, int64_t restMilliseconds)
{
    m_from = position();
    m_distance = distance;
    m_slot = slot;
    m_startTime = Clock::now();
    m_endTime = m_startTime + std::llround(std::abs(distance) * slotMilliseconds);
    m_restTime = m_endTime + restMilliseconds;
    m_scans = false;
    ++m_turns;
    remember();
}

Status FilterWheel::awaitRest() const
{
    const auto turn = m_turns;
    while (const int64_t remaining = millisecondsUntil(m_restTime)) {
        if (const Status status = camera().letTimePass(std::min(remaining, checkIntervalMilliseconds)); status != Ok)
            return status;
        if (m_turns != turn)
            return Refused;
    }
    return Ok;
}

// The names

Status FilterWheel::name(uint8_t id, std::string &text) const
{
    if (id >= filterCount)
        return Refused;
    text = m_names[id].isEmpty() ? filterName(id) : m_names[id].toStdString();
    return Ok;
}

Status FilterWheel::setName(uint8_t id, const std::string &text)
{
    const QString name = QString::fromStdString(text);
    const bool isUtf8 = name.toStdString() == text;
    if (id >= filterCount || text.empty() || text.size() > longestName || !isUtf8)
        return Refused;
    m_names[id] = text == filterName(id) ? QString() : name;
    remember();
    return Ok;
}

Status FilterWheel::setNames(const QStringList &names)
{
    m_names = names;
    m_names.resize(filterCount);
    for (uint8_t id = 0; id < filterCount; ++id)
        if (m_names[id] == QString::fromUtf8(filterName(id)))
            m_names[id].clear();
    remember();
    return Ok;
}

void FilterWheel::expose(int, image::Exposure &exposure) const
{
    exposure.optics.transmission = transmission();
    exposure.optics.filterCelsius = exposure.readout.caseCelsius;
}

} // namespace emulator
