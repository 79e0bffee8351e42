#pragma once

namespace hlx::cam::ui
{

/// Makes the host's QML known to every engine of the process: the modules "com.kestrin.hlxcamui" 1.0
/// (`CameraFinderPopup`, `DialogWindowResizer`, `WindowEditor`) and "com.kestrin.hlxui" 1.0 (`DisplayEditor`,
/// `IntValidatorEx`), and the folder "qrc:/hlxcamui/controls"; adds the font of the icons. Call it once the application
/// object exists, before the first window is made; further calls change nothing. GUI thread only.
void registerHostModules();

} // namespace hlx::cam::ui
