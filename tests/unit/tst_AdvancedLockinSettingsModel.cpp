#include "tests/support/Test.h"
#include "tests/support/otherLocale.h"
#include "tests/unit/TabRig.h"

#include "advanced/AdvancedLockinSettingsModel.h"

#include <cmath>

namespace
{

const QStringList everyRead{"zvtGetLockinCoupling", "zvtGetLockinAlphaFilter", "zvtGetLockinEstInputFreq",
                            "zvtGetLockinSampleFreq"};
const QStringList everySignal{"selectedCouplingIndexChanged", "selectedDigitalFilterIndexChanged",
                              "estInputFrequencyChanged", "sampleRateChanged"};
const QStringList fractions{"Off", "1/2", "1/4", "1/8", "1/16", "1/32", "1/64", "1/128"};

/// Lets each read return a value that differs from those of a new model.
void scriptLockin(emulator::Gate &gate)
{
    gate.script("zvtGetLockinCoupling", 1);
    gate.script("zvtGetLockinAlphaFilter", 3);
    gate.script("zvtGetLockinEstInputFreq", 10.0);
    gate.script("zvtGetLockinSampleFreq", 1000.0);
}

/// The lock-in settings below a root, with scripted values of the camera.
struct LockinSettings : TabRig<AdvancedLockinSettingsModel> {
    explicit LockinSettings() : TabRig(QStringLiteral("everything"), &ZvtCameraModel::advancedLockinSettingsModel)
    {
        scriptLockin(gate());
        start();
    }
};

ModelUnderTest lockinModel()
{
    auto model = modelOf<AdvancedLockinSettingsModel>();
    model.prepare = [](CameraRig &rig) { scriptLockin(rig.gate()); };
    return model;
}

} // namespace

/// The lock-in settings, and the two lists of the digital filter.
class tst_AdvancedLockinSettingsModel : public Test
{
    Q_OBJECT

private slots:
    void nothingIsKnownAtFirst();
    void readsInOrder();
    void publishesInOrder();
    void unchangedValuesAreSignalled();
    void listIsCompleteWhenItIsSignalled();
    void missingSampleRateIsNormal();
    void lengthOfTheListChangesAndTheRowStays();
    void filtersInHertz_data();
    void filtersInHertz();
    void sampleRateIsSetIsANumber();

    void couplingIsWritten();
    void refusedCouplingStaysUntilTheNextRead();
    void filterOfTheCameraIsStored();
    void refusedFilterReturns();
    void filterThatCannotBeReadBackIs0();
    void filterIsWrittenAsItsRow_data();
    void filterIsWrittenAsItsRow();
    void frequencyOfTheCameraIsStored();
    void frequencyThatCannotBeReadBackStays();
    void smallChangeOfTheFrequencyIsIgnored_data();
    void smallChangeOfTheFrequencyIsIgnored();
    void frequencyChangesTheListByTheNextRead();
    void visibleIsKept();

    void readsTheRealCamera();
    void rootLeavesTheModelAlone();
    void modelWithoutARootIsHarmless();
    void failingReads();
    void heldReadsOutliveTheModel();
    void secondRefreshIsDropped();
    void readsWithoutACamera();
    void randomOperator();
};

void tst_AdvancedLockinSettingsModel::nothingIsKnownAtFirst()
{
    LockinSettings lockin;
    const AdvancedLockinSettingsModel &model = lockin.model;
    QVERIFY(!model.refreshing() && !model.hasRefreshed() && !model.visible());
    QCOMPARE(model.selectedCouplingIndex(), 0);
    QCOMPARE(model.selectedDigitalFilterIndex(), 0);
    QCOMPARE(model.digitalFilterList(), QStringList());
    QCOMPARE(model.estInputFrequency(), 0.0F);
    QCOMPARE(model.sampleRate(), 0.0F);
    QCOMPARE(model.sampleRateIsSet(), 0.0F);
}

// Reading

void tst_AdvancedLockinSettingsModel::readsInOrder()
{
    LockinSettings lockin;
    QCOMPARE(lockin.read(), everyRead);
}

