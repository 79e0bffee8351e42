#include "standalone/desk/FileSaver.h"

#include <QDir>
#include <QtConcurrent>

#include <utility>

using hlx::cam::ui::WidgetFileDialog;

FileSaver::FileSaver(QObject *parent) : QObject(parent), m_dialog(this)
{
    m_dialog.setProperty("selectExisting", false);
    connect(&m_dialog, &WidgetFileDialog::accepted, this, &FileSaver::accepted);
    connect(&m_dialog, &WidgetFileDialog::rejected, this, [this] { m_save = nullptr; });
    connect(&m_saving, &QFutureWatcherBase::finished, this, &FileSaver::finished);
    m_threads.setMaxThreadCount(1);
    m_threads.setExpiryTimeout(0);
}

FileSaver::~FileSaver() { m_threads.waitForDone(); }

void FileSaver::ask(const QString &title, const QStringList &filters, const QString &name, Save save)
{
    if (m_save || saving())
        return;
    m_save = std::move(save);
    m_dialog.setProperty("title", title);
    m_dialog.setProperty("nameFilters", filters);
    m_dialog.setProperty("selectedNameFilter", filters.constFirst());
    m_dialog.setProperty("defaultName", name);
    m_dialog.open();
}

void FileSaver::accepted()
{
    m_result.clear();
    m_failed = false;
    const QString file = m_dialog.fileUrl().toLocalFile();
    m_saving.setFuture(
        QtConcurrent::run(&m_threads, [file, save = std::exchange(m_save, nullptr)] { return save(file); }));
    emit changed();
}

void FileSaver::finished()
{
    const QString error = m_saving.result();
    m_failed = !error.isEmpty();
    m_result = m_failed ? error : tr("Saved: %1").arg(QDir::toNativeSeparators(m_dialog.fileUrl().toLocalFile()));
    emit changed();
}
