#include "state/CameraStateTransferWorker.h"

#include "hlx/delegate.h"
#include "zvt/zvtsdk.h"

CameraStateTransferWorker::CameraStateTransferWorker(QObject *parent, uint64_t handle, bool upload, QString file,
                                                     QString name)
    : QThread(parent), m_handle(handle), m_upload(upload), m_file(std::move(file)), m_name(std::move(name))
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
    constexpr double wholePercent = 100.0;
    // Avoids a division by zero.
    emit progressChanged(total == 0 ? 0 : static_cast<int>(static_cast<double>(sent) / total * wholePercent));
    return m_aborted ? -1 : 0;
}
