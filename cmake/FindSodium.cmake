# Finds libsodium and provides the imported target Sodium::Sodium.
#
# Hints: SODIUM_ROOT (a folder with include/ and lib/, as the Windows build leaves its own
# static build of libsodium). On Debian the package is libsodium-dev.

find_package(PkgConfig QUIET)
if(PkgConfig_FOUND AND NOT SODIUM_ROOT)
    pkg_check_modules(PC_Sodium QUIET libsodium)
endif()

find_path(Sodium_INCLUDE_DIR
    NAMES sodium.h
    HINTS ${SODIUM_ROOT} ENV SODIUM_ROOT ${PC_Sodium_INCLUDE_DIRS}
    PATH_SUFFIXES include)

find_library(Sodium_LIBRARY
    NAMES sodium libsodium
    HINTS ${SODIUM_ROOT} ENV SODIUM_ROOT ${PC_Sodium_LIBRARY_DIRS}
    PATH_SUFFIXES lib)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Sodium REQUIRED_VARS Sodium_LIBRARY Sodium_INCLUDE_DIR)

if(Sodium_FOUND AND NOT TARGET Sodium::Sodium)
    add_library(Sodium::Sodium UNKNOWN IMPORTED)
    set_target_properties(Sodium::Sodium PROPERTIES
        IMPORTED_LOCATION "${Sodium_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${Sodium_INCLUDE_DIR}")
    if(WIN32)
        # The Windows build links its own static libsodium.
        set_target_properties(Sodium::Sodium PROPERTIES INTERFACE_COMPILE_DEFINITIONS SODIUM_STATIC)
    endif()
endif()

mark_as_advanced(Sodium_INCLUDE_DIR Sodium_LIBRARY)
