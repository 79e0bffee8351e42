import QtQuick
import QtQuick.Layouts
import zvt
import zvt.look
import zvt.rows

// The body of the AGC ROI Settings section. The region in the picture and the fields, and the switch below them, are
// copies that the operator edits. They stay until they are applied, until Esc discards them, or until the next read.
SectionBody {
    id: settings

    readonly property bool _hasRefreshed: camera ? camera.agcRoiSettings.hasRefreshed : false
    readonly property bool _enabled: camera ? camera.agcRoiSettings.enableAgcRoi : false
    readonly property bool _unsaved: camera ? camera.agcRoiSettings.windowSizeHasUnsavedValues : false
    // The size of the window that contains the region.
    readonly property int _mostWidth: camera ? camera.agcRoiSettings.windowMaxSize.width : -1
    readonly property int _mostHeight: camera ? camera.agcRoiSettings.windowMaxSize.height : -1
    readonly property bool _acceptable: widthField.acceptable && heightField.acceptable
                                        && xField.acceptable && yField.acceptable
    // What the switch shows.
    property bool _shows

    function _setUnsaved(unsaved: bool) {
        if (camera)
            camera.agcRoiSettings.windowSizeHasUnsavedValues = unsaved
    }

    function _edit(x: int, y: int, width: int, height: int) {
        picture.window = Qt.rect(x, y, width, height)
    }

    // Shows the camera's values again.
    function _discard() {
        if (!camera)
            return
        picture.window = camera.agcRoiSettings.window
        for (const field of [widthField, heightField, xField, yField])
            field.revert()
        _shows = camera.agcRoiSettings.showWhenEnabled
        _setUnsaved(false)
    }

    function _apply() {
        camera.agcRoiSettings.window = picture.window
        camera.agcRoiSettings.showWhenEnabled = _shows
        _setUnsaved(false)
    }

    // A refused region stays in the picture until the next read.
    on_HasRefreshedChanged: {
        if (_hasRefreshed)
            _discard()
    }
    Component.onCompleted: _discard()
    Keys.onEscapePressed: event => {
        event.accepted = _unsaved
        if (_unsaved)
            _discard()
    }

    Connections {
        target: settings.camera ? settings.camera.agcRoiSettings : null
        function onWindowChanged() {
            picture.window = settings.camera.agcRoiSettings.window
        }
        function onShowWhenEnabledChanged() {
            settings._shows = settings.camera.agcRoiSettings.showWhenEnabled
        }
    }

    component Field: WindowNumber {
        property int value

        // A region that was not read is empty.
        modelText: picture.window.width > 0 ? value : ""
        //: Tool tip of a field; %1 and %2 are numbers of pixels
        toolTip: to < from ? "" : qsTr("Between %1 and %2").arg(from).arg(to)
        // The window may have become smaller than the region.
        marked: modelText !== "" && !acceptable
        onEdited: settings._setUnsaved(true)
    }

    RowGroup {
        Toggle {
            //: A switch: the automatic gain control (AGC) works on a region of interest (ROI)
            text: qsTr("Enable AGC ROI")
            checked: settings._enabled
            onToggled: settings.camera.agcRoiSettings.enableAgcRoi = checked
        }

        RowLayout {
            spacing: 2 * Look.margin
            Layout.fillWidth: true

            WindowPicture {
                id: picture

                Layout.preferredWidth: 160
                Layout.preferredHeight: 128
                Layout.alignment: Qt.AlignTop
                enabled: settings._enabled
                opacity: settings._enabled ? 1.0 : 0.3
                //: Accessible name of a picture: the region of interest (ROI) of the automatic gain control (AGC)
                Accessible.name: qsTr("AGC ROI")
                minSize: settings.camera ? settings.camera.agcRoiSettings.windowMinSize : Qt.size(1, 1)
                maxSize: settings.camera ? settings.camera.agcRoiSettings.windowMaxSize : Qt.size(0, 0)
                fullSize: settings.camera ? settings.camera.agcRoiSettings.fpaSize : Qt.size(0, 0)
                isSubWindow: true
                subWindowPosition: settings.camera ? settings.camera.agcRoiSettings.subWindowPosition : Qt.point(0, 0)
                onWindowChanged: settings._setUnsaved(true)
            }

            RowGroup {
                Layout.alignment: Qt.AlignTop

                Field {
                    id: widthField

                    //: Of the region of the automatic gain control
                    heading: qsTr("Width:")
                    value: picture.window.width
                    from: 1
                    to: settings._mostWidth
                    onTyped: number => settings._edit(picture.window.x, picture.window.y,
                                                      number, picture.window.height)
                }

                Field {
                    id: heightField

                    //: Of the region of the automatic gain control
                    heading: qsTr("Height:")
                    value: picture.window.height
                    from: 1
                    to: settings._mostHeight
                    onTyped: number => settings._edit(picture.window.x, picture.window.y,
                                                      picture.window.width, number)
                }

                Field {
                    id: xField

                    //: Of the region of the automatic gain control
                    heading: qsTr("X Offset:")
                    value: picture.window.x
                    to: settings._mostWidth
                    onTyped: number => settings._edit(number, picture.window.y,
                                                      picture.window.width, picture.window.height)
                }

                Field {
                    id: yField

                    //: Of the region of the automatic gain control
                    heading: qsTr("Y Offset:")
                    value: picture.window.y
                    to: settings._mostHeight
                    onTyped: number => settings._edit(picture.window.x, number,
                                                      picture.window.width, picture.window.height)
                }

                Toggle {
                    //: A switch: the overlay shows the region of the automatic gain control while it is in use
                    text: qsTr("Show When Enabled")
                    checked: settings._shows
                    onToggled: {
                        settings._shows = checked
                        settings._setUnsaved(true)
                    }
                }

                WrappingButton {
                    Layout.preferredWidth: 72
                    primary: settings._unsaved
                    enabled: settings._unsaved && settings._acceptable
                    //: Sends the region of the automatic gain control to the camera
                    text: qsTr("Apply")
                    onClicked: settings._apply()
                }
            }
        }
    }
}
