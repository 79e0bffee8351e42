#pragma once

#include <QCoreApplication>

#include <utility>

#include "hlxui/IInvokeEvent.h"

/// An event that runs a functor on the GUI thread. What the functor captured lives in the event.
template <class F> class TInvokeEvent : public IInvokeEvent
{
public:
    /// The type of all events of this plug-in.
    static constexpr int eventType = 1000;

    explicit TInvokeEvent(F functor) : IInvokeEvent(static_cast<QEvent::Type>(eventType)), m_functor(std::move(functor))
    {
    }

    void invoke() override { m_functor(); }

private:
    F m_functor;
};

/// Runs `functor` on the thread of `receiver`, which must handle invoke events. Any thread.
template <class F> void postInvoke(QObject *receiver, F functor)
{
    QCoreApplication::postEvent(receiver, new TInvokeEvent<F>(std::move(functor)));
}

/// For the event() of a receiver: true if `event` lies in the range of invoke events, and then it has been invoked. The
/// range is wider than one type and starts at QEvent::User, so a foreign event in it is taken and passed over.
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
