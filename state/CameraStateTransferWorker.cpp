#include "state/CameraStateTransferWorker.h"

#include <utility>

#include "hlx/delegate.h"
#include "zvt/zvtsdk.h"

CameraStateTransferWorker::CameraStateTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file,
                                                     QString name)
    : TransferWorker(parent, handle, upload, std::move(file), std::move(name))
{
}

void CameraStateTransferWorker::run()
{
    using Self = CameraStateTransferWorker;
    auto delegate = hlx::delegate<int(unsigned int, unsigned int)>::FromMember<Self, &Self::progress>(this);
    const QByteArray file = m_file.toUtf8();
    const int status = m_upload
        ? zvtUploadStateStd(m_handle, file.constData(), &delegate)
        : zvtDownloadStateStd(m_handle, m_name.toUtf8().constData(), file.constData(), &delegate);
    m_ok = status == 0;
}

int CameraStateTransferWorker::progress(unsigned int sent, unsigned int total)
{
    return report(percentOf(sent, total));
}
