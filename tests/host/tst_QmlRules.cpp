#include "tests/support/Test.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace
{

using Expression = QRegularExpression;

const QString sourceDir = QStringLiteral(ZVT_SOURCE_DIR "/");

/// The rooms of QML files by their floors. A room may use itself and rooms on lower floors, but not other rooms on its
/// floor.
const QMap<QString, int> floors{
    {"parts/look", 0},  {"zvt/controls", 1},    {"parts/rows", 2},      {"parts/dialogs", 3},
    {"zvt/dialogs", 4}, {"parts/setup", 5},     {"parts/status", 5},    {"parts/correction", 5},
    {"parts/video", 5}, {"parts/recording", 5}, {"parts/advanced", 5},  {"parts/manufacturing", 5},
    {"zvt", 6},         {"parts/frame", 7},     {"zvt/zvtmain.qml", 8},
};

/// The types whose content is not made at the same time as the object itself.
const QSet<QString> madeWhenNeeded{"Component", "Loader", "LazyLoader"};

/// A file of the pages: its text as it is, and without comments and the contents of strings.
struct QmlFile {
    QString path; ///< Below the root of the sources.
    QString text;
    QString code;

    QString type() const { return path.section(u'/', -1).chopped(4); }
    int lines() const { return static_cast<int>(text.count(u'\n')); }
    QString room() const;
};

QString QmlFile::room() const
{
    const QString folder = path.section(u'/', 0, -2);
    if (floors.contains(path))
        return path;
    // A control that is used only by dialogs, and has dialogs itself.
    if (path == "zvt/controls/NucListCtrl.qml")
        return "zvt/dialogs";
    static const QSet<QString> likeControls{"zvt/popups", "zvt/icons", "zvt/animations"};
    return likeControls.contains(folder) ? QStringLiteral("zvt/controls") : folder;
}

QString withoutCommentsAndStrings(QString text)
{
    // Strings are matched too, since they may contain "//" or "/*".
    static const Expression pattern(R"re("(?:\\.|[^"\\\n])*"|//[^\n]*|/\*.*?\*/)re",
                                    Expression::DotMatchesEverythingOption);
    QString code;
    qsizetype end = 0;
    for (auto it = pattern.globalMatch(text); it.hasNext();) {
        const auto match = it.next();
        code += QStringView(text).mid(end, match.capturedStart() - end);
        code += match.captured().startsWith(u'"') ? QStringLiteral("\"\"") : QString();
        end = match.capturedEnd();
    }
    return code += QStringView(text).mid(end);
}

/// Reads all files in folders of the sources.
QList<QmlFile> readFiles(const QStringList &folders)
{
    QList<QmlFile> files;
    for (const QString &folder : folders) {
        QDirIterator it(sourceDir + folder, {"*.qml"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QString text = QString::fromUtf8(file.readAll());
            files << QmlFile{file.fileName().mid(sourceDir.size()), text, withoutCommentsAndStrings(text)};
        }
    }
    std::sort(files.begin(), files.end(), [](const QmlFile &a, const QmlFile &b) { return a.path < b.path; });
    return files;
}

/// Each match of an expression, as "path: match".
QStringList matchesIn(const QmlFile &file, const QString &text, const Expression &expression)
{
    QStringList found;
    for (auto it = expression.globalMatch(text); it.hasNext();)
        found << file.path + ": " + it.next().captured().simplified();
    return found;
}

/// The words of a file that can name types of other files: with a capital, not after a dot, no inline component.
QSet<QString> typesUsedBy(const QmlFile &file)
{
    static const Expression word(R"((?<![\w.])[A-Z]\w*)");
    static const Expression inlineComponent(R"(\bcomponent\s+(\w+)\s*:)");
    QSet<QString> words;
    for (auto it = word.globalMatch(file.code); it.hasNext();)
        words << it.next().captured();
    for (auto it = inlineComponent.globalMatch(file.code); it.hasNext();)
        words.remove(it.next().captured(1));
    return words;
}

bool mayUse(const QString &room, const QString &other) { return room == other || floors[other] < floors[room]; }

/// Popups and similar objects that are made together with the objects around them, as "path: type". They are closed at
/// first, so making them would only delay each start.
QStringList closedObjectsMadeAtOnce(const QmlFile &file)
{
    static const Expression brace(R"(((?:\bComponent\s+\w+|\bcomponent\s+\w+|\bpopup)\s*:\s*)?([\w.]*)\s*\{|\})");
    static const Expression closed(R"(^(\w*(Dialog|Popup|Menu|ToolTip)|BusyIndicator)$)");
    QStringList found;
    QStringList surroundings;
    for (auto it = brace.globalMatch(file.code); it.hasNext();) {
        const auto match = it.next();
        if (match.captured() == "}") {
            surroundings.removeLast();
            continue;
        }
        const QString type = match.captured(2).section(u'.', -1);
        const bool isForLater = surroundings.isEmpty() || match.hasCaptured(1) || madeWhenNeeded.contains(type)
            || surroundings.last() == "later";
        if (!isForLater && closed.match(type).hasMatch())
            found << file.path + ": " + type;
        const bool isFileItself = surroundings.isEmpty() && !madeWhenNeeded.contains(type);
        surroundings << (isForLater && !isFileItself ? QStringLiteral("later") : QStringLiteral("now"));
    }
    return found;
}

} // namespace

/// Checks the rules for QML files that can be seen from their texts.
class tst_QmlRules : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();

    void importsGoDownwards();
    void typesAreUsedFromBelow();
    void foldersAreImportedByModule();
    void filesAreShort();
    void coloursAndFontsHaveOneHome();
    void costlyThingsAreNotUsed_data();
    void costlyThingsAreNotUsed();
    void closedThingsAreMadeWhenNeeded();

private:
    QList<QmlFile> m_files;
};

void tst_QmlRules::initTestCase()
{
    m_files = readFiles({"zvt", "parts"});
    QVERIFY(m_files.size() > 30);
    for (const QmlFile &file : std::as_const(m_files))
        QVERIFY2(floors.contains(file.room()), qPrintable(file.path + " is in no room of the table of floors"));
}

void tst_QmlRules::importsGoDownwards()
{
    static const Expression import(R"(^import zvt\b(?:\.(\w+))?)", Expression::MultilineOption);
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files)) {
        for (auto it = import.globalMatch(file.code); it.hasNext();) {
            const auto match = it.next();
            // `import zvt` offers the whole tree. The next test checks which of its types a file uses.
            const QString room = match.hasCaptured(1) ? "parts/" + match.captured(1) : QStringLiteral("zvt/controls");
            if (!floors.contains(room) || !mayUse(file.room(), room))
                broken << file.path + ": " + match.captured();
        }
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void tst_QmlRules::typesAreUsedFromBelow()
{
    QMap<QString, QString> roomOfType;
    for (const QmlFile &file : std::as_const(m_files)) {
        QVERIFY2(!roomOfType.contains(file.type()), qPrintable("two files of one name: " + file.path));
        roomOfType.insert(file.type(), file.room());
    }
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files))
        for (const QString &type : typesUsedBy(file))
            if (roomOfType.contains(type) && !mayUse(file.room(), roomOfType.value(type)))
                broken << file.path + ": " + type;
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

// The QML compiler finds no types in an import of a path with "..", and then leaves bindings to the interpreter.
void tst_QmlRules::foldersAreImportedByModule()
{
    static const Expression byPath(R"(^import "(?!(\.\./)+hlxcamui/controls")[^"]*")", Expression::MultilineOption);
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files))
        broken += matchesIn(file, file.text, byPath);
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void tst_QmlRules::filesAreShort()
{
    constexpr int longestPage = 300;
    constexpr int longestPart = 200;
    constexpr int longestMedian = 80;
    QStringList tooLong;
    QList<int> lengths;
    for (const QmlFile &file : m_files + readFiles({"standalone"})) {
        lengths << file.lines();
        if (file.lines() > (file.path.startsWith("zvt/") ? longestPage : longestPart))
            tooLong << QStringLiteral("%1: %2 lines").arg(file.path).arg(file.lines());
    }
    QVERIFY2(tooLong.isEmpty(), qPrintable(tooLong.join(u'\n')));
    std::sort(lengths.begin(), lengths.end());
    QVERIFY(lengths.at(lengths.size() / 2) < longestMedian);
}

