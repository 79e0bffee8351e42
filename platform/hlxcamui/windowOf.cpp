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
        // A popup is not an item. Its property `parent` is the item it is shown in; its parent object may be another
        // one.
        if (!item)
            item = object->property("parent").value<QQuickItem *>();
        if (item && item->window())
            return item->window();
    }
    return nullptr;
}

} // namespace hlx::cam::ui
