#include "tests/platform/CorrectionFixture.h"

#include "platform/emulator/devices/Sensor.h"
#include "platform/emulator/image/Detector.h"
#include "platform/emulator/image/Statistics.h"
#include "platform/emulator/image/frame.h"
#include "platform/emulator/image/makeCorrection.h"
#include "tests/platform/writeProfile.h"

#include <QDir>

#include <algorithm>
#include <cmath>

using namespace emulator;
using namespace Qt::StringLiterals;

class tst_factoryCorrections : public CorrectionFixture
{
    Q_OBJECT

private slots:
    void init() { StateFixture::init(); }
    void cleanup() { StateFixture::cleanup(); }

    void eachFlattensItsPicture_data();
    void eachFlattensItsPicture();
    void cheapQueriesDoNotMakeThem();
    void theirTableIsMadeOnce();
    void isFactoryOnlyWithoutAFile();
    void deletedOnesStayDeleted();
    void replacedOnesStayReplaced();
    void aFileOfAnotherProcessHidesOne();
    void downloadsAreOrdinaryFiles();
    void uploadsNeverReplaceOne();
    void changedSettingsDoNotChangeThem();
    void anArrayWithoutFramesHasNone();
    void everyProfileMakesThem_data();
    void everyProfileMakesThem();

private:
    bool isFactory(const char *name)
    {
        bool factory = false;
        return zvtIsFactoryNUC(m_handle, name, &factory) == 0 && factory;
    }
};

void tst_factoryCorrections::eachFlattensItsPicture_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("milliseconds");
    QTest::addColumn<double>("celsius");
    QTest::newRow("first preset") << QByteArray("Factory 2 ms") << 2.0 << 27.0;
    QTest::newRow("second preset") << QByteArray("Factory 1 ms") << 1.0 << 27.0;
    QTest::newRow("first calibration") << QByteArray("10 to 60 °C") << 1.5 << 27.0;
    QTest::newRow("middle calibration") << QByteArray("50 to 150 °C") << 0.2 << 30.0;
    QTest::newRow("last calibration") << QByteArray("120 to 350 °C") << 0.018 << 60.0;
}

void tst_factoryCorrections::eachFlattensItsPicture()
{
    QFETCH(QByteArray, name);
    QFETCH(double, milliseconds);
    QFETCH(double, celsius);
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(m_handle, name, &info), 0);
    QCOMPARE(double(info.integrationWidth), milliseconds * 20'000);
    QCOMPARE(info.width, uint16_t(640));
    QCOMPARE(info.height, uint16_t(512));
    QCOMPARE(info.nucType, uint8_t(1));
    QCOMPARE(info.numFrames, 64U);
    // Four of five of about 490 faults that do not twinkle are in the list; the others are found.
    QVERIFY(info.totalBadPixels > 400 && info.totalBadPixels < 600);
    QCOMPARE(info.totalBadPixels, info.factoryBadPixels + info.newBadPixels);

    const auto correction = store().read(name.toStdString());
    QVERIFY(correction);
    image::Exposure exposure = image::flatField(m_camera->exposure({}), celsius);
    exposure.readout.integrationTime = milliseconds;
    exposure.detector = m_camera->device<Sensor>()->array().mapsFor(exposure.window);
    std::vector<uint16_t> raw;
    QVERIFY(image::renderFrame(exposure, raw));
    double sum = 0;
    double squares = 0;
    double rawSum = 0;
    double rawSquares = 0;
    int good = 0;
    for (size_t i = 0; i < raw.size(); ++i) {
        if (correction->table->flags[i] & image::CorrectionTable::Bad)
            continue;
        const double value = double(correction->table->gains[i]) * raw[i] + double(correction->table->offsets[i]);
        sum += value;
        squares += value * value;
        rawSum += raw[i];
        rawSquares += double(raw[i]) * raw[i];
        ++good;
    }
    const auto deviation = [good](double s, double q) { return std::sqrt(q / good - s / good * (s / good)); };
    QVERIFY2(deviation(sum, squares) * 30 < deviation(rawSum, rawSquares),
             qPrintable(u"%1 of %2"_s.arg(deviation(sum, squares)).arg(deviation(rawSum, rawSquares))));
}

