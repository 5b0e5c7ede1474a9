# The program as installed: ${CMAKE_BINARY_DIR}/dist holds the executable with all that it needs beside it, so
# that the folder can be copied to a Windows machine and started there.
set(QOR_DIST_DIR "${CMAKE_BINARY_DIR}/dist")

# qor_dist_image(FILE copy dependency): a program or DLL as a copy without debug information, which makes a program
# ten times as large, and with its sections at multiples of a page in the file: Wine can map only such sections, and
# reads all others into private memory, some 20 MB with Qt's. It is renamed into place, so that a panel that runs from
# the folder keeps its own file.
function(qor_dist_image file copy dependency)
    cmake_path(SET copy NORMALIZE "${QOR_DIST_DIR}/${copy}")
    cmake_path(GET copy PARENT_PATH folder)
    add_custom_command(OUTPUT "${copy}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${folder}"
        COMMAND "${CMAKE_OBJCOPY}" --strip-all --file-alignment=4096 "${file}" "${copy}.new"
        COMMAND "${CMAKE_COMMAND}" -E rename "${copy}.new" "${copy}"
        DEPENDS "${dependency}" VERBATIM)
    set_property(GLOBAL APPEND PROPERTY QOR_DIST_FILES "${copy}")
endfunction()

# qor_dist_qt(FOLDER name...): files of Qt into the same folder of dist; "bin" is dist itself.
function(qor_dist_qt folder)
    foreach(name IN LISTS ARGN)
        set(file "${QORSOUND_QT}/${folder}/${name}")
        string(REGEX REPLACE "^(bin|plugins)/?" "" target "${folder}")
        qor_dist_image("${file}" "./${target}/${name}" "${file}")
    endforeach()
endfunction()

# qor_dist_files(FOLDER file...): copies the files into dist/FOLDER when they are newer.
function(qor_dist_files folder)
    foreach(file IN LISTS ARGN)
        cmake_path(GET file FILENAME name)
        set(copy "${QOR_DIST_DIR}/${folder}/${name}")
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
        qor_dist_image("${file}" ${name} "${file}")
    endforeach()
endfunction()

# Notices and texts of what is delivered with the program but not ours, from the packages that it was built with.
function(qor_dist_licenses)
    set(folder "${QOR_DIST_DIR}/licenses")
    foreach(entry IN ITEMS
            "${CMAKE_SOURCE_DIR}/packaging/licenses.txt>README.txt"
            "/usr/share/doc/qtbase5-dev-tools/copyright>Qt.txt"
            "/usr/share/doc/gcc-mingw-w64-base/copyright>libgcc-libstdc++.txt"
            "/usr/share/doc/mingw-w64-x86-64-dev/copyright>winpthreads.txt"
            "/usr/share/common-licenses/LGPL-3>LGPL-3.txt"
            "/usr/share/common-licenses/GPL-3>GPL-3.txt")
        string(REPLACE ">" ";" entry "${entry}")
        list(GET entry 0 source)
        list(GET entry 1 name)
        add_custom_command(OUTPUT "${folder}/${name}"
            COMMAND "${CMAKE_COMMAND}" -E copy "${source}" "${folder}/${name}" DEPENDS "${source}" VERBATIM)
        set_property(GLOBAL APPEND PROPERTY QOR_DIST_FILES "${folder}/${name}")
    endforeach()
endfunction()

# qor_deploy(TARGET): adds the target "dist" for the panel's executable, with the simulated headset and the
# translations (global property QOR_QM_FILES, made by the target "translations").
function(qor_deploy executable)
    qor_dist_image("$<TARGET_FILE:${executable}>" QorSoundKit.exe ${executable})
    qor_dist_image("$<TARGET_FILE:simulator>" qor_ecd_api.dll simulator)
    qor_dist_image("$<TARGET_FILE:normal>" normal.exe normal)

    qor_dist_qt(bin Qt5Core.dll Qt5Gui.dll Qt5Widgets.dll)
    qor_dist_qt(plugins/platforms qwindows.dll)
    qor_dist_qt(plugins/styles qwindowsvistastyle.dll)
    qor_dist_qt(plugins/imageformats qico.dll)
    qor_dist_compiler_runtime()
    qor_dist_licenses()

    get_property(translations GLOBAL PROPERTY QOR_QM_FILES)
    qor_dist_files(translations ${translations})

    get_property(files GLOBAL PROPERTY QOR_DIST_FILES)
    add_custom_target(dist ALL DEPENDS ${files})
    add_dependencies(dist translations)
endfunction()
