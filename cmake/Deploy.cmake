# The program as installed: ${CMAKE_BINARY_DIR}/dist holds the executable with all that it needs beside it, so
# that the folder can be copied to a Windows machine and started there.
set(QOR_DIST_DIR "${CMAKE_BINARY_DIR}/dist")

# qor_dist_stripped(FILE name dependency): a copy without debug information, which makes a program ten times as
# large. It is renamed into place, so that a panel that runs from the folder keeps its own file.
function(qor_dist_stripped file name dependency)
    set(copy "${QOR_DIST_DIR}/${name}")
    add_custom_command(OUTPUT "${copy}"
        COMMAND "${CMAKE_STRIP}" -o "${copy}.new" "${file}"
        COMMAND "${CMAKE_COMMAND}" -E rename "${copy}.new" "${copy}"
        DEPENDS "${dependency}" VERBATIM)
    set_property(GLOBAL APPEND PROPERTY QOR_DIST_FILES "${copy}")
endfunction()

# qor_dist_files(FOLDER file...): copies the files into dist/FOLDER when they are newer; "." is dist itself.
function(qor_dist_files folder)
    foreach(file IN LISTS ARGN)
        cmake_path(GET file FILENAME name)
        cmake_path(SET copy NORMALIZE "${QOR_DIST_DIR}/${folder}/${name}")
        add_custom_command(OUTPUT "${copy}" COMMAND "${CMAKE_COMMAND}" -E copy "${file}" "${copy}"
            DEPENDS "${file}" VERBATIM)
        set_property(GLOBAL APPEND PROPERTY QOR_DIST_FILES "${copy}")
    endforeach()
endfunction()

# The compiler's own DLLs, found where the compiler looks for them.
function(qor_dist_compiler_runtime)
    foreach(name libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(NOT EXISTS "${file}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${name}")
        endif()
        qor_dist_stripped("${file}" ${name} "${file}")
    endforeach()
endfunction()

# qor_deploy(TARGET): adds the target "dist" for the panel's executable, with the simulated headset and the
# translations (global property QOR_QM_FILES, made by the target "translations").
function(qor_deploy executable)
    qor_dist_stripped("$<TARGET_FILE:${executable}>" QorSoundKit.exe ${executable})
    qor_dist_stripped("$<TARGET_FILE:simulator>" qor_ecd_api.dll simulator)
    qor_dist_stripped("$<TARGET_FILE:normal>" normal.exe normal)

    qor_dist_files(. "${QORSOUND_QT}/bin/Qt5Core.dll" "${QORSOUND_QT}/bin/Qt5Gui.dll"
        "${QORSOUND_QT}/bin/Qt5Widgets.dll")
    qor_dist_files(platforms "${QORSOUND_QT}/plugins/platforms/qwindows.dll")
    qor_dist_files(styles "${QORSOUND_QT}/plugins/styles/qwindowsvistastyle.dll")
    qor_dist_files(imageformats "${QORSOUND_QT}/plugins/imageformats/qico.dll")
    qor_dist_compiler_runtime()

    get_property(translations GLOBAL PROPERTY QOR_QM_FILES)
    qor_dist_files(translations ${translations})

    get_property(files GLOBAL PROPERTY QOR_DIST_FILES)
    add_custom_target(dist ALL DEPENDS ${files})
    if(TARGET translations)
        add_dependencies(dist translations)
    endif()
endfunction()
