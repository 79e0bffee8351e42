#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <qqml.h>

namespace hlx::cam::ui
{

class WindowSizeStack;

/// Keeps a window large enough for the dialogs that are open in it: attached to a dialog, to any item or to the window
/// itself, and called when the dialog opens and closes. GUI thread only.
///
/// The requests of a window form one stack, from which each attached object takes its own latest; the window's minimum
/// size is what suits its own minimum and all requests. A window that had to grow shrinks back, unless it was resized
/// meanwhile. A request whose object dies is withdrawn.
class DialogWindowResizer : public QObject
{
    Q_OBJECT

public:
    explicit DialogWindowResizer(QObject *attachee);
    ~DialogWindowResizer() override;

    static DialogWindowResizer *qmlAttachedProperties(QObject *object);

    /// Requests a minimum size in device-independent pixels. Without a window nothing happens.
    Q_INVOKABLE void pushMinSize(const QSizeF &size);
    /// Withdraws this object's latest request, if there is one.
    Q_INVOKABLE void popMinSize();

private:
    QPointer<WindowSizeStack> m_stack;
};

} // namespace hlx::cam::ui

QML_DECLARE_TYPEINFO(hlx::cam::ui::DialogWindowResizer, QML_HAS_ATTACHED_PROPERTIES)
