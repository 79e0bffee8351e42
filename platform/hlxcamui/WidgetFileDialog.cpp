#include "platform/hlxcamui/WidgetFileDialog.h"

#include "platform/hlxcamui/windowOf.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QPalette>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
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

/// "txt" for "Text files (*.txt)"; empty for a filter without a suffix or with several.
QString suffixOf(const QString &nameFilter)
{
    static const QRegularExpression oneSuffix(QStringLiteral(R"(\(\s*\*\.(\w+)\s*\)\s*$)"));
    return oneSuffix.match(nameFilter).captured(1);
}

/// The colours of the pages.
constexpr std::pair<QPalette::ColorRole, QRgb> darkColors[] = {
    {QPalette::Window, 0xff22222b},      {QPalette::WindowText, 0xffd8d8d8},
    {QPalette::Base, 0xff1a1a21},        {QPalette::AlternateBase, 0xff22222b},
    {QPalette::Text, 0xffd8d8d8},        {QPalette::PlaceholderText, 0xff8d9196},
    {QPalette::Button, 0xff2e2e38},      {QPalette::ButtonText, 0xffd8d8d8},
    {QPalette::Highlight, 0xff18aae2},   {QPalette::HighlightedText, 0xff000000},
    {QPalette::ToolTipBase, 0xff2b2b35}, {QPalette::ToolTipText, 0xffd8d8d8},
    {QPalette::Light, 0xff55555f},       {QPalette::Midlight, 0xff3a3a45},
    {QPalette::Mid, 0xff747482},         {QPalette::Dark, 0xff1a1a21},
    {QPalette::Shadow, 0xff000000},      {QPalette::BrightText, 0xffffffff},
    {QPalette::Link, 0xff18aae2},        {QPalette::LinkVisited, 0xff18aae2},
};
constexpr QRgb disabledTextColor = 0xff8d9196;

QPalette darkPalette()
{
    QPalette palette;
    for (const auto &[role, color] : darkColors)
        palette.setColor(role, color);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledTextColor);
    return palette;
}

/// Sets the colours of the pages in the dialog and all its widgets.
void darken(QFileDialog &dialog)
{
    // The lists of the combo boxes are windows, which are created by the first access and inherit no palette.
    for (const QComboBox *box : dialog.findChildren<QComboBox *>())
        box->view();
    QStyle *const style = QStyleFactory::create(QStringLiteral("Fusion"));
    style->setParent(&dialog);
    const QPalette palette = darkPalette();
    for (QWidget *widget : QList<QWidget *>{&dialog} + dialog.findChildren<QWidget *>()) {
        widget->setStyle(style);
        widget->setPalette(palette);
    }
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
        // Answers after open() has returned, as a real dialog does.
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
    // The native dialog would have the colours of the desktop.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    darken(dialog);
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
        // Creates the native window of the dialog, which must exist before its transient parent can be set.
        dialog.winId();
        dialog.windowHandle()->setTransientParent(window);
    }
}

void WidgetFileDialog::finished(bool isAccepted)
{
    // The dialog is still executing its own close, so it is deleted later.
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
