# Compiles every source of the Windows program, its libraries and its Windows glue with the
# mingw-w64 compiler against the Qt headers, without linking, so that code only a Windows build
# compiles cannot rot unseen and nothing POSIX- or X11-only slips into shared code.
# Inputs: COMPILER, SOURCE_DIR, SOURCE_LIST (a file, one source a line), QT_INCLUDE_DIR,
# QSCINTILLA_INCLUDE_DIR, SODIUM_INCLUDE_DIR, JOBS.
file(STRINGS "${SOURCE_LIST}" sources)
list(LENGTH sources total)
if(total EQUAL 0)
    message(FATAL_ERROR "no sources listed in ${SOURCE_LIST}")
endif()

set(flags -std=c++17 -fsyntax-only -Wall -Wextra -Werror
    -DUNICODE -D_UNICODE -DWIN32_LEAN_AND_MEAN -DNOMINMAX
    # What the build gives the sync and maintenance rooms.
    -DVELMORIN_GOOGLE_CLIENT_ID=\"\" -DVELMORIN_GOOGLE_CLIENT_SECRET=\"\"
    -DVELMORIN_NOTIFIER_URL=\"\" -DVELMORIN_CRASH_REPORT_URL=\"\"
    -isystem ${QT_INCLUDE_DIR} -isystem ${QSCINTILLA_INCLUDE_DIR} -isystem ${SODIUM_INCLUDE_DIR})
foreach(module Core Gui Widgets Network WebSockets Qml Svg)
    list(APPEND flags -isystem ${QT_INCLUDE_DIR}/Qt${module})
endforeach()
list(APPEND flags -I${SOURCE_DIR}/src -I${SOURCE_DIR}/src/platform/win/win32
    -I${SOURCE_DIR}/logger -I${SOURCE_DIR}/hotkey -I${SOURCE_DIR}/hotkey/win -I${SOURCE_DIR}/oauth2)

# One compiler per source, JOBS at a time; xargs answers non-zero when any of them failed.
execute_process(COMMAND xargs -a ${SOURCE_LIST} -P ${JOBS} -n 1 ${COMPILER} ${flags}
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "Some of the ${total} sources do not compile for Windows (see above)")
endif()
message(STATUS "${total} passed, 0 failed")
