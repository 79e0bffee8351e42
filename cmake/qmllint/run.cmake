cmake_minimum_required(VERSION 3.23)
# Checks every QML file of SOURCE_DIR with the program QMLLINT: pages, parts and the host's own.
#
# A page imports modules, and the host's shared controls by their place beside it. Both are found at run time and in the
# build folder, not in the source tree. So the copies that a build puts into BINARY_DIR are checked.
#
# Ids in the contents of controls are allowed: the contents are then made at once, which they are in any case.
set(options -I ${BINARY_DIR}/imports -I ${BINARY_DIR} --deferred-property-id disable --unused-imports warning)

# Files that use names from outside of all QML files: what the host gives to the page, and its icon font.
set(unqualified zvt/zvtmain.qml zvt/look/GlyphLabel.qml)

# copies(VARIABLE SOURCE COPY): the copies below the folder COPY of the files below the folder SOURCE.
function(copies variable source copy)
    file(GLOB_RECURSE files RELATIVE ${SOURCE_DIR}/${source} ${SOURCE_DIR}/${source}/*.qml)
    list(TRANSFORM files PREPEND ${copy}/)
    set(${variable} ${files} PARENT_SCOPE)
endfunction()

# without_limits(VARIABLE FILE OUTPUT): what qmllint says about a file, without what comes from the limits of its version:
# it knows no unsigned numbers, and no ids of the file inside of a Component, for which QML has no other name.
function(without_limits variable file output)
    file(READ ${BINARY_DIR}/${file} text)
    # These would break CMake's lists.
    string(REGEX REPLACE "[][;]" "|" output "${output}")
    set(place "([^\n]*)\n( *)(\\^+)\n")
    string(REGEX REPLACE "Warning: [^\n]*: Type \"uint[^\n]* not found[^\n]*\n${place}" "" output "${output}")
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
set(faults "")
foreach(file IN LISTS pages parts controls types)
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
