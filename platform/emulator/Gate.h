#pragma once

#include "platform/emulator/Status.h"

#include <QString>
#include <QVariant>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace emulator
{

/// One call that reached the camera, written down when it arrived.
struct Call {
    std::string name; ///< "zvtGetGainLevel" or "controller.GetWindow".
    std::string arguments; ///< The inputs, separated by ", "; texts in double quotes; the handle and outputs left out.
    std::thread::id thread;
    int status = Pending; ///< A controller operation counts 0 for true and void.
    std::chrono::nanoseconds duration{0}; ///< Time spent inside the gate.
};

/// Who answers a call. The camera is at the far end of a line, which may be slow and may lose calls; the framework is
/// on the caller's side of it.
enum class AnsweredBy { Camera, Framework };

/// The gate through which everything passes that reaches a camera: it keeps the log and does what a test asked for.
/// Each camera has one, and there is one for the functions that take no handle. Any thread.
///
/// In all of it `name` is the name of a call, or "*" for every call.
class Gate
{
public:
    Gate();
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate();

    /// The log, oldest call first. It keeps the last 100 000 calls.
    std::vector<Call> calls() const;
    /// A place in the log: what came before is left out by callsSince().
    size_t mark() const;
    std::vector<Call> callsSince(size_t mark) const;

    /// The n-th next call of this name fails, once.
    void failNext(const std::string &name, int n = 1);
    void failAlways(const std::string &name);
    /// Every call that the camera answers fails with this probability (0 to 1), drawn from a generator with this seed.
    /// Each name has a sequence of its own: its n-th call fares the same in every run, whatever other threads call
    /// meanwhile.
    void failRandomly(double probability, uint32_t seed);
    /// Ends failNext, failAlways and failRandomly.
    void failNever();

    /// From now on calls of this name wait at the gate, except on the GUI thread, which would wait for itself. While
    /// "*" is held, release() of a single name lets its calls through.
    void hold(const std::string &name);
    /// Waits until `n` calls of this name are held; false after ten seconds.
    bool waitHeld(const std::string &name, int n = 1) const;
    /// Lets the held calls through and ends the holding. "*" releases everything.
    void release(const std::string &name);

    /// Every call of this name takes this much longer, in real time; what "*" asks for comes on top, for calls that the
    /// camera answers. 0 ends it.
    void delay(int milliseconds, const std::string &name = "*");

    /// Calls of this name do not ask the device: they succeed and give these values. One value for each output of the
    /// function, a QVariantList if there are several; a text for a text buffer; a bool as the result of a controller
    /// operation that has no outputs. An invalid QVariant ends it.
    void script(const std::string &name, const QVariant &value);

    /// Texts fill their buffers to the last byte, without a zero at the end.
    void fillBuffers(bool fill);

private:
    friend class GatePass;
    struct State;
    std::shared_ptr<State> m_state;
};

/// The gate of the functions that take no handle, and of calls whose handle is not known.
struct Sdk {
    static Gate &gate();
};

} // namespace emulator
