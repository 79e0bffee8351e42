#pragma once

#include <QLibrary>

/// The camera plug-in as a host loads it: by its file, knowing nothing but the name of its entry point. GUI thread
/// only.
///
/// Everything that came out of the plug-in must be gone before its loader. QML remembers where the plug-in's types lay,
/// so that a process which has unloaded it must not load it again.
class PluginLoader
{
public:
    /// Loads the library and calls its entry point. Throws BadInput.
    explicit PluginLoader(const QString &file);
    PluginLoader(const PluginLoader &) = delete;
    PluginLoader &operator=(const PluginLoader &) = delete;

    /// Waits for the tasks of the global thread pool, whose code may lie in the plug-in, and unloads the library.
    ~PluginLoader();

private:
    QLibrary m_library;
};
