#pragma once

#include "platform/emulator/Gate.h"
#include "platform/emulator/callResults.h"
#include "platform/emulator/scriptValues.h"

#include <QJsonValue>
#include <QVariant>

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace emulator
{

/// One call that passes a gate. The constructor adds the call to the log, the destructor adds its status and duration.
/// It may outlive the gate, so that a camera may be destroyed while calls are held.
class GatePass
{
public:
    GatePass(Gate &gate, const char *name, std::string arguments, AnsweredBy answeredBy = AnsweredBy::Camera);
    GatePass(const GatePass &) = delete;
    GatePass &operator=(const GatePass &) = delete;
    ~GatePass();

    /// Waits while the call is held, and then for its delay.
    void wait();
    /// Returns whether a test requested that this call fails. Call it once: it counts the call.
    bool fails();
    /// The scripted value, invalid if there is none.
    QVariant script() const;
    /// Whether texts fill their buffers; see Gate::fillBuffers().
    bool fillsBuffers() const;
    /// Returns a scripted text for a function that returns static texts. It is valid until the process ends.
    static const char *staticText(const QVariant &script);
    /// Ends the call with this status, and returns the status.
    int end(int status);

    /// Ends the call with the status that `answer` returns, unless a test requested a failure or a script, or
    /// Gate::answerFrom() answers. Refused if an argument is not usable(). `resultIsScripted`: the script of a call
    /// without outputs is its result.
    template <class Body, class... Args> int answer(bool resultIsScripted, Body answer, Args &...arguments)
    {
        if constexpr ((isOutput<Args> || ...))
            if (wantsResults())
                m_followed->results = QJsonValue::Null;
        if (fails())
            return end(Injected);
        if (!(usable(arguments) && ...))
            return end(Refused);
        int status = Ok;
        if (const QVariant scripted = script(); scripted.isValid()) {
            if (resultIsScripted && !(isOutput<Args> || ...))
                status = scripted.toBool() ? Ok : Refused;
            writeScript(scripted, arguments...);
        } else if (const std::optional<Answer> given = m_followed ? answerOfGate() : std::nullopt) {
            status = take(*given, answer, arguments...);
        } else {
            status = answer();
        }
        if (status == Ok) {
            if constexpr ((isOutput<Args> || ...))
                if (wantsResults())
                    m_followed->results = describeResults(arguments...);
            (copyText(arguments), ...);
        }
        return end(status);
    }

private:
    /// The answer of Gate::answerFrom(), if it has one. Only for a call with `m_followed`.
    std::optional<Answer> answerOfGate() const;
    /// Whether a listener wants the outputs of this call.
    bool wantsResults() const;
    void warn(const Answer &given, const QString &why) const;

    /// Ends the call with an answer of Gate::answerFrom(). The camera answers if the outputs cannot take the results.
    template <class Body, class... Args> int take(const Answer &given, Body &answer, Args &...arguments)
    {
        if (given.status != Ok)
            return given.status;
        if constexpr ((isOutput<Args> || ...)) {
            const QString why = writeResults(given.results, arguments...);
            if (why.isEmpty())
                return Ok;
            warn(given, why);
            return answer();
        } else {
            // The connection may have ended during a slow command.
            return answer() == NotConnected ? NotConnected : Ok;
        }
    }

    template <class T> void copyText(const T &argument)
    {
        if constexpr (isTextOutput<T>)
            argument.copyToBuffer(fillsBuffers());
        else if constexpr (isTextField<T>)
            if (fillsBuffers())
                argument.fill();
    }

    const std::shared_ptr<Gate::State> m_state;
    const char *const m_name;
    const AnsweredBy m_answeredBy;
    const std::chrono::steady_clock::time_point m_start;
    size_t m_number;
    int m_status = Pending;

    /// What listeners and Gate::answerFrom() get. Empty if there were none when the call started.
    struct Followed {
        Call call;
        int64_t time;
        QJsonValue results = QJsonValue::Undefined;
    };
    std::optional<Followed> m_followed;
};

} // namespace emulator
