#pragma once

#include "platform/emulator/Status.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QString>
#include <QVariant>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
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

/// A call that has ended, as the listeners of a gate get it.
struct CallEvent {
    Call call;
    int64_t time; ///< The Clock when the call started.
    size_t number; ///< The position in the log: Gate::mark() when the call started.
    /// The outputs of a successful call in their order, as callResults.h describes them. Null if the call failed.
    /// Undefined if the function has no outputs, if the camera was not connected or did not exist, and if no listener
    /// wants results.
    QJsonValue results;
};

/// The answer to a call in place of that of the camera.
struct Answer {
    int status; ///< A Status.
    QJsonArray results; ///< The outputs, as in CallEvent. Empty if the call failed or has no outputs.
    QString source; ///< For messages, such as "session.jsonl:17".
};

/// Returns the answer to a call, or nothing if the camera is to answer. Called without locks, on any thread.
using Answers = std::function<std::optional<Answer>(const Call &call)>;

/// The part of the platform that answers a call. Calls to the camera go through a connection, which may be slow or
/// lose them. The framework runs in the caller's process and needs no connection.
enum class AnsweredBy { Camera, Framework };

/// The gate that every call to a camera passes. It logs the calls, and fails, holds, delays or scripts them as a test
/// requests. Each camera has its own gate; functions without a handle share Sdk::gate(). Any thread.
///
/// In all functions `name` is a name as in Call::name, or the beginning of names and a "*": "zvtSet*" means every call
/// whose name begins with "zvtSet", "*" every call.
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
    /// Ends failNext() and failAlways() of this name and of all names that it includes. "*" ends failRandomly() too.
    void failNever(const std::string &name = "*");
    /// Ends failAlways() of exactly this name, and no other request.
    void failNoLonger(const std::string &name);

    /// Holds calls of this name at the gate until release(). Calls on the GUI thread are never held, since the test
    /// that releases them runs there. Of hold() and release(), the last one with a matching name decides: after
    /// hold("*"), release("zvtGet*") lets only these calls pass.
    void hold(const std::string &name);
    /// Waits until at least `n` calls of this name are held. Returns false if they are not held after ten seconds.
    bool waitHeld(const std::string &name, int n = 1) const;
    /// Returns how many calls of this name are held at present.
    int heldCalls(const std::string &name = "*") const;
    /// Lets the held calls of this name pass, and ends hold() for this name and for all names that it includes. "*"
    /// releases the calls of all names.
    void release(const std::string &name);

    /// Delays every call of this name, in real time. Each delay is longer by 0 to `jitter` milliseconds, chosen
    /// uniformly; each name of a call has its own sequence of random numbers. The delays of all matching names add up.
    /// The delay for "*" applies to the calls that the camera answers. 0 without a jitter ends the delay of this name.
    void delay(int milliseconds, const std::string &name = "*", int jitter = 0);

    /// Lets calls of this name return scripted values without asking the device. `value` is the value of the output (a
    /// text for a text buffer, QVariant::fromValue() for a plain structure, a QVariantList for a list), a QVariantList
    /// if there are several outputs or the only output is a list, or the result (a bool) of a controller operation
    /// without outputs. An invalid QVariant ends the script. If several names match a call, its exact name applies,
    /// else the longest one.
    void script(const std::string &name, const QVariant &value);

    /// While `fill` is true, every text fills its buffer to the last byte, without a terminating zero, as on older
    /// cameras.
    void fillBuffers(bool fill);

    /// One line for the operator for each present request, such as "Calls of zvtSet* are held". Listeners and
    /// answers of answerFrom() are left out.
    std::vector<std::string> requests() const;
    /// Ends all requests, and releases all held calls.
    void clear();

    /// Calls the listener after the end of each call that starts from now on, on the thread of the call and without a
    /// lock of the gate or the camera. It may get calls that started before, if there was another listener or
    /// answerFrom(). With `withResults`, it gets the outputs of the calls. Returns a number for removeListener(), which
    /// waits while the listener runs on another thread.
    int onCall(std::function<void(const CallEvent &)> listener, bool withResults = false);
    void removeListener(int number);

    /// Answers the calls to the camera (AnsweredBy::Camera) by `answers` while the camera is connected. Requests come
    /// first. A call without outputs that is answered with Ok is made to the camera too, so that it follows commands.
    /// An empty function ends this.
    void answerFrom(Answers answers);

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
