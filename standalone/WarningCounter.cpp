#include "standalone/WarningCounter.h"

#include <QString>
#include <QtGlobal>

#include <atomic>
#include <initializer_list>

namespace
{

std::atomic<int> warnings = 0; // Global, since a message handler of Qt has no context argument.
QtMessageHandler previousHandler = nullptr;

bool isFromQml(const QMessageLogContext &context, const QString &message)
{
    const auto category = QString::fromLatin1(context.category);
    for (const char *prefix : {"qml", "js", "qt.qml", "qt.quick"})
        if (category.startsWith(QLatin1String(prefix)))
            return true;
    // The engine reports a failing binding without a category, but its message begins with the place.
    return message.contains(QLatin1String(".qml:"));
}

void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if ((type == QtWarningMsg || type == QtCriticalMsg) && isFromQml(context, message))
        ++warnings;
    previousHandler(type, context, message);
}

} // namespace

WarningCounter::WarningCounter()
{
    take();
    previousHandler = qInstallMessageHandler(&handle);
}

WarningCounter::~WarningCounter() { qInstallMessageHandler(previousHandler); }

int WarningCounter::take() { return warnings.exchange(0); }
