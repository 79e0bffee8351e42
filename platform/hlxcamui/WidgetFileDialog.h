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

/// A file or folder dialog for pages: the QML type `WidgetFileDialog` of the shared controls. It does not block; one of
/// its two signals comes later. GUI thread only, needs a QApplication.
///
/// Tests answer it without a dialog: WidgetFileDialog::setNextAnswer() takes the place of the operator for the next
/// dialog that any page of the process opens.
class WidgetFileDialog : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER m_title NOTIFY titleChanged)
    /// Where the dialog starts; after accepting, where the operator went.
    Q_PROPERTY(QUrl folder MEMBER m_folder NOTIFY folderChanged)
    /// True to choose a file that exists, false to name one that is to be written.
    Q_PROPERTY(bool selectExisting MEMBER m_selectExisting NOTIFY selectExistingChanged)
    /// True to choose a folder.
    Q_PROPERTY(bool selectFolder MEMBER m_selectFolder NOTIFY selectFolderChanged)
    /// Such as "Text files (*.txt)".
    Q_PROPERTY(QStringList nameFilters MEMBER m_nameFilters NOTIFY nameFiltersChanged)
    /// The filter shown first; after accepting, the one the operator chose. Empty for the first of the list.
    Q_PROPERTY(QString selectedNameFilter MEMBER m_selectedNameFilter NOTIFY selectedNameFilterChanged)
    /// The name that stands in the dialog at first.
    Q_PROPERTY(QString defaultName MEMBER m_defaultName NOTIFY defaultNameChanged)
    /// What was chosen last. A name that is to be written has the suffix of its filter, if the operator gave none and
    /// the filter has just one.
    Q_PROPERTY(QUrl fileUrl READ fileUrl NOTIFY fileUrlChanged)
    /// The user's folders, as URLs: `desktop`, `documents`, `downloads`, `home`, `movies`, `music`, `pictures`.
    Q_PROPERTY(QVariantMap shortcuts READ shortcuts CONSTANT)

public:
    /// Gives the answer to a dialog, of which it may read all properties; an empty URL cancels it.
    using Answer = std::function<QUrl(const WidgetFileDialog &dialog)>;

    explicit WidgetFileDialog(QObject *parent = nullptr);
    ~WidgetFileDialog() override;

    QUrl fileUrl() const { return m_fileUrl; }
    QVariantMap shortcuts() const;

    /// Shows the dialog; nothing if it is open already.
    Q_INVOKABLE void open();
    /// Closes an open dialog as if cancelled.
    Q_INVOKABLE void close();

    /// The next open() of any dialog shows nothing and is answered by this, once the event loop runs. Null takes an
    /// answer that was not used back.
    static void setNextAnswer(Answer answer);
    static void setNextAnswer(const QUrl &answer);
    /// True until a dialog has taken the answer.
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
