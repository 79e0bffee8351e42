#include "platform/hlxcamui/windowOf.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace hlx::cam::ui
{

QWindow *windowOf(QObject *object)
{
    for (; object; object = object->parent()) {
        if (auto *window = qobject_cast<QWindow *>(object))
            return window;
        auto *item = qobject_cast<QQuickItem *>(object);
        // A popup is no item, but names the one it is shown in; its parent object may be anything.
        if (!item)
            item = object->property("parent").value<QQuickItem *>();
        if (item && item->window())
            return item->window();
    }
    return nullptr;
}

} // namespace hlx::cam::ui
