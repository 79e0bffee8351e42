# zvt_tests(KIND SOURCES tst_A.cpp ... [LINK ...] [TIMEOUT seconds] [DEFINITIONS ...]): one program `zvt_KIND_tests` of all
# test classes of a folder (one link instead of many), and one CTest entry `KIND.tst_A` with the label KIND for each.
function(zvt_tests kind)
    cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINK;DEFINITIONS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    set(program zvt_${kind}_tests)
    add_executable(${program} ${ARG_SOURCES})
    set_target_properties(${program} PROPERTIES AUTOMOC ON)
    target_link_libraries(${program} PRIVATE zvttest ${ARG_LINK} zvt_options)
    target_compile_definitions(${program} PRIVATE ZVT_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                                  ZVT_BINARY_DIR="${PROJECT_BINARY_DIR}" ${ARG_DEFINITIONS})
    target_precompile_headers(${program} PRIVATE <QtTest/QtTest>)
    foreach(source IN LISTS ARG_SOURCES)
        get_filename_component(name ${source} NAME_WE)
        if(name MATCHES "^tst_")
            add_test(NAME ${kind}.${name} COMMAND ${program} ${name})
            set_tests_properties(${kind}.${name} PROPERTIES LABELS ${kind} TIMEOUT ${ARG_TIMEOUT}
                ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp;UBSAN_OPTIONS=print_stacktrace=1")
        endif()
    endforeach()
endfunction()
