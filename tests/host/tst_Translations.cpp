#include "tests/support/Test.h"

#include <QFile>
#include <QLibraryInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

namespace
{

/// A text of the pages as the translator receives it.
struct Message {
    QString context;
    QString source;
    QString comment;
};

QList<Message> readMessages(QIODevice *file)
{
    QList<Message> messages;
    QString context;
    QXmlStreamReader reader(file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("name"))
            context = reader.readElementText();
        else if (reader.name() == QLatin1String("message"))
            messages << Message{context, {}, {}};
        else if (reader.name() == QLatin1String("source"))
            messages.last().source = reader.readElementText();
        else if (reader.name() == QLatin1String("extracomment"))
            messages.last().comment = reader.readElementText();
    }
    return reader.hasError() ? QList<Message>() : messages;
}

} // namespace

/// Checks the texts of the pages as a translator sees them.
class tst_Translations : public Test
{
    Q_OBJECT

private slots:
    void everyTextHasACommentForItsTranslator();
};

void tst_Translations::everyTextHasACommentForItsTranslator()
{
    const QTemporaryDir folder;
    const QString texts = folder.filePath(QStringLiteral("texts.ts"));
    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(ZVT_SOURCE_DIR));
    lupdate.start(QLibraryInfo::path(QLibraryInfo::BinariesPath) + "/lupdate",
                  {"zvt", "parts", "-extensions", "qml", "-ts", texts});
    QVERIFY2(lupdate.waitForFinished(), qPrintable(lupdate.errorString()));
    QVERIFY2(lupdate.exitStatus() == QProcess::NormalExit && lupdate.exitCode() == 0,
             lupdate.readAllStandardError().constData());

    QFile file(texts);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<Message> messages = readMessages(&file);
    QVERIFY(messages.size() > 200);
    QStringList bare;
    for (const Message &message : messages)
        if (message.comment.trimmed().isEmpty())
            bare << message.context + ": " + message.source;
    QVERIFY2(bare.isEmpty(), qPrintable(bare.join(u'\n')));
}

ZVT_TEST(tst_Translations)
#include "tst_Translations.moc"