void tst_factoryCorrections::cheapQueriesDoNotMakeThem()
{
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCBasicInfo(m_handle, "Factory 1 ms", &info), 0);
    QCOMPARE(info.totalBadPixels, 0U);
    QCOMPARE(info.integrationWidth, 20'000U);
    QCOMPARE(info.cameraModel, "Campion 640 C");
    zvtSNUCInfo whole{};
    QCOMPARE(zvtQueryNUCInfo(m_handle, "Factory 1 ms", &whole), 0);
    QVERIFY(whole.totalBadPixels > 0);
    QCOMPARE(zvtQueryNUCBasicInfo(m_handle, "Factory 1 ms", &info), 0);
    QCOMPARE(info.totalBadPixels, whole.totalBadPixels);
}

void tst_factoryCorrections::theirTableIsMadeOnce()
{
    const auto first = store().read("Factory 1 ms");
    const auto second = store().read("Factory 1 ms");
    QVERIFY(first && second);
    QCOMPARE(first->table, second->table);
    QVERIFY(first->info == second->info);
}

void tst_factoryCorrections::isFactoryOnlyWithoutAFile()
{
    QVERIFY(isFactory("Factory 1 ms"));
    QVERIFY(save("night"));
    bool factory = true;
    QCOMPARE(zvtIsFactoryNUC(m_handle, "night", &factory), 0);
    QVERIFY(!factory);
}

void tst_factoryCorrections::deletedOnesStayDeleted()
{
    const uint64_t before = freeSpace();
    QCOMPARE(zvtDeleteNUC(m_handle, "Factory 1 ms"), 0);
    QCOMPARE(zvtDeleteNUC(m_handle, "Factory 1 ms"), int(Refused));
    QCOMPARE(freeSpace(), before + factorySize);
    for (int round = 0; round < 2; ++round) {
        QVERIFY(zvtNUCExists(m_handle, "Factory 1 ms") != 0);
        QVERIFY(!corrections().contains(u"Factory 1 ms"_s));
        QVERIFY(!store().read("Factory 1 ms"));
        switchOn();
    }
    // The name is free.
    QVERIFY(save("night"));
    QCOMPARE(zvtRenameNUC(m_handle, "night", "Factory 1 ms"), 0);
    QVERIFY(!isFactory("Factory 1 ms"));
}

void tst_factoryCorrections::replacedOnesStayReplaced()
{
    QVERIFY(save("Factory 1 ms"));
    QVERIFY(!isFactory("Factory 1 ms"));
    QCOMPARE(corrections(), factoryNames());
    QCOMPARE(store().read("Factory 1 ms")->table->window.width, 64);
    QCOMPARE(zvtDeleteNUC(m_handle, "Factory 1 ms"), 0);
    QVERIFY(zvtNUCExists(m_handle, "Factory 1 ms") != 0);
    switchOn();
    QVERIFY(zvtNUCExists(m_handle, "Factory 1 ms") != 0);
}

void tst_factoryCorrections::aFileOfAnotherProcessHidesOne()
{
    write(pathOf("Factory 1 ms"), file());
    QVERIFY(!isFactory("Factory 1 ms"));
    QCOMPARE(corrections(), factoryNames());
    QVERIFY(QFile::remove(pathOf("Factory 1 ms")));
    QVERIFY(isFactory("Factory 1 ms"));
}

void tst_factoryCorrections::downloadsAreOrdinaryFiles()
{
    const QString local = m_folder->filePath(u"local.nuc"_s);
    QCOMPARE(zvtDownloadNUCStd(m_handle, "Factory 2 ms", qPrintable(local), {}), 0);
    QCOMPARE(contentOf(local).size(), qsizetype(factorySize));
    QCOMPARE(zvtUploadNUCStdEx(m_handle, "copy.nuc", qPrintable(local), {}), 0);
    const auto made = store().read("Factory 2 ms");
    const auto copy = store().read("copy");
    QVERIFY(made && copy);
    QVERIFY(made->info == copy->info);
    QVERIFY(made->table->gains == copy->table->gains);
    QVERIFY(made->table->flags == copy->table->flags);
    QVERIFY(!isFactory("copy"));
}

