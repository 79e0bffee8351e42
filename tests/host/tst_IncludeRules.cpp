#include "tests/support/Test.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

namespace
{

const QString sourceDir = QStringLiteral(ZVT_SOURCE_DIR);

/// The list of the folders that hold models, some of which may not exist yet.
QStringList readModelFolders()
{
    QFile list(sourceDir + QStringLiteral("/cmake/model-folders.txt"));
    if (!list.open(QIODevice::ReadOnly))
        return {};
    QStringList folders = QString::fromUtf8(list.readAll()).split(u'\n', Qt::SkipEmptyParts);
    folders.removeIf([](const QString &line) { return line.startsWith(u'#'); });
    return folders;
}

const QStringList modelFolders = readModelFolders();

/// The rooms that a room may include beside itself.
QStringList allowedFrom(const QString &room)
{
    static const QMap<QString, QStringList> platformFloors{
        {"platform/hlx", {}},
        {"platform/emulator", {"platform/hlx"}},
        {"platform/zvtsdk", {"platform/hlx", "platform/emulator"}},
        {"platform/hlxcam", {"platform/hlx", "platform/emulator", "platform/zvtsdk"}},
        {"platform/hlxreduce", {"platform/hlx", "platform/emulator", "platform/zvtsdk"}},
        {"platform/hlxfile", {"platform/hlx", "platform/emulator", "platform/zvtsdk", "platform/hlxreduce"}},
        {"platform/hlxcamzvt",
         {"platform/hlx", "platform/emulator", "platform/zvtsdk", "platform/hlxcam", "platform/hlxfile",
          "platform/hlxreduce"}},
        {"platform/hlxui",
         {"platform/hlx", "platform/emulator", "platform/zvtsdk", "platform/hlxcam", "platform/hlxfile",
          "platform/hlxreduce", "platform/hlxcamzvt"}},
        {"platform/hlxcamui",
         {"platform/hlx", "platform/emulator", "platform/zvtsdk", "platform/hlxcam", "platform/hlxfile",
          "platform/hlxreduce", "platform/hlxcamzvt", "platform/hlxui"}},
    };
    if (room == "boundary")
        return {};
    if (room == "common")
        return {"boundary"};
    if (room == "plugin")
        return QStringList{"boundary", "common"} + modelFolders;
    if (modelFolders.contains(room))
        return {"boundary", "common"};
    if (platformFloors.contains(room))
        return QStringList{"boundary"} + platformFloors.value(room);
    if (room == "standalone")
        return QStringList{"boundary"} + platformFloors.keys();
    return {};
}

/// Includes that cross the rules, each with its reason.
const QMap<QString, QString> exceptions{
    {"correction/CorrectionTabModel.h > plugin/ZvtCameraModel.h",
     "a property of that type; the name is in Q_MOC_INCLUDE, which only the generated code includes"},
    {"manufacturing/MfgCorvinFilterSettingsModel.h > setup/FilterWheelItemModel.h",
     "both pages show the filters of the wheel in the same kind of rows"},
    {"setup/SetupTabModel.h > plugin/ZvtCameraModel.h",
     "a property of that type; the name is in Q_MOC_INCLUDE, which only the generated code includes"},
    {"status/StatusTabModel.h > plugin/ZvtCameraModel.h",
     "a property of that type; the name is in Q_MOC_INCLUDE, which only the generated code includes"},
};

/// The room of a path below the project's root.
QString roomOf(const QString &path)
{
    const QStringList parts = path.split(u'/');
    if (parts.value(0) == "hlx" || parts.value(0) == "zvt" || parts.value(0) == "hlxui"
        || path.startsWith("common/boundary/"))
        return "boundary";
    return parts.value(0) == "platform" ? parts.mid(0, 2).join(u'/') : parts.value(0);
}

} // namespace

/// Checks the includes against the table of folders in ARCHITECTURE.md.
class tst_IncludeRules : public Test
{
    Q_OBJECT

private slots:
    void everyIncludeIsAllowed();
    void groundFloorsKnowLittleOfQt();
    void devicesIncludeLittleOfTheCamera();
    void theImageIncludesOnlyItself();
};

