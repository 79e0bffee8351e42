#include "hlx/CVariant.h"

#include <limits>

#include "tests/support/Test.h"

using hlx::CString;
using hlx::CVariant;

class tst_hlxCVariant : public Test
{
    Q_OBJECT

private slots:
    void convertsBetweenKinds_data();
    void convertsBetweenKinds();
    void keepsTheEndsOfTheIntegers();
    void aLiteralIsAText();
    void equalOnlyWithinAKind();
};

Q_DECLARE_METATYPE(hlx::CVariant)

void tst_hlxCVariant::convertsBetweenKinds_data()
{
    QTest::addColumn<CVariant>("value");
    QTest::addColumn<bool>("asBool");
    QTest::addColumn<int>("asInt");
    QTest::addColumn<float>("asFloat");
    QTest::addColumn<QByteArray>("asText");

    const auto row
        = [](const char *name, const CVariant &value, bool asBool, int asInt, float asFloat, const char *asText) {
              QTest::newRow(name) << value << asBool << asInt << asFloat << QByteArray(asText);
          };
    row("nothing", CVariant(), false, 0, 0.0F, "");
    row("true", CVariant(true), true, 1, 1.0F, "true");
    row("false", CVariant(false), false, 0, 0.0F, "false");
    row("int", CVariant(-42), true, -42, -42.0F, "-42");
    row("zero", CVariant(0), false, 0, 0.0F, "0");
    row("float", CVariant(2.75F), true, 2, 2.75F, "2.75");
    row("negative float", CVariant(-2.75F), true, -2, -2.75F, "-2.75");
    row("huge float", CVariant(1e20F), true, std::numeric_limits<int>::max(), 1e20F, "1e+20");
    row("text", CVariant(CString("chamber")), false, 0, 0.0F, "chamber");
    row("empty text", CVariant(CString()), false, 0, 0.0F, "");
    row("true in text", CVariant(CString("true")), true, 1, 1.0F, "true");
    row("int in text", CVariant(CString("17")), true, 17, 17.0F, "17");
    row("float in text", CVariant(CString("0.5")), true, 0, 0.5F, "0.5");
    row("number and more", CVariant(CString("17 frames")), false, 0, 0.0F, "17 frames");
}

void tst_hlxCVariant::convertsBetweenKinds()
{
    QFETCH(CVariant, value);
    QTEST(value.ToBool(), "asBool");
    QTEST(value.ToInt32(), "asInt");
    QTEST(value.ToFlt32(), "asFloat");
    QTEST(QByteArray(value.ToString().c_str()), "asText");
}

void tst_hlxCVariant::keepsTheEndsOfTheIntegers()
{
    for (const int end : {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QCOMPARE(CVariant(end).ToInt32(), end);
        QCOMPARE(CVariant(CVariant(end).ToString()).ToInt32(), end);
    }
    QCOMPARE(CVariant(-1e20F).ToInt32(), std::numeric_limits<int>::min());
    QCOMPARE(CVariant(std::numeric_limits<float>::quiet_NaN()).ToInt32(), 0);
}

void tst_hlxCVariant::aLiteralIsAText() { QCOMPARE(CVariant("profile").ToString().c_str(), "profile"); }

void tst_hlxCVariant::equalOnlyWithinAKind()
{
    QVERIFY(CVariant(1) == CVariant(1));
    QVERIFY(CVariant(1) != CVariant(true));
    QVERIFY(CVariant() == CVariant());
}

ZVT_TEST(tst_hlxCVariant)
#include "tst_hlxCVariant.moc"
