#pragma once

#include <QMetaObject>
#include <QTimer>

/// The states of the recorder, in the numbers of zvtGetSsdState(). Unknown is a state of the model only.
enum RecorderState {
    Disarmed,
    Armed,
    Triggered,
    Complete,
    Playing,
    Saving,
    Paused,
    Formatting,
    Loading,
    RecordPaused,
    MovieLoaded,
    Arming,
    RequestAutoDownload,
    Unknown
};

/// The timer of the poll of an SsdTabModel. It never elapses by itself in tests.
inline QTimer &pollTimer(const QObject &model) { return *model.findChild<QTimer *>(QStringLiteral("updateTimer")); }

/// Starts a poll of an SsdTabModel as the timer does.
inline void startPoll(const QObject &model) { QMetaObject::invokeMethod(&pollTimer(model), "timeout"); }
