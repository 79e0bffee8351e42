#include "recording/convertToQdseq.h"

#include "platform/hlxfile/CalPackWriter.h"
#include "tests/unit/ConversionRig.h"

using namespace hlx::file;
using hlx::reduce::CRCalReduceObject;
using hlx::reduce::CReduceObjectArray;
using movies::Pixels;

namespace
{

hlx::CNucFile correction(const char *name)
{
    hlx::CNucFile file;
    file.name = name;
    file.width = 1;
    file.height = 1;
    file.gains = {2.0F};
    file.offsets = {3.0F};
    return file;
}

/// The names of the corrections of presets 0 to 7, with "+" if the flag is set.
QStringList correctionsOf(CReduceObjectArray &objects)
{
    QStringList names;
    for (unsigned char preset = 0; preset < 8; ++preset) {
        const auto *found = objects.GetCorrection(preset, false);
        names << (found == nullptr ? QString()
                                   : QString::fromUtf8(found->correction().name.c_str())
                          + QStringLiteral("+").repeated(found->flag));
    }
    return names;
}

/// The name of the calibration, with "+" if the flag is set; empty if there is none.
QString calibrationOf(CReduceObjectArray &objects)
{
    const auto *found
        = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, false));
    return found == nullptr
        ? QString()
        : QString::fromUtf8(found->calibration.name.c_str()) + QStringLiteral("+").repeated(found->flag);
}

} // namespace

/// Which movies are converted, and what of the movie the cal pack replaces.
class tst_ConvertToQdseq : public ConversionRig
{
    Q_OBJECT

private slots:
    void convertsEveryFrameWithItsPresetAndTime();
    void tellsTheSameOfTheCamera();
    void reportsBeforeTheFirstFrameAndAfterEachOne();
    void reportsBeforeTheOutputExists();
    void convertsWithoutADelegate();
    void convertsAMovieOfNoFrames();
    void replacesAnExistingFile();

    void refusesAMissingMovie();
    void refusesAnAbatedMovie();
    void failsIfTheOutputCannotBeCreated();

    void keepsTheObjectsWithoutACalPack();
    void failsBeforeAnyOutputIfTheCalPackCannotBeLoaded();
    void replacesOnlyTheCorrectionsOfThePack();
    void replacesTheCorrectionsOfPresetsZeroToSeven();
    void replacesTheCalibration();
    void addsWhatTheMovieLacks();

private:
    /// A movie with a calibration and corrections of presets 1, 2 and 5.
    void writeMovieWithObjects()
    {
        CReduceObjectArray objects;
        objects.format = {4, 3, 2};
        auto *calibration
            = dynamic_cast<CRCalReduceObject *>(objects.GetObjectOfType(CRCalReduceObject::classTypeID(), -1, true));
        calibration->calibration.name = "factory";
        for (const unsigned char preset : {1, 2, 5})
            objects.GetCorrection(preset, true)->CreateFromNucFile(correction("movie"));
        m_folder->writeRaw("a.rqs", 2, false, objects);
    }
    void savePack(hlx::CCalPack pack) { QVERIFY(hlx::saveCalPack(pack, hlx::fileSystem(), m_folder->path("p.cal"))); }
    /// The reduce objects of the converted movie.
    CReduceObjectArray convertedObjects() const
    {
        CReduceObjectArray objects;
        MovieReader::open(qdseqFormat, hlx::fileSystem(), m_folder->path("a.qdseq"), objects);
        return objects;
    }
};

void tst_ConvertToQdseq::convertsEveryFrameWithItsPresetAndTime()
{
    m_folder->writeRaw("a.rqs", 6);
    QCOMPARE(convert(), 1);
    const auto movie = converted();
    QVERIFY(movie != nullptr);
    QCOMPARE(movie->frames(), 6U);
    QCOMPARE(countedFrames(), 6U);
    for (int frame = 0; frame < 6; ++frame) {
        Pixels buffer{};
        MovieFrame info;
        QVERIFY(movie->readFrame(unsigned(frame), buffer.data(), info));
        QVERIFY(buffer == movies::pixels(frame));
        QCOMPARE(movies::text(info), movies::text(movies::frame(frame)));
    }
}

