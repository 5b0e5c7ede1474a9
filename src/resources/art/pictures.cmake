# Renders the drawings into ${art_folder}, at 1x and 2x: every *.svg as the picture of the same name, and what
# variants.txt lists besides (*.svg.in are templates for it alone). All go into the collection pictures.qrc as
# ":/<folder>/png/<name>", under the file's name or the one in aliases.txt. Sets art_pictures. Included, not a subdirectory,
# since custom commands belong to the directory of the target that uses them.
find_program(QORSOUND_RSVG rsvg-convert REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(art_source "${CMAKE_CURRENT_LIST_DIR}")
set(art_folder "${CMAKE_CURRENT_BINARY_DIR}/art")
set(art_tools "${CMAKE_SOURCE_DIR}/tools/art")

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${art_source}/aliases.txt" "${art_source}/variants.txt")
file(STRINGS "${art_source}/aliases.txt" aliases ENCODING UTF-8 REGEX "^[^#]")
foreach(line IN LISTS aliases)
    string(REGEX MATCH "^([^ ]+) (.+)$" matched "${line}")
    set("alias_of_${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
endforeach()

# qor_collect(FILE NAME): adds a file of art_folder to the collection, as NAME below the prefix of its folder.
set(art_pictures)
set(art_collection)
function(qor_collect file name)
    get_filename_component(folder "${file}" DIRECTORY)
    string(APPEND art_collection
        "    <qresource prefix=\"/${folder}\"><file alias=\"${name}\">${file}</file></qresource>\n")
    set(art_collection "${art_collection}" PARENT_SCOPE)
    set(art_pictures ${art_pictures} "${art_folder}/${file}" PARENT_SCOPE)
endfunction()

# qor_picture(PICTURE SOURCE [FROM=TO...]): paths relative to art_folder and to this folder.
function(qor_picture picture source)
    string(REGEX REPLACE "\\.png$" "@2x.png" double "${picture}")
    set(outputs "${art_folder}/${picture}" "${art_folder}/${double}")
    add_custom_command(OUTPUT ${outputs}
        COMMAND "${art_tools}/render.sh" "${art_source}/${source}" "${art_folder}/${picture}" ${ARGN}
        DEPENDS "${art_source}/${source}" "${art_tools}/render.sh"
        COMMENT "Picture ${picture}" VERBATIM)
    get_filename_component(name "${picture}" NAME)
    if(DEFINED "alias_of_${picture}")
        set(name "${alias_of_${picture}}")
    endif()
    string(REGEX REPLACE "\\.png$" "@2x.png" double_name "${name}")
    qor_collect("${picture}" "png/${name}")
    qor_collect("${double}" "png/${double_name}")
    set(art_collection "${art_collection}" PARENT_SCOPE)
    set(art_pictures ${art_pictures} PARENT_SCOPE)
endfunction()

foreach(folder IN ITEMS toobar left right page4 dlg png)
    file(GLOB drawings RELATIVE "${art_source}" CONFIGURE_DEPENDS "${art_source}/${folder}/*.svg")
    foreach(drawing IN LISTS drawings)
        string(REGEX REPLACE "\\.svg$" ".png" picture "${drawing}")
        qor_picture("${picture}" "${drawing}")
    endforeach()
endforeach()

file(STRINGS "${art_source}/variants.txt" variants REGEX "^[^#]")
foreach(variant IN LISTS variants)
    separate_arguments(variant UNIX_COMMAND "${variant}")
    qor_picture(${variant})
endforeach()

add_custom_command(OUTPUT "${art_folder}/page4/pallete.png"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${art_folder}/page4"
    COMMAND Python3::Interpreter "${art_tools}/palette.py" "${art_folder}/page4/pallete.png"
    DEPENDS "${art_tools}/palette.py" COMMENT "LED palette" VERBATIM)
qor_collect(page4/pallete.png png/pallete.png)

add_custom_command(OUTPUT "${art_folder}/demo/demo.ico"
    COMMAND "${art_tools}/icon.sh" "${art_source}/demo/demo.svg" "${art_folder}/demo/demo.ico"
    DEPENDS "${art_source}/demo/demo.svg" "${art_tools}/icon.sh" COMMENT "Window icon" VERBATIM)
qor_collect(demo/demo.ico demo.ico)

file(CONFIGURE OUTPUT "${art_folder}/pictures.qrc"
    CONTENT "<RCC version=\"1.0\">\n${art_collection}</RCC>\n" @ONLY)
