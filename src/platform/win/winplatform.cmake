# The Windows back end: Qt glue here, the Win32 calls themselves in the Qt-free win32 library.
add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/win32 ${CMAKE_BINARY_DIR}/win32)
set(VELMORIN_PLATFORM_SOURCES
    win/crashhandler.cpp
    win/windesktop.cpp win/windesktop.h
    win/winsecretstore.cpp win/winsecretstore.h
    win/winsystemevents.cpp win/winsystemevents.h)
set(VELMORIN_PLATFORM_LIBS velmorin_win32)
