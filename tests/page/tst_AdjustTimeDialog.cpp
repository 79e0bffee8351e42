#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QDateTime>

#include "zvt/zvtsdk.h"

class tst_AdjustTimeDialog : public Test
{
    Q_OBJECT

private slots:
    void openingShowsTheCamerasClock();
    void theFieldsAreEmptyBeforeTheFirstReading();
    void everyOpeningReadsAgain();
    void openingForgetsWhatWasTyped();
    void getShowsTheSameTimeAgain();
    void getShowsAnotherTime();
    void setWritesTheFields();
    void enterSets();
    void setOfAnUnchangedTimeWritesNothing();
    void whatIsNoNumberMakesNoDate_data();
    void whatIsNoNumberMakesNoDate();
    void enterPassesOverWhatMakesNoDate_data() { whatIsNoNumberMakesNoDate_data(); }
    void enterPassesOverWhatMakesNoDate();
    void partsThatNoClockShowsAreMarked_data();
    void partsThatNoClockShowsAreMarked();
    void setWithoutAMonthMakesNoDate();
    void theComputersTimeIsTaken();
    void theMonthsAreNamed();
    void thePartsStandInSixColumns();
    void itStaysUntilItIsClosed();
    void tabWalksThroughTheParts();
    void theFocusReturnsToTheConfigurationButton();
    void thePageOutlivesItsModel();

private:
    static void setCamera(PageDriver &driver, int year, int month, int day, int hour, int minute, int second);
    static void open(PageDriver &driver);
    static void typeInto(PageDriver &driver, const QString &field, const QString &text);
    /// The texts of the parts, from the month on, in their order on the page.
    static QStringList parts(PageDriver &driver);
    static QStringList writesSince(PageDriver &driver, size_t mark);
    static QDateTime cameraTime(PageDriver &driver)
    {
        return driver.tabModel("adjustTime")->property("cameraTime").toDateTime();
    }
};

void tst_AdjustTimeDialog::setCamera(PageDriver &driver, int year, int month, int day, int hour, int minute, int second)
{
    const auto byte = [](int number) { return static_cast<uint8_t>(number); };
    QCOMPARE(zvtSetRealTimeClock(driver.rig().camera().handle(), byte(year), byte(month), byte(day), byte(hour),
                                 byte(minute), byte(second)),
             0);
}

void tst_AdjustTimeDialog::open(PageDriver &driver)
{
    driver.choose("Adjust Time");
    driver.settle();
}

void tst_AdjustTimeDialog::typeInto(PageDriver &driver, const QString &field, const QString &text)
{
    driver.click(field);
    driver.press(Qt::Key_A, Qt::ControlModifier);
    driver.press(Qt::Key_Delete);
    driver.type(text);
}

QStringList tst_AdjustTimeDialog::parts(PageDriver &driver)
{
    QStringList texts{driver.find("month")->property("displayText").toString()};
    for (const char *name : {"day", "year", "hour", "minute", "second"})
        texts << driver.text(QLatin1String(name));
    return texts;
}

QStringList tst_AdjustTimeDialog::writesSince(PageDriver &driver, size_t mark)
{
    QStringList writes;
    for (const auto &call : driver.rig().gate().callsSince(mark))
        if (call.name.starts_with("zvtSet"))
            writes << QString::fromStdString(call.name + "(" + call.arguments + ")");
    return writes;
}

void tst_AdjustTimeDialog::openingShowsTheCamerasClock()
{
    PageDriver driver;
    setCamera(driver, 31, 9, 4, 7, 8, 0);
    open(driver);
    QVERIFY(driver.findText("Adjust Time"));
    QVERIFY(driver.find("Set")->property("primary").toBool());
    QCOMPARE(parts(driver), QStringList({"September", "4", "2031", "7", "8", "0"}));
}

