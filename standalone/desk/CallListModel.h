#pragma once

#include "platform/emulator/Gate.h"
#include "standalone/desk/FileSaver.h"

#include <QAbstractListModel>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <deque>
#include <map>
#include <memory>
#include <thread>
#include <vector>

namespace emulator
{
class Camera;
}
class CallBuffer;
class StandaloneModel;

/// The last calls to the camera of the StandaloneModel that match the filter, the newest first. A call is in the list
/// after its end. GUI thread only.
///
/// While `active` is false, the model has no listener at the gate, and the list does not change. When it becomes true,
/// the list is read from the log, which has no times. After that, new calls wait in a buffer, from which the list takes
/// them at most ten times a second. The buffer has a limit, so any number of calls costs the GUI thread the same.
///
/// New calls change the texts of the rows and add rows at the end, so that a view does not move.
class CallListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)
    Q_PROPERTY(bool paused READ paused WRITE setPaused NOTIFY pausedChanged FINAL)
    Q_PROPERTY(int waiting READ waiting NOTIFY waitingChanged FINAL)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged FINAL)
    Q_PROPERTY(bool onlyFailed READ onlyFailed WRITE setOnlyFailed NOTIFY onlyFailedChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    Q_PROPERTY(FileSaver *saver READ saver CONSTANT FINAL)

public:
    enum Role { TimeRole = Qt::UserRole, NameRole, InputsRole, ThreadRole, StatusRole, DurationRole, FailedRole };

    static constexpr int maximumRows = 200;
    /// The number of calls at the end of the log that are searched for those that match the filter.
    static constexpr size_t searchedCalls = 2'000;
    static constexpr int updateInterval = 100; ///< Milliseconds.

    explicit CallListModel(StandaloneModel &standalone, QObject *parent = nullptr);
    ~CallListModel() override;

    bool active() const { return m_active; }
    void setActive(bool active);

    /// While true, new calls wait. A change of the filter or of the camera still reads the list from the log.
    bool paused() const { return m_paused; }
    void setPaused(bool paused);

    /// How many calls wait for the end of the pause: 0 to maximumRows, later ones replace the oldest.
    int waiting() const { return m_waiting; }

    /// A part of the name or of the arguments of the shown calls. Upper and lower case of ASCII letters are equal.
    const QString &filter() const { return m_filter; }
    void setFilter(const QString &filter);
    /// Whether only calls are shown that did not end with Ok.
    bool onlyFailed() const { return m_onlyFailed; }
    void setOnlyFailed(bool onlyFailed);

    int count() const { return static_cast<int>(m_rows.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Writes the exported calls.
    FileSaver *saver() { return &m_saver; }

    /// Empties the list. Does not change the log of the gate.
    Q_INVOKABLE void clear();

    /// Asks for a file and writes the calls that are shown now to it, the oldest first, as JSON lines: those of a
    /// recording of calls (docs/call-recordings.md) without the results, with times in milliseconds since 1970-01-01
    /// 00:00 UTC, -1 if unknown. The GUI thread has the number 0. A failure leaves an existing file unchanged.
    Q_INVOKABLE void exportCalls();

signals:
    void activeChanged();
    void pausedChanged();
    void waitingChanged();
    void filterChanged();
    void onlyFailedChanged();
    void countChanged();

private:
    struct Row {
        emulator::CallEvent event;
        int thread; ///< In the order in which the threads appeared, from 1; 0 for the GUI thread.
    };

    void attach();
    void detach();
    void restart();
    void update();
    void prepend(std::vector<emulator::CallEvent> events);
    Row rowOf(emulator::CallEvent event);
    void setWaiting(int waiting);

    StandaloneModel &m_standalone;
    bool m_active = false;
    bool m_paused = false;
    int m_waiting = 0;
    QString m_filter;
    bool m_onlyFailed = false;
    std::deque<Row> m_rows; ///< The newest first.
    std::map<std::thread::id, int> m_threads;
    std::shared_ptr<emulator::Camera> m_camera; ///< The camera whose gate has the listener; null without a listener.
    int m_listener = 0;
    std::shared_ptr<CallBuffer> m_buffer;
    QTimer m_timer{this}; ///< Runs from the first call that waits to the next update.
    FileSaver m_saver;
};
