#include "common/TransferWorker.h"

#include <algorithm>
#include <utility>

TransferWorker::TransferWorker(QObject *parent, uint64_t handle, bool upload, QString file, QString name)
    : QThread(parent), m_handle(handle), m_upload(upload), m_file(std::move(file)), m_name(std::move(name))
{
}

int TransferWorker::percentOf(unsigned int done, unsigned int total)
{
    constexpr double wholePercent = 100.0;
    return total == 0 ? 0 : static_cast<int>(std::min(wholePercent, wholePercent * done / total));
}

int TransferWorker::report(int percent)
{
    emit progressChanged(percent);
    return m_aborted ? -1 : 0;
}
