#include "platform/emulator/GateState.h"

#include <algorithm>

namespace emulator
{

namespace
{

/// Returns the next random number of a name, from 0 to below 1.
double drawFrom(std::map<std::string, std::mt19937> &generators, const std::string &name, uint32_t seed)
{
    auto generator = generators.find(name);
    if (generator == generators.end()) {
        std::vector<uint32_t> seeds(name.begin(), name.end());
        seeds.push_back(seed);
        std::seed_seq sequence(seeds.begin(), seeds.end());
        generator = generators.emplace(name, sequence).first;
    }
    return generator->second() / 4294967296.0;
}

} // namespace

void GateDelays::set(const std::string &name, Delay delay)
{
    if (delay.milliseconds > 0 || delay.jitter > 0)
        m_delays[name] = {std::max(delay.milliseconds, 0), std::max(delay.jitter, 0)};
    else
        m_delays.erase(name);
}

std::chrono::milliseconds GateDelays::draw(const std::string &name, AnsweredBy answeredBy)
{
    std::chrono::milliseconds sum{0};
    for (const auto &[pattern, delay] : m_delays)
        if (pattern == everyName ? answeredBy == AnsweredBy::Camera : matches(pattern, name)) {
            sum += std::chrono::milliseconds(delay.milliseconds);
            if (delay.jitter > 0)
                sum += std::chrono::milliseconds(
                    static_cast<int64_t>(drawFrom(m_generators, name, 0) * (int64_t{delay.jitter} + 1)));
        }
    return sum;
}

void Gate::State::updateRequested()
{
    const bool failures = !countdowns.empty() || !failing.empty() || failProbability > 0;
    const bool results = std::ranges::any_of(listeners, [](const auto &entry) { return entry.second.withResults; });
    requested = (holdRules.empty() ? 0u : Holds) | (delays.all().empty() ? 0u : Delays) | (failures ? Failures : 0u)
        | (scripts.empty() ? 0u : Scripts) | (filling ? Fills : 0u) | (listeners.empty() ? 0u : Listeners)
        | (results ? Results : 0u) | (answers ? Answers : 0u);
}

bool Gate::State::isHeld(const std::string &name) const
{
    const auto newest = std::find_if(holdRules.rbegin(), holdRules.rend(),
                                     [&](const HoldRule &rule) { return matches(rule.name, name); });
    return newest != holdRules.rend() && newest->holds;
}

void Gate::State::addHoldRule(const HoldRule &added)
{
    std::erase_if(holdRules, [&](const HoldRule &rule) { return matches(added.name, rule.name); });
    holdRules.push_back(added);
    const auto firstHold = std::ranges::find(holdRules, true, &HoldRule::holds);
    holdRules.erase(holdRules.begin(), firstHold);
}

void Gate::State::releaseWaiters(const std::string &name)
{
    std::erase_if(waiters, [&](Waiter *waiter) {
        waiter->released = matches(name, waiter->name);
        return waiter->released;
    });
    changed.notify_all();
}

int Gate::State::countHeld(const std::string &name) const
{
    return static_cast<int>(
        std::ranges::count_if(waiters, [&](const Waiter *waiter) { return matches(name, waiter->name); }));
}

bool Gate::State::countDown(const std::string &name)
{
    for (Countdown &countdown : countdowns)
        if (matches(countdown.name, name))
            --countdown.remaining;
    return std::erase_if(countdowns, [](const Countdown &countdown) { return countdown.remaining <= 0; }) > 0;
}

bool Gate::State::drawFailure(const std::string &name)
{
    if (failProbability <= 0)
        return false;
    return drawFrom(generators, name, failSeed) < failProbability;
}

} // namespace emulator
