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

/// Reads the position of a part of the lens in a state. Returns false if there is none in the range of the part.
bool findPlace(const QJsonObject &state, const QString &key, uint32_t minimum, uint32_t maximum, uint32_t &place)
{
    return parse(state.value(key), place, {double(minimum), double(maximum)}).isEmpty();
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
    // Where each of them is to go; one that the lens lacks goes nowhere.
    uint32_t field = 0;
    uint32_t zoomPlace = 0;
    uint32_t focusPlace = 0;
    if (path.isEmpty() || (turret && !findPlace(state, fieldOfViewKey, FieldOfView::Narrow, FieldOfView::Wide, field))
        || (zoom && !findPlace(state, zoomKey, zoom->minimum(), zoom->maximum(), zoomPlace))
        || (focus && !findPlace(state, focusKey, focus->minimum(), focus->maximum(), focusPlace))
        || (focus && focus->manual()))
        return Refused;

    if (turret)
        turret->selectAlone(static_cast<uint8_t>(field));
    if (zoom)
        zoom->moveTo(zoomPlace);
    // After the zoom, which would take it along.
    if (focus)
        focus->moveTo(focusPlace);
    const Status zoomed = zoom ? zoom->awaitRest() : Ok;
    if (const Status focused = focus ? focus->awaitRest() : Ok; zoomed != Ok || focused != Ok)
        return zoomed != Ok ? zoomed : focused;
    // Somebody may have sent one of them elsewhere while the other was waited for.
    return (!zoom || zoom->position() == zoomPlace) && (!focus || focus->position() == focusPlace) ? Ok : Refused;
}

Status LensStates::rename(const std::string &oldName, const std::string &newName) const
{
    const QString from = pathOf(oldName);
    const QString to = pathOf(newName);
    // QFile::rename() does not go over a file that is there.
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
