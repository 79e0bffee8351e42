#pragma once

class QObject;
class QWindow;

namespace hlx::cam::ui
{

/// The window that contains an object of a page: the object itself, the window of its item, or that of the nearest
/// parent with a window. For dialogs and popups, the window of the item that they were declared in. Null if there is no
/// window yet.
QWindow *windowOf(QObject *object);

} // namespace hlx::cam::ui
