#pragma once

#include <QCoreApplication>

#include <utility>

#include "hlxui/IInvokeEvent.h"

/// An event that runs a functor on the thread of its receiver. The event owns the functor and its captures.
template <class F> class TInvokeEvent : public IInvokeEvent
{
public:
    /// The type of all invoke events of this plug-in.
    static constexpr int eventType = 1000;

    explicit TInvokeEvent(F functor) : IInvokeEvent(static_cast<QEvent::Type>(eventType)), m_functor(std::move(functor))
    {
    }

    void invoke() override { m_functor(); }

private:
    F m_functor;
};

/// Runs `functor` later on the thread of `receiver`, whose event() must call handleInvokeEvent(). Does nothing if the
/// receiver is destroyed before. Any thread.
template <class F> void postInvoke(QObject *receiver, F functor)
{
    QCoreApplication::postEvent(receiver, new TInvokeEvent<F>(std::move(functor)));
}

/// For the event() of a receiver: invokes an invoke event. Returns true if the type of `event` is in the range of
/// invoke events, 1000 to 2000. The range starts at QEvent::User, so it may contain an event of another kind, for which
/// this returns true and does nothing.
inline bool handleInvokeEvent(QEvent *event)
{
    constexpr int firstType = 1000;
    constexpr int lastType = 2000;
    if (event->type() < firstType || event->type() > lastType)
        return false;
    if (auto *invokeEvent = dynamic_cast<IInvokeEvent *>(event))
        invokeEvent->invoke();
    return true;
}
