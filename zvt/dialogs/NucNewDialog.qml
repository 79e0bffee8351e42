import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import com.kestrin.hlx.cam.ui.zvt 1.0
import zvt
import zvt.dialogs
import zvt.look
import zvt.rows

// The wizard that makes a correction for the preset of `camera.nucProcess`. It emits accepted() after the operator has
// accepted the correction, which is then in use and still has to be saved as `nucName`. The wizard is not modal: while
// it is open and the camera connected, it forbids the host to close, and the main page must be blocked as `pageBlocked`
// says.
//
// If the camera disconnects during a run, the run goes on in the camera. The wizard then shows this, releases the page,
// so that the camera can be connected again, and continues when it is. If it was closed meanwhile, it opens by itself.
// A run that this wizard has not started is ended, because the name for its correction is not known.
InformationDialog {
    id: dialog

    required property ZvtCameraModel camera
    // Whether the preset has a correction, and whether it has a factory calibration.
    property bool hasNuc
    property bool hasCal
    // The name under which the correction is to be saved.
    property string nucName

    readonly property var pageEnum: ({ startPage: 1, bpPage: 2, nucListPage: 3, performPage: 4, acceptPage: 5 })
    // The present page, 0 while the dialog is closed, and the pages on the way to it with itself as the last one.
    property int curPage
    property var pageIdStack: []

    readonly property bool _connected: camera ? camera.connected : false
    readonly property bool _blocking: visible && _connected
    readonly property bool _refreshing: camera ? camera.nucProcess.refreshing : false
    readonly property bool _canNext: camera ? camera.nucProcess.canNext : false
    readonly property bool _performing: curPage === pageEnum.performPage
    readonly property bool _accepting: curPage === pageEnum.acceptPage
    readonly property bool _running: camera ? camera.nucProcess.inProgress : false

    // Emitted when the main page must be blocked (true) or released (false): it is blocked while the wizard is open and
    // the camera connected.
    signal pageBlocked(blocked: bool)

    function _goTo(page: int) {
        pageIdStack = pageIdStack.concat(page)
        curPage = page
        const components = [null, startPage, badPixelPage, nucListPage, performPage, acceptPage]
        pages.push(components[page], {}, T.StackView.Immediate)
    }

    function _goBack() {
        pages.pop(T.StackView.Immediate)
        pageIdStack = pageIdStack.slice(0, -1)
        curPage = pageIdStack[pageIdStack.length - 1]
    }

    function _goToList() {
        camera.nucList.refresh()
        _goTo(pageEnum.nucListPage)
    }

    function _next() {
        if (!nextButton.enabled)
            return
        const process = camera.nucProcess
        switch (curPage) {
        case pageEnum.startPage:
            if (process.nucType === NucProcessModel.TYPE_TWO_POINT && process.detectBadPixels)
                _goTo(pageEnum.bpPage)
            else if (process.nucType === NucProcessModel.TYPE_UPDATE_OFFSET)
                _start()
            else
                _goToList()
            break
        case pageEnum.bpPage:
            _goToList()
            break
        case pageEnum.nucListPage:
            _checkName(pages.currentItem as NucListCtrl)
            break
        case pageEnum.performPage:
            process.next()
            break
        case pageEnum.acceptPage:
            process.accept()
            run.undecided = false
            accept()
            break
        }
    }

    function _checkName(list: NucListCtrl) {
        nucName = list.nucName
        if (!camera.nucList.nucNameValid(nucName))
            list.showInvalidNameErrorDialog()
        else if (camera.nucList.nucExists(nucName))
            list.showOverwritePromptDialog(camera.nucList.isFactoryNuc(nucName), "new", () => dialog._start())
        else
            _start()
    }

    function _start() {
        run.start(nucName)
        _goTo(pageEnum.performPage)
    }

    // Ends the run, or drops its result. The dialog stays open until a run that can be ended has ended. The decision
    // about a result waits for the connection.
    function _leave() {
        if (_connected && _performing) {
            camera.nucProcess.abort()
            return
        }
        if (_connected && _accepting) {
            camera.nucProcess.discard()
            run.undecided = false
        }
        reject()
    }

    function _judge() {
        run.judge()
        if (_performing && run.undecided)
            _goTo(pageEnum.acceptPage)
        else if (_performing)
            reject()
    }

    //: Title of a dialog
    title: qsTr("Perform NUC")
    modal: false
    fullWidth: 664
    // While no camera is connected, the tool bar behind it must be within reach.
    implicitHeight: _connected ? 480 : 280
    closesByEscape: false
    initialFocus: nextButton
    onAboutToShow: {
        if (run.canContinue()) {
            nucName = run.nucName
            run.restore()
            _goTo(_running ? pageEnum.performPage : pageEnum.acceptPage)
        } else if (_running && !run.undecided) {
            camera.nucProcess.abort()
            _goTo(pageEnum.performPage)
        } else {
            _goTo(pageEnum.startPage)
        }
    }
    onClosed: {
        pages.clear(T.StackView.Immediate)
        pageIdStack = []
        curPage = 0
    }
    on_BlockingChanged: {
        if (camera)
            camera.allowedToCloseController = !_blocking
        pageBlocked(_blocking)
    }
    on_ConnectedChanged: {
        if (!visible && _connected && run.canContinue())
            open()
        else if (visible && (curPage < pageEnum.performPage ? !_connected : _connected && run.isOfOtherCamera()))
            reject()
    }
    // A page that is deleted must not leave a run that the operator cannot see.
    Component.onDestruction: {
        if (!camera)
            return
        if (visible)
            camera.allowedToCloseController = true
        run.drop()
    }

    contentItem: ColumnLayout {
        spacing: Look.rowSpacing

        NoCameraConnectedRectangle {
            visible: !dialog._connected
            Layout.fillWidth: true
        }

        PlainLabel {
            visible: !dialog._connected
            Layout.fillWidth: true
            text: dialog._accepting
                  //: A message while a new correction waits for a decision
                  ? qsTr("The camera keeps the correction until it is accepted or discarded. Connect it again to decide "
                         + "here.")
                  //: A message while a correction is made
                  : qsTr("The camera goes on with the correction by itself. Connect it again to continue here.")
            wrapMode: Text.Wrap
        }

        T.StackView {
            id: pages

            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
    buttons: [
        DialogButton {
            enabled: dialog.curPage === dialog.pageEnum.bpPage || dialog.curPage === dialog.pageEnum.nucListPage
            //: Goes to the page before
            text: qsTr("Previous")
            onClicked: dialog._goBack()
        },
        DialogButton {
            text: !dialog._connected ? dialog.buttonText
                                     //: Drops a correction that has been made
                                     : dialog._accepting ? qsTr("Discard")
                                                         //: Ends the making of a correction
                                                         : dialog._performing ? qsTr("Abort")
                                                                              //: Closes a dialog and changes nothing
                                                                              : qsTr("Cancel")
            onClicked: dialog._leave()
        },
        DialogButton {
            id: nextButton

            // While another camera's run is in progress in the model, start() does nothing.
            enabled: dialog._connected
                     && (dialog._performing ? dialog._canNext : !dialog._refreshing && !dialog._running)
            primary: true
            //: Takes a correction into use that has been made
            text: dialog._accepting ? qsTr("Accept")
                                    //: Goes to the next page
                                    : qsTr("Next")
            onClicked: dialog._next()
        }
    ]

    NucRun {
        id: run

        camera: dialog.camera
    }

    Connections {
        target: dialog.camera ? dialog.camera.nucProcess : null
        function onInProgressChanged() {
            if (!dialog.camera.nucProcess.inProgress)
                dialog._judge()
        }
    }

    Component {
        id: startPage

        NucStartPage {
            camera: dialog.camera
            hasNuc: dialog.hasNuc
            hasCal: dialog.hasCal
            onConfirmed: dialog._next()
        }
    }

    Component {
        id: badPixelPage

        NucBadPixelPage {
            camera: dialog.camera
            onConfirmed: dialog._next()
        }
    }

    Component {
        id: nucListPage

        NucListCtrl {
            camera: dialog.camera
            mode: "new"
        }
    }

    Component {
        id: performPage

        NucPerformPage {
            camera: dialog.camera
            connected: dialog._connected
        }
    }

    Component {
        id: acceptPage

        NucAcceptPage {
            camera: dialog.camera
        }
    }
}
