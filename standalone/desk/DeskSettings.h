#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QSettings;

/// What the controller remembers of its desk from one run to the next: whether it is shown, its width and its open
/// cards. QSettings writes changes. GUI thread only.
class DeskSettings : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to the desk")

public:
    static constexpr int DefaultWidth = 420;
    static constexpr int LeastWidth = 340;

    /// `settings` must outlive this object.
    explicit DeskSettings(QSettings &settings, QObject *parent = nullptr);

    /// True until it is changed for the first time.
    bool shown() const;
    void setShown(bool shown);

    /// In device-independent pixels, at least LeastWidth.
    int width() const;
    void setWidth(int width);

    /// Whether the card `name` is open; `first` if it has never been opened or closed.
    Q_INVOKABLE bool isOpen(const QString &name, bool first) const;
    Q_INVOKABLE void setOpen(const QString &name, bool open);

private:
    QSettings &m_settings;
};
