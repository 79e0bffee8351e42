#include "common/FPASizeIntValidator.h"
#include "tests/support/Test.h"

#include <QMetaProperty>
#include <QSignalSpy>

Q_DECLARE_METATYPE(QValidator::State)

class tst_FPASizeIntValidator : public Test
{
    Q_OBJECT

private slots:
    void startsWithZeros();
    void propertiesSignalOnlyChanges_data();
    void propertiesSignalOnlyChanges();
    void judgesText_data();
    void judgesText();
    void judgesNegativeLimits();
    void ignoresTheRequiredIncrement();
    void takesOnlyZeroBeforeItsLimitsAreSet();
    void leavesTextAndCursorAlone();
};

void tst_FPASizeIntValidator::startsWithZeros()
{
    const FPASizeIntValidator validator;
    QCOMPARE(validator.minSize(), 0);
    QCOMPARE(validator.maxSize(), 0);
    QCOMPARE(validator.requiredIncrement(), 0);
}

void tst_FPASizeIntValidator::propertiesSignalOnlyChanges_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"minSize", "maxSize", "requiredIncrement"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_FPASizeIntValidator::propertiesSignalOnlyChanges()
{
    QFETCH(QByteArray, name);
    FPASizeIntValidator validator;
    const QMetaProperty property = validator.metaObject()->property(validator.metaObject()->indexOfProperty(name));
    QSignalSpy changed(&validator, property.notifySignal());
    QVERIFY(changed.isValid());

    QVERIFY(property.write(&validator, 0));
    QCOMPARE(changed.count(), 0);
    QVERIFY(property.write(&validator, 16));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(property.read(&validator).toInt(), 16);
    QVERIFY(property.write(&validator, 16));
    QCOMPARE(changed.count(), 1);
}

void tst_FPASizeIntValidator::judgesText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QValidator::State>("state");
    QTest::newRow("empty") << "" << QValidator::Intermediate;
    QTest::newRow("multiple of 4") << "320" << QValidator::Acceptable;
    QTest::newRow("leading zeros") << "0320" << QValidator::Acceptable;
    QTest::newRow("least") << "64" << QValidator::Acceptable;
    QTest::newRow("most") << "640" << QValidator::Acceptable;
    QTest::newRow("no multiple of 4") << "322" << QValidator::Intermediate;
    QTest::newRow("odd") << "321" << QValidator::Intermediate;
    QTest::newRow("above the most") << "1000" << QValidator::Invalid;
    QTest::newRow("just above the most") << "641" << QValidator::Invalid;
    QTest::newRow("below the least") << "60" << QValidator::Invalid;
    QTest::newRow("just below the least") << "63" << QValidator::Invalid;
    QTest::newRow("negative") << "-64" << QValidator::Invalid;
    QTest::newRow("sign alone") << "-" << QValidator::Invalid;
    QTest::newRow("letters") << "abc" << QValidator::Invalid;
    QTest::newRow("letters behind") << "320px" << QValidator::Invalid;
    QTest::newRow("fraction") << "320.0" << QValidator::Invalid;
    QTest::newRow("hexadecimal") << "0x140" << QValidator::Invalid;
    QTest::newRow("blank") << " " << QValidator::Invalid;
    QTest::newRow("too large for an int") << "4294967616" << QValidator::Invalid;
}

void tst_FPASizeIntValidator::judgesText()
{
    QFETCH(QString, text);
    FPASizeIntValidator validator;
    validator.setMinSize(64);
    validator.setMaxSize(640);
    int cursor = 0;
    QTEST(validator.validate(text, cursor), "state");
}

void tst_FPASizeIntValidator::judgesNegativeLimits()
{
    FPASizeIntValidator validator;
    validator.setMinSize(-8);
    int cursor = 0;
    QString text = QStringLiteral("-8");
    QCOMPARE(validator.validate(text, cursor), QValidator::Acceptable);
    text = QStringLiteral("-7");
    QCOMPARE(validator.validate(text, cursor), QValidator::Intermediate);
}

void tst_FPASizeIntValidator::ignoresTheRequiredIncrement()
{
    FPASizeIntValidator validator;
    validator.setMaxSize(640);
    validator.setRequiredIncrement(16);
    int cursor = 0;
    QString text = QStringLiteral("324");
    QCOMPARE(validator.validate(text, cursor), QValidator::Acceptable);
    validator.setRequiredIncrement(2);
    text = QStringLiteral("322");
    QCOMPARE(validator.validate(text, cursor), QValidator::Intermediate);
}

void tst_FPASizeIntValidator::takesOnlyZeroBeforeItsLimitsAreSet()
{
    const FPASizeIntValidator validator;
    int cursor = 0;
    QString text = QStringLiteral("0");
    QCOMPARE(validator.validate(text, cursor), QValidator::Acceptable);
    text = QStringLiteral("4");
    QCOMPARE(validator.validate(text, cursor), QValidator::Invalid);
}

void tst_FPASizeIntValidator::leavesTextAndCursorAlone()
{
    FPASizeIntValidator validator;
    validator.setMaxSize(640);
    int cursor = 2;
    QString text = QStringLiteral("322");
    QCOMPARE(validator.validate(text, cursor), QValidator::Intermediate);
    validator.fixup(text);
    QCOMPARE(text, QStringLiteral("322"));
    QCOMPARE(cursor, 2);
}

ZVT_TEST(tst_FPASizeIntValidator)
#include "tst_FPASizeIntValidator.moc"
