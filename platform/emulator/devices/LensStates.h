#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <string>
#include <vector>

namespace emulator
{

/// Named places of the lens: its field of view, zoom and focus, each in a file NAME.lens of the camera's folder "lens".
/// Names are those of states, in UTF-8; other names are refused, and so are files that are not what they should be.
class LensStates : public Device
{
public:
    struct Entry {
        std::string name;
        int64_t size; ///< Bytes.
        int64_t written; ///< Milliseconds since the epoch, UTC.
    };

    LensStates(Camera &camera, Section &) : Device(camera) { }

    /// In the order of their names.
    std::vector<Entry> list() const;

    /// Writes where the lens is, over a state of that name.
    Status saveAs(const std::string &name) const;
    /// Sends the lens there, and ends when it stands. Nothing moves if a part of it could not.
    Status load(const std::string &name);
    /// Refused if there is no such state, or one of the new name.
    Status rename(const std::string &oldName, const std::string &newName) const;
    Status remove(const std::string &name) const;

private:
    /// Empty for a name that no state can have.
    QString pathOf(const std::string &name) const;
    QString folder() const;
};

} // namespace emulator
