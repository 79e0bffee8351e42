#pragma once

#include "platform/emulator/Gate.h"
#include "platform/emulator/arguments.h"

#include <chrono>
#include <memory>
#include <string>

namespace emulator
{

/// One call on its way through a gate: it is written into the log when it is made, and its status and duration when it
/// ends. It outlives the gate, so that a camera may go while calls are held.
class GatePass
{
public:
    GatePass(Gate &gate, const char *name, std::string arguments, AnsweredBy answeredBy = AnsweredBy::Camera);
    GatePass(const GatePass &) = delete;
    GatePass &operator=(const GatePass &) = delete;
    ~GatePass();

    /// The latch and the latency.
    void wait();
    /// Whether this call is one that a test wants to fail.
    bool fails();
    /// The scripted value; not valid if there is none.
    QVariant script() const;
    bool fillsBuffers() const;
    /// A scripted text as the result of a function that returns static texts: it stays for the life of the program.
    static const char *staticText(const QVariant &script);
    /// Ends the call with this status.
    int end(int status);

    /// Ends the call with what `answer` gives, unless a failure or a script comes first. `resultIsScripted`: the script
    /// of a call without outputs says whether it succeeds.
    template <class Answer, class... Args> int answer(bool resultIsScripted, Answer answer, Args &...arguments)
    {
        if (fails())
            return end(Injected);
        if (!(usable(arguments) && ...))
            return end(Refused);
        int status = Ok;
        if (const QVariant scripted = script(); scripted.isValid()) {
            if (resultIsScripted && !(isScriptable<Args> || ...))
                status = scripted.toBool() ? Ok : Refused;
            writeScript(scripted, arguments...);
        } else {
            status = answer();
        }
        if (status == Ok)
            (copyText(arguments), ...);
        return end(status);
    }

private:
    template <class T> void copyText(const T &argument)
    {
        if constexpr (isTextOutput<T>)
            argument.copyToBuffer(fillsBuffers());
    }

    const std::shared_ptr<Gate::State> m_state;
    const char *const m_name;
    const AnsweredBy m_answeredBy;
    const std::chrono::steady_clock::time_point m_start;
    size_t m_number;
    int m_status = Pending;
};

} // namespace emulator