void tst_IncludeRules::everyIncludeIsAllowed()
{
    static const QRegularExpression include(R"(^\s*(?:#include|Q_MOC_INCLUDE\()\s*"([^"]+)\")",
                                            QRegularExpression::MultilineOption);
    QStringList broken;
    QSet<QString> used;
    int files = 0;
    for (const QString &top : QStringList{"common", "platform", "plugin", "standalone"} + modelFolders) {
        QDirIterator it(sourceDir + u'/' + top, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            ++files;
            const QString path = file.fileName().mid(sourceDir.size() + 1);
            const QString room = roomOf(path);
            auto matches = include.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext()) {
                const QString included = matches.next().captured(1);
                if (!included.contains(u'/')) // In the folder of the file, or generated.
                    continue;
                const QString target = roomOf(included);
                const QString edge = path + " > " + included;
                if (exceptions.contains(edge))
                    used << edge;
                else if (target != room && !allowedFrom(room).contains(target))
                    broken << edge;
            }
        }
    }
    QVERIFY(files > 100);
    QCOMPARE(broken, QStringList());
    QStringList met = used.values();
    met.sort();
    QCOMPARE(met, exceptions.keys());
}

// A device is made of its base class, the clock, its camera and files. It knows nothing of calls, and the camera knows
// only the devices that it needs itself. A replay of calls removes events that the recording already has.
void tst_IncludeRules::devicesIncludeLittleOfTheCamera()
{
    static const QRegularExpression include(R"re(^#include "platform/emulator/([^"]+)")re",
                                            QRegularExpression::MultilineOption);
    const QStringList forDevices{"Camera.h",   "Clock.h",   "Device.h",       "Frame.h",       "Rule.h",
                                 "Section.h",  "Setting.h", "SetupError.h",   "Status.h",      "Storage.h",
                                 "Unlocked.h", "crc32.h",   "fileNames.h",    "replaceFile.h", "stateFile.h",
                                 "utf8.h",     "values.h",  "changedValues.h"};
    const QStringList forTheCamera{"devices/Corrections.h", "devices/EventQueue.h", "devices/FrameClock.h",
                                   "devices/Identity.h",    "devices/Sensor.h",     "devices/StateStore.h"};
    QStringList broken;
    QSet<QString> used;
    QDirIterator it(sourceDir + "/platform/emulator", {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString name = file.fileName().mid(sourceDir.size() + 1);
        const bool isDevice = name.startsWith("platform/emulator/devices/");
        auto matches = include.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QString included = matches.next().captured(1);
            const bool ofDevice = included.startsWith("devices/");
            if (included.startsWith("image/")) // A library of its own.
                continue;
            if (isDevice == ofDevice || it.fileName() == "DeviceKind.cpp") // Beside it, or the list of all devices.
                continue;
            if (name.endsWith("/CallReplay.cpp") && included == "devices/EventQueue.h")
                continue;
            if (isDevice ? forDevices.contains(included)
                         : it.fileName() == "Camera.cpp" && forTheCamera.contains(included))
                used << included;
            else
                broken << name + " > " + included;
        }
    }
    QCOMPARE(broken, QStringList());
    QCOMPARE(used,
             QSet<QString>(forDevices.begin(), forDevices.end()).unite({forTheCamera.begin(), forTheCamera.end()}));
}

// Frames depend on an exposure alone, so what makes them uses no device and no camera.
void tst_IncludeRules::theImageIncludesOnlyItself()
{
    static const QRegularExpression include(R"re(^\s*#\s*include\s*"([^"]+)")re", QRegularExpression::MultilineOption);
    QStringList broken;
    int includes = 0;
    QDirIterator it(sourceDir + "/platform/emulator/image", {"*.h", "*.cpp"}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        auto matches = include.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            const QString included = matches.next().captured(1);
            ++includes;
            if (!included.startsWith("platform/emulator/image/"))
                broken << it.fileName() + " > " + included;
        }
    }
    QVERIFY(includes > 20);
    QCOMPARE(broken, QStringList());
}

void tst_IncludeRules::groundFloorsKnowLittleOfQt()
{
    static const QRegularExpression qt(R"(^\s*#include\s*<(Q[A-Za-z]+|Qt[A-Za-z]+/[A-Za-z]+)>)",
                                       QRegularExpression::MultilineOption);
    static const QRegularExpression quick(R"(^(QQ|Quick|QtQuick|QtQml|QtGui|QtWidgets|QGui|QWidget|QWindow))");
    QStringList broken;
    const QMap<QString, bool> anyQt{{"platform/hlx", false},
                                    {"platform/emulator", true},
                                    {"platform/emulator/image", false},
                                    {"platform/zvtsdk", true}};
    for (auto room = anyQt.cbegin(); room != anyQt.cend(); ++room) {
        QDirIterator it(sourceDir + u'/' + room.key(), {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            auto matches = qt.globalMatch(QString::fromUtf8(file.readAll()));
            while (matches.hasNext()) {
                const QString header = matches.next().captured(1);
                if (!room.value() || quick.match(header).hasMatch())
                    broken << file.fileName() + " > " + header;
            }
        }
    }
    QCOMPARE(broken, QStringList());
}

ZVT_TEST(tst_IncludeRules)
#include "tst_IncludeRules.moc"
