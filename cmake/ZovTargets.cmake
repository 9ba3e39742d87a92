# SPDX-License-Identifier: Apache-2.0
# One helper per kind of target, so that a folder's CMakeLists.txt says only what it links.
find_package(PkgConfig REQUIRED)
find_package(fmt REQUIRED)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(zov_options INTERFACE)
target_include_directories(zov_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_definitions(zov_options INTERFACE ZOV_VERSION="${PROJECT_VERSION}")
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(zov_options INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Woverloaded-virtual
        -Wnon-virtual-dtor -Wcast-align -Wcast-qual -Wformat=2 -Wundef -Wdouble-promotion
        -Wimplicit-fallthrough -Wextra-semi)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlapping copies in std::string that are not there (its bug 105651).
    target_compile_options(zov_options INTERFACE -Wno-restrict)
endif()
if(ZOV_SANITIZE)
    target_compile_options(zov_options INTERFACE -fsanitize=${ZOV_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=all)
    target_link_options(zov_options INTERFACE -fsanitize=${ZOV_SANITIZE})
endif()

# zov_engine(NAME DEPENDS other folders... LIBS outside libraries...)
# Every .cpp of the calling folder becomes one static library; what it may include is what it links.
function(zov_engine name)
    cmake_parse_arguments(ARG "" "" "DEPENDS;LIBS;PRIVATE_LIBS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    add_library(zov_${name} STATIC ${sources})
    target_link_libraries(zov_${name} PUBLIC zov_options ${ARG_LIBS} PRIVATE ${ARG_PRIVATE_LIBS})
    foreach(folder IN LISTS ARG_DEPENDS)
        target_link_libraries(zov_${name} PUBLIC zov_${folder})
    endforeach()
endfunction()

# zov_window_headers(TARGET headers...): the toolkit's headers, parsed once instead of in every file.
# For those who build windows all day; other builds go without, so that each file keeps naming what
# it needs.
function(zov_window_headers target)
    if(ZOV_PCH)
        target_precompile_headers(${target} PRIVATE <QAbstractItemModel> <QAction> <QApplication>
            <QDialog> <QDockWidget> <QHeaderView> <QLabel> <QLineEdit> <QMainWindow> <QMenu>
            <QSettings> <QTableView> <QTreeView> <QVBoxLayout> <algorithm> <filesystem> <functional>
            <map> <memory> <set> <string> <vector> ${ARGN})
    endif()
endfunction()

# zov_window_engine(NAME ...): the same for a folder that may use Qt.
function(zov_window_engine name)
    set(CMAKE_AUTOMOC ON)
    set(CMAKE_AUTOUIC ON)
    set(CMAKE_AUTORCC ON)
    set(CMAKE_AUTOUIC_SEARCH_PATHS "${PROJECT_SOURCE_DIR}/src/app/forms")
    find_package(Qt5 5.15 REQUIRED COMPONENTS Widgets)
    zov_engine(${name} ${ARGN})
    target_link_libraries(zov_${name} PUBLIC Qt5::Widgets)
    # Headers made of forms, for the tests of dialogs.
    target_include_directories(zov_${name} PUBLIC "${CMAKE_CURRENT_BINARY_DIR}/zov_${name}_autogen/include")
    # The rule that runs moc depends on the headers of its last run only: after a new one it has to
    # be told to run again.
    file(GLOB headers CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    if(NOT "${headers}" STREQUAL "${ZOV_${name}_HEADERS}")
        file(REMOVE "${CMAKE_CURRENT_BINARY_DIR}/zov_${name}_autogen/timestamp")
        set(ZOV_${name}_HEADERS "${headers}" CACHE INTERNAL "Headers of the last configure")
    endif()
    zov_window_headers(zov_${name})
    target_compile_definitions(zov_${name} PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII
                                                  QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
endfunction()

# zov_tests(FOLDER): tests/FOLDER/*.cpp against the library of that folder and nothing else.
function(zov_tests folder)
    cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    if(NOT sources OR NOT TARGET zov_${folder})
        return()
    endif()
    add_executable(zov_${folder}_tests ${sources})
    target_link_libraries(zov_${folder}_tests PRIVATE zov_${folder} ${ARG_LIBS} zov_test_support GTest::gtest_main)
    gtest_discover_tests(zov_${folder}_tests TEST_PREFIX "${folder}." DISCOVERY_TIMEOUT 60)
endfunction()

# zov_window_tests(FOLDER): the same with Qt Test; GoogleTest cases drive real widgets without a screen.
# A folder below another, "app/editor", is the library zov_app_editor and the program
# zov_app_editor_tests.
function(zov_window_tests folder)
    find_package(Qt5 5.15 REQUIRED COMPONENTS Test)
    string(REPLACE "/" "_" name "${folder}")
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
    if(NOT sources OR NOT TARGET zov_${name})
        return()
    endif()
    add_executable(zov_${name}_tests ${sources} support/WindowTestMain.cpp)
    target_link_libraries(zov_${name}_tests PRIVATE zov_${name} zov_test_support Qt5::Test GTest::gtest)
    zov_window_headers(zov_${name}_tests <QTest> <gtest/gtest.h>)
    gtest_discover_tests(zov_${name}_tests TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
                         PROPERTIES ENVIRONMENT QT_QPA_PLATFORM=offscreen)
endfunction()
