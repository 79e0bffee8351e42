#include "platform/emulator/GatePass.h"

#include "platform/emulator/Clock.h"
#include "platform/emulator/GateState.h"

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

namespace emulator
{

namespace
{

constexpr size_t maximumCalls = 100'000;

bool onGuiThread()
{
    const auto *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

/// Returns whether `pattern` means fewer names than `other`, which means the same name. "a" is closer than "a*".
bool isCloser(const std::string &pattern, const std::string &other) { return matches(other, pattern); }

} // namespace

GatePass::GatePass(Gate &gate, const char *name, std::string arguments, AnsweredBy answeredBy)
    : m_state(gate.m_state), m_name(name), m_answeredBy(answeredBy), m_start(std::chrono::steady_clock::now())
{
    if (m_state->isRequested(Gate::State::Listeners | Gate::State::Answers))
        m_followed = Followed{{name, arguments, std::this_thread::get_id()}, Clock::now()};
    const std::lock_guard lock(m_state->mutex);
    if (m_state->log.size() == maximumCalls) {
        m_state->log.pop_front();
        ++m_state->droppedCalls;
    }
    m_number = m_state->droppedCalls + m_state->log.size();
    m_state->log.push_back({name, std::move(arguments), std::this_thread::get_id()});
}

GatePass::~GatePass()
{
    const auto duration = std::chrono::steady_clock::now() - m_start;
    {
        const std::lock_guard lock(m_state->mutex);
        if (m_number >= m_state->droppedCalls) {
            Call &call = m_state->log[m_number - m_state->droppedCalls];
            call.status = m_status;
            call.duration = duration;
        }
    }
    if (!m_followed || !m_state->isRequested(Gate::State::Listeners))
        return;
    CallEvent event{std::move(m_followed->call), m_followed->time, m_number, std::move(m_followed->results)};
    event.call.status = m_status;
    event.call.duration = duration;
    const std::lock_guard lock(m_state->listenerMutex);
    // A copy, since a listener may remove itself.
    const auto listeners = m_state->listeners;
    for (const auto &[number, listener] : listeners)
        if (m_state->listeners.contains(number))
            listener.call(event);
}

void GatePass::wait()
{
    if (m_state->isRequested(Gate::State::Holds) && !onGuiThread()) {
        std::unique_lock lock(m_state->mutex);
        Gate::State::Waiter self{m_name};
        if (m_state->isHeld(self.name)) {
            m_state->waiters.push_back(&self);
            m_state->changed.notify_all();
            m_state->changed.wait(lock, [&self] { return self.released; });
        }
    }
    if (m_state->isRequested(Gate::State::Delays)) {
        std::chrono::milliseconds delay{0};
        {
            const std::lock_guard lock(m_state->mutex);
            delay = m_state->delays.draw(m_name, m_answeredBy);
        }
        std::this_thread::sleep_for(delay);
    }
}

bool GatePass::fails()
{
    if (!m_state->isRequested(Gate::State::Failures))
        return false;
    const std::lock_guard lock(m_state->mutex);
    const bool counted = m_state->countDown(m_name);
    const bool drawn = m_answeredBy == AnsweredBy::Camera && m_state->drawFailure(m_name);
    m_state->updateRequested();
    return counted || drawn
        || std::ranges::any_of(m_state->failing, [this](const std::string &name) { return matches(name, m_name); });
}

QVariant GatePass::script() const
{
    if (!m_state->isRequested(Gate::State::Scripts))
        return {};
    const std::lock_guard lock(m_state->mutex);
    const std::pair<const std::string, QVariant> *longest = nullptr;
    for (const auto &entry : m_state->scripts)
        if (matches(entry.first, m_name) && (!longest || isCloser(entry.first, longest->first)))
            longest = &entry;
    return longest ? longest->second : QVariant();
}

std::optional<Answer> GatePass::answerOfGate() const
{
    if (m_answeredBy != AnsweredBy::Camera || !m_state->isRequested(Gate::State::Answers))
        return {};
    Answers answers;
    {
        const std::lock_guard lock(m_state->mutex);
        answers = m_state->answers;
    }
    return answers ? answers(m_followed->call) : std::nullopt;
}

bool GatePass::wantsResults() const { return m_followed && m_state->isRequested(Gate::State::Results); }

void GatePass::warn(const Answer &given, const QString &why) const
{
    qWarning("%s: %s: %s; the camera answers instead", qUtf8Printable(given.source), m_name, qUtf8Printable(why));
}

bool GatePass::fillsBuffers() const { return m_state->isRequested(Gate::State::Fills); }

const char *GatePass::staticText(const QVariant &script)
{
    static std::mutex mutex;
    static std::set<std::string> texts;
    const std::lock_guard lock(mutex);
    return texts.insert(script.toString().toStdString()).first->c_str();
}

int GatePass::end(int status) { return m_status = status; }

} // namespace emulator
