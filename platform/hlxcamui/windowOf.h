#pragma once

class QObject;
class QWindow;

namespace hlx::cam::ui
{

/// The window that an object of a page belongs to: the object itself, the window of its item, or that of the nearest
/// parent that has one. Dialogs and popups count with the item they were declared in. Null if there is none yet.
QWindow *windowOf(QObject *object);

} // namespace hlx::cam::ui
