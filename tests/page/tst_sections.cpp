#include "tests/support/PageDriver.h"
#include "tests/support/Test.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

/// The body of a section, which is created from its file when it is first visible, or while its page is hidden.
class tst_sections : public Test
{
    Q_OBJECT

private slots:
    void init();

    void aBodyIsCreatedWhileThePageIsHidden();
    void aPageShownWhileTheBodyLoadsHasTheBodyAtOnce_data();
    void aPageShownWhileTheBodyLoadsHasTheBodyAtOnce();

private:
    /// A section of a hidden page, with a body of its own.
    QQuickItem *makeSection(PageDriver &driver)
    {
        const QString qml
            = QStringLiteral("Section { width: 400; title: \"A\"; body: \"%1\"; camera: cameraModel; connected: true;"
                             " isShown: false; preload: true; expanded: true }");
        return qobject_cast<QQuickItem *>(driver.create(qml.arg(QUrl::fromLocalFile(m_body).toString())));
    }
    static QQuickItem *bodyOf(const QQuickItem *section) { return section->findChild<QQuickItem *>("body"); }

    QTemporaryDir m_folder;
    QString m_body;
    int m_files = 0;
};

void tst_sections::init()
{
    Test::init();
    // A new file each time, since the types of a file are loaded once.
    m_body = m_folder.filePath(QStringLiteral("Body%1.qml").arg(++m_files));
    QFile file(m_body);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("import QtQuick\nimport zvt.rows\nSectionBody { objectName: \"body\"; Item { implicitHeight: 20 } }\n");
}

void tst_sections::aBodyIsCreatedWhileThePageIsHidden()
{
    PageDriver driver;
    const QQuickItem *section = makeSection(driver);
    QVERIFY(!bodyOf(section));
    QTRY_VERIFY(bodyOf(section));
    QVERIFY(bodyOf(section)->property("connected").toBool());
    QVERIFY(!bodyOf(section)->property("isShown").toBool());
}

void tst_sections::aPageShownWhileTheBodyLoadsHasTheBodyAtOnce_data()
{
    QTest::addColumn<bool>("typesAreLoaded");
    QTest::newRow("while its types load") << false;
    QTest::newRow("after its types have been loaded") << true;
}

void tst_sections::aPageShownWhileTheBodyLoadsHasTheBodyAtOnce()
{
    QFETCH(const bool, typesAreLoaded);
    PageDriver driver;
    if (typesAreLoaded) {
        const QQuickItem *first = makeSection(driver);
        QTRY_VERIFY(bodyOf(first));
    }
    QQuickItem *section = makeSection(driver);
    QVERIFY(typesAreLoaded || !bodyOf(section));
    section->setProperty("isShown", true);
    const QQuickItem *body = bodyOf(section);
    QVERIFY(body);
    QVERIFY(body->property("connected").toBool());
    QVERIFY(body->property("isShown").toBool());
    QVERIFY(body->property("camera").value<QObject *>());
}

ZVT_TEST(tst_sections)
#include "tst_sections.moc"