void tst_AdjustTimeDialog::theFieldsAreEmptyBeforeTheFirstReading()
{
    PageDriver driver;
    driver.rig().gate().failAlways("zvtGetRealTimeClock");
    open(driver);
    QCOMPARE(parts(driver), QStringList(6));
    const QList<std::pair<QString, QString>> hints{
        {"day", "DD"}, {"year", "YYYY"}, {"hour", "HH"}, {"minute", "MM"}, {"second", "SS"}};
    for (const auto &[field, hint] : hints)
        QCOMPARE(driver.find(field)->property("placeholderText").toString(), hint);
}

void tst_AdjustTimeDialog::everyOpeningReadsAgain()
{
    PageDriver driver;
    open(driver);
    driver.press(Qt::Key_Return);
    QTRY_VERIFY(!driver.find("Get"));
    setCamera(driver, 40, 1, 2, 3, 4, 5);
    open(driver);
    QCOMPARE(parts(driver), QStringList({"January", "2", "2040", "3", "4", "5"}));
}

void tst_AdjustTimeDialog::openingForgetsWhatWasTyped()
{
    PageDriver driver;
    open(driver);
    const QStringList shown = parts(driver);
    typeInto(driver, "day", "77");
    driver.click("Close");
    QTRY_VERIFY(!driver.find("Get"));
    open(driver);
    QCOMPARE(parts(driver), shown);
}

void tst_AdjustTimeDialog::getShowsTheSameTimeAgain()
{
    PageDriver driver;
    open(driver);
    const QStringList shown = parts(driver);
    for (const QString field : {"day", "year", "hour", "minute", "second"})
        typeInto(driver, field, "7");
    driver.find("month")->forceActiveFocus();
    driver.press(Qt::Key_Down);
    QCOMPARE(parts(driver), QStringList({"March", "7", "7", "7", "7", "7"}));
    driver.click("Get");
    driver.settle();
    QCOMPARE(parts(driver), shown);
}

void tst_AdjustTimeDialog::getShowsAnotherTime()
{
    PageDriver driver;
    open(driver);
    setCamera(driver, 40, 1, 2, 3, 4, 5);
    driver.click("Get");
    driver.settle();
    QCOMPARE(parts(driver), QStringList({"January", "2", "2040", "3", "4", "5"}));
}

void tst_AdjustTimeDialog::setWritesTheFields()
{
    PageDriver driver;
    setCamera(driver, 31, 9, 4, 7, 8, 9);
    open(driver);
    driver.find("month")->forceActiveFocus();
    driver.press(Qt::Key_Down);
    typeInto(driver, "day", "12");
    typeInto(driver, "year", "2032");
    typeInto(driver, "hour", "23");
    typeInto(driver, "minute", "45");
    typeInto(driver, "second", "56");
    const size_t mark = driver.rig().gate().mark();
    driver.click("Set");
    // The day of the year, in a leap year.
    QCOMPARE(
        writesSince(driver, mark),
        QStringList({"zvtSetRealTimeClock(32, 10, 12, 23, 45, 56)", "zvtSetIRIGTime(2032, 286, 23, 45, 56, 0, 0)"}));
    QCOMPARE(cameraTime(driver), QDateTime(QDate(2032, 10, 12), QTime(23, 45, 56)));
    // The dialog stays open.
    QVERIFY(driver.find("Set"));
}

void tst_AdjustTimeDialog::enterSets()
{
    PageDriver driver;
    setCamera(driver, 31, 9, 4, 7, 8, 9);
    open(driver);
    typeInto(driver, "minute", "30");
    driver.press(Qt::Key_Return);
    QCOMPARE(cameraTime(driver), QDateTime(QDate(2031, 9, 4), QTime(7, 30, 9)));
}

void tst_AdjustTimeDialog::setOfAnUnchangedTimeWritesNothing()
{
    PageDriver driver;
    open(driver);
    const size_t mark = driver.rig().gate().mark();
    driver.click("Set");
    QCOMPARE(writesSince(driver, mark), QStringList());
}

