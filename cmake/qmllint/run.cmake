# Checks every page, control and dialog of SOURCE_DIR, and the host's own QML, with the program QMLLINT.
#
# A page imports the host's shared controls by their place beside it and the host's modules by name. Neither is found in
# the source tree, so both are laid out in STAGE_DIR as they lie at run time; the descriptions of the modules, which are
# registered from C++, stand beside this script. Unqualified names are allowed: pages use the ids and the context names
# of the main page. So are ids in the contents of controls: these are then made at once, which they are in any case.
set(host ${SOURCE_DIR}/platform/hlxcamui)
set(modules ${STAGE_DIR}/imports/com/kestrin)
file(REMOVE_RECURSE ${STAGE_DIR})
file(COPY ${SOURCE_DIR}/zvt ${host}/controls DESTINATION ${STAGE_DIR} FILES_MATCHING PATTERN *.qml)
file(MAKE_DIRECTORY ${STAGE_DIR}/hlxcamui)
file(RENAME ${STAGE_DIR}/controls ${STAGE_DIR}/hlxcamui/controls)
file(COPY ${CMAKE_CURRENT_LIST_DIR}/com DESTINATION ${STAGE_DIR}/imports)
file(COPY ${host}/types/CameraFinderPopup.qml ${host}/types/WindowEditor.qml DESTINATION ${modules}/hlxcamui)
file(COPY ${host}/types/DisplayEditor.qml DESTINATION ${modules}/hlxui)

file(GLOB_RECURSE files ${STAGE_DIR}/zvt/*.qml ${STAGE_DIR}/hlxcamui/*.qml ${STAGE_DIR}/imports/*.qml)
execute_process(
    COMMAND ${QMLLINT} -I ${STAGE_DIR}/imports --unqualified disable --deferred-property-id disable
            --unused-imports warning ${files}
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "qmllint found faults")
endif()
