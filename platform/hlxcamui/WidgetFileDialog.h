#pragma once

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <functional>
#include <memory>

class QFileDialog;

namespace hlx::cam::ui
{

/// A file or folder dialog for pages: the QML type `WidgetFileDialog` of the shared controls. It does not block: it
/// emits `accepted` or `rejected` after the operator has answered. GUI thread only, needs a QApplication.
///
/// Tests call WidgetFileDialog::setNextAnswer() to answer the next dialog of the process without showing it.
class WidgetFileDialog : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER m_title NOTIFY titleChanged)
    /// The folder in which the dialog starts; after accepting, the folder of the operator's choice.
    Q_PROPERTY(QUrl folder MEMBER m_folder NOTIFY folderChanged)
    /// True to choose an existing file, false to name a file that will be written.
    Q_PROPERTY(bool selectExisting MEMBER m_selectExisting NOTIFY selectExistingChanged)
    /// True to choose a folder.
    Q_PROPERTY(bool selectFolder MEMBER m_selectFolder NOTIFY selectFolderChanged)
    /// Filters such as "Text files (*.txt)".
    Q_PROPERTY(QStringList nameFilters MEMBER m_nameFilters NOTIFY nameFiltersChanged)
    /// The initial filter; empty for the first one. After accepting, the filter that the operator chose.
    Q_PROPERTY(QString selectedNameFilter MEMBER m_selectedNameFilter NOTIFY selectedNameFilterChanged)
    /// The file name that the dialog shows initially.
    Q_PROPERTY(QString defaultName MEMBER m_defaultName NOTIFY defaultNameChanged)
    /// The file or folder chosen last. If the file will be written and its name has no suffix, it gets that of the
    /// filter, provided that the filter has exactly one.
    Q_PROPERTY(QUrl fileUrl READ fileUrl NOTIFY fileUrlChanged)
    /// The user's folders, as URLs: `desktop`, `documents`, `downloads`, `home`, `movies`, `music`, `pictures`.
    Q_PROPERTY(QVariantMap shortcuts READ shortcuts CONSTANT)

public:
    /// Returns the answer to a dialog; may read the properties of the dialog. An empty URL cancels the dialog.
    using Answer = std::function<QUrl(const WidgetFileDialog &dialog)>;

    explicit WidgetFileDialog(QObject *parent = nullptr);
    ~WidgetFileDialog() override;

    QUrl fileUrl() const { return m_fileUrl; }
    QVariantMap shortcuts() const;

    /// Shows the dialog. Does nothing if it is open already.
    Q_INVOKABLE void open();
    /// Closes an open dialog in the same way as a cancel by the operator.
    Q_INVOKABLE void close();

    /// The next open() of any dialog shows no dialog; it is answered by `answer` when the event loop runs. Null
    /// discards an unused answer.
    static void setNextAnswer(Answer answer);
    static void setNextAnswer(const QUrl &answer);
    /// True until a dialog has used the answer.
    static bool hasNextAnswer();

signals:
    void titleChanged();
    void folderChanged();
    void selectExistingChanged();
    void selectFolderChanged();
    void nameFiltersChanged();
    void selectedNameFilterChanged();
    void defaultNameChanged();
    void fileUrlChanged();
    void accepted();
    void rejected();

private:
    void configure(QFileDialog &dialog) const;
    void finished(bool isAccepted);
    void accept(const QUrl &file);

    QString m_title;
    QUrl m_folder;
    QStringList m_nameFilters;
    QString m_selectedNameFilter;
    QString m_defaultName;
    QUrl m_fileUrl;
    bool m_selectExisting = true;
    bool m_selectFolder = false;
    std::unique_ptr<QFileDialog> m_dialog;
};

} // namespace hlx::cam::ui
