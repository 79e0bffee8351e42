cmake_minimum_required(VERSION 3.23)
# Checks every QML file of SOURCE_DIR with the program QMLLINT: pages, parts, those of the bundled host and of the desk.
#
# A page imports modules by name and the shared controls of the host by a relative path. These imports resolve at run
# time and in the build folder, but not in the source tree. So the copies in BINARY_DIR are checked.
#
# Ids in the contents of controls are allowed. Qt then does not defer the contents, but these are needed at once anyway.
set(options -I ${BINARY_DIR}/imports -I ${BINARY_DIR}/desk -I ${BINARY_DIR} --deferred-property-id disable --unused-imports warning)

# Files that use names which no QML file declares: the context names of the host and its icon font.
set(unqualified zvt/zvtmain.qml zvt/look/GlyphLabel.qml)

# copies(VARIABLE SOURCE COPY): sets VARIABLE to the copies in the folder COPY of the files in the folder SOURCE.
function(copies variable source copy)
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}/${source} ${SOURCE_DIR}/${source}/*.qml)
    list(TRANSFORM files PREPEND ${copy}/)
    set(${variable} ${files} PARENT_SCOPE)
endfunction()

# without_limits(VARIABLE FILE OUTPUT): sets VARIABLE to the OUTPUT of qmllint for a file, without false findings. This
# version of qmllint does not support unsigned numbers, times, Qt.callLater(), nor ids of the file inside a Component.
function(without_limits variable file output)
    file(READ ${BINARY_DIR}/${file} text)
    # These characters have a meaning in the lists of CMake.
    string(REGEX REPLACE "[][;]" "|" output "${output}")
    set(place "([^\n]*)\n( *)(\\^+)\n")
    string(REGEX REPLACE "Warning: [^\n]*: Type \"(uint[^\n]*|qulonglong|QTime)\"[^\n]* not found[^\n]*\n${place}" "" output "${output}")
    string(REGEX REPLACE "Warning: [^\n]*: Property \"callLater\" is a QJSValue[^\n]*\n${place}" "" output "${output}")
    set(complaint "Warning: [^\n]*: Unqualified access\n${place}")
    string(REGEX MATCHALL "${complaint}" complaints "${output}")
    foreach(entry IN LISTS complaints)
        string(REGEX MATCH "${complaint}" entry "${entry}")
        string(LENGTH "${CMAKE_MATCH_2}" column)
        string(LENGTH "${CMAKE_MATCH_3}" length)
        string(SUBSTRING "${CMAKE_MATCH_1}" ${column} ${length} name)
        if(text MATCHES "[ {]id: ${name}[ ;}\n]")
            string(REPLACE "${entry}" "" output "${output}")
        endif()
    endforeach()
    set(${variable} "${output}" PARENT_SCOPE)
endfunction()

copies(pages zvt zvt)
copies(parts parts zvt)
copies(controls platform/hlxcamui/controls hlxcamui/controls)
copies(types platform/hlxcamui/types imports/com/kestrin/hlxcamui)
copies(desk standalone/desk/qml desk/zvt/controller/desk)
set(faults "")
foreach(file IN LISTS pages parts controls types desk)
    if(NOT EXISTS ${BINARY_DIR}/${file})
        string(APPEND faults "${file} is not in the build folder\n")
        continue()
    endif()
    set(level warning)
    if(file IN_LIST unqualified)
        set(level disable)
    endif()
    execute_process(COMMAND ${QMLLINT} ${options} --unqualified ${level} ${file}
        WORKING_DIRECTORY ${BINARY_DIR} OUTPUT_VARIABLE output ERROR_VARIABLE output RESULT_VARIABLE result)
    without_limits(output ${file} "${output}")
    if(NOT result MATCHES "^[0-9]+$")
        string(APPEND faults "${file}: qmllint ended early: ${result}\n")
    elseif(output MATCHES "(Warning|Error): ")
        string(APPEND faults "${output}")
    endif()
endforeach()
if(faults)
    message("${faults}")
    message(FATAL_ERROR "qmllint found faults")
endif()
