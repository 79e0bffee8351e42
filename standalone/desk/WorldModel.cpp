#include "standalone/desk/WorldModel.h"

#include "platform/emulator/devices/Link.h"
#include "platform/emulator/devices/filterTable.h"
#include "standalone/desk/Faults.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using emulator::SettingInfo;

namespace
{

const QString ambient = u"environment.ambient"_s;
const QString singleTrigger = u"sync.trigger"_s;
const QString insertedFilters = u"filters.inserted"_s;

/// A setting that is a fault while it is true, or a number above the usual one.
struct Fault {
    QString setting;
    QString group;
    QString label;
    QString hint;
    QString text; ///< For the label "faults on".
    QString unit = {};
    QJsonValue usual = false;
};

QString linkGroup() { return WorldModel::tr("Link of the recorder"); }

const std::vector<Fault> &faultSettings()
{
    static const QString flag = WorldModel::tr("Flag");
    static const QString drive = WorldModel::tr("Drive of the recorder");
    static constexpr int usualLoss = emulator::Link::usualLoss;
    static const std::vector<Fault> faults{
        {u"flag.stuck"_s, flag, WorldModel::tr("Heater stuck"),
         WorldModel::tr("The flag heats by 1 K/s while its cooler has power"),
         WorldModel::tr("The heater of the flag is stuck")},
        {u"recorder.drivePulled"_s, drive, WorldModel::tr("Pulled"), WorldModel::tr("Ends what uses the drive"),
         WorldModel::tr("The drive of the recorder is pulled")},
        {u"recorder.driveFull"_s, drive, WorldModel::tr("Full"), WorldModel::tr("Until it is formatted"),
         WorldModel::tr("The drive of the recorder is full")},
        {u"recorder.driveSlow"_s, drive, WorldModel::tr("Slow"), WorldModel::tr("A fiftieth of its speed"),
         WorldModel::tr("The drive of the recorder is slow")},
        {u"link.lossPerMillion"_s, linkGroup(), WorldModel::tr("Lost frames"),
         WorldModel::tr("0 to 1000000; usual is %1. They are fetched again.").arg(usualLoss),
         WorldModel::tr("The link of the recorder loses more frames than usual"), WorldModel::tr("per million"),
         usualLoss},
    };
    return faults;
}

QString celsius() { return u"°C"_s; }
QString rateHint() { return WorldModel::tr("0 to 1000000; 0: no signal"); }

/// A text of the operator, and the value of the setting.
using Choices = QList<std::pair<QString, QJsonValue>>;

Choices chamberPrograms()
{
    return {{WorldModel::tr("Off"), u""_s},
            {WorldModel::tr("-20 to 50 °C in 10 minutes"), u"0:-20,600:50"_s},
            {WorldModel::tr("50 to -20 °C in 10 minutes"), u"0:50,600:-20"_s},
            {WorldModel::tr("-20 to 50 °C and back in 20 minutes"), u"0:-20,600:50,1200:-20"_s},
            {WorldModel::tr("From now to 60 °C in one minute"), u"60:60"_s}};
}

Choices patterns()
{
    return {{WorldModel::tr("Live scene"), 0},
            {WorldModel::tr("Round blackbody"), 1},
            {WorldModel::tr("Two halves"), 2},
            {WorldModel::tr("Area blackbody"), 3}};
}

struct Description {
    QString setting;
    QString group;
    QString label; ///< Of the slots of the filter wheel: with "%1" for the number of the slot.
    QString unit = {};
    QString hint = {};
    Choices choices = {};
};

const std::vector<Description> &descriptions()
{
    static const QString temperature = WorldModel::tr("Temperature");
    static const QString scene = WorldModel::tr("Scene");
    static const QString inputs = WorldModel::tr("Inputs");
    static const std::vector<Description> described{
        {ambient, temperature, WorldModel::tr("Ambient"), celsius(),
         WorldModel::tr("-60 to 80; the chamber sets it while a program runs")},
        {u"emulator./ChamberProfile"_s, temperature, WorldModel::tr("Climate chamber"), {}, {}, chamberPrograms()},
        {u"emulator./Pattern"_s, scene, WorldModel::tr("Pattern"), {}, {}, patterns()},
        {u"environment.movingTargets"_s,
         scene,
         WorldModel::tr("Moving targets"),
         {},
         WorldModel::tr("Only the live scene has them")},
        {u"emulator./BlackbodyTemp1"_s, scene, WorldModel::tr("Blackbody 1"), celsius(),
         WorldModel::tr("The round one, the left half and the area")},
        {u"emulator./BlackbodyTemp2"_s, scene, WorldModel::tr("Blackbody 2"), celsius(),
         WorldModel::tr("The right half, and the area as the second source of a correction")},
        {u"sync.externalRate"_s, inputs, WorldModel::tr("External sync"), u"Hz"_s, rateHint()},
        {u"sync.triggerRate"_s, inputs, WorldModel::tr("Trigger rate"), u"Hz"_s, rateHint()},
        {singleTrigger, inputs, WorldModel::tr("Single trigger"), {}, WorldModel::tr("One pulse at the trigger input")},
        {insertedFilters, WorldModel::tr("Filters in the wheel"), WorldModel::tr("Slot %1")},
    };
    static const Description speed{u"link.bytesPerSecond"_s, linkGroup(), WorldModel::tr("Speed"),
                                   WorldModel::tr("bytes/s"), WorldModel::tr("Of the next download; at least 1000")};
    static const std::vector<Description> rows = [] {
        std::vector<Description> all = described;
        for (const Fault &fault : faultSettings())
            all.push_back({fault.setting, fault.group, fault.label, fault.unit, fault.hint});
        all.push_back(speed); // In the group of the last fault.
        return all;
    }();
    return rows;
}

const SettingInfo *find(const CameraSettings::Settings &settings, const QString &name)
{
    const auto found = std::ranges::find(settings, name, &SettingInfo::name);
    return found == settings.end() ? nullptr : &*found;
}

QJsonArray listOf(const CameraSettings::Settings &settings, const QString &name)
{
    const SettingInfo *const setting = find(settings, name);
    return setting ? setting->value.toArray() : QJsonArray();
}

bool isOn(const CameraSettings::Settings &settings, const Fault &fault)
{
    const SettingInfo *const setting = find(settings, fault.setting);
    return setting
        && (setting->value.isBool() ? setting->value.toBool() : setting->value.toDouble() > fault.usual.toDouble());
}

/// The names of all filters by ID, such as "6: ND 1.0".
QStringList filterTexts(const QJsonArray &namesOfUser)
{
    QStringList texts;
    for (uint8_t id = 0; id < emulator::filterCount; ++id) {
        const QString ofUser = namesOfUser.at(id).toString();
        texts.append(u"%1: %2"_s.arg(id).arg(ofUser.isEmpty() ? QString::fromUtf8(emulator::filterName(id)) : ofUser));
    }
    return texts;
}

/// The row of a whole setting.
SettingRow rowFor(const Description &description, const SettingInfo &setting)
{
    SettingRow row = SettingRow::of(setting);
    row.group = description.group;
    row.label = description.label;
    row.name = description.label;
    row.unit = description.unit;
    row.hint = description.hint;
    if (setting.name == singleTrigger)
        row.control = SettingRow::Pulse;
    if (setting.name == ambient)
        row.value = std::round(row.value.toDouble() * 100) / 100; // A program moves it all the time.
    if (!description.choices.isEmpty()) {
        row.control = SettingRow::Choice;
        for (const auto &[text, value] : description.choices) {
            row.choices.append(text);
            row.choiceValues.append(value);
        }
        row.completeChoices();
    }
    return row;
}

/// One row for each slot of the filter wheel.
std::vector<SettingRow> slotRows(const Description &description, const CameraSettings::Settings &settings)
{
    const QStringList filters = filterTexts(listOf(settings, u"filters.names"_s));
    const QJsonArray known = listOf(settings, u"filters.known"_s);
    std::vector<SettingRow> rows;
    for (const auto &id : listOf(settings, insertedFilters)) {
        SettingRow row;
        row.setting = insertedFilters;
        row.entry = static_cast<int>(rows.size());
        row.group = description.group;
        row.label = description.label.arg(row.entry + 1);
        row.name = row.label;
        row.kind = SettingInfo::WholeNumber;
        row.control = SettingRow::Choice;
        row.value = id;
        row.choices = filters;
        for (int filter = 0; filter < filters.size(); ++filter)
            row.choiceValues.append(filter);
        if (known.at(row.entry) != row.value)
            row.note = row.entry < known.size()
                ? WorldModel::tr("The camera expects %1 until it scans the wheel.")
                      .arg(filters.value(known.at(row.entry).toInt()))
                : WorldModel::tr("The camera expects no such slot until it scans the wheel.");
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace

WorldModel::WorldModel(StandaloneModel &model, Faults &faults, QObject *parent) : SettingRows(model, parent)
{
    // The connection of the base has updated the rows before.
    connect(&settings(), &CameraSettings::updated, &faults, &Faults::update);
    connect(&settings(), &CameraSettings::cameraChanged, this, &WorldModel::readFaults);
    faults.add(
        this, [this] { return faultTexts(); }, [this] { clearFaults(); });
}

SettingRows::Rows WorldModel::rowsOf(const CameraSettings::Settings &settings) const
{
    Rows rows;
    for (const Description &description : descriptions()) {
        if (description.setting == insertedFilters)
            std::ranges::move(slotRows(description, settings), std::back_inserter(rows));
        else if (const SettingInfo *const setting = find(settings, description.setting))
            rows.push_back(rowFor(description, *setting));
    }
    return rows;
}

QVariant WorldModel::settingWith(const SettingRow &row, const QVariant &value) const
{
    if (row.entry < 0)
        return value;
    QVariantList list;
    for (const SettingRow &candidate : rows())
        if (candidate.setting == row.setting)
            list.append(candidate.entry == row.entry ? value : candidate.value.toVariant());
    return list;
}

QStringList WorldModel::faultTexts() const
{
    QStringList texts;
    for (const Fault &fault : faultSettings())
        if (isOn(settings().lastRead(), fault))
            texts << fault.text;
    return texts;
}

// Also ends a fault whose change is still waiting.
void WorldModel::clearFaults()
{
    for (const Fault &fault : faultSettings())
        if (isOn(settings().settings(), fault))
            settings().change(fault.setting, fault.usual.toVariant());
}
