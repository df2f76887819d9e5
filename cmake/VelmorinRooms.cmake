# The program is built as rooms: one static library per folder under src/, in a fixed order.
# A room links the room below it and so may use every room further down, never one above:
# velmorin_room() refuses, when CMake runs, a source that includes a header of a higher room.

# Lowest first. A room's folder under src/ is its name; its target velmorin_<name>, with "/"
# written "_".
set(VELMORIN_ROOMS base platform history clipboard input actions snippets sync sync/remote
    maintenance services ui app)

function(velmorin_room_target room out)
    string(REPLACE "/" "_" name "${room}")
    set(${out} velmorin_${name} PARENT_SCOPE)
endfunction()

# The room an include such as "sync/remote/notifier.h" names: the longest room its path begins
# with; empty for headers of the libraries outside src/.
function(velmorin_room_of_include path out)
    set(found "")
    foreach(room IN LISTS VELMORIN_ROOMS)
        string(LENGTH "${room}/" length)
        string(SUBSTRING "${path}" 0 ${length} start)
        string(LENGTH "${found}" found_length)
        if(start STREQUAL "${room}/" AND length GREATER found_length)
            set(found "${room}")
        endif()
    endforeach()
    set(${out} "${found}" PARENT_SCOPE)
endfunction()

function(velmorin_check_room_includes room)
    list(FIND VELMORIN_ROOMS "${room}" own)
    foreach(source IN LISTS ARGN)
        if(NOT source MATCHES "\\.(cpp|h)$")
            continue()
        endif()
        file(STRINGS "${source}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
        foreach(line IN LISTS lines)
            string(REGEX REPLACE "^[^\"]*\"([^\"]+)\".*$" "\\1" header "${line}")
            velmorin_room_of_include("${header}" other)
            if(other STREQUAL "")
                continue()
            endif()
            list(FIND VELMORIN_ROOMS "${other}" index)
            if(index GREATER own)
                file(RELATIVE_PATH where "${PROJECT_SOURCE_DIR}" "${source}")
                message(FATAL_ERROR "${where} includes \"${header}\": the ${room} room comes "
                                    "before ${other} and may not use it")
            endif()
        endforeach()
    endforeach()
endfunction()

# velmorin_room(<room> SOURCES ... [LIBS ...]): the room's library, linked to the room below.
function(velmorin_room room)
    cmake_parse_arguments(ROOM "" "" "SOURCES;LIBS" ${ARGN})
    velmorin_room_target("${room}" target)
    list(TRANSFORM ROOM_SOURCES PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" REGEX "^[^/$]")
    velmorin_check_room_includes("${room}" ${ROOM_SOURCES})
    add_library(${target} STATIC ${ROOM_SOURCES})
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    list(FIND VELMORIN_ROOMS "${room}" index)
    if(index GREATER 0)
        math(EXPR below "${index} - 1")
        list(GET VELMORIN_ROOMS ${below} lower)
        velmorin_room_target("${lower}" lower_target)
        target_link_libraries(${target} PUBLIC ${lower_target})
    endif()
    target_link_libraries(${target} PUBLIC ${ROOM_LIBS})
    velmorin_warnings(${target})
    # Every room's sources, for lupdate and the Windows compile check.
    set_property(GLOBAL APPEND PROPERTY VELMORIN_ROOM_SOURCES ${ROOM_SOURCES})
endfunction()
