# The page and everything that it is made of, as resources below :/zvt. Paths are relative to the folder zvt.
set(ZVT_QML_FILES
    zvtmain.qml
    SetupTab.qml
    StatusTab.qml
    animations/FadeAndShrinkAnimation.qml
    controls/BatchDownloadEntryProgressBar.qml
    controls/CorrectionTabPresetNumberLabel.qml
    controls/FocusIndicator.qml
    controls/FrameRateComboBox.qml
    controls/LongLeftArrow.qml
    controls/LongRightArrow.qml
    controls/MaxFrameRateButton.qml
    controls/MaxFrameRateIcon.qml
    controls/NoCameraConnectedRectangle.qml
    controls/PageTabButton.qml
    controls/PercentSlider.qml
    controls/RamPlaybackArrow.qml
    controls/SectionSwitchableHeaderButton.qml
    controls/SetupTabPresetNumberButton.qml
    controls/SubsectionHeaderLabel.qml
    controls/WrappingButton.qml
    controls/WrappingCheckBox.qml
    dialogs/AboutDialog.qml
    dialogs/AddLensStateDialog.qml
    dialogs/AdjustTimeDialog.qml
    dialogs/CameraStateDialog.qml
    dialogs/ConfirmDeleteLensStateDialog.qml
    dialogs/ConfirmationDialog.qml
    dialogs/EditNearFarPositions.qml
    dialogs/GenericMessageDialog.qml
    dialogs/InformationDialog.qml
    dialogs/RenameLensStateDialog.qml
    icons/BatchDownloadProgressItemIcon.qml
    popups/VideoPaletteColorPicker.qml)
set(ZVT_RESOURCE_FILES
    images/focusIndicator.png
    images/focusIndicator@2x.png
    images/play1.png
    images/play1@2x.png
    images/play2.png
    images/play2@2x.png
    images/play3.png
    images/play3@2x.png
    images/stop.png
    images/stop@2x.png)

find_file(ZVT_MATERIAL_ICONS MaterialIcons-Regular.ttf
    PATHS /usr/share/fonts /usr/local/share/fonts
    PATH_SUFFIXES truetype/material-design-icons-iconfont material-design-icons-iconfont TTF
    DOC "Material Icons, the font of the icons that the host's icon font lacks"
    REQUIRED)

# zvt_add_pages(TARGET): compiles the pages ahead of time into the library TARGET. Its resources then hold exactly the
# files above and the font.
function(zvt_add_pages target)
    set(qml_files "")
    set(resource_files "")
    foreach(file IN LISTS ZVT_QML_FILES)
        set_source_files_properties(${PROJECT_SOURCE_DIR}/zvt/${file} PROPERTIES QT_RESOURCE_ALIAS ${file})
        list(APPEND qml_files ${PROJECT_SOURCE_DIR}/zvt/${file})
    endforeach()
    foreach(file IN LISTS ZVT_RESOURCE_FILES)
        set_source_files_properties(${PROJECT_SOURCE_DIR}/zvt/${file} PROPERTIES QT_RESOURCE_ALIAS ${file})
        list(APPEND resource_files ${PROJECT_SOURCE_DIR}/zvt/${file})
    endforeach()
    set_source_files_properties(${ZVT_MATERIAL_ICONS} PROPERTIES QT_RESOURCE_ALIAS fonts/MaterialIcons-Regular.ttf)
    list(APPEND resource_files ${ZVT_MATERIAL_ICONS})

    # The compiler's rule depends on a qmldir in its output directory. It is written here, since a generated one would
    # enter the resources.
    set(output_directory ${PROJECT_BINARY_DIR}/zvt)
    file(WRITE ${output_directory}/qmldir "module zvt\n")
    qt_add_qml_module(${target}
        URI zvt
        VERSION 1.0
        NO_PLUGIN NO_GENERATE_PLUGIN_SOURCE NO_GENERATE_QMLTYPES NO_GENERATE_QMLDIR NO_LINT
        RESOURCE_PREFIX /
        OUTPUT_DIRECTORY ${output_directory}
        QML_FILES ${qml_files}
        RESOURCES ${resource_files})

    # What the compiler of QML writes is not ours to mend.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
