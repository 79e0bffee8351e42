#include "tests/page/SetupPage.h"
#include "tests/support/Test.h"

/// The Setup page for keyboard and screen reader: the order of the controls and their names.
class tst_SetupTabAccessibility : public Test
{
    Q_OBJECT

private slots:
    void tabWalksInReadingOrder_data();
    void tabWalksInReadingOrder();
    void everyControlHasAName_data();
    void everyControlHasAName();

private:
    static QQuickItem *setupTab(const PageDriver &page);
    static void profiles();
};

QQuickItem *tst_SetupTabAccessibility::setupTab(const PageDriver &page)
{
    for (QQuickItem *item : page.page()->findChildren<QQuickItem *>())
        if (item->property("generalSetupExpanded").isValid())
            return item;
    return nullptr;
}

void tst_SetupTabAccessibility::profiles()
{
    QTest::addColumn<QString>("profile");
    QTest::addColumn<int>("mode");
    for (const char *profile : {"everything", "speed-moves", "discrete-fov", "low-cost", "bare"})
        QTest::newRow(profile) << profile << 0;
    QTest::newRow("superframing") << "everything" << 1;
    QTest::newRow("sequencing") << "everything" << 2;
}

void tst_SetupTabAccessibility::tabWalksInReadingOrder_data() { profiles(); }

void tst_SetupTabAccessibility::tabWalksInReadingOrder()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    SetupPage page(profile);
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
    const auto *view = setupTab(page)->property("contentItem").value<QQuickItem *>();
    page.item("General Setup").forceActiveFocus(Qt::TabFocusReason);
    QPointF last(0, 0);
    int walked = 0;
    for (; walked < 200; ++walked) {
        page.press(Qt::Key_Tab);
        const QQuickItem *item = page.window().activeFocusItem();
        if (!item || !view->isAncestorOf(item))
            break;
        const QPointF place = item->mapToScene({0, item->height() / 2});
        const bool nextInRow = qAbs(place.y() - last.y()) < 14 && place.x() > last.x();
        const bool below = place.y() > last.y() + 10;
        const bool besideEditor = place.x() > last.x() + 100;
        QVERIFY2(nextInRow || below || besideEditor,
                 qPrintable(QStringLiteral("%1 %2,%3 after %4,%5")
                                .arg(item->metaObject()->className())
                                .arg(place.x())
                                .arg(place.y())
                                .arg(last.x())
                                .arg(last.y())));
        last = place;
    }
    QVERIFY(walked > 8 && walked < 200);
}

void tst_SetupTabAccessibility::everyControlHasAName_data() { profiles(); }

void tst_SetupTabAccessibility::everyControlHasAName()
{
    QFETCH(const QString, profile);
    QFETCH(const int, mode);
    SetupPage page(profile);
    page.general()->setProperty("sequencingMode", mode);
    page.settle();
    int controls = 0;
    QList<QQuickItem *> items{setupTab(page)};
    while (!items.isEmpty()) {
        const QQuickItem *item = items.takeLast();
        items += item->childItems();
        const bool control = item->activeFocusOnTab() || item->inherits("QQuickAbstractButton");
        if (item->window() == nullptr || !item->isVisible() || !control)
            continue;
        // The text field of a combo box uses the name of the box.
        const bool ofBox = item->inherits("QQuickTextField") && PageDriver::nameOf(*item).isEmpty();
        const QString name = PageDriver::nameOf(ofBox ? *item->parentItem() : *item);
        QVERIFY2(!name.isEmpty(), item->metaObject()->className());
        // A glyph is not a name.
        QVERIFY2(!name.at(0).isNull() && name.at(0).category() != QChar::Other_PrivateUse, qPrintable(name));
        ++controls;
    }
    QVERIFY(controls > 8);
}

ZVT_TEST(tst_SetupTabAccessibility)
#include "tst_SetupTabAccessibility.moc"