void tst_AdjustTimeDialog::whatIsNoNumberMakesNoDate_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    for (const QString field : {"day", "year", "hour", "minute", "second"}) {
        QTest::addRow("no %s", qPrintable(field)) << field << QString();
        QTest::addRow("a blank %s", qPrintable(field)) << field << QStringLiteral(" ");
        QTest::addRow("letters in %s", qPrintable(field)) << field << QStringLiteral("1O");
    }
}

void tst_AdjustTimeDialog::whatIsNoNumberMakesNoDate()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    PageDriver driver;
    open(driver);
    typeInto(driver, field, text);
    const size_t mark = driver.rig().gate().mark();
    const QStringList typed = parts(driver);
    driver.click("Set");
    // The time is sent unchecked.
    QCOMPARE(driver.rig().callsSince(mark), QStringList({"zvtSetRealTimeClock", "zvtSetIRIGTime"}));
    QVERIFY(!cameraTime(driver).isValid());
    // The typed time stays, so that it can be corrected.
    QCOMPARE(parts(driver), typed);
    QCOMPARE(driver.text(field), text);
}

void tst_AdjustTimeDialog::enterPassesOverWhatMakesNoDate()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    PageDriver driver;
    open(driver);
    const QDateTime before = cameraTime(driver);
    typeInto(driver, field, text);
    const QStringList typed = parts(driver);
    const size_t mark = driver.rig().gate().mark();
    driver.press(Qt::Key_Return);
    // Enter in another field does nothing either.
    typeInto(driver, field == "day" ? "hour" : "day", "7");
    driver.press(Qt::Key_Return);
    QCOMPARE(driver.rig().callsSince(mark), QStringList());
    QCOMPARE(cameraTime(driver), before);
    QCOMPARE(driver.text(field), text);
    QCOMPARE(driver.text("year"), typed.at(2));
}

void tst_AdjustTimeDialog::partsThatNoClockShowsAreMarked_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("fault");
    QTest::newRow("letters") << "day"
                             << "1O"
                             << "Not a number";
    QTest::newRow("empty") << "minute"
                           << ""
                           << "Not a number";
    QTest::newRow("first day") << "day"
                               << "1"
                               << "";
    QTest::newRow("last day") << "day"
                              << "31"
                              << "";
    QTest::newRow("no day") << "day"
                            << "32"
                            << "Not between 1 and 31";
    QTest::newRow("first year") << "year"
                                << "2000"
                                << "";
    QTest::newRow("year of two digits") << "year"
                                        << "31"
                                        << "Not between 2000 and 2255";
    QTest::newRow("last hour") << "hour"
                               << "23"
                               << "";
    QTest::newRow("no hour") << "hour"
                             << "24"
                             << "Not between 0 and 23";
    QTest::newRow("no minute") << "minute"
                               << "60"
                               << "Not between 0 and 59";
    QTest::newRow("no second") << "second"
                               << "-1"
                               << "Not between 0 and 59";
}

void tst_AdjustTimeDialog::partsThatNoClockShowsAreMarked()
{
    QFETCH(const QString, field);
    QFETCH(const QString, text);
    QFETCH(const QString, fault);
    PageDriver driver;
    open(driver);
    typeInto(driver, field, text);
    QCOMPARE(driver.find(field)->property("fault").toString(), fault);
    driver.click("Get");
    driver.settle();
    QCOMPARE(driver.find(field)->property("fault").toString(), QString());
}

void tst_AdjustTimeDialog::setWithoutAMonthMakesNoDate()
{
    PageDriver driver;
    driver.rig().gate().failAlways("zvtGetRealTimeClock");
    open(driver);
    for (const QString field : {"day", "year", "hour", "minute", "second"})
        typeInto(driver, field, "7");
    const size_t mark = driver.rig().gate().mark();
    driver.click("Set");
    // The camera has reported no time, and the operator has entered none.
    QCOMPARE(writesSince(driver, mark), QStringList());
}

