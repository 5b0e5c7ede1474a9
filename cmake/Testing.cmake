# Test programs. Debian ships GoogleTest as sources, which serve both compilers.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)

# qor_host_test(NAME SOURCES ... LIBRARIES ...): a test of *_model libraries; exists in the host build only.
function(qor_host_test name)
    if(WIN32)
        return()
    endif()
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} qor_settings gmock gtest gtest_main)
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests" "${CMAKE_SOURCE_DIR}")
    add_test(NAME ${name} COMMAND ${name})
endfunction()

# qor_wine_test(NAME [GUI] [OWN_MAIN] SOURCES ... LIBRARIES ... [ARGUMENTS ...]): a test program that runs under
# Wine in a prefix of its own; GUI gives it a display of its own as well. OWN_MAIN: it does not use gtest_main.
function(qor_wine_test name)
    if(NOT WIN32)
        return()
    endif()
    cmake_parse_arguments(ARG "GUI;OWN_MAIN" "" "SOURCES;LIBRARIES;ARGUMENTS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} qor_settings gmock gtest)
    if(NOT ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE gtest_main)
    endif()
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests" "${CMAKE_SOURCE_DIR}")
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    set(mode console)
    if(ARG_GUI)
        set(mode gui)
    endif()
    add_test(NAME ${name}
        COMMAND "${CMAKE_SOURCE_DIR}/tools/wine/run-test.sh" ${mode} $<TARGET_FILE:${name}> ${ARG_ARGUMENTS})
endfunction()
