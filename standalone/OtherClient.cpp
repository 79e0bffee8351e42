#include "standalone/OtherClient.h"

#include "platform/emulator/OtherClient.h"
#include "standalone/StandaloneModel.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <array>
#include <cstdio>

#include <unistd.h>

namespace
{

const QString capabilities = QStringLiteral("capabilities.");

QVariant valueOf(const QString &text)
{
    const QJsonArray values = QJsonDocument::fromJson('[' + text.toUtf8() + ']').array();
    return values.size() == 1 ? values.first().toVariant() : QVariant(text);
}

} // namespace

OtherClient::OtherClient(StandaloneModel &model, int descriptor, QObject *parent)
    : QObject(parent), m_model(model), m_notifier(descriptor, QSocketNotifier::Read, this)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, &OtherClient::read);
}

QString OtherClient::apply(emulator::Camera &camera, const QString &line)
{
    const QString name = line.section(u' ', 0, 0);
    const QString text = line.section(u' ', 1).trimmed();
    if (text.isEmpty())
        return QStringLiteral("a line holds a setting and its value, such as \"focus.position 3000\"");
    QString why;
    if (name.startsWith(capabilities))
        camera.changeMakeUp(name.mid(capabilities.size()), valueOf(text), &why);
    else
        camera.otherClient().set(name, valueOf(text), &why);
    return why;
}

void OtherClient::read()
{
    std::array<char, 4096> block{};
    const auto size = ::read(static_cast<int>(m_notifier.socket()), block.data(), block.size());
    if (size <= 0) {
        m_notifier.setEnabled(false);
        return;
    }
    m_pending.append(block.data(), static_cast<qsizetype>(size));
    for (qsizetype end = m_pending.indexOf('\n'); end >= 0; end = m_pending.indexOf('\n')) {
        const QString line = QString::fromUtf8(m_pending.first(end)).trimmed();
        m_pending.remove(0, end + 1);
        if (!line.isEmpty())
            applyLine(line);
    }
}

void OtherClient::applyLine(const QString &line)
{
    if (const QString fault = apply(m_model.camera(), line); !fault.isEmpty())
        std::fprintf(stderr, "zvtcontroller: %s\n", qPrintable(fault));
    else
        emit changed();
}
