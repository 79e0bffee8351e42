#include "platform/emulator/dispatch.h"
#include "zvt/zvtsdk.h"

// Camera states and the files of a camera. No emulated camera keeps any.

using namespace emulator;

int zvtListStates(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries) { return absent(__func__, handle, entries); }

int zvtStateExists(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtGetStateName(uint64_t handle, char *buffer, uint32_t size)
{
    return absent(__func__, handle, Text(buffer, size));
}

int zvtIsFactoryDefaultState(uint64_t handle, uint8_t *isFactory) { return absent(__func__, handle, isFactory); }

int zvtSaveState(uint64_t handle) { return absent(__func__, handle); }

int zvtSaveStateAs(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtSaveFactoryDefaults(uint64_t handle) { return absent(__func__, handle); }

int zvtDeleteState(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtRenameState(uint64_t handle, const char *oldName, const char *newName)
{
    return absent(__func__, handle, oldName, newName);
}

int zvtUploadStateStd(uint64_t handle, const char *file, hlx::delegate<int(unsigned int, unsigned int)> *progress)
{
    return absent(__func__, handle, file, progress);
}

int zvtDownloadStateStd(uint64_t handle, const char *name, const char *file,
                        hlx::delegate<int(unsigned int, unsigned int)> *progress)
{
    return absent(__func__, handle, name, file, progress);
}

int zvtUploadFactoryDefaultStateStd(uint64_t handle, const char *localPath,
                                    hlx::delegate<int(unsigned int, unsigned int)> progress)
{
    return absent(__func__, handle, localPath, progress);
}

int zvtDownloadFactoryDefaultStateStd(uint64_t handle, const char *localPath,
                                      hlx::delegate<int(unsigned int, unsigned int)> progress)
{
    return absent(__func__, handle, localPath, progress);
}

int zvtDownloadFileStd(uint64_t handle, const char *cameraPath, const char *localPath,
                       hlx::delegate<int(unsigned int, unsigned int)> progress)
{
    return absent(__func__, handle, cameraPath, localPath, progress);
}
