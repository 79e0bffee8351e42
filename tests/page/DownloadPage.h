#pragma once

#include "tests/page/SsdPage.h"

#include <QTemporaryDir>

#include "platform/hlxcamui/WidgetFileDialog.h"
#include "zvt/zvtsdk.h"

/// The SSD page of a camera with a recording, which can be downloaded. The download itself is scripted, until record()
/// is called.
class DownloadPage : public SsdPage
{
public:
    explicit DownloadPage(QSize size = {900, 700}) : SsdPage({.size = size})
    {
        gate().script("controller.CanDownload", true);
        gate().script("zvtGetSsdStartFrame", 7U);
        gate().script("zvtGetSsdEndFrame", 300U);
        gate().script("zvtGetSsdSaveName", "Shot");
        gate().script("zvtGetSsdState", Complete);
        gate().script("controller.DownloadMovie", true);
        gate().script("controller.FindFrameRange", QVariantList{3, 9});
        refresh();
        poll();
    }
    ~DownloadPage()
    {
        hlx::cam::ui::WidgetFileDialog::setNextAnswer(nullptr);
        gate().release("*");
    }

    /// Records frames, at 100 Hz. Downloads then search and transfer them. Returns false if the camera does not record.
    bool record(uint frames)
    {
        gate().script("controller.DownloadMovie", {});
        gate().script("controller.FindFrameRange", {});
        const uint64_t handle = rig().camera().handle();
        const bool armed = set("link.lossPerMillion", 0) && zvtSetSsdNumFrames(handle, frames) == 0
            && zvtSetSsdPretriggerFrames(handle, 0) == 0 && zvtSsdArm(handle) == 0;
        emulator::Clock::advance(400);
        const bool triggered = zvtSsdTrigger(handle) == 0;
        emulator::Clock::advance(20 * int64_t{frames});
        uint32_t acquired = 0;
        return armed && triggered && zvtGetSsdNumFramesAcquired(handle, &acquired) == 0 && acquired == frames;
    }

    void open()
    {
        click("Download Movie");
        settle();
    }
    void chooseRange(const QString &range)
    {
        chooseRow("Range", range);
        awaitFrame();
    }
    QString file(const QString &name) const { return m_folder.filePath(name); }
    /// The operator will choose this file.
    void answerFile(const QString &name)
    {
        hlx::cam::ui::WidgetFileDialog::setNextAnswer(QUrl::fromLocalFile(file(name)));
    }
    /// Presses Save, and waits until the download has ended.
    void save(bool byKeyboard = false)
    {
        use("Save", byKeyboard);
        QVERIFY(QTest::qWaitFor([] { return !hlx::cam::ui::WidgetFileDialog::hasNextAnswer(); }));
        settle();
        QVERIFY(QTest::qWaitFor([this] { return !value("downloading").toBool(); }));
        settle();
    }
    /// The operations of downloads since `mark`.
    QStringList downloads(size_t mark)
    {
        QStringList list;
        for (const auto &call : gate().callsSince(mark))
            if (call.name == "controller.DownloadMovie" || call.name == "controller.FindFrameRange")
                list << QString::fromStdString(call.name + ' ' + call.arguments).section(u'.', 1);
        return list;
    }
    /// A download in downloads().
    QString downloadOf(const QString &name, uint first, uint last) const
    {
        return QStringLiteral("DownloadMovie \"%1\", delegate, %2, %3").arg(file(name)).arg(first).arg(last);
    }
    /// Lets the held download go on, and waits for its end. Returns whether it succeeded.
    bool finishHeld()
    {
        gate().release("*");
        const bool ended = QTest::qWaitFor([this] { return !value("downloading").toBool(); });
        settle();
        return ended && value("downloadOk").toBool();
    }
    /// Starts a download, all of the recording if not told otherwise, which is held at a call.
    void startHeld(const char *call, const QString &range = QStringLiteral("Entire Movie"))
    {
        gate().hold(call);
        open();
        chooseRange(range);
        answerFile("Shot.rqs");
        use("Save", false);
        QVERIFY(gate().waitHeld(call));
        awaitFrame();
        QVERIFY(QTest::qWaitFor([this] { return dialogTitle() == "Downloading"; }));
        awaitFrame();
    }

private:
    QTemporaryDir m_folder;
};
