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
/// Any thread may call any operation at any time. A bool result is true on success, unless the comment says otherwise.
/// An operation that fails leaves its out-parameters as they are; one that refuses a value changes nothing. Presets
/// count from 0. Times are in milliseconds, rates in hertz, windows in pixels. Lists replace the content of the array.
/// Operations that load or transfer block until they have ended. `flag` is always 1; no other value is defined.
class IZVTController : public IController
{
public:
    /// One entry of the preset sequence. The view models use only its size.
    struct SPresetSequenceEntry {
        uint32_t preset = 0;
        uint32_t count = 0;
    };

    IZVTController();
    ~IZVTController() override;

    /// Whether the camera has factory calibrations.
    virtual bool GetIsFactoryCalibrated(bool *calibrated) = 0;
    virtual bool GetFactoryCalibrations(hlx::TArray<SFactoryCalibration> *list) = 0;
    /// The row of the preset's factory calibration, -1 for none.
    virtual bool GetPresetCalibrationIndex(int preset, int *index) = 0;
    /// Selects a row of the factory calibrations for a preset; the number of rows for none.
    virtual void SetPresetCalibrationIndex(int preset, int index, int flag) = 0;

    /// The standard window sizes.
    virtual bool GetWindowSizes(hlx::TArray<SWindowSize> *sizes) = 0;
    /// Selects a row of the standard sizes.
    virtual void SetWindowSizeIndex(int index) = 0;
    /// The row of the present size among the standard ones, -1 for a free size.
    virtual bool GetWindowSizeIndex(int *index) = 0;
    /// Whether a window may have another size than the standard ones.
    virtual bool GetCanWindowCustom(bool *allowed) = 0;
    /// Whether a window may lie anywhere on the detector.
    virtual bool GetCanWindowCustomOffset(bool *allowed) = 0;
    virtual bool GetWindow(uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height) = 0;
    /// Refuses a window outside GetWindowLimits(), and a size or an offset that the camera does not allow.
    virtual bool SetWindow(uint16_t x, uint16_t y, uint16_t width, uint16_t height) = 0;
    /// The least and the greatest size, and the steps between sizes.
    virtual void GetWindowLimits(uint16_t *minWidth, uint16_t *maxWidth, uint16_t *minHeight, uint16_t *maxHeight,
                                 uint16_t *widthIncrement, uint16_t *heightIncrement)
        = 0;

    /// The rates that the camera offers for a preset, highest first. They depend on its integration time, the window
    /// and the noise reduction.
    virtual void GetPresetFrameRates(int preset, hlx::TArray<double> *rates) = 0;
    /// Selects a row of the offered rates.
    virtual void SetPresetFrameRateIndex(int preset, int index) = 0;
    /// The row of the preset's rate among those offered, -1 for a free rate.
    virtual void GetPresetFrameRateIndex(int preset, int *index) = 0;
    virtual bool GetPresetFrameRate(int preset, double *hertz) = 0;
    /// The camera stores the nearest valid value.
    virtual void SetPresetFrameRate(int preset, int flag, double hertz) = 0;

    /// The modes that the camera offers: 0 a single preset, 1 superframing, 2 preset sequencing.
    virtual bool GetSequencingModes(hlx::TArray<uint32_t> *modes) = 0;
    /// One of these modes.
    virtual bool GetPresetSequencingMode(int *mode) = 0;
    /// Refuses a mode that the camera does not offer.
    virtual void SetPresetSequencingMode(uint32_t mode) = 0;
    /// Fills at most `count` records of SPresetSequenceEntry at `buffer`.
    virtual bool GetPresetSequence(void *buffer, int count) = 0;
    /// Whether a preset is part of the superframe.
    virtual void GetSubframeEnabled(int preset, bool *enabled) = 0;
    virtual void SetSubframeEnabled(int preset, bool enabled) = 0;
    /// The repeats of a preset in preset sequencing, 0 to 2147483647; 0 leaves it out.
    virtual void GetDwellCount(int preset, unsigned int *count) = 0;
    virtual void SetDwellCount(int preset, unsigned int count) = 0;
    /// The superframe rates that the camera offers.
    virtual void GetSuperframeRates(hlx::TArray<double> *rates) = 0;
    /// Selects a row of the offered superframe rates.
    virtual void SetSuperframeRateIndex(int index) = 0;
    /// The row of the superframe rate among those offered, -1 for a free rate.
    virtual bool GetSuperframeRateIndex(int *index) = 0;
    virtual bool GetSuperframeRate(double *hertz) = 0;
    /// The camera stores the nearest valid value.
    virtual void SetSuperframeRate(int flag, double hertz) = 0;

