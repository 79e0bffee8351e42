// The SDK's functions of the camera's states and its files.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/FileTransfer.h"
#include "platform/emulator/devices/StateStore.h"
#include "platform/emulator/memberCalls.h"
#include "platform/zvtsdk/dirEntry.h"

#include <QString>

using namespace emulator;

using Progress = FileTransfer::Progress;

namespace
{

QString pathOf(const char *utf8) { return QString::fromUtf8(utf8); }

Progress orNone(const Progress *progress) { return progress ? *progress : Progress(); }

} // namespace

int zvtListStates(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries)
{
    const auto body = [&](StateStore &store) {
        entries->clear();
        for (const auto &state : store.list())
            entries->add(zvt::dirEntry(state.name, state.size, state.written));
    };
    return onDevice<StateStore>(__func__, handle, body, entries);
}

int zvtStateExists(uint64_t handle, const char *name) { return call<&StateStore::exists>(__func__, handle, name); }

int zvtGetStateName(uint64_t handle, char *buffer, uint32_t size)
{
    return get<&StateStore::current>(__func__, handle, Text(buffer, size));
}

int zvtIsFactoryDefaultState(uint64_t handle, uint8_t *isFactory)
{
    return get<&StateStore::isFactoryDefault>(__func__, handle, isFactory);
}

int zvtSaveState(uint64_t handle) { return call<&StateStore::saveCurrent>(__func__, handle); }

int zvtSaveStateAs(uint64_t handle, const char *name) { return call<&StateStore::saveAs>(__func__, handle, name); }

int zvtSaveFactoryDefaults(uint64_t handle) { return call<&StateStore::saveFactoryDefaults>(__func__, handle); }

int zvtDeleteState(uint64_t handle, const char *name) { return call<&StateStore::remove>(__func__, handle, name); }

int zvtRenameState(uint64_t handle, const char *oldName, const char *newName)
{
    return call<&StateStore::rename>(__func__, handle, oldName, newName);
}

int zvtUploadStateStd(uint64_t handle, const char *file, Progress *progress)
{
    const auto body = [&](StateStore &store) { return store.upload(pathOf(file), orNone(progress)); };
    return onDevice<StateStore>(__func__, handle, body, file, progress);
}

int zvtDownloadStateStd(uint64_t handle, const char *name, const char *file, Progress *progress)
{
    const auto body = [&](StateStore &store) { return store.download(name, pathOf(file), orNone(progress)); };
    return onDevice<StateStore>(__func__, handle, body, name, file, progress);
}

int zvtUploadFactoryDefaultStateStd(uint64_t handle, const char *localPath, Progress progress)
{
    const auto body = [&](StateStore &store) { return store.uploadFactoryDefaults(pathOf(localPath), progress); };
    return onDevice<StateStore>(__func__, handle, body, localPath, progress);
}

int zvtDownloadFactoryDefaultStateStd(uint64_t handle, const char *localPath, Progress progress)
{
    const auto body = [&](StateStore &store) { return store.downloadFactoryDefaults(pathOf(localPath), progress); };
    return onDevice<StateStore>(__func__, handle, body, localPath, progress);
}

int zvtDownloadFileStd(uint64_t handle, const char *cameraPath, const char *localPath, Progress progress)
{
    const auto body = [&](FileTransfer &transfer) {
        return transfer.downloadFile(pathOf(cameraPath), pathOf(localPath), progress);
    };
    return onDevice<FileTransfer>(__func__, handle, body, cameraPath, localPath, progress);
}
