#include "platform/emulator/control.h"
#include "tests/support/Test.h"
#include "zvt/zvtsdk.h"

#include <set>
#include <string>

using namespace emulator;

class tst_SdkTexts : public Test
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        Sdk::gate().failNever();
        Sdk::gate().script("*", {});
    }

    void knownValuesHaveTexts()
    {
        QCOMPARE(zvtFrameSyncModeText(0), "Integration");
        QCOMPARE(zvtFrameSyncModeText(1), "Readout");
        QCOMPARE(zvtNUCTypeText(0), "One-Point");
        QCOMPARE(zvtNUCTypeText(1), "Two-Point");
        QCOMPARE(zvtNUCTypeText(2), "Offset Update");
        QCOMPARE(zvtNUCSourceText(0), "External");
        QCOMPARE(zvtNUCSourceText(1), "Internal");
        QCOMPARE(zvtVideoZoomFactorText(1), "1X");
        QCOMPARE(zvtVideoZoomFactorText(5), "Fit");
    }

    void unknownValuesHaveNone()
    {
        QVERIFY(!zvtFrameSyncModeText(2));
        QVERIFY(!zvtNUCTypeText(3));
        QVERIFY(!zvtNUCSourceText(255));
        QVERIFY(!zvtGetFilterName(64));
        QVERIFY(!zvtGetFilterName(255));
    }

    void everyZoomFactorHasAText() { QCOMPARE(zvtVideoZoomFactorText(6), "Unknown"); }

    void everyFilterHasANameOfItsOwn()
    {
        std::set<std::string> names;
        for (int id = 0; id < 64; ++id) {
            const char *name = zvtGetFilterName(static_cast<uint8_t>(id));
            QVERIFY(name && *name);
            names.insert(name);
            QCOMPARE(zvtGetFilterName(static_cast<uint8_t>(id)), name);
        }
        QCOMPARE(names.size(), size_t(64));
    }

    void textsCanBeWithheld()
    {
        Sdk::gate().failNext("zvtGetFilterName");
        QVERIFY(!zvtGetFilterName(0));
        QVERIFY(zvtGetFilterName(0));
        QCOMPARE(Sdk::gate().calls().back().arguments, std::string("0"));
    }

    void textsCanBeScripted()
    {
        Sdk::gate().script("zvtNUCTypeText", QStringLiteral("Über"));
        const char *text = zvtNUCTypeText(0);
        Sdk::gate().script("zvtNUCTypeText", {});
        QCOMPARE(QString::fromUtf8(text), QStringLiteral("Über"));
        QCOMPARE(zvtNUCTypeText(0), "One-Point");
    }

    void fileNames_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("file");
        QTest::addColumn<bool>("state");
        QTest::newRow("plain") << QByteArray("Field 2") << true << true;
        QTest::newRow("one character") << QByteArray("x") << true << true;
        QTest::newRow("trailing blank") << QByteArray("x ") << true << true;
        QTest::newRow("dot") << QByteArray("a.b") << true << true;
        QTest::newRow("utf-8") << QByteArray("Größe") << true << true;
        QTest::newRow("no utf-8") << QByteArray("Gr\xF6\xDF"
                                                "e")
                                  << false << false;
        QTest::newRow("empty") << QByteArray("") << false << false;
        QTest::newRow("blanks") << QByteArray("   ") << false << false;
        QTest::newRow("tab and line end") << QByteArray("\t\r\n") << false << false;
        QTest::newRow("leading blank") << QByteArray(" x") << false << false;
        QTest::newRow("leading tab") << QByteArray("\tx") << false << false;
        for (const char forbidden : std::string("/\\:\"*?<>|"))
            QTest::addRow("forbidden %c", forbidden) << QByteArray("a") + forbidden + "b" << false << false;
        QTest::newRow("199 bytes") << QByteArray(199, 'x') << true << true;
        QTest::newRow("200 bytes") << QByteArray(200, 'x') << true << false;
        QTest::newRow("255 bytes") << QByteArray(255, 'x') << true << false;
        QTest::newRow("256 bytes") << QByteArray(256, 'x') << false << false;
    }

    void fileNames()
    {
        QFETCH(QByteArray, name);
        QFETCH(bool, file);
        QFETCH(bool, state);
        QCOMPARE(zvtIsValidFileName(name.constData()) == Ok, file);
        QCOMPARE(zvtIsValidStateName(name.constData()) == Ok, state);
    }

    void aNullNameIsNotValid()
    {
        QVERIFY(zvtIsValidFileName(nullptr) != Ok);
        QVERIFY(zvtIsValidStateName(nullptr) != Ok);
        QCOMPARE(Sdk::gate().calls().back().arguments, std::string("null"));
    }
};

ZVT_TEST(tst_SdkTexts)
#include "tst_SdkTexts.moc"
