#pragma once

#include "standalone/LineFaults.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <string>
#include <vector>

namespace emulator
{
class Camera;
}
class Faults;
class StandaloneModel;

/// The faults of the line between the controller and its cameras. They apply to the present camera of the
/// StandaloneModel at once, and follow it to the next one. They start with those of the StandaloneModel. GUI thread
/// only.
///
/// The functions named "enter" take a text of the operator. They return why they refuse it, as a sentence; empty if
/// they have taken it.
class LineModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)
    Q_PROPERTY(int latency READ latency NOTIFY changed FINAL)
    Q_PROPERTY(int jitter READ jitter NOTIFY changed FINAL)
    Q_PROPERTY(QString failPercent READ failPercent NOTIFY changed FINAL)
    Q_PROPERTY(QString seed READ seed NOTIFY changed FINAL)
    Q_PROPERTY(bool refusesChanges READ refusesChanges WRITE setRefusesChanges NOTIFY changed FINAL)

    Q_PROPERTY(QStringList names READ names NOTIFY namesChanged FINAL)
    Q_PROPERTY(QString held READ held NOTIFY changed FINAL)
    Q_PROPERTY(int heldCalls READ heldCalls NOTIFY heldCallsChanged FINAL)

    Q_PROPERTY(bool pulled READ pulled NOTIFY changed FINAL)
    Q_PROPERTY(bool canMoveCable READ canMoveCable NOTIFY canMoveCableChanged FINAL)

public:
    static constexpr int maximumLatency = 2'000; ///< Also the maximum of the jitter, in milliseconds.
    static constexpr int watchInterval = 250; ///< Milliseconds between two looks at what the gate has carried out.
    /// The number of calls at the end of the log whose names are offered.
    static constexpr size_t searchedCalls = 2'000;

    /// Both must outlive the model.
    LineModel(StandaloneModel &standalone, Faults &faults, QObject *parent = nullptr);
    ~LineModel() override;

    /// Whether the card is shown. The held calls are counted only then.
    bool active() const { return m_active; }
    void setActive(bool active);

    /// Each call to the camera takes this much longer, in milliseconds.
    int latency() const { return m_line.latency; }
    Q_INVOKABLE QString enterLatency(const QString &text);
    /// Each call takes longer still, by 0 to this many milliseconds.
    int jitter() const { return m_line.jitter; }
    Q_INVOKABLE QString enterJitter(const QString &text);
    /// The probability with which each call to the camera fails, 0 to 100 %, with twelve digits.
    QString failPercent() const { return QString::number(m_line.failRate * 100, 'g', 12); }
    Q_INVOKABLE QString enterFailPercent(const QString &text);
    /// The seed of the random failures, 0 to 4294967295. A change starts their sequence again.
    QString seed() const { return QString::number(m_line.seed); }
    Q_INVOKABLE QString enterSeed(const QString &text);

    /// Whether all calls of LineFaults::changes() fail.
    bool refusesChanges() const { return m_line.refusesChanges; }
    void setRefusesChanges(bool refuses);

    /// The names of calls to offer: some that mean many calls, and those in the log when refreshNames() was called.
    const QStringList &names() const { return m_names; }
    Q_INVOKABLE void refreshNames();

    /// Lets the next call of this name fail. The name may end with "*".
    Q_INVOKABLE QString enterFailNext(const QString &name);

    /// The name of the calls that are held; empty if none are.
    QString held() const { return QString::fromStdString(m_line.held); }
    /// Holds the calls of this name in place of those held so far. The name may end with "*".
    Q_INVOKABLE QString enterHold(const QString &name);
    /// Lets all held calls pass.
    Q_INVOKABLE void release();
    /// How many calls are held at present. Follows the gate while `active` is true.
    int heldCalls() const { return m_heldCalls; }

    /// Whether the cable is pulled. Then the camera is not connected, and the page cannot connect it.
    bool pulled() const { return m_line.pulled; }
    /// False while the camera connects or disconnects.
    bool canMoveCable() const;
    /// Pulls the cable. Passed over if it is pulled or cannot be moved.
    Q_INVOKABLE void pull();
    /// Plugs the cable in. A camera that was connected when it was pulled is connected again, unless another one has
    /// been chosen since. Passed over if the cable is not pulled or cannot be moved.
    Q_INVOKABLE void plug();

    /// Ends all faults of the line and all requests to the gate of the present camera.
    void clear();
    /// One line for each fault of the line and for each other request to the gate of the present camera.
    QStringList texts() const;

signals:
    void activeChanged();
    void changed();
    void namesChanged();
    void heldCallsChanged();
    void canMoveCableChanged();

private:
    void followCamera();
    void setTiming();
    void setFailures();
    void publish();
    void look();
    void setPulled(bool pulled);
    void moveCable();
    void finishedMoving();

    StandaloneModel &m_standalone;
    Faults &m_faults;
    LineFaults m_line;
    std::shared_ptr<emulator::Camera> m_camera;
    bool m_active = false;
    QStringList m_names;
    int m_heldCalls = 0;
    /// The requests of enterFailNext() that the gate has not carried out, as its lines.
    std::vector<std::string> m_pending;
    QTimer m_watch{this}; ///< Runs while there are such requests, and while the card shows a hold.
    bool m_connectsWhenPlugged = false;
    bool m_isMoving = false; ///< From moveCable() to finishedMoving().
    bool m_movedTo = false; ///< The last value of `pulled` that moveCable() has carried out.
    QFutureWatcher<void> m_move;
};
