#include "hlxui/IInvokeEvent.h"

IInvokeEvent::IInvokeEvent(QEvent::Type type) : QEvent(type) { }

// Defined here, so that the type information of the class is in one library only: receivers recognise these events by
// dynamic_cast across libraries.
IInvokeEvent::~IInvokeEvent() = default;