void tst_AdvancedLockinSettingsModel::publishesInOrder()
{
    LockinSettings lockin;
    lockin.model.refresh();
    QCOMPARE(lockin.log.take(), QStringList({"refreshingChanged", "hasRefreshedChanged"}));
    CameraRig::settle();
    QCOMPARE(lockin.log.take(), everySignal + QStringList({"hasRefreshedChanged", "refreshingChanged"}));
    QCOMPARE(lockin.model.selectedCouplingIndex(), 1);
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 3);
    QCOMPARE(lockin.model.estInputFrequency(), 10.0F);
    QCOMPARE(lockin.model.sampleRate(), 1000.0F);
    QCOMPARE(lockin.model.sampleRateIsSet(), 1.0F);
}

void tst_AdvancedLockinSettingsModel::unchangedValuesAreSignalled()
{
    LockinSettings lockin;
    lockin.read();
    QCOMPARE(lockin.refresh(), everySignal);
}

void tst_AdvancedLockinSettingsModel::listIsCompleteWhenItIsSignalled()
{
    LockinSettings lockin;
    QStringList list;
    float rate = 0.0F;
    QObject::connect(&lockin.model, &AdvancedLockinSettingsModel::sampleRateChanged, this, [&] {
        list = lockin.model.digitalFilterList();
        rate = lockin.model.sampleRate();
    });
    lockin.read();
    QCOMPARE(list.size(), 7);
    QCOMPARE(rate, 1000.0F);
}

void tst_AdvancedLockinSettingsModel::missingSampleRateIsNormal()
{
    LockinSettings lockin;
    lockin.gate().failAlways("zvtGetLockinSampleFreq");
    QCOMPARE(lockin.refresh(), everySignal);
    QCOMPARE(lockin.model.digitalFilterList(), fractions);
    QCOMPARE(lockin.model.sampleRateIsSet(), 0.0F);
    QCOMPARE(lockin.model.sampleRate(), 0.0F);
}

void tst_AdvancedLockinSettingsModel::lengthOfTheListChangesAndTheRowStays()
{
    LockinSettings lockin;
    lockin.read();
    QCOMPARE(lockin.model.digitalFilterList().size(), 7);
    QVERIFY(!lockin.model.digitalFilterList().contains("Off"));
    lockin.gate().failNext("zvtGetLockinSampleFreq");
    QCOMPARE(lockin.refresh(), everySignal);
    QCOMPARE(lockin.model.digitalFilterList(), fractions);
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 3);
    QCOMPARE(lockin.model.sampleRateIsSet(), 0.0F);
    QCOMPARE(lockin.model.sampleRate(), 1000.0F); // The last one.
    lockin.read();
    QCOMPARE(lockin.model.digitalFilterList().size(), 7);
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 3);
}

void tst_AdvancedLockinSettingsModel::filtersInHertz_data()
{
    struct Notation {
        const char *locale;
        QChar zero;
        QChar separator;
    };
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<double>("rate");
    QTest::addColumn<QStringList>("texts");
    for (const Notation &notation : {Notation{"en_US.UTF-8", u'0', u'.'}, Notation{"de_DE.UTF-8", u'0', u','},
                                     Notation{"ar_EG.UTF-8", u'\u0660', u'\u066B'}}) {
        const auto addRow = [&notation](const char *name, double rate, const QStringList &plainTexts) {
            QStringList texts = plainTexts;
            for (QString &text : texts)
                for (QChar &character : text)
                    character = character == u'.' ? notation.separator
                                                  : QChar(notation.zero.unicode() + character.digitValue());
            QTest::addRow("%s, %s", notation.locale, name) << QByteArray(notation.locale) << rate << texts;
        };
        addRow("1 kHz", 1000.0, {"26.37", "13.18", "6.59", "3.30", "1.65", "0.82", "0.41"});
        // No thousands separators. The fourth is 40691.35 if the product is one of doubles.
        addRow("12 MHz", 12345678.0,
               {"325530.84", "162765.42", "81382.71", "40691.36", "20345.68", "10172.84", "5086.42"});
        addRow("0 Hz", 0.0, {"0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00"});
    }
}

