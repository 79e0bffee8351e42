#include "hlx/CReduceObjectArray.h"

#include "hlx/CRCalReduceObject.h"
#include "tests/support/Test.h"

using namespace hlx::reduce;

class tst_hlxReduce : public Test
{
    Q_OBJECT

private slots:
    void knowsTheWidthOfEachDataType_data();
    void knowsTheWidthOfEachDataType();
    void findsOrCreatesTheCalibration();
    void findsOrCreatesCorrections();
    void createsNothingUnknown();
    void theFlagIsTheFirstMember();
    void copiesAreDeep();
    void takesACorrectionFromANuc();
};

void tst_hlxReduce::knowsTheWidthOfEachDataType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<unsigned int>("width");
    const unsigned int widths[] = {1, 1, 2, 2, 4, 4, 8, 8, 4, 8, 3, 6, 1};
    for (int type = 0; type < int(std::size(widths)); ++type)
        QTest::addRow("%d", type) << type << widths[type];
    QTest::addRow("negative") << -1 << 1U;
}

void tst_hlxReduce::knowsTheWidthOfEachDataType()
{
    QFETCH(int, type);
    QFETCH(unsigned int, width);
    const SImageFormat format{640, 512, type};
    QCOMPARE(format.bytesPerPixel(), width);
    QCOMPARE(format.frameBytes(), std::size_t{640} * 512 * width);
}

void tst_hlxReduce::findsOrCreatesTheCalibration()
{
    CReduceObjectArray objects;
    QVERIFY(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, false) == nullptr);
    IReduceObject *object = objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true);
    auto *calibration = dynamic_cast<CRCalReduceObject *>(object);
    QVERIFY(calibration != nullptr);
    QCOMPARE(calibration->flag, uint8_t{0});
    QCOMPARE(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true), object);
    QCOMPARE(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), 0, false), object);
    QCOMPARE(objects.size(), std::size_t{1});
}

void tst_hlxReduce::findsOrCreatesCorrections()
{
    CReduceObjectArray objects;
    QVERIFY(objects.GetCorrection(5, false) == nullptr);
    CCorrectionReduceObject *five = objects.GetCorrection(5, true);
    CCorrectionReduceObject *two = objects.GetCorrection(2, true);
    QVERIFY(five != nullptr && two != nullptr && five != two);
    QCOMPARE(five->index(), 5);
    QCOMPARE(objects.GetCorrection(5, true), five);
    QCOMPARE(objects.GetCorrection(2, false), two);
    QCOMPARE(objects.GetObjectOfType(CCorrectionReduceObject::classTypeID(), 2, false), two);
    QCOMPARE(objects.GetObjectOfType(CCorrectionReduceObject::classTypeID(), -1, false), five);
    QCOMPARE(objects.size(), std::size_t{2});
}

void tst_hlxReduce::createsNothingUnknown()
{
    CReduceObjectArray objects;
    QVERIFY(objects.GetObjectOfType(hlx::SGuid(), -1, true) == nullptr);
    QVERIFY(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), 1, true) == nullptr);
    QVERIFY(objects.GetObjectOfType(CCorrectionReduceObject::classTypeID(), 256, true) == nullptr);
    QCOMPARE(objects.size(), std::size_t{0});
}

void tst_hlxReduce::theFlagIsTheFirstMember()
{
    CRCalReduceObject calibration;
    CCorrectionReduceObject correction;
    const auto distance = [](const void *object, const void *member) {
        return static_cast<const char *>(member) - static_cast<const char *>(object);
    };
    QCOMPARE(distance(&calibration, &calibration.flag), std::ptrdiff_t(sizeof(IReduceObject)));
    QCOMPARE(distance(&correction, &correction.flag), std::ptrdiff_t(sizeof(IReduceObject)));
}

void tst_hlxReduce::copiesAreDeep()
{
    CReduceObjectArray objects;
    objects.format = {4, 3, 2};
    objects.GetCorrection(1, true)->flag = 1;
    CReduceObjectArray copy(objects);
    QCOMPARE(copy.format.width, 4U);
    QVERIFY(copy.GetCorrection(1, false) != objects.GetCorrection(1, false));
    QCOMPARE(copy.GetCorrection(1, false)->flag, uint8_t{1});
    copy.GetCorrection(1, false)->flag = 0;
    QCOMPARE(objects.GetCorrection(1, false)->flag, uint8_t{1});
    objects = copy;
    QCOMPARE(objects.GetCorrection(1, false)->flag, uint8_t{0});
}

void tst_hlxReduce::takesACorrectionFromANuc()
{
    hlx::CNucFile file;
    file.name = "ps2";
    file.width = 2;
    file.height = 1;
    file.gains = {1.5F, 2.5F};
    CCorrectionReduceObject correction(2);
    correction.CreateFromNucFile(file);
    file.gains[0] = 9.0F;
    QCOMPARE(correction.correction().name.c_str(), "ps2");
    QCOMPARE(correction.correction().gains[0], 1.5F);
    QCOMPARE(correction.index(), 2);
}

ZVT_TEST(tst_hlxReduce)
#include "tst_hlxReduce.moc"
