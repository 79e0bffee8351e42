#include "tests/page/FlowDriver.h"
#include "tests/support/Test.h"

namespace
{

/// What the diagram shows in a state of the recorder: the parts in each colour, and those that pulse. `alsoLit` and
/// `alsoPulsing` are added in a recording to the drive and in a playback from it.
struct Shown {
    int state;
    const char *text;
    const char *green;
    const char *darkGreen;
    const char *lightRed;
    const char *pulsing;
    const char *alsoLit = "";
    const char *alsoPulsing = "";
};

constexpr const char *live = "detectorIcon camToAppArrow desktopIcon";
constexpr const char *liveBesideRecording = "camToAppArrow desktopIcon";
constexpr const char *recording = "detectorIcon camToRamArrow ramIcon";
constexpr const char *playback = "ramIcon ramPlaybackArrow desktopIcon";
constexpr const char *toDrive = "ssdIcon ramToSsdArrow";
constexpr const char *fromDrive = "ssdIcon ssdToRamArrow";

const Shown states[] = {
    {Disarmed, "Disarmed", live, "", "", ""},
    {Armed, "Armed - Ready To Record", live, "", "", ""},
    {Triggered, "Recording...", "", liveBesideRecording, recording, "camToRamArrow", toDrive, "ramToSsdArrow"},
    {Complete, "Complete", live, "", "", ""},
    {Playing, "Playing", playback, "", "", "ramPlaybackArrow", fromDrive, "ssdToRamArrow"},
    {Saving, "Saving...", "ssdIcon ramToSsdArrow ramIcon", live, "", "ramToSsdArrow"},
    {Paused, "Paused", playback, "", "", "ramPlaybackArrow", fromDrive, "ssdToRamArrow"},
    {Formatting, "Formatting SSD...", "ssdIcon", live, "", "ssdIcon"},
    {Loading, "Loading...", "ssdIcon ssdToRamArrow ramIcon", "", "", ""},
    {RecordPaused, "Paused", "", liveBesideRecording, recording, "", toDrive},
    {MovieLoaded, "Loaded", playback, "", "", "", fromDrive},
    {Arming, "Arming", live, "", "", ""},
    {RequestAutoDownload, "Download", "", "", "", ""},
    {Unknown, "Unknown State", "", "", "", ""},
};

constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb gray = qRgb(128, 128, 128);
constexpr QRgb green = qRgb(0, 255, 0);
const QRgb darkGreen = QColor(green).darker(200).rgb();
const QRgb lightRed = QColor(Qt::red).lighter(130).rgb();

QSet<QString> partsOf(const char *names)
{
    const QStringList list = QString::fromLatin1(names).split(u' ', Qt::SkipEmptyParts);
    return {list.cbegin(), list.cend()};
}

/// The paths that can be pointed at, in the order of their numbers in QML.
enum HoveredPath { NoPath, RecordPath, PlaybackPath, SavePath };

QSet<QString> partsOfPath(int path, Drive drive)
{
    switch (path) {
    case RecordPath:
        return partsOf(recording) + (drive.toDisk ? partsOf(toDrive) : QSet<QString>());
    case PlaybackPath:
        return partsOf(playback) + (drive.fromDisk ? partsOf(fromDrive) : QSet<QString>());
    case SavePath:
        return partsOf("ramIcon ramToSsdArrow ssdIcon");
    default:
        return {};
    }
}

bool isRecording(const Shown &shown) { return *shown.lightRed != 0; }

bool usesDrive(const Shown &shown, Drive drive) { return isRecording(shown) ? drive.toDisk : drive.fromDisk; }

QSet<QString> partsThatPulse(const Shown &shown, Drive drive)
{
    return partsOf(shown.pulsing) + (usesDrive(shown, drive) ? partsOf(shown.alsoPulsing) : QSet<QString>());
}

/// The color of a part while no path is highlighted.
QRgb litColor(const QString &name, const Shown &shown, Drive drive)
{
    if (usesDrive(shown, drive) && partsOf(shown.alsoLit).contains(name))
        return isRecording(shown) ? lightRed : green;
    if (partsOf(shown.lightRed).contains(name))
        return lightRed;
    if (partsOf(shown.green).contains(name))
        return green;
    if (partsOf(shown.darkGreen).contains(name))
        return darkGreen;
    return icons.contains(name) ? white : gray;
}

} // namespace

