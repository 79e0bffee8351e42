#include "hlxui/IControllerModelFactory.h"
#include "platform/emulator/control.h"
#include "standalone/BadInput.h"
#include "standalone/PageUser.h"
#include "standalone/PageWindow.h"
#include "standalone/Session.h"
#include "tests/host/Program.h"
#include "tests/support/Test.h"

#include <QFontDatabase>
#include <QLibrary>
#include <QQmlContext>
#include <QQuickItem>
#include <QTemporaryDir>

/// Tests how the standalone controller loads, shows and destroys the plug-in.
class tst_Session : public Test
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void fontsAreThereBeforeAWindow();
    void standalonePageKnowsItsStandaloneModel();
    void hostPageComesWithAConnectedCameraAndF5();
    void pageFillsItsWindow();
    void windowClosesUnlessTheModelForbidsIt();
    void titleTellsTheCameraAndItsConnection();
    void livesThroughManySessions();
    void missingPlugInIsRefused();

private:
    Options options() const;
    static QVariant contextValue(PageWindow &window, const char *name);

    QLibrary m_library{Program::folder() + QStringLiteral("/libhlxcamuiZVT.so")};
    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_Session::initTestCase()
{
    // Kept until the end of the process: QML keeps the addresses of the types of a library, and a library that is
    // loaded again may be at another address.
    m_library.setLoadHints(QLibrary::PreventUnloadHint);
    QVERIFY2(m_library.load(), qPrintable(m_library.errorString()));
}

void tst_Session::init()
{
    Test::init();
    m_folder = std::make_unique<QTemporaryDir>();
}

Options tst_Session::options() const
{
    Options options;
    options.plugin = m_library.fileName();
    options.profile = QStringLiteral("everything");
    options.storage = m_folder->path();
    return options;
}

QVariant tst_Session::contextValue(PageWindow &window, const char *name)
{
    return qmlContext(&window.page())->contextProperty(QString::fromLatin1(name));
}

void tst_Session::fontsAreThereBeforeAWindow()
{
    const Session session(options());
    QStringList families;
    for (int id = 0; id < 4; ++id)
        families += QFontDatabase::applicationFontFamilies(id);
    QVERIFY2(families.contains(QStringLiteral("FontAwesome")), qPrintable(families.join(u',')));
}

void tst_Session::standalonePageKnowsItsStandaloneModel()
{
    Session session(options());
    PageWindow window(session, false);
    QCOMPARE(contextValue(window, "standaloneModel").value<QObject *>(), &session.standaloneModel());
    QCOMPARE(contextValue(window, "cameraModel").value<QObject *>(), &session.cameraModel());
    QVERIFY(!contextValue(window, "refreshCameraControllerHotkey").isValid());
    QVERIFY(!session.cameraModel().property("connected").toBool());
}

void tst_Session::hostPageComesWithAConnectedCameraAndF5()
{
    Options asHost = options();
    asHost.asHost = true;
    Session session(asHost);
    PageWindow window(session, true);
    QVERIFY(session.cameraModel().property("connected").toBool());
    QVERIFY(!contextValue(window, "standaloneModel").isValid());
    uint key = 0;
    QVERIFY(QMetaObject::invokeMethod(&session.cameraModel(), "integrateModifiersIntoKey", Q_RETURN_ARG(uint, key),
                                      Q_ARG(uint, 0), Q_ARG(uint, Qt::Key_F5)));
    QCOMPARE(contextValue(window, "refreshCameraControllerHotkey").toUInt(), key);
}

void tst_Session::pageFillsItsWindow()
{
    Session session(options());
    PageWindow window(session, false);
    QCOMPARE(window.size(), QSize(900, 720));
    QCOMPARE(window.minimumSize(), QSize(640, 480));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.resize(1000, 700);
    QTRY_COMPARE(window.page().size(), QSizeF(1000, 700));
}

void tst_Session::windowClosesUnlessTheModelForbidsIt()
{
    Session session(options());
    PageWindow window(session, false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(session.cameraModel().setProperty("allowedToCloseController", false));
    window.close();
    QVERIFY(window.isVisible());
    QVERIFY(session.cameraModel().setProperty("allowedToCloseController", true));
    window.close();
    QVERIFY(!window.isVisible());
}

void tst_Session::titleTellsTheCameraAndItsConnection()
{
    Session session(options());
    PageWindow window(session, false);
    StandaloneModel &model = session.standaloneModel();
    const QString first = model.cameraName();
    QVERIFY(!first.isEmpty());
    QCOMPARE(window.title(), first + QStringLiteral(" - not connected"));
    model.connect(QStringLiteral("bare"));
    QTRY_VERIFY(model.connected());
    QVERIFY(model.cameraName() != first);
    QCOMPARE(window.title(), model.cameraName() + QStringLiteral(" - connected"));
    model.camera().disconnect();
    QTRY_COMPARE(window.title(), model.cameraName() + QStringLiteral(" - not connected"));
}

void tst_Session::livesThroughManySessions()
{
    for (int i = 0; i < 3; ++i) {
        Session session(options());
        PageWindow window(session, false);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        session.standaloneModel().connect(session.firstCamera());
        QTRY_VERIFY(session.standaloneModel().connected());
        // Destroyed with its reads in flight.
    }
    QCOMPARE(hlx::cam::ui::controllerModelFactory()->CreatorCount(), 0);
}

void tst_Session::missingPlugInIsRefused()
{
    Options strange = options();
    strange.plugin = QStringLiteral("missing.so");
    QVERIFY_EXCEPTION_THROWN(Session{strange}, BadInput);
}

ZVT_TEST(tst_Session)
#include "tst_Session.moc"
