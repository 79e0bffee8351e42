#include "tests/page/VideoSection.h"
#include "tests/support/Test.h"

/// The offsets of the image in the section "Video Output Settings", typed, dragged and moved by keys.
class tst_SetupTabVideoOffsets : public Test
{
    Q_OBJECT

private slots:
    void offsetsAreUsedAtOnePositionOnly();
    void offsetsAreTypedAndApplied();
    void aTextThatIsNoOffsetIsMarked();
    void theLimitsFollowTheZoomFactor();
    void theImageIsDragged();
    void aDragRestsAtAnotherPosition();
    void theImageIsMovedByKeys();
    void anotherOffsetReplacesATypedText();
    void anInvalidOffsetIsNotApplied();
    void aReadRestoresTheCamerasOffset();
};

void tst_SetupTabVideoOffsets::offsetsAreUsedAtOnePositionOnly()
{
    VideoSection page;
    for (const auto &[position, used] : {std::pair{"Centered", false}, {"Offset", true}, {"Same As FPA", false}}) {
        page.choose("Position", position);
        for (const char *name : {"X Offset", "Y Offset", "Apply Offset"})
            QCOMPARE(page.enabled(name), used);
    }
}

void tst_SetupTabVideoOffsets::offsetsAreTypedAndApplied()
{
    VideoSection page;
    page.choose("Position", "Offset");
    QCOMPARE(page.commandsOf([&] {
        page.type("X Offset", "128");
        page.type("Y Offset", "8");
    }),
             QStringList());
    // Each acceptable text is shown at once, also one of a single key.
    QCOMPARE(page.offset(), QPoint(128, 8));
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(128, 8));
    page.type("Y Offset", "");
    page.press(Qt::Key_0);
    QCOMPARE(page.offset(), QPoint(128, 0));
    QCOMPARE(page.commandsOf([&] { page.click("Apply Offset"); }), QStringList("zvtSetVideoOffset 128, 0"));
    page.item("Apply Offset").forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(page.commandsOf([&] { page.press(Qt::Key_Return); }), QStringList("zvtSetVideoOffset 128, 0"));
}

void tst_SetupTabVideoOffsets::aTextThatIsNoOffsetIsMarked()
{
    VideoSection page;
    page.choose("Position", "Offset");
    const auto fault = [&page] { return page.item("X Offset").property("fault").toString(); };
    // Typing passes these offsets, which are shown at once.
    for (const auto &[text, why, offset] : {std::tuple{"42", "Not a multiple of 4", 4},
                                            {"644", "Not between 0 and 640", 64},
                                            {"-4", "Not between 0 and 640", 8},
                                            {"4x", "Not a number", 4},
                                            {"", "Not a number", 8},
                                            {"-", "Not a number", 8}}) {
        page.type("X Offset", "8");
        page.press(Qt::Key_A, Qt::ControlModifier);
        page.press(Qt::Key_Delete);
        page.PageDriver::type(text);
        QCOMPARE(fault(), why);
        // The text stays, and is neither stored nor sent.
        page.press(Qt::Key_Tab);
        QCOMPARE(page.text("X Offset"), text);
        QCOMPARE(fault(), why);
        QCOMPARE(page.offset(), QPoint(offset, 0));
        page.item("X Offset").forceActiveFocus(Qt::TabFocusReason);
        page.press(Qt::Key_Escape);
        QCOMPARE(fault(), "");
        QCOMPARE(page.text("X Offset"), QString::number(offset));
    }
}

void tst_SetupTabVideoOffsets::theLimitsFollowTheZoomFactor()
{
    VideoSection page;
    page.choose("Position", "Offset");
    const auto toolTip = [&page](const QString &name) { return page.item(name).property("toolTip").toString(); };
    QCOMPARE(toolTip("X Offset"), "Between 0 and 640 in increments of 4");
    QCOMPARE(toolTip("Y Offset"), "Between 0 and 208 in increments of 4");
    page.choose("Zoom Factor", "4X");
    QCOMPARE(toolTip("X Offset"), "Between -1280 and 0 in increments of 4");
    QCOMPARE(toolTip("Y Offset"), "Between -1328 and 0 in increments of 4");
    page.type("X Offset", "-1280");
    QVERIFY(!page.marked("X Offset"));
    QCOMPARE(page.offset(), QPoint(-1280, 0));
}

void tst_SetupTabVideoOffsets::theImageIsDragged()
{
    VideoSection page;
    page.choose("Position", "Offset");
    QQuickItem &editor = page.editor();
    const auto frame = editor.property("imageFrame").toRectF();
    const QPoint from = editor.mapToScene(frame.center()).toPoint();
    const QStringList commands = page.commandsOf([&] {
        QTest::mousePress(&page.window(), Qt::LeftButton, {}, from);
        QTest::mouseMove(&page.window(), from + QPoint(10, 4));
        QTest::mouseMove(&page.window(), from + QPoint(300, 200));
        QTest::mouseRelease(&page.window(), Qt::LeftButton, {}, from + QPoint(300, 200));
    });
    QCOMPARE(commands, QStringList());
    QCOMPARE(page.offset(), QPoint(640, 208));
    QCOMPARE(page.text("X Offset"), "640");
    QCOMPARE(page.commandsOf([&] { page.click("Apply Offset"); }), QStringList("zvtSetVideoOffset 640, 208"));
}

