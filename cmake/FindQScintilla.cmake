# Finds QScintilla built against Qt 6 and provides the imported target QScintilla::QScintilla.
#
# Hints: QSCINTILLA_ROOT (a folder with include/ and lib/, as a Windows build of QScintilla
# leaves it). On Debian the library is qscintilla2_qt6 and its headers are under qt6/Qsci.

find_path(QScintilla_INCLUDE_DIR
    NAMES Qsci/qsciscintilla.h
    HINTS ${QSCINTILLA_ROOT} ENV QSCINTILLA_ROOT
    PATH_SUFFIXES include include/qt6 qt6 x86_64-linux-gnu/qt6)

find_library(QScintilla_LIBRARY
    NAMES qscintilla2_qt6 qscintilla2_qt6d
    HINTS ${QSCINTILLA_ROOT} ENV QSCINTILLA_ROOT
    PATH_SUFFIXES lib)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(QScintilla
    REQUIRED_VARS QScintilla_LIBRARY QScintilla_INCLUDE_DIR)

if(QScintilla_FOUND AND NOT TARGET QScintilla::QScintilla)
    add_library(QScintilla::QScintilla UNKNOWN IMPORTED)
    set_target_properties(QScintilla::QScintilla PROPERTIES
        IMPORTED_LOCATION "${QScintilla_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${QScintilla_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES "Qt6::Widgets;Qt6::PrintSupport")
    find_package(Qt6 REQUIRED COMPONENTS PrintSupport)
endif()

mark_as_advanced(QScintilla_INCLUDE_DIR QScintilla_LIBRARY)
