#include "benchmarks/page/Census.h"
#include "tests/page/StandaloneFake.h"
#include "tests/support/PageDriver.h"
#include "tests/support/RecorderPoll.h"
#include "tests/support/Test.h"

#include <QFont>
#include <QSet>

#include <algorithm>

/// The number of objects of a page when it is first shown, and that an unused page causes no work.
class tst_PageAtRest : public Test
{
    Q_OBJECT

private slots:
    void objectsAreFew();
    void nothingThatOpensIsMade();
    void fontsAreFew();
    void noAnimationRuns_data();
    void noAnimationRuns();
    void leftPagesHaveNoAnimation();
    void hiddenContentIsMadeByItself();
    void hiddenContentAsksNoCamera();

private:
    static QList<QObject *> objectsOf(PageDriver &driver, const char *className);
    static bool animationRuns(PageDriver &driver);
};

QList<QObject *> tst_PageAtRest::objectsOf(PageDriver &driver, const char *className)
{
    QList<QObject *> objects = driver.window().findChildren<QObject *>() + driver.page()->findChildren<QObject *>();
    objects.removeIf([className](const QObject *object) { return !object->inherits(className); });
    return objects;
}

bool tst_PageAtRest::animationRuns(PageDriver &driver)
{
    return std::ranges::any_of(objectsOf(driver, "QQuickAbstractAnimation"),
                               [](const QObject *animation) { return animation->property("running").toBool(); });
}

void tst_PageAtRest::objectsAreFew()
{
    PageDriver driver({.connected = false});
    const Census census(*driver.page());
    QVERIFY(census.controls() > 20);
    QVERIFY2(census.objects() <= 8 * census.controls(),
             qPrintable(QStringLiteral("%1 objects, %2 controls").arg(census.objects()).arg(census.controls())));
}

void tst_PageAtRest::nothingThatOpensIsMade()
{
    StandaloneFake standalone;
    PageDriver driver({.connected = false, .options = {.standaloneModel = &standalone}});
    QCOMPARE(objectsOf(driver, "QQuickDialog").size(), 0);
    QCOMPARE(objectsOf(driver, "QQuickBusyIndicator").size(), 0);
    QVERIFY(objectsOf(driver, "QQuickToolTip").size() <= 1);
    QVERIFY(objectsOf(driver, "QQuickPopup").size() <= 1);
}

void tst_PageAtRest::fontsAreFew()
{
    PageDriver driver;
    QSet<QString> fonts;
    for (const QQuickItem *item : driver.page()->findChildren<QQuickItem *>())
        if (!item->property("text").toString().isEmpty() && item->property("font").isValid())
            fonts += item->property("font").value<QFont>().toString();
    QVERIFY2(fonts.size() <= 8, qPrintable(QStringList(fonts.values()).join('\n')));
}

void tst_PageAtRest::noAnimationRuns_data()
{
    QTest::addColumn<QString>("tab");
    for (const char *tab : {"Status", "Setup", "Advanced", "SSD"})
        QTest::newRow(tab) << tab;
}

void tst_PageAtRest::noAnimationRuns()
{
    QFETCH(const QString, tab);
    PageDriver driver;
    driver.click(tab);
    driver.settle();
    driver.choose("About");
    driver.settle();
    driver.press(Qt::Key_Escape);
    driver.settle();
    QTRY_VERIFY_WITH_TIMEOUT(!animationRuns(driver), 1000);
}

// The flow diagram of the SSD page pulses during a recording.
void tst_PageAtRest::leftPagesHaveNoAnimation()
{
    PageDriver driver;
    driver.click("SSD");
    driver.settle();
    driver.rig().gate().script("zvtGetSsdState", Triggered);
    startPoll(*driver.tabModel("ssdTabModel"));
    driver.settle();
    QVERIFY(animationRuns(driver));
    driver.click("Status");
    driver.settle();
    QTRY_VERIFY_WITH_TIMEOUT(!animationRuns(driver), 1000);
}

void tst_PageAtRest::hiddenContentIsMadeByItself()
{
    PageDriver driver({.connected = false});
    QTRY_VERIFY(!objectsOf(driver, "QQuickComboBox").isEmpty());
}

void tst_PageAtRest::hiddenContentAsksNoCamera()
{
    PageDriver driver({.profile = "discrete-fov"});
    const size_t mark = driver.rig().gate().mark();
    QTRY_VERIFY(!objectsOf(driver, "QQuickComboBox").isEmpty());
    driver.settle();
    for (const QString &call : driver.rig().callsSince(mark))
        QVERIFY2(!call.startsWith("zvtGetFOV") && call != "controller.GetReduceNoise", qPrintable(call));
}

ZVT_TEST(tst_PageAtRest)
#include "tst_PageAtRest.moc"
