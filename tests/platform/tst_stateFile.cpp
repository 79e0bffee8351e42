#include "tests/platform/StateFixture.h"

#include <random>

using emulator::fromStateFile;
using emulator::toStateFile;

class tst_stateFile : public StateFixture
{
    Q_OBJECT

private slots:
    void init() { StateFixture::init(); }
    void cleanup() { StateFixture::cleanup(); }

    void givesBackWhatItTook_data();
    void givesBackWhatItTook();
    void isWrittenAsItIsDescribed();
    void refusesWhatIsUnsound_data() { addUnsoundContents(); }
    void refusesWhatIsUnsound();
    void refusesAFileThatIsTooLarge();
    void refusesEveryTruncation();
    void refusesEveryFlippedBit();
    void survivesRandomDamage();
    void survivesRandomContentsWithARightChecksum();
};

namespace
{

const QString profile = QStringLiteral("everything");

} // namespace

void tst_stateFile::givesBackWhatItTook_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::newRow("nothing") << QJsonObject();
    QTest::newRow("a camera's") << emulator::Camera::create(profile, QTemporaryDir().path())->snapshot();
    QTest::newRow("odd values") << QJsonObject{
        {QStringLiteral("Größe"), QJsonObject{{QStringLiteral("µ"), 0.1}, {QStringLiteral(""), QJsonValue()}}},
        {QStringLiteral("x"), QJsonObject{{QStringLiteral("y"), QString(100'000, u'€')}}}};
}

void tst_stateFile::givesBackWhatItTook()
{
    QFETCH(QJsonObject, settings);
    const auto read = fromStateFile(toStateFile(profile, settings), profile);
    QVERIFY(read);
    QCOMPARE(*read, settings);
}

void tst_stateFile::isWrittenAsItIsDescribed()
{
    using namespace Qt::StringLiterals;
    const QByteArray content = "HLX-QSF\n\1\0\0\0"_ba + "\4\0\0\0bare"_ba + "\x10\0\0\0{\"a\":{\"b\":true}}"_ba;
    QCOMPARE(toStateFile(u"bare"_s, {{u"a"_s, QJsonObject{{u"b"_s, true}}}}).toHex(' '), sealed(content).toHex(' '));
}

void tst_stateFile::refusesWhatIsUnsound()
{
    QFETCH(QByteArray, content);
    QVERIFY(!fromStateFile(content, profile));
}

void tst_stateFile::refusesAFileThatIsTooLarge()
{
    const QJsonObject huge{{QStringLiteral("x"), QJsonObject{{QStringLiteral("y"), QString(17 * 1024 * 1024, u'z')}}}};
    QVERIFY(!fromStateFile(toStateFile(profile, huge), profile));
}

void tst_stateFile::refusesEveryTruncation()
{
    const QByteArray content = otherState();
    QVERIFY(fromStateFile(content, profile));
    for (qsizetype size = 0; size < content.size(); ++size)
        QVERIFY2(!fromStateFile(content.left(size), profile), qPrintable(QString::number(size)));
}

void tst_stateFile::refusesEveryFlippedBit()
{
    QByteArray content = otherState();
    for (qsizetype bit = 0; bit < content.size() * 8; ++bit) {
        const auto flip = [&] { content[bit / 8] = static_cast<char>(content[bit / 8] ^ (1 << (bit % 8))); };
        flip();
        QVERIFY2(!fromStateFile(content, profile), qPrintable(QString::number(bit)));
        flip();
    }
    QVERIFY(fromStateFile(content, profile));
}

void tst_stateFile::survivesRandomDamage()
{
    const QByteArray sound = otherState();
    std::mt19937 random(1);
    const auto below = [&](qsizetype end) { return static_cast<qsizetype>(random() % static_cast<uint32_t>(end)); };
    for (int round = 0; round < 5000; ++round) {
        QByteArray content = sound;
        for (qsizetype n = below(20); n >= 0; --n)
            content[below(content.size())] = static_cast<char>(random());
        if (round % 2)
            content.insert(below(content.size()), QByteArray(below(50), static_cast<char>(random())));
        else
            content.remove(below(content.size()), below(50));
        QVERIFY(content == sound || !fromStateFile(content, profile));
    }
}

void tst_stateFile::survivesRandomContentsWithARightChecksum()
{
    // The checksum is valid, the lengths and the JSON are random.
    const QByteArray sound = otherState().chopped(32);
    std::mt19937 random(2);
    const auto below = [&](qsizetype end) { return static_cast<qsizetype>(random() % static_cast<uint32_t>(end)); };
    for (int round = 0; round < 5000; ++round) {
        QByteArray content = sound.left(below(sound.size() + 1));
        for (qsizetype n = below(5); n >= 0 && !content.isEmpty(); --n)
            content[below(content.size())] = static_cast<char>(random());
        if (const auto settings = fromStateFile(sealed(content), profile)) {
            m_camera->restore(*settings);
            QCOMPARE(m_camera->snapshot().keys(), m_camera->newSettings().keys());
        }
    }
}

ZVT_TEST(tst_stateFile)
#include "tst_stateFile.moc"