/// The flow diagram of the SSD page.
class tst_FlowDiagram : public Test
{
    Q_OBJECT

private slots:
    void eachStateLightsItsWay_data();
    void eachStateLightsItsWay();
    void namesAreAlwaysReadable();
    void pulseTimes();
    void pulseEndsOpaque_data();
    void pulseEndsOpaque();
    void nextPulseStartsAgain();
    void pulsesWhileDisabled();
    void restsWhileInvisible_data();
    void restsWhileInvisible();
    void dimmedWhileDisconnected();
    void arrowsArePaintedInTheirColour();
    void arrowsPointTheirWay();
    void arrowsMeetTheIcons();
    void longNamesWrap();
    void theStateIsBelowTheCamera();
    void refreshIsAsked();
};

void tst_FlowDiagram::eachStateLightsItsWay_data()
{
    QTest::addColumn<bool>("toDisk");
    QTest::addColumn<bool>("fromDisk");
    QTest::newRow("to memory, from memory") << false << false;
    QTest::newRow("to disk, from memory") << true << false;
    QTest::newRow("to memory, from disk") << false << true;
    QTest::newRow("to disk, from disk") << true << true;
}

void tst_FlowDiagram::eachStateLightsItsWay()
{
    QFETCH(const bool, toDisk);
    QFETCH(const bool, fromDisk);
    const Drive drive{toDisk, fromDisk};
    FlowDriver driver(drive);
    for (const Shown &shown : states) {
        driver.enter(shown.state);
        QCOMPARE(driver.model()->property("fromDisk").toBool(), fromDisk);
        const QSet<QString> pulsing = partsThatPulse(shown, drive);
        for (const int path : {NoPath, RecordPath, PlaybackPath, SavePath}) {
            driver.diagram->setProperty("hoveredPath", path);
            const QSet<QString> hovered = pulsing.isEmpty() ? partsOfPath(path, drive) : QSet<QString>();
            for (const QString &name : icons + arrows) {
                const QRgb expected
                    = hovered.contains(name) ? driver.palette("kestrinAccentBlue") : litColor(name, shown, drive);
                QVERIFY2(driver.color(name) == expected,
                         qPrintable(QStringLiteral("%1 in state %2, path %3: %4")
                                        .arg(name)
                                        .arg(shown.state)
                                        .arg(path)
                                        .arg(driver.color(name), 0, 16)));
            }
        }
        driver.diagram->setProperty("hoveredPath", NoPath);
        QCOMPARE(driver.part("recorderState")->property("text").toString(), shown.text);
        driver.holdPulse(0.5);
        QCOMPARE(driver.faded(), pulsing);
        QCOMPARE(driver.runs(), !pulsing.isEmpty());
        QCOMPARE(driver.label("SSD")->opacity() < 1, pulsing.contains("ssdIcon"));
        driver.holdPulse(1);
        driver.awaitFrame();
        driver.saveScreenshot(QString::number(shown.state), {640, 240});
    }
}

void tst_FlowDiagram::namesAreAlwaysReadable()
{
    FlowDriver driver;
    driver.awaitFrame();
    for (const QString text : {"SSD", "RAM", "Detector", "Quarry\nDesk", "ZVT 6900 / 1207", "Disarmed"}) {
        const QQuickItem *name = driver.label(text);
        QVERIFY2(name, qPrintable(text));
        QVERIFY(name->property("color").value<QColor>().lightnessF() > 0.8);
        QVERIFY(driver.isComplete(*name));
    }
}

void tst_FlowDiagram::pulseTimes()
{
    const FlowDriver driver;
    const auto times = [](const QObject *pulse) {
        QList<int> list;
        for (const QObject *step : pulse->children())
            if (step->property("duration").isValid())
                list << step->property("duration").toInt();
        return list;
    };
    QCOMPARE(times(driver.arrowPulse()), (QList<int>{900, 900, 1600}));
    QCOMPARE(times(driver.drivePulse()), (QList<int>{200, 200, 0}));
    for (const QObject *pulse : {driver.arrowPulse(), driver.drivePulse()}) {
        QCOMPARE(pulse->property("loops").toInt(), -1); // Infinite
        QCOMPARE(pulse->children().at(0)->property("from").toDouble(), 1.0);
        QCOMPARE(pulse->children().at(0)->property("to").toDouble(), 0.1);
        QCOMPARE(pulse->children().at(1)->property("from").toDouble(), 0.1);
        QCOMPARE(pulse->children().at(1)->property("to").toDouble(), 1.0);
    }
}

void tst_FlowDiagram::pulseEndsOpaque_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("part");
    QTest::newRow("arrow") << int(Triggered) << "camToRamArrow";
    QTest::newRow("drive") << int(Formatting) << "ssdIcon";
}

