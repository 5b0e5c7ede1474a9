# Compiler settings of every target of ours. Link PRIVATE to qor_settings.
add_library(qor_settings INTERFACE)
target_compile_options(qor_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
target_include_directories(qor_settings INTERFACE "${CMAKE_SOURCE_DIR}/src")

if(WIN32)
    target_compile_definitions(qor_settings INTERFACE
        UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601
        QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
endif()

option(QORSOUND_SANITIZE "Build with AddressSanitizer and UBSan" OFF)
if(QORSOUND_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

find_program(QORSOUND_CCACHE ccache)
if(QORSOUND_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${QORSOUND_CCACHE}")
    set(CMAKE_C_COMPILER_LAUNCHER "${QORSOUND_CCACHE}")
endif()

# qor_library(NAME [SOURCES file...] [LIBRARIES target...]): a static library of one folder. LIBRARIES are
# public, since headers of the folder use them; nothing else may be used.
function(qor_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC ${ARG_LIBRARIES} PRIVATE qor_settings)
    target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
    set_target_properties(${name} PROPERTIES AUTOMOC "${WIN32}")
endfunction()
