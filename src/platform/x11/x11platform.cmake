# The Linux desktop back end: X11 (XInput2, XTest, XFixes, xkbcommon) for the desktop, POSIX signals
# and logind for the session, QtKeychain for the secret store.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VELMORIN_X11 REQUIRED IMPORTED_TARGET GLOBAL
    x11 x11-xcb xfixes xi xtst xres xkbcommon xkbcommon-x11)

set(VELMORIN_PLATFORM_SOURCES
    x11/crashhandler.cpp
    x11/keychainsecretstore.cpp x11/keychainsecretstore.h
    x11/unixsystemevents.cpp x11/unixsystemevents.h
    x11/x11clipboardwatch.cpp x11/x11clipboardwatch.h
    x11/x11desktop.cpp x11/x11desktop.h
    x11/x11foregroundwatch.cpp x11/x11foregroundwatch.h
    x11/x11inputobserver.cpp x11/x11inputobserver.h
    x11/x11keycodes.cpp x11/x11keycodes.h)
find_package(Qt6Keychain REQUIRED)
set(VELMORIN_PLATFORM_LIBS PkgConfig::VELMORIN_X11 Qt6::DBus qt6keychain)
