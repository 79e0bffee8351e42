#pragma once

#include <cstdint>
#include <optional>

#include "hlx/IZVTController.h"
#include "hlx/TSharedPtr.h"

/// A window of the camera's image, in pixels.
struct CameraWindow {
    uint16_t x = 0;
    uint16_t y = 0;
    uint16_t width = 0;
    uint16_t height = 0;
};

/// Gives the camera's window the sizes of movies, since the camera loads only movies of the size of its window, and
/// keeps the window from before the first change. One thread at a time.
class KeptWindow
{
public:
    using Controller = hlx::TSharedPtr<hlx::cam::IZVTController>;

    /// Changes the window from `present`, the camera's window, if it does not have this size. Keeps `present` unless
    /// an earlier one is kept, also if the camera refuses the change. Returns whether the window has this size.
    bool fit(const Controller &controller, const CameraWindow &present, uint16_t width, uint16_t height);

    /// Sets the window back to the kept one, if there is one, and keeps none from then on, also after a refusal.
    void restore(const Controller &controller);

private:
    std::optional<CameraWindow> m_kept;
};
