#include "platform/emulator/Gate.h"

#include "platform/emulator/GatePass.h"
#include "platform/emulator/arguments.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <map>
#include <mutex>
#include <random>
#include <set>

namespace emulator
{

namespace
{

using namespace std::chrono_literals;

constexpr size_t keptCalls = 100'000;
constexpr auto heldTimeout = 10s;
const std::string everyName = "*";

bool onGuiThread()
{
    const auto *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

/// The setting for this name, else the one for every name.
template <class Map> auto findFor(const Map &map, const std::string &name)
{
    const auto found = map.find(name);
    return found != map.end() ? found : map.find(everyName);
}

} // namespace

struct Gate::State {
    /// What a test asked for, as bits of `asked`: a call that finds none of them takes no second look.
    enum Asked : unsigned { Holds = 1, Delays = 2, Failures = 4, Scripts = 8, Fills = 16 };

    struct Countdown {
        std::string name;
        int remaining;
    };

    /// A call at the latch. It lives on the stack of its thread.
    struct Waiter {
        const std::string name;
        bool released = false;
    };

    std::atomic<unsigned> asked{0};

    mutable std::mutex mutex;
    mutable std::condition_variable changed;

    std::deque<Call> log;
    size_t forgotten = 0; ///< Calls that were dropped from the front of the log.

    std::set<std::string> held;
    bool everythingHeld = false;
    std::set<std::string> letThrough; ///< Released while everything is held.
    std::vector<Waiter *> waiters;

    std::map<std::string, int> delays;

    std::vector<Countdown> countdowns;
    std::set<std::string> failing;
    double failProbability = 0;
    uint32_t failSeed = 0;
    std::map<std::string, std::mt19937> generators;

    std::map<std::string, QVariant> scripts;
    bool filling = false;

    bool isAsked(Asked what) const { return asked & what; }

    // The rest is called with the mutex held.

    void updateAsked()
    {
        const bool failures = !countdowns.empty() || !failing.empty() || failProbability > 0;
        asked = (held.empty() && !everythingHeld ? 0u : Holds) | (delays.empty() ? 0u : Delays)
            | (failures ? Failures : 0u) | (scripts.empty() ? 0u : Scripts) | (filling ? Fills : 0u);
    }

    bool isHeld(const std::string &name) const
    {
        return held.contains(name) || (everythingHeld && !letThrough.contains(name));
    }

    void releaseWaiters(const std::string &name)
    {
        std::erase_if(waiters, [&](Waiter *waiter) {
            waiter->released = name == everyName || waiter->name == name;
            return waiter->released;
        });
        changed.notify_all();
    }

    bool countDown(const std::string &name)
    {
        for (Countdown &countdown : countdowns)
            if (countdown.name == name || countdown.name == everyName)
                --countdown.remaining;
        return std::erase_if(countdowns, [](const Countdown &countdown) { return countdown.remaining <= 0; }) > 0;
    }

    /// Each name draws from a sequence of its own, so that the n-th call of a name fares the same in every run,
    /// whatever other threads call meanwhile.
    bool drawFailure(const std::string &name)
    {
        if (failProbability <= 0)
            return false;
        auto generator = generators.find(name);
        if (generator == generators.end()) {
            std::vector<uint32_t> seeds(name.begin(), name.end());
            seeds.push_back(failSeed);
            std::seed_seq sequence(seeds.begin(), seeds.end());
            generator = generators.emplace(name, sequence).first;
        }
        return generator->second() / 4294967296.0 < failProbability;
    }
};

Gate::Gate() : m_state(std::make_shared<State>()) { }

Gate::~Gate() { release(everyName); }

std::vector<Call> Gate::calls() const { return callsSince(0); }

size_t Gate::mark() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->forgotten + m_state->log.size();
}

std::vector<Call> Gate::callsSince(size_t mark) const
{
    const std::lock_guard lock(m_state->mutex);
    const size_t skipped = std::min(std::max(mark, m_state->forgotten) - m_state->forgotten, m_state->log.size());
    return {m_state->log.begin() + static_cast<std::ptrdiff_t>(skipped), m_state->log.end()};
}

void Gate::failNext(const std::string &name, int n)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->countdowns.push_back({name, std::max(n, 1)});
    m_state->updateAsked();
}

void Gate::failAlways(const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->failing.insert(name);
    m_state->updateAsked();
}

void Gate::failRandomly(double probability, uint32_t seed)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->failProbability = probability;
    m_state->failSeed = seed;
    m_state->generators.clear();
    m_state->updateAsked();
}

