#include "hlxui/IInvokeEvent.h"

IInvokeEvent::IInvokeEvent(QEvent::Type type) : QEvent(type) { }

// Here and not in the header: a receiver recognises these events by dynamic_cast across libraries, which takes one
// place for the class's type information.
IInvokeEvent::~IInvokeEvent() = default;
