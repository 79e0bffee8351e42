import QtQuick
import QtQuick.Layouts
import zvt
import zvt.rows

// The body of the Tools section: what the factory does with a camera once.
SectionBody {
    id: tools

    readonly property int _labelWidth: 148

    // The page asks for a file or folder, and passes it to the model.
    signal downloadRequested
    signal uploadRequested
    signal folderRequested

    component ToolRow: SettingRow {
        labelWidth: tools._labelWidth
    }

    component Tool: WrappingButton {
        Layout.preferredWidth: 172
    }

    RowGroup {
        ToolRow {
            heading: "Factory Default State"

            Tool {
                text: "Download"
                onClicked: tools.downloadRequested()
            }

            Tool {
                text: "Upload"
                onClicked: tools.uploadRequested()
            }
        }

        ToolRow {
            heading: "All Loaded NUCs"

            Tool {
                text: "Create Factory BPL"
                onClicked: tools.camera.mfgToolsModel.createFactoryBplForAllLoadedNucs()
            }

            Tool {
                text: "Append to Factory BPL"
                onClicked: tools.camera.mfgToolsModel.appendToFactoryBplForAllLoadedNucs()
            }
        }

        ToolRow {
            Tool {
                text: "Apply Factory BPL"
                onClicked: tools.camera.mfgToolsModel.applyFactoryBplForAllLoadedNucs()
            }

            Tool {
                text: "Save All"
                onClicked: tools.camera.mfgToolsModel.saveAllLoadedNucs()
            }
        }

        ToolRow {
            id: exportRow

            heading: "Save BPL for..."

            // Required: not bound to the model, so that each export is that of everything.
            Choice {
                implicitWidth: 172
                Layout.preferredWidth: 172
                Accessible.name: exportRow.name
                model: ["Preset 0", "Preset 1", "Preset 2", "Preset 3", "All Presets", "Factory", "Everything"]
                currentIndex: 6
            }

            Tool {
                text: "Save"
                onClicked: tools.folderRequested()
            }
        }

        ToolRow {
            heading: "TK2950 Only"

            Tool {
                text: "Auto Focus Full"
                onClicked: tools.camera.mfgToolsModel.tk2950AutoFocusFull()
            }
        }
    }
}