void Gate::failNever()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->countdowns.clear();
    m_state->failing.clear();
    m_state->failProbability = 0;
    m_state->updateAsked();
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
    m_state->updateAsked();
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
    m_state->updateAsked();
}

void Gate::delay(int milliseconds, const std::string &name)
{
    const std::lock_guard lock(m_state->mutex);
    if (milliseconds > 0)
        m_state->delays[name] = milliseconds;
    else
        m_state->delays.erase(name);
    m_state->updateAsked();
}

void Gate::script(const std::string &name, const QVariant &value)
{
    const std::lock_guard lock(m_state->mutex);
    if (value.isValid())
        m_state->scripts[name] = value;
    else
        m_state->scripts.erase(name);
    m_state->updateAsked();
}

void Gate::fillBuffers(bool fill)
{
    const std::lock_guard lock(m_state->mutex);
    m_state->filling = fill;
    m_state->updateAsked();
}

Gate &Sdk::gate()
{
    static Gate gate;
    return gate;
}

GatePass::GatePass(Gate &gate, const char *name, std::string arguments, AnsweredBy answeredBy)
    : m_state(gate.m_state), m_name(name), m_answeredBy(answeredBy), m_start(std::chrono::steady_clock::now())
{
    const std::lock_guard lock(m_state->mutex);
    if (m_state->log.size() == keptCalls) {
        m_state->log.pop_front();
        ++m_state->forgotten;
    }
    m_number = m_state->forgotten + m_state->log.size();
    m_state->log.push_back({name, std::move(arguments), std::this_thread::get_id()});
}

GatePass::~GatePass()
{
    const auto duration = std::chrono::steady_clock::now() - m_start;
    const std::lock_guard lock(m_state->mutex);
    if (m_number < m_state->forgotten)
        return;
    Call &call = m_state->log[m_number - m_state->forgotten];
    call.status = m_status;
    call.duration = duration;
}

void GatePass::wait()
{
    if (m_state->isAsked(Gate::State::Holds) && !onGuiThread()) {
        std::unique_lock lock(m_state->mutex);
        Gate::State::Waiter self{m_name};
        if (m_state->isHeld(self.name)) {
            m_state->waiters.push_back(&self);
            m_state->changed.notify_all();
            m_state->changed.wait(lock, [&self] { return self.released; });
        }
    }
    if (m_state->isAsked(Gate::State::Delays)) {
        std::chrono::milliseconds delay{0};
        {
            const std::lock_guard lock(m_state->mutex);
            for (const auto &[name, milliseconds] : m_state->delays)
                if (name == m_name || (name == everyName && m_answeredBy == AnsweredBy::Camera))
                    delay += std::chrono::milliseconds(milliseconds);
        }
        std::this_thread::sleep_for(delay);
    }
}

bool GatePass::fails()
{
    if (!m_state->isAsked(Gate::State::Failures))
        return false;
    const std::lock_guard lock(m_state->mutex);
    const bool counted = m_state->countDown(m_name);
    const bool drawn = m_answeredBy == AnsweredBy::Camera && m_state->drawFailure(m_name);
    m_state->updateAsked();
    return counted || drawn || findFor(m_state->failing, m_name) != m_state->failing.end();
}

QVariant GatePass::script() const
{
    if (!m_state->isAsked(Gate::State::Scripts))
        return {};
    const std::lock_guard lock(m_state->mutex);
    const auto found = findFor(m_state->scripts, m_name);
    return found != m_state->scripts.end() ? found->second : QVariant();
}

bool GatePass::fillsBuffers() const { return m_state->isAsked(Gate::State::Fills); }

const char *GatePass::staticText(const QVariant &script)
{
    static std::mutex mutex;
    static std::set<std::string> texts;
    const std::lock_guard lock(mutex);
    return texts.insert(script.toString().toStdString()).first->c_str();
}

int GatePass::end(int status) { return m_status = status; }

void Text::copyToBuffer(bool fill) const
{
    const size_t room = fill ? m_size : m_size - 1;
    size_t length = std::min(room, value.size());
    const auto continues = [this](size_t index) { return (static_cast<unsigned char>(value[index]) & 0xC0) == 0x80; };
    if (length < value.size())
        while (length > 0 && continues(length))
            --length;
    std::memcpy(m_buffer, value.data(), length);
    if (fill)
        std::memset(m_buffer + length, '#', room - length);
    else
        m_buffer[length] = '\0';
}

void appendQuoted(std::string &list, const char *text)
{
    if (text)
        list.append("\"").append(text).append("\"");
    else
        list += "null";
}

} // namespace emulator