void tst_QmlRules::coloursAndFontsHaveOneHome()
{
    static const Expression colour(R"re("#[0-9a-fA-F]{3,8}")re");
    static const Expression family(R"(\bfont\.family:(?!\s*Look\.)[^\n]*)");
    const QString home = QStringLiteral("parts/look/Look.qml");
    const QString iconLabel = QStringLiteral("parts/look/GlyphLabel.qml"); // It gets its font by a context name.
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files)) {
        if (file.path == home)
            continue;
        broken += matchesIn(file, file.text, colour);
        if (file.path != iconLabel)
            broken += matchesIn(file, file.code, family);
    }
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void tst_QmlRules::costlyThingsAreNotUsed_data()
{
    QTest::addColumn<QString>("expression");
    QTest::newRow("stock controls") << R"(^import QtQuick\.Controls\b[^\n]*)";
    // A font that comes with a page makes Qt lay out all texts again.
    QTest::newRow("font loader") << R"(\bFontLoader\b)";
    // Before it has a width, a text with a fit mode tries the font in all sizes.
    QTest::newRow("fitting a text that fits") << R"(\bfontSizeMode:\s*Text\.\w*Fit\b[^\n]*)";
    // All controls share one tool tip.
    QTest::newRow("attached tool tip") << R"(\bToolTip\.\w+)";
}

void tst_QmlRules::costlyThingsAreNotUsed()
{
    QFETCH(QString, expression);
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files))
        broken += matchesIn(file, file.code, Expression(expression, Expression::MultilineOption));
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

void tst_QmlRules::closedThingsAreMadeWhenNeeded()
{
    QStringList broken;
    for (const QmlFile &file : std::as_const(m_files))
        broken += closedObjectsMadeAtOnce(file);
    QVERIFY2(broken.isEmpty(), qPrintable(broken.join(u'\n')));
}

ZVT_TEST(tst_QmlRules)
#include "tst_QmlRules.moc"
