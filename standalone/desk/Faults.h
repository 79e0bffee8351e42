#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <vector>

/// The faults that the cards of the desk have set, for the label "faults on". GUI thread only.
///
/// A card adds a source, and calls update() after each change of its faults.
class Faults : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")
    Q_PROPERTY(bool active READ active NOTIFY changed FINAL)
    Q_PROPERTY(QStringList texts READ texts NOTIFY changed FINAL)

public:
    /// Returns one line for each present fault, such as "Each call takes 200 ms longer".
    using Texts = std::function<QStringList()>;
    /// Ends all faults of a source.
    using Clear = std::function<void()>;

    using QObject::QObject;

    /// Adds a source, whose functions must be callable until `owner` is destroyed. Then the source is removed without a
    /// signal; the next update() leaves its faults out. Calls update().
    void add(const QObject *owner, Texts texts, Clear clear);

    /// Asks all sources for their faults.
    void update();

    bool active() const { return !m_texts.isEmpty(); }
    /// One line for each fault, in the order in which the sources were added.
    const QStringList &texts() const { return m_texts; }

    Q_INVOKABLE void clearAll();

signals:
    void changed();

private:
    struct Source {
        const QObject *owner;
        Texts texts;
        Clear clear;
    };

    std::vector<Source> m_sources;
    QStringList m_texts;
};
