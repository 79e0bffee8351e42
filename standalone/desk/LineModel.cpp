#include "standalone/desk/LineModel.h"

#include "platform/emulator/Camera.h"
#include "standalone/StandaloneModel.h"
#include "standalone/desk/Faults.h"

#include <QRegularExpression>
#include <QtConcurrent>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace
{

/// The names that mean many calls.
const QStringList &generalNames()
{
    static const QStringList names{QStringLiteral("*"), QStringLiteral("zvtGet*"), QStringLiteral("zvtSet*"),
                                   QStringLiteral("controller.*")};
    return names;
}

QString refuseWhole(int maximum) { return LineModel::tr("Enter a whole number from 0 to %1.").arg(maximum); }

std::optional<int> milliseconds(const QString &text)
{
    bool valid = false;
    const int value = text.trimmed().toInt(&valid);
    return valid && value >= 0 && value <= LineModel::maximumLatency ? std::optional(value) : std::nullopt;
}

/// Returns why this is not a name of calls; empty if it is one.
QString refuseName(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^[A-Za-z0-9._]*\\*?$"));
    if (name.isEmpty())
        return LineModel::tr("Enter the name of a call.");
    if (!form.match(name).hasMatch())
        return LineModel::tr("Enter the name of a call, or its beginning and a \"*\".");
    return {};
}

/// The lines of a gate with these faults.
std::vector<std::string> requestsOf(const LineFaults &line)
{
    emulator::Gate gate;
    line.applyTo(gate);
    return gate.requests();
}

/// The line of a gate that fails the next call of this name.
std::string lineOfNextFailure(const std::string &name)
{
    emulator::Gate gate;
    gate.failNext(name);
    return gate.requests().front();
}

} // namespace

LineModel::LineModel(StandaloneModel &standalone, Faults &faults, QObject *parent)
    : QObject(parent), m_standalone(standalone), m_faults(faults), m_line(standalone.line()),
      m_camera(standalone.camera().shared_from_this()), m_names(generalNames())
{
    m_watch.setInterval(watchInterval);
    connect(&m_watch, &QTimer::timeout, this, &LineModel::look);
    connect(&m_move, &QFutureWatcherBase::finished, this, &LineModel::finishedMoving);
    connect(&standalone, &StandaloneModel::cameraChanged, this, &LineModel::followCamera);
    connect(&standalone, &StandaloneModel::connectingChanged, this, &LineModel::canMoveCableChanged);
    connect(&standalone, &StandaloneModel::disconnectingChanged, this, &LineModel::canMoveCableChanged);
    faults.add(
        this, [this] { return texts(); }, [this] { clear(); });
    look();
}

LineModel::~LineModel()
{
    // Held calls and a pulled cable would block the camera forever.
    m_line.held.clear();
    m_line.pulled = false;
    m_standalone.setLine(m_line);
    m_line.applyCable(m_camera->gate());
    m_camera->gate().release("*");
    m_move.waitForFinished();
}

void LineModel::setActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    look();
    emit activeChanged();
}

QString LineModel::enterLatency(const QString &text)
{
    const std::optional<int> value = milliseconds(text);
    if (!value)
        return refuseWhole(maximumLatency);
    m_line.latency = *value;
    setTiming();
    return {};
}

QString LineModel::enterJitter(const QString &text)
{
    const std::optional<int> value = milliseconds(text);
    if (!value)
        return refuseWhole(maximumLatency);
    m_line.jitter = *value;
    setTiming();
    return {};
}

void LineModel::setTiming()
{
    m_camera->gate().delay(m_line.latency, "*", m_line.jitter);
    publish();
}

QString LineModel::enterFailPercent(const QString &text)
{
    bool valid = false;
    const double percent = text.trimmed().toDouble(&valid);
    // Negated, so that NaN is refused too.
    if (!valid || !(percent >= 0 && percent <= 100))
        return tr("Enter a number from 0 to 100.");
    m_line.failRate = percent / 100;
    setFailures();
    return {};
}

QString LineModel::enterSeed(const QString &text)
{
    bool valid = false;
    const uint seed = text.trimmed().toUInt(&valid);
    if (!valid)
        return tr("Enter a whole number from 0 to %1.").arg(UINT32_MAX);
    m_line.seed = seed;
    setFailures();
    return {};
}

void LineModel::setFailures()
{
    m_camera->gate().failRandomly(m_line.failRate, m_line.seed);
    publish();
}

void LineModel::setRefusesChanges(bool refuses)
{
    if (refuses == m_line.refusesChanges)
        return;
    m_line.refusesChanges = refuses;
    m_line.applyRefusal(m_camera->gate());
    publish();
}

