import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import com.kestrin.hlxcamui 1.0
import "controls"
import "dialogs"

// How the camera takes its images: a list of sections, each a list of rows. The parts that they are made of follow below.
ScrollView {
    id: page

    required property var tabModel
    required property bool selected

    property bool generalSetupExpanded: true

    // Why the window on show can not be applied, and the names of the fields in question.
    property string windowWarning
    property var windowMarks: []

    // The choice whose list is open, if any.
    property var openChoice: null

    readonly property int labelWidth: 124
    readonly property bool connected: root.safeGetConnected()
    readonly property bool onScreen: visible && (Window.window?.visible ?? false)
    readonly property var generalModel: cameraModel?.setupGeneralModel ?? null
    readonly property var capabilities: root.capabilitiesModelExists() ? cameraModel.cameraCapabilitiesModel : null

    // The sequencing modes, by the numbers of ESEQUENCING_MODE.
    readonly property bool superframing: generalModel?.sequencingMode === 1
    readonly property bool presetSequencing: generalModel?.sequencingMode === 2
    // Whether the longest rows of presets need all the room.
    readonly property bool narrow: presetSequencing && availableWidth < 700

    readonly property bool lensUnlocked: connected && (tabModel?.lensBasedControlsEnabled ?? false)
    readonly property bool ascending: tabModel?.focusEncoderHasAscendingValuesNearToFar ?? true
    readonly property bool hasFocus: capabilities?.hasFocus ?? false
    readonly property bool hasContinuousZoom: capabilities?.hasContinuousOpticalZoom ?? false
    readonly property bool hasDiscreteZoom: capabilities?.hasDiscontinuousOpticalZoom ?? false
    readonly property bool hasZoom: hasContinuousZoom || hasDiscreteZoom
    readonly property bool hasLensStates: capabilities?.hasLensStatesFunctionality ?? false
    readonly property bool hasLensControl: hasZoom || hasFocus || hasLensStates

    function refreshAllVisible() {
        if (generalSetupExpanded)
            _refreshGeneralSetup()
        clearWindowWarning()
    }

    function clearWindowWarning() {
        windowWarning = ""
        windowMarks = []
    }

    // Hands the number in the text to `take`; a text that holds none is passed over: false.
    function takeNumber(text: string, take: var): bool {
        let number = NaN
        try {
            number = Number.fromLocaleString(text)
        } catch (error) {
            return false
        }
        if (isNaN(number))
            return false
        take(number)
        return true
    }

    // The model can die before the page does.
    function localeText(number: double, decimals: int): string {
        return cameraModel?.safeConvertFloatToLocaleString(number, decimals) ?? ""
    }

    function _refreshGeneralSetup() {
        tabModel?.refresh()
        generalModel?.refresh()
        clearWindowWarning()
    }

    // Whoever walks by keyboard sees where they are. What the pointer has hold of stays below it.
    function _bringIntoView(item: var) {
        let ancestor = item?.visible ? item : null
        while (ancestor && ancestor !== sections)
            ancestor = ancestor.parent
        if (!ancestor || item.focusReason === Qt.MouseFocusReason)
            return
        const top = item.mapToItem(sections, 0, 0).y - root.rowSpacing
        const bottom = top + item.height + 2 * root.rowSpacing
        contentItem.contentY = Math.max(0, Math.min(top, Math.max(contentItem.contentY, bottom - availableHeight)))
    }

    contentWidth: availableWidth
    padding: 12
    ScrollBar.vertical.policy: contentHeight > availableHeight ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    Window.onActiveFocusItemChanged: _bringIntoView(Window.activeFocusItem)
    onOnScreenChanged: {
        if (!onScreen || !connected)
            return
        refreshAllVisible()
        forceActiveFocus()
    }
    onSelectedChanged: {
        if (selected && onScreen && connected)
            refreshAllVisible()
    }
    onConnectedChanged: {
        if (connected && onScreen)
            refreshAllVisible()
    }

    Binding {
        target: page.tabModel
        property: "visible"
        value: page.onScreen
    }

    ColumnLayout {
        id: sections

        width: page.availableWidth
        spacing: 6

        NoCameraConnectedRectangle {
            visible: !page.connected
            Layout.fillWidth: true
        }

        Section {
            //: Title of a section
            title: qsTr("General Setup")
            expanded: page.generalSetupExpanded
            loading: (page.tabModel?.refreshing ?? false) || (page.generalModel?.refreshing ?? false)
            usable: page.tabModel?.hasRefreshed ?? false
            onRefresh: page._refreshGeneralSetup()
            onToggle: page.generalSetupExpanded = !page.generalSetupExpanded

            PresetSettings {}
            LensSettings {}
            CameraSettings {}
            WindowSettings {}
        }
    }

    // The parts of sections and rows

    // A section: its header, and its rows while it is expanded. Opening it reads its models first.
    component Section: ColumnLayout {
        id: section

        required property string title
        property bool expanded
        property bool loading
        property bool usable: true
        default property alias rows: body.data

        signal refresh
        signal toggle

        spacing: 0
        Layout.fillWidth: true

        SectionSwitchableHeaderButton {
            Layout.fillWidth: true
            sectionTitle: section.title
            sectionExpanded: section.expanded
            sectionLoading: section.loading
            onClicked: {
                if (!section.expanded)
                    section.refresh()
                section.toggle()
            }
            onRefreshSection: section.refresh()
        }

        ColumnLayout {
            id: body

            visible: section.expanded
            // A read does not take away the list that somebody chooses from.
            enabled: section.usable || page.openChoice !== null
            spacing: root.rowSpacing
            Layout.fillWidth: true
            Layout.margins: 12
        }
    }

    // Rows that belong together, and show together.
    component Rows: ColumnLayout {
        spacing: root.rowSpacing
        Layout.fillWidth: true
    }

    component Heading: SubsectionHeaderLabel {
        Layout.fillWidth: true
        Layout.topMargin: 4
    }

    // What the row is about, and beside it what can be done.
    component SettingRow: RowLayout {
        id: row

        property string heading
        property string toolTip
        readonly property string name: heading.replace(":", "")
        default property alias controls: content.data

        spacing: 12
        Layout.fillWidth: true

        Label {
            Layout.preferredWidth: page.labelWidth
            Layout.minimumHeight: root.rowHeight
            Layout.alignment: Qt.AlignTop
            Accessible.ignored: true
            text: row.heading
            color: root.textColor
            horizontalAlignment: Text.AlignRight
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap

            HoverHandler {
                id: headingHover
            }

            Hint {
                visible: row.toolTip !== "" && headingHover.hovered
                text: row.toolTip
            }
        }

        RowLayout {
            id: content

            spacing: 8
            Layout.fillWidth: true
        }
    }

    component Hint: ToolTip {
        delay: 600
        palette: root.palette
        font.pixelSize: root.hintSize
    }

    component Unit: Label {
        Accessible.ignored: true
        color: root.dimTextColor
        font.pixelSize: root.hintSize
    }

    component Choice: ComboBox {
        id: choice

        property string toolTip
        // Without asking the popup, which would make it long before it is needed.
        readonly property bool listOpen: down && !pressed

        implicitHeight: root.rowHeight
        Layout.preferredWidth: 220
        opacity: enabled ? 1 : 0.6
        onListOpenChanged: {
            if (listOpen) {
                popup.palette.window = root.panelColor
                page.openChoice = choice
            } else if (page.openChoice === choice) {
                page.openChoice = null
            }
        }

        Hint {
            // A text that is longer than the box stands here in full.
            readonly property TextInput _box: choice.contentItem as TextInput
            readonly property bool _cutOff: _box.contentWidth > _box.width - _box.leftPadding - _box.rightPadding

            visible: text !== "" && choice.hovered && !choice.listOpen
            text: _cutOff ? choice.displayText + (choice.toolTip && "\n") + choice.toolTip : choice.toolTip
        }
    }

    component ChoiceRow: SettingRow {
        id: choiceRow

        property alias model: box.model
        property alias currentIndex: box.currentIndex
        property alias displayText: box.displayText

        signal activated(index: int)

        Choice {
            id: box

            Accessible.name: choiceRow.name
            toolTip: choiceRow.toolTip
            onActivated: index => choiceRow.activated(index)
        }
    }

    component Toggle: Switch {
        id: toggle

        property string toolTip

        implicitHeight: root.rowHeight
        padding: 0
        spacing: text === "" ? 0 : 8
        opacity: enabled ? 1 : 0.6
        Accessible.name: text

        Hint {
            visible: toggle.toolTip !== "" && (toggle.hovered || toggle.visualFocus)
            text: toggle.toolTip
        }
    }

    component GlyphButton: WrappingButton {
        id: glyphButton

        required property string glyph

        implicitWidth: 30
        leftPadding: 2
        rightPadding: 2
        text: glyph
        font.family: fontAwesome.name

        background: Rectangle {
            radius: 3
            color: glyphButton.hovered || glyphButton.down ? root.hoverColor : "transparent"
            border.width: glyphButton.highlighted || glyphButton.visualFocus ? 1 : 0
            border.color: root.kestrinAccentBlue
        }
    }

    // Shows what the model holds, except while something is being typed. Esc takes that back.
    component Field: TextField {
        id: field

        required property string shown
        required property string name
        property string toolTip
        property bool marked
        // Whether what was typed goes with the focus.
        property bool fleeting: true

        readonly property bool _bad: marked || (activeFocus && !acceptableInput)

        function revert() {
            text = Qt.binding(() => shown)
        }

        implicitHeight: root.rowHeight
        leftPadding: 6
        rightPadding: 6
        topPadding: 0
        bottomPadding: 0
        selectByMouse: true
        text: shown
        opacity: enabled ? 1 : 0.6
        Accessible.name: name
        Keys.onEscapePressed: event => {
            event.accepted = text !== shown
            revert()
        }
        onActiveFocusChanged: {
            if (!activeFocus && fleeting)
                revert()
            else if (activeFocus && focusReason !== Qt.MouseFocusReason)
                selectAll()
        }

        background: Rectangle {
            radius: 2
            color: field._bad ? root.errorBackColor : root.fieldColor
            border.color: field._bad ? root.errorFrameColor
                                     : field.activeFocus ? root.kestrinAccentBlue : root.fieldFrameColor
        }

        Hint {
            visible: field.toolTip !== "" && field.hovered
            text: field.toolTip
        }
    }

    // Presets

    component PresetSettings: Rows {
        Heading {
            //: Heads the rows of the presets
            text: qsTr("Sequencing Mode and Integration Settings")
        }

        ChoiceRow {
            visible: (page.generalModel?.sequencingModeStrings.length ?? 0) > 1
            //: How the presets are used in turn
            heading: qsTr("Sequencing Mode:")
            toolTip: name
            model: page.generalModel?.sequencingModeStrings ?? []
            currentIndex: page.generalModel?.sequencingModeIndex ?? -1
            onActivated: index => page.generalModel.sequencingModeIndex = index
        }

        Repeater {
            model: 4

            PresetRow {
                required property int index

                number: index
            }
        }

        ChoiceRow {
            visible: page.presetSequencing && (page.capabilities?.hasGigEPreset ?? false)
            //: Which preset's images go out over Ethernet
            heading: qsTr("GigE Preset:")
            //: The images of every preset, as far as the connection carries them
            model: ["0", "1", "2", "3", qsTr("All (Best Effort)")]
            currentIndex: page.generalModel?.gigEPreset ?? -1
            onActivated: index => page.generalModel.gigEPreset = index
        }

        ChoiceRow {
            visible: page.presetSequencing || page.superframing
            //: Which preset's images the video output shows
            heading: qsTr("Video Preset:")
            model: ["0", "1", "2", "3"]
            currentIndex: page.generalModel?.videoPreset ?? -1
            onActivated: index => page.generalModel.videoPreset = index
        }
    }

    component PresetRow: SettingRow {
        id: presetRow

        required property int number

        readonly property var preset: page.generalModel?.ps(number) ?? null
        readonly property bool calibrated: preset?.factoryCalibrationLoaded ?? false

        visible: number === 0 || (page.generalModel?.numPresets ?? 0) > 1

        SetupTabPresetNumberButton {
            presetNumber: presetRow.number
            setupGeneralModel: page.generalModel
            //: Accessible name; %1 is a number
            Accessible.name: qsTr("Preset %1").arg(presetRow.number)
        }

        DwellField {
            visible: page.presetSequencing
            number: presetRow.number
            preset: presetRow.preset
        }

        Unit {
            visible: page.presetSequencing
            //: Times: between a count and what is repeated
            text: qsTr("x")
        }

        TimeBox {
            number: presetRow.number
            preset: presetRow.preset
            editable: !presetRow.calibrated
        }

        Unit {
            Layout.preferredWidth: 18
            //: Milliseconds
            text: presetRow.calibrated ? "" : qsTr("ms")
        }

        RateControls {
            visible: !page.superframing
            //: Accessible name; %1 is the number of a preset
            name: qsTr("Frame Rate %1").arg(presetRow.number)
            //: Tool tip
            toolTip: qsTr("Frame Rate in hertz")
            showMaxOnFirstIndexText: true
            rates: presetRow.preset?.frameRates ?? []
            rateIndex: presetRow.preset?.frameRateIndex ?? -1
            rate: presetRow.preset?.frameRate ?? 0
            onIndexChosen: index => presetRow.preset.frameRateIndex = index
            onRateTyped: rate => presetRow.preset.frameRate = rate
        }

        RateControls {
            visible: page.superframing && presetRow.number === 0
            //: Accessible name: the rate of the whole superframe
            name: qsTr("Superframe Rate")
            //: Tool tip
            toolTip: qsTr("Superframe Rate in hertz")
            rates: page.generalModel?.superframeRates ?? []
            rateIndex: page.generalModel?.superframeRateIndex ?? -1
            rate: page.generalModel?.superframeRate ?? 0
            onIndexChosen: index => page.generalModel.superframeRateIndex = index
            onRateTyped: rate => page.generalModel.superframeRate = rate
        }
    }

    component DwellField: Field {
        id: dwellField

        required property int number
        required property var preset

        Layout.preferredWidth: 64
        //: Accessible name; %1 is the number of a preset
        name: qsTr("Dwell Count %1").arg(number)
        //: Tool tip: how often the sequence repeats a preset
        toolTip: qsTr("Dwell Count")
        shown: preset?.dwellCount ?? 0
        horizontalAlignment: Text.AlignRight
        validator: IntValidator {
            bottom: 0
            top: 2147483647
        }
        onEditingFinished: page.takeNumber(text, count => dwellField.preset.dwellCount = count)
    }

    // A factory calibration, or an integration time of one's own.
    component TimeBox: FrameRateComboBox {
        id: timeBox

        required property int number
        required property var preset

        Layout.preferredWidth: page.narrow ? 132 : 180
        //: Accessible name; %1 is the number of a preset
        Accessible.name: qsTr("Integration Time %1").arg(number)
        //: Tool tip
        toolTip: qsTr("Calibration Setting or Integration Time in Milliseconds")
        model: page.generalModel?.factoryCalibrationStrings ?? []
        currentIndex: preset?.activeFactoryCalibrationIndex ?? -1
        editText: page.localeText(preset?.integrationTime ?? 0, 6)
        onActivated: index => preset.activeFactoryCalibrationIndex = index
        onAccepted: page.takeNumber(currentText, milliseconds => timeBox.preset.integrationTime = milliseconds)

        Connections {
            target: timeBox.preset
            function onIntegrationTimeChanged() {
                timeBox.showFadingIntWidthUpdatedIndicator()
            }
        }
    }

    // A rate, typed or chosen, and beside it the way to the highest one.
    component RateControls: RowLayout {
        id: rateControls

        required property string name
        required property var rates
        required property int rateIndex
        required property double rate
        property alias toolTip: rateBox.toolTip
        property alias showMaxOnFirstIndexText: rateBox.showMaxOnFirstIndexText

        signal indexChosen(index: int)
        signal rateTyped(rate: double)

        spacing: 8

        FrameRateComboBox {
            id: rateBox

            Layout.preferredWidth: page.narrow ? 92 : 112
            Accessible.name: rateControls.name
            model: rateControls.rates.map(rate => page.localeText(rate, 2))
            currentIndex: rateControls.rateIndex
            editable: true
            editText: page.localeText(rateControls.rate, 2)
            onActivated: index => rateControls.indexChosen(index)
            onAccepted: page.takeNumber(currentText, number => rateControls.rateTyped(number))
        }

        Unit {
            //: Hertz
            text: qsTr("Hz")
        }

        MaxFrameRateButton {
            enabled: rateControls.rates.length > 0
            highlighted: rateControls.rateIndex === 0
            //: Accessible name; %1 tells which rate
            Accessible.name: qsTr("Maximum %1").arg(rateControls.name)
            onClicked: rateControls.indexChosen(0)
        }
    }

    // Lens

    component LensSettings: Rows {
        LensCoverRow {}

        Heading {
            visible: page.hasLensControl
            //: Heads the rows of the lens
            text: qsTr("Lens Control")
        }

        LensStatesRow {}
        FieldOfViewRow {}

        SettingRow {
            visible: page.hasFocus && (page.tabModel?.athermalizationEnabledAvailable ?? false)

            Toggle {
                //: The lens keeps its focus while the temperature changes
                text: qsTr("Enable Athermalization")
                checked: page.tabModel?.athermalizationEnabled ?? false
                onToggled: page.tabModel.athermalizationEnabled = checked
            }
        }

        ZoomRows {}
        FocusRows {}
        AutoFocusRows {}
        FocusToDistanceRows {}
    }

    component LensCoverRow: ChoiceRow {
        id: coverRow

        readonly property int coverState: page.tabModel?.selectedLensCoverStateIndex ?? 2

        visible: page.capabilities?.hasLensCover ?? false
        enabled: page.lensUnlocked
        heading: qsTr("Lens Cover:")
        //: Lens cover
        model: [qsTr("Open"), qsTr("Closed")]
        currentIndex: coverState
        //: Lens cover
        displayText: model[coverState] ?? qsTr("Unknown")
        onActivated: index => page.tabModel.selectedLensCoverStateIndex = index

        Label {
            id: unknownMark

            visible: coverRow.coverState === 2
            //: Tool tip of an exclamation mark
            Accessible.name: qsTr("The camera can not tell where the lens cover is")
            text: "\uf06a"
            font.family: fontAwesome.name
            font.pixelSize: 16
            color: root.kestrinAccentOrange

            HoverHandler {
                id: unknownHover
            }

            Hint {
                visible: unknownHover.hovered
                text: unknownMark.Accessible.name
            }
        }
    }

    component LensStatesRow: SettingRow {
        id: statesRow

        readonly property bool _modified: page.tabModel?.selectedLensStateComponentsModifiedNotSaved ?? false

        visible: page.hasLensStates
        enabled: page.lensUnlocked
        heading: qsTr("Lens States:")

        Choice {
            id: statesBox

            Accessible.name: statesRow.name
            model: page.tabModel?.lensStateNames ?? []
            currentIndex: page.tabModel?.selectedLensStateIndex ?? -1
            //: In place of the name of a lens state
            displayText: count === 0 ? qsTr("No lens states") : currentText + (statesRow._modified ? "*" : "")
            onActivated: index => {
                page.tabModel.selectedLensStateIndex = index
                page.tabModel.loadLensState(currentText)
            }
        }

        LensStateButtons {
            currentName: statesBox.currentText
            modified: statesRow._modified
        }
    }

    component LensStateButtons: RowLayout {
        id: stateButtons

        required property string currentName
        required property bool modified
        readonly property bool _any: page.tabModel?.hasAtLeastOneLensState ?? false

        spacing: 8

        GlyphButton {
            glyph: "\uf067"
            //: Tool tip
            toolTip: qsTr("Add New Lens State Using Current Settings")
            onClicked: addDialog.open()
        }

        GlyphButton {
            enabled: stateButtons._any && !stateButtons.modified
            glyph: "\uf040"
            //: Tool tip
            toolTip: qsTr("Rename Lens State")
            onClicked: {
                renameDialog.currentName = stateButtons.currentName
                renameDialog.open()
            }
        }

        GlyphButton {
            enabled: stateButtons._any
            glyph: "\uf0c7"
            //: Tool tip
            toolTip: qsTr("Save Changes To Lens State")
            onClicked: page.tabModel.saveLensState(stateButtons.currentName)
        }

        GlyphButton {
            enabled: stateButtons._any
            glyph: "\uf021"
            //: Tool tip
            toolTip: qsTr("Reload Lens State (Discard Changes)")
            onClicked: page.tabModel.loadLensState(stateButtons.currentName)
        }

        GlyphButton {
            enabled: stateButtons._any && !stateButtons.modified
            glyph: "\uf00d"
            //: Tool tip
            toolTip: qsTr("Delete Lens State")
            onClicked: {
                deleteDialog.name = stateButtons.currentName
                deleteDialog.open()
            }
        }

        AddLensStateDialog {
            id: addDialog
            tabModel: page.tabModel
        }

        RenameLensStateDialog {
            id: renameDialog
            tabModel: page.tabModel
        }

        ConfirmDeleteLensStateDialog {
            id: deleteDialog
            tabModel: page.tabModel
        }
    }

    component FieldOfViewRow: ChoiceRow {
        // The model tells of no field of view that the camera was given by somebody else; reading the property asks the
        // camera. The list of lens states is published last in a read of the lens, so that is the time to ask.
        function _read(names: var): int {
            return page.tabModel?.selectedDiscontinuousFieldOfViewIndex ?? 0
        }

        visible: page.hasDiscreteZoom
        enabled: page.lensUnlocked
        heading: qsTr("Field of View:")
        //: Field of view
        model: [qsTr("Narrow"), qsTr("Wide")]
        currentIndex: page.capabilities?.hasDiscontinuousOpticalZoom ? _read(page.tabModel?.lensStateNames) : 0
        onActivated: index => page.tabModel.selectedDiscontinuousFieldOfViewIndex = index
    }

    component ZoomRows: Rows {
        id: zoomRows

        readonly property bool _movesByPercent: page.capabilities?.hasFovMovePercent ?? false

        visible: page.hasContinuousZoom

        SettingRow {
            id: zoomRow

            heading: qsTr("Optical Zoom:")

            PositionLine {
                name: zoomRow.name
                minimum: page.tabModel?.fullRangeZoomMinimum ?? 0
                maximum: page.tabModel?.fullRangeZoomMaximum ?? 0
                position: page.tabModel?.selectedZoomPosition ?? 0
                onEntered: position => page.tabModel.selectedZoomPosition = position
            }
        }

        SettingRow {
            LensSlider {
                //: Accessible name
                Accessible.name: qsTr("Zoom Position")
                from: page.tabModel?.fullRangeZoomMinimum ?? 0
                to: page.tabModel?.fullRangeZoomMaximum ?? 0
                lensPosition: page.tabModel?.selectedZoomPosition ?? 0
                onMoved: page.tabModel.zoomMoveTo(Math.round(value))
            }
        }

        SettingRow {
            EndButton {
                //: The widest field of view
                text: qsTr("Wide")
                onClicked: page.tabModel.zoomWidest()
            }

            MoveButtons {
                visible: !zoomRows._movesByPercent
                names: [
                    //: Tool tips of the buttons that move the zoom
                    qsTr("Zoom Out Quickly"), qsTr("Zoom Out with Medium Speed"), qsTr("Zoom Out Slowly"),
                    qsTr("Zoom In Slowly"), qsTr("Zoom In with Medium Speed"), qsTr("Zoom In Quickly")
                ]
                onMove: speed => page.tabModel?.attemptMoveZoom(speed)
            }

            LensPercentSlider {
                visible: zoomRows._movesByPercent
                //: Tool tip
                toolTip: qsTr("Zoom Speed")
                onValueChanged: page.tabModel?.attemptMoveZoomPercent(value * 100)
            }

            EndButton {
                //: The narrowest field of view
                text: qsTr("Narrow")
                onClicked: page.tabModel.zoomNarrowest()
            }
        }
    }

    component FocusRows: Rows {
        id: focusRows

        readonly property bool _movesByPercent: page.capabilities?.hasFocusMovePercent ?? false

        visible: page.hasFocus

        EditNearFarPositions {
            id: nearFarDialog
            tabModel: page.tabModel
        }

        SettingRow {
            id: focusRow

            heading: qsTr("Focus:")

            PositionLine {
                name: focusRow.name
                minimum: page.tabModel?.minimumFocusPosition ?? 0
                maximum: page.tabModel?.maximumFocusPosition ?? 0
                position: page.tabModel?.selectedFocusPosition ?? 0
                onEntered: position => page.tabModel.selectedFocusPosition = position
            }

            GlyphButton {
                visible: page.hasDiscreteZoom
                enabled: page.lensUnlocked
                glyph: "\uf040"
                //: Tool tip
                toolTip: qsTr("Edit Nearest/Farthest Positions")
                onClicked: nearFarDialog.open()
            }
        }

        SettingRow {
            LensSlider {
                visible: page.hasZoom
                //: Accessible name
                Accessible.name: qsTr("Focus Position")
                from: page.tabModel?.minimumFocusPosition ?? 0
                to: page.tabModel?.maximumFocusPosition ?? 0
                lensPosition: page.tabModel?.selectedFocusPosition ?? 0
                onMoved: page.tabModel.focusMoveTo(Math.round(value))
            }

            FocusIndicator {
                visible: !page.hasZoom
                Layout.fillWidth: true
                from: page.tabModel?.minimumFocusPosition ?? 0
                to: page.tabModel?.maximumFocusPosition ?? 0
                value: page.tabModel?.selectedFocusPosition ?? 0
            }
        }

        SettingRow {
            visible: !focusRows._movesByPercent

            EndButton {
                //: End of the focus range
                text: page.ascending ? qsTr("Nearest") : qsTr("Farthest")
                onClicked: page.tabModel.focusMinimum()
            }

            MoveButtons {
                names: [
                    //: Tool tips of the buttons that move the focus
                    qsTr("Focus Closer Quickly"), qsTr("Focus Closer with Medium Speed"), qsTr("Focus Closer Slowly"),
                    qsTr("Focus Farther Slowly"), qsTr("Focus Farther with Medium Speed"), qsTr("Focus Farther Quickly")
                ]
                onMove: speed => page.tabModel?.attemptMoveFocus(speed)
            }

            EndButton {
                //: End of the focus range
                text: page.ascending ? qsTr("Farthest") : qsTr("Nearest")
                onClicked: page.tabModel.focusMaximum()
            }
        }

        FocusPercentRow {
            visible: focusRows._movesByPercent
        }
    }

    // The ends are names where the lens can not be sent there, and buttons where it can.
    component FocusPercentRow: SettingRow {
        id: percentRow

        //: End of the focus range
        readonly property string _near: qsTr("Near Focus")
        //: End of the focus range
        readonly property string _far: qsTr("Far Focus")
        readonly property string _left: page.ascending ? _near : _far
        readonly property string _right: page.ascending ? _far : _near

        Label {
            visible: !page.hasZoom
            text: percentRow._left
        }

        EndButton {
            visible: page.hasZoom
            text: percentRow._left
            onClicked: page.tabModel.focusMinimum()
        }

        LensPercentSlider {
            //: Tool tip
            toolTip: qsTr("Focus Speed")
            onValueChanged: page.tabModel?.attemptMoveFocusPercent(value * 100)
        }

        Label {
            visible: !page.hasZoom
            text: percentRow._right
        }

        EndButton {
            visible: page.hasZoom
            text: percentRow._right
            onClicked: page.tabModel.focusMaximum()
        }
    }

    component AutoFocusRows: Rows {
        visible: page.hasFocus

        SettingRow {
            WrappingButton {
                Layout.preferredWidth: 140
                enabled: page.lensUnlocked
                text: qsTr("Auto Focus")
                onClicked: page.tabModel.autoFocus()
            }
        }

        SettingRow {
            Label {
                //: Heads the rows of the region that the auto focus looks at
                text: qsTr("Auto Focus ROI Settings")
                color: root.headerTextColor
                font.weight: Font.DemiBold
            }
        }

        ChoiceRow {
            //: Side of the auto focus region
            heading: qsTr("Size (Pixels):")
            //: Side of the auto focus region
            model: [qsTr("XS (16x16)"), qsTr("S (32x32)"), qsTr("M (64x64)"), qsTr("L (128x128)"),
                    qsTr("XL (256x256)"), qsTr("XXL (512x512)")]
            currentIndex: page.tabModel?.selectedAFRoiSizeIndex ?? -1
            onActivated: index => page.tabModel.selectedAFRoiSizeIndex = index
        }

        ChoiceRow {
            //: Place of the auto focus region
            heading: qsTr("Position:")
            //: Place of the auto focus region
            model: [qsTr("Center"), qsTr("Top Left"), qsTr("Top Right"), qsTr("Bottom Left"), qsTr("Bottom Right")]
            currentIndex: page.tabModel?.selectedAFRoiPositionIndex ?? -1
            onActivated: index => page.tabModel.selectedAFRoiPositionIndex = index
        }

        ChoiceRow {
            //: Whether the auto focus region is drawn into the image
            heading: qsTr("Show on Video Output:")
            //: When the auto focus region is drawn into the image
            model: [qsTr("Always"), qsTr("Only When Focusing"), qsTr("Never")]
            currentIndex: page.tabModel?.selectedAFRoiShowWhenIndex ?? -1
            onActivated: index => page.tabModel.selectedAFRoiShowWhenIndex = index
        }
    }

    component FocusToDistanceRows: Rows {
        id: distanceRows

        readonly property real _least: page.tabModel?.distanceMinimum ?? 0
        readonly property real _most: page.tabModel?.distanceMaximum ?? 0

        function _rounded(metres: real): real {
            return Math.round(metres * 100) / 100
        }

        // Whether the field held a number.
        function _store(): bool {
            return page.takeNumber(distanceField.text, metres => page.tabModel.distanceToFocus = metres)
        }

        visible: page.capabilities?.hasFocusToDistance ?? false

        SettingRow {
            id: distanceRow

            //: How far away the lens is to focus
            heading: qsTr("Distance:")

            Field {
                id: distanceField

                Layout.preferredWidth: 88
                enabled: page.lensUnlocked
                name: distanceRow.name
                shown: page.localeText(page.tabModel?.distanceToFocus ?? 0, 2)
                horizontalAlignment: Text.AlignRight
                validator: DoubleValidator {
                    bottom: distanceRows._rounded(distanceRows._least)
                    top: distanceRows._rounded(distanceRows._most)
                    decimals: 2
                    notation: DoubleValidator.StandardNotation
                }
                // The validator mends what it can, and the lens would go where nobody sent it: 13.5 to 135.
                Keys.onReturnPressed: event => event.accepted = !acceptableInput
                Keys.onEnterPressed: event => event.accepted = !acceptableInput
                onEditingFinished: distanceRows._store()
                onAccepted: {
                    if (distanceRows._store())
                        page.tabModel.focusToDistance()
                }
            }

            Unit {
                //: Metres
                text: qsTr("m")
            }

            WrappingButton {
                Layout.preferredWidth: 140
                enabled: page.lensUnlocked && distanceField.acceptableInput
                text: qsTr("Focus To Distance")
                onClicked: page.tabModel.focusToDistance()
            }
        }

        SettingRow {
            id: rangeRow

            //: The distances that the lens can focus to
            heading: qsTr("Range:")

            Label {
                leftPadding: 6
                rightPadding: 6
                topPadding: 2
                bottomPadding: 2
                Accessible.name: rangeRow.name
                Accessible.description: text
                //: A range of distances in metres
                text: qsTr("%1m - %2m").arg(page.localeText(distanceRows._least, 2))
                                       .arg(page.localeText(distanceRows._most, 2))
                color: root.strongTextColor

                background: Rectangle {
                    radius: 2
                    color: distanceField.acceptableInput ? "transparent" : "#990000"
                }
            }
        }
    }

    // Moves the lens for as long as it is held. Whatever ends the hold ends the move; a lock that its own press brings does
    // not take the release away.
    component MoveButton: WrappingButton {
        id: moveButton

        required property int speed
        property bool held

        readonly property bool _seen: visible && page.onScreen

        signal move(speed: int)

        function _stop() {
            if (!held)
                return
            held = false
            move(0)
        }

        enabled: page.connected && (page.lensUnlocked || held)
        leftPadding: 2
        rightPadding: 2
        Accessible.name: toolTip
        onPressed: {
            held = true
            move(speed)
        }
        onReleased: _stop()
        onCanceled: _stop()
        // A button that hides, alone or with its window or page, tells nothing else.
        on_SeenChanged: _stop()
        Component.onDestruction: _stop()
        // A keyboard that repeats the key would stop and start the move again and again.
        Keys.onPressed: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space
        Keys.onReleased: event => event.accepted = event.isAutoRepeat && event.key === Qt.Key_Space

        // Nor does the page scroll away from below the pointer.
        Binding {
            target: page.contentItem
            property: "interactive"
            value: false
            when: moveButton.held
        }
    }

    component MoveButtons: RowLayout {
        id: moveButtons

        // What each of the six does, from the fastest one way to the fastest the other way.
        required property var names

        readonly property int _slow: page.tabModel?.slowSpeedStep ?? 0
        readonly property int _medium: page.tabModel?.mediumSpeedStep ?? 0
        readonly property int _fast: page.tabModel?.fastSpeedStep ?? 0
        readonly property var _speeds: [-_fast, -_medium, -_slow, _slow, _medium, _fast]

        signal move(speed: int)

        spacing: 4
        Layout.fillWidth: true

        Repeater {
            model: ["< < <", "< <", "<", ">", "> >", "> > >"]

            MoveButton {
                required property int index
                required property string modelData

                Layout.fillWidth: true
                Layout.preferredWidth: 44
                Layout.leftMargin: index === 3 ? 12 : 0
                text: modelData
                toolTip: moveButtons.names[index]
                speed: moveButtons._speeds[index]
                onMove: speed => moveButtons.move(speed)
            }
        }
    }

    // Runs the lens to its end.
    component EndButton: WrappingButton {
        Layout.fillWidth: true
        Layout.preferredWidth: 66
        Layout.maximumWidth: 120
        leftPadding: 4
        rightPadding: 4
        enabled: page.lensUnlocked
    }

    component LensPercentSlider: PercentSlider {
        Layout.fillWidth: true
        enabled: page.lensUnlocked
    }

    component LensSlider: Slider {
        required property real lensPosition

        implicitHeight: root.rowHeight
        Layout.fillWidth: true
        enabled: page.lensUnlocked
        opacity: enabled ? 1 : 0.6
        stepSize: 1
        snapMode: Slider.NoSnap
        wheelEnabled: false
        // A slider cuts a value to its limits once, when it is given; the limits may come later.
        value: Math.max(from, Math.min(to, lensPosition))
    }

    // "minimum / current / maximum". A click on the current position lets it be typed; the lens is locked meanwhile.
    component PositionLine: RowLayout {
        id: line

        required property string name
        required property real minimum
        required property real maximum
        required property real position
        property bool editing

        readonly property bool _mayEdit: visible && page.onScreen && page.connected

        signal entered(position: real)

        spacing: 6
        on_MayEditChanged: {
            if (!_mayEdit)
                editing = false
        }
        onEditingChanged: {
            if (page.tabModel)
                page.tabModel.lensBasedControlsEnabled = !editing
        }
        // The lens outlives the page.
        Component.onDestruction: editing = false

        Label {
            text: line.minimum + " /"
        }

        WrappingButton {
            id: current

            visible: !line.editing
            enabled: page.lensUnlocked
            // Room for the longest, so that nothing jumps while the lens moves.
            implicitWidth: Math.ceil(Math.max(longest.advanceWidth, implicitContentWidth)) + leftPadding + rightPadding
            leftPadding: 6
            rightPadding: 6
            text: line.position
            //: Tool tip of a position
            toolTip: qsTr("Click to enter a position")
            Accessible.name: line.name
            onClicked: {
                line.editing = true
                editor.begin()
            }

            TextMetrics {
                id: longest
                font: current.font
                text: line.maximum
            }

            background: Rectangle {
                radius: 2
                color: current.hovered ? root.hoverColor : "transparent"
                border.color: current.visualFocus ? root.kestrinAccentBlue
                                                  : current.hovered ? root.fieldFrameColor : root.rectangleOutlineColor
            }
        }

        PositionEditor {
            id: editor

            visible: line.editing
            name: line.name
            minimum: line.minimum
            maximum: line.maximum
            position: line.position
            onAccepted: text => {
                // The lock is given back first, since the move that follows takes it.
                line.editing = false
                page.takeNumber(text, position => line.entered(position))
            }
            onCanceled: line.editing = false
        }

        Label {
            text: "/ " + line.maximum
        }
    }

    component PositionEditor: RowLayout {
        id: positionEditor

        required property string name
        required property real minimum
        required property real maximum
        required property real position

        signal accepted(text: string)
        signal canceled

        function begin() {
            field.revert()
            field.forceActiveFocus(Qt.OtherFocusReason)
        }

        spacing: 6

        Field {
            id: field

            Layout.preferredWidth: 92
            fleeting: false
            name: positionEditor.name
            shown: positionEditor.position
            validator: IntValidator {
                bottom: positionEditor.minimum
                top: positionEditor.maximum
            }
            Keys.onEscapePressed: event => {
                event.accepted = true
                positionEditor.canceled()
            }
            onAccepted: positionEditor.accepted(text)
        }

        GlyphButton {
            enabled: field.acceptableInput
            glyph: "\uf00c"
            //: Tool tip: takes what was typed
            toolTip: qsTr("Apply")
            onClicked: positionEditor.accepted(field.text)
        }

        GlyphButton {
            glyph: "\uf00d"
            //: Tool tip: forgets what was typed
            toolTip: qsTr("Cancel")
            onClicked: positionEditor.canceled()
        }
    }

    // Settings of the camera as a whole

    component CameraSettings: Rows {
        Rectangle {
            visible: page.hasLensControl
            Layout.fillWidth: true
            implicitHeight: 1
            color: root.rectangleOutlineColor
        }

        ChoiceRow {
            visible: page.capabilities?.hasFPAGain ?? false
            //: Gain of the detector
            heading: qsTr("FPA Gain:")
            model: page.tabModel?.fpaGainLevels ?? []
            currentIndex: page.tabModel?.selectedFPAGainLevel ?? -1
            onActivated: index => page.tabModel.selectedFPAGainLevel = index
        }

        ReduceNoiseRow {}

        ChoiceRow {
            visible: page.generalModel?.isLowCost ?? false
            enabled: !(page.tabModel?.refreshing ?? false)
            //: What sets the pace of the images
            heading: qsTr("Sync Source:")
            //: Sync source
            model: [qsTr("Internal"), qsTr("External"), qsTr("Video")]
            currentIndex: page.tabModel?.syncSource ?? -1
            onActivated: index => page.tabModel.syncSource = index
        }

        SettingRow {
            visible: page.tabModel?.hsmAvailable ?? false

            WrappingCheckBox {
                text: qsTr("Enable High Sensitivity Mode")
                checked: page.tabModel?.hsmEnabled ?? false
                onToggled: page.tabModel.hsmEnabled = checked
            }
        }
    }

    component ReduceNoiseRow: SettingRow {
        id: noiseRow

        readonly property var _lastRead: ({ reduced: false })

        // The model asks the camera each time and tells only of its own changes, so it is asked once after each read.
        function _read(hasRefreshed: bool): bool {
            if (hasRefreshed)
                _lastRead.reduced = page.tabModel.reduceNoise
            return _lastRead.reduced
        }

        heading: qsTr("Reduce Noise:")
        //: Tool tip
        toolTip: qsTr("Reduces noise by preventing integration from occuring during readout (aka ITR).")

        Toggle {
            Accessible.name: noiseRow.name
            toolTip: noiseRow.toolTip
            checked: noiseRow._read(page.tabModel?.hasRefreshed ?? false)
            onToggled: page.tabModel.reduceNoise = checked
        }
    }

    // Window

    component WindowSettings: Rows {
        Heading {
            //: Heads the rows of the image window on the detector
            text: qsTr("FPA Window Settings")
        }

        ChoiceRow {
            //: Width and height of the image
            heading: qsTr("Image Size:")
            model: page.generalModel?.windowSizeStrings ?? []
            currentIndex: page.generalModel?.windowSizeIndex ?? -1
            onActivated: index => {
                page.generalModel.windowSizeIndex = index
                page.clearWindowWarning()
                windowRow.showModelWindow()
            }

            FlipButton {
                glyph: "\uf07e"
                //: Tool tip: mirrors the image left to right
                toolTip: qsTr("Flip Horizontally")
                highlighted: page.tabModel?.hflipImage ?? false
                onClicked: page.tabModel.hflipImage = !page.tabModel.hflipImage
            }

            FlipButton {
                glyph: "\uf07d"
                //: Tool tip: mirrors the image top to bottom
                toolTip: qsTr("Flip Vertically")
                highlighted: page.tabModel?.vflipImage ?? false
                onClicked: page.tabModel.vflipImage = !page.tabModel.vflipImage
            }
        }

        WindowRow {
            id: windowRow
            visible: page.generalModel?.canWindowCustom ?? false
        }
    }

    component FlipButton: GlyphButton {
        textColor: highlighted ? root.kestrinAccentBlue : root.textColor
        Accessible.checkable: true
        Accessible.checked: highlighted
    }

    // The window as it is being edited.
    component WindowRow: SettingRow {
        id: windowRow

        // What was edited is gone.
        function showModelWindow() {
            if (page.generalModel)
                editor.window = page.generalModel.window
            if (page.tabModel)
                page.tabModel.fpaWindowSizeHasUnsavedValues = false
        }

        function _apply() {
            const failing = rules.firstFailing(editor.window, fields.typedWidth(), fields.typedHeight())
            page.windowWarning = failing?.text ?? ""
            page.windowMarks = failing?.marks ?? []
            if (failing)
                return
            page.generalModel.window = editor.window
            page.tabModel.fpaWindowSizeHasUnsavedValues = false
        }

        Component.onCompleted: showModelWindow()

        WindowRules {
            id: rules
        }

        Connections {
            target: page.generalModel
            function onWindowChanged() {
                windowRow.showModelWindow()
            }
        }

        WindowEditor {
            id: editor

            // The page does not scroll it away from below a pointer that takes hold of it.
            readonly property int focusReason: editorHover.hovered ? Qt.MouseFocusReason : Qt.TabFocusReason

            Layout.preferredWidth: 208
            Layout.preferredHeight: 168
            Layout.alignment: Qt.AlignTop
            hFlip: page.tabModel?.hflipImage ?? false
            vFlip: page.tabModel?.vflipImage ?? false
            minSize: rules.least
            maxSize: rules.most
            increment: rules.steps
            centeredOnly: !rules.offsets
            onWindowChanged: {
                if (page.tabModel)
                    page.tabModel.fpaWindowSizeHasUnsavedValues = true
            }

            HoverHandler {
                id: editorHover
            }
        }

        WindowFields {
            id: fields

            Layout.alignment: Qt.AlignTop
            rules: rules
            window: editor.window
            onEdited: window => {
                editor.window = window
                page.tabModel.fpaWindowSizeHasUnsavedValues = true
            }
            onApply: windowRow._apply()
        }
    }

    // What must hold of a window before it goes to the camera.
    component WindowRules: QtObject {
        readonly property var least: page.generalModel?.windowMinSize ?? Qt.size(0, 0)
        readonly property var most: page.generalModel?.windowMaxSize ?? Qt.size(0, 0)
        readonly property var steps: page.generalModel?.windowIncrement ?? Qt.point(0, 0)
        // Without offsets of its own a window lies in the middle.
        readonly property bool offsets: page.generalModel?.canWindowCustomOffset ?? false

        readonly property string width: qsTr("The width must be between %1 and %2 in increments of %3")
            .arg(least.width).arg(most.width).arg(steps.x)
        readonly property string height: qsTr("The height must be between %1 and %2 in increments of %3")
            .arg(least.height).arg(most.height).arg(steps.y)
        readonly property string x: qsTr("The X Offset must be between 0 and %1 in increments of %2")
            .arg(most.width - least.width).arg(steps.x)
        readonly property string y: qsTr("The Y Offset must be between 0 and %1 in increments of %2")
            .arg(most.height - least.height).arg(steps.y)

        function _fits(value: real, low: real, high: real, step: real): bool {
            return value >= low && value <= high && value % Math.max(1, step) === 0
        }

        // A rectangle does not hold every size that can be typed, so the first two take what stands in the fields.
        function firstFailing(window: rect, typedWidth: real, typedHeight: real): var {
            const rules = [
                [typedWidth + window.x <= most.width,
                 //: Why a window can not be applied
                 qsTr("Width + X Offset cannot be greater than FPA Width"), ["width", "x"]],
                [typedHeight + window.y <= most.height,
                 //: Why a window can not be applied
                 qsTr("Height + Y Offset cannot be greater than FPA Height"), ["height", "y"]],
                [_fits(window.width, least.width, most.width, steps.x), width, ["width"]],
                [_fits(window.height, least.height, most.height, steps.y), height, ["height"]],
                [_fits(window.x, 0, most.width - least.width, steps.x), x, ["x"]],
                [_fits(window.y, 0, most.height - least.height, steps.y), y, ["y"]]
            ]
            for (const [holds, text, marks] of rules) {
                if (!holds)
                    return { text: text, marks: marks }
            }
            return null
        }

        function resized(window: rect, width: int, height: int): rect {
            const centred = (length, size, step) => Math.max(0, Math.floor((length - size) / 2 / step) * step)
            if (offsets)
                return Qt.rect(window.x, window.y, width, height)
            return Qt.rect(centred(most.width, width, Math.max(1, steps.x)),
                           centred(most.height, height, Math.max(1, steps.y)), width, height)
        }
    }

    component WindowFields: ColumnLayout {
        id: windowFields

        required property var rules
        required property var window
        readonly property bool _acceptable: widthField.acceptable && heightField.acceptable
                                            && xField.acceptable && yField.acceptable

        signal edited(window: rect)
        signal apply

        function typedWidth(): real {
            return widthField.number()
        }

        function typedHeight(): real {
            return heightField.number()
        }

        spacing: root.rowSpacing
        Layout.fillWidth: true

        WindowField {
            id: widthField

            heading: qsTr("Width:")
            mark: "width"
            toolTip: windowFields.rules.width
            value: windowFields.window.width
            onEntered: number => windowFields.edited(windowFields.rules.resized(windowFields.window, number,
                                                                                windowFields.window.height))
        }

        WindowField {
            id: heightField

            heading: qsTr("Height:")
            mark: "height"
            toolTip: windowFields.rules.height
            value: windowFields.window.height
            onEntered: number => windowFields.edited(windowFields.rules.resized(windowFields.window,
                                                                                windowFields.window.width, number))
        }

        WindowField {
            id: xField

            visible: windowFields.rules.offsets
            heading: qsTr("X Offset:")
            mark: "x"
            toolTip: windowFields.rules.x
            value: windowFields.window.x
            onEntered: number => windowFields.edited(Qt.rect(number, windowFields.window.y, windowFields.window.width,
                                                             windowFields.window.height))
        }

        WindowField {
            id: yField

            visible: windowFields.rules.offsets
            heading: qsTr("Y Offset:")
            mark: "y"
            toolTip: windowFields.rules.y
            value: windowFields.window.y
            onEntered: number => windowFields.edited(Qt.rect(windowFields.window.x, number, windowFields.window.width,
                                                             windowFields.window.height))
        }

        WrappingButton {
            Layout.preferredWidth: 150
            enabled: windowFields._acceptable && (page.tabModel?.fpaWindowSizeHasUnsavedValues ?? false)
            //: Gives the edited window to the camera
            text: qsTr("Apply Settings")
            onClicked: windowFields.apply()
        }

        Label {
            id: warning

            visible: text !== ""
            Layout.fillWidth: true
            onHeightChanged: page._bringIntoView(warning)
            onYChanged: page._bringIntoView(warning)
            //: Accessible name
            Accessible.name: qsTr("Window Warning")
            Accessible.description: text
            text: page.windowWarning
            color: root.errorTextColor
            wrapMode: Text.Wrap
        }
    }

    component WindowField: RowLayout {
        id: windowField

        required property string heading
        required property string mark
        required property int value
        property alias toolTip: field.toolTip
        readonly property alias acceptable: field.acceptableInput

        signal entered(number: int)

        function number(): real {
            let number = NaN
            page.takeNumber(field.text, typed => number = typed)
            return number
        }

        spacing: 8

        Label {
            Layout.preferredWidth: 70
            Accessible.ignored: true
            text: windowField.heading
            horizontalAlignment: Text.AlignRight
        }

        Field {
            id: field

            Layout.preferredWidth: 72
            name: windowField.heading.replace(":", "")
            shown: windowField.value
            marked: page.windowMarks.includes(windowField.mark)
            horizontalAlignment: Text.AlignRight
            // Keeps out what is no number; the rules decide the rest.
            validator: IntValidator {
                bottom: 0
                top: 10000
            }
            onTextEdited: {
                if (acceptableInput)
                    page.takeNumber(text, number => windowField.entered(number))
            }
        }
    }
}
