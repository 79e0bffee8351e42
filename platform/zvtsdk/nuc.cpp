// The SDK's functions of non-uniformity corrections: loading, making and use.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/AutomaticCorrection.h"
#include "platform/emulator/devices/CorrectionRun.h"
#include "platform/emulator/devices/CorrectionSetup.h"
#include "platform/emulator/devices/Corrections.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

// Non-uniformity corrections.

int zvtLoadNUC(uint64_t handle, uint8_t preset, const char *name)
{
    return call<&Corrections::load>(__func__, handle, preset, name);
}

int zvtUnloadNUC(uint64_t handle, uint8_t preset) { return call<&Corrections::unload>(__func__, handle, preset); }

int zvtSaveNUC(uint64_t handle, uint8_t preset) { return call<&Corrections::saveCurrent>(__func__, handle, preset); }

int zvtSaveNUCAs(uint64_t handle, uint8_t preset, const char *name)
{
    return call<&Corrections::saveAs>(__func__, handle, preset, name);
}

// Making a correction.

int zvtSetNUCPreset(uint64_t handle, uint8_t preset)
{
    return call<&CorrectionSetup::setPreset>(__func__, handle, preset);
}

int zvtGetNUCType(uint64_t handle, uint8_t *out) { return get<&CorrectionSetup::type>(__func__, handle, out); }

int zvtSetNUCType(uint64_t handle, uint8_t value) { return call<&CorrectionSetup::setType>(__func__, handle, value); }

int zvtGetNUCSource(uint64_t handle, uint8_t *out) { return get<&CorrectionSetup::source>(__func__, handle, out); }

int zvtSetNUCSource(uint64_t handle, uint8_t value)
{
    return call<&CorrectionSetup::setSource>(__func__, handle, value);
}

int zvtGetNUCNumFrames(uint64_t handle, uint8_t *out) { return get<&CorrectionSetup::frames>(__func__, handle, out); }

int zvtSetNUCNumFrames(uint64_t handle, uint8_t value)
{
    return call<&CorrectionSetup::setFrames>(__func__, handle, value);
}

int zvtGetNUCSetup(uint64_t handle, float *gainMin, float *gainMax, uint16_t *adLow, uint16_t *adHigh,
                   bool *detectBadPixels)
{
    return call<&CorrectionSetup::limits>(__func__, handle, gainMin, gainMax, adLow, adHigh, detectBadPixels);
}

int zvtSetNUCSetup(uint64_t handle, float gainMin, float gainMax, uint16_t adLow, uint16_t adHigh, bool detectBadPixels)
{
    return call<&CorrectionSetup::setLimits>(__func__, handle, gainMin, gainMax, adLow, adHigh, detectBadPixels);
}

int zvtGetTwinklerSetup(uint64_t handle, bool *detect, uint32_t *numFrames, uint16_t *delta)
{
    return call<&CorrectionSetup::twinklers>(__func__, handle, detect, numFrames, delta);
}

int zvtSetTwinklerSetup(uint64_t handle, bool detect, uint32_t numFrames, uint16_t delta)
{
    return call<&CorrectionSetup::setTwinklers>(__func__, handle, detect, numFrames, delta);
}

int zvtGetNUCUseFactoryBadPixels(uint64_t handle, bool *out)
{
    return get<&CorrectionSetup::useFactoryBadPixels>(__func__, handle, out);
}

int zvtSetNUCUseFactoryBadPixels(uint64_t handle, bool value)
{
    return call<&CorrectionSetup::setUseFactoryBadPixels>(__func__, handle, value);
}

int zvtGetNUCFlagSetpointType(uint64_t handle, uint8_t *out)
{
    return get<&CorrectionSetup::flagSetpointType>(__func__, handle, out);
}

int zvtSetNUCFlagSetpointType(uint64_t handle, uint8_t value)
{
    return call<&CorrectionSetup::setFlagSetpointType>(__func__, handle, value);
}

int zvtGetNUCFlagSetpointDeltas(uint64_t handle, float *low, float *high)
{
    return call<&CorrectionSetup::flagDeltas>(__func__, handle, low, high);
}

int zvtSetNUCFlagSetpointDeltas(uint64_t handle, float low, float high)
{
    return call<&CorrectionSetup::setFlagDeltas>(__func__, handle, low, high);
}

int zvtGetNUCFlagSetpointTemps(uint64_t handle, float *low, float *high)
{
    return call<&CorrectionSetup::flagTemperatures>(__func__, handle, low, high);
}

int zvtSetNUCFlagSetpointTemps(uint64_t handle, float low, float high)
{
    return call<&CorrectionSetup::setFlagTemperatures>(__func__, handle, low, high);
}

int zvtGetNUCFlagConfig(uint64_t handle, float *flagMaxTemp, float *stableDelta, uint32_t *stableCount,
                        uint32_t *timeout)
{
    return call<&CorrectionSetup::flagConfig>(__func__, handle, flagMaxTemp, stableDelta, stableCount, timeout);
}

