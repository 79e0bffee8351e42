#pragma once

#include "platform/emulator/Device.h"

#include <cstdint>
#include <string>
#include <vector>

namespace emulator
{

/// The lens states: named positions of field of view, zoom and focus. Each is a file NAME.lens in the folder "lens" of
/// the camera. Names are UTF-8 and follow isStateName(). Other names and files that are not valid are refused.
class LensStates : public Device
{
public:
    struct Entry {
        std::string name;
        int64_t size; ///< Bytes.
        int64_t written; ///< Milliseconds since the epoch, UTC.
    };

    LensStates(Camera &camera, Section &) : Device(camera) { }

    /// All lens states, sorted by name.
    std::vector<Entry> list() const;

    /// Saves the present positions of the lens. Replaces a state of the same name.
    Status saveAs(const std::string &name) const;
    /// Moves the lens to the positions of a state, and returns when it is at rest. Refused, without any move, if a
    /// position is missing or out of range or the focus is turned by hand. Refused if other commands move the lens
    /// meanwhile.
    Status load(const std::string &name);
    /// Refused if the state does not exist, or if a state has the new name.
    Status rename(const std::string &oldName, const std::string &newName) const;
    /// Refused if the state does not exist.
    Status remove(const std::string &name) const;

private:
    /// Returns an empty path for a name that is not valid.
    QString pathOf(const std::string &name) const;
    QString folder() const;
};

} // namespace emulator
