#pragma once

#include <cstdint>

#include "hlx/CDateTime.h"
#include "hlx/CameraCapabilities.h"
#include "hlx/IController.h"
#include "hlx/IVideoSource.h"
#include "hlx/TListenerList.h"
#include "hlx/TSharedPtr.h"

namespace hlx::cam
{

/// The controller of one camera of the zvt family.
///
/// Every operation may be called from any thread, at the same time as every other. A bool result is true on success. An
/// operation that fails leaves its out-parameters alone. Presets count from 0. Times are in milliseconds, rates in
/// hertz, windows in pixels. Operations that load or transfer block their caller until they have ended.
class IZVTController : public IController
{
public:
    /// One entry of the preset sequence. What it holds has no meaning to the view models; the record gives the size.
    struct SPresetSequenceEntry {
        uint32_t preset = 0;
        uint32_t count = 0;
    };

    IZVTController();
    ~IZVTController() override;

    virtual bool GetIsFactoryCalibrated(bool *calibrated) = 0;
    virtual bool GetFactoryCalibrations(hlx::TArray<SFactoryCalibration> *list) = 0;
    /// The row of the preset's factory calibration, -1 for none.
    virtual bool GetPresetCalibrationIndex(int preset, int *index) = 0;
    virtual void SetPresetCalibrationIndex(int preset, int index, int flag) = 0;

    virtual bool GetWindowSizes(hlx::TArray<SWindowSize> *sizes) = 0;
    virtual void SetWindowSizeIndex(int index) = 0;
    /// The row of the present size among the standard ones, -1 for a free size.
    virtual bool GetWindowSizeIndex(int *index) = 0;
    virtual bool GetCanWindowCustom(bool *allowed) = 0;
    virtual bool GetCanWindowCustomOffset(bool *allowed) = 0;
    virtual bool GetWindow(uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height) = 0;
    virtual bool SetWindow(uint16_t x, uint16_t y, uint16_t width, uint16_t height) = 0;
    virtual void GetWindowLimits(uint16_t *minWidth, uint16_t *maxWidth, uint16_t *minHeight, uint16_t *maxHeight,
                                 uint16_t *widthIncrement, uint16_t *heightIncrement)
        = 0;

    /// The rates on offer for a preset, highest first. They follow its integration time, the window and the noise
    /// reduction.
    virtual void GetPresetFrameRates(int preset, hlx::TArray<double> *rates) = 0;
    virtual void SetPresetFrameRateIndex(int preset, int index) = 0;
    /// The row of the preset's rate among those on offer, -1 for a free rate.
    virtual void GetPresetFrameRateIndex(int preset, int *index) = 0;
    virtual bool GetPresetFrameRate(int preset, double *hertz) = 0;
    virtual void SetPresetFrameRate(int preset, int flag, double hertz) = 0;

    virtual bool GetSequencingModes(hlx::TArray<uint32_t> *modes) = 0;
    /// 0: no sequencing.
    virtual bool GetPresetSequencingMode(int *mode) = 0;
    virtual void SetPresetSequencingMode(uint32_t mode) = 0;
    /// Fills at most `count` records of SPresetSequenceEntry at `buffer`.
    virtual bool GetPresetSequence(void *buffer, int count) = 0;
    virtual void GetSubframeEnabled(int preset, bool *enabled) = 0;
    virtual void SetSubframeEnabled(int preset, bool enabled) = 0;
    virtual void GetDwellCount(int preset, unsigned int *count) = 0;
    virtual void SetDwellCount(int preset, unsigned int count) = 0;
    virtual void GetSuperframeRates(hlx::TArray<double> *rates) = 0;
    virtual void SetSuperframeRateIndex(int index) = 0;
    virtual bool GetSuperframeRateIndex(int *index) = 0;
    virtual bool GetSuperframeRate(double *hertz) = 0;
    virtual void SetSuperframeRate(int flag, double hertz) = 0;

    virtual bool GetPresetIntegrationTime(int preset, double *milliseconds) = 0;
    /// The camera stores the nearest valid value.
    virtual void SetPresetIntegrationTime(int preset, int flag, double milliseconds) = 0;

    virtual void SetVideoPreset(int16_t preset) = 0;
    virtual bool GetActivePreset(uint8_t *preset) = 0;
    virtual void SetActivePreset(int16_t preset) = 0;

    virtual bool IsConnected() = 0;
    virtual bool GetAverageFrameRate(double *hertz) = 0;
    /// The SDK's handle of the camera; never a pointer, never used twice. Fetched afresh for each use.
    virtual uint64_t GetHandle() = 0;
    /// The streaming object, null if the camera has none.
    virtual hlx::TSharedPtr<IVideoSource> GetVideoSource() = 0;
    /// True: the camera keeps a real-time clock. False: it takes IRIG time.
    virtual bool HasRealTimeClock() = 0;
    virtual bool GetIsLowCost() = 0;
    virtual void SetReduceNoise(bool reduce) = 0;
    virtual bool GetReduceNoise() = 0;

    virtual bool LoadFactoryDefaults() = 0;
    virtual bool LoadHardDefaults() = 0;
    virtual bool LoadState(const char *name) = 0;

    virtual bool CanDownload() = 0;
    /// Transfers the loaded movie or the memory to a local file. `progress` gets (stage, current, total) on the calling
    /// thread; any other answer than 0 stops the transfer. `last` 0xFFFFFFFF means to the end.
    virtual bool DownloadMovie(hlx::CString path, hlx::delegate<int(int, unsigned int, unsigned int)> progress,
                               unsigned int first, unsigned int last)
        = 0;
    /// The frames between two IRIG times. Can not be interrupted.
    virtual bool FindFrameRange(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last) = 0;

    CameraCapabilities capabilities;
    /// Called by the one who focuses: before an auto focus with the x, y, width and height of the region that it looks
    /// at, on any thread, and after it, on the GUI thread, whether it worked or not.
    hlx::TListenerList<int, int, int, int> autoFocusStartedListeners;
    hlx::TListenerList<> autoFocusEndedListeners;
    hlx::TArray<hlx::delegate<void()>> listeners; ///< Called after a header mode has changed, on the GUI thread.
};

} // namespace hlx::cam