void tst_AdvancedLockinSettingsModel::filtersInHertz()
{
    QFETCH(const QByteArray, locale);
    QFETCH(const double, rate);
    QFETCH(const QStringList, texts);
    if (!hasLocale(*this, locale))
        return;
    LockinSettings lockin;
    lockin.gate().script("zvtGetLockinSampleFreq", rate);
    lockin.read();
    QCOMPARE(lockin.model.digitalFilterList(), texts);
    lockin.gate().failNext("zvtGetLockinSampleFreq");
    lockin.read();
    QCOMPARE(lockin.model.digitalFilterList(), fractions);
}

// The page uses it as a condition.
void tst_AdvancedLockinSettingsModel::sampleRateIsSetIsANumber()
{
    LockinSettings lockin;
    lockin.read();
    QCOMPARE(lockin.model.property("sampleRateIsSet"), QVariant(1.0F));
    lockin.gate().failNext("zvtGetLockinSampleFreq");
    lockin.read();
    QCOMPARE(lockin.model.property("sampleRateIsSet"), QVariant(0.0F));
}

// Writes

void tst_AdvancedLockinSettingsModel::couplingIsWritten()
{
    LockinSettings lockin;
    lockin.read();
    QCOMPARE(lockin.write("selectedCouplingIndex", 0), QStringList("zvtSetLockinCoupling 0"));
    QCOMPARE(lockin.model.selectedCouplingIndex(), 0);
    QCOMPARE(lockin.log.take(), QStringList("selectedCouplingIndexChanged"));
    QCOMPARE(lockin.write("selectedCouplingIndex", 0), QStringList());
    QCOMPARE(lockin.log.take(), QStringList());
    QCOMPARE(lockin.write("selectedCouplingIndex", -1), QStringList("zvtSetLockinCoupling 255"));
    QCOMPARE(lockin.model.selectedCouplingIndex(), -1);
}

void tst_AdvancedLockinSettingsModel::refusedCouplingStaysUntilTheNextRead()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().failAlways("zvtSetLockinCoupling");
    QCOMPARE(lockin.write("selectedCouplingIndex", 0), QStringList("zvtSetLockinCoupling 0"));
    QCOMPARE(lockin.model.selectedCouplingIndex(), 0);
    lockin.read();
    QCOMPARE(lockin.model.selectedCouplingIndex(), 1);
}

void tst_AdvancedLockinSettingsModel::filterOfTheCameraIsStored()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().script("zvtGetLockinAlphaFilter", 5);
    QCOMPARE(lockin.write("selectedDigitalFilterIndex", 6),
             QStringList({"zvtSetLockinAlphaFilter 6", "zvtGetLockinAlphaFilter"}));
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 5);
    QCOMPARE(lockin.log.take(), QStringList("selectedDigitalFilterIndexChanged"));
    QCOMPARE(lockin.write("selectedDigitalFilterIndex", 5), QStringList());
    QCOMPARE(lockin.log.take(), QStringList());
}

void tst_AdvancedLockinSettingsModel::refusedFilterReturns()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().failAlways("zvtSetLockinAlphaFilter");
    QCOMPARE(lockin.write("selectedDigitalFilterIndex", 6),
             QStringList({"zvtSetLockinAlphaFilter 6", "zvtGetLockinAlphaFilter"}));
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 3);
    QCOMPARE(lockin.log.take(), QStringList("selectedDigitalFilterIndexChanged"));
}

void tst_AdvancedLockinSettingsModel::filterThatCannotBeReadBackIs0()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().failNext("zvtGetLockinAlphaFilter");
    lockin.write("selectedDigitalFilterIndex", 6);
    QCOMPARE(lockin.model.selectedDigitalFilterIndex(), 0);
    QCOMPARE(lockin.log.take(), QStringList("selectedDigitalFilterIndexChanged"));
}