void LineModel::refreshNames()
{
    const emulator::Gate &gate = m_camera->gate();
    const size_t end = gate.mark();
    std::set<std::string> found;
    for (emulator::Call &call : gate.callsSince(end - std::min(end, searchedCalls)))
        found.insert(std::move(call.name));
    for (const QString &name : m_names.mid(generalNames().size()))
        found.insert(name.toStdString());
    QStringList names = generalNames();
    for (const std::string &name : found)
        names << QString::fromStdString(name);
    if (names == m_names)
        return;
    m_names = names;
    emit namesChanged();
}

QString LineModel::enterFailNext(const QString &name)
{
    const QString trimmed = name.trimmed();
    const QString refusal = refuseName(trimmed);
    if (refusal.isEmpty()) {
        m_camera->gate().failNext(trimmed.toStdString());
        m_pending.push_back(lineOfNextFailure(trimmed.toStdString()));
        look();
    }
    return refusal;
}

QString LineModel::enterHold(const QString &name)
{
    const QString trimmed = name.trimmed();
    const QString refusal = refuseName(trimmed);
    if (refusal.isEmpty()) {
        m_camera->gate().release("*");
        m_line.held = trimmed.toStdString();
        m_camera->gate().hold(m_line.held);
        publish();
    }
    return refusal;
}

void LineModel::release()
{
    m_line.held.clear();
    m_camera->gate().release("*");
    publish();
}

bool LineModel::canMoveCable() const
{
    return !m_isMoving && !m_standalone.connecting() && !m_standalone.disconnecting();
}

void LineModel::pull()
{
    if (!pulled() && canMoveCable())
        setPulled(true);
}

void LineModel::plug()
{
    if (pulled() && canMoveCable())
        setPulled(false);
}

void LineModel::setPulled(bool pulled)
{
    if (pulled)
        m_connectsWhenPlugged = m_camera->connected();
    m_line.pulled = pulled;
    m_line.applyCable(m_camera->gate());
    publish();
    if (!m_isMoving)
        moveCable();
}

/// Carries out the present value of `pulled`.
void LineModel::moveCable()
{
    m_isMoving = true;
    m_movedTo = m_line.pulled;
    emit canMoveCableChanged();
    m_move.setFuture(QtConcurrent::run([camera = m_camera, pulled = m_movedTo, connects = m_connectsWhenPlugged] {
        if (pulled)
            camera->disconnect();
        else if (connects)
            camera->connect();
    }));
}

void LineModel::finishedMoving()
{
    m_isMoving = false;
    // clear() may have plugged the cable in while it was being pulled.
    if (m_movedTo == m_line.pulled)
        emit canMoveCableChanged();
    else
        moveCable();
}

void LineModel::clear()
{
    const bool wasPulled = m_line.pulled;
    m_line = {};
    m_camera->gate().clear();
    publish();
    if (wasPulled)
        setPulled(false);
}

QStringList LineModel::texts() const
{
    LineFaults refusal;
    refusal.refusesChanges = m_line.refusesChanges;
    const std::vector<std::string> refused = requestsOf(refusal);
    LineFaults cable;
    cable.pulled = m_line.pulled;
    const std::vector<std::string> unconnectable = requestsOf(cable);
    QStringList texts;
    if (m_line.pulled)
        texts << tr("The cable is pulled");
    if (m_line.refusesChanges)
        texts << tr("All changes are refused");
    for (const std::string &request : m_camera->gate().requests())
        if (std::ranges::count(refused, request) == 0 && std::ranges::count(unconnectable, request) == 0)
            texts << QString::fromStdString(request);
    return texts;
}

void LineModel::followCamera()
{
    LineFaults{}.applyTo(m_camera->gate());
    m_connectsWhenPlugged = false;
    m_camera = m_standalone.camera().shared_from_this();
    m_line.applyTo(m_camera->gate());
    publish();
}

void LineModel::publish()
{
    m_standalone.setLine(m_line);
    emit changed();
    look();
}

/// Publishes what the gate has carried out in the meantime: failures that were requested once, and held calls.
void LineModel::look()
{
    const emulator::Gate &gate = m_camera->gate();
    const std::vector<std::string> requests = gate.requests();
    std::erase_if(m_pending, [&](const std::string &line) { return std::ranges::count(requests, line) == 0; });
    m_faults.update();
    if (const int held = gate.heldCalls(); held != m_heldCalls) {
        m_heldCalls = held;
        emit heldCallsChanged();
    }
    // Nothing else changes by itself. The label "faults on" follows the failures also while the card is hidden.
    if (m_pending.empty() && !(m_active && !m_line.held.empty()))
        m_watch.stop();
    else if (!m_watch.isActive())
        m_watch.start();
}
