# A folder of imports in the build folder, for the QML compiler and qmllint. It describes the types that pages use and
# that are not QML files of this project. At run time the types are registered from C++, and the host chooses the style.
set(ZVT_QML_IMPORTS ${PROJECT_BINARY_DIR}/imports)

# zvt_copy_imports(SOURCE COPY): copies the files of the folder SOURCE to the folder COPY of the imports.
function(zvt_copy_imports source copy)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${source} ${source}/*)
    foreach(file IN LISTS files)
        configure_file(${source}/${file} ${ZVT_QML_IMPORTS}/${copy}/${file} COPYONLY)
    endforeach()
endfunction()

# zvt_add_host_types(): adds the modules of the host, as far as they are QML files, and a style that has all types of
# controls.
function(zvt_add_host_types)
    set(types ${PROJECT_SOURCE_DIR}/platform/hlxcamui/types)
    zvt_copy_imports(${PROJECT_SOURCE_DIR}/cmake/imports .)
    zvt_copy_imports(${types} com/kestrin/hlxcamui)
    configure_file(${types}/DisplayEditor.qml ${ZVT_QML_IMPORTS}/com/kestrin/hlxui/DisplayEditor.qml COPYONLY)
endfunction()

# zvt_describe(VARIABLE FOLDER HEADER ...): lets moc describe the classes of the headers. VARIABLE gets the
# descriptions: one file in FOLDER for each header with a class for moc.
function(zvt_describe variable folder)
    set(includes "")
    foreach(directory ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/common/boundary
            ${Qt6Core_INCLUDE_DIRS} ${Qt6Qml_INCLUDE_DIRS})
        list(APPEND includes -I${directory})
    endforeach()
    set(descriptions "")
    foreach(header IN LISTS ARGN)
        file(STRINGS ${header} classes REGEX "Q_OBJECT|Q_GADGET" LIMIT_COUNT 1)
        if(NOT classes)
            continue()
        endif()
        file(RELATIVE_PATH name ${PROJECT_SOURCE_DIR} ${header})
        string(REPLACE "/" "_" name ${name})
        # moc adds the ending of the description.
        add_custom_command(OUTPUT ${folder}/${name}.json
            COMMAND Qt6::moc ${includes} --output-json -o ${folder}/${name} --output-dep-file
                --dep-file-path ${folder}/${name}.d --dep-file-rule-name ${folder}/${name}.json ${header}
            DEPENDS ${header}
            DEPFILE ${folder}/${name}.d
            VERBATIM)
        list(APPEND descriptions ${folder}/${name}.json)
    endforeach()
    set(${variable} ${descriptions} PARENT_SCOPE)
endfunction()

# zvt_add_model_types(TARGET FOLDER ...): describes the types that plugin/qmlTypes.h lists and whose headers are in
# these folders, before the pages of TARGET are compiled. A changed header is described again.
function(zvt_add_model_types target)
    set(uri com.kestrin.hlx.cam.ui.zvt)
    string(REPLACE "." "/" module ${uri})
    set(module ${ZVT_QML_IMPORTS}/${module})
    file(CONFIGURE OUTPUT ${module}/qmldir CONTENT "module ${uri}\ntypeinfo zvt.qmltypes\ndepends QtQuick\n")

    list(TRANSFORM ARGN REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/\\1/*.h" OUTPUT_VARIABLE patterns)
    file(GLOB headers CONFIGURE_DEPENDS ${patterns} ${PROJECT_SOURCE_DIR}/common/boundary/hlxui/*.h)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/qmltypes)
    zvt_describe(models ${folder} ${headers} ${CMAKE_CURRENT_SOURCE_DIR}/ZvtCameraModel.h)
    zvt_describe(wanted ${folder} ${CMAKE_CURRENT_SOURCE_DIR}/qmlTypes.h)
    set(qt_prefix ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBS}/metatypes/qt6)
    file(GLOB foreign_types ${qt_prefix}core_*.json ${qt_prefix}gui_*.json)
    list(PREPEND foreign_types ${folder}/models.json)
    list(JOIN foreign_types , foreign_types)
    add_custom_command(OUTPUT ${module}/zvt.qmltypes
        COMMAND Qt6::moc --collect-json -o ${folder}/models.json ${models}
        COMMAND Qt6::moc --collect-json -o ${folder}/wanted.json ${wanted}
        COMMAND Qt6::qmltyperegistrar --import-name ${uri} --major-version 1 --minor-version 0
            --foreign-types ${foreign_types} --generate-qmltypes ${module}/zvt.qmltypes
            -o ${folder}/registration.cpp ${folder}/wanted.json
        DEPENDS ${models} ${wanted}
        COMMENT "Describing the models for the QML compiler"
        VERBATIM)
    # Each compilation of a page depends on the file that this property names.
    set_target_properties(${target} PROPERTIES QT_QML_MODULE_PLUGIN_TYPES_FILE ${module}/zvt.qmltypes)
endfunction()
