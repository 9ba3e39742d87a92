# SPDX-License-Identifier: Apache-2.0
# cmake -DPROGRAM=FILE -P links_no_qt.cmake
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES "${PROGRAM}" RESOLVED_DEPENDENCIES_VAR libraries)
if(NOT libraries MATCHES "libzip")
    message(FATAL_ERROR "the libraries of ${PROGRAM} were not found: ${libraries}")
endif()
if(libraries MATCHES "Qt5")
    message(FATAL_ERROR "${PROGRAM} links Qt: ${libraries}")
endif()
