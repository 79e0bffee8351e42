#pragma once

namespace hlx::cam::ui
{

/// Registers the host's QML for all engines of the process: the modules "com.kestrin.hlxcamui" 1.0
/// (`CameraFinderPopup`, `DialogWindowResizer`, `WindowEditor`) and "com.kestrin.hlxui" 1.0 (`DisplayEditor`,
/// `IntValidatorEx`), and the folder "qrc:/hlxcamui/controls". Adds the icon font. Call it after the application object
/// and before the first window is created; further calls do nothing. GUI thread only.
void registerHostModules();

} // namespace hlx::cam::ui
