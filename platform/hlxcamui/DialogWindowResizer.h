#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>
#include <qqml.h>

namespace hlx::cam::ui
{

class WindowSizeStack;

/// Keeps a window large enough for its open dialogs. Attach it to a dialog, an item or the window, push a size when the
/// dialog opens and pop it when the dialog closes. GUI thread only.
///
/// All requests of a window are in one stack; pop removes the latest request of the same attached object. The minimum
/// size of the window is the smallest that satisfies its own minimum and all requests. A window that was enlarged
/// shrinks back, unless it was resized meanwhile. The requests of a destroyed object are removed.
class DialogWindowResizer : public QObject
{
    Q_OBJECT

public:
    explicit DialogWindowResizer(QObject *attachee);
    ~DialogWindowResizer() override;

    static DialogWindowResizer *qmlAttachedProperties(QObject *object);

    /// Requests a minimum size in device-independent pixels. Does nothing while the object is in no window.
    Q_INVOKABLE void pushMinSize(const QSizeF &size);
    /// Removes this object's latest request, if there is one.
    Q_INVOKABLE void popMinSize();

private:
    QPointer<WindowSizeStack> m_stack;
};

} // namespace hlx::cam::ui

QML_DECLARE_TYPEINFO(hlx::cam::ui::DialogWindowResizer, QML_HAS_ATTACHED_PROPERTIES)
