#pragma once

#include "platform/emulator/Device.h"

#include <QStringList>

#include <cstdint>
#include <string>
#include <vector>

namespace emulator
{

/// The filter wheel between the lens and the detector, with three or four slots, and the names of all filters. A slot
/// counts from 0, a filter is identified by its ID, 0 to 63.
///
/// The wheel has two lists of filters: those that are in it, and those that the camera believes to be in it. A scan
/// copies the first list into the second. All functions refer to the second list; the picture depends on the first.
///
/// The wheel turns the shorter way, also after the end of the connection. A spoke between two filters hides the scene.
/// Filters, names and the slot in the optical path outlive the process. Snapshots have only the ID in the path;
/// restoring one turns the wheel.
class FilterWheel : public Device
{
public:
    /// Profile keys: "inserted" (the IDs of three or four filters; four empty slots without the key), "names" (of the
    /// user, by ID; an empty text is the built-in name). Settings: "inserted", "known" (the second list), "names",
    /// "current" (an ID, turns the wheel).
    FilterWheel(Camera &camera, Section &section);

    /// The number of filters that the camera believes to be in the wheel.
    uint8_t count() const { return static_cast<uint8_t>(m_known.size()); }
    /// The IDs in four slots; 0 for the last one of a wheel of three.
    void ids(uint8_t &first, uint8_t &second, uint8_t &third, uint8_t &fourth) const;
    /// The same for one slot. Refused for a fifth slot.
    Status idInSlot(uint8_t slot, uint8_t &id) const;
    /// Changes what the camera believes. Refuses slots that the wheel lacks, and IDs that are not known.
    Status setIdInSlot(uint8_t slot, uint8_t id);

    /// The ID in the optical path. Refused while the wheel turns.
    Status current(uint8_t &id) const;
    /// Turns to the first slot with this ID, and returns when the wheel is at rest. Refused if no slot has it, and if
    /// another command turns the wheel meanwhile.
    Status turnTo(uint8_t id);
    /// Reads the IDs of the filters in the wheel, and returns after one second for each slot and one more. Refused if
    /// another command turns the wheel meanwhile.
    Status scan();

    /// The user's name of a filter in UTF-8, the built-in one if there is none. Refused for an ID that is not known.
    Status name(uint8_t id, std::string &text) const;
    /// Sets the user's name, 1 to 199 bytes of UTF-8. The built-in name removes the user's.
    Status setName(uint8_t id, const std::string &text);

    void expose(int preset, image::Exposure &exposure) const override;

private:
    using Ids = std::vector<uint8_t>;

    int slotCount() const { return static_cast<int>(m_inserted.size()); }
    uint8_t knownAt(size_t slot) const { return slot < m_known.size() ? m_known[slot] : 0; }
    bool turning() const;
    /// How much of the last turn or scan remains until one of its times; 0 after the computer's clock was set back.
    int64_t millisecondsUntil(int64_t time) const;
    /// The place of the wheel in slots, from 0 to below slotCount(). It has a fraction between two slots.
    double position() const;
    /// The share of the light that passes the wheel now.
    double transmission() const;

    Status insert(const Ids &ids);
    Status setNames(const QStringList &names);
    /// Starts to turn to the first slot with this ID. Without a connection the wheel is there at once.
    Status select(uint8_t id);
    /// Puts the wheel at rest at a slot.
    Status place(uint8_t slot);
    /// Turns by a distance, in slots, to a slot, and settles there.
    void start(uint8_t slot, double distance, double slotMilliseconds, int64_t restMilliseconds);
    Status awaitRest() const;

    Ids m_inserted{0, 0, 0, 0};
    Ids m_known;
    QStringList m_names; ///< By ID; empty for the built-in name.
    uint8_t m_slot = 0; ///< The slot in the optical path, or to which the wheel turns.

    // The last turn.
    double m_from = 0;
    double m_distance = 0; ///< Negative backwards.
    int64_t m_startTime = 0; ///< Times of Clock.
    int64_t m_endTime = 0; ///< The end of the motion,
    int64_t m_restTime = 0; ///< and of the settling after it.
    bool m_scans = false;
    uint64_t m_turns = 0; ///< Counts the turns, so that a command sees that another one turns the wheel.
};

} // namespace emulator
