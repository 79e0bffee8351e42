# Settings and helper functions for all folders of the project.
include(GNUInstallDirs)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Concurrent Qml Quick QuickControls2 Widgets Test)
find_package(Threads REQUIRED)
qt_standard_project_setup()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# All programs and libraries are in one folder, so that programs and plug-in find the libraries beside them.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
    set(CMAKE_C_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(zvt_options INTERFACE)
target_compile_options(zvt_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${ZVT_WARNINGS_AS_ERRORS}>:-Werror>
    $<$<BOOL:${ZVT_SANITIZE}>:-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1>)
target_link_options(zvt_options INTERFACE
    $<$<BOOL:${ZVT_COVERAGE}>:--coverage>
    $<$<BOOL:${ZVT_SANITIZE}>:-fsanitize=address,undefined>)
target_compile_definitions(zvt_options INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

# Line coverage is counted in the models, and in the unit tests, which instantiate the models' templates.
add_library(zvt_coverage INTERFACE)
target_compile_options(zvt_coverage INTERFACE $<$<BOOL:${ZVT_COVERAGE}>:--coverage>)

# zvt_moc_globbed(TARGET): runs moc for a target whose sources are globbed. moc looks for new sources only when a source
# that it has seen or a file of CMake changes. So the list of sources is written to a file of CMake.
function(zvt_moc_globbed target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    get_target_property(sources ${target} SOURCES)
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_sources.cmake)
    file(CONFIGURE OUTPUT ${list} CONTENT "# ${sources}\n")
    include(${list})
endfunction()

# The headers between the plug-in and the libraries of a real installation.
add_library(zvt_boundary INTERFACE)
add_library(Zvt::boundary ALIAS zvt_boundary)
target_include_directories(zvt_boundary INTERFACE ${PROJECT_SOURCE_DIR}/common/boundary)

# zvt_platform_library(NAME SOURCES ... [LINK ...]): adds a shared library of the bundled platform. NAME is the name of
# this library in a real installation; Zvt::NAME is an alias. It is installed and exported, so that the plug-in can be
# built against the installed platform.
function(zvt_platform_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(Zvt::${name} ALIAS ${name})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE zvt_options $<BUILD_INTERFACE:zvt_boundary>)
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/common/boundary>
                                              $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
    install(TARGETS ${name} EXPORT ZvtPlatform LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()
