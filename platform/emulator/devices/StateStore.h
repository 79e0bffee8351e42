#pragma once

#include "platform/emulator/devices/FileTransfer.h"

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace emulator
{

/// The states of a camera. Each is a file with the settings of Camera::snapshot(), states/NAME.qsf in the camera's
/// folder. The factory defaults are in the file factory.qsf; without it they are the settings of the profile. The hard
/// defaults are always the settings of the profile.
///
/// The current state is the one that was last loaded or saved. It keeps its name if the file is then renamed or
/// deleted, since the settings are still the same. A new camera starts in its factory defaults. After a restart the
/// camera loads its last state, or its factory defaults if this state no longer exists.
///
/// A file that is damaged, or was written by a camera of another profile, is refused before any setting changes.
/// Settings that a state does not contain, because it is older than their device, do not change.
///
/// Names are UTF-8 and follow isStateName(), except for the two names below, which are not names of files.
class StateStore : public Device
{
public:
    static constexpr auto factoryDefaults = "Factory Defaults";
    static constexpr auto hardDefaults = "Hard Defaults";

    struct Entry {
        std::string name;
        int64_t size; ///< Bytes.
        int64_t written; ///< Milliseconds since the epoch, UTC.
    };

    /// Profile keys: "saveSeconds", "loadSeconds" (durations of a save and a load). Setting: "current".
    StateStore(Camera &camera, Section &section);

    /// The states without the factory and the hard defaults, in the order of their last saves.
    std::vector<Entry> list() const;
    /// Whether list() contains a state of this name.
    bool exists(const std::string &name) const;
    const std::string &current() const { return m_current; }
    bool isFactoryDefault() const { return m_current == factoryDefaults; }

    /// These save the settings that the camera has at the end of the operation, and make the saved state the current
    /// one. Refused for a name that is not valid or is one of the two special names. So saveCurrent() is refused while
    /// the current state is the factory or the hard defaults.
    Status saveCurrent();
    Status saveAs(const std::string &name);
    Status saveFactoryDefaults();

    /// These load a state and make it the current one. Refused if the state does not exist or its file is not valid.
    Status load(const std::string &name);
    Status loadFactoryDefaults() { return loadWithDelay(factoryDefaults); }
    Status loadHardDefaults() { return loadWithDelay(hardDefaults); }

    /// Refused if the state does not exist.
    Status remove(const std::string &name);
    /// Refused if the state does not exist, or if a state has the new name.
    Status rename(const std::string &oldName, const std::string &newName);

    /// Transfers a local file to the camera. The name of the state is the file name without its last extension. At the
    /// end of the transfer the file replaces a state of this name. Refused if the file is not a state of this profile.
    Status upload(const QString &localPath, const FileTransfer::Progress &progress);
    Status uploadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress);
    /// Transfers a state to a local file, with the contents that it has at the start. Refuses a damaged state.
    Status download(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);
    Status downloadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress);

    /// Returns the name of the state in which a camera with these saved values starts: the last one if it can be
    /// loaded, otherwise the factory defaults.
    std::string stateAtStart(const QJsonObject &memory) const;
    /// Returns the settings in a state. Empty if it cannot be loaded.
    std::optional<QJsonObject> settingsOf(const std::string &name) const { return settingsIn(contentOf(name)); }

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;

private:
    QString pathOf(const std::string &name) const;
    /// Whether a state of this name exists, or it is one of the two special names.
    bool isKnown(const std::string &name) const;
    QByteArray contentOf(const std::string &name) const;
    std::optional<QJsonObject> settingsIn(const QByteArray &content) const;
    Status store(std::string name);
    Status loadWithDelay(const std::string &name);
    /// Restores the settings of a state and makes it the current one, without a delay.
    Status applyState(const std::string &name);
    Status receive(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);
    Status send(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);

    int64_t m_saveMilliseconds;
    int64_t m_loadMilliseconds;
    std::string m_current = factoryDefaults;
};

} // namespace emulator
