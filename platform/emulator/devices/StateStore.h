#pragma once

#include "platform/emulator/devices/FileTransfer.h"

#include <optional>
#include <string>
#include <vector>

namespace emulator
{

/// The states of a camera: what Camera::snapshot() tells, in a file of its own for each. They lie in the camera's
/// folder as states/NAME.qsf, the factory default beside them as factory.qsf; a camera without that file has the
/// settings of its profile as its factory default. The hard defaults are those of the profile, whatever happens.
///
/// The camera is in the state that it was last loaded from or saved as, and says its name also when that state has been
/// renamed or deleted since: its settings are still those. A new camera is in its factory default. After a restart the
/// camera wakes up in the state that it was in, or in its factory default if that state is gone.
///
/// A file that is damaged, or of a camera of another profile, is refused as a whole before it changes anything.
/// Settings that a state does not tell of, since it is older than their device, stay as they are.
///
/// Names are UTF-8 as isStateName() wants them, but for the two below, which are no names of files.
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

    /// Knows in the profile: "saveSeconds", "loadSeconds".
    StateStore(Camera &camera, Section &section);

    /// The one saved longest ago first.
    std::vector<Entry> list() const;
    bool exists(const std::string &name) const;
    const std::string &current() const { return m_current; }
    bool isFactoryDefault() const { return m_current == factoryDefaults; }

    /// Each saves the settings that the camera has when the save ends, which is then in that state. The current state
    /// can be saved if it has a name of its own.
    Status saveCurrent();
    Status saveAs(const std::string &name);
    Status saveFactoryDefaults();

    Status load(const std::string &name);
    Status loadFactoryDefaults() { return loadSlowly(factoryDefaults); }
    Status loadHardDefaults() { return loadSlowly(hardDefaults); }

    Status remove(const std::string &name);
    /// Refuses a name that is taken.
    Status rename(const std::string &oldName, const std::string &newName);

    /// The state is named like the file without its last extension; it takes the place of one of this name when all of
    /// it has come and is sound.
    Status upload(const QString &localPath, const FileTransfer::Progress &progress);
    Status uploadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress);
    /// Gives the state as it was when the download began, whatever happens to it meanwhile. Refuses a damaged one.
    Status download(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);
    Status downloadFactoryDefaults(const QString &localPath, const FileTransfer::Progress &progress);

    /// The name of the state in which a camera with this memory starts: the last one, if it can still be loaded.
    std::string stateAtStart(const QJsonObject &memory) const;
    /// The settings in a state. Empty if it cannot be loaded.
    std::optional<QJsonObject> settingsOf(const std::string &name) const { return settingsIn(contentOf(name)); }

    QJsonObject save() const override;
    QStringList restore(const QJsonObject &values) override;
    /// "current": loads the state of this name at once, also one of the two special ones.
    Refusal change(const QString &name, const QJsonValue &value) override;

private:
    QString pathOf(const std::string &name) const;
    bool knows(const std::string &name) const;
    QByteArray contentOf(const std::string &name) const;
    std::optional<QJsonObject> settingsIn(const QByteArray &content) const;
    Status store(std::string name);
    Status loadSlowly(const std::string &name);
    Status enter(const std::string &name);
    Status receive(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);
    Status send(const std::string &name, const QString &localPath, const FileTransfer::Progress &progress);

    int64_t m_saveMilliseconds;
    int64_t m_loadMilliseconds;
    std::string m_current = factoryDefaults;
};

} // namespace emulator
