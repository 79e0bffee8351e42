#include "platform/emulator/Gate.h"

#include "platform/emulator/GateState.h"
#include "platform/emulator/arguments.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <utility>

namespace emulator
{

namespace
{

using namespace std::chrono_literals;

constexpr auto heldTimeout = 10s;

// The parts of the lines of Gate::requests().

std::string ofName(const std::string &name) { return name == everyName ? std::string() : " of " + name; }

std::string callsOf(const std::string &name) { return name == everyName ? "All calls" : "Calls of " + name; }

std::string describeDelay(const std::string &name, int milliseconds, int jitter)
{
    std::string time = std::to_string(milliseconds);
    if (jitter > 0)
        time += " to " + std::to_string(int64_t{milliseconds} + jitter);
    return (name == everyName ? "Each call takes " : callsOf(name) + " take ") + time + " ms longer";
}

} // namespace

Gate::Gate() : m_state(std::make_shared<State>()) { }

Gate::~Gate() { release(everyName); }

std::vector<Call> Gate::calls() const { return callsSince(0); }

size_t Gate::mark() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->droppedCalls + m_state->log.size();
}

std::vector<Call> Gate::callsSince(size_t mark) const
{
    const std::lock_guard lock(m_state->mutex);
    const size_t skipped = std::min(std::max(mark, m_state->droppedCalls) - m_state->droppedCalls, m_state->log.size());
    return {m_state->log.begin() + static_cast<std::ptrdiff_t>(skipped), m_state->log.end()};
}

void Gate::failNext(const std::string &name, int n)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->countdowns.push_back({name, std::max(n, 1)});
    m_state->updateRequested();
}

void Gate::failAlways(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->failing.insert(name);
    m_state->updateRequested();
}

void Gate::failRandomly(double probability, uint32_t seed)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->failProbability = probability;
    m_state->failSeed = seed;
    m_state->generators.clear();
    m_state->updateRequested();
}

void Gate::failNever(const std::string &name)
{
    const auto included = [&name](const std::string &other) { return matches(name, other); };
    const std::lock_guard lock(m_state->mutex);
    std::erase_if(m_state->countdowns, [&](const State::Countdown &countdown) { return included(countdown.name); });
    std::erase_if(m_state->failing, included);
    if (name == everyName)
        m_state->failProbability = 0;
    m_state->updateRequested();
}

void Gate::failNoLonger(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->failing.erase(name);
    m_state->updateRequested();
}

void Gate::hold(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->addHoldRule({name, true});
    m_state->updateRequested();
}

bool Gate::waitHeld(const std::string &name, int n) const
{
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, heldTimeout, [&] { return m_state->countHeld(name) >= n; });
}

int Gate::heldCalls(const std::string &name) const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->countHeld(name);
}

void Gate::release(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->addHoldRule({name, false});
    m_state->releaseWaiters(name);
    m_state->updateRequested();
}

void Gate::delay(int milliseconds, const std::string &name, int jitter)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->delays.set(name, {milliseconds, jitter});
    m_state->updateRequested();
}

void Gate::script(const std::string &name, const QVariant &value)
{
    const std::lock_guard lock(m_state->mutex);
    if (value.isValid())
        m_state->scripts[name] = value;
    else
        m_state->scripts.erase(name);
    m_state->updateRequested();
}

void Gate::fillBuffers(bool fill)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->filling = fill;
    m_state->updateRequested();
}

std::vector<std::string> Gate::requests() const
{
    const std::lock_guard lock(m_state->mutex);
    std::vector<std::string> lines;
    for (const auto &[name, delay] : m_state->delays.all())
        lines.push_back(describeDelay(name, delay.milliseconds, delay.jitter));
    for (const auto &[name, remaining] : m_state->countdowns)
        lines.push_back(remaining == 1 ? "The next call" + ofName(name) + " fails"
                                       : "Call " + std::to_string(remaining) + ofName(name) + " from now on fails");
    for (const std::string &name : m_state->failing)
        lines.push_back(callsOf(name) + " fail");
    if (m_state->failProbability > 0)
        lines.push_back("Each call fails with the probability " + describe(m_state->failProbability));
    for (const auto &[name, holds] : m_state->holdRules)
        lines.push_back(callsOf(name) + (holds ? " are held" : " are not held"));
    for (const auto &[name, value] : m_state->scripts)
        lines.push_back(callsOf(name) + " return scripted values");
    if (m_state->filling)
        lines.emplace_back("Texts fill their buffers");
    return lines;
}

void Gate::clear()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->delays.clear();
    m_state->countdowns.clear();
    m_state->failing.clear();
    m_state->failProbability = 0;
    m_state->scripts.clear();
    m_state->filling = false;
    m_state->holdRules.clear();
    m_state->releaseWaiters(everyName);
    m_state->updateRequested();
}

int Gate::onCall(std::function<void(const CallEvent &)> listener, bool withResults)
{
    const std::lock_guard listenerLock(m_state->listenerMutex);
    const std::lock_guard lock(m_state->mutex);
    m_state->listeners.emplace(++m_state->lastListener, State::Listener{std::move(listener), withResults});
    m_state->updateRequested();
    return m_state->lastListener;
}

void Gate::removeListener(int number)
{
    const std::lock_guard listenerLock(m_state->listenerMutex);
    const std::lock_guard lock(m_state->mutex);
    m_state->listeners.erase(number);
    m_state->updateRequested();
}

void Gate::answerFrom(Answers answers)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->answers = std::move(answers);
    m_state->updateRequested();
}

Gate &Sdk::gate()
{
    static Gate gate;
    return gate;
}

} // namespace emulator