    virtual bool GetPresetIntegrationTime(int preset, double *milliseconds) = 0;
    /// The camera stores the nearest valid value.
    virtual void SetPresetIntegrationTime(int preset, int flag, double milliseconds) = 0;

    virtual void SetVideoPreset(int16_t preset) = 0;
    virtual bool GetActivePreset(uint8_t *preset) = 0;
    virtual void SetActivePreset(int16_t preset) = 0;

    /// True while the camera is connected.
    virtual bool IsConnected() = 0;
    /// The frame rate over all presets in use.
    virtual bool GetAverageFrameRate(double *hertz) = 0;
    /// The SDK's handle of the camera; never a pointer, never used twice. Callers fetch it again for each use.
    virtual uint64_t GetHandle() = 0;
    /// The streaming object, null if the camera has none.
    virtual hlx::TSharedPtr<IVideoSource> GetVideoSource() = 0;
    /// True if the camera keeps a real-time clock, false if it takes IRIG time.
    virtual bool HasRealTimeClock() = 0;
    /// True for a low-cost model.
    virtual bool GetIsLowCost() = 0;
    /// Switches the noise reduction, which can lower the rates that the camera offers.
    virtual void SetReduceNoise(bool reduce) = 0;
    /// True while noise is reduced.
    virtual bool GetReduceNoise() = 0;

    /// Loads the factory default state.
    virtual bool LoadFactoryDefaults() = 0;
    /// Loads the built-in defaults.
    virtual bool LoadHardDefaults() = 0;
    /// Loads a named state.
    virtual bool LoadState(const char *name) = 0;

    /// True if movies can be downloaded over this connection.
    virtual bool CanDownload() = 0;
    /// Transfers frames `first` to `last`, included and counted from 0, of the recording or movie in the camera's
    /// memory to a local file, which is replaced. A higher `last`, such as 0xFFFFFFFF, means the last frame. Calls
    /// `progress`, which may be empty, with (stage, frames done, frames in total) on the calling thread: stage 0 is the
    /// transfer, stage 1 fetches the frames again that were lost on the way. If it returns anything but 0, the transfer
    /// stops. False without such frames in the memory, and the file stays as it is; also false if the file cannot be
    /// written, frames stay lost, the transfer is stopped or the camera is disconnected: the file then has the frames
    /// so far, or is removed if not even its head could be written.
    virtual bool DownloadMovie(hlx::CString path, hlx::delegate<int(int, unsigned int, unsigned int)> progress,
                               unsigned int first, unsigned int last)
        = 0;
    /// The first frame in the camera's memory with the IRIG time `start` or later, and the last one with `end` or
    /// earlier. The years of the times are ignored. False without a recording, or if there is no frame between the
    /// times; the outputs are then unchanged. Cannot be interrupted.
    virtual bool FindFrameRange(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last) = 0;

    CameraCapabilities capabilities;
    /// The client that starts an automatic focus calls these before it, on any thread, with x, y, width and height of
    /// the focus region in pixels of the image window.
    hlx::TListenerList<int, int, int, int> autoFocusStartedListeners;
    /// The client calls these after the automatic focus, whether it succeeded or not, on the GUI thread.
    hlx::TListenerList<> autoFocusEndedListeners;
    /// Called on the GUI thread by the client that has changed a header mode while the stream was stopped.
    hlx::TArray<hlx::delegate<void()>> listeners;
};

} // namespace hlx::cam
