#include "platform/hlxcamui/DialogWindowResizer.h"

#include "platform/hlxcamui/windowOf.h"

#include <QWindow>
#include <QtMath>

#include <algorithm>
#include <vector>

namespace hlx::cam::ui
{

/// The requests for one window; a child object of the window.
class WindowSizeStack : public QObject
{
    Q_OBJECT

public:
    /// The window's stack; created by the first call.
    static WindowSizeStack *of(QWindow *window)
    {
        auto *stack = window->findChild<WindowSizeStack *>({}, Qt::FindDirectChildrenOnly);
        return stack ? stack : new WindowSizeStack(window);
    }

    void push(const DialogWindowResizer *owner, const QSize &size)
    {
        if (m_requests.empty()) {
            m_ownMinimum = m_window->minimumSize();
            m_ownSize = m_grownSize = m_window->size();
        }
        m_requests.push_back({owner, size});
        apply();
    }

    void pop(const DialogWindowResizer *owner)
    {
        const auto latest = std::find_if(m_requests.rbegin(), m_requests.rend(),
                                         [owner](const Request &request) { return request.owner == owner; });
        if (latest == m_requests.rend())
            return;
        m_requests.erase(std::next(latest).base());
        apply();
    }

    void popAll(const DialogWindowResizer *owner)
    {
        if (std::erase_if(m_requests, [owner](const Request &request) { return request.owner == owner; }) > 0)
            apply();
    }

private:
    struct Request {
        const DialogWindowResizer *owner;
        QSize size;
    };

    explicit WindowSizeStack(QWindow *window) : QObject(window), m_window(window) { }

    void apply()
    {
        QSize minimum = m_ownMinimum;
        for (const auto &request : m_requests)
            minimum = minimum.expandedTo(request.size);
        const bool free = m_window->windowStates() == Qt::WindowNoState;
        // The window was resized by the operator or by other code: this is its own size from now on.
        if (free && m_window->size() != m_grownSize)
            m_ownSize = m_window->size();
        m_window->setMinimumSize(minimum);
        // A maximized or full-screen window cannot grow.
        if (!free)
            return;
        m_grownSize = m_ownSize.expandedTo(minimum);
        m_window->resize(m_grownSize);
    }

    QWindow *m_window;
    std::vector<Request> m_requests;
    QSize m_ownMinimum;
    QSize m_ownSize;
    QSize m_grownSize;
};

DialogWindowResizer::DialogWindowResizer(QObject *attachee) : QObject(attachee) { }

DialogWindowResizer::~DialogWindowResizer()
{
    if (m_stack)
        m_stack->popAll(this);
}

DialogWindowResizer *DialogWindowResizer::qmlAttachedProperties(QObject *object)
{
    return new DialogWindowResizer(object);
}

void DialogWindowResizer::pushMinSize(const QSizeF &size)
{
    QWindow *window = windowOf(parent());
    if (!window)
        return;
    if (m_stack && m_stack->parent() != window)
        m_stack->popAll(this);
    m_stack = WindowSizeStack::of(window);
    m_stack->push(this, QSize(qCeil(size.width()), qCeil(size.height())));
}

void DialogWindowResizer::popMinSize()
{
    if (m_stack)
        m_stack->pop(this);
}

} // namespace hlx::cam::ui

#include "DialogWindowResizer.moc"
