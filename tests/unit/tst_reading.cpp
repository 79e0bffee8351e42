#include "tests/support/Test.h"

#include "common/publishing.h"
#include "common/reading.h"

#include <QSignalSpy>

#include <cstring>

namespace
{

// SDK functions with the parameter lists that the helpers support. The handle selects success or failure.
constexpr uint64_t working = 1;
constexpr uint64_t failing = 0;

int getByte(uint64_t handle, uint8_t *out)
{
    *out = 200;
    return handle == working ? 0 : -1;
}

int getPresetWord(uint64_t handle, uint8_t preset, uint16_t *out)
{
    *out = static_cast<uint16_t>(1000 + preset);
    return handle == working ? 0 : -1;
}

int getLimits(uint64_t handle, float *minimum, float *maximum)
{
    *minimum = 1.5F;
    *maximum = 2.5F;
    return handle == working ? 0 : -1;
}

int getText(uint64_t handle, char *buffer, uint32_t size)
{
    std::strncpy(buffer, "a\xc3\xa4", size);
    return handle == working ? 0 : -1;
}

int getFullText(uint64_t, char *buffer, uint32_t size)
{
    std::memset(buffer, 'x', size);
    return 0;
}

int getNothing(uint64_t, char *, uint32_t) { return 0; }

int getBrokenText(uint64_t, char *buffer, uint32_t size)
{
    std::memset(buffer, 0xff, size);
    return 0;
}

} // namespace

class PublishingModel : public QObject
{
    Q_OBJECT

public:
    double value = 1.0;

signals:
    void valueChanged();
};

class tst_reading : public Test
{
    Q_OBJECT

private slots:
    void readSetsTheFieldOnStatusZeroOnly();
    void readConvertsFromTheTypeOfTheSdk();
    void pairIsSetTogetherOrNotAtAll();
    void textIsBoundedByItsBuffer();
    void textIsEmptyIfTheFunctionWritesNothing();
    void invalidUtf8IsShownAsReplacement();
    void failingTextGivesTheOther();
    void failingNumberGivesTheOther();
    void pairIsPublishedWithOneSignal();
    void publishEmitsChangedOrNot();
    void publishKeepsTheLastValueOfAFailedRead();
    void publishIfChangedCompares();
    void publishIfChangedTakesNoNumberForUnchanged();
    void announceEmitsWhateverHappened();
};

void tst_reading::readSetsTheFieldOnStatusZeroOnly()
{
    Nullable<int> field;
    QVERIFY(!fetch(field, getByte, failing));
    QVERIFY(!field.set());
    QVERIFY(fetch(field, getByte, working));
    QCOMPARE(field.get(), 200);
}

void tst_reading::readConvertsFromTheTypeOfTheSdk()
{
    Nullable<bool> flag;
    QVERIFY(fetch(flag, getByte, working));
    QCOMPARE(flag.get(), true);
    Nullable<int> number;
    QVERIFY(fetch(number, getPresetWord, working, uint8_t{3}));
    QCOMPARE(number.get(), 1003);
}

void tst_reading::pairIsSetTogetherOrNotAtAll()
{
    Nullable<double> minimum;
    Nullable<double> maximum;
    QVERIFY(!readPair(minimum, maximum, getLimits, failing));
    QVERIFY(!minimum.set() && !maximum.set());
    QVERIFY(readPair(minimum, maximum, getLimits, working));
    QCOMPARE(minimum.get(), 1.5);
    QCOMPARE(maximum.get(), 2.5);
}

void tst_reading::textIsBoundedByItsBuffer()
{
    Nullable<QString> text;
    QVERIFY(readText<64>(text, getFullText, working));
    QCOMPARE(text.get(), QString(64, u'x'));
    QVERIFY(readText<64>(text, getText, working));
    QCOMPARE(text.get(), QStringLiteral("a\u00e4"));
}

void tst_reading::textIsEmptyIfTheFunctionWritesNothing()
{
    Nullable<QString> text;
    QVERIFY(readText<64>(text, getNothing, working));
    QCOMPARE(text.get(), QString());
}

void tst_reading::invalidUtf8IsShownAsReplacement()
{
    Nullable<QString> text;
    QVERIFY(readText<4>(text, getBrokenText, working));
    QCOMPARE(text.get(), QString(4, QChar::ReplacementCharacter));
}

void tst_reading::failingTextGivesTheOther()
{
    QCOMPARE(textOr<64>(QStringLiteral("Error"), getText, failing), QStringLiteral("Error"));
    QCOMPARE(textOr<64>(QStringLiteral("Error"), getText, working), QStringLiteral("a\u00e4"));
}

void tst_reading::failingNumberGivesTheOther()
{
    QCOMPARE(readOr(-1, getByte, failing), -1);
    QCOMPARE(readOr(-1, getByte, working), 200);
}

void tst_reading::pairIsPublishedWithOneSignal()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    double other = 0.0;
    const Nullable<double> none;
    publishPair(&model, none, model.value, none, other, &PublishingModel::valueChanged);
    publishPairIfChanged(&model, none, model.value, none, other, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 0);
    const Nullable<double> two(2.0);
    const Nullable<double> three(3.0);
    publishPair(&model, two, model.value, three, other, &PublishingModel::valueChanged);
    publishPair(&model, two, model.value, three, other, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(other, 3.0);
    publishPairIfChanged(&model, two, model.value, three, other, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 2);
    publishPairIfChanged(&model, two, model.value, two, other, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 3);
    QCOMPARE(other, 2.0);
}

void tst_reading::publishEmitsChangedOrNot()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    publish(&model, Nullable<double>(1.0), model.value, &PublishingModel::valueChanged);
    publish(&model, Nullable<double>(2.0), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 2);
    QCOMPARE(model.value, 2.0);
}

void tst_reading::publishKeepsTheLastValueOfAFailedRead()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    publish(&model, Nullable<double>(), model.value, &PublishingModel::valueChanged);
    publishIfChanged(&model, Nullable<double>(), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 0);
    QCOMPARE(model.value, 1.0);
}

void tst_reading::publishIfChangedCompares()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    publishIfChanged(&model, Nullable<float>(1.0F), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 0);
    publishIfChanged(&model, Nullable<float>(1.5F), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(model.value, 1.5);
}

// Else a sensor that keeps returning NaN would signal on each poll.
void tst_reading::publishIfChangedTakesNoNumberForUnchanged()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    for (int poll = 0; poll < 3; ++poll)
        publishIfChanged(&model, Nullable<double>(qQNaN()), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 1);
    publishIfChanged(&model, Nullable<double>(3.0), model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 2);
}

void tst_reading::announceEmitsWhateverHappened()
{
    PublishingModel model;
    const QSignalSpy spy(&model, &PublishingModel::valueChanged);
    announce(&model, 1.0, model.value, &PublishingModel::valueChanged);
    QCOMPARE(spy.size(), 1);
}

ZVT_TEST(tst_reading)
#include "tst_reading.moc"
