#pragma once

#include <QEvent>

/// An event that runs code on the thread of its receiver. Post it with QCoreApplication::postEvent from any thread; the
/// receiver calls invoke() from its event().
class IInvokeEvent : public QEvent
{
public:
    explicit IInvokeEvent(QEvent::Type type);
    ~IInvokeEvent() override;

    virtual void invoke() = 0;
};
