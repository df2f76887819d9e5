# The Linux desktop back end: X11 for the desktop, POSIX signals and logind for the session.
set(VELMORIN_PLATFORM_CORE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/crashhandler.cpp)
set(VELMORIN_PLATFORM_GUI_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/unixsystemevents.cpp
    ${CMAKE_CURRENT_LIST_DIR}/unixsystemevents.h)
set(VELMORIN_PLATFORM_CORE_LIBS)
set(VELMORIN_PLATFORM_GUI_LIBS Qt6::DBus)
