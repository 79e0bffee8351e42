#pragma once

#include <QLibrary>

/// Loads the camera plug-in as a host does: by its file and the name of its entry point only. GUI thread only.
///
/// All objects of the plug-in must be destroyed before the loader. A process that has unloaded the plug-in must not
/// load it again, since QML keeps the addresses of its types.
class PluginLoader
{
public:
    /// Loads the library and calls its entry point. Throws BadInput.
    explicit PluginLoader(const QString &file);
    PluginLoader(const PluginLoader &) = delete;
    PluginLoader &operator=(const PluginLoader &) = delete;

    /// Waits for the tasks of the global thread pool, whose code may be in the plug-in, and unloads the library.
    ~PluginLoader();

private:
    QLibrary m_library;
};
