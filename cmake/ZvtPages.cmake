# The files of the folder zvt, which become resources below :/zvt. Paths are relative to that folder.
set(ZVT_QML_FILES
    zvtmain.qml
    AdvancedTab.qml
    CorrectionTab.qml
    MfgTab.qml
    SetupTab.qml
    SsdTab.qml
    StatusTab.qml
    VideoTab.qml
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
    controls/NucListCtrl.qml
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
    dialogs/BatchDownloadDialog.qml
    dialogs/CameraStateDialog.qml
    dialogs/ConfirmDeleteLensStateDialog.qml
    dialogs/ConfirmationDialog.qml
    dialogs/EditFilterNamesDialog.qml
    dialogs/EditNearFarPositions.qml
    dialogs/EditSsdPlaybackFrameRange.qml
    dialogs/GenericMessageDialog.qml
    dialogs/InformationDialog.qml
    dialogs/LoadNucOptionsDialog.qml
    dialogs/NucInfoDialog.qml
    dialogs/NucListDialog.qml
    dialogs/NucNewDialog.qml
    dialogs/RenameLensStateDialog.qml
    dialogs/ViewOrLoadSsdFilesDialog.qml
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

# The modules that pages are made of: zvt.NAME is the folder parts/NAME.
set(ZVT_MODULES look rows dialogs correction setup status video advanced recording manufacturing frame)

# The files of the folder zvt as the module zvt, for files that cannot import them by path.
set(ZVT_TREE_QMLDIR "module zvt\n")
foreach(file IN LISTS ZVT_QML_FILES)
    get_filename_component(type ${file} NAME_WE)
    if(type MATCHES "^[A-Z]")
        string(APPEND ZVT_TREE_QMLDIR "${type} 1.0 ${file}\n")
    endif()
endforeach()

# zvt_add_modules(TARGET): compiles the modules into the library TARGET, below the resource prefix in which every engine
# looks for imports.
function(zvt_add_modules target)
    set(prefix /qt-project.org/imports/zvt)
    set(qml_files "")
    set(qmldirs "")
    foreach(module IN LISTS ZVT_MODULES)
        file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/parts/${module}/*.qml)
        set(content "module zvt.${module}\n")
        foreach(file IN LISTS files)
            get_filename_component(type ${file} NAME_WE)
            file(STRINGS ${file} singleton REGEX "^pragma Singleton" LIMIT_COUNT 1)
            if(singleton)
                string(APPEND content "singleton ")
            endif()
            string(APPEND content "${type} 1.0 ${type}.qml\n")
            set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${module}/${type}.qml)
        endforeach()
        set(qmldir ${PROJECT_BINARY_DIR}/zvt/${module}/qmldir)
        file(CONFIGURE OUTPUT ${qmldir} CONTENT "${content}")
        set_source_files_properties(${qmldir} PROPERTIES QT_RESOURCE_ALIAS ${module}/qmldir)
        list(APPEND qml_files ${files})
        list(APPEND qmldirs ${qmldir})
    endforeach()
    qt_target_qml_sources(${target} PREFIX ${prefix} QML_FILES ${qml_files} RESOURCES ${qmldirs})

    # At run time the files of the module zvt are those below :/zvt.
    set(qmldir ${CMAKE_CURRENT_BINARY_DIR}/qmldir)
    file(CONFIGURE OUTPUT ${qmldir} CONTENT "${ZVT_TREE_QMLDIR}prefer :/zvt/\n")
    set_source_files_properties(${qmldir} PROPERTIES QT_RESOURCE_ALIAS qmldir)
    qt_add_resources(${target} zvtqmldir PREFIX ${prefix} FILES ${qmldir})
endfunction()

# zvt_add_pages(TARGET): compiles the pages ahead of time into the library TARGET. Its resources then hold exactly the
# files above and the font below :/zvt, and the modules below the prefix of zvt_add_modules().
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

    # The compiler finds the modules in its output directory. This qmldir is not in the resources: there, it would
    # change how the host's folders resolve.
    set(output_directory ${PROJECT_BINARY_DIR}/zvt)
    file(CONFIGURE OUTPUT ${output_directory}/qmldir CONTENT "${ZVT_TREE_QMLDIR}")
    qt_add_qml_module(${target}
        URI zvt
        VERSION 1.0
        NO_PLUGIN NO_GENERATE_PLUGIN_SOURCE NO_GENERATE_QMLTYPES NO_GENERATE_QMLDIR NO_LINT
        RESOURCE_PREFIX /
        IMPORT_PATH ${ZVT_QML_IMPORTS} ${PROJECT_BINARY_DIR}
        OUTPUT_DIRECTORY ${output_directory}
        QML_FILES ${qml_files}
        RESOURCES ${resource_files})
    zvt_add_modules(${target})

    # Warnings in code that the QML compiler generates cannot be fixed here.
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "/qmlcache/")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
