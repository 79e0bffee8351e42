#include "standalone/desk/Faults.h"

#include <utility>

void Faults::add(const QObject *owner, Texts texts, Clear clear)
{
    m_sources.push_back({owner, std::move(texts), std::move(clear)});
    connect(owner, &QObject::destroyed, this,
            [this, owner] { std::erase_if(m_sources, [&](const Source &source) { return source.owner == owner; }); });
    update();
}

void Faults::update()
{
    QStringList texts;
    for (const Source &source : m_sources)
        texts += source.texts();
    if (texts == m_texts)
        return;
    m_texts = texts;
    emit changed();
}

void Faults::clearAll()
{
    for (const Source &source : m_sources)
        source.clear();
    update();
}