void tst_ConvertToQdseq::tellsTheSameOfTheCamera()
{
    m_folder->writeRaw("a.rqs", 1);
    QCOMPARE(convert(), 1);
    // Only the magic differs.
    QByteArray expected = m_folder->content("a.rqs").replace(0, 8, "HLX-QDS\n");
    movies::seal(expected);
    QCOMPARE(m_folder->content("a.qdseq"), expected);
}

void tst_ConvertToQdseq::reportsBeforeTheFirstFrameAndAfterEachOne()
{
    m_folder->writeRaw("a.rqs", 3);
    QCOMPARE(convert(), 1);
    QCOMPARE(m_calls, (Calls{{2, 0, 3}, {2, 0, 3}, {2, 1, 3}, {2, 2, 3}}));
}

void tst_ConvertToQdseq::reportsBeforeTheOutputExists()
{
    m_folder->writeRaw("a.rqs", 2);
    std::vector<bool> existed;
    QCOMPARE(convert(recorder([&](std::size_t) {
                 existed.push_back(m_folder->has("a.qdseq"));
                 return 0;
             })),
             1);
    QCOMPARE(existed, (std::vector<bool>{false, true, true}));
}

void tst_ConvertToQdseq::convertsWithoutADelegate()
{
    m_folder->writeRaw("a.rqs", 2);
    QCOMPARE(convert(Progress()), 1);
    QCOMPARE(converted()->frames(), 2U);
}

void tst_ConvertToQdseq::convertsAMovieOfNoFrames()
{
    m_folder->writeRaw("a.rqs", 0);
    QCOMPARE(convert(), 1);
    QCOMPARE(m_calls, (Calls{{2, 0, 0}}));
    QCOMPARE(converted()->frames(), 0U);
    QCOMPARE(countedFrames(), 0U);
}

