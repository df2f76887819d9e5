# The Windows back end: Qt glue here, the Win32 calls themselves in the Qt-free win32 library.
add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/win32 ${CMAKE_BINARY_DIR}/win32)
set(VELMORIN_PLATFORM_CORE_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/crashhandler.cpp
    ${CMAKE_CURRENT_LIST_DIR}/windesktop.cpp
    ${CMAKE_CURRENT_LIST_DIR}/windesktop.h)
set(VELMORIN_PLATFORM_GUI_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/winsystemevents.cpp
    ${CMAKE_CURRENT_LIST_DIR}/winsystemevents.h)
set(VELMORIN_PLATFORM_CORE_LIBS velmorin_win32)
set(VELMORIN_PLATFORM_GUI_LIBS velmorin_win32)
