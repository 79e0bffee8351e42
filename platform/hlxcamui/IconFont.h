#pragma once

#include <QObject>
#include <QString>

namespace hlx::cam::ui
{

/// What a page sees as `fontAwesome`: the family name of the font that all icon labels are set in. GUI thread only.
class IconFont : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)

public:
    using QObject::QObject;

    /// Empty if the font could not be read.
    QString name() const;
};

} // namespace hlx::cam::ui
