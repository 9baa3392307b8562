# tidemark_room(FOLDER [SEES ROOM...] [USES LIBRARY...] [SHOWS LIBRARY...])
#
# Makes a static library of a folder of sources, named after the folder: core/base is core_base.
#
#   SEES   rooms whose headers it may include, and those that these see
#   USES   libraries that only its own sources include
#   SHOWS  libraries that its headers include
#
# Each room has an include folder of its own that contains only a link to it. So a room finds the headers of the
# rooms that it SEES and no others: an include against the direction of the arrows does not compile.
# A source named …Linux.cpp or …Mac.cpp is only built on that system.
function(tidemark_room folder)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SEES;USES;SHOWS")
    string(REPLACE "/" "_" name "${folder}")
    set(sources_folder "${PROJECT_SOURCE_DIR}/${folder}")
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${sources_folder}/*.cpp" "${sources_folder}/*.mm"
        "${sources_folder}/*.h")
    if(APPLE)
        list(FILTER sources EXCLUDE REGEX "Linux\\.cpp$")
    else()
        list(FILTER sources EXCLUDE REGEX "Mac\\.cpp$|\\.mm$")
    endif()

    add_library(${name} STATIC ${sources})
    set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX OUTPUT_NAME "tidemark_${name}")
    tidemark_include_folder(${name} "${folder}")
    list(TRANSFORM room_SEES REPLACE "/" "_")
    target_link_libraries(${name}
        PUBLIC ${room_SEES} ${room_SHOWS}
        PRIVATE tidemark_options ${room_USES})
endfunction()

# tidemark_precompiled(NAME SEES ROOM... HEADERS HEADER...)
#
# Makes a target that only compiles HEADERS in advance, for the rooms that reuse them with
# `target_precompile_headers(… REUSE_FROM NAME)`. SEES are the rooms and libraries that have the headers.
function(tidemark_precompiled name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SEES;HEADERS")
    set(empty_source "${PROJECT_BINARY_DIR}/empty.cpp")
    if(NOT EXISTS "${empty_source}")
        file(WRITE "${empty_source}" "// Compiled only for its precompiled headers.\n")
    endif()
    add_library(${name} OBJECT "${empty_source}")
    target_link_libraries(${name} PRIVATE tidemark_options ${arg_SEES})
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# For a unity build: units of sources of one folder. In other targets a unit is made of sources that follow one another,
# whichever folder they are in.
function(tidemark_unite_folders target)
    if(NOT CMAKE_UNITY_BUILD)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    set(count 0)
    foreach(source ${sources})
        get_filename_component(folder "${source}" DIRECTORY)
        get_filename_component(folder "${folder}" NAME)
        math(EXPR number "${count} / ${CMAKE_UNITY_BUILD_BATCH_SIZE}")
        set_source_files_properties("${source}" PROPERTIES UNITY_GROUP "${folder}_${number}")
        math(EXPR count "${count} + 1")
    endforeach()
endfunction()

# Lets the target, and what links to it, write #include "FOLDER/….h".
function(tidemark_include_folder target folder)
    set(include_folder "${PROJECT_BINARY_DIR}/include/${target}")
    get_filename_component(parent "${include_folder}/${folder}" DIRECTORY)
    file(MAKE_DIRECTORY "${parent}")
    file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${folder}" "${include_folder}/${folder}" SYMBOLIC)
    target_include_directories(${target} PUBLIC "${include_folder}")
endfunction()