// Another client may change the position during a drag.
void tst_SetupTabVideoOffsets::aDragRestsAtAnotherPosition()
{
    VideoSection page;
    QVERIFY(page.set("video.position", 2));
    page.refresh();
    QQuickItem &editor = page.editor();
    const QPoint from = editor.mapToScene(editor.property("imageFrame").toRectF().center()).toPoint();
    const auto moveTo = [&](const QPoint &by) { QTest::mouseMove(&page.window(), from + by); };
    const auto change = [&](int position) {
        const bool set = page.set("video.position", position);
        QMetaObject::invokeMethod(page.video(), "refresh");
        page.settle();
        return set && editor.property("offsetType").toInt() == position;
    };
    const QStringList commands = page.commandsOf([&] {
        QTest::mousePress(&page.window(), Qt::LeftButton, {}, from);
        moveTo({10, 4});
        QVERIFY(page.offset() != QPoint());
        for (const int position : {1, 0}) {
            QVERIFY(change(position));
            const QPoint kept = page.offset();
            moveTo({60, 30});
            moveTo({300, 200});
            QCOMPARE(page.offset(), kept);
        }
        // The image follows the pointer again where it can be moved.
        QVERIFY(change(2));
        moveTo({299, 200});
        QCOMPARE(page.offset(), QPoint(640, 208));
        QVERIFY(change(1));
        const QPoint kept = page.offset();
        QTest::mouseRelease(&page.window(), Qt::LeftButton, {}, from);
        QCOMPARE(page.offset(), kept);
        // The drag has ended.
        QVERIFY(change(2));
        moveTo({10, 4});
        QCOMPARE(page.offset(), kept);
    });
    QCOMPARE(commands, QStringList());
}

void tst_SetupTabVideoOffsets::theImageIsMovedByKeys()
{
    VideoSection page;
    page.choose("Position", "Offset");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    page.press(Qt::Key_Down, Qt::ControlModifier);
    QCOMPARE(page.offset(), QPoint(4, 40));
    QCOMPARE(page.text("Y Offset"), "40");
    // Other positions do not use the offset.
    page.choose("Position", "Centered");
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    QCOMPARE(page.offset(), QPoint(4, 40));
}

void tst_SetupTabVideoOffsets::anotherOffsetReplacesATypedText()
{
    VideoSection page;
    page.choose("Position", "Offset");
    page.type("X Offset", "43");
    QVERIFY(page.marked("X Offset"));
    page.editor().forceActiveFocus(Qt::TabFocusReason);
    page.press(Qt::Key_Right);
    QVERIFY(!page.marked("X Offset"));
    QCOMPARE(page.text("X Offset"), QString::number(page.offset().x()));
    // A read during typing shows the camera's offset again.
    page.type("X Offset", "80");
    QMetaObject::invokeMethod(page.video(), "refresh");
    page.settle();
    QCOMPARE(page.text("X Offset"), "0");
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(0, 0));
}

void tst_SetupTabVideoOffsets::anInvalidOffsetIsNotApplied()
{
    VideoSection page;
    page.choose("Position", "Offset");
    page.type("X Offset", "640");
    QVERIFY(page.enabled("Apply Offset"));
    page.choose("Zoom Factor", "1.3X");
    QVERIFY(!page.editor().property("isValid").toBool());
    QVERIFY(!page.enabled("Apply Offset"));
    QVERIFY(page.item("X Offset").property("marked").toBool());
    QVERIFY(!page.item("Y Offset").property("marked").toBool());
    page.type("X Offset", "8");
    QVERIFY(page.enabled("Apply Offset"));
    QVERIFY(!page.item("X Offset").property("marked").toBool());
}

void tst_SetupTabVideoOffsets::aReadRestoresTheCamerasOffset()
{
    VideoSection page;
    QVERIFY(page.set("video.offset", QVariantList{12, 16}));
    page.refresh();
    page.choose("Position", "Offset");
    QCOMPARE(page.text("X Offset"), "12");
    page.type("X Offset", "100");
    page.press(Qt::Key_Return);
    page.refresh();
    QCOMPARE(page.text("X Offset"), "12");
    QCOMPARE(page.editor().property("offset").toPoint(), QPoint(12, 16));
}

ZVT_TEST(tst_SetupTabVideoOffsets)
#include "tst_SetupTabVideoOffsets.moc"
