# The target `zvt_qmllint` and the test `lint.qmllint`, which check all QML files. They fail on any finding.
find_program(QMLLINT_PROGRAM NAMES qmllint qmllint6 HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS} /usr/lib/qt6/bin)
if(NOT QMLLINT_PROGRAM)
    message(STATUS "qmllint is missing: QML files are not checked")
    return()
endif()
set(qmllint_command ${CMAKE_COMMAND} -D QMLLINT=${QMLLINT_PROGRAM} -D SOURCE_DIR=${PROJECT_SOURCE_DIR}
    -D BINARY_DIR=${PROJECT_BINARY_DIR} -P ${CMAKE_CURRENT_LIST_DIR}/qmllint/run.cmake)
add_custom_target(zvt_qmllint COMMAND ${qmllint_command} COMMENT "Checking QML files" VERBATIM)
add_dependencies(zvt_qmllint hlxcamuiZVT zvtdesk)
add_test(NAME lint.qmllint COMMAND ${qmllint_command})
set_tests_properties(lint.qmllint PROPERTIES LABELS lint TIMEOUT 300)
