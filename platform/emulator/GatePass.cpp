#include "platform/emulator/GatePass.h"

#include "platform/emulator/GateState.h"

#include <QCoreApplication>
#include <QThread>

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

/// Finds the entry of this name, or that of every name.
template <class Map> auto findFor(const Map &map, const std::string &name)
{
    const auto found = map.find(name);
    return found != map.end() ? found : map.find(everyName);
}

} // namespace

GatePass::GatePass(Gate &gate, const char *name, std::string arguments, AnsweredBy answeredBy)
    : m_state(gate.m_state), m_name(name), m_answeredBy(answeredBy), m_start(std::chrono::steady_clock::now())
{
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
    const std::lock_guard lock(m_state->mutex);
    if (m_number < m_state->droppedCalls)
        return;
    Call &call = m_state->log[m_number - m_state->droppedCalls];
    call.status = m_status;
    call.duration = duration;
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
            for (const auto &[name, milliseconds] : m_state->delays)
                if (name == m_name || (name == everyName && m_answeredBy == AnsweredBy::Camera))
                    delay += std::chrono::milliseconds(milliseconds);
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
    return counted || drawn || findFor(m_state->failing, m_name) != m_state->failing.end();
}

QVariant GatePass::script() const
{
    if (!m_state->isRequested(Gate::State::Scripts))
        return {};
    const std::lock_guard lock(m_state->mutex);
    const auto found = findFor(m_state->scripts, m_name);
    return found != m_state->scripts.end() ? found->second : QVariant();
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