void tst_factoryCorrections::uploadsNeverReplaceOne()
{
    const QString local = m_folder->filePath(u"local.nuc"_s);
    write(local, file());
    for (const char *name : {"Factory 1 ms", "Factory 1 ms.nuc"})
        QCOMPARE(zvtUploadNUCStdEx(m_handle, name, qPrintable(local), {}), int(Refused));
    QVERIFY(isFactory("Factory 1 ms"));
    // A deleted one is no obstacle.
    QCOMPARE(zvtDeleteNUC(m_handle, "Factory 1 ms"), 0);
    QCOMPARE(zvtUploadNUCStdEx(m_handle, "Factory 1 ms.nuc", qPrintable(local), {}), 0);
    QVERIFY(!isFactory("Factory 1 ms"));
}

void tst_factoryCorrections::changedSettingsDoNotChangeThem()
{
    const auto before = store().read("Factory 1 ms")->table->offsets;
    for (const auto &[name, value] :
         std::initializer_list<std::pair<const char *, QVariant>>{{"gain.level", 2},
                                                                  {"image.reverted", true},
                                                                  {"sensor.integrationTime", 0.3},
                                                                  {"cover.state", 1},
                                                                  {"environment.ambient", 60.0},
                                                                  {"sensor.window", QVariantList{0, 0, 64, 4}}})
        QVERIFY2(set(name, value), name);
    Clock::advance(600'000);
    QVERIFY(store().read("Factory 1 ms")->table->offsets == before);
    zvtSNUCInfo info{};
    QCOMPARE(zvtQueryNUCInfo(m_handle, "Factory 1 ms", &info), 0);
    QCOMPARE(info.width, uint16_t(640));
    QVERIFY(!info.revert);
}

void tst_factoryCorrections::anArrayWithoutFramesHasNone()
{
    switchOn(u"edge-values"_s);
    // The names are those of the profile, also if no file could have them.
    QCOMPARE(corrections().size(), 2);
    QCOMPARE(freeSpace(), uint64_t(0));
    for (const QString &name : corrections()) {
        zvtSNUCInfo info{};
        const QByteArray utf8 = name.toUtf8();
        QVERIFY(isFactory(utf8));
        QCOMPARE(zvtQueryNUCBasicInfo(m_handle, utf8, &info), 0);
        QCOMPARE(info.width, uint16_t(65535));
        QCOMPARE(QByteArray(info.cameraModel, 64), QByteArray(64, 'M'));
        QCOMPARE(zvtQueryNUCInfo(m_handle, utf8, &info), int(Refused));
        QVERIFY(!store().read(name.toStdString()));
        const QString local = m_folder->filePath(u"local.nuc"_s);
        QCOMPARE(zvtDownloadNUCStd(m_handle, utf8, qPrintable(local), {}), int(Refused));
        QCOMPARE(zvtDeleteNUC(m_handle, utf8), 0);
    }
    switchOn(u"edge-values"_s);
    QCOMPARE(corrections(), QStringList());
}

void tst_factoryCorrections::everyProfileMakesThem_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"low-cost", "te-cooler", "discrete-fov", "board-6", "irig", "two-color"})
        QTest::newRow(profile) << QString::fromLatin1(profile);
}

void tst_factoryCorrections::everyProfileMakesThem()
{
    QFETCH(QString, profile);
    switchOn(profile);
    QVERIFY(!corrections().isEmpty());
    for (const QString &name : corrections()) {
        const auto correction = store().read(name.toStdString());
        QVERIFY2(correction, qPrintable(name));
        const auto bad = correction->info.totalBadPixels;
        QVERIFY2(bad * 100 < correction->table->flags.size(), qPrintable(u"%1: %2"_s.arg(name).arg(bad)));
    }
}

ZVT_TEST(tst_factoryCorrections)
#include "tst_factoryCorrections.moc"
