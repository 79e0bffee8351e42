set(ZVT_TEST_FILTER "" CACHE STRING "Build only the test files whose name matches this expression")

# zvt_tests(KIND [LINK ...] [TIMEOUT seconds] [LONG tst_A ...] [DEFINITIONS ...]): adds one program `zvt_KIND_tests`
# with all test classes of the folder, since one program links faster than many, and one CTest entry `KIND.tst_A` with
# the label KIND for each file tst_A.cpp. The default of TIMEOUT is 120 seconds. The tests of LONG run a build: they get
# half an hour and are started first.
function(zvt_tests kind)
    cmake_parse_arguments(ARG "" "TIMEOUT" "LINK;LONG;DEFINITIONS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    file(GLOB sources CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.cpp)
    if(ZVT_TEST_FILTER)
        list(FILTER sources INCLUDE REGEX "${ZVT_TEST_FILTER}")
    endif()
    if(NOT sources)
        return()
    endif()
    set(program zvt_${kind}_tests)
    add_executable(${program} ${sources})
    zvt_moc_globbed(${program})
    target_link_libraries(${program} PRIVATE zvttest ${ARG_LINK} zvt_options)
    target_compile_definitions(${program} PRIVATE ZVT_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
                                                  ZVT_BINARY_DIR="${PROJECT_BINARY_DIR}" ${ARG_DEFINITIONS})
    target_precompile_headers(${program} REUSE_FROM zvttest)
    foreach(source IN LISTS sources)
        get_filename_component(name ${source} NAME_WE)
        if(name MATCHES "^tst_")
            add_test(NAME ${kind}.${name} COMMAND ${program} ${name})
            set_tests_properties(${kind}.${name} PROPERTIES LABELS ${kind} TIMEOUT ${ARG_TIMEOUT}
                ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/leaks.supp:print_suppressions=0;UBSAN_OPTIONS=print_stacktrace=1;GCOV_ERROR_FILE=/dev/null")
        endif()
    endforeach()
    foreach(name IN LISTS ARG_LONG)
        if(TEST ${kind}.${name})
            set_tests_properties(${kind}.${name} PROPERTIES TIMEOUT 1800 COST 1000)
        endif()
    endforeach()
endfunction()
