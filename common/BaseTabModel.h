#pragma once

#include <QObject>

/// The base class of the models of the main page's tabs. GUI thread only.
class BaseTabModel : public QObject
{
    Q_OBJECT

public:
    explicit BaseTabModel(QObject *parent = nullptr);

    /// Reads the tab's own values from the camera. Each tab overrides it. The base class only writes a line to the
    /// debug log, which shows that an override is missing.
    Q_INVOKABLE virtual void refresh();
};