void tst_FlowDiagram::pulseEndsOpaque()
{
    QFETCH(const int, state);
    QFETCH(const QString, part);
    FlowDriver driver;
    driver.enter(state);
    driver.holdPulse(0.4);
    QCOMPARE(driver.part(part)->opacity(), 0.4);
    QCOMPARE(driver.label("SSD")->opacity(), state == Formatting ? 0.4 : 1.0);
    driver.enter(Disarmed);
    QCOMPARE(driver.part(part)->opacity(), 1.0);
    QCOMPARE(driver.label("SSD")->opacity(), 1.0);
    QVERIFY(!driver.runs());
    driver.enter(state);
    QVERIFY(driver.runs());
    QVERIFY(!driver.isHeld());
}

void tst_FlowDiagram::nextPulseStartsAgain()
{
    FlowDriver driver;
    driver.enter(Triggered);
    driver.holdPulse(0.2);
    driver.enter(Saving);
    QVERIFY(driver.runs());
    QVERIFY(!driver.isHeld());
    QCOMPARE(driver.part("camToRamArrow")->opacity(), 1.0);
    // A pause of the playback does not interrupt the pulse.
    driver.enter(Playing);
    driver.holdPulse(0.2);
    driver.enter(Paused);
    QCOMPARE(driver.part("ramPlaybackArrow")->opacity(), 0.2);
    // A pulse that was started again still ends with its state.
    driver.enter(Disarmed);
    QVERIFY(!driver.runs());
}

void tst_FlowDiagram::pulsesWhileDisabled()
{
    FlowDriver driver;
    driver.enter(Playing);
    driver.sheet->setEnabled(false);
    QVERIFY(driver.runs());
    driver.awaitFrame();
    QTRY_VERIFY(driver.part("ramPlaybackArrow")->opacity() < 1);
    QCOMPARE(driver.color("ramPlaybackArrow"), green);
}

void tst_FlowDiagram::restsWhileInvisible_data()
{
    QTest::addColumn<QString>("what");
    for (const char *what : {"page", "hidden window", "minimised window"})
        QTest::newRow(what) << what;
}

void tst_FlowDiagram::restsWhileInvisible()
{
    QFETCH(const QString, what);
    FlowDriver driver;
    for (const int state : {Saving, Formatting}) {
        driver.enter(state);
        QVERIFY(driver.runs());
        if (what == "page")
            driver.sheet->setVisible(false);
        else if (what == "hidden window")
            driver.window().hide();
        else
            driver.window().showMinimized();
        QVERIFY(!driver.runs());
        driver.sheet->setVisible(true);
        driver.window().showNormal();
        QTRY_VERIFY(driver.runs());
    }
}

void tst_FlowDiagram::dimmedWhileDisconnected()
{
    FlowDriver driver;
    driver.enter(Triggered);
    QVERIFY(driver.runs());
    driver.sheet->setProperty("connected", false);
    driver.sheet->setEnabled(false);
    QVERIFY(!driver.runs());
    const auto seen = [&driver](QQuickItem *item) {
        double opacity = 1;
        for (; item != driver.sheet; item = item->parentItem())
            opacity *= item->opacity();
        return opacity;
    };
    for (const QString &name : icons + arrows)
        QCOMPARE(seen(driver.part(name)), 0.6);
    QCOMPARE(seen(&driver.item("Refresh")), 0.6);
}

void tst_FlowDiagram::arrowsArePaintedInTheirColour()
{
    FlowDriver driver;
    const auto isPainted = [&driver](const QString &name, QRgb color) {
        driver.holdPulse(1);
        const QSize size = driver.part(name)->size().toSize();
        return driver.pixels(name, color, {{}, size}) > 100;
    };
    QTRY_VERIFY(isPainted("camToAppArrow", green));
    QVERIFY(isPainted("camToRamArrow", gray));
    driver.enter(Triggered);
    QTRY_VERIFY(isPainted("camToAppArrow", darkGreen));
    QTRY_VERIFY(isPainted("camToRamArrow", lightRed));
    driver.enter(Playing);
    QTRY_VERIFY(isPainted("ramPlaybackArrow", green));
    driver.enter(Disarmed);
    driver.diagram->setProperty("hoveredPath", RecordPath);
    QTRY_VERIFY(isPainted("camToRamArrow", driver.palette("kestrinAccentBlue")));
}

