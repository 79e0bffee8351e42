#pragma once

#include <QObject>
#include <QString>

namespace hlx::cam::ui
{

/// The context property `fontAwesome` of a page: the font family for all icon labels. GUI thread only.
class IconFont : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)

public:
    using QObject::QObject;

    /// The family name; empty if the font could not be loaded.
    QString name() const;
};

} // namespace hlx::cam::ui
