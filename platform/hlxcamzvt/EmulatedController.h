#pragma once

#include "hlx/CZVTController.h"

#include <memory>
#include <mutex>

namespace emulator
{
class Camera;
}

namespace hlx::cam
{

/// The controller of an emulated camera. Every operation passes the camera's gate as "controller.NAME". Operations for
/// equipment that emulated cameras do not have fail, as on a camera that lacks it.
///
/// When its camera is connected or disconnected, the controller reads the capabilities again and then fires the value
/// change "Connected", on the thread that connected or disconnected the camera. It may be destroyed on any thread, also
/// during this notification.
class EmulatedController final : public CZVTController
{
public:
    explicit EmulatedController(std::shared_ptr<emulator::Camera> camera);
    ~EmulatedController() override;

    /// Attaches another camera, or none. Returns false, and changes nothing, while the present camera is connected. Not
    /// from several threads at the same time.
    bool attach(std::shared_ptr<emulator::Camera> camera);

    /// See hlx::cam::connect().
    int connect();

    hlx::TSharedPtr<IDevice> device() override;

    bool GetIsFactoryCalibrated(bool *calibrated) override;
    bool GetFactoryCalibrations(hlx::TArray<SFactoryCalibration> *list) override;
    bool GetPresetCalibrationIndex(int preset, int *index) override;
    void SetPresetCalibrationIndex(int preset, int index, int flag) override;

    bool GetWindowSizes(hlx::TArray<SWindowSize> *sizes) override;
    void SetWindowSizeIndex(int index) override;
    bool GetWindowSizeIndex(int *index) override;
    bool GetCanWindowCustom(bool *allowed) override;
    bool GetCanWindowCustomOffset(bool *allowed) override;
    bool GetWindow(uint16_t *x, uint16_t *y, uint16_t *width, uint16_t *height) override;
    bool SetWindow(uint16_t x, uint16_t y, uint16_t width, uint16_t height) override;
    void GetWindowLimits(uint16_t *minWidth, uint16_t *maxWidth, uint16_t *minHeight, uint16_t *maxHeight,
                         uint16_t *widthIncrement, uint16_t *heightIncrement) override;

    void GetPresetFrameRates(int preset, hlx::TArray<double> *rates) override;
    void SetPresetFrameRateIndex(int preset, int index) override;
    void GetPresetFrameRateIndex(int preset, int *index) override;
    bool GetPresetFrameRate(int preset, double *hertz) override;
    void SetPresetFrameRate(int preset, int flag, double hertz) override;

    bool GetSequencingModes(hlx::TArray<uint32_t> *modes) override;
    bool GetPresetSequencingMode(int *mode) override;
    void SetPresetSequencingMode(uint32_t mode) override;
    bool GetPresetSequence(void *buffer, int count) override;
    void GetSubframeEnabled(int preset, bool *enabled) override;
    void SetSubframeEnabled(int preset, bool enabled) override;
    void GetDwellCount(int preset, unsigned int *count) override;
    void SetDwellCount(int preset, unsigned int count) override;
    void GetSuperframeRates(hlx::TArray<double> *rates) override;
    void SetSuperframeRateIndex(int index) override;
    bool GetSuperframeRateIndex(int *index) override;
    bool GetSuperframeRate(double *hertz) override;
    void SetSuperframeRate(int flag, double hertz) override;

    bool GetPresetIntegrationTime(int preset, double *milliseconds) override;
    void SetPresetIntegrationTime(int preset, int flag, double milliseconds) override;

    void SetVideoPreset(int16_t preset) override;
    bool GetActivePreset(uint8_t *preset) override;
    void SetActivePreset(int16_t preset) override;

    bool IsConnected() override;
    bool GetAverageFrameRate(double *hertz) override;
    uint64_t GetHandle() override;
    hlx::TSharedPtr<IVideoSource> GetVideoSource() override;
    bool HasRealTimeClock() override;
    bool GetIsLowCost() override;
    void SetReduceNoise(bool reduce) override;
    bool GetReduceNoise() override;

    bool LoadFactoryDefaults() override;
    bool LoadHardDefaults() override;
    bool LoadState(const char *name) override;

    bool CanDownload() override;
    bool DownloadMovie(hlx::CString path, hlx::delegate<int(int, unsigned int, unsigned int)> progress,
                       unsigned int first, unsigned int last) override;
    bool FindFrameRange(hlx::CDateTime start, hlx::CDateTime end, unsigned int *first, unsigned int *last) override;

private:
    /// The attached camera with its device and its video source.
    struct Target {
        std::shared_ptr<emulator::Camera> camera;
        hlx::TSharedPtr<IDevice> device;
        hlx::TSharedPtr<IVideoSource> videoSource;
    };

    std::shared_ptr<emulator::Camera> camera() const;
    void listen();
    void stopListening();
    void announceConnection();
    /// Reads the capabilities again if a state has been loaded. Returns `loaded`.
    bool readCapabilitiesAfter(bool loaded);

    mutable std::mutex m_mutex; ///< Protects m_target. Locked only while the target is copied or exchanged.
    Target m_target;
    int m_listener = 0;
};

} // namespace hlx::cam
