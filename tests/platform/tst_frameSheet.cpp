#include "platform/emulator/Profile.h"
#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QImage>
#include <QTemporaryDir>

/// The program that writes a picture of the frames of all cameras.
class tst_frameSheet : public Test
{
    Q_OBJECT

private slots:
    void everyCameraWithFramesHasARow();
    void itNeedsAFile();

private:
    static Program::Result run(const QStringList &arguments)
    {
        return Program::run(arguments, Program::folder() + QStringLiteral("/zvtsheet"));
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

void tst_frameSheet::itNeedsAFile()
{
    const Program::Result result = run({});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.errors, QStringLiteral("usage: zvtsheet FILE\n"));
}

ZVT_TEST(tst_frameSheet)
#include "tst_frameSheet.moc"
