#include "platform/emulator/Profile.h"
#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QImage>
#include <QTemporaryDir>

/// The programs that write a picture of the frames of all cameras, and of what a video output shows.
class tst_frameSheet : public Test
{
    Q_OBJECT

private slots:
    void everyCameraWithFramesHasARow();
    void eachSettingOfTheVideoHasAPicture();
    void theyNeedAFile();

private:
    static Program::Result run(const QStringList &arguments, const QString &program = QStringLiteral("zvtsheet"))
    {
        return Program::run(arguments, Program::folder() + '/' + program);
    }
};

void tst_frameSheet::everyCameraWithFramesHasARow()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("frames.png"));
    const Program::Result result = run({file});
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    QCOMPARE(result.output, "edge-values has no frames\n" + file + '\n');
    QCOMPARE(result.errors, QString());
    // Four patterns of 320x256 pixels for each of the other profiles, with texts and gaps.
    const int rows = static_cast<int>(emulator::Profile::names().size()) - 1;
    QCOMPARE(QImage(file).size(), QSize(8 + 4 * 328, 8 + rows * 304));
}

void tst_frameSheet::eachSettingOfTheVideoHasAPicture()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("video.png"));
    const Program::Result result = run({file}, QStringLiteral("zvtvideosheet"));
    QVERIFY2(result.status == 0, qPrintable(result.output + result.errors));
    QCOMPARE(result.errors, QString());
    // Four rows of three pictures.
    QCOMPARE(QImage(file).size(), QSize(8 + 3 * 648, 8 + 4 * 508));
}

void tst_frameSheet::theyNeedAFile()
{
    for (const QString &program : {QStringLiteral("zvtsheet"), QStringLiteral("zvtvideosheet")}) {
        const Program::Result result = run({}, program);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors, QStringLiteral("usage: %1 FILE\n").arg(program));
    }
}

ZVT_TEST(tst_frameSheet)
#include "tst_frameSheet.moc"