int zvtSetNUCFlagConfig(uint64_t handle, float flagMaxTemp, float stableDelta, uint32_t stableCount, uint32_t timeout)
{
    return call<&CorrectionSetup::setFlagConfig>(__func__, handle, flagMaxTemp, stableDelta, stableCount, timeout);
}

int zvtStartNUC(uint64_t handle) { return call<&CorrectionRun::start>(__func__, handle); }

int zvtContinueNUC(uint64_t handle) { return call<&CorrectionRun::proceed>(__func__, handle); }

int zvtAbortNUC(uint64_t handle) { return call<&CorrectionRun::abort>(__func__, handle); }

int zvtGetNUCStatus(uint64_t handle, uint16_t *status, char *text, uint32_t size)
{
    return call<&CorrectionRun::status>(__func__, handle, status, Text(text, size));
}

int zvtGetNUCResult(uint64_t handle, uint16_t *result, char *text, uint32_t size)
{
    return call<&CorrectionRun::result>(__func__, handle, result, Text(text, size));
}

int zvtGetNUCResults(uint64_t handle, uint8_t preset, uint32_t *total, uint32_t *factory, uint32_t *newBad,
                     uint32_t *twinkling, uint32_t *aboveGainMax, uint32_t *belowGainMin, uint32_t *aboveADMaxSrc1,
                     uint32_t *belowADMinSrc1, uint32_t *aboveADMaxSrc2, uint32_t *belowADMinSrc2)
{
    const auto read = [&](CorrectionRun &run) {
        image::BadPixelCounts counts;
        const Status status = run.counts(preset, counts);
        if (status != Ok)
            return status;
        *total = counts.total;
        *factory = counts.factory;
        *newBad = counts.newlyBad;
        *twinkling = counts.twinkling;
        *aboveGainMax = counts.aboveGainMax;
        *belowGainMin = counts.belowGainMin;
        *aboveADMaxSrc1 = counts.aboveAdMaxSource1;
        *belowADMinSrc1 = counts.belowAdMinSource1;
        *aboveADMaxSrc2 = counts.aboveAdMaxSource2;
        *belowADMinSrc2 = counts.belowAdMinSource2;
        return Ok;
    };
    return onDevice<CorrectionRun>(__func__, handle, read, preset, total, factory, newBad, twinkling, aboveGainMax,
                                   belowGainMin, aboveADMaxSrc1, belowADMinSrc1, aboveADMaxSrc2, belowADMinSrc2);
}

int zvtAcceptNUC(uint64_t handle) { return call<&Corrections::accept>(__func__, handle); }

int zvtDiscardNUC(uint64_t handle) { return call<&Corrections::discard>(__func__, handle); }

// Correction in use.

int zvtGetDigitalOutputNUCEnabled(uint64_t handle, bool *out)
{
    return get<&Corrections::digitalCorrected>(__func__, handle, out);
}

int zvtSetDigitalOutputNUCEnabled(uint64_t handle, bool value)
{
    return call<&Corrections::setDigitalCorrected>(__func__, handle, value);
}

int zvtGetVideoOutputNUCEnabled(uint64_t handle, bool *out)
{
    return get<&Corrections::videoCorrected>(__func__, handle, out);
}

int zvtSetVideoOutputNUCEnabled(uint64_t handle, bool value)
{
    return call<&Corrections::setVideoCorrected>(__func__, handle, value);
}

int zvtGetAutoNUCSetup(uint64_t handle, bool *enabled, bool *useDeltaTemp, float *deltaTemp, bool *useDeltaTime,
                       uint32_t *deltaTime)
{
    return call<&AutomaticCorrection::setup>(__func__, handle, enabled, useDeltaTemp, deltaTemp, useDeltaTime,
                                             deltaTime);
}

int zvtSetAutoNUCSetup(uint64_t handle, bool enabled, bool useDeltaTemp, float deltaTemp, bool useDeltaTime,
                       uint32_t deltaTime)
{
    return call<&AutomaticCorrection::setSetup>(__func__, handle, enabled, useDeltaTemp, deltaTemp, useDeltaTime,
                                                deltaTime);
}

int zvtDoAutoNUC(uint64_t handle) { return call<&AutomaticCorrection::start>(__func__, handle); }

int zvtGetShowBadPixels(uint64_t handle, bool *out) { return get<&Corrections::showBadPixels>(__func__, handle, out); }

int zvtSetShowBadPixels(uint64_t handle, bool value)
{
    return call<&Corrections::setShowBadPixels>(__func__, handle, value);
}

int zvtGetBadPixelCorrectionMethod(uint64_t handle, uint8_t *out)
{
    return call<&Corrections::repair>(__func__, handle, out);
}

int zvtSetBadPixelCorrectionMethod(uint64_t handle, uint8_t value)
{
    return call<&Corrections::setRepair>(__func__, handle, value);
}