void tst_FlowDiagram::arrowsPointTheirWay()
{
    FlowDriver driver;
    driver.enter(Unknown); // All arrows are gray.
    // The head of an arrow has more pixels than its tail.
    const QRect left(0, 0, 30, 18);
    const QRect right(30, 0, 30, 18);
    QTRY_VERIFY(driver.pixels("camToAppArrow", gray, right) > 100);
    for (const char *arrow : {"camToAppArrow", "ssdToRamArrow"})
        QTRY_VERIFY(driver.pixels(arrow, gray, right) > driver.pixels(arrow, gray, left) + 30);
    for (const char *arrow : {"camToRamArrow", "ramToSsdArrow"})
        QTRY_VERIFY(driver.pixels(arrow, gray, left) > driver.pixels(arrow, gray, right) + 30);
    // The playback arrow goes up at the memory and comes down on the computer.
    const QRect atMemory(0, 14, 60, 14);
    const QRect atComputer(296, 14, 60, 14);
    const QRect between(60, 14, 236, 14);
    QTRY_VERIFY(driver.pixels("ramPlaybackArrow", gray, atMemory) > 10);
    QVERIFY(driver.pixels("ramPlaybackArrow", gray, atComputer)
            > driver.pixels("ramPlaybackArrow", gray, atMemory) + 10);
    QCOMPARE(driver.pixels("ramPlaybackArrow", gray, between), 0);
}

void tst_FlowDiagram::arrowsMeetTheIcons()
{
    FlowDriver driver;
    driver.awaitFrame();
    const auto place = [&driver](const QString &name) {
        const QQuickItem *item = driver.part(name);
        return item->mapRectToItem(driver.diagram, {0, 0, item->width(), item->height()});
    };
    for (const char *arrow : {"ssdToRamArrow", "ramToSsdArrow", "camToRamArrow", "camToAppArrow"})
        QCOMPARE(place(arrow).size(), QSizeF(60, 18));
    QCOMPARE(place("ramPlaybackArrow").size(), QSizeF(356, 28));
    const QRectF ram = place("ramIcon");
    QCOMPARE(place("camToRamArrow").center().y(), ram.center().y());
    QCOMPARE(place("camToAppArrow").center().y(), ram.center().y());
    QCOMPARE((place("ssdToRamArrow").center().y() + place("ramToSsdArrow").center().y()) / 2, ram.center().y());
    // The ends of the playback arrow are 30 from its edges.
    const QRectF playbackArrow = place("ramPlaybackArrow");
    QCOMPARE(playbackArrow.left() + 30, ram.center().x());
    QCOMPARE(playbackArrow.right() - 30, place("desktopIcon").center().x());
    QVERIFY(playbackArrow.bottom() <= ram.top());
    // From left to right, without overlap, and in the middle of the page.
    const QStringList row{"ssdIcon",      "ssdToRamArrow", "ramIcon",    "camToRamArrow",
                          "detectorIcon", "camToAppArrow", "desktopIcon"};
    for (qsizetype i = 1; i < row.size(); ++i)
        QCOMPARE(place(row.at(i)).left(), place(row.at(i - 1)).right() + 14);
    QCOMPARE((place("ssdIcon").left() + place("desktopIcon").right()) / 2, driver.diagram->width() / 2);
}

void tst_FlowDiagram::longNamesWrap()
{
    const QString name = QString("W").repeated(127) + " / " + QString("9").repeated(127);
    FlowDriver driver({}, name);
    driver.enter(Formatting);
    driver.awaitFrame();
    const QQuickItem *label = driver.label(name);
    QVERIFY(driver.isComplete(*label));
    QVERIFY(driver.isComplete(*driver.part("recorderState")));
    QCOMPARE(label->mapRectToItem(driver.diagram, label->boundingRect()).center().x(),
             driver.part("detectorIcon")->mapToItem(driver.diagram, {30, 0}).x());
    driver.saveScreenshot({}, {640, 480});
}

void tst_FlowDiagram::theStateIsBelowTheCamera()
{
    FlowDriver driver;
    driver.awaitFrame();
    const auto place = [&driver](const QString &text) {
        const QQuickItem *label = driver.label(text);
        return label->mapRectToItem(driver.diagram, {0, 0, label->width(), label->height()});
    };
    QVERIFY(place("ZVT 6900 / 1207").top() >= place("Detector").bottom());
    QVERIFY(place("Disarmed").top() >= place("ZVT 6900 / 1207").bottom());
}

void tst_FlowDiagram::refreshIsAsked()
{
    FlowDriver driver;
    QCOMPARE(driver.item("Refresh").property("toolTip").toString(), "Refresh");
    driver.use("Refresh", false);
    QCOMPARE(driver.sheet->property("asked").toInt(), 1);
    driver.use("Refresh", true);
    QCOMPARE(driver.sheet->property("asked").toInt(), 2);
    driver.sheet->setEnabled(false);
    driver.click("Refresh");
    QCOMPARE(driver.sheet->property("asked").toInt(), 2);
}

ZVT_TEST(tst_FlowDiagram)
#include "tst_FlowDiagram.moc"