void tst_AdjustTimeDialog::theComputersTimeIsTaken()
{
    PageDriver driver;
    open(driver);
    const QDateTime before = QDateTime::currentDateTime();
    const size_t mark = driver.rig().gate().mark();
    driver.click("Sync camera time to PC time");
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(driver.rig().callsSince(mark), QStringList({"zvtSetRealTimeClock", "zvtSetIRIGTime"}));
    QVERIFY(cameraTime(driver) >= before && cameraTime(driver) <= after);
    QCOMPARE(driver.text("year"), QString::number(before.date().year()));
}

void tst_AdjustTimeDialog::theMonthsAreNamed()
{
    PageDriver driver;
    open(driver);
    QCOMPARE(driver.find("month")->property("model").toStringList(),
             QStringList({"January", "February", "March", "April", "May", "June", "July", "August", "September",
                          "October", "November", "December"}));
    // The longest of them fits.
    for (int month = 1; month <= 12; ++month) {
        setCamera(driver, 31, month, 1, 0, 0, 0);
        driver.click("Get");
        driver.settle();
        const auto *text = driver.find("month")->property("contentItem").value<QQuickItem *>();
        QVERIFY(text->property("contentWidth").toDouble() <= text->width());
    }
}

void tst_AdjustTimeDialog::thePartsStandInSixColumns()
{
    PageDriver driver;
    open(driver);
    const auto place = [&driver](const char *name) { return driver.find(QLatin1String(name))->mapToScene({0, 0}); };
    const auto rightOf = [&driver](const char *name) {
        const QQuickItem *item = driver.find(QLatin1String(name));
        return item->mapToScene({item->width(), 0}).x();
    };
    QCOMPARE(rightOf("month"), rightOf("hour"));
    QCOMPARE(place("day").x(), place("minute").x());
    QCOMPARE(place("year").x(), place("second").x());
    QCOMPARE(place("day").y(), place("month").y());
    QCOMPARE(place("year").y(), place("month").y());
    QVERIFY(place("hour").y() > place("month").y());
    QCOMPARE(place("second").y(), place("hour").y());
    for (const char *name : {"day", "year", "hour", "minute", "second"}) {
        const QQuickItem *label = driver.findText(QLatin1String(name));
        QVERIFY(label);
        QVERIFY(label->mapToScene({label->width(), 0}).x() < place(name).x());
    }
}

void tst_AdjustTimeDialog::itStaysUntilItIsClosed()
{
    PageDriver driver;
    open(driver);
    QTest::mouseClick(&driver.window(), Qt::LeftButton, Qt::NoModifier, {4, 470});
    driver.settle();
    QVERIFY(driver.find("Get"));
    driver.click("day");
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(!driver.find("Get"));
}

void tst_AdjustTimeDialog::tabWalksThroughTheParts()
{
    PageDriver driver;
    open(driver);
    QTRY_VERIFY(driver.find("Close")->hasActiveFocus());
    QStringList walked;
    const QStringList order{"month", "day", "year", "hour", "minute", "second", "Sync camera time to PC time",
                            "Get",   "Set", "Close"};
    for (int step = 0; step < order.size(); ++step) {
        driver.press(Qt::Key_Tab);
        for (const QString &name : order)
            if (driver.find(name)->hasActiveFocus())
                walked += name;
    }
    QCOMPARE(walked, order);
}

void tst_AdjustTimeDialog::theFocusReturnsToTheConfigurationButton()
{
    PageDriver driver;
    open(driver);
    driver.click("day");
    driver.press(Qt::Key_Escape);
    QTRY_VERIFY(driver.find("Configuration")->hasActiveFocus());
}

void tst_AdjustTimeDialog::thePageOutlivesItsModel()
{
    PageDriver driver;
    open(driver);
    driver.deleteModel();
    driver.settle();
    driver.click("Close");
    QTRY_VERIFY(!driver.find("Get"));
}

ZVT_TEST(tst_AdjustTimeDialog)
#include "tst_AdjustTimeDialog.moc"
