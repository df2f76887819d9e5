# The Linux desktop back end: X11 (XInput2, XTest, XFixes, xkbcommon) for the desktop, POSIX signals
# and logind for the session.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VELMORIN_X11 REQUIRED IMPORTED_TARGET GLOBAL
    x11 x11-xcb xfixes xi xtst xres xkbcommon xkbcommon-x11)

set(VELMORIN_PLATFORM_CORE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/crashhandler.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11clipboardwatch.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11clipboardwatch.h
    ${CMAKE_CURRENT_LIST_DIR}/x11desktop.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11desktop.h
    ${CMAKE_CURRENT_LIST_DIR}/x11foregroundwatch.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11foregroundwatch.h
    ${CMAKE_CURRENT_LIST_DIR}/x11inputobserver.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11inputobserver.h
    ${CMAKE_CURRENT_LIST_DIR}/x11keycodes.cpp
    ${CMAKE_CURRENT_LIST_DIR}/x11keycodes.h)
set(VELMORIN_PLATFORM_GUI_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/unixsystemevents.cpp
    ${CMAKE_CURRENT_LIST_DIR}/unixsystemevents.h)
set(VELMORIN_PLATFORM_CORE_LIBS PkgConfig::VELMORIN_X11 Qt6::DBus)
set(VELMORIN_PLATFORM_GUI_LIBS Qt6::DBus)
