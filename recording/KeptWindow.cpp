#include "recording/KeptWindow.h"

#include "common/reading.h"

#include <utility>

using hlx::cam::IZVTController;

namespace
{

bool setWindow(const KeptWindow::Controller &controller, const CameraWindow &window)
{
    return reading::callController(controller, &IZVTController::SetWindow, window.x, window.y, window.width,
                                   window.height)
        == 0;
}

} // namespace

bool KeptWindow::fit(const Controller &controller, const CameraWindow &present, uint16_t width, uint16_t height)
{
    if (present.width == width && present.height == height)
        return true;
    if (!m_kept)
        m_kept = present;
    return setWindow(controller, {0, 0, width, height});
}

void KeptWindow::restore(const Controller &controller)
{
    if (const auto window = std::exchange(m_kept, std::nullopt))
        setWindow(controller, *window);
}
