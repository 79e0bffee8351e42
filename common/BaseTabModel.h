#pragma once

#include <QObject>

/// The base of the models behind the main page's tabs. GUI thread only.
class BaseTabModel : public QObject
{
    Q_OBJECT

public:
    explicit BaseTabModel(QObject *parent = nullptr);

    /// Reads the tab's own values from the camera. Each tab overrides it; the base only leaves a line in the debug log,
    /// by which a forgotten one shows up.
    Q_INVOKABLE virtual void refresh();
};
