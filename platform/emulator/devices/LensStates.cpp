#include "platform/emulator/devices/LensStates.h"

#include "platform/emulator/Camera.h"
#include "platform/emulator/SetupError.h"
#include "platform/emulator/Storage.h"
#include "platform/emulator/devices/FieldOfView.h"
#include "platform/emulator/devices/Focus.h"
#include "platform/emulator/devices/Zoom.h"
#include "platform/emulator/fileNames.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace emulator
{

namespace
{

constexpr auto magic = "zvt-emulated-lens-state";
const auto suffix = QStringLiteral(".lens");
const auto focusKey = QStringLiteral("focus");
const auto zoomKey = QStringLiteral("zoom");
const auto fieldOfViewKey = QStringLiteral("fieldOfView");

/// Reads a position from a state. Returns false if it is missing or out of range.
bool readPosition(const QJsonObject &state, const QString &key, uint32_t minimum, uint32_t maximum, uint32_t &position)
{
    return parse(state.value(key), position, {double(minimum), double(maximum)}).isEmpty();
}

} // namespace

std::vector<LensStates::Entry> LensStates::list() const
{
    std::vector<Entry> entries;
    const auto files
        = QDir(folder()).entryInfoList({QLatin1Char('*') + suffix}, QDir::Files | QDir::Hidden | QDir::CaseSensitive);
    for (const QFileInfo &file : files) {
        const std::string name = file.fileName().chopped(suffix.size()).toStdString();
        if (isStateName(name))
            entries.push_back({name, file.size(), file.lastModified().toMSecsSinceEpoch()});
    }
    std::ranges::sort(entries, {}, &Entry::name);
    return entries;
}

Status LensStates::saveAs(const std::string &name) const
{
    const QString path = pathOf(name);
    if (path.isEmpty())
        return Refused;
    QJsonObject state;
    if (const auto *turret = camera().device<FieldOfView>())
        state[fieldOfViewKey] = turret->selected();
    if (const auto *zoom = camera().device<Zoom>())
        state[zoomKey] = double(std::clamp(zoom->position(), zoom->minimum(), zoom->maximum()));
    if (const auto *focus = camera().device<Focus>())
        state[focusKey] = double(focus->position());
    try {
        Storage::writeFile(path, magic, state);
    } catch (const SetupError &) {
        return Refused;
    }
    return Ok;
}

Status LensStates::load(const std::string &name)
{
    const QString path = pathOf(name);
    QJsonObject state;
    try {
        state = path.isEmpty() ? QJsonObject() : Storage::readFile(path, magic);
    } catch (const SetupError &) {
        return Refused;
    }
    auto *const turret = camera().device<FieldOfView>();
    auto *const zoom = camera().device<Zoom>();
    auto *const focus = camera().device<Focus>();
    // The target positions. Those of devices that the lens lacks are not used.
    uint32_t field = 0;
    uint32_t zoomPosition = 0;
    uint32_t focusPosition = 0;
    if (path.isEmpty()
        || (turret && !readPosition(state, fieldOfViewKey, FieldOfView::Narrow, FieldOfView::Wide, field))
        || (zoom && !readPosition(state, zoomKey, zoom->minimum(), zoom->maximum(), zoomPosition))
        || (focus && !readPosition(state, focusKey, focus->minimum(), focus->maximum(), focusPosition))
        || (focus && focus->manual()))
        return Refused;

    if (turret)
        turret->selectWithoutFocus(static_cast<uint8_t>(field));
    if (zoom)
        zoom->moveTo(zoomPosition);
    // After the zoom, since the target of the focus depends on that of the zoom.
    if (focus)
        focus->moveTo(focusPosition);
    const Status zoomStatus = zoom ? zoom->awaitRest() : Ok;
    if (const Status focusStatus = focus ? focus->awaitRest() : Ok; zoomStatus != Ok || focusStatus != Ok)
        return zoomStatus != Ok ? zoomStatus : focusStatus;
    // Another command may have moved one of them while this call waited for the other.
    return (!zoom || zoom->position() == zoomPosition) && (!focus || focus->position() == focusPosition) ? Ok : Refused;
}

Status LensStates::rename(const std::string &oldName, const std::string &newName) const
{
    const QString from = pathOf(oldName);
    const QString to = pathOf(newName);
    // QFile::rename() does not replace a file.
    return !from.isEmpty() && !to.isEmpty() && QFile::rename(from, to) ? Ok : Refused;
}

Status LensStates::remove(const std::string &name) const
{
    const QString path = pathOf(name);
    return !path.isEmpty() && QFile::remove(path) ? Ok : Refused;
}

QString LensStates::pathOf(const std::string &name) const
{
    return isStateName(name) ? folder() + QLatin1Char('/') + QString::fromStdString(name) + suffix : QString();
}

QString LensStates::folder() const { return camera().folder() + QStringLiteral("/lens"); }

} // namespace emulator
