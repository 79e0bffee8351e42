#pragma once

#include "platform/emulator/control.h"

#include <QString>
#include <QStringList>

#include <thread>

/// Where calls to the camera were made; the calling thread is the GUI thread. A base of the rigs that name it.
struct CallPlace {
    enum Where { Anywhere, OnGui, OnPool };
};

/// The calls since a mark, in order, with their arguments, as "zvtSsdSkipToFrame 5". Without the calls of every access.
inline QStringList threadCalls(emulator::Gate &gate, size_t since, CallPlace::Where where)
{
    static const QStringList silent{"controller.GetHandle", "controller.IsConnected", "controller.capabilities"};
    QStringList list;
    for (const auto &call : gate.callsSince(since)) {
        const QString name = QString::fromStdString(call.name);
        const bool onGui = call.thread == std::this_thread::get_id();
        if (!silent.contains(name) && (where == CallPlace::Anywhere || onGui == (where == CallPlace::OnGui)))
            list << (name + u' ' + QString::fromStdString(call.arguments)).trimmed();
    }
    return list;
}
