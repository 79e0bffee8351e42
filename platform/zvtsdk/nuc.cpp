// The SDK's functions of non-uniformity corrections: files, making and use. Emulated cameras make no corrections.
#include "zvt/zvtsdk.h"

#include "platform/emulator/dispatch.h"

using namespace emulator;

// Non-uniformity corrections.

int zvtListNUCs(uint64_t handle, hlx::TArray<zvtSDirEntry> *entries) { return absent(__func__, handle, entries); }

int zvtNUCExists(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtGetNUCFileInfo(uint64_t handle, const char *name, uint32_t *size, uint64_t *time100ns)
{
    return absent(__func__, handle, name, size, time100ns);
}

int zvtQueryNUCBasicInfo(uint64_t handle, const char *name, zvtSNUCInfo *out)
{
    return absent(__func__, handle, name, out);
}

int zvtQueryNUCInfo(uint64_t handle, const char *name, zvtSNUCInfo *out) { return absent(__func__, handle, name, out); }

int zvtIsFactoryNUC(uint64_t handle, const char *name, bool *out) { return absent(__func__, handle, name, out); }

int zvtLoadNUC(uint64_t handle, uint8_t preset, const char *name) { return absent(__func__, handle, preset, name); }

int zvtUnloadNUC(uint64_t handle, uint8_t preset) { return absent(__func__, handle, preset); }

int zvtSaveNUC(uint64_t handle, uint8_t preset) { return absent(__func__, handle, preset); }

int zvtSaveNUCAs(uint64_t handle, uint8_t preset, const char *name) { return absent(__func__, handle, preset, name); }

int zvtDeleteNUC(uint64_t handle, const char *name) { return absent(__func__, handle, name); }

int zvtRenameNUC(uint64_t handle, const char *oldName, const char *newName)
{
    return absent(__func__, handle, oldName, newName);
}

int zvtGetNUCFreeSpace(uint64_t handle, uint64_t *bytes) { return absent(__func__, handle, bytes); }

int zvtGuessNUCSize(uint64_t handle, uint16_t width, uint16_t height, uint32_t *bytes)
{
    return absent(__func__, handle, width, height, bytes);
}

int zvtUploadNUCStdEx(uint64_t handle, const char *remoteName, const char *localPath,
                      hlx::delegate<int(unsigned int, unsigned int)> progress)
{
    return absent(__func__, handle, remoteName, localPath, progress);
}

int zvtDownloadNUCStd(uint64_t handle, const char *name, const char *localPath,
                      hlx::delegate<int(unsigned int, unsigned int)> progress)
{
    return absent(__func__, handle, name, localPath, progress);
}

// Making a correction.

int zvtSetNUCPreset(uint64_t handle, uint8_t preset) { return absent(__func__, handle, preset); }

int zvtGetNUCType(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetNUCType(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetNUCSource(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetNUCSource(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetNUCNumFrames(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetNUCNumFrames(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetNUCSetup(uint64_t handle, float *gainMin, float *gainMax, uint16_t *adLow, uint16_t *adHigh,
                   bool *detectBadPixels)
{
    return absent(__func__, handle, gainMin, gainMax, adLow, adHigh, detectBadPixels);
}

int zvtSetNUCSetup(uint64_t handle, float gainMin, float gainMax, uint16_t adLow, uint16_t adHigh, bool detectBadPixels)
{
    return absent(__func__, handle, gainMin, gainMax, adLow, adHigh, detectBadPixels);
}

int zvtGetTwinklerSetup(uint64_t handle, bool *detect, uint32_t *numFrames, uint16_t *delta)
{
    return absent(__func__, handle, detect, numFrames, delta);
}

int zvtSetTwinklerSetup(uint64_t handle, bool detect, uint32_t numFrames, uint16_t delta)
{
    return absent(__func__, handle, detect, numFrames, delta);
}

int zvtGetNUCUseFactoryBadPixels(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetNUCUseFactoryBadPixels(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetNUCFlagSetpointType(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetNUCFlagSetpointType(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtGetNUCFlagSetpointDeltas(uint64_t handle, float *low, float *high)
{
    return absent(__func__, handle, low, high);
}

int zvtSetNUCFlagSetpointDeltas(uint64_t handle, float low, float high) { return absent(__func__, handle, low, high); }

int zvtGetNUCFlagSetpointTemps(uint64_t handle, float *low, float *high) { return absent(__func__, handle, low, high); }

int zvtSetNUCFlagSetpointTemps(uint64_t handle, float low, float high) { return absent(__func__, handle, low, high); }

int zvtGetNUCFlagConfig(uint64_t handle, float *flagMaxTemp, float *stableDelta, uint32_t *stableCount,
                        uint32_t *timeout)
{
    return absent(__func__, handle, flagMaxTemp, stableDelta, stableCount, timeout);
}

int zvtSetNUCFlagConfig(uint64_t handle, float flagMaxTemp, float stableDelta, uint32_t stableCount, uint32_t timeout)
{
    return absent(__func__, handle, flagMaxTemp, stableDelta, stableCount, timeout);
}

int zvtStartNUC(uint64_t handle) { return absent(__func__, handle); }

int zvtContinueNUC(uint64_t handle) { return absent(__func__, handle); }

int zvtAbortNUC(uint64_t handle) { return absent(__func__, handle); }

int zvtGetNUCStatus(uint64_t handle, uint16_t *status, char *text, uint32_t size)
{
    return absent(__func__, handle, status, Text(text, size));
}

int zvtGetNUCResult(uint64_t handle, uint16_t *result, char *text, uint32_t size)
{
    return absent(__func__, handle, result, Text(text, size));
}

int zvtGetNUCResults(uint64_t handle, uint8_t preset, uint32_t *total, uint32_t *factory, uint32_t *newBad,
                     uint32_t *twinkling, uint32_t *aboveGainMax, uint32_t *belowGainMin, uint32_t *aboveADMaxSrc1,
                     uint32_t *belowADMinSrc1, uint32_t *aboveADMaxSrc2, uint32_t *belowADMinSrc2)
{
    return absent(__func__, handle, preset, total, factory, newBad, twinkling, aboveGainMax, belowGainMin,
                  aboveADMaxSrc1, belowADMinSrc1, aboveADMaxSrc2, belowADMinSrc2);
}

int zvtAcceptNUC(uint64_t handle) { return absent(__func__, handle); }

int zvtDiscardNUC(uint64_t handle) { return absent(__func__, handle); }

// Correction in use.

int zvtGetDigitalOutputNUCEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetDigitalOutputNUCEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetVideoOutputNUCEnabled(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetVideoOutputNUCEnabled(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetAutoNUCSetup(uint64_t handle, bool *enabled, bool *useDeltaTemp, float *deltaTemp, bool *useDeltaTime,
                       uint32_t *deltaTime)
{
    return absent(__func__, handle, enabled, useDeltaTemp, deltaTemp, useDeltaTime, deltaTime);
}

int zvtSetAutoNUCSetup(uint64_t handle, bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime,
                       uint32_t deltaTime)
{
    return absent(__func__, handle, enabled, useDeltaTemp, deltaTemp, useDeltaTime, deltaTime);
}

int zvtDoAutoNUC(uint64_t handle) { return absent(__func__, handle); }

int zvtGetShowBadPixels(uint64_t handle, bool *out) { return absent(__func__, handle, out); }

int zvtSetShowBadPixels(uint64_t handle, bool value) { return absent(__func__, handle, value); }

int zvtGetBadPixelCorrectionMethod(uint64_t handle, uint8_t *out) { return absent(__func__, handle, out); }

int zvtSetBadPixelCorrectionMethod(uint64_t handle, uint8_t value) { return absent(__func__, handle, value); }

int zvtSaveBadPixelList(uint64_t handle, uint8_t preset, const char *cameraPath)
{
    return absent(__func__, handle, preset, cameraPath);
}
