#include "platform/emulator/Gate.h"

#include "platform/emulator/GateState.h"

#include <algorithm>
#include <chrono>
#include <mutex>

namespace emulator
{

namespace
{

using namespace std::chrono_literals;

constexpr auto heldTimeout = 10s;

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

void Gate::failNever()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->countdowns.clear();
    m_state->failing.clear();
    m_state->failProbability = 0;
    m_state->updateRequested();
}

void Gate::hold(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    if (name == everyName) {
        m_state->everythingHeld = true;
        m_state->letThrough.clear();
    } else {
        m_state->held.insert(name);
    }
    m_state->updateRequested();
}

bool Gate::waitHeld(const std::string &name, int n) const
{
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, heldTimeout, [&] {
        return std::ranges::count_if(
                   m_state->waiters,
                   [&](const State::Waiter *waiter) { return name == everyName || waiter->name == name; })
            >= n;
    });
}

void Gate::release(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    if (name == everyName) {
        m_state->held.clear();
        m_state->everythingHeld = false;
    } else {
        m_state->held.erase(name);
        if (m_state->everythingHeld)
            m_state->letThrough.insert(name);
    }
    m_state->releaseWaiters(name);
    m_state->updateRequested();
}

void Gate::delay(int milliseconds, const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    if (milliseconds > 0)
        m_state->delays[name] = milliseconds;
    else
        m_state->delays.erase(name);
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

Gate &Sdk::gate()
{
    static Gate gate;
    return gate;
}

} // namespace emulator
