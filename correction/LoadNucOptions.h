#pragma once

/// Which of the settings that a non-uniformity correction was made with are set again when it is loaded. Nothing but
/// the correction is loaded while `loadSettings` is false.
struct LoadNucOptions {
    bool loadSettings = false;
    bool useIntTime = true;
    bool useWindowSize = true;
    bool useInvertRevert = true; ///< Both flips of the image.
    bool useFrameRate = false;
    bool useFilter = false;
    bool useFrameSyncMode = false;
    bool useDigitalGainOffset = true;
    bool useAnalogOffset = false;
    bool useDetectorBias = false;
    bool useFPAGainLevel = false;
    bool useSkimming = false;
    bool useColor = true;
};
