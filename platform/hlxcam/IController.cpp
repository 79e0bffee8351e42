#include "hlx/IController.h"

#include <algorithm>
#include <mutex>

namespace hlx::cam
{

namespace
{

bool contains(const hlx::TArray<IController::ValueChanged> &list, const IController::ValueChanged &listener)
{
    return std::find(list.begin(), list.end(), listener) != list.end();
}

} // namespace

/// The mutex is recursive, since a delegate may add and remove delegates and fire while it is being called.
struct IController::Listeners {
    mutable std::recursive_mutex mutex;
    hlx::TArray<ValueChanged> delegates;
};

IController::IController() : m_listeners(std::make_shared<Listeners>()) { }

IController::~IController() = default;

void IController::FireValueChanged(const hlx::CString &name)
{
    const auto listeners = m_listeners;
    const std::lock_guard lock(listeners->mutex);
    const auto delegates = listeners->delegates;
    // An earlier delegate may have removed this one.
    for (const ValueChanged &listener : delegates)
        if (contains(listeners->delegates, listener))
            listener(name);
}

void IController::AddValueChanged(const ValueChanged &listener)
{
    const std::lock_guard lock(m_listeners->mutex);
    if (!contains(m_listeners->delegates, listener))
        m_listeners->delegates.add(listener);
}

void IController::RemoveValueChanged(const ValueChanged &listener)
{
    const std::lock_guard lock(m_listeners->mutex);
    auto &delegates = m_listeners->delegates;
    if (const auto *found = std::find(delegates.begin(), delegates.end(), listener); found != delegates.end())
        delegates.remove(static_cast<size_t>(found - delegates.begin()));
}

hlx::TArray<IController::ValueChanged> IController::ValueChangedDelegates() const
{
    const std::lock_guard lock(m_listeners->mutex);
    return m_listeners->delegates;
}

} // namespace hlx::cam
