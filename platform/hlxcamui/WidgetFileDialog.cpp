#include "platform/hlxcamui/WidgetFileDialog.h"

#include "platform/hlxcamui/windowOf.h"

#include <QFileDialog>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QWindow>

#include <utility>

namespace hlx::cam::ui
{

namespace
{

WidgetFileDialog::Answer &nextAnswer()
{
    static WidgetFileDialog::Answer answer;
    return answer;
}

/// "txt" for "Text files (*.txt)"; empty for a filter of no or several suffixes.
QString suffixOf(const QString &nameFilter)
{
    static const QRegularExpression oneSuffix(QStringLiteral(R"(\(\s*\*\.(\w+)\s*\)\s*$)"));
    return oneSuffix.match(nameFilter).captured(1);
}

} // namespace

WidgetFileDialog::WidgetFileDialog(QObject *parent) : QObject(parent) { }

WidgetFileDialog::~WidgetFileDialog() = default;

QVariantMap WidgetFileDialog::shortcuts() const
{
    const auto url = [](QStandardPaths::StandardLocation location) {
        return QUrl::fromLocalFile(QStandardPaths::writableLocation(location));
    };
    return {{QStringLiteral("desktop"), url(QStandardPaths::DesktopLocation)},
            {QStringLiteral("documents"), url(QStandardPaths::DocumentsLocation)},
            {QStringLiteral("downloads"), url(QStandardPaths::DownloadLocation)},
            {QStringLiteral("home"), url(QStandardPaths::HomeLocation)},
            {QStringLiteral("movies"), url(QStandardPaths::MoviesLocation)},
            {QStringLiteral("music"), url(QStandardPaths::MusicLocation)},
            {QStringLiteral("pictures"), url(QStandardPaths::PicturesLocation)}};
}

void WidgetFileDialog::open()
{
    if (m_dialog)
        return;
    if (const Answer answer = std::exchange(nextAnswer(), nullptr)) {
        // Later, like a dialog: a page must not rely on an answer from inside open().
        const auto deliver = [this, file = answer(*this)] { file.isEmpty() ? emit rejected() : accept(file); };
        QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
        return;
    }
    m_dialog = std::make_unique<QFileDialog>();
    configure(*m_dialog);
    connect(m_dialog.get(), &QDialog::finished, this, [this](int result) { finished(result == QDialog::Accepted); });
    m_dialog->show();
}

void WidgetFileDialog::close()
{
    if (m_dialog)
        m_dialog->reject();
}

void WidgetFileDialog::setNextAnswer(Answer answer) { nextAnswer() = std::move(answer); }

void WidgetFileDialog::setNextAnswer(const QUrl &answer)
{
    nextAnswer() = [answer](const WidgetFileDialog &) { return answer; };
}

bool WidgetFileDialog::hasNextAnswer() { return nextAnswer() != nullptr; }

void WidgetFileDialog::configure(QFileDialog &dialog) const
{
    dialog.setWindowTitle(m_title);
    const bool writes = !m_selectExisting && !m_selectFolder;
    dialog.setAcceptMode(writes ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(m_selectFolder ? QFileDialog::Directory
                           : writes   ? QFileDialog::AnyFile
                                      : QFileDialog::ExistingFile);
    dialog.setOption(QFileDialog::ShowDirsOnly, m_selectFolder);
    if (!m_selectFolder)
        dialog.setNameFilters(m_nameFilters);
    if (writes)
        QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                         [&dialog](const QString &filter) { dialog.setDefaultSuffix(suffixOf(filter)); });
    if (!m_selectedNameFilter.isEmpty())
        dialog.selectNameFilter(m_selectedNameFilter);
    if (writes)
        dialog.setDefaultSuffix(suffixOf(dialog.selectedNameFilter()));
    if (!m_folder.isEmpty())
        dialog.setDirectoryUrl(m_folder);
    if (!m_defaultName.isEmpty())
        dialog.selectFile(m_defaultName);

    QWindow *window = windowOf(parent());
    dialog.setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
    if (window) {
        // The widget's own window must exist before it can be told whose dialog it is.
        dialog.winId();
        dialog.windowHandle()->setTransientParent(window);
    }
}

void WidgetFileDialog::finished(bool isAccepted)
{
    // The dialog is in the middle of closing itself.
    QFileDialog *dialog = m_dialog.release();
    dialog->deleteLater();
    if (!isAccepted || dialog->selectedUrls().isEmpty()) {
        emit rejected();
        return;
    }
    if (m_folder != dialog->directoryUrl()) {
        m_folder = dialog->directoryUrl();
        emit folderChanged();
    }
    if (m_selectedNameFilter != dialog->selectedNameFilter()) {
        m_selectedNameFilter = dialog->selectedNameFilter();
        emit selectedNameFilterChanged();
    }
    accept(dialog->selectedUrls().constFirst());
}

void WidgetFileDialog::accept(const QUrl &file)
{
    if (m_fileUrl != file) {
        m_fileUrl = file;
        emit fileUrlChanged();
    }
    emit accepted();
}

} // namespace hlx::cam::ui
