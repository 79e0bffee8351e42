#include "tests/page/SyncSection.h"
#include "tests/support/Test.h"

/// Notes the text of a list at signals.
class ShownText : public QObject
{
    Q_OBJECT

public:
    explicit ShownText(const QQuickItem &box) : m_box(box) { }

    QStringList texts;

public slots:
    void note() { texts << m_box.property("displayText").toString(); }

private:
    const QQuickItem &m_box;
};

/// The section "Sync Settings" of the Setup page while it is used, and its layout.
class tst_SetupTabSyncUse : public Test
{
    Q_OBJECT

private slots:
    void controlInUseStaysOnDuringARead();
    void listInUseStaysOnDuringARead();
    void triggerModeKeepsItsTextWhileTheRowsChange_data();
    void triggerModeKeepsItsTextWhileTheRowsChange();
    void tabWalksInReadingOrder();
    void nothingIsClipped_data();
    void nothingIsClipped();
};

void tst_SetupTabSyncUse::controlInUseStaysOnDuringARead()
{
    SyncSection page;
    page.type("Trigger Rate (Hz)", "12");
    page.rig().gate().hold("zvtGetTriggerMode");
    QMetaObject::invokeMethod(page.sync(), "refresh");
    QVERIFY(page.rig().gate().waitHeld("zvtGetTriggerMode"));
    QVERIFY(page.enabled("Trigger Rate (Hz)"));
    QVERIFY(page.enabled("Trigger") && page.enabled("Rearm"));
    for (const QString &name : syncControls())
        if (!QStringList{"Trigger Rate (Hz)", "Trigger", "Rearm"}.contains(name))
            QVERIFY2(!page.enabled(name), qPrintable(name));
    page.rig().gate().release("*");
    page.settle();
    QCOMPARE(page.text("Trigger Rate (Hz)"), "12");
    QVERIFY(page.enabled("Trigger Mode"));
}

void tst_SetupTabSyncUse::listInUseStaysOnDuringARead()
{
    SyncSection page;
    page.click("Trigger Source");
    page.settle();
    page.rig().gate().hold("zvtGetTriggerMode");
    QMetaObject::invokeMethod(page.sync(), "refresh");
    QVERIFY(page.rig().gate().waitHeld("zvtGetTriggerMode"));
    QVERIFY(page.enabled("Trigger Source") && !page.enabled("Trigger Mode"));
    QVERIFY(page.item("Trigger Source").property("listOpen").toBool());
    page.rig().gate().release("*");
    page.settle();
    QVERIFY(page.item("Trigger Source").property("listOpen").toBool());
    page.press(Qt::Key_Escape);
}

void tst_SetupTabSyncUse::triggerModeKeepsItsTextWhileTheRowsChange_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"Free Run", "Triggered Free Run", "Triggered Sequence"})
        QTest::newRow(text) << QString::fromLatin1(text);
}

// A list with new rows selects its first row. The model signals its rows before it signals the mode.
void tst_SetupTabSyncUse::triggerModeKeepsItsTextWhileTheRowsChange()
{
    QFETCH(const QString, text);
    SyncSection page;
    page.click("General Setup");
    page.settle();
    page.choose("Trigger Mode", text);
    ShownText watched(page.item("Trigger Mode"));
    for (const char *signal : {SIGNAL(triggerModeStringsChanged()), SIGNAL(triggerModeChanged())})
        QObject::connect(page.sync(), signal, &watched, SLOT(note()));
    for (const char *mode : {"Preset Sequencing", "Superframing", "Preset Sequencing", "Single Preset"})
        page.choose("Sequencing Mode", mode);
    page.refresh();
    page.settle();
    QCOMPARE(watched.texts, QStringList(10, text));
}

void tst_SetupTabSyncUse::tabWalksInReadingOrder()
{
    SyncSection page;
    page.choose("Trigger Mode", "Triggered Sequence");
    page.item(syncControls().first()).forceActiveFocus(Qt::TabFocusReason);
    for (const QString &name : syncControls()) {
        QVERIFY2(page.item(name).hasActiveFocus(), qPrintable(name));
        page.press(Qt::Key_Tab);
    }
}

void tst_SetupTabSyncUse::nothingIsClipped_data()
{
    QTest::addColumn<QString>("profile");
    for (const char *profile : {"everything", "edge-values"})
        QTest::newRow(profile) << QString::fromLatin1(profile);
}

void tst_SetupTabSyncUse::nothingIsClipped()
{
    QFETCH(const QString, profile);
    SyncSection page(profile);
    for (const int width : {640, 900, 1240, 1600}) {
        page.page()->setWidth(width);
        page.settle();
        const QRectF place(0, 0, width, page.page()->height());
        const auto texts = PageDriver::shownTexts(*page.page());
        QVERIFY(texts.size() > 30);
        for (const QQuickItem *text : texts) {
            QVERIFY2(PageDriver::fits(*text, place), qPrintable(text->property("text").toString()));
            // No label needs two lines.
            QVERIFY2(text->height() < 40, qPrintable(text->property("text").toString()));
        }
        for (const QString &name : syncControls()) {
            const QQuickItem &item = page.item(name);
            QVERIFY2(place.contains(item.mapRectToScene(item.boundingRect())), qPrintable(name));
            if (item.inherits("QQuickTextField"))
                QVERIFY2(item.property("contentWidth").toReal() <= item.width() - 16, qPrintable(name));
        }
    }
}

ZVT_TEST(tst_SetupTabSyncUse)
#include "tst_SetupTabSyncUse.moc"
