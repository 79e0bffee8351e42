// The SDK's functions of the files of non-uniformity corrections.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/CorrectionStore.h"
#include "platform/emulator/memberCalls.h"
#include "platform/zvtsdk/dirEntry.h"

#include <QString>

#include <algorithm>
#include <string>

using namespace emulator;

using Progress = FileTransfer::Progress;

namespace
{

/// Copies a text into a field of a record that has only zeros. The text has no terminating zero if it fills the field.
template <size_t Size> void copyText(char (&field)[Size], const std::string &text)
{
    std::copy_n(text.data(), std::min(text.size(), Size), field);
}

zvtSNUCInfo toRecord(const CorrectionInfo &info)
{
    zvtSNUCInfo record{};
    copyText(record.cameraModel, info.cameraModel);
    copyText(record.cameraSerial, info.cameraSerial);
    forEachNumber([](auto &to, const auto &from) { to = from; }, record, info);
    return record;
}

/// Implements a query of the description of a correction.
template <auto Query> int query(const char *function, uint64_t handle, const char *name, zvtSNUCInfo *out)
{
    const auto body = [&](CorrectionStore &store) {
        CorrectionInfo info;
        const Status status = (store.*Query)(name, info);
        if (status == Ok)
            *out = toRecord(info);
        return status;
    };
    return onDevice<CorrectionStore>(function, handle, body, name, out,
                                     TextField(out ? out->cameraModel : nullptr, sizeof out->cameraModel),
                                     TextField(out ? out->cameraSerial : nullptr, sizeof out->cameraSerial));
}

} // namespace

int zvtListNUCs(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries)
{
    const auto body = [&](CorrectionStore &store) {
        entries->clear();
        for (const auto &correction : store.list())
            entries->add(zvt::dirEntry(correction.name, correction.size, correction.written));
    };
    return onDevice<CorrectionStore>(__func__, handle, body, entries);
}

int zvtNUCExists(uint64_t handle, const char *name) { return call<&CorrectionStore::exists>(__func__, handle, name); }

int zvtGetNUCFileInfo(uint64_t handle, const char *name, uint32_t *size, uint64_t *time100ns)
{
    const auto body = [&](CorrectionStore &store) {
        CorrectionStore::Entry entry;
        const Status status = store.fileInfo(name, entry);
        if (status == Ok) {
            *size = zvt::fileSize(entry.size);
            *time100ns = zvt::fileTime(entry.written);
        }
        return status;
    };
    return onDevice<CorrectionStore>(__func__, handle, body, name, size, time100ns);
}

int zvtQueryNUCBasicInfo(uint64_t handle, const char *name, zvtSNUCInfo *out)
{
    return query<&CorrectionStore::basicInfo>(__func__, handle, name, out);
}

int zvtQueryNUCInfo(uint64_t handle, const char *name, zvtSNUCInfo *out)
{
    return query<&CorrectionStore::info>(__func__, handle, name, out);
}

int zvtIsFactoryNUC(uint64_t handle, const char *name, bool *out)
{
    return call<&CorrectionStore::findWhetherFactory>(__func__, handle, name, out);
}

int zvtDeleteNUC(uint64_t handle, const char *name) { return call<&CorrectionStore::remove>(__func__, handle, name); }

int zvtRenameNUC(uint64_t handle, const char *oldName, const char *newName)
{
    return call<&CorrectionStore::rename>(__func__, handle, oldName, newName);
}

int zvtGetNUCFreeSpace(uint64_t handle, uint64_t *bytes)
{
    return get<&CorrectionStore::freeSpace>(__func__, handle, bytes);
}

int zvtGuessNUCSize(uint64_t handle, uint16_t width, uint16_t height, uint32_t *bytes)
{
    return call<&CorrectionStore::guessSize>(__func__, handle, width, height, bytes);
}

int zvtUploadNUCStdEx(uint64_t handle, const char *remoteName, const char *localPath, Progress progress)
{
    const auto body
        = [&](CorrectionStore &store) { return store.upload(remoteName, QString::fromUtf8(localPath), progress); };
    return onDevice<CorrectionStore>(__func__, handle, body, remoteName, localPath, progress);
}

int zvtDownloadNUCStd(uint64_t handle, const char *name, const char *localPath, Progress progress)
{
    const auto body
        = [&](CorrectionStore &store) { return store.download(name, QString::fromUtf8(localPath), progress); };
    return onDevice<CorrectionStore>(__func__, handle, body, name, localPath, progress);
}