void tst_AdvancedLockinSettingsModel::filterIsWrittenAsItsRow_data()
{
    QTest::addColumn<bool>("hasSampleRate");
    QTest::newRow("in hertz") << true;
    QTest::newRow("as a fraction") << false;
}

void tst_AdvancedLockinSettingsModel::filterIsWrittenAsItsRow()
{
    QFETCH(const bool, hasSampleRate);
    LockinSettings lockin;
    if (!hasSampleRate)
        lockin.gate().failAlways("zvtGetLockinSampleFreq");
    lockin.read();
    for (int row = 0; row < lockin.model.digitalFilterList().size(); ++row) {
        lockin.gate().script("zvtGetLockinAlphaFilter", 200);
        lockin.read();
        lockin.gate().script("zvtGetLockinAlphaFilter", row);
        QCOMPARE(lockin.write("selectedDigitalFilterIndex", row).value(0),
                 QStringLiteral("zvtSetLockinAlphaFilter %1").arg(row));
        QCOMPARE(lockin.model.selectedDigitalFilterIndex(), row);
    }
}

void tst_AdvancedLockinSettingsModel::frequencyOfTheCameraIsStored()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().script("zvtGetLockinEstInputFreq", 50.0);
    QCOMPARE(lockin.write("estInputFrequency", 80.5F),
             QStringList({"zvtSetLockinEstInputFreq 80.5", "zvtGetLockinEstInputFreq"}));
    QCOMPARE(lockin.model.estInputFrequency(), 50.0F);
    QCOMPARE(lockin.log.take(), QStringList("estInputFrequencyChanged"));
}

void tst_AdvancedLockinSettingsModel::frequencyThatCannotBeReadBackStays()
{
    LockinSettings lockin;
    lockin.read();
    lockin.gate().failNext("zvtGetLockinEstInputFreq");
    QCOMPARE(lockin.write("estInputFrequency", 80.5F).size(), 2);
    QCOMPARE(lockin.model.estInputFrequency(), 10.0F);
    QCOMPARE(lockin.log.take(), QStringList("estInputFrequencyChanged"));
}

void tst_AdvancedLockinSettingsModel::smallChangeOfTheFrequencyIsIgnored_data()
{
    QTest::addColumn<float>("frequency");
    QTest::addColumn<bool>("written");
    constexpr float tolerance = 0.001F;
    QTest::newRow("the same") << 0.0F << false;
    QTest::newRow("slightly more") << tolerance << false;
    QTest::newRow("slightly less") << -tolerance << false;
    QTest::newRow("more") << std::nextafter(tolerance, 1.0F) << true;
    QTest::newRow("less") << -std::nextafter(tolerance, 1.0F) << true;
}

void tst_AdvancedLockinSettingsModel::smallChangeOfTheFrequencyIsIgnored()
{
    QFETCH(const float, frequency);
    QFETCH(const bool, written);
    LockinSettings lockin;
    lockin.gate().script("zvtGetLockinEstInputFreq", 0.0); // The differences from 0 are exact.
    lockin.read();
    QCOMPARE(lockin.write("estInputFrequency", frequency).size(), written ? 2 : 0);
    QCOMPARE(lockin.log.take().size(), written ? 1 : 0);
    QCOMPARE(lockin.model.estInputFrequency(), 0.0F); // What the camera returns.
}

void tst_AdvancedLockinSettingsModel::frequencyChangesTheListByTheNextRead()
{
    LockinSettings lockin;
    lockin.read();
    const QStringList before = lockin.model.digitalFilterList();
    lockin.gate().failAlways("zvtGetLockinSampleFreq");
    QCOMPARE(lockin.write("estInputFrequency", 20.0F).size(), 2);
    QCOMPARE(lockin.log.take(), QStringList("estInputFrequencyChanged"));
    QCOMPARE(lockin.model.digitalFilterList(), before);
    QCOMPARE(lockin.model.sampleRateIsSet(), 1.0F);
    lockin.read();
    QCOMPARE(lockin.model.digitalFilterList(), fractions);
}

