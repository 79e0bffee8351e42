#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace emulator
{
class Gate;
}

/// The faults of the line between the controller and its cameras. They apply to every camera of a StandaloneModel.
struct LineFaults {
    int latency = 0; ///< Each call to the camera takes this much longer, in milliseconds.
    double failRate = 0; ///< Each call to the camera fails with this probability, 0 to 1.
    uint32_t seed = 1; ///< The seed of the generator that failRate uses.
    int jitter = 0; ///< Each call takes up to this much longer still, in milliseconds.
    bool refusesChanges = false; ///< All calls of changes() fail.
    /// The name of the calls that are held, as Gate::hold() takes it. Empty: none. A StandaloneModel does not hold the
    /// connection of another camera; LineModel holds the calls of this name once the camera is the present one.
    std::string held;
    bool pulled = false; ///< The cable is pulled: a connection fails.

    /// The names of the calls that change something in the camera: settings, moves, corrections, states and the
    /// recorder. A name may end with "*". Calls that only read, convert or copy from the camera are not among them, nor
    /// is the connection.
    static const std::vector<std::string> &changes();

    /// The name of the call that fails while the cable is pulled.
    static const std::string connection;

    /// Lets calls fail or not, according to `refusesChanges`. Does not change other failures.
    void applyRefusal(emulator::Gate &gate) const;
    /// The same for `pulled`.
    void applyCable(emulator::Gate &gate) const;
    /// Replaces the general delay, all failures and all holds of the gate by these faults.
    void applyTo(emulator::Gate &gate) const;
};
