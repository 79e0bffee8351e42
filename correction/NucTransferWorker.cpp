#include "correction/NucTransferWorker.h"

#include <utility>

#include "hlx/delegate.h"
#include "zvt/zvtsdk.h"

NucTransferWorker::NucTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name)
    : TransferWorker(parent, handle, upload, std::move(file), std::move(name))
{
}

void NucTransferWorker::run()
{
    using Self = NucTransferWorker;
    const auto delegate = hlx::delegate<int(unsigned int, unsigned int)>::FromMember<Self, &Self::progress>(this);
    const QByteArray file = m_file.toUtf8();
    const QByteArray name = m_name.toUtf8();
    if (m_upload) {
        m_ok = zvtUploadNUCStdEx(m_handle, name.constData(), file.constData(), delegate) == 0;
        m_freeSpaceValid = zvtGetNUCFreeSpace(m_handle, &m_freeSpace) == 0;
    } else {
        m_ok = zvtDownloadNUCStd(m_handle, name.constData(), file.constData(), delegate) == 0;
    }
}

int NucTransferWorker::progress(unsigned int done, unsigned int total) { return report(percentOf(done, total)); }
