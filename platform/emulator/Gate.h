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
    std::string arguments; ///< The inputs without the handle, separated by ", "; texts in double quotes.
    std::thread::id thread;
    int status = Pending; ///< 0 for a controller operation that returns true or has no result.
    std::chrono::nanoseconds duration{0}; ///< Time from the start of the call to its end.
};

/// The part of the platform that answers a call. The camera is at the other end of a connection, which may be slow and
/// may lose calls; the framework runs in the caller's process.
enum class AnsweredBy { Camera, Framework };

/// The gate that every call to a camera passes. It logs the calls, and fails, holds, delays or scripts them as a test
/// requests. Each camera has a gate; functions without a handle have one too, Sdk::gate(). Any thread.
///
/// In all functions `name` is the name of a call, or "*" for every call.
class Gate
{
public:
    Gate();
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate();

    /// Returns the last 100 000 calls, the oldest first.
    std::vector<Call> calls() const;
    /// Returns the present end of the log. callsSince() returns the calls after it.
    size_t mark() const;
    std::vector<Call> callsSince(size_t mark) const;

    /// Fails the n-th of the next calls of this name, once.
    void failNext(const std::string &name, int n = 1);
    /// Fails every call of this name.
    void failAlways(const std::string &name);
    /// Fails calls that the camera answers with this probability (0 to 1). Each name has its own sequence of random
    /// numbers, made from `seed`: the n-th call of a name has the same result in every run, independent of other
    /// threads.
    void failRandomly(double probability, uint32_t seed);
    /// Ends failNext(), failAlways() and failRandomly().
    void failNever();

    /// Holds calls of this name at the gate until release(). Calls on the GUI thread are never held, since the test
    /// that releases them runs there. While "*" is held, release() of a single name lets the calls of this name pass.
    void hold(const std::string &name);
    /// Waits until `n` calls of this name are held. Returns false after ten seconds.
    bool waitHeld(const std::string &name, int n = 1) const;
    /// Lets the held calls of this name pass and ends hold(). "*" releases all calls.
    void release(const std::string &name);

    /// Delays every call of this name, in real time. The delay of "*" is added to calls that the camera answers. 0 ends
    /// the delay.
    void delay(int milliseconds, const std::string &name = "*");

    /// Lets calls of this name succeed with these values, without a call of the device. `value` is the value of the
    /// output, a QVariantList if there are several outputs, a text for a text buffer, or the result (a bool) of a
    /// controller operation without outputs. An invalid QVariant ends the script.
    void script(const std::string &name, const QVariant &value);

    /// Fills the buffers of texts to the last byte, without a terminating zero.
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