void tst_ConvertToQdseq::replacesAnExistingFile()
{
    m_folder->writeRaw("a.rqs", 1);
    m_folder->store("a.qdseq", QByteArray(100'000, 'x'));
    QCOMPARE(convert(), 1);
    QCOMPARE(m_folder->content("a.qdseq").size(), m_folder->content("a.rqs").size());
}

void tst_ConvertToQdseq::refusesAMissingMovie()
{
    QCOMPARE(convert(), 0);
    m_folder->store("a.rqs", "no movie");
    QCOMPARE(convert(), 0);
    QCOMPARE(m_calls, Calls());
    QVERIFY(!m_folder->has("a.qdseq"));
}

void tst_ConvertToQdseq::refusesAnAbatedMovie()
{
    m_folder->writeRaw("a.rqs", 2, true);
    QCOMPARE(convert(), 0);
    QCOMPARE(m_calls, Calls());
    QVERIFY(!m_folder->has("a.qdseq"));
}

void tst_ConvertToQdseq::failsIfTheOutputCannotBeCreated()
{
    m_folder->writeRaw("a.rqs", 2);
    QVERIFY(QDir().mkdir(m_folder->filePath("a.qdseq")));
    QCOMPARE(convert(), 0);
    QCOMPARE(m_calls, (Calls{{2, 0, 2}}));
}

void tst_ConvertToQdseq::keepsTheObjectsWithoutACalPack()
{
    writeMovieWithObjects();
    QCOMPARE(convert(), 1);
    CReduceObjectArray objects = convertedObjects();
    QCOMPARE(objects.size(), std::size_t{4});
    QCOMPARE(calibrationOf(objects), "factory");
    QCOMPARE(correctionsOf(objects), (QStringList{"", "movie", "movie", "", "", "movie", "", ""}));
}

void tst_ConvertToQdseq::failsBeforeAnyOutputIfTheCalPackCannotBeLoaded()
{
    m_folder->writeRaw("a.rqs", 2);
    QCOMPARE(convertWith("missing.cal"), 0);
    m_folder->store("p.cal", "no pack");
    QCOMPARE(convertWith("p.cal"), 0);
    // The movie had been opened.
    QCOMPARE(m_calls, (Calls{{2, 0, 2}, {2, 0, 2}}));
    QVERIFY(!m_folder->has("a.qdseq"));
}

void tst_ConvertToQdseq::replacesOnlyTheCorrectionsOfThePack()
{
    writeMovieWithObjects();
    hlx::CCalPack pack;
    for (const unsigned char preset : {2, 5})
        *pack.nuc(preset, true) = correction("pack");
    savePack(std::move(pack));
    QCOMPARE(convertWith("p.cal"), 1);
    CReduceObjectArray objects = convertedObjects();
    QCOMPARE(objects.size(), std::size_t{4});
    QCOMPARE(correctionsOf(objects), (QStringList{"", "movie", "pack+", "", "", "pack+", "", ""}));
    QCOMPARE(objects.GetCorrection(2, false)->correction().gains[0], 2.0F);
    // A pack without a calibration leaves the movie's.
    QCOMPARE(calibrationOf(objects), "factory");
    QCOMPARE(m_calls, callsFor(2));
}

void tst_ConvertToQdseq::replacesTheCorrectionsOfPresetsZeroToSeven()
{
    m_folder->writeRaw("a.rqs", 1);
    hlx::CCalPack pack;
    QStringList expected;
    for (unsigned char preset = 0; preset < 8; ++preset) {
        *pack.nuc(preset, true) = correction(hlx::CString::FromFormat("pack %d", preset).c_str());
        expected << QStringLiteral("pack %1+").arg(preset);
    }
    savePack(std::move(pack));
    QCOMPARE(convertWith("p.cal"), 1);
    CReduceObjectArray objects = convertedObjects();
    QCOMPARE(correctionsOf(objects), expected);
}

void tst_ConvertToQdseq::replacesTheCalibration()
{
    writeMovieWithObjects();
    hlx::CCalPack pack;
    pack.cal(true)->name = "50 mm";
    pack.cal(true)->low = 250.0F;
    savePack(std::move(pack));
    QCOMPARE(convertWith("p.cal"), 1);
    CReduceObjectArray objects = convertedObjects();
    QCOMPARE(calibrationOf(objects), "50 mm+");
    QCOMPARE(correctionsOf(objects), (QStringList{"", "movie", "movie", "", "", "movie", "", ""}));
    // The raw movie itself stays as it was.
    CReduceObjectArray source;
    QVERIFY(MovieReader::open(rqsFormat, hlx::fileSystem(), m_folder->path("a.rqs"), source) != nullptr);
    QCOMPARE(calibrationOf(source), "factory");
}

void tst_ConvertToQdseq::addsWhatTheMovieLacks()
{
    CReduceObjectArray none;
    none.format = {4, 3, 2};
    m_folder->writeRaw("a.rqs", 1, false, none);
    hlx::CCalPack pack;
    pack.cal(true)->name = "50 mm";
    *pack.nuc(7, true) = correction("pack");
    savePack(std::move(pack));
    QCOMPARE(convertWith("p.cal"), 1);
    CReduceObjectArray objects = convertedObjects();
    QCOMPARE(objects.size(), std::size_t{2});
    QCOMPARE(calibrationOf(objects), "50 mm+");
    QCOMPARE(correctionsOf(objects), (QStringList{"", "", "", "", "", "", "", "pack+"}));
}

ZVT_TEST(tst_ConvertToQdseq)
#include "moc_ConversionRig.cpp"
#include "tst_ConvertToQdseq.moc"
