#pragma once

#include "platform/emulator/Status.h"

#include <QVariant>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace emulator
{

/// One call in the log of a gate.
struct Call {
    std::string name; ///< "zvtGetGainLevel" or "controller.GetWindow".
    std::string arguments; ///< The inputs except the handle, separated by ", "; texts are in double quotes.
    std::thread::id thread;
    int status = Pending; ///< A Status; Ok (0) for a controller operation that returns true or has no result.
    std::chrono::nanoseconds duration{0}; ///< From the start of the call to its end, with the time held or delayed.
};

/// The part of the platform that answers a call. Calls to the camera go through a connection, which may be slow or
/// lose them. The framework runs in the caller's process and needs no connection.
enum class AnsweredBy { Camera, Framework };

/// The gate that every call to a camera passes. It logs the calls, and fails, holds, delays or scripts them as a test
/// requests. Each camera has its own gate; functions without a handle share Sdk::gate(). Any thread.
///
/// In all functions `name` is a name as in Call::name, or "*" for every call.
class Gate
{
public:
    Gate();
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate();

    /// Returns the last 100 000 calls, the oldest first.
    std::vector<Call> calls() const;
    /// Returns the present end of the log, for callsSince(), which returns the later calls.
    size_t mark() const;
    std::vector<Call> callsSince(size_t mark) const;

    /// Fails one call: the n-th call of this name from now on, counted from 1.
    void failNext(const std::string &name, int n = 1);
    /// Fails every call of this name.
    void failAlways(const std::string &name);
    /// Lets each call that the camera answers (AnsweredBy::Camera) fail with this probability, 0 to 1. Each name has
    /// its own sequence of random numbers, made from `seed`: whether the n-th call of a name fails is the same in every
    /// run, independent of other threads.
    void failRandomly(double probability, uint32_t seed);
    /// Ends failNext(), failAlways() and failRandomly().
    void failNever();

    /// Holds calls of this name at the gate until release(). Calls on the GUI thread are never held, since the test
    /// that releases them runs there. After hold("*"), release() of one name lets only the calls of this name pass.
    void hold(const std::string &name);
    /// Waits until at least `n` calls of this name are held. Returns false if they are not held after ten seconds.
    bool waitHeld(const std::string &name, int n = 1) const;
    /// Lets the held calls of this name pass, and ends hold() for this name. "*" releases the calls of all names.
    void release(const std::string &name);

    /// Delays every call of this name, in real time. The delay for "*" applies to the calls that the camera answers, in
    /// addition to the delay for their name. 0 ends the delay.
    void delay(int milliseconds, const std::string &name = "*");

    /// Lets calls of this name return scripted values without asking the device. `value` is the value of the output (a
    /// text for a text buffer, QVariant::fromValue() for a plain structure), a QVariantList if there are several
    /// outputs, or the result (a bool) of a controller operation without outputs. An invalid QVariant ends the script.
    void script(const std::string &name, const QVariant &value);

    /// While `fill` is true, every text fills its buffer to the last byte, without a terminating zero, as on older
    /// cameras.
    void fillBuffers(bool fill);

private:
    friend class GatePass;
    struct State;
    std::shared_ptr<State> m_state;
};

/// The gate of functions without a handle, and of calls with an unknown handle.
struct Sdk {
    static Gate &gate();
};

} // namespace emulator
