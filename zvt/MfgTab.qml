import QtQuick
import "../hlxcamui/controls"
import zvt.look
import zvt.rows

// The Mfg page, for the factory: what the camera is, the factory's values, and the timing of its readout circuit. The
// page's own texts are not translated. The parts that it shares with other pages keep their translated texts: the
// headers ("Refresh %1") and the faults of the fields.
Page {
    id: page

    property bool cameraSettingsExpanded: true
    property bool emulatorSettingsExpanded
    property bool roicConfigExpanded

    readonly property bool _nucExpanded: camera ? camera.mfgNucSettingsModel.visible : false
    readonly property bool _voltageExpanded: camera ? camera.mfgVoltageSettingsModel.visible : false
    readonly property bool _toolsExpanded: camera ? camera.mfgToolsModel.visible : false
    readonly property bool _coolerExpanded: camera ? camera.mfgCoolerSettingsModel.visible : false
    readonly property bool _filterExpanded: camera ? camera.mfgCorvinFilterSettingsModel.visible : false
    readonly property bool _miscExpanded: camera ? camera.mfgMiscSettingsModel.visible : false

    function refreshAllVisible() {
        if (!camera)
            return
        if (cameraSettingsExpanded)
            camera.mfgTabModel.refresh()
        if (_nucExpanded)
            camera.mfgNucSettingsModel.refresh()
        if (_voltageExpanded)
            camera.mfgVoltageSettingsModel.refresh()
        if (_toolsExpanded)
            camera.mfgToolsModel.refresh()
        if (_coolerExpanded)
            camera.mfgCoolerSettingsModel.refresh()
        if (_filterExpanded)
            camera.mfgCorvinFilterSettingsModel.refresh()
        if (_miscExpanded)
            camera.mfgMiscSettingsModel.refresh()
        if (roicConfigExpanded)
            camera.mfgTabModel.roicConfig.refresh()
    }

    component MfgSection: Section {
        camera: page.camera
        connected: page.connected
        isShown: page.isShown
        preload: page.preload
    }

    component StateFileDialog: WidgetFileDialog {
        folder: shortcuts.documents
        nameFilters: ["State Files (*.qsf)", "All Files (*.*)"]
    }

    onRefresh: refreshAllVisible()

    MfgSection {
        title: "Camera Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/IdentitySettings.qml"
        expanded: page.cameraSettingsExpanded
        loading: page.camera ? page.camera.mfgTabModel.refreshing : false
        usable: page.camera ? page.camera.mfgTabModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgTabModel.refresh()
        }
        onToggle: page.cameraSettingsExpanded = !page.cameraSettingsExpanded
    }

    MfgSection {
        title: "NUC Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgNucSettings.qml"
        expanded: page._nucExpanded
        loading: page.camera ? page.camera.mfgNucSettingsModel.refreshing : false
        usable: page.camera ? page.camera.mfgNucSettingsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgNucSettingsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgNucSettingsModel.visible = !page._nucExpanded
        }
    }

    MfgSection {
        title: "Voltage Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgVoltageSettings.qml"
        expanded: page._voltageExpanded
        loading: page.camera ? page.camera.mfgVoltageSettingsModel.refreshing : false
        usable: page.camera ? !page.camera.mfgVoltageSettingsModel.refreshing
                              && page.camera.mfgVoltageSettingsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgVoltageSettingsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgVoltageSettingsModel.visible = !page._voltageExpanded
        }
    }

    MfgSection {
        id: toolsSection

        title: "Tools"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgTools.qml"
        expanded: page._toolsExpanded
        loading: page.camera ? page.camera.mfgToolsModel.refreshing : false
        usable: page.camera ? page.camera.mfgToolsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgToolsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgToolsModel.visible = !page._toolsExpanded
        }
    }

    MfgSection {
        visible: page.camera ? page.camera.cameraCapabilitiesModel.hasTeCooler : false
        title: "TE Cooler Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgCoolerSettings.qml"
        expanded: page._coolerExpanded
        loading: page.camera ? page.camera.mfgCoolerSettingsModel.refreshing : false
        usable: page.camera ? page.camera.mfgCoolerSettingsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgCoolerSettingsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgCoolerSettingsModel.visible = !page._coolerExpanded
        }
    }

    MfgSection {
        visible: page.camera ? !page.camera.cameraCapabilitiesModel.hasReplaceableFilters : false
        title: "Corvin Filter Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgFilterSettings.qml"
        expanded: page._filterExpanded
        loading: page.camera ? page.camera.mfgCorvinFilterSettingsModel.refreshing : false
        usable: page.camera ? page.camera.mfgCorvinFilterSettingsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgCorvinFilterSettingsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgCorvinFilterSettingsModel.visible = !page._filterExpanded
        }
    }

    MfgSection {
        title: "Miscellaneous Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/MfgMiscSettings.qml"
        expanded: page._miscExpanded
        loading: page.camera ? page.camera.mfgMiscSettingsModel.refreshing : false
        usable: page.camera ? page.camera.mfgMiscSettingsModel.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgMiscSettingsModel.refresh()
        }
        onToggle: {
            if (page.camera)
                page.camera.mfgMiscSettingsModel.visible = !page._miscExpanded
        }
    }

    MfgSection {
        visible: page.camera ? page.camera.isEmulator : false
        title: "Emulator Settings"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/EmulatorSettings.qml"
        expanded: page.emulatorSettingsExpanded
        onToggle: page.emulatorSettingsExpanded = !page.emulatorSettingsExpanded
    }

    MfgSection {
        title: "ROIC Config"
        body: "qrc:/qt-project.org/imports/zvt/manufacturing/RoicSettings.qml"
        expanded: page.roicConfigExpanded
        loading: page.camera ? page.camera.mfgTabModel.roicConfig.refreshing : false
        usable: page.camera ? page.camera.mfgTabModel.roicConfig.hasRefreshed : false
        onRefresh: {
            if (page.camera)
                page.camera.mfgTabModel.roicConfig.refresh()
        }
        onToggle: page.roicConfigExpanded = !page.roicConfigExpanded
    }

    Connections {
        target: toolsSection.bodyItem
        function onDownloadRequested() {
            downloadDialog.open()
        }
        function onUploadRequested() {
            uploadDialog.open()
        }
        function onFolderRequested() {
            folderDialog.open()
        }
    }

    LazyLoader {
        id: downloadDialog

        StateFileDialog {
            title: "Download State File"
            selectExisting: false
            onAccepted: {
                if (page.camera)
                    page.camera.mfgToolsModel.downloadFactoryState(fileUrl)
            }
        }
    }

    LazyLoader {
        id: uploadDialog

        StateFileDialog {
            title: "Upload State File"
            onAccepted: {
                if (page.camera)
                    page.camera.mfgToolsModel.uploadFactoryState(fileUrl)
            }
        }
    }

    LazyLoader {
        id: folderDialog

        WidgetFileDialog {
            title: "Select Folder To Save BPL Files"
            selectFolder: true
            folder: shortcuts.documents
            onAccepted: {
                if (page.camera)
                    page.camera.mfgToolsModel.saveBplForSelectedIndexAction(fileUrl)
            }
        }
    }
}
