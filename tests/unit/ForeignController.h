#pragma once

#include "hlx/IZVTController.h"

/// A controller that is not a CZVTController. SDK calls with its handle work; all its own operations fail.
class ForeignController : public hlx::cam::IZVTController
{
public:
    explicit ForeignController(uint64_t handle) : m_handle(handle) { }

    bool IsConnected() override { return true; }
    uint64_t GetHandle() override { return m_handle; }

    bool GetIsFactoryCalibrated(bool * /*calibrated*/) override { return false; }
    bool GetFactoryCalibrations(hlx::TArray<SFactoryCalibration> * /*list*/) override { return false; }
    bool GetPresetCalibrationIndex(int /*preset*/, int * /*index*/) override { return false; }
    void SetPresetCalibrationIndex(int /*preset*/, int /*index*/, int /*flag*/) override { }

    bool GetWindowSizes(hlx::TArray<SWindowSize> * /*sizes*/) override { return false; }
    void SetWindowSizeIndex(int /*index*/) override { }
    bool GetWindowSizeIndex(int * /*index*/) override { return false; }
    bool GetCanWindowCustom(bool * /*allowed*/) override { return false; }
    bool GetCanWindowCustomOffset(bool * /*allowed*/) override { return false; }
    bool GetWindow(uint16_t * /*x*/, uint16_t * /*y*/, uint16_t * /*width*/, uint16_t * /*height*/) override
    {
        return false;
    }
    bool SetWindow(uint16_t /*x*/, uint16_t /*y*/, uint16_t /*width*/, uint16_t /*height*/) override { return false; }
    void GetWindowLimits(uint16_t * /*minWidth*/, uint16_t * /*maxWidth*/, uint16_t * /*minHeight*/,
                         uint16_t * /*maxHeight*/, uint16_t * /*widthIncrement*/,
                         uint16_t * /*heightIncrement*/) override
    {
    }

    void GetPresetFrameRates(int /*preset*/, hlx::TArray<double> * /*rates*/) override { }
    void SetPresetFrameRateIndex(int /*preset*/, int /*index*/) override { }
    void GetPresetFrameRateIndex(int /*preset*/, int * /*index*/) override { }
    bool GetPresetFrameRate(int /*preset*/, double * /*hertz*/) override { return false; }
    void SetPresetFrameRate(int /*preset*/, int /*flag*/, double /*hertz*/) override { }

    bool GetSequencingModes(hlx::TArray<uint32_t> * /*modes*/) override { return false; }
    bool GetPresetSequencingMode(int * /*mode*/) override { return false; }
    void SetPresetSequencingMode(uint32_t /*mode*/) override { }
    bool GetPresetSequence(void * /*buffer*/, int /*count*/) override { return false; }
    void GetSubframeEnabled(int /*preset*/, bool * /*enabled*/) override { }
    void SetSubframeEnabled(int /*preset*/, bool /*enabled*/) override { }
    void GetDwellCount(int /*preset*/, unsigned int * /*count*/) override { }
    void SetDwellCount(int /*preset*/, unsigned int /*count*/) override { }
    void GetSuperframeRates(hlx::TArray<double> * /*rates*/) override { }
    void SetSuperframeRateIndex(int /*index*/) override { }
    bool GetSuperframeRateIndex(int * /*index*/) override { return false; }
    bool GetSuperframeRate(double * /*hertz*/) override { return false; }
    void SetSuperframeRate(int /*flag*/, double /*hertz*/) override { }

    bool GetPresetIntegrationTime(int /*preset*/, double * /*milliseconds*/) override { return false; }
    void SetPresetIntegrationTime(int /*preset*/, int /*flag*/, double /*milliseconds*/) override { }

    void SetVideoPreset(int16_t /*preset*/) override { }
    bool GetActivePreset(uint8_t * /*preset*/) override { return false; }
    void SetActivePreset(int16_t /*preset*/) override { }

    bool GetAverageFrameRate(double * /*hertz*/) override { return false; }
    hlx::TSharedPtr<hlx::cam::IVideoSource> GetVideoSource() override { return {}; }
    bool HasRealTimeClock() override { return false; }
    bool GetIsLowCost() override { return false; }
    void SetReduceNoise(bool /*reduce*/) override { }
    bool GetReduceNoise() override { return false; }

    bool LoadFactoryDefaults() override { return false; }
    bool LoadHardDefaults() override { return false; }
    bool LoadState(const char * /*name*/) override { return false; }

    bool CanDownload() override { return false; }
    bool DownloadMovie(hlx::CString /*path*/, hlx::delegate<int(int, unsigned int, unsigned int)> /*progress*/,
                       unsigned int /*first*/, unsigned int /*last*/) override
    {
        return false;
    }
    bool FindFrameRange(hlx::CDateTime /*start*/, hlx::CDateTime /*end*/, unsigned int * /*first*/,
                        unsigned int * /*last*/) override
    {
        return false;
    }

private:
    uint64_t m_handle;
};