void tst_AdvancedLockinSettingsModel::visibleIsKept()
{
    LockinSettings lockin;
    QCOMPARE(lockin.write("visible", true), QStringList());
    QVERIFY(lockin.model.visible());
    QCOMPARE(lockin.log.take(), QStringList("visibleChanged"));
    QCOMPARE(lockin.write("visible", true), QStringList());
    QCOMPARE(lockin.log.take(), QStringList());
}

// The real answers

void tst_AdvancedLockinSettingsModel::readsTheRealCamera()
{
    CameraRig rig;
    ZvtCameraModel root(rig.controller(), nullptr);
    AdvancedLockinSettingsModel &model = *root.advancedLockinSettingsModel();
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.digitalFilterList(), fractions);
    // The camera takes other numbers than these.
    model.setSelectedDigitalFilterIndex(200);
    QCOMPARE(model.selectedDigitalFilterIndex(), 7);
    model.setEstInputFrequency(1e6F);
    QCOMPARE(qRound(model.estInputFrequency()), 50); // Half of the frame rate.
    QVERIFY(rig.camera().otherClient().set("lockin.inputFrequency", 45.0));
    model.refresh();
    CameraRig::settle();
    QCOMPARE(qRound(model.sampleRate()), 100);
    QCOMPARE(model.digitalFilterList().size(), 7);
    QCOMPARE(model.selectedDigitalFilterIndex(), 7); // A row that the list does not have.
    model.setEstInputFrequency(20.0F);
    QCOMPARE(model.estInputFrequency(), 20.0F);
    model.refresh();
    CameraRig::settle();
    QCOMPARE(model.digitalFilterList(), fractions);
}

void tst_AdvancedLockinSettingsModel::rootLeavesTheModelAlone()
{
    LockinSettings lockin;
    lockin.model.setVisible(true);
    lockin.log.take();
    const size_t since = lockin.gate().mark();
    lockin.root.refreshAllVisible();
    CameraRig::settle();
    QCOMPARE(lockin.calls(since, false).filter("Lockin"), QStringList());
    QCOMPARE(lockin.log.take(), QStringList());
}

void tst_AdvancedLockinSettingsModel::modelWithoutARootIsHarmless()
{
    AdvancedLockinSettingsModel orphan(nullptr);
    orphan.refresh();
    CameraRig::settle();
    QVERIFY(orphan.hasRefreshed());
    QCOMPARE(orphan.digitalFilterList(), fractions);
    orphan.setSelectedDigitalFilterIndex(5);
    orphan.setEstInputFrequency(5.0F);
    QCOMPARE(orphan.selectedDigitalFilterIndex(), 0);
    QCOMPARE(orphan.estInputFrequency(), 0.0F);
}

// The walkers

void tst_AdvancedLockinSettingsModel::failingReads()
{
    const QStringList ofRate{"sampleRate", "sampleRateIsSet", "digitalFilterList"};
    walkFailingReads(lockinModel(),
                     {{"zvtGetLockinSampleFreq", {ofRate, "a camera without a sample rate fails this read", ofRate}}});
}

void tst_AdvancedLockinSettingsModel::heldReadsOutliveTheModel() { walkHeldDeletion(lockinModel()); }

void tst_AdvancedLockinSettingsModel::secondRefreshIsDropped() { walkSecondRefresh(lockinModel()); }

void tst_AdvancedLockinSettingsModel::readsWithoutACamera()
{
    walkNoCamera(modelOf<AdvancedLockinSettingsModel>(), {"sampleRate", "sampleRateIsSet", "digitalFilterList"});
}

void tst_AdvancedLockinSettingsModel::randomOperator()
{
    walkRandomOperator(modelOf<AdvancedLockinSettingsModel>(), 84);
}

ZVT_TEST(tst_AdvancedLockinSettingsModel)
#include "tst_AdvancedLockinSettingsModel.moc"
