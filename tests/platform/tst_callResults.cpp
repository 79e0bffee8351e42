#include "platform/emulator/callResults.h"
#include "tests/support/Test.h"

#include <QJsonDocument>

#include <array>
#include <limits>

using namespace emulator;

/// The outputs of calls as JSON, and back.
class tst_callResults : public Test
{
    Q_OBJECT

private slots:
    void numbersAreRestoredExactly()
    {
        QVERIFY(restored(true));
        QCOMPARE(restored(int8_t(-128)), int8_t(-128));
        QCOMPARE(restored(uint8_t(255)), uint8_t(255));
        for (const uint64_t number : {uint64_t(0), uint64_t(1) << 53, (uint64_t(1) << 53) + 1, ~uint64_t(0)})
            QCOMPARE(restored(number), number);
        QCOMPARE(restored(std::numeric_limits<int64_t>::min()), std::numeric_limits<int64_t>::min());
        for (const double number : {0.1, -1e300, 5e-324, 1.0 / 3, double(1 << 20)})
            QCOMPARE(restored(number), number);
        for (const float number : {0.1f, -1e30f, 1.0f / 3})
            QCOMPARE(restored(number), number);
        QVERIFY(qIsNaN(restored(std::numeric_limits<float>::quiet_NaN())));
        QCOMPARE(restored(-std::numeric_limits<double>::infinity()), -std::numeric_limits<double>::infinity());
        QVERIFY(restored(ZVT_AF_ROI_TOP_RIGHT) == ZVT_AF_ROI_TOP_RIGHT);
    }

    void textsAreRestoredByteByByte()
    {
        for (const std::string &text : {std::string(), std::string("größer\n\"€\""), std::string("a\0b", 3),
                                        std::string("\xff\xfe cut \xc3"), std::string("\xef\xbb\xbf")}) {
            QCOMPARE(restored(text), text);
            QVERIFY(restored(hlx::CString(text.data(), int(text.size())))
                    == hlx::CString(text.data(), int(text.size())));
        }
        QVERIFY(results::fromText("größer").isString());
        QVERIFY(results::fromText("\xc3").isObject());
    }

    void structuresAndListsAreRestored()
    {
        zvtSNUCInfo info{};
        info.width = 640;
        info.cameraModel[0] = 'x';
        QCOMPARE(restored(info).width, uint16_t(640));
        QCOMPARE(restored(info).cameraModel[0], 'x');
        zvtSDirEntry entry;
        entry.name = "\xff.bin";
        entry.time100ns = ~uint64_t(0);
        const auto entries = restored(hlx::TArray<zvtSDirEntry>{entry, {}});
        QCOMPARE(entries.size(), size_t(2));
        QCOMPARE(entries[0].name.c_str(), "\xff.bin");
        QCOMPARE(entries[0].time100ns, ~uint64_t(0));
        QCOMPARE(restored(hlx::TArray<zvtSInfoEntry>{{"a", "b"}})[0].value.c_str(), "b");
        QCOMPARE(restored(hlx::TArray<unsigned char>{1, 200})[1], uint8_t(200));
        QVERIFY(restored(hlx::TArray<hlx::CString>{}).empty());
        hlx::cam::IController::SFactoryCalibration calibration;
        calibration.name = "hot";
        calibration.high = 1.5f;
        calibration.comment = "last";
        const auto calibrations = restored(hlx::TArray<hlx::cam::IController::SFactoryCalibration>{calibration});
        QCOMPARE(calibrations[0].high, 1.5f);
        QCOMPARE(calibrations[0].comment.c_str(), "last");
    }

    void outputsAreTakenInTheirOrder()
    {
        std::array<char, 8> buffer{};
        std::array<uint8_t, 3> block{1, 2, 3};
        uint16_t number = 7;
        Text text(buffer.data(), buffer.size());
        text.value = "longer than its buffer";
        const char *const input = "input";
        const QJsonArray results = describeResults(5, text, number, &number, input, Block{block.data(), block.size()});
        QCOMPARE(results.size(), 3);
        text.value.clear();
        number = 0;
        block.fill(0);
        Block output{block.data(), block.size()};
        uint16_t *pointer = &number;
        QCOMPARE(writeResults(results, text, pointer, input, output), QString());
        QCOMPARE(text.value, std::string("longer than its buffer"));
        QCOMPARE(number, uint16_t(7));
        QCOMPARE(block[2], uint8_t(3));
    }

    void refusedResultsChangeNothing_data()
    {
        QTest::addColumn<QJsonArray>("results");
        QTest::addColumn<QString>("why");
        const QJsonObject block{{"base64", "AQID"}};
        QTest::newRow("too few") << QJsonArray{1, block} << "must have 3 values, not 2";
        QTest::newRow("too many") << QJsonArray{1, block, "a", 4} << "must have 3 values, not 4";
        QTest::newRow("text for a number") << QJsonArray{"x", block, "a"} << "must be a number";
        QTest::newRow("number out of range") << QJsonArray{256, block, "a"} << "must lie between 0 and 255";
        QTest::newRow("fraction") << QJsonArray{1.5, block, "a"} << "must be a whole number";
        QTest::newRow("number for a text") << QJsonArray{1, block, 3} << "must be a text";
        QTest::newRow("short block") << QJsonArray{1, QJsonObject{{"base64", "AQI="}}, "a"}
                                     << "must be 3 bytes in base64";
        QTest::newRow("no base64") << QJsonArray{1, QJsonObject{{"base64", "A?=="}}, "a"}
                                   << "must be 3 bytes in base64";
    }

    void refusedResultsChangeNothing()
    {
        QFETCH(QJsonArray, results);
        uint8_t number = 7;
        uint8_t *pointer = &number;
        std::array<uint8_t, 3> bytes{9, 9, 9};
        Block block{bytes.data(), bytes.size()};
        char buffer[4];
        Text text(buffer, sizeof buffer);
        text.value = "old";
        QTEST(writeResults(results, pointer, block, text), "why");
        QCOMPARE(number, uint8_t(7));
        QCOMPARE(bytes[0], uint8_t(9));
        QCOMPARE(text.value, std::string("old"));
    }

    void aWrongItemOfAListIsRefused()
    {
        hlx::TArray<zvtSDirEntry> entries;
        QCOMPARE(results::parse(QJsonValue(5), entries), QStringLiteral("must be a list"));
        QCOMPARE(results::parse(QJsonArray{QJsonArray{"a", 0, 1}}, entries),
                 QStringLiteral("must have 4 values, not 3"));
        QCOMPARE(results::parse(QJsonArray{QJsonArray{"a", 0, "b", 0}}, entries), QStringLiteral("must be a number"));
        uint64_t number = 0;
        QCOMPARE(results::parse(QJsonValue("18446744073709551616"), number), QStringLiteral("must be a whole number"));
        double real = 0;
        QCOMPARE(results::parse(QJsonValue("NaN"), real), QStringLiteral("must be a number"));
    }

private:
    /// The value that is restored from the text of a file.
    template <class T> static T restored(const T &value)
    {
        const QByteArray file = QJsonDocument(QJsonArray{results::toJson(value)}).toJson();
        T result{};
        const QString why = results::parse(QJsonDocument::fromJson(file).array().at(0), result);
        if (!why.isEmpty())
            qWarning("%s", qPrintable(why));
        return result;
    }
};

ZVT_TEST(tst_callResults)
#include "tst_callResults.moc"
