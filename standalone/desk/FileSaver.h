#pragma once

#include "platform/hlxcamui/WidgetFileDialog.h"

#include <QFutureWatcher>
#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QtQml/qqmlregistration.h>

#include <functional>

/// Asks for the name of a file and writes it on a thread of its own, which exists only meanwhile. GUI thread only.
class FileSaver : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("belongs to a model")
    Q_PROPERTY(bool saving READ saving NOTIFY changed FINAL)
    /// The result of the last attempt, for the user. Empty before the first one, and while a file is being written.
    Q_PROPERTY(QString result READ result NOTIFY changed FINAL)
    Q_PROPERTY(bool failed READ failed NOTIFY changed FINAL)

public:
    /// Writes a file. Returns an empty text, or why it failed. Runs on the thread of the FileSaver.
    using Save = std::function<QString(const QString &file)>;

    explicit FileSaver(QObject *parent = nullptr);
    /// Waits for the end of a file that is being written.
    ~FileSaver() override;

    bool saving() const { return m_saving.isRunning(); }
    const QString &result() const { return m_result; }
    bool failed() const { return m_failed; }

    /// Asks for a file and writes it. `name` is the first proposal. Passed over while a file is asked for or written.
    void ask(const QString &title, const QStringList &filters, const QString &name, Save save);

signals:
    void changed();

private:
    void accepted();
    void finished();

    hlx::cam::ui::WidgetFileDialog m_dialog;
    Save m_save; ///< Empty unless a file is asked for.
    QString m_result;
    bool m_failed = false;
    QThreadPool m_threads;
    QFutureWatcher<QString> m_saving;
};
