# Compiles the Windows-only Qt glue with the mingw-w64 compiler against the Qt headers, without
# linking, so that code which only a Windows build compiles cannot rot unseen.
# Inputs: COMPILER, SOURCE_DIR, QT_INCLUDE_DIR.
file(GLOB glue_sources "${SOURCE_DIR}/src/platform/win/*.cpp" "${SOURCE_DIR}/hotkey/win/*.cpp")
if(NOT glue_sources)
    message(FATAL_ERROR "no Windows glue sources found under ${SOURCE_DIR}/src/platform/win")
endif()

set(flags -std=c++17 -fsyntax-only -Wall -Wextra -Werror
    -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN -DNOMINMAX
    -isystem ${QT_INCLUDE_DIR} -isystem ${QT_INCLUDE_DIR}/QtCore -isystem ${QT_INCLUDE_DIR}/QtGui
    -isystem ${QT_INCLUDE_DIR}/QtWidgets
    -I${SOURCE_DIR}/src -I${SOURCE_DIR}/src/platform -I${SOURCE_DIR}/src/platform/win/win32
    -I${SOURCE_DIR}/logger -I${SOURCE_DIR}/hotkey -I${SOURCE_DIR}/hotkey/win)

set(failed 0)
foreach(source IN LISTS glue_sources)
    execute_process(COMMAND ${COMPILER} ${flags} ${source} RESULT_VARIABLE result)
    if(result EQUAL 0)
        message(STATUS "ok: ${source}")
    else()
        math(EXPR failed "${failed} + 1")
        message(STATUS "FAILED: ${source}")
    endif()
endforeach()
list(LENGTH glue_sources total)
math(EXPR passed "${total} - ${failed}")
message(STATUS "${passed} passed, ${failed} failed")
if(failed GREATER 0)
    message(FATAL_ERROR "Windows glue does not compile")
endif()
